#include "copy/CCopyClock.h"
#include "log/CClock.h"
#include "support/CMovedClock.h"

#include <QtTest>

#include <limits>

static const qint64 LARGEST = std::numeric_limits<qint64>::max();

class tst_CCopyClock : public QObject
{
    Q_OBJECT

private slots:
    void remainingSeconds_data();
    void remainingSeconds();
    void reportIsDueAtMostOnceASecond_data();
    void reportIsDueAtMostOnceASecond();
    void pausesAreNoUsedTime();
    void wallClockThatIsSetChangesNothing();
};

void tst_CCopyClock::remainingSeconds_data()
{
    QTest::addColumn<qint64>("nTotal");
    QTest::addColumn<qint64>("nCopied");
    QTest::addColumn<qint64>("nUsedMs");
    QTest::addColumn<qint64>("nSeconds");
    const auto fnRow
        = [](const char* pszRow, qint64 nTotal, qint64 nCopied, qint64 nUsedMs, qint64 nSeconds) {
              QTest::newRow(pszRow) << nTotal << nCopied << nUsedMs << nSeconds;
          };
    fnRow("nine times what it took", 10000, 1000, 5000, 45);
    fnRow("division truncates", 10, 3, 1000, 2);
    fnRow("milliseconds truncate", 2000, 1000, 1999, 1);
    fnRow("less than a second left", 1001, 1000, 5000, 0);
    fnRow("nothing copied yet", 1000, 0, 5000, 0);
    fnRow("all copied", 1000, 1000, 5000, 0);
    fnRow("more than the total", 500, 1000, 5000, 0);
    fnRow("no total", 0, 1000, 5000, 0);
    fnRow("clock set back", 1000, 5, -3600000, 0);
    fnRow("product beyond 64 bits", LARGEST, 1000000, 1000000, 9223372036853775);
    fnRow("result beyond 64 bits", LARGEST, 1, 10000, LARGEST);
}

void tst_CCopyClock::remainingSeconds()
{
    QFETCH(qint64, nTotal);
    QFETCH(qint64, nCopied);
    QFETCH(qint64, nUsedMs);
    QTEST(CCopyClock::RemainingSeconds(nTotal, nCopied, nUsedMs), "nSeconds");
}

void tst_CCopyClock::reportIsDueAtMostOnceASecond_data()
{
    QTest::addColumn<int>("nStepMs");
    QTest::addColumn<int>("nReports"); // in six steps
    QTest::newRow("never") << 0 << 0;
    QTest::newRow("999 ms are too few") << 999 << 3;
    QTest::newRow("1000 ms are enough") << 1000 << 6;
    QTest::newRow("every second step") << 500 << 3;
    QTest::newRow("every third step") << 334 << 2;
}

void tst_CCopyClock::reportIsDueAtMostOnceASecond()
{
    QFETCH(int, nStepMs);
    CMovedClock time;
    CCopyClock clock;
    clock.Start();
    int nReports = 0;
    for (int nStep = 0; nStep < 6; ++nStep) {
        time.Move(nStepMs);
        nReports += clock.IsReportDue() ? 1 : 0;
    }
    QTEST(nReports, "nReports");
}

void tst_CCopyClock::pausesAreNoUsedTime()
{
    CMovedClock time;
    CCopyClock clock;
    clock.Start();
    for (int nPause = 0; nPause < 2; ++nPause) {
        time.Move(300);
        clock.BeginPause();
        time.Move(10000);
        clock.EndPause();
    }
    time.Move(1);
    QCOMPARE(clock.UsedMs(), 601);
    clock.Start(); // forgets them
    QVERIFY(!clock.IsReportDue());
    time.Move(7);
    QCOMPARE(clock.UsedMs(), 7);
}

void tst_CCopyClock::wallClockThatIsSetChangesNothing()
{
    qint64 nWallMs = 1795000000000;
    qint64 nSteadyMs = 5000;
    CClock::SetSources([&] { return nWallMs; }, [&] { return nSteadyMs; });
    CCopyClock clock;
    clock.Start();
    nSteadyMs += 1000;
    nWallMs -= 3600000; // an hour back, as a time server may set it
    const bool bDue = clock.IsReportDue();
    clock.BeginPause();
    nWallMs += 7200000;
    clock.EndPause();
    const qint64 nUsedMs = clock.UsedMs();
    CClock::SetSource({});
    QVERIFY(bDue);
    QCOMPARE(nUsedMs, 1000);
}

QTEST_GUILESS_MAIN(tst_CCopyClock)
#include "tst_CCopyClock.moc"
