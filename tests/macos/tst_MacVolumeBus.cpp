#include "disk/platform/CVolumeBus.h"
#include "macos/CFakeMac.h"

#include <QTest>

#include <thread>

Q_DECLARE_METATYPE(std::optional<bool>)
Q_DECLARE_METATYPE(QVector<STFakeEntry>)

/** The bus that macOS's registry of devices has above a volume. */
class tst_MacVolumeBus : public QObject
{
    Q_OBJECT

private slots:
    void cleanup();
    void busOfAVolume_data();
    void busOfAVolume();
    void devices_data();
    void devices();
    void namesThatMeanTheSame();
    void onAThreadOfItsOwn();
};

using Bus = std::optional<bool>;
using Chain = QVector<STFakeEntry>;

static const QString PATH = "/Volumes/STICK";

static STFakeEntry Device(const QByteArray& baBus, ENFakeProperties enProperties = PROPERTIES_COMPLETE)
{
    return {"IOBlockStorageDevice", {"Media", "", baBus, enProperties}};
}

/** A class of entries that lie between a volume and its device. */
static STFakeEntry Between(const QByteArray& baClass) { return {baClass, {"", "", "made up"}}; }

static Chain Partition(const STFakeEntry& device)
{
    return {Between("IOMedia"), Between("IOFDiskPartitionScheme"), Between("IOMedia"),
            Between("IOBlockStorageDriver"), device};
}

static Chain Container(const STFakeEntry& device)
{
    return Chain{Between("AppleAPFSVolume"), Between("AppleAPFSContainer"), Between("AppleAPFSMedia"),
                 Between("AppleAPFSContainerScheme")}
    + Partition(device);
}

void tst_MacVolumeBus::cleanup()
{
    QCOMPARE(CFakeMac::Problems(), QStringList());
    QCOMPARE(CFakeMac::Held(), (QMap<QString, int>()));
    QCOMPARE(CFakeMac::LeftToPools(), 0);
}

void tst_MacVolumeBus::busOfAVolume_data()
{
    QTest::addColumn<Chain>("listChain");
    QTest::addColumn<Bus>("bUsb");
    const auto fnRow = [](const char* pRow, const Chain& listChain, Bus bUsb) {
        QTest::newRow(pRow) << listChain << bUsb;
    };
    fnRow("stick", Partition(Device("USB")), true);
    fnRow("stick in small letters", Partition(Device("usb")), true);
    fnRow("internal disk", Partition(Device("PCI-Express")), false);
    fnRow("volume in a container on a stick", Container(Device("USB")), true);
    fnRow("unlocked volume of the internal disk", Container(Device("Apple Fabric")), false);
    fnRow("disk image", Partition(Device("Virtual Interface")), false);
    fnRow("no such media", {}, Bus());
    fnRow("no device above", {Between("IOMedia"), Between("IOResources")}, Bus());
    fnRow("properties refused", Partition(Device("USB", PROPERTIES_REFUSED)), Bus());
    fnRow("no protocol", Partition(Device("USB", PROPERTIES_WITHOUT_PROTOCOL)), Bus());
    fnRow("no interconnect", Partition(Device("USB", PROPERTIES_WITHOUT_BUS)), Bus());
    fnRow("interconnect is no text", Partition(Device("USB", PROPERTIES_BUS_IS_NUMBER)), Bus());
    fnRow("device on a device", Partition(Device("USB")) + Chain{Device("PCI-Express")}, true);
}

void tst_MacVolumeBus::busOfAVolume()
{
    QFETCH(Chain, listChain);
    CFakeMac::SetMounts({{"/", "/dev/disk1s5"}, {"/Volumes/STICK", "/dev/disk4s1"}});
    CFakeMac::SetMedia("disk4s1", listChain);
    QTEST(CVolumeBus::IsOnUsb(PATH), "bUsb");
}

void tst_MacVolumeBus::devices_data()
{
    QTest::addColumn<QByteArray>("baDevice");
    QTest::addColumn<Bus>("bUsb");
    QTest::newRow("device node") << QByteArray("/dev/disk4s1") << Bus(true);
    QTest::newRow("driver in user space") << QByteArray("exfat://disk4s1/NAME/") << Bus(true);
    QTest::newRow("network") << QByteArray("//somebody@somewhere/disk4s1") << Bus();
    QTest::newRow("named like it") << QByteArray("disk4s1") << Bus();
    QTest::newRow("nothing") << QByteArray() << Bus();
}

void tst_MacVolumeBus::devices()
{
    QFETCH(QByteArray, baDevice);
    CFakeMac::SetMedia("disk4s1", Partition(Device("USB")));
    CFakeMac::SetMounts({{"/Volumes/STICK", baDevice}});
    QTEST(CVolumeBus::IsOnUsb(PATH), "bUsb");
    // What is not mounted lies nowhere.
    QCOMPARE(CVolumeBus::IsOnUsb("/Volumes/OTHER"), Bus());
    QCOMPARE(CVolumeBus::IsOnUsb(PATH + "/folder"), Bus());
    CFakeMac::SetMounts({});
    QCOMPARE(CVolumeBus::IsOnUsb(PATH), Bus());
}

void tst_MacVolumeBus::namesThatMeanTheSame()
{
    CFakeMac::SetMedia("disk4s1", Partition(Device("SATA")));
    CFakeMac::SetMounts({{"/Volumes/Bu\xcc\x88"
                          "cher",
                          "/dev/disk4s1"}});
    QCOMPARE(CVolumeBus::IsOnUsb(QString::fromUtf8("/Volumes/B\xc3\xbc"
                                                   "cher")),
             Bus(false));
}

/** Which has no pool of its own. */
void tst_MacVolumeBus::onAThreadOfItsOwn()
{
    CFakeMac::SetMedia("disk4s1", Partition(Device("USB")));
    CFakeMac::SetMounts({{"/Volumes/STICK", "/dev/disk4s1"}});
    Bus bUsb;
    std::thread([&bUsb] { bUsb = CVolumeBus::IsOnUsb(PATH); }).join();
    QCOMPARE(bUsb, Bus(true));
    QCOMPARE(CFakeMac::TakeLog(), QStringList()); // of objects without a pool
}

QTEST_GUILESS_MAIN(tst_MacVolumeBus)
#include "tst_MacVolumeBus.moc"
