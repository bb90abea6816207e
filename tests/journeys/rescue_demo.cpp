#include "journeys/CJourney.h"
#include "support/CTreeCompare.h"
#include "support/Texts.h"

#include <QDir>
#include <QElapsedTimer>
#include <QGuiApplication>
#include <QTextStream>

// Carries out one rescue in the sample environment with the real mouse, tells
// what it does and compares the result with the source:
//
//   rescue_demo EXECUTABLE PICTURES
static const QString SOURCE_VOLUME = "/Volumes/Macintosh HD";

static void Say(const QString& strText) { QTextStream(stdout) << strText << '\n'; }

/** Takes a picture of what a step has led to, or tells of its failure. Returns whether it is done. */
static bool Step(CJourney& journey, bool bDone, const QString& strPicture, const QString& strFailure)
{
    journey.Picture(bDone ? strPicture : "failed");
    if (!bDone) {
        Say("FAILED: " + strFailure);
        Say(journey.Errors());
    }
    return bDone;
}

static bool TickUsers(CJourney& journey)
{
    const bool bTicked
        = journey.Open({SOURCE_VOLUME}) && journey.TickWhole(QStringList{SOURCE_VOLUME, "Users"});
    return Step(journey, bTicked, "ticked", "the folder cannot be ticked");
}

/** Chooses the second stick; returns its name, empty when that fails. */
static QString ChooseStick(CJourney& journey)
{
    if (!Step(journey, journey.OpenList("m_pDropBtn"), "sticks", "the list of sticks does not open")) {
        return {};
    }
    const QString strStick = journey.ListTexts().value(1);
    const bool bChosen = journey.ChooseDisk(strStick);
    return Step(journey, bChosen, "chosen", "the second stick cannot be chosen") ? strStick : QString();
}

static bool Copy(CJourney& journey)
{
    QElapsedTimer timer;
    timer.start();
    journey.Click("toolBtn", "m_pSelFilePage");
    const bool bStarted = CJourney::WaitFor([&] { return journey.Page() == 1; });
    if (!Step(journey, bStarted, "copying", "the copy does not start")
        || !Step(journey, journey.WaitForBox(TEXT_COMPLETED, 120000), "completed", "the copy does not end")) {
        return false;
    }
    Say(QString("Copied in %1 ms").arg(timer.elapsed()));
    const bool bAnswered = journey.AnswerBox(TEXT_COMPLETED, "OK");
    return Step(journey, bAnswered, "answered", "the message of completion cannot be answered");
}

static bool Exit(CJourney& journey)
{
    journey.Click("m_pCloseBtn");
    if (!Step(journey, journey.WaitForBox(TEXT_EXIT), "exit", "the exit question does not come")) {
        return false;
    }
    journey.AnswerBox(TEXT_EXIT, "Yes");
    const bool bEnded = journey.WaitForEnd() && journey.ExitCode() == 0;
    return Step(journey, bEnded, "ended", "the program does not end as it should");
}

static bool Compare(CJourney& journey, const QString& strStick)
{
    const QDir dirStick("/Volumes/" + strStick);
    const QString strFolder = dirStick.filePath(dirStick.entryList({"Tarnwick *"}, QDir::Dirs).value(0));
    const QString strCopy = strFolder + "/Macintosh HD/Users";
    Say(QString("Copied to %1: %2 files").arg(strFolder, QString::number(CTreeCompare::FileCount(strCopy))));
    const QStringList listDifference = CTreeCompare::Differences(SOURCE_VOLUME + "/Users", strCopy);
    return Step(journey, listDifference.isEmpty(), "compared", listDifference.join('\n'));
}

static bool Rescue(CJourney& journey, const QString& strExecutable)
{
    if (!Step(journey, journey.Start(strExecutable), "window", "the window does not open")
        || !TickUsers(journey)) {
        return false;
    }
    Say(QString("Ticked %1/Users").arg(SOURCE_VOLUME));
    const QString strStick = ChooseStick(journey);
    if (strStick.isEmpty()) {
        return false;
    }
    Say(QString("Chose the stick %1").arg(strStick));
    return Copy(journey) && Exit(journey) && Compare(journey, strStick);
}

int main(int argc, char** argv)
{
    const QGuiApplication application(argc, argv);
    if (argc != 3) {
        Say("usage: rescue_demo EXECUTABLE PICTURES");
        return 2;
    }
    CJourney journey(QString::fromLocal8Bit(argv[2]));
    if (!Rescue(journey, QString::fromLocal8Bit(argv[1]))) {
        return 1;
    }
    Say("Every file is there, byte for byte, with its time.");
    return 0;
}
