// What the source tree costs, beside "du -s" of the same warm folders:
//
//     bench_tree [folders [files in each]]
//
// The folders are made in a temporary place. Every time is the median of five.

#include "Measure.h"
#include "copy/CGetFileSizeThread.h"
#include "files/CFileNameCodec.h"
#include "support/CNodeTree.h"
#include "tree/CDirModel.h"
#include "tree/CDirNode.h"
#include "tree/CFileTreeView.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <cstdio>
#include <cstdlib>
#include <malloc.h>
#include <vector>

static const int RUNS = 5;

static void MakeTree(const QString& strFolder, int nFolders, int nFiles)
{
    for (int i = 0; i < nFolders; ++i) {
        const QString strInner
            = QStringLiteral("%1/Folder %2").arg(strFolder).arg(i, 5, 10, QLatin1Char('0'));
        QDir().mkpath(strInner);
        for (int j = 0; j < nFiles; ++j) {
            QFile file(QStringLiteral("%1/document %2.txt").arg(strInner).arg(j, 4, 10, QLatin1Char('0')));
            if (!file.open(QIODevice::WriteOnly) || file.write("x", j % 2) < 0) {
                std::fprintf(stderr, "cannot write %s\n", qPrintable(file.fileName()));
                std::exit(EXIT_FAILURE);
            }
        }
    }
}

/** Adds a partially ticked volume that holds one ticked folder, not listed yet. */
static void AddVolume(CNodeTree& nodes, const QString& strVolume)
{
    CDirNode* pVolume = nodes.Add(strVolume, Qt::PartiallyChecked);
    pVolume->LoadChild();
    pVolume->Child(0)->m_chkState = Qt::Checked;
}

static qint64 HeapBytes()
{
    const struct mallinfo2 info = mallinfo2();
    return qint64(info.uordblks) + qint64(info.hblkhd);
}

static double SizeTime(const QString& strVolume)
{
    CNodeTree nodes;
    AddVolume(nodes, strVolume);
    CGetFileSizeThread thread;
    thread.SetRootNode(nodes.Root());
    return Milliseconds([&thread] {
        thread.start();
        thread.wait();
    });
}

static void PrintSizeAgainstDu(const QString& strVolume)
{
    std::vector<double> listDu;
    std::vector<double> listSize;
    Run(QStringLiteral("du"), {QStringLiteral("-s"), strVolume});
    for (int i = 0; i < RUNS; ++i) {
        listDu.push_back(Milliseconds([&strVolume] {
            Run(QStringLiteral("du"), {QStringLiteral("-s"), strVolume});
        }));
        listSize.push_back(SizeTime(strVolume));
    }
    std::printf("du -s:                     %8.1f ms\n", Median(listDu));
    std::printf("list and size, unlisted:   %8.1f ms\n", Median(listSize));
    std::printf("ratio to du -s:            %8.2f   (at most 3)\n", Median(listSize) / Median(listDu));
}

static void PrintMemory(const QString& strVolume)
{
    const qint64 nBefore = HeapBytes();
    CNodeTree nodes;
    AddVolume(nodes, strVolume);
    CGetFileSizeThread thread;
    thread.SetRootNode(nodes.Root());
    thread.run();
    const qint64 nBytes = HeapBytes() - nBefore;
    qint64 nNodes = 0;
    qint64 nNameBytes = 0;
    CNodeTree::Walk(nodes.Root(), [&nNodes, &nNameBytes](const CDirNode* pNode) {
        ++nNodes;
        nNameBytes += 2 * pNode->m_strName.size();
    });
    std::printf("nodes:                     %8lld\n", static_cast<long long>(nNodes));
    std::printf("bytes a node, all in all:  %8.1f\n", double(nBytes) / double(nNodes));
    std::printf("bytes beyond the name:     %8.1f   (at most 200)\n",
                double(nBytes - nNameBytes) / double(nNodes));
}

static void LoadAll(CDirModel& model, const QModelIndex& parent)
{
    model.LoadChild(parent);
    for (int i = 0; i < model.rowCount(parent); ++i) {
        const QModelIndex index = model.index(i, 0, parent);
        if (model.nodeFromIndex(index)->m_bDir) {
            LoadAll(model, index);
        }
    }
}

static void PrintTicking(const QString& strVolume)
{
    CFileTreeView view;
    view.resize(600, 700);
    view.Parse({strVolume});
    view.show();
    CDirModel& model = *CDirModel::GetInstence();
    const QModelIndex volume = model.index(0, 0);
    const double rList = Milliseconds([&] { LoadAll(model, volume); });
    view.expand(volume);
    view.expand(model.index(0, 0, volume));
    QApplication::processEvents();
    std::vector<double> listTick;
    for (int i = 0; i < RUNS; ++i) {
        listTick.push_back(Milliseconds([&] {
            const int nState = model.HasCheckedEntry() ? Qt::Unchecked : Qt::Checked;
            model.setData(model.index(0, 0, volume), nState, Qt::CheckStateRole);
            QApplication::processEvents();
        }));
    }
    std::printf("list all through the model:%8.1f ms\n", rList);
    std::printf("tick all, view open:       %8.1f ms\n", Median(listTick));
}

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    CFileNameCodec::Install();
    const int nFolders = argc > 1 ? std::atoi(argv[1]) : 2000;
    const int nFiles = argc > 2 ? std::atoi(argv[2]) : 100;
    const QTemporaryDir dir;
    MakeTree(dir.filePath(QStringLiteral("Ticked")), nFolders, nFiles);
    PrintSizeAgainstDu(dir.path());
    PrintMemory(dir.path());
    PrintTicking(dir.path());
    return EXIT_SUCCESS;
}
