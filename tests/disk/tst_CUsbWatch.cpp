#include "disk/CDiskListener.h"
#include "disk/CFakeDevices.h"
#include "disk/platform/DiskMonitors.h"
#include "disk/platform/linux/CUsbWatch.h"

#include <QDir>
#include <QFile>
#include <QMutex>
#include <QScopeGuard>
#include <QTest>
#include <QThread>

/** Disks that are plugged in and pulled, as udev tells it, through the listener and the event loop. */
class tst_CUsbWatch : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void diskArrivesAndGoes_data();
    void diskArrivesAndGoes();
    void diskGoesWhenItsParentsAreGoneAlready();
    void oneEventForADiskWithPartitions();
    void batchOfThreeKeepsItsOrder();
    void deviceThatIsNoDiskSaysNothing();
    void diskPresentAtTheStartOnlyGoes();
    void diskOffAnyBusIsRememberedFromTheStart();
    void worksBesideADeviceManager();
    void monitorsServeAnotherThread();
    void monitorsIgnoreANullContext();

private:
    std::string AddUsbTarget();
    std::string PlugUsbDisk(const std::string& strName, const char* pBus = "usb");
    std::string PlugSataDisk(const std::string& strName, const char* pBus = "ata");
    void Pull(const std::string& strPath);
    void SendSentinel();

    CFakeDevices m_devices;
    std::string m_strController;
    std::string m_strPresent;
    std::string m_strPresentOdd;
    int m_nPort = 0;
};

namespace {

/** One record, and the thread that it came on. */
struct STSeen
{
    QByteArray baText;
    Qt::HANDLE hThread = nullptr;
};

} // namespace

static QMutex s_mutex;
static QVector<STSeen> s_listSeen;

static void Record(STDiskNotication* pRecord, void*)
{
    const QMutexLocker locker(&s_mutex);
    const QByteArray baText = QByteArray::number(pRecord->enType) + ' '
        + QByteArray::number(pRecord->nHasPath) + ' ' + pRecord->strDevicePath.toLatin1();
    s_listSeen.append({baText, QThread::currentThreadId()});
}

static QByteArrayList SeenOn(Qt::HANDLE hThread)
{
    const QMutexLocker locker(&s_mutex);
    QByteArrayList listText;
    for (const STSeen& seen : qAsConst(s_listSeen)) {
        if (seen.hThread == hThread) {
            listText.append(seen.baText);
        }
    }
    return listText;
}

static QByteArrayList Seen() { return SeenOn(QThread::currentThreadId()); }

static QByteArray Arrival(const std::string& strPath) { return "0 1 " + QByteArray::fromStdString(strPath); }

static const QByteArray REMOVAL = "1 0 USB";

/** A USB device with an interface and a SCSI target on it. Their own events are out of the way afterwards. */
std::string tst_CUsbWatch::AddUsbTarget()
{
    const std::string strNumber = std::to_string(++m_nPort);
    const std::string strDevice = m_devices.Add("usb", "2-" + strNumber, m_strController, "usb_device");
    const std::string strInterface
        = m_devices.Add("usb", "2-" + strNumber + ":1.0", strDevice, "usb_interface");
    const std::string strTarget = m_devices.Add("scsi", "target" + strNumber, strInterface, "scsi_device");
    QCoreApplication::processEvents();
    return strTarget;
}

std::string tst_CUsbWatch::PlugUsbDisk(const std::string& strName, const char* pBus)
{
    return m_devices.Add("block", strName, AddUsbTarget(), "disk", pBus);
}

std::string tst_CUsbWatch::PlugSataDisk(const std::string& strName, const char* pBus)
{
    const std::string strPort = m_devices.Add("ata_port", "ata_of_" + strName, "", "");
    const std::string strTarget = m_devices.Add("scsi", "target_of_" + strName, strPort, "scsi_device");
    QCoreApplication::processEvents();
    return m_devices.Add("block", strName, strTarget, "disk", pBus);
}

void tst_CUsbWatch::Pull(const std::string& strPath)
{
    m_devices.Announce(strPath, "remove");
    m_devices.Remove(strPath);
}

void tst_CUsbWatch::initTestCase()
{
    m_strController = m_devices.Add("usb", "usb2", "", "usb_device");
    m_strPresent = PlugUsbDisk("sdp");
    // A disk whose path does not show the bus: its parents alone tell.
    const std::string strDock = m_devices.Add("usb", "dock", "", "usb_device");
    m_strPresentOdd = m_devices.Add("block", "sdq", strDock, "disk", "ata");
    QVERIFY(CDiskListener::GetInstance().StartListener(&Record, nullptr));
}

void tst_CUsbWatch::init()
{
    const QMutexLocker locker(&s_mutex);
    s_listSeen.clear();
}

/** An event that is always reported: when it has come, all events before it have been looked at. */
void tst_CUsbWatch::SendSentinel()
{
    const std::string strDisk = PlugUsbDisk("sentinel" + std::to_string(m_nPort));
    QTRY_VERIFY(Seen().contains(Arrival(strDisk)));
}

void tst_CUsbWatch::diskArrivesAndGoes_data()
{
    QTest::addColumn<bool>("bUsb"); // one of its parents
    QTest::addColumn<QByteArray>("baBus"); // that it claims
    QTest::newRow("USB disk") << true << QByteArray("usb");
    QTest::newRow("USB disk that answers as ATA") << true << QByteArray("ata");
    QTest::newRow("SATA disk") << false << QByteArray("ata");
    QTest::newRow("SATA disk that claims USB") << false << QByteArray("usb");
}

void tst_CUsbWatch::diskArrivesAndGoes()
{
    QFETCH(bool, bUsb);
    QFETCH(QByteArray, baBus);
    const std::string strName = "sda" + std::to_string(m_nPort);
    const std::string strDisk
        = bUsb ? PlugUsbDisk(strName, baBus.constData()) : PlugSataDisk(strName, baBus.constData());
    SendSentinel();
    QCOMPARE(Seen().size(), bUsb ? 2 : 1);
    QCOMPARE(Seen().first() == Arrival(strDisk), bUsb);
    Pull(strDisk);
    SendSentinel();
    QCOMPARE(Seen().size(), bUsb ? 4 : 2);
    QCOMPARE(Seen().count(REMOVAL), bUsb ? 1 : 0);
}

void tst_CUsbWatch::diskGoesWhenItsParentsAreGoneAlready()
{
    const std::string strDisk = PlugUsbDisk("sdd");
    QTRY_COMPARE(Seen().size(), 1);
    m_devices.Announce(strDisk, "remove");
    m_devices.Remove(strDisk.substr(0, strDisk.find("/target")));
    QTRY_COMPARE(Seen(), (QByteArrayList{Arrival(strDisk), REMOVAL}));
}

void tst_CUsbWatch::oneEventForADiskWithPartitions()
{
    const std::string strDisk = PlugUsbDisk("sde");
    const std::string strFirst = m_devices.Add("block", "sde1", strDisk, "partition", "usb");
    const std::string strSecond = m_devices.Add("block", "sde2", strDisk, "partition", "usb");
    SendSentinel();
    QCOMPARE(Seen().size(), 2);
    QCOMPARE(Seen().first(), Arrival(strDisk));
    Pull(strSecond);
    Pull(strFirst);
    Pull(strDisk);
    SendSentinel();
    QCOMPARE(Seen().size(), 4);
    QCOMPARE(Seen()[2], REMOVAL);
}

void tst_CUsbWatch::batchOfThreeKeepsItsOrder()
{
    const std::string strFirstTarget = AddUsbTarget();
    const std::string strSecondTarget = AddUsbTarget();
    const std::string strFirst = m_devices.Add("block", "sdf", strFirstTarget, "disk", "usb");
    const std::string strSecond = m_devices.Add("block", "sdg", strSecondTarget, "disk", "ata");
    Pull(strSecond);
    QCOMPARE(Seen(), QByteArrayList());
    QTRY_COMPARE(Seen(), (QByteArrayList{Arrival(strFirst), Arrival(strSecond), REMOVAL}));
}

void tst_CUsbWatch::deviceThatIsNoDiskSaysNothing()
{
    const std::string strDevice = m_devices.Add("usb", "2-90", m_strController, "usb_device");
    SendSentinel();
    Pull(strDevice);
    SendSentinel();
    QCOMPARE(Seen().size(), 2);
    QVERIFY(!Seen().contains(REMOVAL));
}

void tst_CUsbWatch::diskPresentAtTheStartOnlyGoes()
{
    SendSentinel();
    QCOMPARE(Seen().size(), 1);
    Pull(m_strPresent);
    QTRY_COMPARE(Seen().size(), 2);
    QCOMPARE(Seen().last(), REMOVAL);
}

void tst_CUsbWatch::diskOffAnyBusIsRememberedFromTheStart()
{
    m_devices.Announce(m_strPresentOdd, "remove");
    m_devices.Remove(m_strPresentOdd.substr(0, m_strPresentOdd.find("/sdq")));
    QTRY_COMPARE(Seen(), QByteArrayList{REMOVAL});
}

/** The tests above run without one, where the sandbox shows none. */
void tst_CUsbWatch::worksBesideADeviceManager()
{
    QFile fileControl("/run/udev/control");
    const bool bOurs = !fileControl.exists();
    if (bOurs && (!QDir().mkpath("/run/udev") || !fileControl.open(QIODevice::WriteOnly))) {
        QSKIP("the sign of a device manager cannot be faked here");
    }
    QByteArrayList listSeen;
    CUsbWatch watch(CUsbWatch::SCOPE_USB_DISKS,
                    [&listSeen](const STDiskEvent& event) { listSeen.append(event.baPath); });
    QVERIFY(watch.Start());
    const std::string strDisk = PlugUsbDisk("sdm");
    Pull(strDisk);
    QTRY_COMPARE(listSeen, (QByteArrayList{QByteArray::fromStdString(strDisk), "USB"}));
    if (bOurs) {
        QVERIFY(fileControl.remove());
    }
}

/** Starts the thread, runs fnEntry on it and leaves it to its event loop; returns its handle. */
static Qt::HANDLE StartWith(QThread& thread, const std::function<void()>& fnEntry)
{
    QObject context;
    context.moveToThread(&thread);
    thread.start();
    Qt::HANDLE hThread = nullptr;
    const auto fnRun = [&fnEntry, &hThread] {
        fnEntry();
        hThread = QThread::currentThreadId();
    };
    QMetaObject::invokeMethod(&context, fnRun, Qt::BlockingQueuedConnection);
    return hThread;
}

void tst_CUsbWatch::monitorsServeAnotherThread()
{
    QThread threadUsb;
    QThread threadAll;
    const auto endThreads = qScopeGuard([&threadUsb, &threadAll] {
        for (QThread* pThread : {&threadUsb, &threadAll}) {
            pThread->quit();
            pThread->wait();
        }
    });
    CDiskListener& listener = CDiskListener::GetInstance();
    bool bAnswer = false;
    const Qt::HANDLE hUsb = StartWith(threadUsb, [&listener, &bAnswer] { bAnswer = USBMonitor(&listener); });
    const Qt::HANDLE hAll = StartWith(threadAll, [&listener] { DAMonitor(&listener); });
    QVERIFY(bAnswer);

    const std::string strSata = PlugSataDisk("sdx");
    const std::string strDisk = PlugUsbDisk("sdy");
    Pull(strSata);
    Pull(strDisk);
    QTRY_COMPARE(Seen(), (QByteArrayList{Arrival(strDisk), REMOVAL}));
    QTRY_COMPARE(SeenOn(hUsb), (QByteArrayList{Arrival(strDisk), REMOVAL}));
    QTRY_COMPARE(SeenOn(hAll), (QByteArrayList{REMOVAL, REMOVAL}));
}

void tst_CUsbWatch::monitorsIgnoreANullContext()
{
    QVERIFY(USBMonitor(nullptr));
    DAMonitor(nullptr);
    PlugUsbDisk("sdz");
    QTRY_COMPARE(Seen().size(), 1);
}

int main(int argc, char** argv)
{
    if (TARNWICK_MAY_PRELOAD) {
        CFakeDevices::RestartPreloaded(argv);
    }
    if (!TARNWICK_MAY_PRELOAD || !CFakeDevices::IsPreloaded()) {
        qWarning("skipped: devices cannot be faked in this build");
        return 77;
    }
    QCoreApplication app(argc, argv);
    tst_CUsbWatch test;
    return QTest::qExec(&test, argc, argv);
}
#include "tst_CUsbWatch.moc"
