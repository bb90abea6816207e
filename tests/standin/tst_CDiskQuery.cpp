#include "diskutil/CDiskQuery.h"
#include "standin/CFakeSys.h"

#include <QTest>

#include <sys/statvfs.h>

class tst_CDiskQuery : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void unknownNode_data();
    void unknownNode();
    void mountedPartition();
    void partitionThatIsNotMounted();
    void mountIsFoundUnderAnyName_data();
    void mountIsFoundUnderAnyName();
    void sourceTextComesBeforeNumber();
    void mountWithoutDisk_data();
    void mountWithoutDisk();
    void sourceThatIsOnlyKnownByNumber();
    void volumeName_data();
    void volumeName();
    void sizeOfTheMountedFileSystem();
    void kind_data();
    void kind();

private:
    std::optional<STDiskInfo> Describe(const QByteArray& baMounts, const QByteArray& baNode) const
    {
        const CDiskQuery query(CSysBlock(m_pFake->Root().toStdString()),
                               CMountList(CMountTable::Parse(baMounts.toStdString())));
        return query.Describe(baNode.toStdString());
    }

    std::unique_ptr<CFakeSys> m_pFake; // a stick sdb, a mapped disk dm-0 called "vault"
};

void tst_CDiskQuery::init()
{
    m_pFake = std::make_unique<CFakeSys>();
    m_pFake->UsbStick("sdb", 16);
    m_pFake->Disk("virtual/block/dm-0", "254:0");
    m_pFake->MapperName("virtual/block/dm-0", "vault");
}

void tst_CDiskQuery::unknownNode_data()
{
    QTest::addColumn<QByteArray>("baNode");
    QTest::newRow("no such disk") << QByteArray("/dev/sdz");
    QTest::newRow("no such partition") << QByteArray("/dev/sdb2");
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("mount point") << QByteArray("/Volumes/A");
    QTest::newRow("other case") << QByteArray("/dev/SDB1");
}

void tst_CDiskQuery::unknownNode()
{
    QFETCH(QByteArray, baNode);
    QVERIFY(!Describe("1 2 8:17 / /Volumes/A rw - vfat /dev/sdb1 rw", baNode).has_value());
}

void tst_CDiskQuery::mountedPartition()
{
    const auto info = Describe("1 2 8:17 / /Volumes/My\\040Stick rw - vfat /dev/sdb1 rw", "/dev/sdb1");
    QVERIFY(info.has_value());
    QCOMPARE(info->strNode, "/dev/sdb1");
    QCOMPARE(info->strIdentifier, "sdb1");
    QCOMPARE(info->strMountPoint, "/Volumes/My Stick");
    QCOMPARE(info->strVolumeName, "My Stick");
    QCOMPARE(info->strFilesystem, "vfat");
    QCOMPARE(info->strBus, "USB");
    // Nothing is mounted there really, so the size is the device's.
    QCOMPARE(info->nTotalSize, 2048u * 512);
    QVERIFY(info->bWritable);
    QVERIFY(info->bEjectable);
    QVERIFY(!info->bInternal);
    QVERIFY(!Describe("1 2 8:17 / /Volumes/A ro - vfat /dev/sdb1 rw", "sdb1")->bWritable);
}

void tst_CDiskQuery::partitionThatIsNotMounted()
{
    const auto info = Describe("1 2 8:18 / /Volumes/A rw - vfat /dev/sdb2 rw", "sdb1");
    QVERIFY(info.has_value());
    QCOMPARE(info->strNode, "/dev/sdb1");
    QCOMPARE(info->strMountPoint, "");
    QCOMPARE(info->strVolumeName, "");
    QCOMPARE(info->strFilesystem, "");
    QCOMPARE(info->strBus, "USB");
    QCOMPARE(info->nTotalSize, 2048u * 512);
    QVERIFY(!info->bWritable);
}

void tst_CDiskQuery::mountIsFoundUnderAnyName_data()
{
    QTest::addColumn<QByteArray>("baSource");
    QTest::addColumn<QByteArray>("baNumber");
    QTest::addColumn<QByteArray>("baNode");
    const auto row
        = [](const char* pszName, const char* pszSource, const char* pszNumber, const char* pszNode) {
              QTest::newRow(pszName) << QByteArray(pszSource) << QByteArray(pszNumber) << QByteArray(pszNode);
          };
    row("the same text", "/dev/dm-0", "0:99", "/dev/dm-0");
    row("asked by the bare name", "/dev/dm-0", "0:99", "dm-0");
    row("mounted by the mapper name", "/dev/mapper/vault", "0:99", "/dev/dm-0");
    row("asked by the mapper name", "/dev/dm-0", "0:99", "/dev/mapper/vault");
    row("mounted by a name of its own", "/dev/disk/by-label/A", "254:0", "/dev/dm-0");
}

void tst_CDiskQuery::mountIsFoundUnderAnyName()
{
    QFETCH(QByteArray, baSource);
    QFETCH(QByteArray, baNumber);
    QFETCH(QByteArray, baNode);
    const auto info = Describe("1 2 " + baNumber + " / /Volumes/A rw - ext4 " + baSource + " rw", baNode);
    QVERIFY(info.has_value());
    QCOMPARE(info->strMountPoint, "/Volumes/A");
    QCOMPARE(info->strNode, "/dev/dm-0");
}

void tst_CDiskQuery::sourceTextComesBeforeNumber()
{
    const auto info = Describe("1 2 8:17 / /Volumes/Number rw - ext4 /dev/root rw\n"
                               "1 2 0:99 / /Volumes/Text rw - tmpfs /dev/sdb1 rw",
                               "/dev/sdb1");
    QCOMPARE(info->strVolumeName, "Text");
}

void tst_CDiskQuery::mountWithoutDisk_data()
{
    QTest::addColumn<QByteArray>("baType");
    QTest::addColumn<QByteArray>("baSource");
    QTest::addColumn<QString>("strBus");
    const auto row = [](const char* pType, const char* pSource, const char* pBus) {
        QTest::newRow(pType) << QByteArray(pType) << QByteArray(pSource) << pBus;
    };
    row("nfs", "server:/export", "Network");
    row("nfs4", "server:/export", "Network");
    row("cifs", "//server/share", "Network");
    row("smb3", "//server/share", "Network");
    row("ceph", "mon:/", "Network");
    row("9p", "host", "Network");
    row("afs", "#cell", "Network");
    row("davfs", "https://server/", "Network");
    row("fuse.sshfs", "user@server:", "Network");
    row("fuse.rclone", "remote:", "Network");
    row("tmpfs", "tmpfs", "Virtual Interface");
    row("overlay", "overlay", "Virtual Interface");
    row("virtiofs", "share", "Virtual Interface");
    row("fuse.gvfsd-fuse", "gvfsd-fuse", "Virtual Interface");
    row("vfat", "/dev/gone1", "Virtual Interface");
}

void tst_CDiskQuery::mountWithoutDisk()
{
    QFETCH(QByteArray, baType);
    QFETCH(QByteArray, baSource);
    const auto info = Describe("1 2 0:40 / /Volumes/Share rw - " + baType + " " + baSource + " rw", baSource);
    QVERIFY(info.has_value());
    QCOMPARE(QByteArray::fromStdString(info->strNode), baSource);
    QCOMPARE(QByteArray::fromStdString(info->strIdentifier), baSource);
    QCOMPARE(info->strMountPoint, "/Volumes/Share");
    QTEST(QString::fromStdString(info->strBus), "strBus");
    QVERIFY(!info->bInternal);
    QVERIFY(!info->bEjectable);
}

void tst_CDiskQuery::sourceThatIsOnlyKnownByNumber()
{
    const auto info = Describe("1 2 8:17 / / rw - ext4 /dev/root rw", "/dev/root");
    QVERIFY(info.has_value());
    QCOMPARE(info->strNode, "/dev/sdb1");
    QCOMPARE(info->strBus, "USB");
}

void tst_CDiskQuery::volumeName_data()
{
    QTest::addColumn<QByteArray>("baPoint");
    QTest::addColumn<QByteArray>("baName");
    QTest::newRow("volume") << QByteArray("/Volumes/A") << QByteArray("A");
    QTest::newRow("root") << QByteArray("/") << QByteArray("/");
    QTest::newRow("line end") << QByteArray("/Volumes/a\\012b") << QByteArray("a\nb");
    QTest::newRow("bytes") << QByteArray("/Volumes/\xFF") << QByteArray("\xFF");
}

void tst_CDiskQuery::volumeName()
{
    QFETCH(QByteArray, baPoint);
    const auto info = Describe("1 2 0:40 / " + baPoint + " rw - tmpfs tmpfs rw", "tmpfs");
    QTEST(QByteArray::fromStdString(info->strVolumeName), "baName");
}

void tst_CDiskQuery::sizeOfTheMountedFileSystem()
{
    const CTempTree tree;
    const QByteArray baPoint = tree.Path().toLocal8Bit();
    struct statvfs status = {};
    QCOMPARE(statvfs(baPoint.constData(), &status), 0);
    const auto info = Describe("1 2 8:17 / " + baPoint + " rw - vfat /dev/sdb1 rw", "/dev/sdb1");
    QCOMPARE(info->nTotalSize, std::uint64_t(status.f_blocks) * status.f_frsize);
    // A mount point without blocks of its own.
    const auto empty = Describe("1 2 8:17 / /proc rw - vfat /dev/sdb1 rw", "/dev/sdb1");
    QCOMPARE(empty->nTotalSize, 2048u * 512);
}

void tst_CDiskQuery::kind_data()
{
    QTest::addColumn<QString>("strDisk");
    QTest::addColumn<QString>("strSubsystem");
    QTest::addColumn<bool>("bRemovable");
    QTest::addColumn<bool>("bInternal");
    QTest::addColumn<bool>("bEjectable");
    const auto row = [](const char* pszName, const char* pszDisk, const char* pszSubsystem, bool bRemovable,
                        bool bInternal, bool bEjectable) {
        QTest::newRow(pszName) << pszDisk << pszSubsystem << bRemovable << bInternal << bEjectable;
    };
    row("USB disk", "pci/a/block/sdc", "usb", false, false, true);
    row("FireWire", "pci/a/block/sdc", "firewire", false, false, true);
    row("SD card", "pci/a/block/sdc", "mmc", false, true, true);
    row("NVMe", "pci/a/block/sdc", "nvme", false, true, false);
    row("SATA", "pci/ata1/a/block/sdc", "x", false, true, false);
    row("SATA drive with a medium", "pci/ata1/a/block/sdc", "x", true, true, true);
    row("SCSI", "pci/a/block/sdc", "scsi", false, true, false);
    row("RAID controller", "pci/a/block/sdc", "pci", false, true, false);
    row("SAS", "pci/end_device-0:0/a/block/sdc", "x", false, true, false);
    row("iSCSI", "pci/session1/a/block/sdc", "scsi", false, false, false);
    row("disk image", "virtual/a/block/loop0", "x", false, false, true);
    row("virtio", "pci/a/block/vda", "virtio", false, false, false);
    row("unknown", "platform/a/block/foo", "x", false, false, false);
}

void tst_CDiskQuery::kind()
{
    QFETCH(QString, strDisk);
    QFETCH(QString, strSubsystem);
    QFETCH(bool, bRemovable);
    m_pFake->Device(strDisk.section('/', 0, -3), strSubsystem);
    m_pFake->Disk(strDisk, "8:32", 2048, bRemovable);
    const auto info = Describe("", strDisk.section('/', -1).toUtf8());
    QVERIFY(info.has_value());
    QTEST(info->bInternal, "bInternal");
    QTEST(info->bEjectable, "bEjectable");
}

QTEST_GUILESS_MAIN(tst_CDiskQuery)
#include "tst_CDiskQuery.moc"
