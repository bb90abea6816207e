#include "disk/platform/linux/CDeviceBus.h"
#include "standin/CFakeSys.h"

#include <QTest>

Q_DECLARE_METATYPE(std::optional<bool>)

/** What may become a destination when it arrives. */
class tst_CDeviceBus : public QObject
{
    Q_OBJECT

private slots:
    void isUsb_data();
    void isUsb();
};

void tst_CDeviceBus::isUsb_data()
{
    QTest::addColumn<QString>("strNode");
    QTest::addColumn<std::optional<bool>>("bUsb");
    const auto row = [](const char* pszName, const char* pszNode, std::optional<bool> bUsb) {
        QTest::newRow(pszName) << pszNode << bUsb;
    };
    row("stick", "/dev/sdb1", true);
    row("encrypted stick", "/dev/mapper/my vault", true);
    row("view of a stick", "/dev/mapper/tarnwick-view-1", false);
    row("internal disk", "/dev/sda", false);
    row("volume group of internal disks", "/dev/mapper/vg0-home", false);
    row("disk image", "/dev/loop0", std::nullopt);
    row("disk of an unknown bus", "/dev/foo0", std::nullopt);
    row("file system in memory", "tmpfs", std::nullopt);
    row("network share", "server:/share", std::nullopt);
    row("disk that has gone", "/dev/sdz1", std::nullopt);
    row("nothing", "", std::nullopt);
}

void tst_CDeviceBus::isUsb()
{
    QFETCH(QString, strNode);
    CFakeSys fake;
    fake.UsbStick("sdb", 16);
    fake.Disk("pci/ata1/host0/0:0:0:0/block/sda", "8:0");
    fake.Disk("virtual/block/loop0", "7:0");
    fake.Disk("platform/soc/block/foo0", "200:0");
    const QString strStick
        = "pci0000:00/0000:00:14.0/usb1/1-16/1-1:1.0/host9/target9:0:0/9:0:0:0/block/sdb/sdb1";
    const auto fnMapped = [&fake](const QString& strDevice, const QString& strName, const QString& strPart) {
        const QString strPath = "virtual/block/" + strDevice;
        fake.Disk(strPath, "254:" + strDevice.mid(3));
        fake.MapperName(strPath, strName);
        fake.Slave(strPath, strPart);
    };
    fnMapped("dm-0", "my vault", strStick);
    fnMapped("dm-1", "tarnwick-view-1", strStick);
    fnMapped("dm-2", "vg0-home", "pci/ata1/host0/0:0:0:0/block/sda");
    const CSysBlock sys(fake.Root().toStdString());
    QTEST(CDeviceBus::IsUsb(sys, strNode.toStdString()), "bUsb");
}

QTEST_GUILESS_MAIN(tst_CDeviceBus)
#include "tst_CDeviceBus.moc"
