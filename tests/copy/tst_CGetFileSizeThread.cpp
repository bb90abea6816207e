#include "copy/CGetFileSizeThread.h"
#include "files/CFileNameCodec.h"
#include "support/CGate.h"
#include "support/CLogCapture.h"
#include "support/CNodeTree.h"
#include "support/CTempTree.h"
#include "support/CVolume.h"
#include "support/LogFile.h"

#include <QSignalSpy>
#include <QStorageInfo>
#include <QtTest>

#include <atomic>
#include <limits>
#include <unistd.h>

namespace {

/** A worker that tells when its run has ended. */
class CWatchedThread : public CGetFileSizeThread
{
public:
    void run() override
    {
        CGetFileSizeThread::run();
        m_ended.Open();
    }

    CGate m_ended;
};

/** A worker that is interrupted before it does one part of its work. */
class CInterruptedThread : public CGetFileSizeThread
{
public:
    /** With a node only the node's files are counted, else the whole run is done. */
    explicit CInterruptedThread(CDirNode* pNode = nullptr)
        : m_pNode(pNode)
    {
    }

    void run() override
    {
        requestInterruption();
        if (m_pNode != nullptr) {
            GetSelFileSize(m_pNode);
        } else {
            CGetFileSizeThread::run();
        }
        m_ended.Open();
    }

    CGate m_ended;

private:
    CDirNode* const m_pNode;
};

} // namespace

class tst_CGetFileSizeThread : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();

    void TickedTopLevelEntryCountsAsItsVolumesCapacity();
    void TickedTopLevelEntryIsNotListed();
    void TickedTopLevelEntryThatIsGoneCountsAsNothing();
    void SelectionInsideATopLevelEntry_data();
    void SelectionInsideATopLevelEntry();
    void UntickedTopLevelEntryAddsNothing();
    void PartlyTickedFolderNeverListedIsListedAndAddsNothing();
    void LinkToAFolderIsWalkedAsAFolder();
    void FileGivenAsNodeAddsNothing();
    void NullNodeWritesItsLine();
    void NoRootGivesZero();
    void EachRunStartsAtZero();
    void HugeFilesDoNotOverflow();
    void RunsOnItsOwnThreadAndAnswersQueued();
    void InterruptedRunAnswersNothing();
    void InterruptedFolderIsLeft();

private:
    static qint64 SizeOf(CNodeTree& nodes);
};

void tst_CGetFileSizeThread::initTestCase() { CFileNameCodec::Install(); }

void tst_CGetFileSizeThread::init() { UseLogFile(); }

qint64 tst_CGetFileSizeThread::SizeOf(CNodeTree& nodes)
{
    CGetFileSizeThread worker;
    worker.SetRootNode(nodes.Root());
    QSignalSpy spy(&worker, &CGetFileSizeThread::SignalGetSizeFinish);
    worker.run();
    return spy.count() == 1 ? spy.at(0).at(0).toLongLong() : -1;
}

void tst_CGetFileSizeThread::TickedTopLevelEntryCountsAsItsVolumesCapacity()
{
    const CVolume volume(QStringLiteral("Capacity"), QStringLiteral("/dev/disk9s1"), 3);
    if (!volume.IsValid()) {
        QSKIP("cannot mount here");
    }
    CTempTree tree;
    tree.Write("f", QByteArray(100, 'x'));
    CNodeTree nodes;
    nodes.Add(volume.Path());
    nodes.Add(tree.Path("f"), Qt::Checked, nodes.Add(tree.Path(), Qt::PartiallyChecked));
    QCOMPARE(SizeOf(nodes), qint64(3 * 1024 * 1024 + 100));
}

void tst_CGetFileSizeThread::TickedTopLevelEntryIsNotListed()
{
    CTempTree tree;
    tree.Write("sub/f", "123");
    CNodeTree nodes;
    CDirNode* pEntry = nodes.Add(tree.Path());
    QCOMPARE(SizeOf(nodes), QStorageInfo(tree.Path()).bytesTotal());
    QVERIFY(pEntry->m_listChild.isEmpty());
}

void tst_CGetFileSizeThread::TickedTopLevelEntryThatIsGoneCountsAsNothing()
{
    CNodeTree nodes;
    nodes.Add(QStringLiteral("/nowhere/at/all"));
    QCOMPARE(SizeOf(nodes), 0);
}

void tst_CGetFileSizeThread::SelectionInsideATopLevelEntry_data()
{
    QTest::addColumn<QStringList>("ticked");
    QTest::addColumn<qint64>("size");
    // a.txt 1, sub/b.txt 20, sub/deep/c.txt 300, other/d.txt 4000, empty/ nothing
    QTest::newRow("nothing") << QStringList{} << qint64(0);
    QTest::newRow("one file") << QStringList{"a.txt"} << qint64(1);
    QTest::newRow("folder never opened, two levels") << QStringList{"sub"} << qint64(320);
    QTest::newRow("empty folder") << QStringList{"empty"} << qint64(0);
    QTest::newRow("file and folder") << QStringList{"a.txt", "other"} << qint64(4001);
    QTest::newRow("everything inside") << QStringList{"a.txt", "sub", "other", "empty"} << qint64(4321);
}

void tst_CGetFileSizeThread::SelectionInsideATopLevelEntry()
{
    QFETCH(QStringList, ticked);
    QFETCH(qint64, size);
    CTempTree tree;
    tree.Write("a.txt", QByteArray(1, 'x'));
    tree.Write("sub/b.txt", QByteArray(20, 'x'));
    tree.Write("sub/deep/c.txt", QByteArray(300, 'x'));
    tree.Write("other/d.txt", QByteArray(4000, 'x'));
    tree.MkDir("empty");
    CNodeTree nodes;
    CDirNode* pEntry = nodes.Add(tree.Path(), Qt::PartiallyChecked);
    for (const QString strName : {"a.txt", "sub", "other", "empty"}) {
        nodes.Add(tree.Path(strName), ticked.contains(strName) ? Qt::Checked : Qt::Unchecked, pEntry);
    }
    QCOMPARE(SizeOf(nodes), size);
}

void tst_CGetFileSizeThread::UntickedTopLevelEntryAddsNothing()
{
    CTempTree tree;
    tree.Write("f", "12345");
    CNodeTree nodes;
    CDirNode* pListed = nodes.Add(tree.Path(), Qt::Unchecked);
    nodes.Add(tree.Path("f"), Qt::Checked, pListed);
    CDirNode* pUnlisted = nodes.Add(tree.Path(), Qt::Unchecked);
    QCOMPARE(SizeOf(nodes), 0);
    QVERIFY(pUnlisted->m_listChild.isEmpty());
}

void tst_CGetFileSizeThread::PartlyTickedFolderNeverListedIsListedAndAddsNothing()
{
    CTempTree tree;
    tree.Write("sub/f", "12345");
    CNodeTree nodes;
    CDirNode* pEntry = nodes.Add(tree.Path("sub"), Qt::PartiallyChecked);
    QCOMPARE(SizeOf(nodes), 0);
    QCOMPARE(pEntry->m_listChild.count(), 1);
    QCOMPARE(pEntry->Child(0)->m_chkState, qint32(Qt::Unchecked));
}

void tst_CGetFileSizeThread::LinkToAFolderIsWalkedAsAFolder()
{
    CTempTree tree;
    CTempTree elsewhere;
    elsewhere.Write("f", QByteArray(77, 'x'));
    tree.Link("link", elsewhere.Path());
    CNodeTree nodes;
    CDirNode* pEntry = nodes.Add(tree.Path(), Qt::PartiallyChecked);
    CDirNode* pLink = nodes.Add(tree.Path("link"), Qt::Checked, pEntry);
    QCOMPARE(SizeOf(nodes), 77);
    QCOMPARE(pLink->m_listChild.count(), 1);
}

void tst_CGetFileSizeThread::FileGivenAsNodeAddsNothing()
{
    CTempTree tree;
    tree.Write("f", "12345");
    CNodeTree nodes;
    CDirNode* pFile = nodes.Add(tree.Path("f"), Qt::PartiallyChecked);
    QCOMPARE(SizeOf(nodes), 0);
    QVERIFY(pFile->m_listChild.isEmpty());
}

void tst_CGetFileSizeThread::NullNodeWritesItsLine()
{
    const QString strLine = QStringLiteral("FFFFFFFFFFFFFFaile dirNode == nullptr");
    CGetFileSizeThread worker;
    const CLogCapture capture;
    worker.GetSelFileSize(nullptr);
    QCOMPARE(capture.Lines(), QStringList{strLine});
    QCOMPARE(LogLines(), QStringList());
}

void tst_CGetFileSizeThread::NoRootGivesZero()
{
    CGetFileSizeThread worker;
    QSignalSpy spy(&worker, &CGetFileSizeThread::SignalGetSizeFinish);
    worker.run();
    QCOMPARE(spy.count(), 1);
    QCOMPARE(spy.at(0).at(0).toLongLong(), 0);
}

void tst_CGetFileSizeThread::EachRunStartsAtZero()
{
    CTempTree tree;
    tree.Write("f", "12345");
    CNodeTree nodes;
    nodes.Add(tree.Path("f"), Qt::Checked, nodes.Add(tree.Path(), Qt::PartiallyChecked));
    CGetFileSizeThread worker;
    worker.SetRootNode(nodes.Root());
    QSignalSpy spy(&worker, &CGetFileSizeThread::SignalGetSizeFinish);
    worker.run();
    worker.run();
    QCOMPARE(spy.count(), 2);
    QCOMPARE(spy.at(1).at(0).toLongLong(), 5);
}

void tst_CGetFileSizeThread::HugeFilesDoNotOverflow()
{
    const CVolume volume(QStringLiteral("Huge"), QStringLiteral("/dev/disk9s2"), 1);
    if (!volume.IsValid()) {
        QSKIP("cannot mount here");
    }
    // Files of nothing but a hole, each nearly as large as a file can be.
    const off_t nSize = std::numeric_limits<off_t>::max() - 4096;
    CNodeTree nodes;
    CDirNode* pEntry = nodes.Add(volume.Path(), Qt::PartiallyChecked);
    for (const QString strName : {"a", "b"}) {
        QFile file(volume.Path(strName));
        QVERIFY(file.open(QIODevice::WriteOnly));
        QCOMPARE(ftruncate(file.handle(), nSize), 0);
        nodes.Add(file.fileName(), Qt::Checked, pEntry);
    }
    QCOMPARE(SizeOf(nodes), std::numeric_limits<qint64>::max());
}

void tst_CGetFileSizeThread::RunsOnItsOwnThreadAndAnswersQueued()
{
    CTempTree tree;
    tree.Write("sub/f", "12345");
    CNodeTree nodes;
    nodes.Add(tree.Path("sub"), Qt::Checked, nodes.Add(tree.Path(), Qt::PartiallyChecked));
    CWatchedThread worker;
    worker.SetRootNode(nodes.Root());
    std::atomic<QThread*> pEmitter{nullptr};
    connect(
        &worker, &CGetFileSizeThread::SignalGetSizeFinish, &worker,
        [&pEmitter] { pEmitter = QThread::currentThread(); }, Qt::DirectConnection);
    QThread* pReceiver = nullptr;
    qint64 nSize = -1;
    connect(&worker, &CGetFileSizeThread::SignalGetSizeFinish, &worker, [&](qint64 nBytes) {
        pReceiver = QThread::currentThread();
        nSize = nBytes;
    });
    worker.start();
    QVERIFY(worker.m_ended.Pass(10000));
    QVERIFY(worker.wait(10000));
    QCOMPARE(nSize, -1);
    QTRY_COMPARE(nSize, 5);
    QCOMPARE(pEmitter.load(), static_cast<QThread*>(&worker));
    QCOMPARE(pReceiver, QThread::currentThread());
}

void tst_CGetFileSizeThread::InterruptedRunAnswersNothing()
{
    CTempTree tree;
    tree.Write("sub/f", "12345");
    CNodeTree nodes;
    CDirNode* pEntry = nodes.Add(tree.Path(), Qt::PartiallyChecked);
    CDirNode* pSub = nodes.Add(tree.Path("sub"), Qt::Checked, pEntry);
    CInterruptedThread worker;
    worker.SetRootNode(nodes.Root());
    std::atomic<int> nAnswers{0};
    connect(
        &worker, &CGetFileSizeThread::SignalGetSizeFinish, &worker, [&nAnswers] { ++nAnswers; },
        Qt::DirectConnection);
    worker.start();
    QVERIFY(worker.m_ended.Pass(10000));
    QVERIFY(worker.wait(10000));
    QCOMPARE(nAnswers.load(), 0);
    QVERIFY(pSub->m_listChild.isEmpty());
}

void tst_CGetFileSizeThread::InterruptedFolderIsLeft()
{
    CTempTree tree;
    tree.Write("sub/f", "12345");
    CNodeTree nodes;
    CDirNode* pEntry = nodes.Add(tree.Path(), Qt::PartiallyChecked);
    CDirNode* pSub = nodes.Add(tree.Path("sub"), Qt::Checked, pEntry);
    CInterruptedThread worker(pEntry);
    worker.start();
    QVERIFY(worker.m_ended.Pass(10000));
    QVERIFY(worker.wait(10000));
    QVERIFY2(pSub->m_listChild.isEmpty(), "listed although it was told to end");
}

QTEST_GUILESS_MAIN(tst_CGetFileSizeThread)
#include "tst_CGetFileSizeThread.moc"
