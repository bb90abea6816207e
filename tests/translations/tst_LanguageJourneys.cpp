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

static const QString PREFERENCES = "/Library/Preferences/.GlobalPreferences.plist";
static const QString SOURCE_VOLUME = "/Volumes/Macintosh HD";
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
    void noPreferences_data();
    void noPreferences();
    void missingLanguageFolder();

private:
    void Prefer(const QStringList& listCode);
    void Begin(const QString& strLanguage);
    QString Tr(const char* pContext, const char* pSource) const;
    void StartCopy();
    void CompareSelectionPage();

    std::unique_ptr<QTranslator> m_pTranslator;
    std::unique_ptr<CJourney> m_pJourney;
};

void tst_LanguageJourneys::init()
{
    QFile::remove(PREFERENCES);
    m_pTranslator = std::make_unique<QTranslator>();
    m_pJourney = std::make_unique<CJourney>(BuildPath("pictures/languages"));
}

void tst_LanguageJourneys::cleanup()
{
    if (QTest::currentTestFailed()) {
        m_pJourney->Picture("failed");
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
    PListSerializer::WriteRecordPList(QVariantMap{{"AppleLanguages", listValue}}, PREFERENCES);
    QVERIFY(QFileInfo::exists(PREFERENCES));
}

// Starts the program; from then on Tr() tells what is expected: without a language, the texts of the code.
void tst_LanguageJourneys::Begin(const QString& strLanguage)
{
    QVERIFY(strLanguage.isEmpty() || m_pTranslator->load(CTranslations::BuiltPath(strLanguage)));
    QVERIFY(m_pJourney->Start(BuildPath("bin/TarnwickMacPE")));
}

QString tst_LanguageJourneys::Tr(const char* pContext, const char* pSource) const
{
    const QString strText = m_pTranslator->translate(pContext, pSource);
    return strText.isEmpty() ? pSource : strText;
}

void tst_LanguageJourneys::CompareSelectionPage()
{
    QCOMPARE(m_pJourney->Text("m_pSrcLab"), Tr("CSelFileWidget", "Source"));
    QCOMPARE(m_pJourney->Text("m_pDstLab"), Tr("CSelFileWidget", "Destination"));
    QCOMPARE(m_pJourney->Text("m_pMacTitleLab"), Tr("CSelFileWidget", "Select File to Copy:"));
    QCOMPARE(m_pJourney->Text("toolBtn", "m_pSelFilePage"), Tr("CSelFileWidget", "Copy"));
    QCOMPARE(m_pJourney->Text("m_pTitleLab"), QString("Kelvane Tarnwick"));
}

void tst_LanguageJourneys::StartCopy()
{
    const QStringList listUsers{SOURCE_VOLUME, "Users"};
    // Down to the files, whose names are written in every script.
    for (const QStringList& listFolder :
         {QStringList{SOURCE_VOLUME}, listUsers, listUsers + QStringList{"anna"}}) {
        QVERIFY(m_pJourney->Open(listFolder));
    }
    QVERIFY(m_pJourney->TickWhole(listUsers));
    m_pJourney->Picture("selection");
    m_pJourney->SlowWrites(SLOW_MS);
    m_pJourney->Click("toolBtn", "m_pSelFilePage");
    QVERIFY(CJourney::WaitFor([&] { return !m_pJourney->Text("m_pCopyTitleLab").isEmpty(); }));
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
    m_pJourney = std::make_unique<CJourney>(BuildPath("pictures/languages/") + strLanguage);
    CVolume source("Macintosh HD", "/dev/nvme0n1p1", 100);
    CVolume stick("STICK", "/dev/sdb1", 200);
    QVERIFY2(source.IsValid() && stick.IsValid(), "volumes can be mounted");
    const QStringList listPicture{"Ferien am See.jpg", "Привет.jpg",       "拷貝檔案 骨.jpg",
                                  "拷贝文件 骨.jpg",   "写真とコピー.jpg", "사진.jpg"};
    for (const QString& strName : listPicture) {
        WriteFile(source.Path("Users/anna/") + strName, QByteArray(8 << 20, 'x'));
    }
    // Beside it, so that ticking the user's folder does not tick the whole volume.
    WriteFile(source.Path("Other/left.txt"), "not ticked");
    Prefer({CTranslations::Code(strLanguage), "en"});
    Begin(strLanguage);

    CompareSelectionPage();
    QCOMPARE(m_pJourney->Text("m_pUSBTitleLab"), QString("STICK"));
    const QString strSpace = Tr("CSelFileWidget",
                                "<span style=\"color:#ff7e17;\">%1GB</span> Available, "
                                "<span style=\"color:#ff7e17;\">%2GB</span> Total");
    QCOMPARE(m_pJourney->Text("bottomLab"), strSpace.arg("0.21", "0.21"));
    StartCopy();
    m_pJourney->Picture("copying");

    const QString strCopying = Tr("CCopyFileWidget", "Copying files to (%1): %2");
    const QString strBegin = strCopying.left(strCopying.indexOf("%2")).replace("%1", "STICK");
    QVERIFY2(m_pJourney->Text("m_pCopyTitleLab").startsWith(strBegin),
             qPrintable(m_pJourney->Text("m_pCopyTitleLab")));
    const QString strTime = Tr("CCopyFileWidget", "Remaining Time: %1");
    QVERIFY2(m_pJourney->Text("m_pTimeLab").startsWith(strTime.left(strTime.indexOf('%'))),
             qPrintable(m_pJourney->Text("m_pTimeLab")));
    QCOMPARE(m_pJourney->Text("toolBtn", "m_pCopyFilePage"), Tr("CCopyFileWidget", "Cancel"));

    const QString strFolder = "Tarnwick * " + Tr("CSelFileWidget", " at ") + " *";
    QCOMPARE(QDir(stick.Path()).entryList({strFolder}, QDir::Dirs).size(), 1);

    // The probe tells the box's text with ordinary blanks.
    const QString strExit = Tr("CTarnwickMacPE", qPrintable(TEXT_EXIT)).replace(QChar::Nbsp, ' ');
    m_pJourney->Click("m_pCloseBtn");
    QVERIFY(m_pJourney->WaitForBox(strExit));
    const QStringList listButton = m_pJourney->Modal().value("buttons").toObject().keys();
    QVERIFY2(listButton.contains(Tr("CTarnwickMacPE", "Yes"))
                 && listButton.contains(Tr("CTarnwickMacPE", "Cancel")),
             qPrintable(listButton.join('|')));
    m_pJourney->Picture("exit");
    QVERIFY(m_pJourney->AnswerBox(strExit, Tr("CTarnwickMacPE", "Yes")));
    QVERIFY(m_pJourney->WaitForEnd(20000));
    QCOMPARE(m_pJourney->ExitCode(), 0);
}

// Each row is named by the codes in the user's order.
void tst_LanguageJourneys::preferences_data()
{
    QTest::addColumn<QString>("strLanguage");
    QTest::newRow("zh-Hant-TW en") << "ChineseTW";
    QTest::newRow("zh-HK-Hant") << "ChineseTW";
    QTest::newRow("zh-Hans-CN") << "Chinese";
    QTest::newRow("pt-BR") << "Portuguese";
    QTest::newRow("fr-CA de") << "French";
    QTest::newRow("Fr fr") << "English";
    QTest::newRow("EN") << "English";
    QTest::newRow("yue-Hant zh-Hant") << "English";
    QTest::newRow(" ") << "English";
}

void tst_LanguageJourneys::preferences()
{
    QFETCH(QString, strLanguage);
    Prefer(QString(QTest::currentDataTag()).split(' ', Qt::SkipEmptyParts));
    Begin(strLanguage);
    CompareSelectionPage();
    QCOMPARE(m_pJourney->Text("m_pUSBTitleLab"), Tr("CSelFileWidget", qPrintable(TEXT_PROMPT)));
    const QString strFile = QString("/Language/TarnwickMacPE_%1.qm").arg(strLanguage);
    QVERIFY2(m_pJourney->Errors().contains(strFile), qPrintable(m_pJourney->Errors()));
}

void tst_LanguageJourneys::noPreferences_data()
{
    QTest::addColumn<QByteArray>("baFile");
    QTest::newRow("missing") << QByteArray();
    QTest::newRow("broken") << QByteArray(
        "<plist version=\"1.0\"><dict><key>AppleLanguages</key><array><string>de</str");
}

void tst_LanguageJourneys::noPreferences()
{
    QFETCH(QByteArray, baFile);
    if (!baFile.isNull()) {
        WriteFile(PREFERENCES, baFile);
    }
    Begin("English");
    CompareSelectionPage();
    QVERIFY(m_pJourney->Errors().contains("strSystemLanguage English"));
}

void tst_LanguageJourneys::missingLanguageFolder()
{
    const QByteArray baFolder = QFile::encodeName(BuildPath("bin/Language"));
    // An empty folder over it: for the program the same as none, since no file is there.
    if (mount("none", baFolder.constData(), "tmpfs", 0, nullptr) != 0) {
        QSKIP("mounts are not possible here");
    }
    Prefer({"de"});
    Begin(QString());
    umount2(baFolder.constData(), MNT_DETACH);
    CompareSelectionPage();
    QCOMPARE(m_pJourney->Text("m_pSrcLab"), QString("Source"));
    QVERIFY(m_pJourney->Errors().contains("/Language/TarnwickMacPE_German.qm"));
}

QTEST_MAIN(tst_LanguageJourneys)
#include "tst_LanguageJourneys.moc"
