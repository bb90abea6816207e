#include "copy/CGetFileSizeThread.h"
#include "files/CFileNameCodec.h"
#include "support/CGate.h"
#include "support/CLogCapture.h"
#include "support/CNodeTree.h"
#include "support/CTempTree.h"
#include "support/CVolume.h"
#include "support/LogFile.h"

#include <QStorageInfo>
#include <QtTest>

#include <limits>
#include <memory>
#include <unistd.h>

namespace {

/** A worker that can be interrupted before it begins, and keeps what it answers. */
class CWatchedThread : public CGetFileSizeThread
{
public:
    CWatchedThread()
    {
        connect(
            this, &CGetFileSizeThread::SignalGetSizeFinish, this,
            [this](qint64 nSize) {
                m_listAnswer.append(nSize);
                m_pEmitter = QThread::currentThread();
            },
            Qt::DirectConnection);
    }

    void run() override
    {
        if (m_bInterrupted) {
            requestInterruption();
        }
        if (m_pFolder != nullptr) {
            GetSelFileSize(m_pFolder);
        } else {
            CGetFileSizeThread::run();
        }
        m_ended.Open();
    }

    /** Runs on a thread of its own and waits for the end. */
    bool RunAside()
    {
        start();
        return m_ended.Pass(10000) && wait(10000);
    }

    bool m_bInterrupted = false;
    CDirNode* m_pFolder = nullptr; // what alone is counted; everything when null
    QVector<qint64> m_listAnswer;
    QThread* m_pEmitter = nullptr;

private:
    CGate m_ended;
};

} // namespace

class tst_CGetFileSizeThread : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { CFileNameCodec::Install(); }
    void init();

    void tickedTopLevelEntryCountsAsItsVolumesCapacity();
    void tickedTopLevelEntryIsNotListed();
    void tickedTopLevelEntryThatIsGoneCountsAsNothing();
    void selectionInsideATopLevelEntry_data();
    void selectionInsideATopLevelEntry();
    void untickedTopLevelEntryAddsNothing();
    void partlyTickedFolderNeverListedIsListedAndAddsNothing();
    void linkToAFolderIsWalkedAsAFolder();
    void fileGivenAsNodeAddsNothing();
    void nullNodeWritesItsLine();
    void noRootGivesZero();
    void eachRunStartsAtZero();
    void hugeFilesDoNotOverflow();
    void runsOnItsOwnThreadAndAnswersQueued();
    void everythingIsCountedOnTheDisk_data();
    void everythingIsCountedOnTheDisk();
    void everythingTakesRoomInBlocks_data();
    void everythingTakesRoomInBlocks();
    void fileThatTheDiskCannotHoldIsInNoSum();
    void everythingDoesNotOverflow();
    void roomIsTheSizeWithoutTheChoice();
    void everythingTellsWhichEntryItIsAt();
    void interruptedRunAnswersNothing_data();
    void interruptedRunAnswersNothing();

private:
    /** What a run on this thread answers; -1 when it does not answer once. */
    qint64 Size();

    std::unique_ptr<CTempTree> m_pTree;
    std::unique_ptr<CNodeTree> m_pNodes;
    std::unique_ptr<CWatchedThread> m_pWorker;
};

void tst_CGetFileSizeThread::init()
{
    UseLogFile();
    m_pTree = std::make_unique<CTempTree>();
    m_pNodes = std::make_unique<CNodeTree>();
    m_pWorker = std::make_unique<CWatchedThread>();
    m_pWorker->SetRootNode(m_pNodes->Root());
}

qint64 tst_CGetFileSizeThread::Size()
{
    m_pWorker->m_listAnswer.clear();
    m_pWorker->run();
    return m_pWorker->m_listAnswer.count() == 1 ? m_pWorker->m_listAnswer.at(0) : -1;
}

void tst_CGetFileSizeThread::tickedTopLevelEntryCountsAsItsVolumesCapacity()
{
    NEEDS_VOLUMES();
    const CVolume volume("Capacity", "/dev/disk9s1", 3);
    m_pNodes->Add(volume.Path());
    CDirNode* pEntry = m_pNodes->Add(m_pTree->Path(), Qt::PartiallyChecked);
    m_pNodes->Add(m_pTree->Write("f", QByteArray(100, 'x')), Qt::Checked, pEntry);
    QCOMPARE(Size(), qint64(3 * 1024 * 1024 + 100));
}

void tst_CGetFileSizeThread::tickedTopLevelEntryIsNotListed()
{
    m_pTree->Write("sub/f", "123");
    CDirNode* pEntry = m_pNodes->Add(m_pTree->Path());
    QCOMPARE(Size(), QStorageInfo(m_pTree->Path()).bytesTotal());
    QVERIFY(pEntry->m_listChild.isEmpty());
}

void tst_CGetFileSizeThread::tickedTopLevelEntryThatIsGoneCountsAsNothing()
{
    m_pNodes->Add("/nowhere/at/all");
    QCOMPARE(Size(), 0);
}

void tst_CGetFileSizeThread::selectionInsideATopLevelEntry_data()
{
    QTest::addColumn<QStringList>("listTicked");
    QTest::addColumn<qint64>("nSize");
    // a.txt 1, sub/b.txt 20, sub/deep/c.txt 300, other/d.txt 4000, empty/ nothing
    QTest::newRow("nothing") << QStringList{} << qint64(0);
    QTest::newRow("one file") << QStringList{"a.txt"} << qint64(1);
    QTest::newRow("folder never opened, two levels") << QStringList{"sub"} << qint64(320);
    QTest::newRow("empty folder") << QStringList{"empty"} << qint64(0);
    QTest::newRow("file and folder") << QStringList{"a.txt", "other"} << qint64(4001);
    QTest::newRow("everything inside") << QStringList{"a.txt", "sub", "other", "empty"} << qint64(4321);
}

void tst_CGetFileSizeThread::selectionInsideATopLevelEntry()
{
    QFETCH(QStringList, listTicked);
    m_pTree->Write("a.txt", QByteArray(1, 'x'));
    m_pTree->Write("sub/b.txt", QByteArray(20, 'x'));
    m_pTree->Write("sub/deep/c.txt", QByteArray(300, 'x'));
    m_pTree->Write("other/d.txt", QByteArray(4000, 'x'));
    m_pTree->MkDir("empty");
    CDirNode* pEntry = m_pNodes->Add(m_pTree->Path(), Qt::PartiallyChecked);
    for (const QString strName : {"a.txt", "sub", "other", "empty"}) {
        const Qt::CheckState enState = listTicked.contains(strName) ? Qt::Checked : Qt::Unchecked;
        m_pNodes->Add(m_pTree->Path(strName), enState, pEntry);
    }
    QTEST(Size(), "nSize");
}

void tst_CGetFileSizeThread::untickedTopLevelEntryAddsNothing()
{
    CDirNode* pListed = m_pNodes->Add(m_pTree->Path(), Qt::Unchecked);
    m_pNodes->Add(m_pTree->Write("f", "12345"), Qt::Checked, pListed);
    CDirNode* pUnlisted = m_pNodes->Add(m_pTree->Path(), Qt::Unchecked);
    QCOMPARE(Size(), 0);
    QVERIFY(pUnlisted->m_listChild.isEmpty());
}

void tst_CGetFileSizeThread::partlyTickedFolderNeverListedIsListedAndAddsNothing()
{
    m_pTree->Write("sub/f", "12345");
    CDirNode* pEntry = m_pNodes->Add(m_pTree->Path("sub"), Qt::PartiallyChecked);
    QCOMPARE(Size(), 0);
    QCOMPARE(pEntry->m_listChild.count(), 1);
    QCOMPARE(pEntry->Child(0)->m_chkState, qint32(Qt::Unchecked));
}

void tst_CGetFileSizeThread::linkToAFolderIsWalkedAsAFolder()
{
    CTempTree elsewhere;
    elsewhere.Write("f", QByteArray(77, 'x'));
    CDirNode* pEntry = m_pNodes->Add(m_pTree->Path(), Qt::PartiallyChecked);
    CDirNode* pLink = m_pNodes->Add(m_pTree->Link("link", elsewhere.Path()), Qt::Checked, pEntry);
    QCOMPARE(Size(), 77);
    QCOMPARE(pLink->m_listChild.count(), 1);
}

void tst_CGetFileSizeThread::fileGivenAsNodeAddsNothing()
{
    CDirNode* pFile = m_pNodes->Add(m_pTree->Write("f", "12345"), Qt::PartiallyChecked);
    QCOMPARE(Size(), 0);
    QVERIFY(pFile->m_listChild.isEmpty());
}

void tst_CGetFileSizeThread::nullNodeWritesItsLine()
{
    const CLogCapture capture;
    m_pWorker->GetSelFileSize(nullptr);
    QCOMPARE(capture.Lines(), QStringList{"FFFFFFFFFFFFFFaile dirNode == nullptr"});
    QCOMPARE(LogLines(), QStringList());
}

void tst_CGetFileSizeThread::noRootGivesZero()
{
    m_pWorker->SetRootNode(nullptr);
    QCOMPARE(Size(), 0);
}

void tst_CGetFileSizeThread::eachRunStartsAtZero()
{
    CDirNode* pEntry = m_pNodes->Add(m_pTree->Path(), Qt::PartiallyChecked);
    m_pNodes->Add(m_pTree->Write("f", "12345"), Qt::Checked, pEntry);
    QCOMPARE(Size(), 5);
    QCOMPARE(Size(), 5);
}

void tst_CGetFileSizeThread::hugeFilesDoNotOverflow()
{
    NEEDS_VOLUMES();
    const CVolume volume("Huge", "/dev/disk9s2", 1);
    // Files of nothing but a hole, each nearly as large as a file can be.
    const off_t nSize = std::numeric_limits<off_t>::max() - 4096;
    CDirNode* pEntry = m_pNodes->Add(volume.Path(), Qt::PartiallyChecked);
    for (const QString strName : {"a", "b"}) {
        QFile file(volume.Path(strName));
        QVERIFY(file.open(QIODevice::WriteOnly));
        QCOMPARE(ftruncate(file.handle(), nSize), 0);
        m_pNodes->Add(file.fileName(), Qt::Checked, pEntry);
    }
    QCOMPARE(Size(), std::numeric_limits<qint64>::max());
}

void tst_CGetFileSizeThread::runsOnItsOwnThreadAndAnswersQueued()
{
    m_pTree->Write("sub/f", "12345");
    CDirNode* pEntry = m_pNodes->Add(m_pTree->Path(), Qt::PartiallyChecked);
    m_pNodes->Add(m_pTree->Path("sub"), Qt::Checked, pEntry);
    QThread* pReceiver = nullptr;
    qint64 nSize = -1;
    connect(m_pWorker.get(), &CGetFileSizeThread::SignalGetSizeFinish, this, [&](qint64 nBytes) {
        pReceiver = QThread::currentThread();
        nSize = nBytes;
    });
    QVERIFY(m_pWorker->RunAside());
    QCOMPARE(nSize, -1);
    QTRY_COMPARE(nSize, 5);
    QCOMPARE(m_pWorker->m_pEmitter, static_cast<QThread*>(m_pWorker.get()));
    QCOMPARE(pReceiver, QThread::currentThread());
}

void tst_CGetFileSizeThread::everythingIsCountedOnTheDisk_data()
{
    QTest::addColumn<QStringList>("listTicked");
    QTest::addColumn<qint64>("nSize");
    QTest::newRow("nothing") << QStringList{} << qint64(0);
    QTest::newRow("all of it") << QStringList{""} << qint64(1234);
    QTest::newRow("folder that the tree leaves out") << QStringList{"home"} << qint64(34);
    QTest::newRow("file") << QStringList{"a.txt"} << qint64(1000);
    QTest::newRow("file and folder") << QStringList{"a.txt", "home/deep"} << qint64(1004);
    QTest::newRow("what is gone") << QStringList{"a.txt", "gone"} << qint64(1000);
}

void tst_CGetFileSizeThread::everythingIsCountedOnTheDisk()
{
    QFETCH(QStringList, listTicked);
    m_pTree->Write("a.txt", QByteArray(1000, 'x'));
    m_pTree->Write("dev/b.txt", QByteArray(200, 'x'));
    m_pTree->Write("home/.hidden", QByteArray(30, 'x'));
    m_pTree->Write("home/deep/c.txt", QByteArray(4, 'x'));
    m_pTree->Link("home/again", "deep");
    m_pNodes->Root()->m_bComplete = true;
    const bool bAll = listTicked.contains("");
    CDirNode* pEntry = m_pNodes->Add(m_pTree->Path(), bAll ? Qt::Checked : Qt::PartiallyChecked);
    for (const QString& strName : qAsConst(listTicked)) {
        if (!bAll) {
            m_pNodes->Add(m_pTree->Path(strName), Qt::Checked, pEntry);
        }
    }
    const int nNodes = pEntry->m_listChild.count();
    QTEST(Size(), "nSize");
    QCOMPARE(pEntry->m_listChild.count(), nNodes);
}

void tst_CGetFileSizeThread::everythingTakesRoomInBlocks_data()
{
    QTest::addColumn<qint64>("nBlock");
    QTest::addColumn<qint64>("nRoom");
    QTest::newRow("blocks unknown") << qint64(1) << qint64(4096 + 1 + 3);
    QTest::newRow("4 KiB") << qint64(4096) << qint64((1 + 1 + 0 + 3) * 4096);
    QTest::newRow("larger than any file") << qint64(131072) << qint64((1 + 1 + 0 + 3) * 131072);
}

void tst_CGetFileSizeThread::everythingTakesRoomInBlocks()
{
    QFETCH(qint64, nBlock);
    m_pTree->Write("whole block", QByteArray(4096, 'x'));
    m_pTree->Write("sub/one byte", "1");
    m_pTree->Write("sub/nothing");
    m_pTree->Link("link", "sub");
    m_pNodes->Root()->m_bComplete = true;
    m_pNodes->Add(m_pTree->Path());
    STDiskRules stRules;
    stRules.nBlockBytes = nBlock;
    m_pWorker->SetDiskRules(stRules);
    QCOMPARE(Size(), 4097);
    QTEST(m_pWorker->RoomNeeded(), "nRoom");
}

void tst_CGetFileSizeThread::fileThatTheDiskCannotHoldIsInNoSum()
{
    m_pTree->Write("too large", QByteArray(4097, 'x'));
    m_pTree->Write("just not", QByteArray(4096, 'x'));
    m_pNodes->Root()->m_bComplete = true;
    m_pNodes->Add(m_pTree->Path());
    STDiskRules stRules;
    stRules.nMostFileBytes = 4096;
    m_pWorker->SetDiskRules(stRules);
    QCOMPARE(Size(), 4096);
    QCOMPARE(m_pWorker->RoomNeeded(), 4097);
    QCOMPARE(m_pWorker->TooLarge(), 1);
    m_pNodes->Root()->m_bComplete = false;
    Size();
    QCOMPARE(m_pWorker->TooLarge(), 0);
}

void tst_CGetFileSizeThread::everythingDoesNotOverflow()
{
    NEEDS_VOLUMES();
    const CVolume volume("Huge", "/dev/disk9s3", 1);
    const off_t nSize = std::numeric_limits<off_t>::max() - 4096;
    for (const QString strName : {"a", "b"}) {
        QFile file(volume.Path(strName));
        QVERIFY(file.open(QIODevice::WriteOnly));
        QCOMPARE(ftruncate(file.handle(), nSize), 0);
    }
    m_pNodes->Root()->m_bComplete = true;
    m_pNodes->Add(volume.Path());
    STDiskRules stRules;
    stRules.nBlockBytes = 65536;
    m_pWorker->SetDiskRules(stRules);
    QCOMPARE(Size(), std::numeric_limits<qint64>::max());
    QCOMPARE(m_pWorker->RoomNeeded(), std::numeric_limits<qint64>::max());
}

void tst_CGetFileSizeThread::roomIsTheSizeWithoutTheChoice()
{
    CDirNode* pEntry = m_pNodes->Add(m_pTree->Path(), Qt::PartiallyChecked);
    m_pNodes->Add(m_pTree->Write("f", "12345"), Qt::Checked, pEntry);
    STDiskRules stRules;
    stRules.nBlockBytes = 4096;
    stRules.nMostFileBytes = 1;
    m_pWorker->SetDiskRules(stRules);
    m_pNodes->Root()->m_bComplete = true;
    QCOMPARE(Size(), 0);
    QCOMPARE(m_pWorker->RoomNeeded(), 0);
    m_pNodes->Root()->m_bComplete = false;
    QCOMPARE(Size(), 5);
    QCOMPARE(m_pWorker->RoomNeeded(), 5);
    QCOMPARE(m_pWorker->TooLarge(), 0);
}

void tst_CGetFileSizeThread::everythingTellsWhichEntryItIsAt()
{
    m_pTree->MkDir("one");
    m_pTree->MkDir("two");
    m_pNodes->Root()->m_bComplete = true;
    m_pNodes->Add(m_pTree->Path("one"));
    CDirNode* pEntry = m_pNodes->Add(m_pTree->Path("two"), Qt::PartiallyChecked);
    QCOMPARE(Size(), 0);
    QCOMPARE(m_pWorker->CurrentEntry(), "one");
    m_pNodes->Add(m_pTree->Write("two/f", "123"), Qt::Checked, pEntry);
    QCOMPARE(Size(), 3);
    QCOMPARE(m_pWorker->CurrentEntry(), "two");
}

void tst_CGetFileSizeThread::interruptedRunAnswersNothing_data()
{
    QTest::addColumn<bool>("bOneFolder");
    QTest::newRow("at the top") << false;
    QTest::newRow("inside a folder") << true;
}

void tst_CGetFileSizeThread::interruptedRunAnswersNothing()
{
    QFETCH(bool, bOneFolder);
    m_pTree->Write("sub/f", "12345");
    CDirNode* pEntry = m_pNodes->Add(m_pTree->Path(), Qt::PartiallyChecked);
    CDirNode* pSub = m_pNodes->Add(m_pTree->Path("sub"), Qt::Checked, pEntry);
    m_pWorker->m_bInterrupted = true;
    m_pWorker->m_pFolder = bOneFolder ? pEntry : nullptr;
    QVERIFY(m_pWorker->RunAside());
    QCOMPARE(m_pWorker->m_listAnswer.count(), 0);
    QVERIFY2(pSub->m_listChild.isEmpty(), "listed although it was told to end");
}

QTEST_GUILESS_MAIN(tst_CGetFileSizeThread)
#include "tst_CGetFileSizeThread.moc"
