#include "pages/CCopyStateLine.h"

#include <QLocale>
#include <QTest>

/** What the copy page's line says, from looks at the worker at given times. */
class tst_CCopyStateLine : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { QLocale::setDefault(QLocale::c()); }
    void state_data();
    void state();
    void speedIsOfTheLastSeconds();
    void pauseIsNoPartOfTheSpeed();
    void noAnswerNamesTheFile();
    void newCopyHasNothingOfTheOneBefore();
};

static STCopySample Sample(qint64 nFiles, qint64 nBytes)
{
    STCopySample stSample;
    stSample.nFiles = nFiles;
    stSample.nBytes = nBytes;
    stSample.strPath = "/Volumes/HD/a.txt";
    return stSample;
}

void tst_CCopyStateLine::state_data()
{
    QTest::addColumn<bool>("bStopping");
    QTest::addColumn<qint64>("nSinceMs");
    QTest::addColumn<bool>("bFlushing");
    QTest::addColumn<int>("nState");
    const auto row
        = [](const char* pName, bool bStopping, qint64 nSinceMs, bool bFlushing, ENCopyState enState) {
              QTest::newRow(pName) << bStopping << nSinceMs << bFlushing << int(enState);
          };
    row("copying", false, 10, false, ENCopyState::FIGURES);
    row("slow", false, 19999, false, ENCopyState::FIGURES);
    row("no answer", false, 20000, false, ENCopyState::NO_ANSWER);
    row("stopping", true, 10, false, ENCopyState::STOPPING);
    row("stopping, no answer", true, 20000, false, ENCopyState::NO_ANSWER);
    row("last bytes", false, 10, true, ENCopyState::FLUSHING);
    row("last bytes take long", false, 60000, true, ENCopyState::FLUSHING);
    row("last bytes of a stop", true, 10, true, ENCopyState::FLUSHING);
}

void tst_CCopyStateLine::state()
{
    QFETCH(bool, bStopping);
    QFETCH(qint64, nSinceMs);
    QFETCH(bool, bFlushing);
    CCopyStateLine line;
    line.Begin();
    line.Look(Sample(0, 0), 5000);
    QCOMPARE(line.State(), ENCopyState::NOTHING);
    QCOMPARE(line.Text(), QString());
    if (bStopping) {
        line.Stop();
    }
    STCopySample stSample = Sample(1, 1000000);
    stSample.nSinceProgressMs = nSinceMs;
    stSample.bFlushing = bFlushing;
    line.Look(stSample, 6000);
    QTEST(int(line.State()), "nState");
    QVERIFY(!line.Text().isEmpty());
}

void tst_CCopyStateLine::speedIsOfTheLastSeconds()
{
    CCopyStateLine line;
    line.Begin();
    line.Look(Sample(0, 0), 100);
    line.Look(Sample(3, 500000), 600);
    QCOMPARE(line.Text(), QString()); // half a second says little
    line.Look(Sample(5, 2500000), 1100);
    QCOMPARE(line.Text(), QString("5 files, 2.5 MB/s"));
    // Ten seconds of nothing, then 60 MB in three.
    for (qint64 nMs = 2100; nMs <= 11100; nMs += 500) {
        line.Look(Sample(5, 2500000), nMs);
    }
    QCOMPARE(line.Text(), QString("5 files, 0.0 MB/s"));
    line.Look(Sample(6, 32500000), 12600);
    line.Look(Sample(7, 62500000), 14100);
    QCOMPARE(line.Text(), QString("7 files, 20 MB/s"));
}

void tst_CCopyStateLine::pauseIsNoPartOfTheSpeed()
{
    CCopyStateLine line;
    line.Begin();
    line.Look(Sample(0, 0), 0);
    line.Look(Sample(1, 4000000), 2000);
    QCOMPARE(line.Text(), QString("1 file, 2.0 MB/s"));
    STCopySample stPaused = Sample(1, 4000000);
    stPaused.bPaused = true;
    line.Look(stPaused, 2500);
    QCOMPARE(line.State(), ENCopyState::FIGURES);
    QCOMPARE(line.Text(), QString("1 file so far"));
    line.Look(Sample(1, 4000000), 100000);
    line.Look(Sample(2, 10000000), 102000);
    QCOMPARE(line.Text(), QString("2 files, 3.0 MB/s"));
}

void tst_CCopyStateLine::noAnswerNamesTheFile()
{
    CCopyStateLine line;
    line.Begin();
    STCopySample stSample = Sample(1, 1);
    stSample.strPath = "/Volumes/%1 %2/<b>a</b>.txt";
    stSample.nSinceProgressMs = 61999;
    line.Look(stSample, 0);
    QCOMPARE(line.Text(), QString("The disk has not answered for 61 seconds: /Volumes/%1 %2/<b>a</b>.txt"));
}

void tst_CCopyStateLine::newCopyHasNothingOfTheOneBefore()
{
    CCopyStateLine line;
    line.Begin();
    line.Stop();
    line.Look(Sample(1, 4000000), 2000);
    QCOMPARE(line.State(), ENCopyState::STOPPING);
    line.Begin();
    QCOMPARE(line.Text(), QString());
    line.Look(Sample(0, 0), 3000);
    line.Look(Sample(0, 0), 4000);
    QCOMPARE(line.Text(), QString("0 files, 0.0 MB/s"));
}

QTEST_APPLESS_MAIN(tst_CCopyStateLine)
#include "tst_CCopyStateLine.moc"
