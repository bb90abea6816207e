#include "disk/CDiskListener.h"
#include "disk/platform/DiskMonitors.h"
#include "disk/platform/macos/DeviceWatch.h"
#include "disk/platform/macos/DiskSession.h"
#include "macos/CEventLog.h"
#include "macos/CFakeMac.h"

#include <QTest>

#include <memory>

Q_DECLARE_METATYPE(ENFakeProperties)

static const STFakeDevice STICK{"USB DISK 3.0 Media", "IOUSB:/Root/AppleUSBXHCI@14/Stick@1", "USB"};
static const STFakeDevice INTERNAL{"APPLE SSD Media", "", "SATA"};
static const QString STICK_CAME = "0 IOUSB:/Root/AppleUSBXHCI@14/Stick@1 1";
static const QString WENT = "1 USB 0";

/** macOS's sources of disk events, through the listener. The functions build on each other in this order. */
class tst_MacDiskListener : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanup();
    void whatIsPresentAtTheStartSaysNothing();
    void watchesStorageDevicesThatComeAndGo();
    void aSecondStartInstallsNothing();
    void onlyUsbIsReported_data();
    void onlyUsbIsReported();
    void aBatchOfThree();
    void aDeviceWithoutAPathAfterOneWithAPath();
    void oneBatchAfterTheOther();
    void anArrivalWithinAnArrival();
    void theSessionSeesAnyDiskGo();
    void onlyDevicesAreHeardWhileAMenuIsOpen();
    void mountAndUnmount_data();
    void mountAndUnmount();
    void noticesAreLoggedAndHeardWithAPathOnly();
    void anObserverWithoutAListenerOnlyLogs();
    void appearedDisksAreReportedByName();
    void handlersDoNothingWithoutAListener();
    void eventsLeaveNoObjects();
    void monitorsWatchOnAThreadOfTheirOwn();
    void monitorsDoNothingWithoutAListener();

private:
    QStringList Events(ENFakeMode enMode = MODE_DEFAULT);

    CEventLog m_log;
    QMap<QString, int> m_mapHeld{{"iterator", 2}, {"port", 2}};
};

static CDiskListener& Listener() { return CDiskListener::GetInstance(); }

/** What the listener tells when the loop runs until it has nothing more to deliver. */
QStringList tst_MacDiskListener::Events(ENFakeMode enMode)
{
    CFakeMac::RunLoop(enMode);
    return m_log.Take();
}

void tst_MacDiskListener::initTestCase()
{
    // An attached stick and an internal disk, before anything listens.
    CFakeMac::Plug({STICK, INTERNAL});
    QCOMPARE(Listener().StartListener(&CEventLog::Receive, &m_log), true);
}

/** Whatever happened: nothing is kept but the watches, and nothing was used after its release. */
void tst_MacDiskListener::cleanup()
{
    QCOMPARE(CFakeMac::Problems(), QStringList());
    QCOMPARE(CFakeMac::Held(), m_mapHeld);
    m_log.Take();
    CFakeMac::TakeLog();
}

void tst_MacDiskListener::whatIsPresentAtTheStartSaysNothing()
{
    QCOMPARE(Events(), QStringList());
    QCOMPARE(CFakeMac::TakeLog(), QStringList());
}

void tst_MacDiskListener::watchesStorageDevicesThatComeAndGo()
{
    QCOMPARE(
        CFakeMac::Registrations(),
        QStringList({"IOServiceFirstMatch IOBlockStorageDevice", "IOServiceTerminate IOBlockStorageDevice"}));
}

void tst_MacDiskListener::aSecondStartInstallsNothing()
{
    CEventLog other;
    QCOMPARE(Listener().StartListener(&CEventLog::Receive, &other), true);
    CFakeMac::Plug({STICK});
    CFakeMac::LoseDisk();
    CFakeMac::RunLoop();
    CFakeMac::Mount("/Volumes/STICK");
    QCOMPARE(CFakeMac::Registrations().size(), 2);
    QCOMPARE(m_log.Take().size(), 3);
    QCOMPARE(other.Take(), QStringList());
}

void tst_MacDiskListener::onlyUsbIsReported_data()
{
    QTest::addColumn<QByteArray>("baBus");
    QTest::addColumn<ENFakeProperties>("enProperties");
    QTest::addColumn<bool>("bReported");
    const auto fnRow = [](const char* pRow, const char* pBus, ENFakeProperties enProperties, bool bReported) {
        QTest::newRow(pRow) << QByteArray(pBus) << enProperties << bReported;
    };
    fnRow("USB", "USB", PROPERTIES_COMPLETE, true);
    fnRow("usb in small letters", "usb", PROPERTIES_COMPLETE, true);
    fnRow("mixed case", "uSb", PROPERTIES_COMPLETE, true);
    fnRow("SATA", "SATA", PROPERTIES_COMPLETE, false);
    fnRow("PCI", "PCI-Express", PROPERTIES_COMPLETE, false);
    fnRow("Thunderbolt", "Thunderbolt", PROPERTIES_COMPLETE, false);
    fnRow("starts like USB", "USB3", PROPERTIES_COMPLETE, false);
    fnRow("USB cut short", "US", PROPERTIES_COMPLETE, false);
    fnRow("empty", "", PROPERTIES_COMPLETE, false);
    fnRow("no properties", "USB", PROPERTIES_REFUSED, false);
    fnRow("no protocol", "USB", PROPERTIES_WITHOUT_PROTOCOL, false);
    fnRow("protocol is no dictionary", "USB", PROPERTIES_PROTOCOL_IS_TEXT, false);
    fnRow("no interconnect", "USB", PROPERTIES_WITHOUT_BUS, false);
    fnRow("interconnect is no text", "USB", PROPERTIES_BUS_IS_NUMBER, false);
}

void tst_MacDiskListener::onlyUsbIsReported()
{
    QFETCH(QByteArray, baBus);
    QFETCH(ENFakeProperties, enProperties);
    QFETCH(bool, bReported);
    const STFakeDevice device{"Media", "IOUSB:/Root/Hub@14/Stick@2", baBus, enProperties};
    CFakeMac::Plug({device});
    QCOMPARE(Events(), bReported ? QStringList{"0 IOUSB:/Root/Hub@14/Stick@2 1"} : QStringList());
    QCOMPARE(CFakeMac::TakeLog(), QStringList{"Device detached:Media"});
    CFakeMac::Unplug({device});
    QCOMPARE(Events(), bReported ? QStringList{WENT} : QStringList());
    QCOMPARE(CFakeMac::TakeLog(), QStringList{"Device detached:Media"});
}

void tst_MacDiskListener::aBatchOfThree()
{
    CFakeMac::Plug({{"A", "IOUSB:/A", "USB"}, {"B", "IOUSB:/B", "SATA"}, {"C", "IOUSB:/C", "usb"}});
    QCOMPARE(Events(), QStringList({"0 IOUSB:/A 1", "0 IOUSB:/C 1"}));
    QCOMPARE(CFakeMac::TakeLog(),
             QStringList({"Device detached:A", "Device detached:B", "Device detached:C"}));
}

void tst_MacDiskListener::aDeviceWithoutAPathAfterOneWithAPath()
{
    const QByteArray baLong = "IOUSB:/" + QByteArray(511 - 7, 'x');
    CFakeMac::Plug(
        {{"A", baLong, "USB"}, {QByteArray(), "", "USB"}, {QByteArray(127, 'n'), "IOUSB:/C", "USB"}});
    QCOMPARE(Events(),
             QStringList({QString("0 %1 1").arg(QString::fromLatin1(baLong)), "0  1", "0 IOUSB:/C 1"}));
    QCOMPARE(CFakeMac::TakeLog(),
             QStringList({"Device detached:A", "Device detached:", "Device detached:" + QString(127, 'n')}));
}

void tst_MacDiskListener::oneBatchAfterTheOther()
{
    for (int i = 0; i < 3; ++i) {
        CFakeMac::Plug({STICK});
        QCOMPARE(Events().size(), 1);
        CFakeMac::Unplug({STICK});
        QCOMPARE(Events(), QStringList{WENT});
    }
}

/** The receiver may open a dialog, whose event loop runs the sources again. */
void tst_MacDiskListener::anArrivalWithinAnArrival()
{
    m_log.OnNext([] {
        CFakeMac::Plug({{"C", "IOUSB:/C", "USB"}});
        CFakeMac::Unplug({STICK});
        CFakeMac::RunLoop();
    });
    CFakeMac::Plug({{"A", "IOUSB:/A", "USB"}, {"B", "IOUSB:/B", "USB"}});
    QCOMPARE(Events(), QStringList({"0 IOUSB:/A 1", WENT, "0 IOUSB:/B 1", "0 IOUSB:/C 1"}));
}

void tst_MacDiskListener::theSessionSeesAnyDiskGo()
{
    CFakeMac::LoseDisk();
    CFakeMac::LoseDisk();
    QCOMPARE(Events(), QStringList({WENT, WENT}));
    QCOMPARE(m_log.Thread(), QThread::currentThreadId());
}

void tst_MacDiskListener::onlyDevicesAreHeardWhileAMenuIsOpen()
{
    CFakeMac::LoseDisk();
    CFakeMac::Plug({STICK});
    QCOMPARE(Events(MODE_TRACKING), QStringList{STICK_CAME});
    QCOMPARE(Events(MODE_DEFAULT), QStringList{WENT});
}

void tst_MacDiskListener::mountAndUnmount_data()
{
    QTest::addColumn<QByteArray>("baPath");
    QTest::newRow("plain") << QByteArray("/Volumes/STICK");
    QTest::newRow("blank") << QByteArray("/Volumes/My Stick 1");
    QTest::newRow("beyond ASCII") << QByteArray("/Volumes/B\xc3\xbc"
                                                "cher \xe5\x86\x99\xe7\x9c\x9f");
    QTest::newRow("decomposed letters") << QByteArray("/Volumes/Bu\xcc\x88"
                                                      "cher");
    QTest::newRow("outside the basic plane") << QByteArray("/Volumes/\xf0\x9f\x93\xb7");
    QTest::newRow("percent signs") << QByteArray("/Volumes/%s %@ %1");
    QTest::newRow("named like the placeholder") << QByteArray("/Volumes/USB");
    QTest::newRow("root") << QByteArray("/");
}

void tst_MacDiskListener::mountAndUnmount()
{
    QFETCH(QByteArray, baPath);
    CFakeMac::Mount(baPath.constData());
    CFakeMac::Unmount(baPath.constData());
    // The bytes of the path, each as one character.
    QCOMPARE(m_log.Take(),
             QStringList({QString("0 %1 1").arg(QString::fromLatin1(baPath)),
                          QString("1 %1 1").arg(QString::fromLatin1(baPath))}));
}

void tst_MacDiskListener::noticesAreLoggedAndHeardWithAPathOnly()
{
    CFakeMac::Mount("/Volumes/STICK");
    CFakeMac::Mount(nullptr);
    CFakeMac::Unmount(nullptr);
    QCOMPARE(m_log.Take(), QStringList{"0 /Volumes/STICK 1"});
    const QStringList listLine = CFakeMac::TakeLog();
    QCOMPARE(listLine.size(), 3);
    QVERIFY2(listLine[0].startsWith("volumeDidMount:"), qPrintable(listLine[0]));
    QVERIFY2(listLine[0].contains("NSWorkspaceDidMountNotification"), qPrintable(listLine[0]));
    QVERIFY2(listLine[2].startsWith("volumeDidUnmount:"), qPrintable(listLine[2]));
    QVERIFY2(listLine[2].contains("NSWorkspaceDidUnmountNotification"), qPrintable(listLine[2]));
}

void tst_MacDiskListener::anObserverWithoutAListenerOnlyLogs()
{
    CFakeMac::NotifyLonelyObserver();
    QCOMPARE(m_log.Take(), QStringList());
    QCOMPARE(CFakeMac::TakeLog().size(), 2);
}

void tst_MacDiskListener::appearedDisksAreReportedByName()
{
    DiskAppearedCallback(CFakeMac::Disk("disk2s1"), &Listener());
    DiskAppearedCallback(CFakeMac::Disk(nullptr), &Listener());
    DiskAppearedCallback(CFakeMac::Disk("USB"), &Listener());
    QCOMPARE(m_log.Take(), QStringList({"0 disk2s1 1", "0 USB 1"}));
}

void tst_MacDiskListener::handlersDoNothingWithoutAListener()
{
    iAttached(nullptr, 0);
    iDetached(nullptr, 0);
    DiskDisappearedCallback(CFakeMac::Disk("disk2"), nullptr);
    DiskAppearedCallback(CFakeMac::Disk("disk2"), nullptr);
    QCOMPARE(m_log.Take(), QStringList());
    QCOMPARE(CFakeMac::TakeLog(), QStringList());
}

static void OneOfEach()
{
    CFakeMac::Plug({STICK});
    CFakeMac::Mount("/Volumes/STICK");
    CFakeMac::Unmount("/Volumes/STICK");
    CFakeMac::Unplug({STICK});
    CFakeMac::LoseDisk();
    CFakeMac::RunLoop();
}

void tst_MacDiskListener::eventsLeaveNoObjects()
{
    CFakeMac::Alive(nullptr);
    for (int i = 0; i < 10; ++i) {
        OneOfEach();
    }
    const int nBefore = CFakeMac::Alive(nullptr);
    for (int i = 0; i < 100; ++i) {
        OneOfEach();
    }
    QCOMPARE(CFakeMac::Alive(nullptr), nBefore);
}

void tst_MacDiskListener::monitorsWatchOnAThreadOfTheirOwn()
{
    bool bStarted = false;
    Qt::HANDLE hThread = nullptr;
    const std::unique_ptr<QThread> pThread(QThread::create([&] {
        hThread = QThread::currentThreadId();
        bStarted = USBMonitor(&Listener());
        DAMonitor(&Listener());
        CFakeMac::Plug({STICK});
        CFakeMac::Unplug({STICK});
        CFakeMac::LoseDisk();
        CFakeMac::RunLoop();
    }));
    pThread->start();
    QVERIFY(pThread->wait());
    QVERIFY(bStarted);
    QCOMPARE(m_log.Take(), QStringList({STICK_CAME, WENT, WENT}));
    QCOMPARE(m_log.Thread(), hThread);
    QVERIFY(m_log.Thread() != QThread::currentThreadId());
    m_mapHeld = {{"iterator", 4}, {"port", 4}};
}

void tst_MacDiskListener::monitorsDoNothingWithoutAListener()
{
    QVERIFY(USBMonitor(nullptr));
    DAMonitor(nullptr);
    QCOMPARE(CFakeMac::Registrations().size(), 4);
}

QTEST_GUILESS_MAIN(tst_MacDiskListener)
#include "tst_MacDiskListener.moc"
