#include "disk/platform/linux/CUsbDisks.h"

#include <QTest>

/** Which device events are arrivals and removals of USB disks. */
class tst_CUsbDisks : public QObject
{
    Q_OBJECT

private slots:
    void decides_data();
    void decides();
    void leadsThroughUsb_data();
    void leadsThroughUsb();
};

static const QByteArray ON_USB
    = "/sys/devices/pci0000:00/0000:00:14.0/usb2/2-1/2-1:1.0/host6/target6:0:0/6:0:0:0/block/sdb";
static const QByteArray ON_SATA
    = "/sys/devices/pci0000:00/0000:00:1f.2/ata1/host0/target0:0:0/0:0:0:0/block/sda";
static const QByteArray ON_DOCK = "/sys/devices/platform/dock/block/sdc"; // no bus to be seen in it

static QByteArray AsText(const std::optional<STDiskEvent>& event)
{
    return event ? (event->enType == DISK_EVENT_APPEARED ? "+" : "-") + event->baPath : QByteArray();
}

void tst_CUsbDisks::decides_data()
{
    QTest::addColumn<QByteArrayList>("listAction"); // one behind the other
    QTest::addColumn<QByteArray>("baPath");
    QTest::addColumn<bool>("bUsbParent"); // as long as it is there
    QTest::addColumn<QByteArrayList>("listEvent"); // of each action
    const auto row = [](const char* pszName, const QByteArrayList& listAction, const QByteArray& baPath,
                        bool bUsbParent, const QByteArrayList& listEvent) {
        QTest::newRow(pszName) << listAction << baPath << bUsbParent << listEvent;
    };
    row("USB disk arrives", {"add"}, ON_USB, true, {"+" + ON_USB});
    row("USB disk goes, parents known", {"remove"}, ON_USB, true, {"-USB"});
    row("USB disk goes, parents gone", {"remove"}, ON_USB, false, {"-USB"});
    row("USB disk goes, its parents alone tell", {"remove"}, ON_DOCK, true, {"-USB"});
    row("nothing tells", {"remove"}, ON_DOCK, false, {""});
    row("SATA disk arrives", {"add"}, ON_SATA, false, {""});
    row("SATA disk goes", {"remove"}, ON_SATA, false, {""});
    row("neither", {"change", "bind", "move", ""}, ON_USB, true, {"", "", "", ""});
    row("arrives without a USB parent, whatever its path", {"add"}, ON_USB, false, {""});
    // Parents are gone at the removal. Afterwards the name is free and may be another disk's.
    row("arrived disk is removed once", {"add", "gone", "remove", "remove"}, ON_DOCK, true,
        {"+" + ON_DOCK, "", "-USB", ""});
    row("remembered disk is removed once", {"remember", "remove", "remove"}, ON_DOCK, false,
        {"", "-USB", ""});
}

void tst_CUsbDisks::decides()
{
    QFETCH(QByteArrayList, listAction);
    QFETCH(QByteArray, baPath);
    QFETCH(bool, bUsbParent);
    CUsbDisks disks;
    QByteArrayList listSeen;
    for (const QByteArray& baAction : listAction) {
        if (baAction == "remember") {
            disks.Remember(baPath);
        }
        bUsbParent = bUsbParent && baAction != "gone";
        listSeen.append(AsText(disks.OnEvent({baAction, baPath, bUsbParent})));
    }
    QTEST(listSeen, "listEvent");
}

void tst_CUsbDisks::leadsThroughUsb_data()
{
    QTest::addColumn<QByteArray>("baPath");
    QTest::addColumn<bool>("bUsb");
    const auto row = [](const char* pszName, const QByteArray& baPath, bool bUsb) {
        QTest::newRow(pszName) << baPath << bUsb;
    };
    row("host controller", ON_USB, true);
    row("two digits", "/devices/x/usb12/12-1/block/sdb", true);
    row("at the end", "/devices/x/usb1", true);
    row("controller's name only", "/devices/soc/3f980000.usb/block/sdb", false);
    row("no number", "/devices/usb/block/sdb", false);
    row("more than a number", "/devices/usb1x/block/sdb", false);
    row("within a word", "/devices/myusb1/block/sdb", false);
    row("other case", "/devices/USB1/block/sdb", false);
    row("SATA", ON_SATA, false);
    row("empty", "", false);
}

void tst_CUsbDisks::leadsThroughUsb()
{
    QFETCH(QByteArray, baPath);
    QTEST(CUsbDisks::LeadsThroughUsb(baPath), "bUsb");
}

QTEST_APPLESS_MAIN(tst_CUsbDisks)
#include "tst_CUsbDisks.moc"
