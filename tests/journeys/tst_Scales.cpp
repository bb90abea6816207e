#include "journeys/CJourney.h"
#include "support/CVolume.h"
#include "support/TestFiles.h"

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QTest>

/**
 * Opens the program on a screen of the width that the environment gives it, and
 * takes a picture of each state of its window there.
 */
class tst_Scales : public QObject
{
    Q_OBJECT

private slots:
    void WindowFollowsTheScreen();
};

void tst_Scales::WindowFollowsTheScreen()
{
    const double fRatio = qEnvironmentVariable("TARNWICK_EXPECTED_SCALE").toDouble();
    const CVolume source(QStringLiteral("Macintosh HD"), QStringLiteral("/dev/nvme0n1p1"), 50);
    const CVolume stick(QStringLiteral("RESCUE"), QStringLiteral("/dev/sdb1"), 100);
    const CVolume other(QStringLiteral("A stick with a very long name, longer than its place in the window"),
                        QStringLiteral("/dev/sdc1"), 100);
    QVERIFY2(source.IsValid() && stick.IsValid() && other.IsValid(), "volumes can be mounted");
    for (int n = 0; n < 12; ++n) {
        WriteFile(source.Path(QStringLiteral("Users/anna/Pictures/IMG_%1.jpg").arg(n)),
                  QByteArray(1 << 20, 'j'));
        WriteFile(source.Path(QStringLiteral("Users/anna/Documents/A letter %1.txt").arg(n)), "text");
    }

    // Something has to stay unticked: of a volume that is ticked as a whole only the open levels are copied.
    WriteFile(source.Path(QStringLiteral("Applications/notes.txt")), "text");

    CJourney journey(BuildPath(QStringLiteral("pictures/scale-") + QString::number(fRatio)));
    QVERIFY(journey.Start(BuildPath(QStringLiteral("bin/TarnwickMacPE"))));
    const QJsonObject objWindow = journey.Widget(QStringLiteral("CTarnwickMacPE"));
    QCOMPARE(objWindow.value(QStringLiteral("ratio")).toDouble(), fRatio);
    QCOMPARE(objWindow.value(QStringLiteral("w")).toInt(), qRound(1120 * fRatio));
    QCOMPARE(objWindow.value(QStringLiteral("h")).toInt(), qRound(690 * fRatio));
    journey.Picture(QStringLiteral("empty"));

    const QStringList listVolume{source.Path()};
    journey.Expand(listVolume);
    QVERIFY(CJourney::WaitFor(
        [&] { return journey.Row(listVolume).value(QStringLiteral("expanded")).toBool(); }));
    const QStringList listUsers = listVolume + QStringList{QStringLiteral("Users")};
    journey.Expand(listUsers);
    QVERIFY(
        CJourney::WaitFor([&] { return journey.Row(listUsers).value(QStringLiteral("expanded")).toBool(); }));
    journey.Tick(listUsers + QStringList{QStringLiteral("anna")});
    QVERIFY(CJourney::WaitFor(
        [&] { return journey.Row(listUsers).value(QStringLiteral("state")).toInt() == 2; }));
    journey.Picture(QStringLiteral("ticked"));
    journey.Click(journey.Widget(QStringLiteral("m_pDropBtn")));
    QVERIFY(CJourney::WaitFor([&] { return journey.List().value(QStringLiteral("visible")).toBool(); }));
    journey.Picture(QStringLiteral("drop-down"));
    const int nStick = journey.ListTexts().indexOf(QStringLiteral("RESCUE"));
    journey.Click(journey.List().value(QStringLiteral("items")).toArray().at(nStick).toObject());

    journey.SlowListing(300);
    journey.SlowWrites(30);
    journey.Click(journey.Widget(QStringLiteral("toolBtn"), QStringLiteral("m_pSelFilePage")));
    QVERIFY(CJourney::WaitFor([&] {
        return journey.Widget(QStringLiteral("CSearchWaitView")).value(QStringLiteral("visible")).toBool();
    }));
    journey.Picture(QStringLiteral("counting"));
    journey.SlowListing(0);
    QVERIFY(CJourney::WaitFor([&] {
        return journey.Widget(QStringLiteral("m_pProgress")).value(QStringLiteral("value")).toInt() > 10;
    }));
    journey.Picture(QStringLiteral("copying"));
    journey.Click(journey.Widget(QStringLiteral("toolBtn"), QStringLiteral("m_pCopyFilePage")));
    const QString strQuestion = QStringLiteral(
        "Your data might not be copied completely, are you sure to stop the copying process?");
    QVERIFY(journey.WaitForBox(strQuestion));
    journey.Picture(QStringLiteral("question"));
    QVERIFY(journey.AnswerBox(strQuestion, QStringLiteral("Yes")));
    QVERIFY(journey.WaitForBox(QStringLiteral("Copy file completed!")));
    journey.Picture(QStringLiteral("completed"));
}

QTEST_MAIN(tst_Scales)
#include "tst_Scales.moc"
