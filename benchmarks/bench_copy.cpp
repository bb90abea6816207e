// What a copy costs, beside "cp -a" of the same warm folders on the same disk:
//
//     bench_copy [folder]
//
// Source and copies lie below the folder, by default the temporary one. Every
// time is the median of five. "copied" ends with the last byte handed to the
// system, "on the disk" when the file system is flushed, which the engine does by
// itself and "cp" leaves to "sync -f".

#include "Measure.h"
#include "copy/CCopyFileThread.h"
#include "copy/CCopyPlatform.h"
#include "files/CFileNameCodec.h"
#include "support/CNodeTree.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>

#include <cstdio>
#include <cstdlib>
#include <memory>
#include <vector>

static const int RUNS = 5;
static const int SLEEPS = 2000;

namespace {

struct STTime
{
    double nCopied = 0; // ms
    double nOnDisk = 0; // ms
};

} // namespace

static double Milliseconds(const QElapsedTimer& timer) { return double(timer.nsecsElapsed()) / 1e6; }

static void MakeTree(const QString& strFolder, int nFolders, int nFiles, qint64 nSize)
{
    const QByteArray baBlock(1024 * 1024, 'x');
    for (int nFolder = 0; nFolder < nFolders; ++nFolder) {
        const QString strInner
            = strFolder + QStringLiteral("/Folder %1").arg(nFolder, 4, 10, QLatin1Char('0'));
        Require(QDir().mkpath(strInner), strInner);
        for (int nFile = 0; nFile < nFiles; ++nFile) {
            QFile file(strInner + QStringLiteral("/document %1.txt").arg(nFile, 4, 10, QLatin1Char('0')));
            bool bDone = file.open(QIODevice::WriteOnly | QIODevice::Unbuffered);
            for (qint64 nLeft = nSize; bDone && nLeft > 0; nLeft -= baBlock.size()) {
                const qint64 nPart = qMin<qint64>(nLeft, baBlock.size());
                bDone = file.write(baBlock.constData(), nPart) == nPart;
            }
            Require(bDone, file.fileName());
        }
    }
}

static STTime CopyWithEngine(CDirNode* pRoot, qint64 nTotal, const QString& strDest)
{
    STTime stTime;
    QElapsedTimer timer;
    CCopyFileThread worker;
    QObject::connect(
        &worker, &CCopyFileThread::SignalCopyCopyInfo, &worker,
        [&stTime, &timer] { stTime.nCopied = Milliseconds(timer); }, Qt::DirectConnection);
    worker.SetCopyParam(nTotal, pRoot, strDest, COPY_STATUS_RUN);
    timer.start();
    worker.start(QThread::TimeCriticalPriority);
    worker.wait();
    stTime.nOnDisk = Milliseconds(timer);
    return stTime;
}

static STTime CopyWithCp(const QString& strSource, const QString& strDest)
{
    STTime stTime;
    QElapsedTimer timer;
    timer.start();
    Run(QStringLiteral("cp"), {QStringLiteral("-a"), QStringLiteral("--"), strSource, strDest});
    stTime.nCopied = Milliseconds(timer);
    Run(QStringLiteral("sync"), {QStringLiteral("-f"), strDest});
    stTime.nOnDisk = Milliseconds(timer);
    return stTime;
}

static void Clean(const QString& strDest)
{
    Require(QDir(strDest).removeRecursively(), strDest);
    // Else the next run would write this one's changes to the disk.
    Run(QStringLiteral("sync"), {});
}

static void Print(const char* pszWhat, const std::vector<double>& listEngine,
                  const std::vector<double>& listCp)
{
    const double nEngine = Median(listEngine);
    const double nCp = Median(listCp);
    std::printf("  %-12s engine %9.1f ms   cp -a %9.1f ms   ratio %.2f\n", pszWhat, nEngine, nCp,
                nEngine / nCp);
    std::fflush(stdout);
}

static void Compare(const char* pszWhat, const QString& strFolder, int nFolders, int nFiles, qint64 nSize)
{
    const QTemporaryDir dir(strFolder + QStringLiteral("/bench_copy"));
    Require(dir.isValid(), dir.errorString());
    const QString strSource = dir.filePath(QStringLiteral("source"));
    const QString strDest = dir.filePath(QStringLiteral("copy"));
    MakeTree(strSource, nFolders, nFiles, nSize);

    CNodeTree nodes;
    nodes.Root()->m_chkState = Qt::Checked;
    nodes.AddListed(strSource);

    std::vector<double> listEngineCopied;
    std::vector<double> listEngineOnDisk;
    std::vector<double> listCpCopied;
    std::vector<double> listCpOnDisk;
    for (int nRun = 0; nRun < RUNS; ++nRun) {
        Clean(strDest);
        const STTime stEngine = CopyWithEngine(nodes.Root(), qint64(nFolders) * nFiles * nSize, strDest);
        listEngineCopied.push_back(stEngine.nCopied);
        listEngineOnDisk.push_back(stEngine.nOnDisk);
        Clean(strDest);
        const STTime stCp = CopyWithCp(strSource, strDest);
        listCpCopied.push_back(stCp.nCopied);
        listCpOnDisk.push_back(stCp.nOnDisk);
    }
    std::printf("%s: %d files of %lld bytes\n", pszWhat, nFolders * nFiles, static_cast<long long>(nSize));
    Print("copied", listEngineCopied, listCpCopied);
    Print("on the disk", listEngineOnDisk, listCpOnDisk);
}

static double SleepMicroseconds(bool bLeastSlack)
{
    double nResult = 0;
    const std::unique_ptr<QThread> pThread(QThread::create([&nResult, bLeastSlack] {
        if (bLeastSlack) {
            CCopyPlatform::SetLeastTimerSlack();
        }
        QElapsedTimer timer;
        timer.start();
        for (int nSleep = 0; nSleep < SLEEPS; ++nSleep) {
            QThread::usleep(100);
        }
        nResult = Milliseconds(timer) * 1000 / SLEEPS;
    }));
    pThread->start();
    pThread->wait();
    return nResult;
}

static void CompareSleeps()
{
    std::vector<double> listLeast;
    std::vector<double> listUsual;
    for (int nRun = 0; nRun < RUNS; ++nRun) {
        listLeast.push_back(SleepMicroseconds(true));
        listUsual.push_back(SleepMicroseconds(false));
    }
    const double nLeast = Median(listLeast);
    const double nUsual = Median(listUsual);
    std::printf("sleep of 100 us after a chunk: %.1f us with the least slack, %.1f us without, ratio %.2f\n",
                nLeast, nUsual, nLeast / nUsual);
}

int main(int argc, char* argv[])
{
    const QCoreApplication application(argc, argv);
    CFileNameCodec::Install();
    const QStringList listArgument = QCoreApplication::arguments();
    const QString strFolder = listArgument.value(1, QDir::tempPath());
    CompareSleeps();
    Compare("small files", strFolder, 100, 100, 4096);
    Compare("photos", strFolder, 10, 20, 3 * 1024 * 1024);
    Compare("big files", strFolder, 1, 3, 256 * 1024 * 1024);
    return EXIT_SUCCESS;
}
