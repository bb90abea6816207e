#include "journeys/CJourneyBed.h"

/**
 * Opens the program on a screen of the width that the environment gives it, and
 * takes a picture of each state of its window there.
 */
class tst_Scales : public CJourneyBed
{
    Q_OBJECT

private slots:
    void windowFollowsTheScreen();
};

void tst_Scales::windowFollowsTheScreen()
{
    const double fRatio = qEnvironmentVariable("TARNWICK_EXPECTED_SCALE").toDouble();
    Make("scale-" + QString::number(fRatio));
    const CVolume longName("A stick with a very long name, longer than its place in the window", "/dev/sdd1",
                           100);
    QVERIFY2(longName.IsValid(), "volumes can be mounted");
    CJourney& journey = *m_pJourney;
    Start();
    const QJsonObject objWindow = journey.Widget("CTarnwickMacPE");
    QCOMPARE(objWindow.value("ratio").toDouble(), fRatio);
    QCOMPARE(objWindow.value("w").toInt(), qRound(1120 * fRatio));
    QCOMPARE(objWindow.value("h").toInt(), qRound(690 * fRatio));
    journey.Picture("empty");

    QVERIFY(journey.Open(m_listVolume));
    QVERIFY(journey.Open(m_listUsers));
    QVERIFY(journey.TickWhole(m_listUsers + QStringList{"anna"}));
    QCOMPARE(journey.Row(m_listUsers).value("state").toInt(), int(Qt::Checked));
    journey.Picture("ticked");
    QVERIFY(journey.OpenList("m_pDropBtn"));
    journey.Picture("drop-down");
    QVERIFY(journey.ChooseDisk("LARGE"));

    journey.SlowListing(300);
    journey.SlowWrites(SLOW_MS);
    journey.Click("toolBtn", "m_pSelFilePage");
    QVERIFY(CJourney::WaitFor([&] { return journey.Shows("CSearchWaitView"); }));
    journey.Picture("counting");
    journey.SlowListing(0);
    QVERIFY(CJourney::WaitFor([&] { return journey.Progress() > 10; }));
    journey.Picture("copying");
    journey.Click("toolBtn", "m_pCopyFilePage");
    QVERIFY(journey.WaitForBox(TEXT_STOP));
    journey.Picture("question");
    QVERIFY(journey.AnswerBox(TEXT_STOP, "Yes"));
    QVERIFY(journey.WaitForBox(TEXT_COMPLETED));
    journey.Picture("completed");
}

QTEST_MAIN(tst_Scales)
#include "tst_Scales.moc"
