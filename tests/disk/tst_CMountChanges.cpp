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

static const QByteArray BASE = "20 1 8:1 / / rw,relatime shared:1 - ext4 /dev/sda1 rw\n"
                               "30 20 0:30 / /Volumes rw - tmpfs volumes rw\n";
static const QByteArray STICK = "40 30 8:17 / /Volumes/STICK rw shared:7 - vfat /dev/sdb1 rw\n";
static const QByteArray OTHER = "41 30 8:33 / /Volumes/OTHER rw - vfat /dev/sdc1 rw\n";

void tst_CMountChanges::between_data()
{
    QTest::addColumn<QByteArray>("baBefore"); // both behind BASE
    QTest::addColumn<QByteArray>("baAfter");
    QTest::addColumn<QByteArrayList>("listEvent"); // "+" or "-" and the path
    const auto row
        = [](const char* pszName, const QByteArray& baBefore, const QByteArray& baAfter,
             const QByteArrayList& listEvent) { QTest::newRow(pszName) << baBefore << baAfter << listEvent; };
    const QByteArrayList listBoth{"-/Volumes/STICK", "+/Volumes/STICK"};
    const QByteArray baOverStick = "50 40 8:33 / /Volumes/STICK rw - vfat /dev/sdc1 rw\n";
    const QByteArray baOnMnt = "40 20 8:17 / /mnt rw - vfat /dev/sdb1 rw\n";

    row("nothing happened", STICK, STICK, {});
    row("mounted", "", STICK, {"+/Volumes/STICK"});
    row("unmounted", STICK, "", {"-/Volumes/STICK"});
    row("two mounted, in the table's order", "", STICK + OTHER, {"+/Volumes/STICK", "+/Volumes/OTHER"});
    row("two unmounted", OTHER + STICK, "", {"-/Volumes/OTHER", "-/Volumes/STICK"});
    row("the removal comes first", STICK, OTHER, {"-/Volumes/STICK", "+/Volumes/OTHER"});
    row("the table's order changed", STICK + OTHER, OTHER + STICK, {});
    row("mounted again with other options", STICK,
        "40 30 8:17 / /Volumes/STICK ro - vfat /dev/sdb1 ro,errors=continue\n", {});
    row("moved within the folder", STICK, "40 30 8:17 / /Volumes/BACK rw - vfat /dev/sdb1 rw\n",
        {"-/Volumes/STICK", "+/Volumes/BACK"});
    row("moved out of the folder", STICK, baOnMnt, {"-/Volumes/STICK"});
    row("moved into the folder", baOnMnt, STICK, {"+/Volumes/STICK"});
    row("another disk at the same device node", STICK, "40 30 8:33 / /Volumes/STICK rw - vfat /dev/sdb1 rw\n",
        listBoth);
    row("another device node of the same disk", STICK, "40 30 8:17 / /Volumes/STICK rw - vfat /dev/x rw\n",
        listBoth);
    row("the same disk unmounted and mounted", STICK, "77 30 8:17 / /Volumes/STICK rw - vfat /dev/sdb1 rw\n",
        listBoth);
    row("another volume mounted over it", STICK, STICK + baOverStick, listBoth);
    row("the volume over it unmounted", STICK + baOverStick, STICK, listBoth);
    row("both unmounted", STICK + baOverStick, "", {"-/Volumes/STICK"});
    row("inside a volume", STICK, STICK + "51 40 8:33 / /Volumes/STICK/inside rw - vfat /dev/sdc1 rw\n", {});
    row("elsewhere", "", "52 20 8:33 / /media/STICK rw - vfat /dev/sdc1 rw\n", {});
    row("in a folder of similar name", "", "53 20 8:33 / /Volumes2/STICK rw - vfat /dev/sdc1 rw\n", {});
    row("beside the folder", "", "55 20 8:33 / /Volumes23 rw - vfat /dev/sdc1 rw\n", {});
    row("in a folder of that name elsewhere", "", "54 20 8:33 / /mnt/Volumes/S rw - vfat /dev/sdc1 rw\n", {});
    row("the folder itself", "", "31 30 0:31 / /Volumes rw - tmpfs more rw\n", {});
    row("the name keeps its bytes", "", "40 30 8:17 / /Volumes/A\\040\xff\\012%1 rw - vfat /dev/sdb1 rw\n",
        {"+/Volumes/A \xff\n%1"});
}

static std::vector<STMount> Volumes(const QByteArray& baText)
{
    return CMountChanges::VolumesIn("/Volumes", CMountTable::Parse((BASE + baText).toStdString()));
}

void tst_CMountChanges::between()
{
    QFETCH(QByteArray, baBefore);
    QFETCH(QByteArray, baAfter);
    QByteArrayList listSeen;
    for (const STDiskEvent& event : CMountChanges::Between(Volumes(baBefore), Volumes(baAfter))) {
        listSeen.append((event.enType == DISK_EVENT_APPEARED ? "+" : "-") + event.baPath);
    }
    QTEST(listSeen, "listEvent");
}

QTEST_APPLESS_MAIN(tst_CMountChanges)
#include "tst_CMountChanges.moc"
