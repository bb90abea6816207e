#include "log/CClock.h"

#include <QtTest>

class tst_CClock : public QObject
{
    Q_OBJECT

private slots:
    void cleanup() { CClock::SetSource({}); }

    void withoutSourceItIsTheSystemsTime()
    {
        const qint64 nBefore = QDateTime::currentMSecsSinceEpoch();
        const qint64 nNow = CClock::NowMs();
        QVERIFY(nNow >= nBefore);
        QVERIFY(nNow <= QDateTime::currentMSecsSinceEpoch());
    }

    void sourceMovesBothReadings()
    {
        const QDateTime moved(QDate(2026, 11, 16), QTime(12, 30, 45, 678));
        CClock::SetSource([moved] { return moved.toMSecsSinceEpoch(); });
        QCOMPARE(CClock::NowMs(), moved.toMSecsSinceEpoch());
        QCOMPARE(CClock::Now(), moved);
        QCOMPARE(CClock::Now().timeSpec(), Qt::LocalTime);
    }

    void steadyTimeNeverGoesBack()
    {
        const qint64 nFirst = CClock::SteadyMs();
        QTRY_VERIFY(CClock::SteadyMs() > nFirst);
        CClock::SetSource([] { return qint64(1000); });
        QCOMPARE(CClock::SteadyMs(), 1000);
        CClock::SetSources([] { return qint64(1000); }, [] { return qint64(2000); });
        QCOMPARE(CClock::NowMs(), 1000);
        QCOMPARE(CClock::SteadyMs(), 2000);
    }

    void emptySourceBringsTheSystemsTimeBack()
    {
        CClock::SetSource([] { return qint64(1000); });
        CClock::SetSource({});
        QVERIFY(CClock::NowMs() > 1000);
    }
};

QTEST_GUILESS_MAIN(tst_CClock)
#include "tst_CClock.moc"
