// What a copy costs from a slow disk to a stick, beside "cp -a", "rsync -a" and two tars:
//
//     bench_disks [--complete] [ROW...]
//     bench_disks --in ROW COMMAND [ARGUMENT...]
//
// Source and stick are disks with a time model (tests/support/slowdisk), cold before each
// copy. Who takes part copies in turns, and the medians of three turns, or of as many as
// TARNWICK_BENCH_RUNS says, are compared with the best peer's; with TARNWICK_BENCH_ALONE set
// there are no peers. The tables are Markdown. With --complete everything is saved instead of
// what is ticked. The second form runs a command among cold disks, which are described in
// its environment by SOURCE, STICK, SOURCE_CONTROL and STICK_CONTROL.
//
// It takes root, /dev/fuse and loop devices, 6 GB of memory, and a quarter of an hour for
// all rows. Everything is in memory and in mounts of its own, and is gone with it.

#include "CDiskRace.h"
#include "Measure.h"
#include "copy/CCopyPlatform.h"
#include "files/CFileNameCodec.h"

#include <QCoreApplication>
#include <QThread>

#include <cstdio>
#include <cstdlib>
#include <vector>

static const STDiskModel DISK{8000, 100000000, true, false, 4096};
static const STDiskModel STICK{3000, 40000000, false, false, 2048};
static const STDiskModel STICK_THROUGH{3000, 40000000, false, true, 2048};
static const STDiskModel STICK_OF_OLD{3000, 10000000, false, false, 2048};

static const int RUNS = 3;
static const int SLEEPS = 2000;
static const qint64 KIB = 1024;
static const qint64 MB = 1000000;

namespace {

/** A row of the tables, and all that was measured for it. */
struct STRow
{
    QString strTitle;
    QVector<std::vector<STRaceRun>> listEntrant; ///< the runs of each
    STRaceRun stLeast; ///< what the disks allow
    double nSleeps = 0; ///< ms that the engine sleeps in all
    bool bEngineAlone = false;
    bool bInMemory = false;
};

} // namespace

static QVector<STRaceCourse> Courses()
{
    const CUsedFolder middle = CUsedFolder::Between(300, 64 * KIB, 256 * KIB);
    const CUsedFolder few = CUsedFolder::Between(200, 64 * KIB, 256 * KIB);
    const CUsedFolder film = CUsedFolder::Alike(1, 600 * MB);
    return {
        {"home", "home folder, 154 MB in 800 files", CUsedFolder::Home(), DISK, STICK},
        {"small", "600 files of 4 KiB", CUsedFolder::Alike(600, 4 * KIB), DISK, STICK},
        {"middle", "300 files of 64-256 KiB", middle, DISK, STICK},
        {"through", "200 files of 64-256 KiB, stick writes through", few, DISK, STICK_THROUGH},
        {"film", "one file of 120 MB", CUsedFolder::Alike(1, 120 * MB), DISK, STICK},
        {"long", "one file of 600 MB", film, DISK, STICK},
        {"memory", "home folder in memory", CUsedFolder::Home(), std::nullopt, std::nullopt},
        {"bar", "one file of 600 MB, stick of 10 MB/s", film, DISK, STICK_OF_OLD, true},
    };
}

/** What a sleep of 0.1 ms takes on the engine's thread, in ms. */
static double SleepMs()
{
    double nMs = 0;
    const std::unique_ptr<QThread> pThread(QThread::create([&nMs] {
        CCopyPlatform::SetLeastTimerSlack();
        nMs = Milliseconds([] {
                  for (int nSleep = 0; nSleep < SLEEPS; ++nSleep) {
                      QThread::usleep(100);
                  }
              })
            / SLEEPS;
    }));
    pThread->start();
    pThread->wait();
    return nMs;
}

static STRow Measure(const STRaceCourse& stCourse, int nRuns, bool bComplete)
{
    CDiskRace race(stCourse, bComplete);
    STRow stRow;
    stRow.strTitle = stCourse.strTitle;
    stRow.bEngineAlone = stCourse.bEngineAlone || qEnvironmentVariableIsSet("TARNWICK_BENCH_ALONE");
    stRow.bInMemory = !stCourse.stSource;
    stRow.stLeast.nHanded = race.LeastSourceMs();
    stRow.stLeast.nOnDisk = qMax(race.LeastSourceMs(), race.LeastStickMs());
    stRow.stLeast.stSource = {0, race.LeastSeeks(), 0, race.LeastSourceMs()};
    stRow.stLeast.stStick = {0, 0, 0, race.LeastStickMs()};
    stRow.nSleeps = stCourse.folder.Files() * SleepMs();
    const int nEntrants = stRow.bEngineAlone ? 1 : CDiskRace::Entrants().size();
    stRow.listEntrant.resize(nEntrants);
    // What is over in the blink of an eye is done more often.
    const int nTimes = stCourse.bEngineAlone ? 1 : stRow.bInMemory ? nRuns * RUNS : nRuns;
    for (int nRun = 0; nRun < nTimes; ++nRun) {
        for (int nTurn = 0; nTurn < nEntrants; ++nTurn) {
            // Each goes first once.
            const int nEntrant = (nTurn + nRun) % nEntrants;
            stRow.listEntrant[nEntrant].push_back(race.Run(nEntrant));
        }
    }
    return stRow;
}

static double MedianOf(const std::vector<STRaceRun>& listRun, double STRaceRun::*pTime)
{
    std::vector<double> listTime;
    listTime.reserve(listRun.size());
    for (const STRaceRun& stRun : listRun) {
        listTime.push_back(stRun.*pTime);
    }
    return Median(listTime);
}

/** The peer whose median is the least. */
static int BestPeer(const STRow& stRow, double STRaceRun::*pTime)
{
    int nBest = 1;
    for (int nEntrant = 2; nEntrant < stRow.listEntrant.size(); ++nEntrant) {
        if (MedianOf(stRow.listEntrant.at(nEntrant), pTime) < MedianOf(stRow.listEntrant.at(nBest), pTime)) {
            nBest = nEntrant;
        }
    }
    return nBest;
}

static void PrintTop(const QString& strTitle, const QStringList& listColumn)
{
    std::printf("\n%s\n\n| Work |", qPrintable(strTitle));
    for (const QString& strColumn : listColumn) {
        std::printf(" %s |", qPrintable(strColumn));
    }
    std::printf("\n|---|");
    for (int nColumn = 0; nColumn < listColumn.size(); ++nColumn) {
        std::printf("---|");
    }
    std::printf("\n");
}

static void PrintTimes(const QString& strTitle, const QVector<STRow>& listRow, double STRaceRun::*pTime)
{
    PrintTop(strTitle, CDiskRace::Entrants() + QStringList{"ratio", "the disks allow"});
    for (const STRow& stRow : listRow) {
        if (stRow.bEngineAlone || (stRow.bInMemory && pTime == &STRaceRun::nOnDisk)) {
            continue;
        }
        std::printf("| %s |", qPrintable(stRow.strTitle));
        for (const std::vector<STRaceRun>& listRun : stRow.listEntrant) {
            std::printf(" %.2f |", MedianOf(listRun, pTime) / 1000);
        }
        const double nBest = MedianOf(stRow.listEntrant.at(BestPeer(stRow, pTime)), pTime);
        const double nLeast = stRow.bInMemory ? nBest + stRow.nSleeps : stRow.stLeast.*pTime;
        std::printf(" **%.2f** | %.2f |\n", MedianOf(stRow.listEntrant.at(0), pTime) / nBest, nLeast / nBest);
    }
}

/** Of the run whose time is the median. */
static const STRaceRun& Typical(const std::vector<STRaceRun>& listRun)
{
    const double nMedian = MedianOf(listRun, &STRaceRun::nOnDisk);
    return *std::find_if(listRun.begin(), listRun.end(),
                         [nMedian](const STRaceRun& stRun) { return stRun.nOnDisk == nMedian; });
}

static void PrintHead(const STRow& stRow, const QString& strWho, const STRaceRun& stRun)
{
    std::printf("| %s | %s | %lld | %.2f | %lld | %.2f | %.2f |\n", qPrintable(stRow.strTitle),
                qPrintable(strWho), static_cast<long long>(stRun.stSource.nSeeks),
                stRun.stSource.nBusyMs / 1000, static_cast<long long>(stRun.stStick.nSeeks),
                stRun.stStick.nBusyMs / 1000, stRun.nOnDisk / 1000);
}

static void PrintHeads(const QVector<STRow>& listRow)
{
    PrintTop("Seeks, and seconds in which the heads were busy, until the disk has it:",
             {"", "seeks, source", "busy, source", "seeks, stick", "busy, stick", "all"});
    for (const STRow& stRow : listRow) {
        if (stRow.bInMemory) {
            continue;
        }
        PrintHead(stRow, CDiskRace::Entrants().at(0), Typical(stRow.listEntrant.at(0)));
        if (!stRow.bEngineAlone) {
            const int nBest = BestPeer(stRow, &STRaceRun::nOnDisk);
            PrintHead(stRow, CDiskRace::Entrants().at(nBest), Typical(stRow.listEntrant.at(nBest)));
        }
        PrintHead(stRow, "the files alone", stRow.stLeast);
    }
}

static void PrintBar(const QVector<STRow>& listRow)
{
    PrintTop("Seconds in which the engine's bar stands, of the median:",
             {"at the last percent, until the end", "longest", "all"});
    for (const STRow& stRow : listRow) {
        const STRaceRun& stRun = Typical(stRow.listEntrant.at(0));
        std::printf("| %s | %.2f | %.2f | %.2f |\n", qPrintable(stRow.strTitle),
                    (stRun.nOnDisk - stRun.nHanded) / 1000, stRun.nLongestStep / 1000, stRun.nOnDisk / 1000);
    }
}

static QVector<STRaceCourse> Chosen(const QStringList& listName)
{
    QVector<STRaceCourse> listCourse;
    QStringList listKnown;
    for (const STRaceCourse& stCourse : Courses()) {
        listKnown.append(stCourse.strName);
        if (listName.isEmpty() || listName.contains(stCourse.strName)) {
            listCourse.append(stCourse);
        }
    }
    Require(listCourse.size() == (listName.isEmpty() ? listKnown.size() : listName.size()),
            "the rows are " + listKnown.join(' '));
    return listCourse;
}

static void Race(const QVector<STRaceCourse>& listCourse, bool bComplete)
{
    bool bSaid = false;
    const int nSaid = qEnvironmentVariableIntValue("TARNWICK_BENCH_RUNS", &bSaid);
    const int nRuns = bSaid && nSaid > 0 ? nSaid : RUNS;
    QVector<STRow> listRow;
    for (const STRaceCourse& stCourse : listCourse) {
        std::fprintf(stderr, "%s ...\n", qPrintable(stCourse.strTitle));
        listRow.append(Measure(stCourse, nRuns, bComplete));
    }
    std::printf("%s; medians of %d, in seconds.\n", bComplete ? "Complete rescue" : "Ticked items", nRuns);
    if (!std::all_of(listRow.begin(), listRow.end(), [](const STRow& stRow) { return stRow.bEngineAlone; })) {
        PrintTimes("Until the last byte is handed over:", listRow, &STRaceRun::nHanded);
        PrintTimes("Until the disk has it:", listRow, &STRaceRun::nOnDisk);
    }
    PrintHeads(listRow);
    PrintBar(listRow);
}

int main(int argc, char* argv[])
{
    const QCoreApplication application(argc, argv);
    CFileNameCodec::Install();
    QStringList listArgument = QCoreApplication::arguments().mid(1);
    const QString strMissing = CSlowDisk::Missing();
    Require(strMissing.isEmpty(),
            "this benchmark takes root, /dev/fuse and loop devices; what is missing here is " + strMissing);
    Require(CSlowDisk::MakePrivateMounts(), "mounts of its own");
    if (listArgument.value(0) == "--in" && listArgument.size() > 2) {
        CDiskRace race(Chosen({listArgument.at(1)}).constFirst(), false);
        return race.RunCommand(listArgument.mid(2));
    }
    const bool bComplete = listArgument.removeAll("--complete") > 0;
    Race(Chosen(listArgument), bComplete);
    return EXIT_SUCCESS;
}
