#include "journeys/CJourney.h"
#include "support/CTreeCompare.h"

#include <QDir>
#include <QElapsedTimer>
#include <QGuiApplication>
#include <QJsonArray>
#include <QTextStream>

// Carries out one rescue in the sample environment with the real mouse, tells
// what it does and compares the result with the source:
//
//   rescue_demo EXECUTABLE PICTURES
static const char* const SOURCE_VOLUME = "/Volumes/Macintosh HD";

static void Say(const QString& strText) { QTextStream(stdout) << strText << '\n'; }

static int Fail(CJourney& journey, const QString& strWhat)
{
    journey.Picture(QStringLiteral("failed"));
    Say(QStringLiteral("FAILED: ") + strWhat);
    Say(journey.Errors());
    return 1;
}

static bool SelectSource(CJourney& journey)
{
    const QStringList listVolume{QLatin1String(SOURCE_VOLUME)};
    const QStringList listUsers = listVolume + QStringList{QStringLiteral("Users")};
    journey.Expand(listVolume);
    if (!CJourney::WaitFor(
            [&] { return journey.Row(listVolume).value(QStringLiteral("expanded")).toBool(); })) {
        return false;
    }
    journey.Tick(listUsers);
    return CJourney::WaitFor(
        [&] { return journey.Row(listUsers).value(QStringLiteral("state")).toInt() == 2; });
}

static QString SelectSecondStick(CJourney& journey)
{
    journey.Click(journey.Widget(QStringLiteral("m_pDropBtn")));
    if (!CJourney::WaitFor([&] { return journey.List().value(QStringLiteral("visible")).toBool(); })) {
        return {};
    }
    journey.Picture(QStringLiteral("sticks"));
    const QString strStick = journey.ListTexts().value(1);
    journey.Click(journey.List().value(QStringLiteral("items")).toArray().at(1).toObject());
    const bool bChosen = CJourney::WaitFor([&] {
        return journey.Widget(QStringLiteral("m_pUSBTitleLab")).value(QStringLiteral("text")).toString()
            == strStick;
    });
    return bChosen ? strStick : QString();
}

static QStringList Compare(const QString& strStick)
{
    const QDir dirStick(QStringLiteral("/Volumes/") + strStick);
    const QString strFolder = dirStick.entryList({QStringLiteral("Tarnwick *")}, QDir::Dirs).value(0);
    const QString strCopy = dirStick.filePath(strFolder) + QStringLiteral("/Macintosh HD/Users");
    const QString strSource = QLatin1String(SOURCE_VOLUME) + QStringLiteral("/Users");
    Say(QStringLiteral("Copied to %1: %2 files")
            .arg(dirStick.filePath(strFolder), QString::number(CTreeCompare::FileCount(strCopy))));
    return CTreeCompare::Differences(strSource, strCopy);
}

static int Rescue(CJourney& journey, const QString& strExecutable)
{
    if (!journey.Start(strExecutable)) {
        return Fail(journey, QStringLiteral("the window does not open"));
    }
    journey.Picture(QStringLiteral("window"));
    if (!SelectSource(journey)) {
        return Fail(journey, QStringLiteral("the folder cannot be ticked"));
    }
    journey.Picture(QStringLiteral("ticked"));
    Say(QStringLiteral("Ticked %1/Users").arg(QLatin1String(SOURCE_VOLUME)));

    const QString strStick = SelectSecondStick(journey);
    if (strStick.isEmpty()) {
        return Fail(journey, QStringLiteral("the second stick cannot be chosen"));
    }
    journey.Picture(QStringLiteral("chosen"));
    Say(QStringLiteral("Chose the stick %1").arg(strStick));

    QElapsedTimer timer;
    timer.start();
    journey.Click(journey.Widget(QStringLiteral("toolBtn"), QStringLiteral("m_pSelFilePage")));
    if (!CJourney::WaitFor([&] {
            return journey.Widget(QStringLiteral("m_pStackWidget"))
                       .value(QStringLiteral("currentIndex"))
                       .toInt()
                == 1;
        })) {
        return Fail(journey, QStringLiteral("the copy does not start"));
    }
    journey.Picture(QStringLiteral("copying"));
    if (!journey.WaitForBox(QStringLiteral("Copy file completed!"), 120000)) {
        return Fail(journey, QStringLiteral("the copy does not end"));
    }
    Say(QStringLiteral("Copied in %1 ms").arg(timer.elapsed()));
    journey.Picture(QStringLiteral("completed"));
    if (!journey.AnswerBox(QStringLiteral("Copy file completed!"), QStringLiteral("OK"))) {
        return Fail(journey, QStringLiteral("the message of completion cannot be answered"));
    }

    journey.Click(journey.Widget(QStringLiteral("m_pCloseBtn")));
    const QString strExit = QStringLiteral(
        "Your computer will restart if you exit the program. Are you sure you want to exit?");
    if (!journey.WaitForBox(strExit)) {
        return Fail(journey, QStringLiteral("the exit question does not come"));
    }
    journey.Picture(QStringLiteral("exit"));
    journey.AnswerBox(strExit, QStringLiteral("Yes"));
    if (!journey.WaitForEnd() || journey.ExitCode() != 0) {
        return Fail(journey, QStringLiteral("the program does not end as it should"));
    }

    const QStringList listDifference = Compare(strStick);
    if (!listDifference.isEmpty()) {
        return Fail(journey, listDifference.join(QLatin1Char('\n')));
    }
    Say(QStringLiteral("Every file is there, byte for byte, with its time."));
    return 0;
}

int main(int argc, char** argv)
{
    QGuiApplication application(argc, argv);
    if (argc != 3) {
        Say(QStringLiteral("usage: rescue_demo EXECUTABLE PICTURES"));
        return 2;
    }
    CJourney journey(QString::fromLocal8Bit(argv[2]));
    return Rescue(journey, QString::fromLocal8Bit(argv[1]));
}
