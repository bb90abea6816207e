#include "settings/CLanguageSetting.h"
#include "settings/CSystemLanguages.h"
#include "support/TestFiles.h"

#include <QFile>
#include <QTest>

static const char PREFERENCES[] = "/Library/Preferences/.GlobalPreferences.plist";

/**
 * What a Mac's source reads through QSettings. The native format of this system is another
 * one, so the file, the key and the list are held here, and not the reading of a property list.
 * The folder is this test's own.
 */
class tst_MacSystemLanguages : public QObject
{
    Q_OBJECT

private slots:
    void cleanup() { QFile::remove(PREFERENCES); }
    void missingFile();
    void list_data();
    void list();
    void fileIsLeftAsItWas();
};

void tst_MacSystemLanguages::missingFile()
{
    QCOMPARE(CSystemLanguages::Read(), QStringList());
    QVERIFY(!QFile::exists(PREFERENCES));
}

void tst_MacSystemLanguages::list_data()
{
    QTest::addColumn<QByteArray>("baText");
    QTest::addColumn<QStringList>("listExpected");
    QTest::addColumn<QString>("strLanguage");
    const auto fnRow
        = [](const char* pRow, const char* pText, const QStringList& listExpected, const char* pLanguage) {
              QTest::newRow(pRow) << QByteArray(pText) << listExpected << QString(pLanguage);
          };
    fnRow("several", "AppleLanguages=zh-Hant-TW, en\n", {"zh-Hant-TW", "en"}, "ChineseTW");
    fnRow("a single text", "AppleLanguages=fr\n", {"fr"}, "French");
    fnRow("among others", "Country=DE\nAppleLanguages=de, ja\nZ=1\n", {"de", "ja"}, "German");
    fnRow("in a group", "[Group]\nAppleLanguages=de\n", {}, "English");
    fnRow("key missing", "AppleLocale=de_DE\n", {}, "English");
    fnRow("empty file", "", {}, "English");
}

void tst_MacSystemLanguages::list()
{
    QFETCH(QByteArray, baText);
    WriteFile(PREFERENCES, baText);
    QTEST(CSystemLanguages::Read(), "listExpected");
    QTEST(CLanguageSetting::GetInstance().GetSystemLanguage(), "strLanguage");
}

void tst_MacSystemLanguages::fileIsLeftAsItWas()
{
    const QByteArray baText = "AppleLanguages=de\n";
    WriteFile(PREFERENCES, baText);
    CSystemLanguages::Read();
    QFile file(PREFERENCES);
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll(), baText);
}

QTEST_GUILESS_MAIN(tst_MacSystemLanguages)
#include "tst_MacSystemLanguages.moc"
