#include "settings/CLanguageSetting.h"
#include "support/CLogCapture.h"
#include "support/TestFiles.h"

#include <QTranslator>
#include <QtTest>

#include <cstdio>

static const QString PREFERENCES = "/Library/Preferences/.GlobalPreferences.plist";

/** A translation file with one text, "Hello" in the context "C", and the language that it says, if any. */
static QByteArray Translation(const QString& strText, const QByteArray& baLanguage = QByteArray())
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
    const QByteArray baSaid = baLanguage.isEmpty() ? QByteArray() : section('\xa7', baLanguage);
    return baMagic + baSaid + section('\x42', QByteArray::fromHex("004ec32f00000000"))
        + section('\x69', baMessage);
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
    void numbersFollowTheLanguage();
    void fallbackFile_data();
    void fallbackFile();
    void brokenFileTakesNoFallback();

private:
    void WritePreferences(const QStringList& listCode);

    QString m_strFolder;
    QString m_strFallbackFolder;
};

void tst_CLanguageSetting::initTestCase()
{
    m_strFolder = QCoreApplication::applicationDirPath() + "/Language";
    m_strFallbackFolder = QCoreApplication::applicationDirPath() + "Language";
}

void tst_CLanguageSetting::init()
{
    QVERIFY(!QFileInfo::exists(PREFERENCES));
    QDir(m_strFolder).removeRecursively();
    QDir(m_strFallbackFolder).removeRecursively();
}

void tst_CLanguageSetting::cleanup()
{
    QFile::remove(PREFERENCES);
    QDir(m_strFolder).removeRecursively();
    QDir(m_strFallbackFolder).removeRecursively();
}

void tst_CLanguageSetting::WritePreferences(const QStringList& listCode)
{
    const QString strList = listCode.join("</string><string>");
    WriteFile(PREFERENCES,
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
             QStringList({"strSystemLanguage English",
                          "strSystemLanguage " + m_strFolder + "/TarnwickMacPE_English.qm"}));
    QCOMPARE(installations.m_nInstalled, 0);
    QCOMPARE(Hello(), "Hello");

    QCOMPARE(&CLanguageSetting::GetInstance(), &setting);
    QCOMPARE(capture.Lines().size(), 2);
}

void tst_CLanguageSetting::languageOfCode_data()
{
    QTest::addColumn<QString>("strCode");
    QTest::addColumn<QString>("strName");
    const auto rows = [](const char* pName, const QStringList& listCode) {
        for (const QString& strCode : listCode) {
            QTest::newRow(strCode.isEmpty() ? "(empty)" : qPrintable(strCode)) << strCode << pName;
        }
    };
    rows("ChineseTW", {"zh-Hant-TW", "zh-HK-Hant", "zh-Hant", "Hant-zh", "en-zh-Hant"});
    rows("Chinese", {"zh-Hans-CN", "zh", "zh-hant", "zh-TW"});
    rows("Spanish", {"es", "es-419"});
    rows("Italian", {"it", "it-CH", "italian and more"});
    rows("French", {"fr", "fr-CA"});
    rows("Japanese", {"ja", "ja-JP"});
    rows("Dutch", {"nl", "nl-BE"});
    rows("Portuguese", {"pt", "pt-BR"});
    rows("German", {"de", "de-AT", "deutsch"});
    rows("English", {"en", "en-GB", "EN", "English", ""});
    rows("English", {"Fr", "DE", "yue-Hant", "Hant", "ZH-Hant", "x-fr", " fr", "ko", "d"});
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
    QTest::newRow("the first counts") << QStringList{"zh-Hant-TW", "en"} << "strSystemLanguage zh-Hant-TW"
                                      << "ChineseTW";
    QTest::newRow("not the second") << QStringList{"ko", "fr"} << "strSystemLanguage ko"
                                    << "English";
    QTest::newRow("no preferences") << QStringList() << "strSystemLanguage English"
                                    << "English";
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
    WritePreferences({"fr-CA"});
    WriteFile(m_strFolder + "/TarnwickMacPE_French.qm", Translation("Bonjour"));
    QProcess process;
    process.start(QCoreApplication::applicationFilePath(), {"--hello"});
    QVERIFY(process.waitForFinished());
    QCOMPARE(process.readAllStandardOutput(), QByteArray("Bonjour"));
}

void tst_CLanguageSetting::initLanguageFollowsThePreferences()
{
    WritePreferences({"pt-BR", "en"});
    WriteFile(m_strFolder + "/TarnwickMacPE_Portuguese.qm", Translation("Ola"));
    CLanguageSetting& setting = CLanguageSetting::GetInstance();
    CLogCapture capture;
    setting.InitLanguage();
    QCOMPARE(capture.Lines(),
             QStringList({"strSystemLanguage pt-BR",
                          "strSystemLanguage " + m_strFolder + "/TarnwickMacPE_Portuguese.qm"}));
    QCOMPARE(Hello(), "Ola");
}

void tst_CLanguageSetting::fileOfLanguage_data()
{
    QTest::addColumn<QString>("strName");
    QTest::addColumn<QString>("strFile");
    for (const char* pName : {"ChineseTW", "Chinese", "Spanish", "Italian", "French", "Japanese", "Dutch",
                              "Portuguese", "German", "English"}) {
        QTest::newRow(pName) << pName << QString("TarnwickMacPE_%1.qm").arg(pName);
    }
    QTest::newRow("empty name") << QString() << "TarnwickMacPE_English.qm";
}

void tst_CLanguageSetting::fileOfLanguage()
{
    QFETCH(QString, strName);
    QFETCH(QString, strFile);
    const QString strPath = m_strFolder + '/' + strFile;
    const QString strText = QString("<%1>").arg(QTest::currentDataTag());
    WriteFile(strPath, Translation(strText));
    CLanguageSetting& setting = CLanguageSetting::GetInstance();
    CInstallations installations;
    CLogCapture capture;
    setting.SetLanguage(strName);
    QCOMPARE(capture.Lines(), QStringList{"strSystemLanguage " + strPath});
    QCOMPARE(installations.m_nInstalled, 1);
    QCOMPARE(Hello(), strText);
}

void tst_CLanguageSetting::secondLanguageLiesOnTop()
{
    WriteFile(m_strFolder + "/TarnwickMacPE_French.qm", Translation("Bonjour"));
    WriteFile(m_strFolder + "/TarnwickMacPE_Spanish.qm", Translation("Hola"));
    CLanguageSetting& setting = CLanguageSetting::GetInstance();
    CInstallations installations;
    setting.SetLanguage("French");
    QCOMPARE(Hello(), "Bonjour");
    setting.SetLanguage("Spanish");
    QCOMPARE(Hello(), "Hola");
    setting.SetLanguage("Klingon");
    QCOMPARE(Hello(), "Hola");
    QCOMPARE(installations.m_nInstalled, 2);
}

void tst_CLanguageSetting::numbersFollowTheLanguage()
{
    WriteFile(m_strFolder + "/TarnwickMacPE_German.qm", Translation("Hallo", "de_DE"));
    WriteFile(m_strFolder + "/TarnwickMacPE_Spanish.qm", Translation("Hola"));
    const QLocale old;
    CLanguageSetting::GetInstance().SetLanguage("German");
    const QString strGerman = QLocale().toString(1234.5, 'f', 1);
    CLanguageSetting::GetInstance().SetLanguage("Spanish");
    const QString strLanguageUnknown = QLocale().toString(1234.5, 'f', 1);
    QLocale::setDefault(old);
    QCOMPARE(strGerman, QString("1.234,5"));
    QCOMPARE(strLanguageUnknown, strGerman);
}

void tst_CLanguageSetting::fallbackFile_data()
{
    QTest::addColumn<QString>("strPath");
    QTest::addColumn<bool>("bFound");
    QTest::newRow("as it is named") << m_strFallbackFolder + "/English.qm" << true;
    QTest::newRow("with the slash") << m_strFolder + "/English.qm" << false;
    QTest::newRow("with the slash and the prefix") << m_strFolder + "/TarnwickMacPE_English.qm" << false;
    QTest::newRow("with the prefix") << m_strFallbackFolder + "/TarnwickMacPE_English.qm" << false;
    QTest::newRow("with the ending twice") << m_strFallbackFolder + "/English.qm.qm" << false;
    QTest::newRow("other language") << m_strFallbackFolder + "/German.qm" << false;
}

void tst_CLanguageSetting::fallbackFile()
{
    QFETCH(QString, strPath);
    WriteFile(strPath, Translation(strPath));
    CLanguageSetting& setting = CLanguageSetting::GetInstance();
    CInstallations installations;
    CLogCapture capture;
    setting.SetLanguage("German");
    QTEST(installations.m_nInstalled != 0, "bFound");
    QTEST(Hello() == strPath, "bFound");
    // The line names the file that was looked for, not the one that was found.
    QCOMPARE(capture.Lines(), QStringList{"strSystemLanguage " + m_strFolder + "/TarnwickMacPE_German.qm"});
}

void tst_CLanguageSetting::brokenFileTakesNoFallback()
{
    WriteFile(m_strFolder + "/TarnwickMacPE_German.qm", "this is no translation");
    WriteFile(m_strFallbackFolder + "/English.qm", Translation("Unwanted"));
    const QString strBefore = Hello();
    CLanguageSetting::GetInstance().SetLanguage("German");
    QCOMPARE(Hello(), strBefore);
    QVERIFY(Hello() != "Unwanted");
}

/** Translations are kept to the end of the process on purpose; a leak check is not to count them. */
extern "C" const char* __lsan_default_suppressions() { return "leak:CLanguageSetting::SetLanguage\n"; }

/** With "--hello" only the translation is printed that the first use of the instance has installed. */
int main(int argc, char* argv[])
{
    QCoreApplication app(argc, argv);
    if (app.arguments().contains("--hello")) {
        CLanguageSetting::GetInstance();
        std::fputs(Hello().toUtf8().constData(), stdout);
        return std::fflush(stdout);
    }
    tst_CLanguageSetting test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_CLanguageSetting.moc"
