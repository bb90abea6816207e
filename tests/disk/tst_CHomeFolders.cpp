#include "disk/CHomeFolders.h"
#include "support/CTempTree.h"

#include <QDir>
#include <QTest>

static const char VERSION[] = "System/Library/CoreServices/SystemVersion.plist";

/** Where the files of a Mac's users are, told by the folders of its volumes. */
class tst_CHomeFolders : public QObject
{
    Q_OBJECT

private slots:
    void look_data();
    void look();
    void runningSystemIsNone();
    void container_data();
    void container();
    void missing_data();
    void missing();
};

void tst_CHomeFolders::look_data()
{
    QTest::addColumn<QStringList>("listEntry");
    QTest::addColumn<bool>("bSystem");
    QTest::addColumn<bool>("bUsers");
    QTest::addColumn<bool>("bHomes");
    QTest::newRow("nothing") << QStringList() << false << false << false;
    QTest::newRow("sealed system") << QStringList{VERSION, "Users/"} << true << true << false;
    QTest::newRow("no home") << QStringList{VERSION,
                                            "Users/Shared/",
                                            "Users/Guest/",
                                            "Users/Deleted Users/",
                                            "Users/.localized",
                                            "Users/.hidden/",
                                            "Users/file"}
                             << true << true << false;
    QTest::newRow("system with its users")
        << QStringList{VERSION, "Users/Shared/", "Users/anna/"} << true << true << true;
    QTest::newRow("data") << QStringList{"Users/anna/Pictures/", "Library/", "System/Library/CoreServices/"}
                          << false << true << true;
    QTest::newRow("data without users") << QStringList{"Users/Shared/"} << false << true << false;
    QTest::newRow("installer") << QStringList{VERSION, "System/Installation/CDIS/", "Users/"} << false << true
                               << false;
    QTest::newRow("system without the folder") << QStringList{VERSION} << true << false << false;
    QTest::newRow("Windows") << QStringList{"Windows/System32/", "Users/anna/"} << false << false << false;
    QTest::newRow("Linux") << QStringList{"home/anna/", "etc/fstab"} << false << false << false;
    QTest::newRow("file in the folder's place") << QStringList{VERSION, "Users"} << true << false << false;
}

void tst_CHomeFolders::look()
{
    QFETCH(QStringList, listEntry);
    CTempTree tree;
    tree.Fill(listEntry);
    const STHomeFacts stFacts = CHomeFolders::Look(tree.Path());
    QTEST(stFacts.bSystem, "bSystem");
    QTEST(stFacts.bUsers, "bUsers");
    QTEST(stFacts.bHomes, "bHomes");
    // A link among the volumes leads to where one is mounted.
    const CTempTree other;
    QVERIFY(QFile::link(tree.Path(), other.Path("volume")));
    QTEST(CHomeFolders::Look(other.Path("volume")).bHomes, "bHomes");
    // In a volume they lead out of it, and nobody knows where to.
    if (tree.Has("Users/anna")) {
        QVERIFY(QFile::rename(tree.Path("Users"), tree.Path("elsewhere")));
        tree.Link("Users", tree.Path("elsewhere"));
        QVERIFY(!CHomeFolders::Look(tree.Path()).bUsers);
    }
}

void tst_CHomeFolders::runningSystemIsNone()
{
    if (!qEnvironmentVariableIsSet("TARNWICK_SANDBOX") || !QDir().mkpath("/Users/anna")) {
        QSKIP("a folder is made beside the system's own in tests/support/sandbox only");
    }
    const CTempTree tree;
    QVERIFY(QFile::link("/", tree.Path("volume")));
    const STHomeFacts stFacts = CHomeFolders::Look(tree.Path("volume"));
    QVERIFY(!stFacts.bSystem);
    QVERIFY(!stFacts.bUsers);
    QVERIFY(!CHomeFolders::Look(tree.Path("none")).bUsers);
}

void tst_CHomeFolders::container_data()
{
    QTest::addColumn<QByteArray>("baDevice");
    QTest::addColumn<QByteArray>("baContainer");
    QTest::newRow("volume") << QByteArray("/dev/disk3s5") << QByteArray("/dev/disk3");
    QTest::newRow("snapshot") << QByteArray("/dev/disk13s1s1") << QByteArray("/dev/disk13");
    QTest::newRow("partition") << QByteArray("/dev/nvme0n1p2") << QByteArray("/dev/nvme0n1p2");
    QTest::newRow("no device") << QByteArray("tmpfs") << QByteArray();
    QTest::newRow("not known") << QByteArray() << QByteArray();
}

void tst_CHomeFolders::container()
{
    QFETCH(QByteArray, baDevice);
    QTEST(CHomeFolders::Container(baDevice), "baContainer");
}

// "S" a system without homes, "H" one with them, "D" data with homes, "d" without, "?" no answer,
// "-" none of these; behind it the device.
static QVector<STHomeVolume> Volumes(const QStringList& listText)
{
    QVector<STHomeVolume> listVolume;
    for (const QString& strText : listText) {
        const QStringList listPart = strText.split('|');
        const QChar cKind = listPart.at(0).at(0);
        STHomeVolume stVolume{"/Volumes/" + listPart.at(1), listPart.at(1), listPart.value(2).toUtf8()};
        if (cKind != '?') {
            stVolume.stFacts
                = STHomeFacts{cKind == 'S' || cKind == 'H', cKind != '-', cKind == 'H' || cKind == 'D'};
        }
        listVolume.append(stVolume);
    }
    return listVolume;
}

void tst_CHomeFolders::missing_data()
{
    QTest::addColumn<QStringList>("listVolume");
    QTest::addColumn<QString>("strMissing"); // system > where its users are
    QTest::newRow("no volume") << QStringList() << "";
    QTest::newRow("old system") << QStringList{"H|Mac"} << "";
    QTest::newRow("locked") << QStringList{"S|Mac|/dev/disk3s1s1"} << "Mac>";
    QTest::newRow("mounted apart") << QStringList{"S|Mac|/dev/disk3s1s1", "D|Data|/dev/disk3s5"}
                                   << "Mac>Data";
    QTest::newRow("in any order") << QStringList{"D|Data|/dev/disk3s5", "S|Mac|/dev/disk3s1s1"} << "Mac>Data";
    QTest::newRow("by name") << QStringList{"S|Mac", "D|Other", "D|Mac - Data"} << "Mac>Mac - Data";
    QTest::newRow("devices unknown") << QStringList{"S|Mac", "D|Data"} << "Mac>Data";
    QTest::newRow("of another disk") << QStringList{"S|Mac|/dev/disk3s1", "D|Data|/dev/disk5s1"} << "Mac>";
    QTest::newRow("that name on another disk")
        << QStringList{"S|Mac|/dev/disk3s1", "D|Mac - Data|/dev/disk5s1"} << "Mac>";
    QTest::newRow("nobody has files") << QStringList{"S|Mac|/dev/disk3s1", "d|Data|/dev/disk3s5"} << "";
    QTest::newRow("data alone") << QStringList{"D|Data|/dev/disk3s5"} << "";
    QTest::newRow("beside an old system")
        << QStringList{"S|Mac|/dev/disk3s1", "H|Old|/dev/disk0s2"} << "Mac>";
    QTest::newRow("no Mac") << QStringList{"-|Windows|/dev/disk0s3", "-|Linux"} << "";
    QTest::newRow("silent") << QStringList{"?|Mac", "D|Data"} << "";
    QTest::newRow("the other one silent") << QStringList{"S|Mac", "?|Data"} << "Mac>";
    QTest::newRow("two systems, each apart") << QStringList{"S|One|/dev/disk3s1", "S|Two|/dev/disk5s1",
                                                            "D|Data|/dev/disk5s5", "D|Data 1|/dev/disk3s5"}
                                             << "One>Data 1";
    QTest::newRow("two systems, one locked")
        << QStringList{"S|One|/dev/disk3s1", "S|Two|/dev/disk5s1", "D|Data|/dev/disk3s5"} << "Two>";
    QTest::newRow("two on one disk, by name")
        << QStringList{"S|One|/dev/disk3s1", "S|Two|/dev/disk3s2", "D|Two - Data|/dev/disk3s5"} << "One>";
    QTest::newRow("two systems without a volume for the second")
        << QStringList{"S|One", "S|Two", "D|Data"} << "Two>";
}

void tst_CHomeFolders::missing()
{
    QFETCH(QStringList, listVolume);
    const std::optional<STMissingHomes> stMissing = CHomeFolders::Missing(Volumes(listVolume));
    QTEST(stMissing ? stMissing->strSystem + '>' + stMissing->strHomes : QString(), "strMissing");
}

QTEST_GUILESS_MAIN(tst_CHomeFolders)
#include "tst_CHomeFolders.moc"
