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
    void TheOtherSourcesStay();
};

static QMap<QString, int> Watches(int nCount)
{
    return {{QStringLiteral("iterator"), nCount}, {QStringLiteral("port"), 2}};
}

void tst_MacRefusedWatch::TheOtherSourcesStay()
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
    QCOMPARE(log.Take(), bArrivals ? QStringList() : QStringList{QStringLiteral("0 IOUSB:/A 1")});
    CFakeMac::Unplug({stick});
    CFakeMac::RunLoop();
    QCOMPARE(log.Take(), bRemovals ? QStringList() : QStringList{QStringLiteral("1 USB 0")});
    CFakeMac::LoseDisk();
    CFakeMac::RunLoop();
    QCOMPARE(log.Take(), bSession ? QStringList() : QStringList{QStringLiteral("1 USB 0")});
    CFakeMac::Mount("/Volumes/STICK");
    QCOMPARE(log.Take(), QStringList{QStringLiteral("0 /Volumes/STICK 1")});

    QCOMPARE(CFakeMac::Problems(), QStringList());
    QCOMPARE(CFakeMac::Held(), Watches(bSession ? 2 : 1));
}

QTEST_GUILESS_MAIN(tst_MacRefusedWatch)
#include "tst_MacRefusedWatch.moc"
