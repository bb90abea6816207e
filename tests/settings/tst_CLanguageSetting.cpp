#include "settings/CLanguageSetting.h"
#include "support/CLogCapture.h"

#include <QTranslator>
#include <QtTest>

#include <cstdio>

static const char PREFERENCES[] = "/Library/Preferences/.GlobalPreferences.plist";

/** A translation file with one text: "Hello" in the context "C". */
static QByteArray Translation(const QString& strText)
{
    QByteArray baUtf16;
    for (const QChar ch : strText) {
        baUtf16 += char(ch.row());
        baUtf16 += char(ch.cell());
    }
    const auto section = [](char chTag, const QByteArray& baContent) {
        return QByteArray(1, chTag) + QByteArray(3, '\0') + QByteArray(1, char(baContent.size())) + baContent;
    };
    const QByteArray baMessage = section('\x03', baUtf16) + section('\x08', QByteArray())
        + section('\x06', "Hello") + section('\x07', "C") + '\x01';
    const QByteArray baMagic = QByteArray::fromHex("3cb86418caef9c95cd211cbf60a1bddd");
    return baMagic + section('\x42', QByteArray::fromHex("004ec32f00000000")) + section('\x69', baMessage);
}

static QString Hello() { return QCoreApplication::translate("C", "Hello"); }

/** Counts the translations that are installed while it lives. */
class CInstallations : public QObject
{
public:
    CInstallations() { QCoreApplication::instance()->installEventFilter(this); }
    ~CInstallations() override { QCoreApplication::instance()->removeEventFilter(this); }
    int m_nInstalled = 0;

protected:
    bool eventFilter(QObject* pObject, QEvent* pEvent) override
    {
        m_nInstalled
            += pObject == QCoreApplication::instance() && pEvent->type() == QEvent::LanguageChange ? 1 : 0;
        return QObject::eventFilter(pObject, pEvent);
    }
};

class tst_CLanguageSetting : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();

    void noLanguageFolder();
    void languageOfCode_data();
    void languageOfCode();
    void systemLanguage_data();
    void systemLanguage();
    void instanceInstallsTheSystemsLanguage();
    void initLanguageFollowsThePreferences();
    void fileOfLanguage_data();
    void fileOfLanguage();
    void secondLanguageLiesOnTop();
    void fallbackFile();
    void fallbackIsNotTheFolderNextDoor_data();
    void fallbackIsNotTheFolderNextDoor();
    void brokenFileTakesNoFallback();

private:
    void Write(const QString& strPath, const QByteArray& baContent);
    void WritePreferences(const QStringList& listCode);

    QString m_strFolder;
    QString m_strFallbackFolder;
};

void tst_CLanguageSetting::initTestCase()
{
    m_strFolder = QCoreApplication::applicationDirPath() + QStringLiteral("/Language");
    m_strFallbackFolder = QCoreApplication::applicationDirPath() + QStringLiteral("Language");
}

void tst_CLanguageSetting::init()
{
    QVERIFY(!QFileInfo::exists(QString::fromLatin1(PREFERENCES)));
    QDir(m_strFolder).removeRecursively();
    QDir(m_strFallbackFolder).removeRecursively();
}

void tst_CLanguageSetting::cleanup()
{
    QFile::remove(QString::fromLatin1(PREFERENCES));
    QDir(m_strFolder).removeRecursively();
    QDir(m_strFallbackFolder).removeRecursively();
}

void tst_CLanguageSetting::Write(const QString& strPath, const QByteArray& baContent)
{
    QVERIFY(QDir().mkpath(QFileInfo(strPath).path()));
    QFile file(strPath);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(baContent), qint64(baContent.size()));
}

void tst_CLanguageSetting::WritePreferences(const QStringList& listCode)
{
    const QString strList = listCode.join(QStringLiteral("</string><string>"));
    Write(QString::fromLatin1(PREFERENCES),
          "<plist version=\"1.0\"><dict><key>AppleLanguages</key><array><string>" + strList.toUtf8()
              + "</string></array></dict></plist>");
}

/** Runs first: the instance must come up without preferences, and without any file to install. */
void tst_CLanguageSetting::noLanguageFolder()
{
    CInstallations installations;
    CLogCapture capture;
    CLanguageSetting& setting = CLanguageSetting::GetInstance();
    QCOMPARE(capture.Lines(),
             (QStringList{QStringLiteral("strSystemLanguage English"),
                          QStringLiteral("strSystemLanguage ") + m_strFolder
                              + QStringLiteral("/TarnwickMacPE_English.qm")}));
    QCOMPARE(installations.m_nInstalled, 0);
    QCOMPARE(Hello(), QStringLiteral("Hello"));

    QCOMPARE(&CLanguageSetting::GetInstance(), &setting);
    QCOMPARE(capture.Lines().size(), 2);
}

void tst_CLanguageSetting::languageOfCode_data()
{
    QTest::addColumn<QString>("strCode");
    QTest::addColumn<QString>("strName");
    const auto row = [](const char* pCode, const char* pName) {
        QTest::newRow(*pCode == '\0' ? "(empty)" : pCode)
            << QString::fromUtf8(pCode) << QString::fromLatin1(pName);
    };
    row("zh-Hant-TW", "ChineseTW");
    row("zh-HK-Hant", "ChineseTW");
    row("zh-Hant", "ChineseTW");
    row("Hant-zh", "ChineseTW");
    row("en-zh-Hant", "ChineseTW");
    row("zh-Hans-CN", "Chinese");
    row("zh", "Chinese");
    row("zh-hant", "Chinese");
    row("zh-TW", "Chinese");
    row("es", "Spanish");
    row("es-419", "Spanish");
    row("it", "Italian");
    row("it-CH", "Italian");
    row("fr", "French");
    row("fr-CA", "French");
    row("ja", "Japanese");
    row("ja-JP", "Japanese");
    row("nl", "Dutch");
    row("nl-BE", "Dutch");
    row("pt", "Portuguese");
    row("pt-BR", "Portuguese");
    row("de", "German");
    row("de-AT", "German");
    row("en", "English");
    row("en-GB", "English");
    row("EN", "English");
    row("English", "English");
    row("Fr", "English");
    row("DE", "English");
    row("yue-Hant", "English");
    row("Hant", "English");
    row("ZH-Hant", "English");
    row("x-fr", "English");
    row(" fr", "English");
    row("ko", "English");
    row("d", "English");
    row("deutsch", "German");
    row("italian and more", "Italian");
    row("", "English");
}

void tst_CLanguageSetting::languageOfCode()
{
    QFETCH(QString, strCode);
    QTEST(CLanguageSetting::LanguageOfCode(strCode), "strName");
}

void tst_CLanguageSetting::systemLanguage_data()
{
    QTest::addColumn<QStringList>("listCode");
    QTest::addColumn<QString>("strLine");
    QTest::addColumn<QString>("strName");
    QTest::newRow("the first counts")
        << QStringList{QStringLiteral("zh-Hant-TW"), QStringLiteral("en")}
        << QStringLiteral("strSystemLanguage zh-Hant-TW") << QStringLiteral("ChineseTW");
    QTest::newRow("not the second") << QStringList{QStringLiteral("ko"), QStringLiteral("fr")}
                                    << QStringLiteral("strSystemLanguage ko") << QStringLiteral("English");
    QTest::newRow("no preferences") << QStringList() << QStringLiteral("strSystemLanguage English")
                                    << QStringLiteral("English");
}

void tst_CLanguageSetting::systemLanguage()
{
    QFETCH(QStringList, listCode);
    QFETCH(QString, strLine);
    if (!listCode.isEmpty()) {
        WritePreferences(listCode);
    }
    CLanguageSetting& setting = CLanguageSetting::GetInstance();
    CLogCapture capture;
    QTEST(setting.GetSystemLanguage(), "strName");
    QCOMPARE(capture.Lines(), QStringList{strLine});
}

void tst_CLanguageSetting::instanceInstallsTheSystemsLanguage()
{
    // The instance of this process exists already, so another process is asked.
    WritePreferences({QStringLiteral("fr-CA")});
    Write(m_strFolder + QStringLiteral("/TarnwickMacPE_French.qm"), Translation(QStringLiteral("Bonjour")));
    QProcess process;
    process.start(QCoreApplication::applicationFilePath(), {QStringLiteral("--hello")});
    QVERIFY(process.waitForFinished());
    QCOMPARE(process.readAllStandardOutput(), QByteArray("Bonjour"));
}

void tst_CLanguageSetting::initLanguageFollowsThePreferences()
{
    WritePreferences({QStringLiteral("pt-BR"), QStringLiteral("en")});
    Write(m_strFolder + QStringLiteral("/TarnwickMacPE_Portuguese.qm"), Translation(QStringLiteral("Ola")));
    CLanguageSetting& setting = CLanguageSetting::GetInstance();
    CLogCapture capture;
    setting.InitLanguage();
    QCOMPARE(capture.Lines(),
             (QStringList{QStringLiteral("strSystemLanguage pt-BR"),
                          QStringLiteral("strSystemLanguage ") + m_strFolder
                              + QStringLiteral("/TarnwickMacPE_Portuguese.qm")}));
    QCOMPARE(Hello(), QStringLiteral("Ola"));
}

void tst_CLanguageSetting::fileOfLanguage_data()
{
    QTest::addColumn<QString>("strName");
    QTest::addColumn<QString>("strFile");
    for (const char* pName : {"ChineseTW", "Chinese", "Spanish", "Italian", "French", "Japanese", "Dutch",
                              "Portuguese", "German", "English"}) {
        const QString strName = QString::fromLatin1(pName);
        QTest::newRow(pName) << strName << QStringLiteral("TarnwickMacPE_") + strName + QStringLiteral(".qm");
    }
    QTest::newRow("empty name") << QString() << QStringLiteral("TarnwickMacPE_English.qm");
}

void tst_CLanguageSetting::fileOfLanguage()
{
    QFETCH(QString, strName);
    QFETCH(QString, strFile);
    const QString strPath = m_strFolder + QLatin1Char('/') + strFile;
    const QString strText = QStringLiteral("<%1>").arg(QString::fromLatin1(QTest::currentDataTag()));
    Write(strPath, Translation(strText));
    CLanguageSetting& setting = CLanguageSetting::GetInstance();
    CInstallations installations;
    CLogCapture capture;
    setting.SetLanguage(strName);
    QCOMPARE(capture.Lines(), QStringList{QStringLiteral("strSystemLanguage ") + strPath});
    QCOMPARE(installations.m_nInstalled, 1);
    QCOMPARE(Hello(), strText);
}

void tst_CLanguageSetting::secondLanguageLiesOnTop()
{
    Write(m_strFolder + QStringLiteral("/TarnwickMacPE_French.qm"), Translation(QStringLiteral("Bonjour")));
    Write(m_strFolder + QStringLiteral("/TarnwickMacPE_Spanish.qm"), Translation(QStringLiteral("Hola")));
    CLanguageSetting& setting = CLanguageSetting::GetInstance();
    CInstallations installations;
    setting.SetLanguage(QStringLiteral("French"));
    QCOMPARE(Hello(), QStringLiteral("Bonjour"));
    setting.SetLanguage(QStringLiteral("Spanish"));
    QCOMPARE(Hello(), QStringLiteral("Hola"));
    setting.SetLanguage(QStringLiteral("Klingon"));
    QCOMPARE(Hello(), QStringLiteral("Hola"));
    QCOMPARE(installations.m_nInstalled, 2);
}

void tst_CLanguageSetting::fallbackFile()
{
    Write(m_strFallbackFolder + QStringLiteral("/English.qm"), Translation(QStringLiteral("Fallback")));
    CLanguageSetting& setting = CLanguageSetting::GetInstance();
    CInstallations installations;
    CLogCapture capture;
    setting.SetLanguage(QStringLiteral("German"));
    QCOMPARE(installations.m_nInstalled, 1);
    QCOMPARE(Hello(), QStringLiteral("Fallback"));
    // The line names the file that was looked for, not the one that was found.
    QCOMPARE(capture.Lines(),
             QStringList{QStringLiteral("strSystemLanguage ") + m_strFolder
                         + QStringLiteral("/TarnwickMacPE_German.qm")});
}

void tst_CLanguageSetting::fallbackIsNotTheFolderNextDoor_data()
{
    QTest::addColumn<QString>("strPath");
    QTest::newRow("with the slash") << m_strFolder + QStringLiteral("/English.qm");
    QTest::newRow("with the slash and the prefix")
        << m_strFolder + QStringLiteral("/TarnwickMacPE_English.qm");
    QTest::newRow("with the prefix") << m_strFallbackFolder + QStringLiteral("/TarnwickMacPE_English.qm");
    QTest::newRow("with the ending twice") << m_strFallbackFolder + QStringLiteral("/English.qm.qm");
    QTest::newRow("other language") << m_strFallbackFolder + QStringLiteral("/German.qm");
}

void tst_CLanguageSetting::fallbackIsNotTheFolderNextDoor()
{
    QFETCH(QString, strPath);
    Write(strPath, Translation(QStringLiteral("Wrong")));
    CLanguageSetting& setting = CLanguageSetting::GetInstance();
    CInstallations installations;
    setting.SetLanguage(QStringLiteral("German"));
    QCOMPARE(installations.m_nInstalled, 0);
    QVERIFY(Hello() != QStringLiteral("Wrong"));
}

void tst_CLanguageSetting::brokenFileTakesNoFallback()
{
    Write(m_strFolder + QStringLiteral("/TarnwickMacPE_German.qm"), "this is no translation");
    Write(m_strFallbackFolder + QStringLiteral("/English.qm"), Translation(QStringLiteral("Unwanted")));
    const QString strBefore = Hello();
    CLanguageSetting::GetInstance().SetLanguage(QStringLiteral("German"));
    QCOMPARE(Hello(), strBefore);
    QVERIFY(Hello() != QStringLiteral("Unwanted"));
}

/** Translations are kept to the end of the process on purpose; a leak check is not to count them. */
extern "C" const char* __lsan_default_suppressions() { return "leak:CLanguageSetting::SetLanguage\n"; }

/** With "--hello" only the translation is printed that the first use of the instance has installed. */
int main(int argc, char* argv[])
{
    QCoreApplication app(argc, argv);
    if (app.arguments().contains(QStringLiteral("--hello"))) {
        CLanguageSetting::GetInstance();
        std::fputs(Hello().toUtf8().constData(), stdout);
        return std::fflush(stdout);
    }
    tst_CLanguageSetting test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_CLanguageSetting.moc"
