#include "diskutil/CDiskQuery.h"
#include "standin/CFakeSys.h"

#include <QtTest>

#include <sys/statvfs.h>

static const char HERE[] = "/proc"; // a mount point without blocks of its own

class tst_CDiskQuery : public QObject
{
    Q_OBJECT

private slots:
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
    std::optional<STDiskInfo> Describe(const CFakeSys& fake, const QByteArray& baMounts,
                                       const QByteArray& baNode)
    {
        const CDiskQuery query(CSysBlock(fake.Root().toStdString()),
                               CMountList(CMountTable::Parse(baMounts.toStdString())));
        return query.Describe(baNode.toStdString());
    }
};

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
    CFakeSys fake;
    fake.UsbStick(QStringLiteral("sdb"), 16);
    QVERIFY(!Describe(fake, "1 2 8:17 / /Volumes/A rw - vfat /dev/sdb1 rw", baNode).has_value());
}

void tst_CDiskQuery::mountedPartition()
{
    CFakeSys fake;
    fake.UsbStick(QStringLiteral("sdb"), 16);
    const auto info = Describe(fake, "1 2 8:17 / /Volumes/My\\040Stick rw - vfat /dev/sdb1 rw", "/dev/sdb1");
    QVERIFY(info.has_value());
    QCOMPARE(info->strNode, std::string("/dev/sdb1"));
    QCOMPARE(info->strIdentifier, std::string("sdb1"));
    QCOMPARE(info->strMountPoint, std::string("/Volumes/My Stick"));
    QCOMPARE(info->strVolumeName, std::string("My Stick"));
    QCOMPARE(info->strFilesystem, std::string("vfat"));
    QCOMPARE(info->strBus, std::string("USB"));
    // Nothing is mounted there really, so the size is the device's.
    QCOMPARE(info->nTotalSize, std::uint64_t(2048 * 512));
    QVERIFY(info->bWritable);
    QVERIFY(info->bEjectable);
    QVERIFY(!info->bInternal);
    QVERIFY(!Describe(fake, "1 2 8:17 / /Volumes/A ro - vfat /dev/sdb1 rw", "sdb1")->bWritable);
}

void tst_CDiskQuery::partitionThatIsNotMounted()
{
    CFakeSys fake;
    fake.UsbStick(QStringLiteral("sdb"), 16);
    const auto info = Describe(fake, "1 2 8:18 / /Volumes/A rw - vfat /dev/sdb2 rw", "sdb1");
    QVERIFY(info.has_value());
    QCOMPARE(info->strNode, std::string("/dev/sdb1"));
    QCOMPARE(info->strMountPoint, std::string());
    QCOMPARE(info->strVolumeName, std::string());
    QCOMPARE(info->strFilesystem, std::string());
    QCOMPARE(info->strBus, std::string("USB"));
    QCOMPARE(info->nTotalSize, std::uint64_t(2048 * 512));
    QVERIFY(!info->bWritable);
}

void tst_CDiskQuery::mountIsFoundUnderAnyName_data()
{
    QTest::addColumn<QByteArray>("baSource");
    QTest::addColumn<QByteArray>("baNumber");
    QTest::addColumn<QByteArray>("baNode");
    QTest::newRow("the same text") << QByteArray("/dev/dm-0") << QByteArray("0:99")
                                   << QByteArray("/dev/dm-0");
    QTest::newRow("asked by the bare name")
        << QByteArray("/dev/dm-0") << QByteArray("0:99") << QByteArray("dm-0");
    QTest::newRow("mounted by the mapper name")
        << QByteArray("/dev/mapper/vault") << QByteArray("0:99") << QByteArray("/dev/dm-0");
    QTest::newRow("asked by the mapper name")
        << QByteArray("/dev/dm-0") << QByteArray("0:99") << QByteArray("/dev/mapper/vault");
    QTest::newRow("mounted by a name of its own")
        << QByteArray("/dev/disk/by-label/A") << QByteArray("254:0") << QByteArray("/dev/dm-0");
}

void tst_CDiskQuery::mountIsFoundUnderAnyName()
{
    QFETCH(QByteArray, baSource);
    QFETCH(QByteArray, baNumber);
    QFETCH(QByteArray, baNode);
    CFakeSys fake;
    fake.Disk(QStringLiteral("virtual/block/dm-0"), QStringLiteral("254:0"));
    fake.MapperName(QStringLiteral("virtual/block/dm-0"), QStringLiteral("vault"));
    const auto info
        = Describe(fake, "1 2 " + baNumber + " / /Volumes/A rw - ext4 " + baSource + " rw", baNode);
    QVERIFY(info.has_value());
    QCOMPARE(info->strMountPoint, std::string("/Volumes/A"));
    QCOMPARE(info->strNode, std::string("/dev/dm-0"));
}

void tst_CDiskQuery::sourceTextComesBeforeNumber()
{
    CFakeSys fake;
    fake.UsbStick(QStringLiteral("sdb"), 16);
    const auto info = Describe(fake,
                               "1 2 8:17 / /Volumes/Number rw - ext4 /dev/root rw\n"
                               "1 2 0:99 / /Volumes/Text rw - tmpfs /dev/sdb1 rw",
                               "/dev/sdb1");
    QCOMPARE(info->strVolumeName, std::string("Text"));
}

void tst_CDiskQuery::mountWithoutDisk_data()
{
    QTest::addColumn<QByteArray>("baType");
    QTest::addColumn<QByteArray>("baSource");
    QTest::addColumn<QString>("strBus");
    const auto row = [](const char* pType, const char* pSource, const char* pBus) {
        QTest::newRow(pType) << QByteArray(pType) << QByteArray(pSource) << QString::fromLatin1(pBus);
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
    CFakeSys fake;
    const auto info
        = Describe(fake, "1 2 0:40 / /Volumes/Share rw - " + baType + " " + baSource + " rw", baSource);
    QVERIFY(info.has_value());
    QCOMPARE(QByteArray::fromStdString(info->strNode), baSource);
    QCOMPARE(QByteArray::fromStdString(info->strIdentifier), baSource);
    QCOMPARE(info->strMountPoint, std::string("/Volumes/Share"));
    QTEST(QString::fromStdString(info->strBus), "strBus");
    QVERIFY(!info->bInternal);
    QVERIFY(!info->bEjectable);
}

void tst_CDiskQuery::sourceThatIsOnlyKnownByNumber()
{
    CFakeSys fake;
    fake.UsbStick(QStringLiteral("sdb"), 16);
    const auto info = Describe(fake, "1 2 8:17 / / rw - ext4 /dev/root rw", "/dev/root");
    QVERIFY(info.has_value());
    QCOMPARE(info->strNode, std::string("/dev/sdb1"));
    QCOMPARE(info->strBus, std::string("USB"));
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
    CFakeSys fake;
    const auto info = Describe(fake, "1 2 0:40 / " + baPoint + " rw - tmpfs tmpfs rw", "tmpfs");
    QTEST(QByteArray::fromStdString(info->strVolumeName), "baName");
}

void tst_CDiskQuery::sizeOfTheMountedFileSystem()
{
    CFakeSys fake;
    fake.UsbStick(QStringLiteral("sdb"), 16);
    CTempTree tree;
    struct statvfs status = {};
    QCOMPARE(statvfs(tree.Path().toLocal8Bit().constData(), &status), 0);
    const QByteArray baPoint = tree.Path().toLocal8Bit();
    const auto info = Describe(fake, "1 2 8:17 / " + baPoint + " rw - vfat /dev/sdb1 rw", "/dev/sdb1");
    QCOMPARE(info->nTotalSize, std::uint64_t(status.f_blocks) * status.f_frsize);
    const auto empty
        = Describe(fake, QByteArray("1 2 8:17 / ") + HERE + " rw - vfat /dev/sdb1 rw", "/dev/sdb1");
    QCOMPARE(empty->nTotalSize, std::uint64_t(2048 * 512));
}

void tst_CDiskQuery::kind_data()
{
    QTest::addColumn<QString>("strDisk");
    QTest::addColumn<QString>("strSubsystem");
    QTest::addColumn<bool>("bRemovable");
    QTest::addColumn<bool>("bInternal");
    QTest::addColumn<bool>("bEjectable");
    QTest::newRow("USB disk") << QStringLiteral("pci/a/block/sdb") << QStringLiteral("usb") << false << false
                              << true;
    QTest::newRow("FireWire") << QStringLiteral("pci/a/block/sdb") << QStringLiteral("firewire") << false
                              << false << true;
    QTest::newRow("SD card") << QStringLiteral("pci/a/block/sdb") << QStringLiteral("mmc") << false << true
                             << true;
    QTest::newRow("NVMe") << QStringLiteral("pci/a/block/sdb") << QStringLiteral("nvme") << false << true
                          << false;
    QTest::newRow("SATA") << QStringLiteral("pci/ata1/a/block/sdb") << QStringLiteral("x") << false << true
                          << false;
    QTest::newRow("SATA drive with a medium")
        << QStringLiteral("pci/ata1/a/block/sdb") << QStringLiteral("x") << true << true << true;
    QTest::newRow("SCSI") << QStringLiteral("pci/a/block/sdb") << QStringLiteral("scsi") << false << true
                          << false;
    QTest::newRow("RAID controller") << QStringLiteral("pci/a/block/sdb") << QStringLiteral("pci") << false
                                     << true << false;
    QTest::newRow("SAS") << QStringLiteral("pci/end_device-0:0/a/block/sdb") << QStringLiteral("x") << false
                         << true << false;
    QTest::newRow("iSCSI") << QStringLiteral("pci/session1/a/block/sdb") << QStringLiteral("scsi") << false
                           << false << false;
    QTest::newRow("disk image") << QStringLiteral("virtual/a/block/loop0") << QStringLiteral("x") << false
                                << false << true;
    QTest::newRow("virtio") << QStringLiteral("pci/a/block/vda") << QStringLiteral("virtio") << false << false
                            << false;
    QTest::newRow("unknown") << QStringLiteral("platform/a/block/foo") << QStringLiteral("x") << false
                             << false << false;
}

void tst_CDiskQuery::kind()
{
    QFETCH(QString, strDisk);
    QFETCH(QString, strSubsystem);
    QFETCH(bool, bRemovable);
    CFakeSys fake;
    fake.Device(strDisk.section(QLatin1Char('/'), 0, -3), strSubsystem);
    fake.Disk(strDisk, QStringLiteral("8:16"), 2048, bRemovable);
    const auto info = Describe(fake, QByteArray(), strDisk.section(QLatin1Char('/'), -1).toUtf8());
    QVERIFY(info.has_value());
    QTEST(info->bInternal, "bInternal");
    QTEST(info->bEjectable, "bEjectable");
}

QTEST_GUILESS_MAIN(tst_CDiskQuery)
#include "tst_CDiskQuery.moc"
