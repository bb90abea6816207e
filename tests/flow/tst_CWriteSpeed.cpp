#include "flow/CWriteSpeed.h"

#include <QTest>

static const qint64 MIB = 1024 * 1024;

/** What is known of a disk's speed from what it was seen to write. */
class tst_CWriteSpeed : public QObject
{
    Q_OBJECT

private slots:
    void tooLittleIsNothing();
    void idleTimeDoesNotCount();
    void whatWasLongAgoCountsLess();
};

void tst_CWriteSpeed::tooLittleIsNothing()
{
    CWriteSpeed speed;
    QVERIFY(!speed.BytesIn(1000));
    speed.Begins(5000);
    speed.Done(MIB, 5099);
    QVERIFY(!speed.BytesIn(1000));
    speed.Done(MIB, 5200);
    QCOMPARE(speed.BytesIn(1000).value_or(0), 10 * MIB);
    QCOMPARE(speed.BytesIn(2000).value_or(0), 20 * MIB);
}

void tst_CWriteSpeed::idleTimeDoesNotCount()
{
    CWriteSpeed speed;
    for (const qint64 nBeginMs : {1000, 61000, 3600000}) {
        speed.Begins(nBeginMs);
        speed.Done(2 * MIB, nBeginMs + 100);
        speed.Done(2 * MIB, nBeginMs + 200);
    }
    QCOMPARE(speed.BytesIn(1000).value_or(0), 20 * MIB);
}

void tst_CWriteSpeed::whatWasLongAgoCountsLess()
{
    CWriteSpeed speed;
    qint64 nNowMs = 0;
    const auto fnWrite = [&](qint64 nBytesASecond, int nSeconds) {
        for (int nStep = 0; nStep < nSeconds * 10; ++nStep) {
            nNowMs += 100;
            speed.Done(nBytesASecond / 10, nNowMs);
        }
    };
    speed.Begins(nNowMs);
    fnWrite(40 * MIB, 60);
    fnWrite(4 * MIB, 3);
    const qint64 nSoon = speed.BytesIn(1000).value_or(0);
    QVERIFY2(nSoon > 8 * MIB && nSoon < 24 * MIB, qPrintable(QString::number(nSoon)));
    fnWrite(4 * MIB, 12);
    const qint64 nLater = speed.BytesIn(1000).value_or(0);
    QVERIFY2(nLater < 5 * MIB, qPrintable(QString::number(nLater)));
}

QTEST_GUILESS_MAIN(tst_CWriteSpeed)
#include "tst_CWriteSpeed.moc"
