#include "disk/platform/linux/CMountChanges.h"

#include <QTest>

/** Which volumes came and went, by tables as the kernel writes them. */
class tst_CMountChanges : public QObject
{
    Q_OBJECT

private slots:
    void between_data();
    void between();
};

static const QByteArray ROOT = "20 1 8:1 / / rw,relatime shared:1 - ext4 /dev/sda1 rw\n";
static const QByteArray VOLUMES = "30 20 0:30 / /Volumes rw - tmpfs volumes rw\n";
static const QByteArray STICK = "40 30 8:17 / /Volumes/STICK rw shared:7 - vfat /dev/sdb1 rw\n";
static const QByteArray OTHER = "41 30 8:33 / /Volumes/OTHER rw - vfat /dev/sdc1 rw\n";

/** Events as text: "+" or "-" and the path, one per line. */
static QByteArray AsText(const QVector<STDiskEvent>& listEvent)
{
    QByteArray baText;
    for (const STDiskEvent& event : listEvent) {
        baText += (event.enType == DISK_EVENT_APPEARED ? "+" : "-") + event.baPath + "\n";
    }
    return baText;
}

static std::vector<STMount> Volumes(const QByteArray& baText)
{
    return CMountChanges::VolumesIn("/Volumes", CMountTable::Parse(baText.toStdString()));
}

void tst_CMountChanges::between_data()
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

void tst_CMountChanges::between()
{
    QFETCH(QByteArray, baBefore);
    QFETCH(QByteArray, baAfter);
    QTEST(AsText(CMountChanges::Between(Volumes(baBefore), Volumes(baAfter))), "baEvents");
}

QTEST_APPLESS_MAIN(tst_CMountChanges)
#include "tst_CMountChanges.moc"
