#include "journeys/CJourney.h"
#include "settings/PListSerializer.h"
#include "support/CVolume.h"
#include "support/TestFiles.h"
#include "support/Texts.h"
#include "translations/CTranslations.h"

#include <QDir>
#include <QFile>
#include <QTest>
#include <QTranslator>

#include <memory>
#include <sys/mount.h>

static const QString PREFERENCES = QStringLiteral("/Library/Preferences/.GlobalPreferences.plist");
static const QString SOURCE_VOLUME = QStringLiteral("/Volumes/Macintosh HD");
static const int SLOW_MS = 20;

/** The real program under each system language: what its window says is read back. */
class tst_LanguageJourneys : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void bothPagesAndTheExitQuestion_data();
    void bothPagesAndTheExitQuestion();
    void preferences_data();
    void preferences();
    void missingPreferences();
    void brokenPreferences();
    void missingLanguageFolder();

private:
    void Prefer(const QStringList& listCode);
    void Begin(const QString& strLanguage);
    QString Text(const QString& strWidget, const QString& strIn = QString());
    QString Tr(const char* pContext, const char* pSource) const;
    void StartCopy();
    void CompareSelectionPage();

    std::unique_ptr<QTranslator> m_pTranslator;
    std::unique_ptr<CJourney> m_pJourney;
};

static void Write(const QString& strPath, const QByteArray& baContent)
{
    QDir().mkpath(QFileInfo(strPath).path());
    QFile file(strPath);
    QVERIFY2(file.open(QIODevice::WriteOnly) && file.write(baContent) == baContent.size(),
             qPrintable(strPath));
}

void tst_LanguageJourneys::init()
{
    QFile::remove(PREFERENCES);
    m_pTranslator = std::make_unique<QTranslator>();
    m_pJourney = std::make_unique<CJourney>(BuildPath(QStringLiteral("pictures/languages")));
}

void tst_LanguageJourneys::cleanup()
{
    if (QTest::currentTestFailed()) {
        m_pJourney->Picture(QStringLiteral("failed"));
        qWarning().noquote() << m_pJourney->Errors();
    }
    m_pJourney.reset();
    QFile::remove(PREFERENCES);
}

void tst_LanguageJourneys::Prefer(const QStringList& listCode)
{
    QVariantList listValue;
    for (const QString& strCode : listCode) {
        listValue.append(strCode);
    }
    PListSerializer::WriteRecordPList(QVariantMap{{QStringLiteral("AppleLanguages"), listValue}},
                                      PREFERENCES);
    QVERIFY(QFileInfo::exists(PREFERENCES));
}

/** Starts the program; from then on Tr() tells what is expected. An empty name stands for the texts of the
 * code. */
void tst_LanguageJourneys::Begin(const QString& strLanguage)
{
    QVERIFY(strLanguage.isEmpty() || m_pTranslator->load(CTranslations::BuiltPath(strLanguage)));
    QVERIFY(m_pJourney->Start(BuildPath(QStringLiteral("bin/TarnwickMacPE"))));
}

QString tst_LanguageJourneys::Tr(const char* pContext, const char* pSource) const
{
    const QString strText = m_pTranslator->translate(pContext, pSource);
    return strText.isEmpty() ? QString::fromUtf8(pSource) : strText;
}

QString tst_LanguageJourneys::Text(const QString& strWidget, const QString& strIn)
{
    return m_pJourney->Widget(strWidget, strIn).value(QStringLiteral("text")).toString();
}

void tst_LanguageJourneys::CompareSelectionPage()
{
    QCOMPARE(Text(QStringLiteral("m_pSrcLab")), Tr("CSelFileWidget", "Source"));
    QCOMPARE(Text(QStringLiteral("m_pDstLab")), Tr("CSelFileWidget", "Destination"));
    QCOMPARE(Text(QStringLiteral("m_pMacTitleLab")), Tr("CSelFileWidget", "Select File to Copy:"));
    QCOMPARE(Text(QStringLiteral("toolBtn"), QStringLiteral("m_pSelFilePage")), Tr("CSelFileWidget", "Copy"));
    QCOMPARE(Text(QStringLiteral("m_pTitleLab")), QStringLiteral("Kelvane Tarnwick"));
}

void tst_LanguageJourneys::StartCopy()
{
    const QStringList listUsers{SOURCE_VOLUME, QStringLiteral("Users")};
    // Down to the files, whose names are written in every script.
    for (const QStringList& listFolder :
         {QStringList{SOURCE_VOLUME}, listUsers, listUsers + QStringList{QStringLiteral("anna")}}) {
        m_pJourney->Expand(listFolder);
        QVERIFY(CJourney::WaitFor(
            [&] { return m_pJourney->Row(listFolder).value(QStringLiteral("expanded")).toBool(); }));
    }
    m_pJourney->Tick(listUsers);
    QVERIFY(CJourney::WaitFor(
        [&] { return m_pJourney->Row(listUsers).value(QStringLiteral("state")).toInt() == 2; }));
    m_pJourney->Picture(QStringLiteral("selection"));
    m_pJourney->SlowWrites(SLOW_MS);
    m_pJourney->Click(m_pJourney->Widget(QStringLiteral("toolBtn"), QStringLiteral("m_pSelFilePage")));
    QVERIFY(CJourney::WaitFor([&] { return !Text(QStringLiteral("m_pCopyTitleLab")).isEmpty(); }));
}

void tst_LanguageJourneys::bothPagesAndTheExitQuestion_data()
{
    QTest::addColumn<QString>("strLanguage");
    for (const QString& strLanguage : CTranslations::Languages()) {
        QTest::newRow(qPrintable(strLanguage)) << strLanguage;
    }
}

void tst_LanguageJourneys::bothPagesAndTheExitQuestion()
{
    QFETCH(QString, strLanguage);
    m_pJourney = std::make_unique<CJourney>(BuildPath(QStringLiteral("pictures/languages/")) + strLanguage);
    CVolume source(QStringLiteral("Macintosh HD"), QStringLiteral("/dev/nvme0n1p1"), 100);
    CVolume stick(QStringLiteral("STICK"), QStringLiteral("/dev/sdb1"), 200);
    QVERIFY2(source.IsValid() && stick.IsValid(), "volumes can be mounted");
    const QStringList listPicture{QStringLiteral("Ferien am See.jpg"), QStringLiteral("Привет.jpg"),
                                  QStringLiteral("拷貝檔案 骨.jpg"),   QStringLiteral("拷贝文件 骨.jpg"),
                                  QStringLiteral("写真とコピー.jpg"),  QStringLiteral("사진.jpg")};
    for (const QString& strName : listPicture) {
        Write(source.Path(QStringLiteral("Users/anna/")) + strName, QByteArray(8 << 20, 'x'));
    }
    // Beside it, so that ticking the user's folder does not tick the whole volume.
    Write(source.Path(QStringLiteral("Other/left.txt")), "not ticked");
    Prefer({CTranslations::Code(strLanguage), QStringLiteral("en")});
    Begin(strLanguage);

    CompareSelectionPage();
    QCOMPARE(Text(QStringLiteral("m_pUSBTitleLab")), QStringLiteral("STICK"));
    const QString strSpace = Tr("CSelFileWidget",
                                "<span style=\"color:#ff7e17;\">%1GB</span> Available, "
                                "<span style=\"color:#ff7e17;\">%2GB</span> Total");
    QCOMPARE(Text(QStringLiteral("bottomLab")), strSpace.arg(QStringLiteral("0.21"), QStringLiteral("0.21")));
    StartCopy();
    m_pJourney->Picture(QStringLiteral("copying"));

    const QString strCopying = Tr("CCopyFileWidget", "Copying files to (%1): %2");
    const QString strBegin = strCopying.left(strCopying.indexOf(QLatin1String("%2")))
                                 .replace(QLatin1String("%1"), QStringLiteral("STICK"));
    QVERIFY2(Text(QStringLiteral("m_pCopyTitleLab")).startsWith(strBegin),
             qPrintable(Text(QStringLiteral("m_pCopyTitleLab"))));
    const QString strTime = Tr("CCopyFileWidget", "Remaining Time: %1");
    QVERIFY2(Text(QStringLiteral("m_pTimeLab")).startsWith(strTime.left(strTime.indexOf(QLatin1Char('%')))),
             qPrintable(Text(QStringLiteral("m_pTimeLab"))));
    QCOMPARE(Text(QStringLiteral("toolBtn"), QStringLiteral("m_pCopyFilePage")),
             Tr("CCopyFileWidget", "Cancel"));

    const QString strFolder
        = QStringLiteral("Tarnwick * ") + Tr("CSelFileWidget", " at ") + QStringLiteral(" *");
    QCOMPARE(QDir(stick.Path()).entryList({strFolder}, QDir::Dirs).size(), 1);

    // The probe tells the box's text with ordinary blanks.
    const QString strExit
        = Tr("CTarnwickMacPE", qPrintable(TEXT_EXIT)).replace(QChar::Nbsp, QLatin1Char(' '));
    m_pJourney->Click(m_pJourney->Widget(QStringLiteral("m_pCloseBtn")));
    QVERIFY(m_pJourney->WaitForBox(strExit));
    const QStringList listButton = m_pJourney->Modal().value(QStringLiteral("buttons")).toObject().keys();
    QVERIFY2(listButton.contains(Tr("CTarnwickMacPE", "Yes"))
                 && listButton.contains(Tr("CTarnwickMacPE", "Cancel")),
             qPrintable(listButton.join(QLatin1Char('|'))));
    m_pJourney->Picture(QStringLiteral("exit"));
    QVERIFY(m_pJourney->AnswerBox(strExit, Tr("CTarnwickMacPE", "Yes")));
    QVERIFY(m_pJourney->WaitForEnd(20000));
    QCOMPARE(m_pJourney->ExitCode(), 0);
}

void tst_LanguageJourneys::preferences_data()
{
    QTest::addColumn<QStringList>("listCode");
    QTest::addColumn<QString>("strLanguage");
    const auto row = [](const QStringList& listCode, const char* pLanguage) {
        const QString strName
            = listCode.isEmpty() ? QStringLiteral("(empty list)") : listCode.join(QLatin1Char(' '));
        QTest::newRow(qPrintable(strName)) << listCode << QString::fromLatin1(pLanguage);
    };
    row({QStringLiteral("zh-Hant-TW"), QStringLiteral("en")}, "ChineseTW");
    row({QStringLiteral("zh-HK-Hant")}, "ChineseTW");
    row({QStringLiteral("zh-Hans-CN")}, "Chinese");
    row({QStringLiteral("pt-BR")}, "Portuguese");
    row({QStringLiteral("fr-CA"), QStringLiteral("de")}, "French");
    row({QStringLiteral("Fr"), QStringLiteral("fr")}, "English");
    row({QStringLiteral("EN")}, "English");
    row({QStringLiteral("yue-Hant"), QStringLiteral("zh-Hant")}, "English");
    row({}, "English");
}

void tst_LanguageJourneys::preferences()
{
    QFETCH(QStringList, listCode);
    QFETCH(QString, strLanguage);
    Prefer(listCode);
    Begin(strLanguage);
    CompareSelectionPage();
    QCOMPARE(Text(QStringLiteral("m_pUSBTitleLab")), Tr("CSelFileWidget", qPrintable(TEXT_PROMPT)));
    const QString strFile = QStringLiteral("/Language/TarnwickMacPE_%1.qm").arg(strLanguage);
    QVERIFY2(m_pJourney->Errors().contains(strFile), qPrintable(m_pJourney->Errors()));
}

void tst_LanguageJourneys::missingPreferences()
{
    Begin(QStringLiteral("English"));
    CompareSelectionPage();
    QVERIFY(m_pJourney->Errors().contains(QStringLiteral("strSystemLanguage English")));
}

void tst_LanguageJourneys::brokenPreferences()
{
    Write(PREFERENCES, "<plist version=\"1.0\"><dict><key>AppleLanguages</key><array><string>de</str");
    Begin(QStringLiteral("English"));
    CompareSelectionPage();
    QVERIFY(m_pJourney->Errors().contains(QStringLiteral("strSystemLanguage English")));
}

void tst_LanguageJourneys::missingLanguageFolder()
{
    const QByteArray baFolder = QFile::encodeName(BuildPath(QStringLiteral("bin/Language")));
    // An empty folder over it: for the program the same as none, since no file is there.
    if (mount("none", baFolder.constData(), "tmpfs", 0, nullptr) != 0) {
        QSKIP("mounts are not possible here");
    }
    Prefer({QStringLiteral("de")});
    Begin(QString());
    umount2(baFolder.constData(), MNT_DETACH);
    CompareSelectionPage();
    QCOMPARE(Text(QStringLiteral("m_pSrcLab")), QStringLiteral("Source"));
    QVERIFY(m_pJourney->Errors().contains(QStringLiteral("/Language/TarnwickMacPE_German.qm")));
}

QTEST_MAIN(tst_LanguageJourneys)
#include "tst_LanguageJourneys.moc"
