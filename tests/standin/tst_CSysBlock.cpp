#include "diskutil/CSysBlock.h"
#include "standin/CFakeSys.h"

#include <QtTest>

#include <sys/stat.h>
#include <sys/sysmacros.h>

static const char PCI[] = "pci0000:00/0000:00:1f.0";

static QString Named(const std::filesystem::path& device)
{
    return QString::fromStdString(CSysBlock::Name(device));
}

class tst_CSysBlock : public QObject
{
    Q_OBJECT

private slots:
    void bus_data();
    void bus();
    void busOfStackedDisks_data();
    void busOfStackedDisks();
    void disksMadeOfEachOther();

    void find_data();
    void find();
    void findFollowsLinks();
    void findByNumberOfARealNode();
    void findNothingInOtherFiles();
    void findNumber();
    void nothingWithoutSysfs();

    void facts();
};

void tst_CSysBlock::bus_data()
{
    QTest::addColumn<QString>("strDisk");
    QTest::addColumn<QStringList>("listSubsystem");
    QTest::addColumn<QString>("strBus");
    const QString strPci = QString::fromLatin1(PCI);
    // Each subsystem stands as PATH=NAME, the path below the device on the PCI bus.
    const auto row = [&strPci](const char* pName, const char* pDisk, const QStringList& listSubsystem,
                               const char* pBus) {
        QTest::newRow(pName) << strPci + QLatin1Char('/') + QLatin1String(pDisk) << listSubsystem
                             << QString::fromLatin1(pBus);
    };
    row("stick", "usb1/1-1/1-1:1.0/host2/target2:0:0/2:0:0:0/block/sdb",
        {QStringLiteral("usb1=usb"), QStringLiteral("usb1/1-1=usb"),
         QStringLiteral("usb1/1-1/1-1:1.0/host2/target2:0:0/2:0:0:0=scsi")},
        "USB");
    row("USB disk that answers as ATA", "usb1/1-1/ata7/host2/2:0:0:0/block/sdb",
        {QStringLiteral("usb1/1-1=usb"), QStringLiteral("usb1/1-1/ata7/host2/2:0:0:0=scsi")}, "USB");
    row("USB box with an NVMe disk", "usb1/1-1/nvme/nvme0/nvme0n1",
        {QStringLiteral("usb1/1-1=usb"), QStringLiteral("usb1/1-1/nvme/nvme0=nvme")}, "USB");
    row("USB card reader", "usb1/1-1/mmc_host/mmc0/mmc0:1/block/mmcblk0",
        {QStringLiteral("usb1/1-1=usb"), QStringLiteral("usb1/1-1/mmc_host/mmc0/mmc0:1=mmc")}, "USB");
    row("folder that is only called usb", "usb1/1-1/host2/2:0:0:0/block/sdb",
        {QStringLiteral("usb1/1-1/host2/2:0:0:0=scsi")}, "SCSI");
    row("subsystem whose name only begins so", "x/block/sdb", {QStringLiteral("x=usbmisc")}, "PCI");
    row("NVMe", "nvme/nvme0/nvme0n1", {QStringLiteral("nvme/nvme0=nvme")}, "PCI-Express");
    row("SATA", "ata1/host0/target0:0:0/0:0:0:0/block/sda",
        {QStringLiteral("ata1/host0/target0:0:0/0:0:0:0=scsi")}, "SATA");
    row("folder that is only called ata", "ata/host0/0:0:0:0/block/sda",
        {QStringLiteral("ata/host0/0:0:0:0=scsi")}, "SCSI");
    row("folder that begins with ata", "ata1x/host0/0:0:0:0/block/sda",
        {QStringLiteral("ata1x/host0/0:0:0:0=scsi")}, "SCSI");
    row("SD card", "mmc_host/mmc0/mmc0:0001/block/mmcblk0",
        {QStringLiteral("mmc_host/mmc0=mmc_host"), QStringLiteral("mmc_host/mmc0/mmc0:0001=mmc")},
        "Secure Digital");
    row("virtio disk", "virtio0/block/vda", {QStringLiteral("virtio0=virtio")}, "Virtual Interface");
    row("virtio SCSI disk", "virtio0/host0/0:0:0:0/block/sda",
        {QStringLiteral("virtio0=virtio"), QStringLiteral("virtio0/host0/0:0:0:0=scsi")},
        "Virtual Interface");
    row("Hyper-V disk", "VMBUS:00/x/host0/0:0:0:0/block/sda",
        {QStringLiteral("VMBUS:00/x=vmbus"), QStringLiteral("VMBUS:00/x/host0/0:0:0:0=scsi")},
        "Virtual Interface");
    row("Xen disk", "vbd-768/block/xvda", {QStringLiteral("vbd-768=xen")}, "Virtual Interface");
    row("FireWire", "fw1/fw1.0/host3/3:0:0:0/block/sdc",
        {QStringLiteral("fw1=firewire"), QStringLiteral("fw1/fw1.0=firewire"),
         QStringLiteral("fw1/fw1.0/host3/3:0:0:0=scsi")},
        "FireWire");
    row("SAS", "host0/port-0:0/end_device-0:0/target0:0:0/0:0:0:0/block/sda",
        {QStringLiteral("host0/port-0:0/end_device-0:0/target0:0:0/0:0:0:0=scsi")}, "SAS");
    row("Fibre Channel", "host0/rport-0:0-1/target0:0:0/0:0:0:0/block/sda",
        {QStringLiteral("host0/rport-0:0-1/target0:0:0/0:0:0:0=scsi")}, "Fibre Channel Interface");
    row("iSCSI", "host4/session1/target4:0:0/4:0:0:0/block/sdd",
        {QStringLiteral("host4/session1/target4:0:0/4:0:0:0=scsi")}, "iSCSI");
    row("parallel SCSI", "host0/target0:0:0/0:0:0:0/block/sda",
        {QStringLiteral("host0/target0:0:0/0:0:0:0=scsi")}, "SCSI");
    row("RAID controller", "cciss0/block/cciss!c0d0", {}, "PCI");

    const auto other = [](const char* pName, const char* pDisk, const QStringList& listSubsystem,
                          const char* pBus) {
        QTest::newRow(pName) << QString::fromLatin1(pDisk) << listSubsystem << QString::fromLatin1(pBus);
    };
    other("nothing known", "platform/soc/block/foo0", {}, "Unknown");
    other("NVMe on several paths", "virtual/nvme-subsystem/nvme-subsys0/nvme0n1",
          {QStringLiteral("virtual/nvme-subsystem/nvme-subsys0=nvme-subsystem")}, "PCI-Express");
    other("disk image", "virtual/block/loop0", {}, "Disk Image");
    other("disk image, two digits", "virtual/block/loop12", {}, "Disk Image");
    other("compressed memory", "virtual/block/zram0", {}, "Virtual Interface");
    other("memory", "virtual/block/ram3", {}, "Virtual Interface");
    other("network block device", "virtual/block/nbd0", {}, "Network");
    other("mirrored over the network", "virtual/block/drbd1", {}, "Network");
}

void tst_CSysBlock::bus()
{
    QFETCH(QString, strDisk);
    QFETCH(QStringList, listSubsystem);
    QFETCH(QString, strBus);
    const QString strPci = QString::fromLatin1(PCI);
    CFakeSys fake;
    if (strDisk.startsWith(strPci)) {
        fake.Device(strPci, QStringLiteral("pci"));
    }
    for (const QString& strEntry : listSubsystem) {
        const QString strPath = strEntry.section(QLatin1Char('='), 0, 0);
        fake.Device(strDisk.startsWith(strPci) ? strPci + QLatin1Char('/') + strPath : strPath,
                    strEntry.section(QLatin1Char('='), 1));
    }
    fake.Disk(strDisk, QStringLiteral("8:16"));
    fake.Partition(strDisk + QStringLiteral("/part1"), QStringLiteral("8:17"));
    const CSysBlock sys(fake.Root().toStdString());
    QCOMPARE(QString::fromStdString(sys.Bus(sys.FindNumber("8:16"))), strBus);
    QCOMPARE(QString::fromStdString(sys.Bus(sys.FindNumber("8:17"))), strBus);
}

void tst_CSysBlock::busOfStackedDisks_data()
{
    QTest::addColumn<QStringList>("listSlave");
    QTest::addColumn<QString>("strBus");
    QTest::newRow("encrypted stick") << QStringList{QStringLiteral("dm-0>sdb1")} << QStringLiteral("USB");
    QTest::newRow("volume on an encrypted stick")
        << QStringList{QStringLiteral("dm-0>dm-1"), QStringLiteral("dm-1>sdb1")} << QStringLiteral("USB");
    QTest::newRow("encrypted internal disk")
        << QStringList{QStringLiteral("dm-0>sda")} << QStringLiteral("SATA");
    QTest::newRow("two disks on one bus")
        << QStringList{QStringLiteral("dm-0>sdb"), QStringLiteral("dm-0>sdb1")} << QStringLiteral("USB");
    QTest::newRow("two disks on two buses")
        << QStringList{QStringLiteral("dm-0>sda"), QStringLiteral("dm-0>sdb1")}
        << QStringLiteral("Virtual Interface");
    QTest::newRow("on a disk image") << QStringList{QStringLiteral("dm-0>loop0")}
                                     << QStringLiteral("Disk Image");
    QTest::newRow("on nothing") << QStringList() << QStringLiteral("Virtual Interface");
}

void tst_CSysBlock::busOfStackedDisks()
{
    QFETCH(QStringList, listSlave);
    const QString strAta = QString::fromLatin1(PCI) + QStringLiteral("/ata1/host0/0:0:0:0/block/sda");
    CFakeSys fake;
    fake.UsbStick(QStringLiteral("sdb"), 16);
    fake.Disk(strAta, QStringLiteral("8:0"));
    for (const char* pName : {"dm-0", "dm-1", "loop0"}) {
        const QString strName = QLatin1String(pName);
        fake.Disk(QStringLiteral("virtual/block/") + strName,
                  QStringLiteral("254:%1").arg(pName == QByteArray("loop0") ? 9 : strName.right(1).toInt()));
    }
    fake.Partition(QStringLiteral("virtual/block/dm-0/dm-0p1"), QStringLiteral("254:20"));
    const CSysBlock sys(fake.Root().toStdString());
    const QString strRoot = fake.Path(QString());
    for (const QString& strEntry : listSlave) {
        const auto device = sys.Find(strEntry.section(QLatin1Char('>'), 1).toStdString());
        QVERIFY(!device.empty());
        const QString strSlave
            = QString::fromStdString(device.string()).section(QStringLiteral("/devices/"), 1);
        fake.Slave(QStringLiteral("virtual/block/") + strEntry.section(QLatin1Char('>'), 0, 0), strSlave);
    }
    QTEST(QString::fromStdString(sys.Bus(sys.Find("dm-0"))), "strBus");
    QTEST(QString::fromStdString(sys.Bus(sys.Find("dm-0p1"))), "strBus");
}

void tst_CSysBlock::disksMadeOfEachOther()
{
    CFakeSys fake;
    fake.Disk(QStringLiteral("virtual/block/dm-0"), QStringLiteral("254:0"));
    fake.Disk(QStringLiteral("virtual/block/dm-1"), QStringLiteral("254:1"));
    fake.Slave(QStringLiteral("virtual/block/dm-0"), QStringLiteral("virtual/block/dm-1"));
    fake.Slave(QStringLiteral("virtual/block/dm-1"), QStringLiteral("virtual/block/dm-0"));
    const CSysBlock sys(fake.Root().toStdString());
    QCOMPARE(sys.Bus(sys.Find("dm-0")), std::string("Virtual Interface"));
}

void tst_CSysBlock::find_data()
{
    QTest::addColumn<QByteArray>("baNode");
    QTest::addColumn<QString>("strName");
    const auto row = [](const char* pNode, const char* pName) {
        QTest::newRow(*pNode == '\0' ? "(empty)" : pNode) << QByteArray(pNode) << QString::fromLatin1(pName);
    };
    row("sdb", "sdb");
    row("sdb1", "sdb1");
    row("/dev/sdb1", "sdb1");
    row("/dev/../dev/./sdb1", "sdb1");
    row("/dev/dm-0", "dm-0");
    row("/dev/mapper/my vault", "dm-0");
    row("/dev/cciss/c0d0", "cciss/c0d0");
    row("cciss!c0d0", "cciss/c0d0");
    row("/dev/sdz", "");
    row("sdz1", "");
    row("", "");
    row(".", "");
    row("..", "");
    row("/", "");
    row("/dev", "");
    row("/dev/", "");
    row("/dev/.", "");
    row("/dev/..", "");
    row("/dev/mapper", "");
    row("/dev/mapper/", "");
    row("/dev/mapper/other", "");
    row("/dev/mapper/dm-0", "");
    row("/dev/sdb1/", "");
    row("/dev/sdb1/x", "");
    row("dev/sdb1", "");
    row("/sdb1", "");
    row("/nowhere/sdb1", "");
    row("/Volumes/sdb1", "");
    row("../sdb1", "");
    row("/dev/sdb1\n", "");
    row("-plist", "");
}

void tst_CSysBlock::find()
{
    QFETCH(QByteArray, baNode);
    CFakeSys fake;
    fake.UsbStick(QStringLiteral("sdb"), 16);
    fake.Disk(QStringLiteral("virtual/block/dm-0"), QStringLiteral("254:0"));
    fake.MapperName(QStringLiteral("virtual/block/dm-0"), QStringLiteral("my vault"));
    fake.Disk(QStringLiteral("pci0000:00/block/cciss!c0d0"), QStringLiteral("104:0"));
    QTEST(Named(CSysBlock(fake.Root().toStdString()).Find(baNode.toStdString())), "strName");
}

void tst_CSysBlock::findFollowsLinks()
{
    CFakeSys fake;
    fake.UsbStick(QStringLiteral("sdb"), 16);
    fake.Disk(QStringLiteral("virtual/block/dm-0"), QStringLiteral("254:0"));
    fake.MapperName(QStringLiteral("virtual/block/dm-0"), QStringLiteral("vault"));
    const CSysBlock sys(fake.Root().toStdString());
    CTempTree tree;
    // The nodes themselves are missing, so that none of these links leads anywhere.
    const auto find
        = [&](const QString& strLink) { return Named(sys.Find(tree.Path(strLink).toStdString())); };
    tree.Link(QStringLiteral("by-uuid"), QStringLiteral("/dev/sdb1"));
    tree.Link(QStringLiteral("chain"), QStringLiteral("by-uuid"));
    tree.Link(QStringLiteral("deep/down/relative"), QStringLiteral("../../chain"));
    tree.Link(QStringLiteral("mapped"), QStringLiteral("/dev/mapper/vault"));
    tree.Link(QStringLiteral("elsewhere"), QStringLiteral("/nowhere/sdb1"));
    tree.Link(QStringLiteral("circle"), QStringLiteral("circle"));
    QCOMPARE(find(QStringLiteral("by-uuid")), QStringLiteral("sdb1"));
    QCOMPARE(find(QStringLiteral("chain")), QStringLiteral("sdb1"));
    QCOMPARE(find(QStringLiteral("deep/down/relative")), QStringLiteral("sdb1"));
    QCOMPARE(find(QStringLiteral("mapped")), QStringLiteral("dm-0"));
    QCOMPARE(find(QStringLiteral("elsewhere")), QString());
    QCOMPARE(find(QStringLiteral("circle")), QString());
}

void tst_CSysBlock::findByNumberOfARealNode()
{
    CFakeSys fake;
    fake.UsbStick(QStringLiteral("sdb"), 16);
    CTempTree tree;
    const QByteArray baNode = tree.Path(QStringLiteral("anything")).toLocal8Bit();
    if (mknod(baNode.constData(), S_IFBLK | 0600, makedev(8, 17)) != 0) {
        QSKIP("device nodes cannot be made here");
    }
    QCOMPARE(Named(CSysBlock(fake.Root().toStdString()).Find(baNode.toStdString())), QStringLiteral("sdb1"));
}

void tst_CSysBlock::findNothingInOtherFiles()
{
    CFakeSys fake;
    fake.UsbStick(QStringLiteral("sdb"), 16);
    fake.Disk(QStringLiteral("pci0000:00/block/null"), QStringLiteral("1:3"));
    const CSysBlock sys(fake.Root().toStdString());
    CTempTree tree;
    QCOMPARE(Named(sys.Find(tree.Write(QStringLiteral("sdb1")).toStdString())), QString());
    QCOMPARE(Named(sys.Find(tree.MkDir(QStringLiteral("sdb")).toStdString())), QString());
    // A character device, though its number and its name are those of a disk.
    QCOMPARE(Named(sys.Find("/dev/null")), QString());
}

void tst_CSysBlock::findNumber()
{
    CFakeSys fake;
    fake.UsbStick(QStringLiteral("sdb"), 16);
    const CSysBlock sys(fake.Root().toStdString());
    QCOMPARE(Named(sys.FindNumber("8:16")), QStringLiteral("sdb"));
    QCOMPARE(Named(sys.FindNumber("8:17")), QStringLiteral("sdb1"));
    QCOMPARE(Named(sys.FindNumber("8:18")), QString());
    QCOMPARE(Named(sys.FindNumber("")), QString());
}

void tst_CSysBlock::nothingWithoutSysfs()
{
    const CSysBlock sys("/nowhere");
    QVERIFY(sys.Find("/dev/sda").empty());
    QVERIFY(sys.Find("/dev/mapper/vault").empty());
    QVERIFY(sys.FindNumber("8:0").empty());
}

void tst_CSysBlock::facts()
{
    CFakeSys fake;
    fake.UsbStick(QStringLiteral("sdb"), 16);
    const QString strFixed = QStringLiteral("pci0000:00/block/sdc");
    fake.Disk(strFixed, QStringLiteral("8:32"), Q_INT64_C(31115288));
    fake.Disk(QStringLiteral("virtual/block/dm-0"), QStringLiteral("254:0"), 0);
    fake.MapperName(QStringLiteral("virtual/block/dm-0"), QStringLiteral("my vault"));
    const CSysBlock sys(fake.Root().toStdString());
    QCOMPARE(CSysBlock::Number(sys.Find("sdb1")), std::string("8:17"));
    QCOMPARE(CSysBlock::Size(sys.Find("sdc")), std::uint64_t(15931027456));
    QCOMPARE(CSysBlock::Size(sys.Find("sdb1")), std::uint64_t(2048 * 512));
    QCOMPARE(CSysBlock::Size("/nowhere"), std::uint64_t(0));
    QVERIFY(CSysBlock::IsRemovable(sys.Find("sdb")));
    QVERIFY(CSysBlock::IsRemovable(sys.Find("sdb1")));
    QVERIFY(!CSysBlock::IsRemovable(sys.Find("sdc")));
    QCOMPARE(CSysBlock::MapperName(sys.Find("dm-0")), std::string("my vault"));
    QCOMPARE(CSysBlock::MapperName(sys.Find("sdb")), std::string());
}

QTEST_GUILESS_MAIN(tst_CSysBlock)
#include "tst_CSysBlock.moc"
