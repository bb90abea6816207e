#include "disk/CDiskListener.h"
#include "macos/CEventLog.h"
#include "macos/CFakeMac.h"
#include "support/CLogCapture.h"
#include "support/LogFile.h"

#include <QTest>

/**
 * The system refuses one watch: the others stay. TARNWICK_REFUSED says which,
 * "arrivals", "removals" or "session".
 */
class tst_MacRefusedWatch : public QObject
{
    Q_OBJECT

private slots:
    void theOtherSourcesStay();
};

void tst_MacRefusedWatch::theOtherSourcesStay()
{
    const QByteArray baRefused = qgetenv("TARNWICK_REFUSED");
    const bool bArrivals = baRefused == "arrivals";
    const bool bRemovals = baRefused == "removals";
    const bool bSession = baRefused == "session";
    QVERIFY(bArrivals || bRemovals || bSession);
    if (bSession) {
        CFakeMac::RefuseSessions();
    } else {
        CFakeMac::Refuse(bArrivals ? "IOServiceFirstMatch" : "IOServiceTerminate");
    }
    UseLogFile();
    CEventLog log;
    {
        const CLogCapture capture;
        QCOMPARE(CDiskListener::GetInstance().StartListener(&CEventLog::Receive, &log), true);
        QCOMPARE(capture.Lines().size(), 1);
    }
    QTRY_COMPARE(LogLines().size(), 1);

    const STFakeDevice stick{"Media", "IOUSB:/A", "USB"};
    CFakeMac::Plug({stick});
    CFakeMac::RunLoop();
    QCOMPARE(log.Take(), bArrivals ? QStringList() : QStringList{"0 IOUSB:/A 1"});
    CFakeMac::Unplug({stick});
    CFakeMac::RunLoop();
    QCOMPARE(log.Take(), bRemovals ? QStringList() : QStringList{"1 USB 0"});
    CFakeMac::LoseDisk();
    CFakeMac::RunLoop();
    QCOMPARE(log.Take(), bSession ? QStringList() : QStringList{"1 USB 0"});
    CFakeMac::Mount("/Volumes/STICK");
    QCOMPARE(log.Take(), QStringList{"0 /Volumes/STICK 1"});

    QCOMPARE(CFakeMac::Problems(), QStringList());
    QCOMPARE(CFakeMac::Held(), (QMap<QString, int>{{"iterator", bSession ? 2 : 1}, {"port", 2}}));
}

QTEST_GUILESS_MAIN(tst_MacRefusedWatch)
#include "tst_MacRefusedWatch.moc"
