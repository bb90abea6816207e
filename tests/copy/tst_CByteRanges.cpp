#include "copy/CByteRanges.h"

#include <QtTest>

class tst_CByteRanges : public QObject
{
    Q_OBJECT

private slots:
    void parts_data();
    void parts();
    void noMoreThanAskedForAreNamed();
};

using Ranges = QVector<QPair<qint64, qint64>>;
Q_DECLARE_METATYPE(Ranges)

void tst_CByteRanges::parts_data()
{
    QTest::addColumn<Ranges>("listRange"); // added one after another
    QTest::addColumn<QString>("strText");
    QTest::newRow("none") << Ranges{} << "";
    QTest::newRow("no bytes") << Ranges{{5, 5}, {9, 4}} << "";
    QTest::newRow("one byte") << Ranges{{7, 8}} << "7-7";
    QTest::newRow("apart, not in order") << Ranges{{20, 30}, {0, 10}} << "0-9, 20-29";
    QTest::newRow("touches what comes before") << Ranges{{0, 10}, {10, 20}} << "0-19";
    QTest::newRow("touches what comes behind") << Ranges{{10, 20}, {0, 10}} << "0-19";
    QTest::newRow("fills a gap") << Ranges{{0, 10}, {20, 30}, {10, 20}} << "0-29";
    QTest::newRow("reaches over several") << Ranges{{5, 10}, {20, 30}, {40, 50}, {8, 45}} << "5-49";
    QTest::newRow("lies within one") << Ranges{{0, 100}, {20, 30}} << "0-99";
    QTest::newRow("the same again") << Ranges{{3, 4}, {3, 4}} << "3-3";
}

void tst_CByteRanges::parts()
{
    QFETCH(Ranges, listRange);
    CByteRanges ranges;
    CByteRanges copied;
    for (const auto& range : qAsConst(listRange)) {
        ranges.Add({range.first, range.second});
    }
    QTEST(ranges.Text(10), "strText");
    QCOMPARE(ranges.IsEmpty(), ranges.Text(10).isEmpty());
    copied.Add(ranges);
    QCOMPARE(copied.Text(10), ranges.Text(10));
}

void tst_CByteRanges::noMoreThanAskedForAreNamed()
{
    CByteRanges ranges;
    for (qint64 nFrom = 0; nFrom < 40; nFrom += 10) {
        ranges.Add({nFrom, nFrom + 5});
    }
    QCOMPARE(ranges.Text(4), QString("0-4, 10-14, 20-24, 30-34"));
    QCOMPARE(ranges.Text(3), QString("0-4, 10-14, 20-24, …"));
}

QTEST_GUILESS_MAIN(tst_CByteRanges)
#include "tst_CByteRanges.moc"
