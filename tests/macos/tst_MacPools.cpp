#include "disk/CDiskListener.h"
#include "disk/platform/DiskMonitors.h"
#include "macos/CEventLog.h"
#include "macos/CFakeMac.h"

#include <QTest>

#include <functional>
#include <thread>

/** What the frameworks leave to a pool is freed at once, also where nobody around has one. */
class tst_MacPools : public QObject
{
    Q_OBJECT

private slots:
    void cleanup();
    void start();
    void usbMonitor();
    void diskMonitor();
    void batches();

private:
    CEventLog m_log;
};

static CDiskListener& Listener() { return CDiskListener::GetInstance(); }

/** On a thread of its own, which has no pool and is over afterwards. */
static int LeftBy(const std::function<void()>& fnDo)
{
    int nLeft = -1;
    std::thread([&] {
        fnDo();
        nLeft = CFakeMac::LeftToPools();
    }).join();
    return nLeft;
}

void tst_MacPools::cleanup()
{
    QCOMPARE(CFakeMac::Problems(), QStringList());
    // The platform's log has a line for each object that finds no pool.
    const QStringList listLine = CFakeMac::TakeLog().filter("pool");
    QVERIFY2(listLine.isEmpty(), qPrintable(listLine.value(0)));
}

void tst_MacPools::start()
{
    QVERIFY(Listener().StartListener(&CEventLog::Receive, &m_log));
    QCOMPARE(CFakeMac::LeftToPools(), 0);
}

void tst_MacPools::usbMonitor()
{
    QCOMPARE(LeftBy([] { USBMonitor(&Listener()); }), 0);
}

void tst_MacPools::diskMonitor()
{
    QCOMPARE(LeftBy([] { DAMonitor(&Listener()); }), 0);
}

/** Each device of a batch has a pool of its own: a batch may be long. */
void tst_MacPools::batches()
{
    const STFakeDevice stick{"Media", "IOUSB:/A", "USB"};
    for (int i = 0; i < 2; ++i) {
        CFakeMac::Plug({stick, stick, stick});
        CFakeMac::RunLoop();
        QCOMPARE(m_log.Take().size(), 3);
        CFakeMac::Unplug({stick, stick, stick});
        CFakeMac::RunLoop();
        QCOMPARE(m_log.Take().size(), 3);
        QCOMPARE(CFakeMac::LeftToPools(), 0);
    }
}

QTEST_GUILESS_MAIN(tst_MacPools)
#include "tst_MacPools.moc"
