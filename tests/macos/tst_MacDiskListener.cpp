#include "disk/CDiskListener.h"
#include "disk/platform/DiskMonitors.h"
#include "disk/platform/macos/DeviceWatch.h"
#include "disk/platform/macos/DiskSession.h"
#include "macos/CEventLog.h"
#include "macos/CFakeMac.h"

#include <QTest>

#include <memory>

Q_DECLARE_METATYPE(STFakeDevice)

static const STFakeDevice STICK{"USB DISK 3.0 Media", "IOUSB:/Root/AppleUSBXHCI@14/Stick@1", "USB"};
static const STFakeDevice INTERNAL{"APPLE SSD Media", "", "SATA"};

/** macOS's sources of disk events, through the listener. The functions build on each other in this order. */
class tst_MacDiskListener : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanup();
    void WhatIsPresentAtTheStartSaysNothing();
    void WatchesStorageDevicesThatComeAndGo();
    void ASecondStartInstallsNothing();
    void Arrival_data();
    void Arrival();
    void ABatchOfThree();
    void ADeviceWithoutAPathAfterOneWithAPath();
    void OneBatchAfterTheOther();
    void AnArrivalWithinAnArrival();
    void Removal_data();
    void Removal();
    void EveryDeviceIsWrittenToTheSystemLog();
    void TheSessionSeesAnyDiskGo();
    void OnlyDevicesAreHeardWhileAMenuIsOpen();
    void MountAndUnmount_data();
    void MountAndUnmount();
    void NoticesAreWrittenToTheSystemLog();
    void ANoticeWithoutAPathSaysNothing();
    void AnObserverWithoutAListenerOnlyLogs();
    void AppearedDisksAreReportedByName();
    void HandlersDoNothingWithoutAListener();
    void EventsLeaveNoObjects();
    void MonitorsWatchOnAThreadOfTheirOwn();
    void MonitorsDoNothingWithoutAListener();

private:
    CEventLog m_log;
    QMap<QString, int> m_mapHeld{{QStringLiteral("iterator"), 2}, {QStringLiteral("port"), 2}};
};

static CDiskListener& Listener() { return CDiskListener::GetInstance(); }

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

void tst_MacDiskListener::WhatIsPresentAtTheStartSaysNothing()
{
    CFakeMac::RunLoop();
    QCOMPARE(m_log.Take(), QStringList());
    QCOMPARE(CFakeMac::TakeLog(), QStringList());
}

void tst_MacDiskListener::WatchesStorageDevicesThatComeAndGo()
{
    const QStringList listExpected{QStringLiteral("IOServiceFirstMatch IOBlockStorageDevice"),
                                   QStringLiteral("IOServiceTerminate IOBlockStorageDevice")};
    QCOMPARE(CFakeMac::Registrations(), listExpected);
}

void tst_MacDiskListener::ASecondStartInstallsNothing()
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

static void BusRows()
{
    QTest::addColumn<STFakeDevice>("device");
    QTest::addColumn<bool>("bReported");
    const auto Add = [](const char* pRow, const char* pBus, ENFakeProperties enProperties, bool bReported) {
        QTest::newRow(pRow) << STFakeDevice{"Media", "IOUSB:/Root/Hub@14/Stick@2", pBus, enProperties}
                            << bReported;
    };
    Add("USB", "USB", PROPERTIES_COMPLETE, true);
    Add("usb in small letters", "usb", PROPERTIES_COMPLETE, true);
    Add("mixed case", "uSb", PROPERTIES_COMPLETE, true);
    Add("SATA", "SATA", PROPERTIES_COMPLETE, false);
    Add("PCI", "PCI-Express", PROPERTIES_COMPLETE, false);
    Add("Thunderbolt", "Thunderbolt", PROPERTIES_COMPLETE, false);
    Add("starts like USB", "USB3", PROPERTIES_COMPLETE, false);
    Add("USB cut short", "US", PROPERTIES_COMPLETE, false);
    Add("empty", "", PROPERTIES_COMPLETE, false);
    Add("no properties", "USB", PROPERTIES_REFUSED, false);
    Add("no protocol", "USB", PROPERTIES_WITHOUT_PROTOCOL, false);
    Add("protocol is no dictionary", "USB", PROPERTIES_PROTOCOL_IS_TEXT, false);
    Add("no interconnect", "USB", PROPERTIES_WITHOUT_BUS, false);
    Add("interconnect is no text", "USB", PROPERTIES_BUS_IS_NUMBER, false);
}

void tst_MacDiskListener::Arrival_data() { BusRows(); }

void tst_MacDiskListener::Arrival()
{
    QFETCH(STFakeDevice, device);
    QFETCH(bool, bReported);
    CFakeMac::Plug({device});
    CFakeMac::RunLoop();
    QCOMPARE(m_log.Take(),
             bReported ? QStringList{QStringLiteral("0 IOUSB:/Root/Hub@14/Stick@2 1")} : QStringList());
    QCOMPARE(CFakeMac::TakeLog(), QStringList{QStringLiteral("Device detached:Media")});
}

void tst_MacDiskListener::ABatchOfThree()
{
    CFakeMac::Plug({{"A", "IOUSB:/A", "USB"}, {"B", "IOUSB:/B", "SATA"}, {"C", "IOUSB:/C", "usb"}});
    CFakeMac::RunLoop();
    const QStringList listExpected{QStringLiteral("0 IOUSB:/A 1"), QStringLiteral("0 IOUSB:/C 1")};
    QCOMPARE(m_log.Take(), listExpected);
    const QStringList listLine{QStringLiteral("Device detached:A"), QStringLiteral("Device detached:B"),
                               QStringLiteral("Device detached:C")};
    QCOMPARE(CFakeMac::TakeLog(), listLine);
}

void tst_MacDiskListener::ADeviceWithoutAPathAfterOneWithAPath()
{
    const QByteArray baLong = "IOUSB:/" + QByteArray(511 - 7, 'x');
    CFakeMac::Plug(
        {{"A", baLong, "USB"}, {QByteArray(), "", "USB"}, {QByteArray(127, 'n'), "IOUSB:/C", "USB"}});
    CFakeMac::RunLoop();
    const QStringList listExpected{QStringLiteral("0 %1 1").arg(QString::fromLatin1(baLong)),
                                   QStringLiteral("0  1"), QStringLiteral("0 IOUSB:/C 1")};
    QCOMPARE(m_log.Take(), listExpected);
    const QStringList listLine{QStringLiteral("Device detached:A"), QStringLiteral("Device detached:"),
                               QStringLiteral("Device detached:") + QString(127, QLatin1Char('n'))};
    QCOMPARE(CFakeMac::TakeLog(), listLine);
}

void tst_MacDiskListener::OneBatchAfterTheOther()
{
    for (int i = 0; i < 3; ++i) {
        CFakeMac::Plug({STICK});
        CFakeMac::RunLoop();
        QCOMPARE(m_log.Take().size(), 1);
        CFakeMac::Unplug({STICK});
        CFakeMac::RunLoop();
        QCOMPARE(m_log.Take(), QStringList{QStringLiteral("1 USB 0")});
    }
}

/** The receiver may open a dialog, whose event loop runs the sources again. */
void tst_MacDiskListener::AnArrivalWithinAnArrival()
{
    m_log.OnNext([] {
        CFakeMac::Plug({{"C", "IOUSB:/C", "USB"}});
        CFakeMac::Unplug({STICK});
        CFakeMac::RunLoop();
    });
    CFakeMac::Plug({{"A", "IOUSB:/A", "USB"}, {"B", "IOUSB:/B", "USB"}});
    CFakeMac::RunLoop();
    const QStringList listExpected{QStringLiteral("0 IOUSB:/A 1"), QStringLiteral("1 USB 0"),
                                   QStringLiteral("0 IOUSB:/B 1"), QStringLiteral("0 IOUSB:/C 1")};
    QCOMPARE(m_log.Take(), listExpected);
}

void tst_MacDiskListener::Removal_data() { BusRows(); }

void tst_MacDiskListener::Removal()
{
    QFETCH(STFakeDevice, device);
    QFETCH(bool, bReported);
    CFakeMac::Unplug({device});
    CFakeMac::RunLoop();
    QCOMPARE(m_log.Take(), bReported ? QStringList{QStringLiteral("1 USB 0")} : QStringList());
    QCOMPARE(CFakeMac::TakeLog(), QStringList{QStringLiteral("Device detached:Media")});
}

void tst_MacDiskListener::EveryDeviceIsWrittenToTheSystemLog()
{
    CFakeMac::Plug({INTERNAL});
    CFakeMac::Unplug({STICK});
    CFakeMac::RunLoop();
    const QStringList listLine{QStringLiteral("Device detached:APPLE SSD Media"),
                               QStringLiteral("Device detached:USB DISK 3.0 Media")};
    QCOMPARE(CFakeMac::TakeLog(), listLine);
}

void tst_MacDiskListener::TheSessionSeesAnyDiskGo()
{
    CFakeMac::LoseDisk();
    CFakeMac::LoseDisk();
    CFakeMac::RunLoop();
    const QStringList listExpected{QStringLiteral("1 USB 0"), QStringLiteral("1 USB 0")};
    QCOMPARE(m_log.Take(), listExpected);
    QCOMPARE(m_log.Thread(), QThread::currentThreadId());
}

void tst_MacDiskListener::OnlyDevicesAreHeardWhileAMenuIsOpen()
{
    CFakeMac::LoseDisk();
    CFakeMac::Plug({STICK});
    CFakeMac::RunLoop(MODE_TRACKING);
    QCOMPARE(m_log.Take(), QStringList{QStringLiteral("0 IOUSB:/Root/AppleUSBXHCI@14/Stick@1 1")});
    CFakeMac::RunLoop(MODE_DEFAULT);
    QCOMPARE(m_log.Take(), QStringList{QStringLiteral("1 USB 0")});
}

void tst_MacDiskListener::MountAndUnmount_data()
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

void tst_MacDiskListener::MountAndUnmount()
{
    QFETCH(QByteArray, baPath);
    CFakeMac::Mount(baPath.constData());
    CFakeMac::Unmount(baPath.constData());
    // The bytes of the path, each as one character.
    const QStringList listExpected{QStringLiteral("0 %1 1").arg(QString::fromLatin1(baPath)),
                                   QStringLiteral("1 %1 1").arg(QString::fromLatin1(baPath))};
    QCOMPARE(m_log.Take(), listExpected);
}

void tst_MacDiskListener::NoticesAreWrittenToTheSystemLog()
{
    CFakeMac::Mount("/Volumes/STICK");
    CFakeMac::Unmount(nullptr);
    const QStringList listLine = CFakeMac::TakeLog();
    QCOMPARE(listLine.size(), 2);
    QVERIFY2(listLine[0].startsWith(QLatin1String("volumeDidMount:")), qPrintable(listLine[0]));
    QVERIFY2(listLine[0].contains(QLatin1String("NSWorkspaceDidMountNotification")), qPrintable(listLine[0]));
    QVERIFY2(listLine[1].startsWith(QLatin1String("volumeDidUnmount:")), qPrintable(listLine[1]));
    QVERIFY2(listLine[1].contains(QLatin1String("NSWorkspaceDidUnmountNotification")),
             qPrintable(listLine[1]));
}

void tst_MacDiskListener::ANoticeWithoutAPathSaysNothing()
{
    CFakeMac::Mount(nullptr);
    CFakeMac::Unmount(nullptr);
    QCOMPARE(m_log.Take(), QStringList());
}

void tst_MacDiskListener::AnObserverWithoutAListenerOnlyLogs()
{
    CFakeMac::NotifyLonelyObserver();
    QCOMPARE(m_log.Take(), QStringList());
    QCOMPARE(CFakeMac::TakeLog().size(), 2);
}

void tst_MacDiskListener::AppearedDisksAreReportedByName()
{
    DiskAppearedCallback(CFakeMac::Disk("disk2s1"), &Listener());
    DiskAppearedCallback(CFakeMac::Disk(nullptr), &Listener());
    DiskAppearedCallback(CFakeMac::Disk("USB"), &Listener());
    const QStringList listExpected{QStringLiteral("0 disk2s1 1"), QStringLiteral("0 USB 1")};
    QCOMPARE(m_log.Take(), listExpected);
}

void tst_MacDiskListener::HandlersDoNothingWithoutAListener()
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

void tst_MacDiskListener::EventsLeaveNoObjects()
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

void tst_MacDiskListener::MonitorsWatchOnAThreadOfTheirOwn()
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
    const QStringList listExpected{QStringLiteral("0 IOUSB:/Root/AppleUSBXHCI@14/Stick@1 1"),
                                   QStringLiteral("1 USB 0"), QStringLiteral("1 USB 0")};
    QCOMPARE(m_log.Take(), listExpected);
    QCOMPARE(m_log.Thread(), hThread);
    QVERIFY(m_log.Thread() != QThread::currentThreadId());
    m_mapHeld = {{QStringLiteral("iterator"), 4}, {QStringLiteral("port"), 4}};
}

void tst_MacDiskListener::MonitorsDoNothingWithoutAListener()
{
    QVERIFY(USBMonitor(nullptr));
    DAMonitor(nullptr);
    QCOMPARE(CFakeMac::Registrations().size(), 4);
}

QTEST_GUILESS_MAIN(tst_MacDiskListener)
#include "tst_MacDiskListener.moc"
