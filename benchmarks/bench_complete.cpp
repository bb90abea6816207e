// What a complete rescue of a whole volume costs, beside the tools of the system that
// do the same with the same warm folders:
//
//     bench_complete [folder]
//
// Volume and copies lie below the folder, by default the temporary one. The volume has
// 200,000 files, or as many as TARNWICK_BENCH_FILES says; a quarter of them have bytes.
// The count is compared with "du -s", the copy with "cp -a" and "rsync -a", each until
// everything is on the disk. Times are medians; where there are more than a million
// files, a copy is made only once.

#include "EngineRun.h"
#include "Measure.h"
#include "files/CFileNameCodec.h"
#include "support/CMadeMac.h"
#include "support/CNodeTree.h"

#include <QCoreApplication>
#include <QDir>
#include <QTemporaryDir>

#include <cstdio>
#include <cstdlib>
#include <vector>

static const int FILES = 200000;
static const int MANY_FILES = 1000000;
static const int RUNS = 5;
static const int STOPS = 10;
static const double MOST_RATIO = 1.3;
static const double MOST_STOP_MS = 100;
static const int MOST_MIB = 100;

namespace {

/** What is measured with, and where. */
struct STStage
{
    QString strVolume;
    QString strDest;
    CNodeTree nodes;
    qint64 nBytes = 0; ///< of the volume, as counted
    int nCopies = RUNS;
};

} // namespace

static void Clean(const STStage& stStage)
{
    Run(QStringLiteral("rm"), {QStringLiteral("-rf"), stStage.strDest});
    // Else the next run would write this one's changes to the disk.
    Run(QStringLiteral("sync"), {});
}

static void CompareCount(STStage& stStage, qint64 nExpected)
{
    const auto fnDu = [&stStage] { Run(QStringLiteral("du"), {QStringLiteral("-s"), stStage.strVolume}); };
    std::vector<double> listDu;
    std::vector<double> listCount;
    fnDu();
    for (int nRun = 0; nRun < RUNS; ++nRun) {
        listDu.push_back(Milliseconds(fnDu));
        listCount.push_back(
            Milliseconds([&stStage] { stStage.nBytes = CountByEngine(stStage.nodes.Root()); }));
    }
    Require(stStage.nBytes == nExpected, QStringLiteral("the count is wrong"));
    std::printf("count %.1f ms, du -s %.1f ms, ratio %.2f   (at most %.1f)\n", Median(listCount),
                Median(listDu), Median(listCount) / Median(listDu), MOST_RATIO);
    std::printf("memory that the count adds: %lld MiB   (at most %d)\n",
                AddedMiB([&stStage] { CountByEngine(stStage.nodes.Root()); }), MOST_MIB);
    std::fflush(stdout);
}

static void CompareCopy(STStage& stStage, qint64 nExpected)
{
    const auto fnSync = [&stStage] { Run(QStringLiteral("sync"), {QStringLiteral("-f"), stStage.strDest}); };
    std::vector<double> listEngine;
    std::vector<double> listCp;
    std::vector<double> listRsync;
    qint64 nAdded = 0;
    for (int nRun = 0; nRun < stStage.nCopies; ++nRun) {
        STCopyAccount stAccount;
        nAdded = qMax(nAdded, AddedMiB([&] {
                          listEngine.push_back(Milliseconds([&] {
                              stAccount = CopyByEngine(stStage.nodes.Root(), stStage.nBytes, stStage.strDest);
                          }));
                      }));
        Require(stAccount.IsWhole() && stAccount.nFiles == nExpected,
                QStringLiteral("the copy is not whole"));
        Clean(stStage);
        listCp.push_back(Milliseconds([&] {
            Run(QStringLiteral("cp"), {QStringLiteral("-a"), stStage.strVolume, stStage.strDest});
            fnSync();
        }));
        Clean(stStage);
        listRsync.push_back(Milliseconds([&] {
            Run(QStringLiteral("rsync"), {QStringLiteral("-a"), stStage.strVolume, stStage.strDest});
            fnSync();
        }));
        Clean(stStage);
    }
    const double nEngine = Median(listEngine);
    std::printf("copy %.1f s, cp -a %.1f s, ratio %.2f; rsync -a %.1f s, ratio %.2f\n", nEngine / 1000,
                Median(listCp) / 1000, nEngine / Median(listCp), Median(listRsync) / 1000,
                nEngine / Median(listRsync));
    std::printf("memory that the copy adds: %lld MiB   (at most %d)\n", nAdded, MOST_MIB);
    std::fflush(stdout);
}

/** How long the count goes on after it was interrupted, at the worst of several moments, in ms. */
static double CountStopMs(STStage& stStage, double nWholeMs)
{
    double nWorst = 0;
    for (int nStop = 1; nStop <= STOPS; ++nStop) {
        CGetFileSizeThread count;
        count.SetRootNode(stStage.nodes.Root());
        count.start();
        count.wait(static_cast<unsigned long>(nWholeMs * nStop / (STOPS + 1)));
        nWorst = qMax(nWorst, Milliseconds([&count] {
                          count.requestInterruption();
                          count.wait();
                      }));
    }
    return nWorst;
}

/** The same of the copy, until it leaves the files and begins to flush the disk. */
static double CopyStopMs(STStage& stStage)
{
    double nWorst = 0;
    for (int nStop = 1; nStop <= STOPS; ++nStop) {
        CCopyFileThread worker;
        worker.SetCopyParam(stStage.nBytes, stStage.nodes.Root(), stStage.strDest, COPY_STATUS_RUN);
        worker.start(QThread::TimeCriticalPriority);
        worker.wait(static_cast<unsigned long>(150 * nStop));
        nWorst = qMax(nWorst, Milliseconds([&worker] {
                          worker.SetCopyStatus(COPY_STATUS_STOP);
                          while (worker.CurrentStep() != ENCopyStep::FLUSHING && !worker.wait(1)) { }
                      }));
        worker.wait();
        Clean(stStage);
    }
    return nWorst;
}

int main(int argc, char* argv[])
{
    const QCoreApplication application(argc, argv);
    CFileNameCodec::Install();
    bool bSaid = false;
    const int nSaid = qEnvironmentVariableIntValue("TARNWICK_BENCH_FILES", &bSaid);
    const int nFiles = bSaid ? nSaid : FILES;
    const QString strFolder = QCoreApplication::arguments().value(1, QDir::tempPath());
    const QTemporaryDir dir(strFolder + QStringLiteral("/bench_complete"));
    Require(dir.isValid(), dir.errorString());

    STStage stStage;
    stStage.strVolume = dir.filePath(QStringLiteral("Macintosh HD"));
    stStage.strDest = dir.filePath(QStringLiteral("copy"));
    stStage.nCopies = nFiles < MANY_FILES ? RUNS : 1;
    Require(QDir().mkpath(stStage.strVolume), stStage.strVolume);
    const STMadeMac stMade = CMadeMac(stStage.strVolume, nFiles).Made();
    stStage.nodes.Root()->m_bComplete = true;
    stStage.nodes.Add(stStage.strVolume);

    std::printf("%lld files, %lld folders, %lld links, %lld bytes\n", static_cast<long long>(stMade.nFiles),
                static_cast<long long>(stMade.nFolders), static_cast<long long>(stMade.nLinks),
                static_cast<long long>(stMade.nBytes));
    CompareCount(stStage, stMade.nBytes);
    CompareCopy(stStage, stMade.nFiles);
    const double nWholeMs = Milliseconds([&stStage] { CountByEngine(stStage.nodes.Root()); });
    std::printf("a stop is felt after %.1f ms while it counts, %.1f ms while it copies   (at most %.0f)\n",
                CountStopMs(stStage, nWholeMs), CopyStopMs(stStage), MOST_STOP_MS);
    // Faster than one by one.
    Clean(stStage);
    Run(QStringLiteral("rm"), {QStringLiteral("-rf"), stStage.strVolume});
    return EXIT_SUCCESS;
}
