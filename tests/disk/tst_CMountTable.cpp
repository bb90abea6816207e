#include "disk/platform/linux/CMountTable.h"

#include <QtTest>

/** Understanding and comparing tables of mounts, given as the kernel writes them. */
class tst_CMountTable : public QObject
{
    Q_OBJECT

private slots:
    void Parses_data();
    void Parses();
    void LeavesOutWhatIsNoMount_data();
    void LeavesOutWhatIsNoMount();
    void Compares_data();
    void Compares();
    void ReadsTheTableOfThisProcess();
};

static const QByteArray ROOT = "20 1 8:1 / / rw,relatime shared:1 - ext4 /dev/sda1 rw\n";
static const QByteArray VOLUMES = "30 20 0:30 / /Volumes rw - tmpfs volumes rw\n";
static const QByteArray STICK = "40 30 8:17 / /Volumes/STICK rw shared:7 - vfat /dev/sdb1 rw\n";
static const QByteArray OTHER = "41 30 8:33 / /Volumes/OTHER rw - vfat /dev/sdc1 rw\n";

void tst_CMountTable::Parses_data()
{
    QTest::addColumn<QByteArray>("baLine");
    QTest::addColumn<QByteArray>("baPoint");
    QTest::addColumn<QByteArray>("baSource");

    QTest::newRow("no optional field") << OTHER << QByteArray("/Volumes/OTHER") << QByteArray("/dev/sdc1");
    QTest::newRow("one optional field") << STICK << QByteArray("/Volumes/STICK") << QByteArray("/dev/sdb1");
    QTest::newRow("three optional fields")
        << QByteArray("40 30 8:17 / /Volumes/S rw shared:7 master:8 propagate_from:2 - vfat /dev/sdb1 rw")
        << QByteArray("/Volumes/S") << QByteArray("/dev/sdb1");
    QTest::newRow("blank") << QByteArray("40 30 8:17 / /Volumes/MY\\040STICK rw - vfat /dev/sdb1 rw")
                           << QByteArray("/Volumes/MY STICK") << QByteArray("/dev/sdb1");
    QTest::newRow("newline, tab, backslash, hash")
        << QByteArray("40 30 8:17 / /Volumes/a\\012b\\011c\\134d\\043e rw - vfat /dev/sdb1 rw")
        << QByteArray("/Volumes/a\nb\tc\\d#e") << QByteArray("/dev/sdb1");
    QTest::newRow("an escaped backslash before digits")
        << QByteArray("40 30 8:17 / /Volumes/a\\134040b rw - vfat /dev/sdb1 rw")
        << QByteArray("/Volumes/a\\040b") << QByteArray("/dev/sdb1");
    QTest::newRow("blank in the source")
        << QByteArray("40 30 0:9 / /Volumes/S rw - cifs //nas/my\\040share rw") << QByteArray("/Volumes/S")
        << QByteArray("//nas/my share");
    QTest::newRow("bytes above 127") << QByteArray(
        "40 30 8:17 / /Volumes/\xff\xc3\xa4 rw - vfat /dev/sdb1 rw")
                                     << QByteArray("/Volumes/\xff\xc3\xa4") << QByteArray("/dev/sdb1");
    QTest::newRow("empty source") << QByteArray("40 30 0:9 / /Volumes/S rw - tmpfs  rw")
                                  << QByteArray("/Volumes/S") << QByteArray();
    QTest::newRow("a dash as source") << QByteArray("40 30 0:9 / /Volumes/S rw - tmpfs - rw")
                                      << QByteArray("/Volumes/S") << QByteArray("-");
    QTest::newRow("a dash as root folder") << QByteArray("40 30 0:9 - /Volumes/S rw - tmpfs x rw")
                                           << QByteArray("/Volumes/S") << QByteArray("x");
}

void tst_CMountTable::Parses()
{
    QFETCH(QByteArray, baLine);
    const QVector<STMount> listMount = CMountTable::Parse(baLine);
    QCOMPARE(listMount.size(), 1);
    QTEST(listMount[0].baPoint, "baPoint");
    QTEST(listMount[0].baSource, "baSource");
    QCOMPARE(listMount[0].nParentId, qint64(30));
}

void tst_CMountTable::LeavesOutWhatIsNoMount_data()
{
    QTest::addColumn<QByteArray>("baText");
    QTest::newRow("nothing") << QByteArray();
    QTest::newRow("blank lines") << QByteArray("\n \n\n");
    QTest::newRow("other words") << QByteArray("this is not a table of mounts at all\n");
    QTest::newRow("cut before the dash") << QByteArray("40 30 8:17 / /Volumes/S rw shared:7");
    QTest::newRow("cut behind the dash") << QByteArray("40 30 8:17 / /Volumes/S rw - vfat");
    QTest::newRow("no number") << QByteArray("x 30 8:17 / /Volumes/S rw - vfat /dev/sdb1 rw");
    QTest::newRow("no parent's number") << QByteArray("40 x 8:17 / /Volumes/S rw - vfat /dev/sdb1 rw");
}

void tst_CMountTable::LeavesOutWhatIsNoMount()
{
    QFETCH(QByteArray, baText);
    QCOMPARE(CMountTable::Parse(baText).size(), 0);
    QCOMPARE(CMountTable::Parse(baText + "\n" + STICK).size(), 1);
}

/** Events as text: "+" or "-" and the path, one per line. */
static QByteArray AsText(const QVector<STDiskEvent>& listEvent)
{
    QByteArray baText;
    for (const STDiskEvent& event : listEvent) {
        baText += (event.enType == DISK_EVENT_APPEARED ? "+" : "-") + event.baPath + "\n";
    }
    return baText;
}

void tst_CMountTable::Compares_data()
{
    QTest::addColumn<QByteArray>("baBefore");
    QTest::addColumn<QByteArray>("baAfter");
    QTest::addColumn<QByteArray>("baEvents");

    const QByteArray baBase = ROOT + VOLUMES;
    const QByteArray baStickAgain = "40 30 8:33 / /Volumes/STICK rw - vfat /dev/sdc1 rw\n";
    const QByteArray baStickNewNumber = "77 30 8:17 / /Volumes/STICK rw - vfat /dev/sdb1 rw\n";
    const QByteArray baStickReadOnly = "40 30 8:17 / /Volumes/STICK ro - vfat /dev/sdb1 ro,errors=continue\n";
    const QByteArray baStickMoved = "40 30 8:17 / /Volumes/BACK rw - vfat /dev/sdb1 rw\n";
    const QByteArray baStickElsewhere = "40 20 8:17 / /mnt rw - vfat /dev/sdb1 rw\n";
    const QByteArray baOverStick = "50 40 8:33 / /Volumes/STICK rw - vfat /dev/sdc1 rw\n";
    const QByteArray baInside = "51 40 8:33 / /Volumes/STICK/inside rw - vfat /dev/sdc1 rw\n";
    const QByteArray baElsewhere = "52 20 8:33 / /media/STICK rw - vfat /dev/sdc1 rw\n";
    const QByteArray baSimilar = "53 20 8:33 / /Volumes2/STICK rw - vfat /dev/sdc1 rw\n";
    const QByteArray baLonger = "55 20 8:33 / /Volumes23 rw - vfat /dev/sdc1 rw\n";
    const QByteArray baDeeper = "54 20 8:33 / /mnt/Volumes/STICK rw - vfat /dev/sdc1 rw\n";

    QTest::newRow("nothing happened") << baBase + STICK << baBase + STICK << QByteArray();
    QTest::newRow("mounted") << baBase << baBase + STICK << QByteArray("+/Volumes/STICK\n");
    QTest::newRow("unmounted") << baBase + STICK << baBase << QByteArray("-/Volumes/STICK\n");
    QTest::newRow("two mounted, in the table's order")
        << baBase << baBase + STICK + OTHER << QByteArray("+/Volumes/STICK\n+/Volumes/OTHER\n");
    QTest::newRow("two unmounted") << baBase + OTHER + STICK << baBase
                                   << QByteArray("-/Volumes/OTHER\n-/Volumes/STICK\n");
    QTest::newRow("the removal comes first")
        << baBase + STICK << baBase + OTHER << QByteArray("-/Volumes/STICK\n+/Volumes/OTHER\n");
    QTest::newRow("the table's order changed")
        << baBase + STICK + OTHER << OTHER + STICK + baBase << QByteArray();
    QTest::newRow("mounted again with other options")
        << baBase + STICK << baBase + baStickReadOnly << QByteArray();
    QTest::newRow("moved within the folder")
        << baBase + STICK << baBase + baStickMoved << QByteArray("-/Volumes/STICK\n+/Volumes/BACK\n");
    QTest::newRow("moved out of the folder")
        << baBase + STICK << baBase + baStickElsewhere << QByteArray("-/Volumes/STICK\n");
    QTest::newRow("moved into the folder")
        << baBase + baStickElsewhere << baBase + STICK << QByteArray("+/Volumes/STICK\n");
    QTest::newRow("another disk under the same name and number")
        << baBase + STICK << baBase + baStickAgain << QByteArray("-/Volumes/STICK\n+/Volumes/STICK\n");
    QTest::newRow("the same disk unmounted and mounted")
        << baBase + STICK << baBase + baStickNewNumber << QByteArray("-/Volumes/STICK\n+/Volumes/STICK\n");
    QTest::newRow("another volume mounted over it")
        << baBase + STICK << baBase + STICK + baOverStick << QByteArray("-/Volumes/STICK\n+/Volumes/STICK\n");
    QTest::newRow("the volume over it unmounted")
        << baBase + STICK + baOverStick << baBase + STICK << QByteArray("-/Volumes/STICK\n+/Volumes/STICK\n");
    QTest::newRow("both unmounted") << baBase + STICK + baOverStick << baBase
                                    << QByteArray("-/Volumes/STICK\n");
    QTest::newRow("inside a volume") << baBase + STICK << baBase + STICK + baInside << QByteArray();
    QTest::newRow("elsewhere") << baBase << baBase + baElsewhere << QByteArray();
    QTest::newRow("in a folder of similar name") << baBase << baBase + baSimilar << QByteArray();
    QTest::newRow("beside the folder") << baBase << baBase + baLonger << QByteArray();
    QTest::newRow("in a folder of that name elsewhere") << baBase << baBase + baDeeper << QByteArray();
    QTest::newRow("the folder itself") << ROOT << baBase << QByteArray();
    QTest::newRow("the name keeps its bytes")
        << baBase << baBase + "40 30 8:17 / /Volumes/A\\040\xff\\012%1 rw - vfat /dev/sdb1 rw\n"
        << QByteArray("+/Volumes/A \xff\n%1\n");
    QTest::newRow("from nothing") << QByteArray() << baBase + STICK << QByteArray("+/Volumes/STICK\n");
}

void tst_CMountTable::Compares()
{
    QFETCH(QByteArray, baBefore);
    QFETCH(QByteArray, baAfter);
    const QVector<STDiskEvent> listEvent
        = CMountTable::Compare(CMountTable::Parse(baBefore), CMountTable::Parse(baAfter), "/Volumes");
    QTEST(AsText(listEvent), "baEvents");
}

void tst_CMountTable::ReadsTheTableOfThisProcess()
{
    QByteArray baText;
    QVERIFY(CMountTable::Read(&baText));
    const QVector<STMount> listMount = CMountTable::Parse(baText);
    QCOMPARE(listMount.size(), baText.count('\n'));
    const bool bProc = std::any_of(listMount.cbegin(), listMount.cend(),
                                   [](const STMount& mount) { return mount.baPoint == "/proc"; });
    QVERIFY(bProc);
}

QTEST_GUILESS_MAIN(tst_CMountTable)
#include "tst_CMountTable.moc"
