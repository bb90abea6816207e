// How what a copy costs grows with the number of files:
//
//     bench_growth [folder]
//
// Files and copies lie below the folder, by default the temporary one; there are ten, a
// hundred and a thousand thousand of them, or no more than TARNWICK_BENCH_FILES says. Every
// fourth has 20 bytes, the others are empty: what is measured is what a file costs, not what
// its bytes do. The table is Markdown.

#include "EngineRun.h"
#include "files/CFileNameCodec.h"
#include "support/CNodeTree.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <cstdio>
#include <cstdlib>
#include <malloc.h>
#include <vector>

static const int LEAST_FILES = 10000;
static const int MOST_FILES = 1000000;
static const int FILES_OF_FOLDER = 100;
static const int RUNS = 3;
static const QByteArray CONTENT(20, 'x');

namespace {

/** What so many files cost. */
struct STCost
{
    double nListMs = 0;
    double nNodeBytes = 0; ///< of one file
    double nCountMs = 0;
    double nTickedMs = 0;
    double nCompleteMs = 0;
    double nCpMs = 0;
    qint64 nTickedMiB = 0;
    qint64 nCompleteMiB = 0;
};

} // namespace

static QString Numbered(const char* pszName, int nNumber)
{
    return QStringLiteral("%1 %2").arg(QLatin1String(pszName)).arg(nNumber, 6, 10, QLatin1Char('0'));
}

/** Returns the bytes of the files. */
static qint64 MakeTree(const QString& strFolder, int nFiles)
{
    qint64 nBytes = 0;
    QString strInner;
    for (int nFile = 0; nFile < nFiles; ++nFile) {
        if (nFile % FILES_OF_FOLDER == 0) {
            const int nInner = nFile / FILES_OF_FOLDER;
            strInner = strFolder + '/' + Numbered("Year", nInner / FILES_OF_FOLDER) + '/'
                + Numbered("Folder", nInner);
            Require(QDir().mkpath(strInner), strInner);
        }
        QFile file(strInner + '/' + Numbered("document", nFile));
        Require(file.open(QIODevice::WriteOnly | QIODevice::Unbuffered), file.fileName());
        nBytes += nFile % 4 == 0 ? file.write(CONTENT) : 0;
    }
    return nBytes;
}

static qint64 HeapBytes()
{
    const struct mallinfo2 info = mallinfo2();
    return qint64(info.uordblks) + qint64(info.hblkhd);
}

/** Copies and takes the copy away again; returns ms and the memory added. */
static double CopyMs(CNodeTree& nodes, qint64 nBytes, int nFiles, const QString& strDest, qint64& nMiB)
{
    double nMs = 0;
    nMiB = qMax(nMiB, AddedMiB([&] {
                    nMs = Milliseconds([&] {
                        const STCopyAccount stAccount = CopyByEngine(nodes.Root(), nBytes, strDest);
                        Require(stAccount.IsWhole() && stAccount.nFiles == nFiles, "a whole copy");
                    });
                }));
    Run("rm", {"-rf", strDest});
    return nMs;
}

static STCost CostOf(const QString& strSource, qint64 nBytes, int nFiles, const QString& strDest)
{
    STCost stCost;
    CNodeTree ticked;
    ticked.Root()->m_chkState = Qt::Checked;
    const qint64 nHeap = HeapBytes();
    stCost.nListMs = Milliseconds([&] { ticked.AddListed(strSource); });
    stCost.nNodeBytes = double(HeapBytes() - nHeap) / nFiles;
    stCost.nTickedMs = CopyMs(ticked, nBytes, nFiles, strDest, stCost.nTickedMiB);
    ticked.Clear();
    malloc_trim(0);

    CNodeTree complete;
    complete.Root()->m_bComplete = true;
    complete.Add(strSource);
    qint64 nCounted = 0;
    stCost.nCountMs = Milliseconds([&] { nCounted = CountByEngine(complete.Root()); });
    Require(nCounted == nBytes, "the count");
    stCost.nCompleteMs = CopyMs(complete, nBytes, nFiles, strDest, stCost.nCompleteMiB);

    stCost.nCpMs = Milliseconds([&] { Run("cp", {"-a", "--", strSource, strDest}); });
    Run("rm", {"-rf", strDest});
    return stCost;
}

template <typename TValue> static TValue MedianOf(const std::vector<STCost>& listCost, TValue STCost::*pValue)
{
    std::vector<double> listValue;
    listValue.reserve(listCost.size());
    for (const STCost& stCost : listCost) {
        listValue.push_back(double(stCost.*pValue));
    }
    return TValue(Median(listValue));
}

static void Print(int nFiles, const std::vector<STCost>& listCost)
{
    const auto fnUs = [&](double STCost::*pMs) { return MedianOf(listCost, pMs) * 1000 / nFiles; };
    std::printf("| %d | %.2f us | %.0f | %.2f us | %.1f us | %lld MiB | %.1f us | %lld MiB | %.1f us |\n",
                nFiles, fnUs(&STCost::nListMs), MedianOf(listCost, &STCost::nNodeBytes),
                fnUs(&STCost::nCountMs), fnUs(&STCost::nTickedMs),
                static_cast<long long>(MedianOf(listCost, &STCost::nTickedMiB)), fnUs(&STCost::nCompleteMs),
                static_cast<long long>(MedianOf(listCost, &STCost::nCompleteMiB)), fnUs(&STCost::nCpMs));
    std::fflush(stdout);
}

int main(int argc, char* argv[])
{
    const QCoreApplication application(argc, argv);
    CFileNameCodec::Install();
    bool bSaid = false;
    const int nSaid = qEnvironmentVariableIntValue("TARNWICK_BENCH_FILES", &bSaid);
    const int nMost = bSaid ? nSaid : MOST_FILES;
    const QTemporaryDir dir(QCoreApplication::arguments().value(1, QDir::tempPath()) + "/bench_growth");
    Require(dir.isValid(), dir.errorString());

    std::printf("Each file costs:\n\n"
                "| Files | listing | bytes of its node and name | counting | copy of what is ticked | memory "
                "that adds "
                "| complete copy | memory that adds | cp -a |\n|---|---|---|---|---|---|---|---|---|\n");
    for (int nFiles = LEAST_FILES; nFiles <= nMost; nFiles *= 10) {
        const QString strSource = dir.filePath("source");
        const qint64 nBytes = MakeTree(strSource, nFiles);
        std::vector<STCost> listCost(nFiles < MOST_FILES ? RUNS : 1);
        for (STCost& stCost : listCost) {
            stCost = CostOf(strSource, nBytes, nFiles, dir.filePath("copy"));
        }
        Print(nFiles, listCost);
        Run("rm", {"-rf", strSource});
    }
    return EXIT_SUCCESS;
}
