#include "settings/CSystemLanguages.h"
#include "support/TestFiles.h"

#include <QtTest>

#include <sys/stat.h>

static const char PREFERENCES[] = "/Library/Preferences/.GlobalPreferences.plist";

/** Tests run in a private view of the file system, in which this folder is their own. */
class tst_CSystemLanguages : public QObject
{
    Q_OBJECT

private slots:
    void init() { QVERIFY(!QFileInfo::exists(PREFERENCES)); }
    void cleanup() { QFile::remove(PREFERENCES); }

    void missingFile() { QCOMPARE(CSystemLanguages::Read(), QStringList()); }

    void list_data()
    {
        QTest::addColumn<QByteArray>("baText");
        QTest::addColumn<QStringList>("listExpected");
        const auto row = [](const char* pName, const QByteArray& baInner, const QStringList& listExpected) {
            QTest::newRow(pName) << "<plist version=\"1.0\">" + baInner + "</plist>" << listExpected;
        };
        row("several",
            "<dict><key>AppleLanguages</key><array><string>zh-Hant-TW</string><string>en</string>"
            "</array></dict>",
            {"zh-Hant-TW", "en"});
        row("among other preferences",
            "<dict><key>Country</key><string>DE</string><key>AppleLanguages</key><array><string>de</string>"
            "</array><key>Z</key><true/></dict>",
            {"de"});
        row("empty list", "<dict><key>AppleLanguages</key><array/></dict>", {});
        row("a single text", "<dict><key>AppleLanguages</key><string>fr</string></dict>", {"fr"});
        row("number", "<dict><key>AppleLanguages</key><integer>3</integer></dict>", {});
        row("key missing", "<dict><key>AppleLocale</key><string>de_DE</string></dict>", {});
        row("key of other case", "<dict><key>appleLanguages</key><array><string>de</string></array></dict>",
            {});
        row("no dict", "<array><string>de</string></array>", {});
        QTest::newRow("broken") << QByteArray("<plist><dict><key>AppleLang") << QStringList();
        QTest::newRow("binary") << QByteArray("bplist00\xd1") << QStringList();
        QTest::newRow("empty file") << QByteArray() << QStringList();
    }

    void list()
    {
        QFETCH(QByteArray, baText);
        WriteFile(PREFERENCES, baText);
        QTEST(CSystemLanguages::Read(), "listExpected");
    }

    void pipeIsNotWaitedFor()
    {
        QCOMPARE(mkfifo(PREFERENCES, 0600), 0);
        QCOMPARE(CSystemLanguages::Read(), QStringList());
    }

    void folderInItsPlace()
    {
        QVERIFY(QDir().mkdir(PREFERENCES));
        QCOMPARE(CSystemLanguages::Read(), QStringList());
        QVERIFY(QDir().rmdir(PREFERENCES));
    }
};

QTEST_GUILESS_MAIN(tst_CSystemLanguages)
#include "tst_CSystemLanguages.moc"
