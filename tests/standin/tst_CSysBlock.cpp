#include "disk/platform/linux/CSysBlock.h"
#include "standin/CFakeSys.h"

#include <QTest>

#include <sys/stat.h>
#include <sys/sysmacros.h>

static QString Named(const std::filesystem::path& device)
{
    return QString::fromStdString(CSysBlock::Name(device));
}

class tst_CSysBlock : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void bus_data();
    void bus();
    void busOfStackedDisks_data();
    void busOfStackedDisks();
    void viewOfAStick();

    void find_data();
    void find();
    void findFollowsLinks_data();
    void findFollowsLinks();
    void findByNumberOfARealNode();
    void findNothingInOtherFiles();
    void findNumber();
    void nothingWithoutSysfs();

    void facts();

private:
    CSysBlock Sys() const { return CSysBlock(m_pFake->Root().toStdString()); }

    std::unique_ptr<CFakeSys> m_pFake; // a stick sdb, a mapped disk dm-0 called "my vault"
};

void tst_CSysBlock::init()
{
    m_pFake = std::make_unique<CFakeSys>();
    m_pFake->UsbStick("sdb", 16);
    m_pFake->Disk("virtual/block/dm-0", "254:0");
    m_pFake->MapperName("virtual/block/dm-0", "my vault");
}

void tst_CSysBlock::bus_data()
{
    QTest::addColumn<QString>("strDisk"); // its path, with "=SUBSYSTEM" behind each device that has one
    QTest::addColumn<QString>("strBus");
    const auto row = [](const char* pszName, const char* pszDisk, const char* pszBus) {
        QTest::newRow(pszName) << pszDisk << pszBus;
    };
    row("stick", "pci=pci/usb1=usb/1-1=usb/1-1:1.0/host2/target2:0:0/2:0:0:0=scsi/block/sdb", "USB");
    row("USB disk that answers as ATA", "pci=pci/usb1/1-1=usb/ata7/host2/2:0:0:0=scsi/block/sdb", "USB");
    row("USB box with an NVMe disk", "pci=pci/usb1/1-1=usb/nvme/nvme0=nvme/nvme0n1", "USB");
    row("USB card reader", "pci=pci/usb1/1-1=usb/mmc_host/mmc0/mmc0:1=mmc/block/mmcblk0", "USB");
    row("folder that is only called usb", "pci=pci/usb1/1-1/host2/2:0:0:0=scsi/block/sdb", "SCSI");
    row("subsystem whose name only begins so", "pci=pci/x=usbmisc/block/sdb", "PCI");
    row("NVMe", "pci=pci/nvme/nvme0=nvme/nvme0n1", "PCI-Express");
    row("SATA", "pci=pci/ata1/host0/target0:0:0/0:0:0:0=scsi/block/sda", "SATA");
    row("folder that is only called ata", "pci=pci/ata/host0/0:0:0:0=scsi/block/sda", "SCSI");
    row("folder that begins with ata", "pci=pci/ata1x/host0/0:0:0:0=scsi/block/sda", "SCSI");
    row("SD card", "pci=pci/mmc_host/mmc0=mmc_host/mmc0:0001=mmc/block/mmcblk0", "Secure Digital");
    row("virtio disk", "pci=pci/virtio0=virtio/block/vda", "Virtual Interface");
    row("virtio SCSI disk", "pci=pci/virtio0=virtio/host0/0:0:0:0=scsi/block/sda", "Virtual Interface");
    row("Hyper-V disk", "pci=pci/VMBUS:00/x=vmbus/host0/0:0:0:0=scsi/block/sda", "Virtual Interface");
    row("Xen disk", "pci=pci/vbd-768=xen/block/xvda", "Virtual Interface");
    row("FireWire", "pci=pci/fw1=firewire/fw1.0=firewire/host3/3:0:0:0=scsi/block/sdc", "FireWire");
    row("SAS", "pci=pci/host0/port-0:0/end_device-0:0/target0:0:0/0:0:0:0=scsi/block/sda", "SAS");
    row("Fibre Channel", "pci=pci/host0/rport-0:0-1/target0:0:0/0:0:0:0=scsi/block/sda",
        "Fibre Channel Interface");
    row("iSCSI", "pci=pci/host4/session1/target4:0:0/4:0:0:0=scsi/block/sdd", "iSCSI");
    row("parallel SCSI", "pci=pci/host0/target0:0:0/0:0:0:0=scsi/block/sda", "SCSI");
    row("RAID controller", "pci=pci/cciss0/block/cciss!c0d0", "PCI");
    row("nothing known", "platform/soc/block/foo0", "Unknown");
    row("NVMe on several paths", "virtual/nvme-subsystem/nvme-subsys0=nvme-subsystem/nvme0n1", "PCI-Express");
    row("disk image", "virtual/block/loop0", "Disk Image");
    row("disk image, two digits", "virtual/block/loop12", "Disk Image");
    row("compressed memory", "virtual/block/zram0", "Virtual Interface");
    row("memory", "virtual/block/ram3", "Virtual Interface");
    row("network block device", "virtual/block/nbd0", "Network");
    row("mirrored over the network", "virtual/block/drbd1", "Network");
}

void tst_CSysBlock::bus()
{
    QFETCH(QString, strDisk);
    QFETCH(QString, strBus);
    CFakeSys fake;
    QStringList listFolder;
    for (const QString& strPart : strDisk.split('/')) {
        listFolder.append(strPart.section('=', 0, 0));
        if (strPart.contains('=')) {
            fake.Device(listFolder.join('/'), strPart.section('=', 1));
        }
    }
    fake.Disk(listFolder.join('/'), "8:16");
    fake.Partition(listFolder.join('/') + "/part1", "8:17");
    const CSysBlock sys(fake.Root().toStdString());
    QCOMPARE(QString::fromStdString(sys.Bus(sys.FindNumber("8:16"))), strBus);
    QCOMPARE(QString::fromStdString(sys.Bus(sys.FindNumber("8:17"))), strBus);
}

void tst_CSysBlock::busOfStackedDisks_data()
{
    QTest::addColumn<QStringList>("listSlave"); // "disk>what it is made of"
    QTest::addColumn<QString>("strBus");
    const auto row = [](const char* pszName, const QStringList& listSlave, const char* pszBus) {
        QTest::newRow(pszName) << listSlave << pszBus;
    };
    row("encrypted stick", {"dm-0>sdb1"}, "USB");
    row("volume on an encrypted stick", {"dm-0>dm-1", "dm-1>sdb1"}, "USB");
    row("encrypted internal disk", {"dm-0>sda"}, "SATA");
    row("two disks on one bus", {"dm-0>sdb", "dm-0>sdb1"}, "USB");
    row("two disks on two buses", {"dm-0>sda", "dm-0>sdb1"}, "Virtual Interface");
    row("on a disk image", {"dm-0>loop0"}, "Disk Image");
    row("on nothing", {}, "Virtual Interface");
    row("on a view of a stick", {"dm-0>dm-2", "dm-2>sdb1"}, "Virtual Interface");
    row("on a view of an internal disk", {"dm-0>dm-2", "dm-2>sda"}, "Virtual Interface");
    row("made of each other", {"dm-0>dm-1", "dm-1>dm-0"}, "Virtual Interface");
}

void tst_CSysBlock::busOfStackedDisks()
{
    QFETCH(QStringList, listSlave);
    m_pFake->Disk("pci/ata1/host0/0:0:0:0/block/sda", "8:0");
    m_pFake->Disk("virtual/block/dm-1", "254:1");
    m_pFake->Disk("virtual/block/dm-2", "254:2");
    m_pFake->MapperName("virtual/block/dm-2", "tarnwick-view-7");
    m_pFake->Disk("virtual/block/loop0", "254:9");
    m_pFake->Partition("virtual/block/dm-0/dm-0p1", "254:20");
    const CSysBlock sys = Sys();
    for (const QString& strEntry : listSlave) {
        const auto device = sys.Find(strEntry.section('>', 1).toStdString());
        QVERIFY(!device.empty());
        m_pFake->Slave("virtual/block/" + strEntry.section('>', 0, 0),
                       QString::fromStdString(device.string()).section("/devices/", 1));
    }
    QTEST(QString::fromStdString(sys.Bus(sys.Find("dm-0"))), "strBus");
    QTEST(QString::fromStdString(sys.Bus(sys.Find("dm-0p1"))), "strBus");
}

void tst_CSysBlock::viewOfAStick()
{
    m_pFake->MapperName("virtual/block/dm-0", "tarnwick-view-12");
    const QString strStick = QString::fromStdString(Sys().Find("sdb1").string()).section("/devices/", 1);
    m_pFake->Slave("virtual/block/dm-0", strStick);
    const auto view = Sys().Find("/dev/mapper/tarnwick-view-12");
    QCOMPARE(QString::fromStdString(Sys().Bus(view)), QString("Virtual Interface"));
}

void tst_CSysBlock::find_data()
{
    QTest::addColumn<QByteArray>("baNode");
    QTest::addColumn<QString>("strName");
    const auto row = [](const char* pNode, const char* pName) {
        QTest::newRow(*pNode == '\0' ? "(empty)" : pNode) << QByteArray(pNode) << pName;
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
    m_pFake->Disk("pci0000:00/block/cciss!c0d0", "104:0");
    QTEST(Named(Sys().Find(baNode.toStdString())), "strName");
}

void tst_CSysBlock::findFollowsLinks_data()
{
    QTest::addColumn<QString>("strLink");
    QTest::addColumn<QString>("strName");
    QTest::newRow("link") << "by-uuid"
                          << "sdb1";
    QTest::newRow("link to a link") << "chain"
                                    << "sdb1";
    QTest::newRow("relative link") << "deep/down/relative"
                                   << "sdb1";
    QTest::newRow("link to a mapped disk") << "mapped"
                                           << "dm-0";
    QTest::newRow("link to elsewhere") << "elsewhere" << QString();
    QTest::newRow("link to itself") << "circle" << QString();
}

void tst_CSysBlock::findFollowsLinks()
{
    QFETCH(QString, strLink);
    CTempTree tree;
    // The nodes themselves are missing, so that none of these links leads anywhere.
    tree.Link("by-uuid", "/dev/sdb1");
    tree.Link("chain", "by-uuid");
    tree.Link("deep/down/relative", "../../chain");
    tree.Link("mapped", "/dev/mapper/my vault");
    tree.Link("elsewhere", "/nowhere/sdb1");
    tree.Link("circle", "circle");
    QTEST(Named(Sys().Find(tree.Path(strLink).toStdString())), "strName");
}

void tst_CSysBlock::findByNumberOfARealNode()
{
    const CTempTree tree;
    const QByteArray baNode = tree.Path("anything").toLocal8Bit();
    if (mknod(baNode.constData(), S_IFBLK | 0600, makedev(8, 17)) != 0) {
        QSKIP("device nodes cannot be made here");
    }
    QCOMPARE(Named(Sys().Find(baNode.toStdString())), "sdb1");
}

void tst_CSysBlock::findNothingInOtherFiles()
{
    m_pFake->Disk("pci0000:00/block/null", "1:3");
    CTempTree tree;
    QCOMPARE(Named(Sys().Find(tree.Write("sdb1").toStdString())), QString());
    QCOMPARE(Named(Sys().Find(tree.MkDir("sdb").toStdString())), QString());
    // A character device, though its number and its name are those of a disk.
    QCOMPARE(Named(Sys().Find("/dev/null")), QString());
}

void tst_CSysBlock::findNumber()
{
    QCOMPARE(Named(Sys().FindNumber("8:16")), "sdb");
    QCOMPARE(Named(Sys().FindNumber("8:17")), "sdb1");
    QCOMPARE(Named(Sys().FindNumber("8:18")), QString());
    QCOMPARE(Named(Sys().FindNumber("")), QString());
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
    m_pFake->Disk("pci0000:00/block/sdc", "8:32", 31115288);
    const CSysBlock sys = Sys();
    QCOMPARE(CSysBlock::Number(sys.Find("sdb1")), "8:17");
    QCOMPARE(CSysBlock::Size(sys.Find("sdc")), 15931027456u);
    QCOMPARE(CSysBlock::Size(sys.Find("sdb1")), 2048u * 512);
    QCOMPARE(CSysBlock::Size("/nowhere"), 0u);
    QVERIFY(CSysBlock::IsRemovable(sys.Find("sdb")));
    QVERIFY(CSysBlock::IsRemovable(sys.Find("sdb1")));
    QVERIFY(!CSysBlock::IsRemovable(sys.Find("sdc")));
    QCOMPARE(CSysBlock::MapperName(sys.Find("dm-0")), "my vault");
    QCOMPARE(CSysBlock::MapperName(sys.Find("sdb")), "");
}

QTEST_GUILESS_MAIN(tst_CSysBlock)
#include "tst_CSysBlock.moc"
