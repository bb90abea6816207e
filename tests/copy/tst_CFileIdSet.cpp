#include "copy/CFileIdSet.h"

#include <QtTest>

#include <limits>
#include <random>
#include <set>

class tst_CFileIdSet : public QObject
{
    Q_OBJECT

private slots:
    void tellsDevicesAndNumbersApart();
    void numbersAtTheEnds();
    void sameAsTheStandardsOnManyNumbers_data();
    void sameAsTheStandardsOnManyNumbers();
};

void tst_CFileIdSet::tellsDevicesAndNumbersApart()
{
    CFileIdSet set;
    QVERIFY(!set.Contains({1, 2}));
    QVERIFY(set.Insert({1, 2}));
    QVERIFY(!set.Insert({1, 2}));
    QVERIFY(set.Contains({1, 2}));
    QVERIFY(!set.Contains({2, 1}));
    QVERIFY(!set.Contains({2, 2}));
    QVERIFY(set.Insert({2, 2}));
}

void tst_CFileIdSet::numbersAtTheEnds()
{
    CFileIdSet set;
    for (const quint64 nInode : {quint64(0), quint64(1), std::numeric_limits<quint64>::max()}) {
        QVERIFY(!set.Contains({7, nInode}));
        QVERIFY(set.Insert({7, nInode}));
        QVERIFY(!set.Insert({7, nInode}));
        QVERIFY(set.Contains({7, nInode}));
        QVERIFY(!set.Contains({8, nInode}));
    }
}

void tst_CFileIdSet::sameAsTheStandardsOnManyNumbers_data()
{
    QTest::addColumn<quint64>("nStep");
    QTest::newRow("one after the other") << quint64(1);
    QTest::newRow("in steps of a power of two") << (quint64(1) << 32U);
    QTest::newRow("anyhow") << quint64(0);
}

void tst_CFileIdSet::sameAsTheStandardsOnManyNumbers()
{
    QFETCH(quint64, nStep);
    std::mt19937_64 random(4711);
    std::set<quint64> setExpected;
    CFileIdSet set;
    for (quint64 nEach = 0; nEach < 20000; ++nEach) {
        const quint64 nInode = nStep == 0 ? random() % 10000 : nEach * nStep;
        QCOMPARE(set.Insert({3, nInode}), setExpected.insert(nInode).second);
    }
    for (quint64 nEach = 0; nEach < 20000; ++nEach) {
        QCOMPARE(set.Contains({3, nEach}), setExpected.count(nEach) == 1);
    }
}

QTEST_GUILESS_MAIN(tst_CFileIdSet)
#include "tst_CFileIdSet.moc"
