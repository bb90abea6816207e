#include "copy/CCopyPlatform.h"
#include "macos/CFakeFiles.h"
#include "support/CCopyBed.h"

#include <QDir>

#include <atomic>
#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>

static const qint64 MIB = 1024 * 1024;
static const int BATCH = 32; // small files that wait at most

/** The whole copy, by macOS's calls: what is on the disk at its end, and what it says of that. */
class tst_MacFlushedCopy : public CCopyBed
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void fileIsFlushedWithItsTimesBeforeItIsClosed();
    void smallFilesAreFlushedTogether();
    void fewFilesAreHeldOpen();
    void emptyFileNeedsNoFlush();
    void bigFileThatIsNotOnTheDiskIsNamed();
    void earlierFailureOfABigFileCounts();
    void smallFileThatIsNotOnTheDiskIsNamed_data();
    void smallFileThatIsNotOnTheDiskIsNamed();
    void filesOfADiskThatWasPulledOutAreNamed();
    void interruptedFlushIsDoneAgain();
    void lastFlushIsOfTheDestination();
    void flushThatNoFileHasIsNoTrouble();
    void bigFileThatFoundNoRoomBeginsAnew();
    void stoppedCopyFlushesWhatIsWhole();
    void volumeIsFlushedAtTheEnd();
    void volumeThatFailsIsTold_data();
    void volumeThatFailsIsTold();
    void volumeWithoutSuchAFlush();
    void remoteVolumeIsLeftAlone();
    void copyLeftBehindFlushesItsSmallFiles_data();
    void copyLeftBehindFlushesItsSmallFiles();
    void copyLeftBehindInAFlushIsNotOnTheDisk();

private:
    QStringList Flushed(const QStringList& listCall) const;
    QStringList OpenCopies() const;
    void AddSmall(int nFiles);
};

void tst_MacFlushedCopy::init()
{
    CFakeFiles::Reset();
    Make();
}

void tst_MacFlushedCopy::cleanup()
{
    CFakeFiles::Watch(nullptr);
    Clear();
    CFakeFiles::Reset();
}

/** Names of the copies that were flushed, in order. */
QStringList tst_MacFlushedCopy::Flushed(const QStringList& listCall) const
{
    const QString strStart = "fsync " + Copy(QString());
    QStringList listName;
    for (const QString& strCall : listCall) {
        if (strCall.startsWith(strStart)) {
            listName.append(strCall.mid(strStart.size()));
        }
    }
    return listName;
}

/** What of the copy this process has open. */
QStringList tst_MacFlushedCopy::OpenCopies() const
{
    QStringList listPath;
    const QDir dir("/proc/self/fd");
    for (const QString& strEntry : dir.entryList(QDir::Files | QDir::System)) {
        const QString strPath = QFile::symLinkTarget(dir.filePath(strEntry));
        if (strPath.startsWith(m_strDest + '/')) {
            listPath.append(strPath);
        }
    }
    return listPath;
}

void tst_MacFlushedCopy::AddSmall(int nFiles)
{
    for (int nFile = 1; nFile <= nFiles; ++nFile) {
        Add(QString("small %1").arg(nFile), Pattern(1000));
    }
}

void tst_MacFlushedCopy::fileIsFlushedWithItsTimesBeforeItIsClosed()
{
    Add("big", Pattern(3 * MIB));
    const timespec listTime[2] = {{1000000000, 0}, {1100000000, 0}};
    QCOMPARE(utimensat(AT_FDCWD, QFile::encodeName(Source("big")).constData(), listTime, 0), 0);
    QStringList listState;
    CFakeFiles::Watch([&](const QString& strCall) {
        if (strCall == "fsync " + Copy("big")) {
            const STFileState stState = CCopyPlatform::GetEntryState(Copy("big")).value_or(STFileState());
            listState.append(QString("%1 bytes of %2, %3 open")
                                 .arg(stState.nSize)
                                 .arg(stState.nModifiedSec)
                                 .arg(OpenCopies().size()));
        }
    });
    Run(3 * MIB);
    QVERIFY(!listState.isEmpty());
    QCOMPARE(listState.last(), QString("%1 bytes of 1100000000, 1 open").arg(3 * MIB));
    QCOMPARE(Account().nFiles, 1);
    QVERIFY(Account().IsWhole());
}

void tst_MacFlushedCopy::smallFilesAreFlushedTogether()
{
    AddSmall(2 * BATCH);
    QVector<qint64> listDone; // files that were done at each flush
    CFakeFiles::Watch([&](const QString& strCall) {
        if (strCall.startsWith("fsync ")) {
            listDone.append(m_pWorker->FilesDone());
        }
    });
    Run(2 * BATCH * 1000);
    QStringList listName;
    for (int nFile = 1; nFile <= 2 * BATCH; ++nFile) {
        listName.append(QString("small %1").arg(nFile));
    }
    QCOMPARE(Flushed(CFakeFiles::TakeCalls()), listName);
    QVector<qint64> listExpected(BATCH + 1, BATCH); // with the one that found no place among them
    listExpected += QVector<qint64>(BATCH - 1, 2 * BATCH);
    QCOMPARE(listDone, listExpected);
    QCOMPARE(Account().nFiles, 2 * BATCH);
    QVERIFY(Account().IsWhole());
}

void tst_MacFlushedCopy::fewFilesAreHeldOpen()
{
    for (int nFile = 0; nFile < 300; ++nFile) {
        Add(QString("file %1").arg(nFile), Pattern(nFile % 7 == 0 ? MIB + 1000 : 1000));
    }
    int nMost = 0;
    AfterEachChunk([&] { nMost = qMax(nMost, OpenCopies().size()); });
    Run(300 * 1000 + 43 * MIB);
    QVERIFY2(nMost <= BATCH + 1, qPrintable(QString::number(nMost)));
    QVERIFY(nMost > 1);
    QCOMPARE(OpenCopies(), QStringList());
    QCOMPARE(Account().nFiles, 300);
}

void tst_MacFlushedCopy::emptyFileNeedsNoFlush()
{
    Add("empty");
    Run();
    QCOMPARE(Flushed(CFakeFiles::TakeCalls()), QStringList());
    QVERIFY(Account().IsWhole());
}

void tst_MacFlushedCopy::bigFileThatIsNotOnTheDiskIsNamed()
{
    Add("big", Pattern(MIB + 1));
    Add("other", Pattern(MIB + 2));
    CFakeFiles::Fail("fsync", "/big", EIO);
    Run(2 * MIB + 3);
    QCOMPARE(Problems(),
             QStringList("big: its target cannot be brought to the disk: Input/output error "
                         "(1048577 of 1048577 bytes copied)"));
    const STCopyAccount stAccount = Account();
    QCOMPARE(stAccount.nFiles, 1);
    QCOMPARE(stAccount.nProblems, 1);
    QCOMPARE(stAccount.listItem.first().enProblem, ENCopyProblem::TARGET_CLOSE);
    QCOMPARE(stAccount.listItem.first().nError, EIO);
    QCOMPARE(stAccount.enFlush, ENCopyFlush::DONE); // all the rest
    QVERIFY(!stAccount.IsWhole());
    const QStringList listLine = ReportLines().filter("The disk did not take all of it.");
    QCOMPARE(listLine.size(), 1);
    QVERIFY2(listLine.first().contains(Source("big")), qPrintable(listLine.first()));
}

/** A disk that has gone tells it once, and what it was to write is forgotten. */
void tst_MacFlushedCopy::earlierFailureOfABigFileCounts()
{
    Add("big", Pattern(3 * MIB));
    int nFlushes = 0;
    CFakeFiles::Fail("fsync", "/big", ENXIO);
    CFakeFiles::Watch([&](const QString& strCall) {
        if (strCall == "fsync " + Copy("big")) {
            ++nFlushes;
            CFakeFiles::Fail("fsync", "/big", 0);
        }
    });
    Run(3 * MIB);
    QVERIFY(nFlushes > 1);
    QCOMPARE(Account().nFiles, 0);
    QCOMPARE(Account().listItem.first().nError, ENXIO);
}

void tst_MacFlushedCopy::smallFileThatIsNotOnTheDiskIsNamed_data()
{
    QTest::addColumn<int>("nFiles");
    QTest::newRow("at the end") << 3;
    QTest::newRow("when others come") << BATCH + 3;
    QTest::newRow("when it is the one too many") << BATCH + 1;
}

void tst_MacFlushedCopy::smallFileThatIsNotOnTheDiskIsNamed()
{
    QFETCH(int, nFiles);
    AddSmall(nFiles);
    const QString strLost = nFiles == BATCH + 1 ? QString("small %1").arg(nFiles) : QString("small 2");
    CFakeFiles::Fail("fsync", '/' + strLost, EIO);
    Run(nFiles * 1000);
    QCOMPARE(Problems(),
             QStringList(strLost
                         + ": its target cannot be brought to the disk: Input/output error "
                           "(1000 of 1000 bytes copied)"));
    const STCopyAccount stAccount = Account();
    QCOMPARE(stAccount.nFiles, nFiles - 1);
    QCOMPARE(stAccount.nProblems, 1);
    QCOMPARE(stAccount.listItem.size(), 1);
    QCOMPARE(stAccount.listItem.first().strPath, Source(strLost));
    QCOMPARE(stAccount.listItem.first().nError, EIO);
    QCOMPARE(m_pWorker->FilesDone(), qint64(nFiles - 1));
    const QStringList listLine = ReportLines().filter("The disk did not take all of it.");
    QCOMPARE(listLine.size(), 1);
    QVERIFY2(listLine.first().contains(Source(strLost)), qPrintable(listLine.first()));
    QVERIFY2(Summary().startsWith(QString("Copy completed: files %1, ").arg(nFiles - 1)),
             qPrintable(Summary()));
}

/** Their flush does nothing and gives 0; that they are gone is told by what else is asked of them. */
void tst_MacFlushedCopy::filesOfADiskThatWasPulledOutAreNamed()
{
    AddSmall(3);
    AfterChunk("small 3", 1, [this] { CFakeFiles::Fail("fstat", Copy("small 2"), EBADF); });
    Run(3000);
    QCOMPARE(Problems(),
             QStringList("small 2: its target cannot be brought to the disk: " + qt_error_string(ENXIO)
                         + " (1000 of 1000 bytes copied)"));
    QCOMPARE(Account().nFiles, 2);
    QCOMPARE(Account().listItem.first().nError, ENXIO);
}

void tst_MacFlushedCopy::interruptedFlushIsDoneAgain()
{
    Add("small", Pattern(1000));
    CFakeFiles::Fail("fsync", "/small", EINTR);
    int nFlushes = 0;
    CFakeFiles::Watch([&](const QString& strCall) {
        if (strCall == "fsync " + Copy("small") && ++nFlushes == 2) {
            CFakeFiles::Fail("fsync", "/small", EIO);
        }
    });
    Run(1000);
    QCOMPARE(Account().nFiles, 0);
    QCOMPARE(Account().nProblems, 1);
    QCOMPARE(Account().listItem.first().nError, EIO);
}

/** The source is not what is waited for, whatever was asked of it last. */
void tst_MacFlushedCopy::lastFlushIsOfTheDestination()
{
    AddSmall(1);
    m_pTree->MkDir("src/z folder");
    m_pNodes->Add(Source("z folder"));
    QStringList listWait;
    CFakeFiles::Watch([&](const QString& strCall) {
        if (strCall == "fsync " + Copy("small 1")) {
            listWait.append(m_pWorker->CurrentPath() + QString(": %1").arg(int(m_pWorker->CurrentStep())));
        }
    });
    Run(1000);
    QCOMPARE(listWait, QStringList(m_strDest + QString(": %1").arg(int(ENCopyStep::WRITING))));
}

void tst_MacFlushedCopy::flushThatNoFileHasIsNoTrouble()
{
    Add("big", Pattern(MIB));
    AddSmall(2);
    CFakeFiles::Fail("fsync", QString(), ENOTSUP);
    Run(MIB + 2000);
    QCOMPARE(Account().nFiles, 3);
    QVERIFY(Account().IsWhole());
}

void tst_MacFlushedCopy::bigFileThatFoundNoRoomBeginsAnew()
{
    Add("big", Pattern(MIB));
    CFakeFiles::Fail("fsync", "/big", ENOSPC);
    int nFlushes = 0;
    CFakeFiles::Watch([&](const QString& strCall) {
        if (strCall == "fsync " + Copy("big") && ++nFlushes == 2) {
            CFakeFiles::Fail("fsync", "/big", 0);
        }
    });
    Run(MIB);
    QVERIFY(nFlushes > 2);
    QCOMPARE(Copied("big"), Pattern(MIB));
    QCOMPARE(Problems(), QStringList());
    QCOMPARE(Account().nFiles, 1);
    QCOMPARE(Account().nBytes, MIB);
    QVERIFY(Account().IsWhole());
}

void tst_MacFlushedCopy::stoppedCopyFlushesWhatIsWhole()
{
    AddSmall(2);
    Add("third", Pattern(3 * MIB));
    CFakeFiles::Fail("fsync", "/small 1", EIO);
    AfterChunk("third", 1, [this] { m_pWorker->SetCopyStatus(COPY_STATUS_STOP); });
    Run(3 * MIB + 2000);
    const QStringList listFlushed = Flushed(CFakeFiles::TakeCalls());
    QVERIFY(listFlushed.contains("small 1") && listFlushed.contains("small 2"));
    QVERIFY(Account().bStopped);
    QCOMPARE(Account().nFiles, 1);
    QVERIFY(Problems().join('\n').contains("small 1: its target cannot be brought to the disk"));
}

void tst_MacFlushedCopy::volumeIsFlushedAtTheEnd()
{
    Add("big", Pattern(MIB));
    AddSmall(2);
    QStringList listOpen("no flush");
    CFakeFiles::Watch([&](const QString& strCall) {
        if (strCall.startsWith("fsync_volume_np ")) {
            listOpen = OpenCopies();
        }
    });
    Run(MIB + 2000);
    QCOMPARE(listOpen, QStringList());
    const QStringList listCall = CFakeFiles::TakeCalls();
    // By the folder that holds the copy, and no other volume with it.
    const int nFlush = listCall.indexOf("fsync_volume_np " + m_pTree->Path() + " 3");
    QVERIFY(nFlush >= 0);
    QVERIFY(nFlush > listCall.lastIndexOf("fsync " + Copy("small 2")));
    QCOMPARE(listCall.filter(QRegExp("^(sync|sync_volume_np) ")), QStringList());
    QCOMPARE(Account().enFlush, ENCopyFlush::DONE);
}

void tst_MacFlushedCopy::volumeThatFailsIsTold_data()
{
    QTest::addColumn<int>("nError");
    for (const int nError : {EIO, ENXIO, ENOSPC}) {
        QTest::addRow("%s", strerror(nError)) << nError;
    }
}

void tst_MacFlushedCopy::volumeThatFailsIsTold()
{
    QFETCH(int, nError);
    Add("file", Pattern(1000));
    CFakeFiles::Fail("fsync_volume_np", m_pTree->Path(), nError);
    Run(1000);
    const STCopyAccount stAccount = Account();
    QCOMPARE(stAccount.enFlush, ENCopyFlush::FAILED);
    QVERIFY(!stAccount.IsWhole());
    QCOMPARE(stAccount.listItem.size(), 1);
    QCOMPARE(stAccount.listItem.first().enProblem, ENCopyProblem::NOT_FLUSHED);
    QCOMPARE(stAccount.listItem.first().nError, nError);
}

void tst_MacFlushedCopy::volumeWithoutSuchAFlush()
{
    Add("file", Pattern(1000));
    CFakeFiles::Fail("fsync_volume_np", m_pTree->Path(), ENOTSUP);
    Run(1000);
    QVERIFY(CFakeFiles::TakeCalls().contains("F_FULLFSYNC " + m_pTree->Path()));
    QCOMPARE(Account().enFlush, ENCopyFlush::DONE);
    QVERIFY(Account().IsWhole());
}

/** What lies on another computer is told at each close. */
void tst_MacFlushedCopy::remoteVolumeIsLeftAlone()
{
    CFakeFiles::SetVolume("smbfs", false);
    Add("big", Pattern(2 * MIB));
    AddSmall(2);
    Run(2 * MIB + 2000);
    QCOMPARE(Flushed(CFakeFiles::TakeCalls()), QStringList());
    QVERIFY(Account().IsWhole());
}

void tst_MacFlushedCopy::copyLeftBehindFlushesItsSmallFiles_data()
{
    QTest::addColumn<int>("nError");
    QTest::addColumn<bool>("bFlushed");
    QTest::newRow("on the disk") << 0 << true;
    QTest::newRow("not on the disk") << EIO << false;
}

/** The source's disk answers no more, and nobody waits for it. */
void tst_MacFlushedCopy::copyLeftBehindFlushesItsSmallFiles()
{
    QFETCH(int, nError);
    QFETCH(bool, bFlushed);
    AddSmall(2);
    Add("third", Pattern(1000));
    CFakeFiles::Fail("fsync", "/small 2", nError);
    CGate hangs;
    CGate goesOn;
    AfterChunk("third", 1, [&] {
        hangs.Open();
        goesOn.Pass(PATIENCE_MS);
    });
    Start(3000);
    const bool bHangs = hangs.Pass(PATIENCE_MS);
    CFakeFiles::TakeCalls();
    m_pWorker->SetCopyStatus(COPY_STATUS_STOP);
    const STCopyAccount stAccount = m_pWorker->CloseAccount(PATIENCE_MS);
    const QStringList listFlushed = Flushed(CFakeFiles::TakeCalls());
    goesOn.Open();
    QVERIFY(m_pWorker->wait(PATIENCE_MS));
    QVERIFY(bHangs);
    QCOMPARE(listFlushed, QStringList({"small 1", "small 2"}));
    QCOMPARE(stAccount.enFlush, bFlushed ? ENCopyFlush::DONE : ENCopyFlush::FAILED);
}

void tst_MacFlushedCopy::copyLeftBehindInAFlushIsNotOnTheDisk()
{
    AddSmall(BATCH + 1);
    CGate hangs;
    CGate goesOn;
    CFakeFiles::Watch([&](const QString& strCall) {
        if (strCall == "fsync " + Copy("small 2")) {
            hangs.Open();
            goesOn.Pass(PATIENCE_MS);
        }
    });
    Start((BATCH + 1) * 1000);
    const bool bHangs = hangs.Pass(PATIENCE_MS);
    m_pWorker->SetCopyStatus(COPY_STATUS_STOP);
    const STCopyAccount stAccount = m_pWorker->CloseAccount(PATIENCE_MS);
    goesOn.Open();
    QVERIFY(m_pWorker->wait(PATIENCE_MS));
    QVERIFY(bHangs);
    QCOMPARE(stAccount.enFlush, ENCopyFlush::FAILED);
    QCOMPARE(stAccount.listItem.last().strPath, Source(QString("small %1").arg(BATCH + 1)));
}

QTEST_GUILESS_MAIN(tst_MacFlushedCopy)
#include "tst_MacFlushedCopy.moc"
