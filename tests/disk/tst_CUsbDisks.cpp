#include "disk/platform/linux/CUsbDisks.h"

#include <QtTest>

/** Which device events are arrivals and removals of USB disks. */
class tst_CUsbDisks : public QObject
{
    Q_OBJECT

private slots:
    void Decides_data();
    void Decides();
    void ARememberedDiskIsRemoved();
    void AnArrivedDiskIsRemovedOnce();
    void LeadsThroughUsb_data();
    void LeadsThroughUsb();
};

static const QByteArray ON_USB
    = "/sys/devices/pci0000:00/0000:00:14.0/usb2/2-1/2-1:1.0/host6/target6:0:0/6:0:0:0/block/sdb";
static const QByteArray ON_SATA
    = "/sys/devices/pci0000:00/0000:00:1f.2/ata1/host0/target0:0:0/0:0:0:0/block/sda";

void tst_CUsbDisks::Decides_data()
{
    QTest::addColumn<QByteArray>("baAction");
    QTest::addColumn<QByteArray>("baPath");
    QTest::addColumn<bool>("bUsbParent");
    QTest::addColumn<QByteArray>("baEvent");

    QTest::newRow("USB disk arrives") << QByteArray("add") << ON_USB << true << "+" + ON_USB;
    QTest::newRow("USB disk goes, parents known")
        << QByteArray("remove") << ON_USB << true << QByteArray("-USB");
    QTest::newRow("USB disk goes, parents gone")
        << QByteArray("remove") << ON_USB << false << QByteArray("-USB");
    QTest::newRow("USB disk goes, its parents alone tell")
        << QByteArray("remove") << QByteArray("/sys/devices/platform/dock/block/sdc") << true
        << QByteArray("-USB");
    QTest::newRow("SATA disk arrives") << QByteArray("add") << ON_SATA << false << QByteArray();
    QTest::newRow("SATA disk goes") << QByteArray("remove") << ON_SATA << false << QByteArray();
    QTest::newRow("change") << QByteArray("change") << ON_USB << true << QByteArray();
    QTest::newRow("bind") << QByteArray("bind") << ON_USB << true << QByteArray();
    QTest::newRow("move") << QByteArray("move") << ON_USB << true << QByteArray();
    QTest::newRow("no action") << QByteArray() << ON_USB << true << QByteArray();
    QTest::newRow("arrives without a USB parent, whatever its path")
        << QByteArray("add") << ON_USB << false << QByteArray();
}

static QByteArray AsText(const std::optional<STDiskEvent>& event)
{
    return event ? (event->enType == DISK_EVENT_APPEARED ? "+" : "-") + event->baPath : QByteArray();
}

void tst_CUsbDisks::Decides()
{
    QFETCH(QByteArray, baAction);
    QFETCH(QByteArray, baPath);
    QFETCH(bool, bUsbParent);
    CUsbDisks disks;
    QTEST(AsText(disks.OnEvent({baAction, baPath, bUsbParent})), "baEvent");
}

void tst_CUsbDisks::ARememberedDiskIsRemoved()
{
    const QByteArray baOdd = "/sys/devices/platform/dock/block/sdc";
    CUsbDisks disks;
    QCOMPARE(AsText(disks.OnEvent({"remove", baOdd, false})), QByteArray());
    disks.Remember(baOdd);
    QCOMPARE(AsText(disks.OnEvent({"remove", baOdd, false})), QByteArray("-USB"));
}

void tst_CUsbDisks::AnArrivedDiskIsRemovedOnce()
{
    const QByteArray baOdd = "/sys/devices/platform/dock/block/sdc";
    CUsbDisks disks;
    QCOMPARE(AsText(disks.OnEvent({"add", baOdd, true})), "+" + baOdd);
    QCOMPARE(AsText(disks.OnEvent({"remove", baOdd, false})), QByteArray("-USB"));
    // The name is free now and may be another disk's.
    QCOMPARE(AsText(disks.OnEvent({"remove", baOdd, false})), QByteArray());
}

void tst_CUsbDisks::LeadsThroughUsb_data()
{
    QTest::addColumn<QByteArray>("baPath");
    QTest::addColumn<bool>("bUsb");
    QTest::newRow("host controller") << ON_USB << true;
    QTest::newRow("two digits") << QByteArray("/devices/x/usb12/12-1/block/sdb") << true;
    QTest::newRow("at the end") << QByteArray("/devices/x/usb1") << true;
    QTest::newRow("controller's name only") << QByteArray("/devices/soc/3f980000.usb/block/sdb") << false;
    QTest::newRow("no number") << QByteArray("/devices/usb/block/sdb") << false;
    QTest::newRow("more than a number") << QByteArray("/devices/usb1x/block/sdb") << false;
    QTest::newRow("within a word") << QByteArray("/devices/myusb1/block/sdb") << false;
    QTest::newRow("other case") << QByteArray("/devices/USB1/block/sdb") << false;
    QTest::newRow("SATA") << ON_SATA << false;
    QTest::newRow("empty") << QByteArray() << false;
}

void tst_CUsbDisks::LeadsThroughUsb()
{
    QFETCH(QByteArray, baPath);
    QTEST(CUsbDisks::LeadsThroughUsb(baPath), "bUsb");
}

QTEST_GUILESS_MAIN(tst_CUsbDisks)
#include "tst_CUsbDisks.moc"
