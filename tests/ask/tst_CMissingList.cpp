#include "ask/CMissingList.h"

#include <QTest>

class tst_CMissingList : public QObject
{
    Q_OBJECT

private slots:
    void words_data();
    void words();
    void valuesAreTakenAsTheyAre();
    void poorLineCounts_data();
    void poorLineCounts();
};

void tst_CMissingList::words_data()
{
    QTest::addColumn<QByteArray>("baWord");
    QTest::addColumn<int>("nWhy");
    const auto row
        = [](const char* pWord, ENMissing enWhy) { QTest::newRow(pWord) << QByteArray(pWord) << int(enWhy); };
    row("locked", ENMissing::LOCKED);
    row("damaged", ENMissing::DAMAGED);
    row("unknown", ENMissing::UNKNOWN);
    row("silent", ENMissing::SILENT);
    row("apart", ENMissing::APART);
    row("lost", ENMissing::LOST);
    row("Damaged", ENMissing::UNKNOWN);
}

void tst_CMissingList::words()
{
    QFETCH(QByteArray, baWord);
    const auto listMissing = CMissingList::Parse(baWord + "\ta\t1\tb\n");
    QCOMPARE(listMissing.size(), 1);
    QTEST(int(listMissing.first().enWhy), "nWhy");
}

void tst_CMissingList::valuesAreTakenAsTheyAre()
{
    const auto listMissing
        = CMissingList::Parse("damaged\t 写真 <b> \t500107862016\tBig Disk\n\nlocked\tb\t0\t");
    QCOMPARE(listMissing.size(), 2);
    QCOMPARE(listMissing.at(0).strName, QString(" 写真 <b> "));
    QCOMPARE(listMissing.at(0).nSize, qint64(500107862016));
    QCOMPARE(listMissing.at(0).strDisk, QString("Big Disk"));
    QCOMPARE(listMissing.at(1).strName, QString("b"));
    QCOMPARE(listMissing.at(1).strDisk, QString());
}

void tst_CMissingList::poorLineCounts_data()
{
    QTest::addColumn<QByteArray>("baLines");
    QTest::addColumn<int>("nCount");
    QTest::newRow("nothing") << QByteArray() << 0;
    QTest::newRow("empty lines") << QByteArray("\n \n\n") << 0;
    QTest::newRow("a word alone") << QByteArray("silent") << 1;
    QTest::newRow("no size") << QByteArray("silent\ta\t\tb\n") << 1;
    QTest::newRow("wrong size") << QByteArray("silent\ta\t-7\tb\nsilent\ta\tmuch\tb\n") << 2;
}

void tst_CMissingList::poorLineCounts()
{
    QFETCH(QByteArray, baLines);
    const auto listMissing = CMissingList::Parse(baLines);
    QTEST(listMissing.size(), "nCount");
    for (const STMissingVolume& stMissing : listMissing) {
        QCOMPARE(stMissing.nSize, qint64(-1));
    }
}

QTEST_APPLESS_MAIN(tst_CMissingList)
#include "tst_CMissingList.moc"
