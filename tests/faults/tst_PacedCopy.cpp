#include "CFailingCalls.h"
#include "files/CLeftBehind.h"
#include "flow/CWritePace.h"
#include "support/CCopyBed.h"
#include "support/CMovedClock.h"
#include "support/TestFiles.h"

#include <atomic>
#include <cerrno>
#include <dlfcn.h>
#include <fcntl.h>
#include <linux/magic.h>
#include <sys/vfs.h>

using ENCall = CFailingCalls::ENCall;

static const qint64 MIB = 1024 * 1024;

// What the disk that is copied to seems to be, and how it takes what it is given.
static std::atomic<long> s_nType{0}; // as it is when 0
static std::atomic<int> s_nError{0};
static std::atomic<bool> s_bHangs{false};
static std::atomic<int> s_nTypesAsked{0};
static std::atomic<int> s_nStarts{0};
static std::atomic<qint64> s_nOnDisk{0};
static std::atomic<int> s_nFlushed{0};
static CGate* s_pHangs = nullptr; // opened by each call that begins to hang
static CGate* s_pGo = nullptr;

static int Result()
{
    errno = s_nError;
    return s_nError == 0 ? 0 : -1;
}

extern "C" {

int sync_file_range(int, off64_t, off64_t nBytes, unsigned nFlags)
{
    if (nFlags == SYNC_FILE_RANGE_WRITE) {
        ++s_nStarts;
        return Result();
    }
    if (s_bHangs) {
        s_pHangs->Open();
        s_pGo->Pass(20000);
    }
    s_nOnDisk += nBytes;
    return Result();
}

int fdatasync(int)
{
    ++s_nFlushed;
    return Result();
}

int fstatfs(int nDescriptor, struct statfs* pRaw) noexcept
{
    ++s_nTypesAsked;
    const int nResult
        = reinterpret_cast<int (*)(int, struct statfs*)>(dlsym(RTLD_NEXT, "fstatfs"))(nDescriptor, pRaw);
    if (s_nType != 0) {
        pRaw->f_type = s_nType;
    }
    return nResult;
}

} // extern "C"

/** The whole copy to a disk that is waited for. */
class tst_PacedCopy : public CCopyBed
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void tellsOnlyWhatIsNearlyOnTheDisk_data();
    void tellsOnlyWhatIsNearlyOnTheDisk();
    void failuresChangeNothing_data();
    void failuresChangeNothing();
    void failedFlushOfAFileIsTold();
    void memoryCostsNothing();
    void stopDoesNotWaitForTheDisk();
    void pauseDoesNotWaitForTheDisk();
    void stuckDiskIsSeen();
    void slowDiskIsNotStuck();
    void nothingIsOpenAtTheFlush();

private:
    bool StartOnHangingDisk();

    std::unique_ptr<CGate> m_pHangs;
    std::unique_ptr<CGate> m_pGo;
};

void tst_PacedCopy::init()
{
    Make();
    m_pHangs = std::make_unique<CGate>();
    m_pGo = std::make_unique<CGate>();
    s_pHangs = m_pHangs.get();
    s_pGo = m_pGo.get();
    s_nType = EXT4_SUPER_MAGIC;
    s_nError = 0;
    s_bHangs = false;
    s_nTypesAsked = s_nStarts = s_nFlushed = 0;
    s_nOnDisk = 0;
}

void tst_PacedCopy::cleanup()
{
    s_bHangs = false;
    m_pGo->Open();
    Clear();
    CFailingCalls::Reset();
    QTRY_VERIFY(!CLeftBehind::Any());
}

/** Starts a copy of 20 MiB and returns when it waits for its disk, which hangs. */
bool tst_PacedCopy::StartOnHangingDisk()
{
    Add("file", Pattern(20 * MIB));
    s_bHangs = true;
    Start(20 * MIB);
    const auto fnWaits = [this] { return m_pWorker->BytesDone() > CWritePace::FIRST_BYTES; };
    return m_pHangs->Pass(PATIENCE_MS) && QTest::qWaitFor(fnWaits, PATIENCE_MS);
}

void tst_PacedCopy::tellsOnlyWhatIsNearlyOnTheDisk_data()
{
    QTest::addColumn<QVector<qint64>>("listSize");
    QTest::newRow("one file") << QVector<qint64>{60 * MIB};
    QTest::newRow("files of some MiB") << QVector<qint64>(12, 4 * MIB + 4321);
    QTest::newRow("small files") << QVector<qint64>(120, 300 * 1000);
    QTest::newRow("all kinds") << QVector<qint64>{10 * MIB, 5, 700 * 1000, 0, 9 * MIB, 64 * 1024, 20 * MIB};
}

void tst_PacedCopy::tellsOnlyWhatIsNearlyOnTheDisk()
{
    QFETCH(QVector<qint64>, listSize);
    const CMovedClock clock; // stands still, so that the disk's speed is never known
    const QByteArray baContent = Pattern(60 * MIB);
    qint64 nTotal = 0;
    for (int nFile = 0; nFile < listSize.size(); ++nFile) {
        Add(QString("file %1").arg(nFile, 3), baContent.left(int(listSize.at(nFile))));
        nTotal += listSize.at(nFile);
    }
    qint64 nMost = 0;
    AfterEachChunk([&] { nMost = qMax(nMost, m_pWorker->BytesDone() - s_nOnDisk); });
    Run(nTotal);
    for (int nFile = 0; nFile < listSize.size(); ++nFile) {
        QCOMPARE(Copied(QString("file %1").arg(nFile, 3)), baContent.left(int(listSize.at(nFile))));
    }
    QCOMPARE(Account().nProblems, 0);
    // Of small files the last one of a batch stands for all.
    const bool bSmall = listSize.first() < MIB;
    const qint64 nUnseen = bSmall ? nTotal : 3 * MIB;
    QVERIFY2(nMost <= CWritePace::FIRST_BYTES + nUnseen, qPrintable(QString::number(nMost)));
    QVERIFY(s_nStarts > 0 && s_nOnDisk > 0);
    QCOMPARE(s_nTypesAsked.load(), 1);
}

void tst_PacedCopy::failuresChangeNothing_data()
{
    QTest::addColumn<int>("nError");
    for (const int nError : {EIO, ENOSPC, ENOSYS, EBADF}) {
        QTest::addRow("%s", strerror(nError)) << nError;
    }
}

void tst_PacedCopy::failuresChangeNothing()
{
    QFETCH(int, nError);
    Add("file", Pattern(10 * MIB));
    Add("small", Pattern(1000));
    s_nError = nError;
    Run(10 * MIB + 1000);
    QCOMPARE(Copied("file"), Pattern(10 * MIB));
    QCOMPARE(Copied("small"), Pattern(1000));
    QCOMPARE(Account().nFiles, 2);
    QCOMPARE(Problems(), QStringList());
    QCOMPARE(Account().enFlush, ENCopyFlush::DONE);
    QVERIFY(s_nStarts > 0);
}

void tst_PacedCopy::failedFlushOfAFileIsTold()
{
    Add("file", Pattern(3 * MIB));
    s_nType = FUSE_SUPER_MAGIC;
    s_nError = EIO;
    Run(3 * MIB);
    QVERIFY(s_nFlushed > 0);
    QCOMPARE(Copied("file"), Pattern(3 * MIB));
    QCOMPARE(Account().enFlush, ENCopyFlush::FAILED);
    QCOMPARE(ProblemLines().size(), 1);
    QVERIFY2(ProblemLines().first().contains(QString(strerror(EIO))), qPrintable(ProblemLines().first()));
}

void tst_PacedCopy::memoryCostsNothing()
{
    s_nType = 0;
    for (int nFile = 0; nFile < 10; ++nFile) {
        Add(QString("file %1").arg(nFile), Pattern(MIB + nFile));
    }
    Add("file", Pattern(10 * MIB));
    Run(20 * MIB);
    QCOMPARE(Account().nFiles, 11);
    QCOMPARE(s_nTypesAsked.load(), 1);
    QCOMPARE(s_nStarts + s_nFlushed, 0);
    QCOMPARE(s_nOnDisk.load(), qint64(0));
}

void tst_PacedCopy::stopDoesNotWaitForTheDisk()
{
    QVERIFY(StartOnHangingDisk());
    m_pWorker->SetCopyStatus(COPY_STATUS_STOP);
    QVERIFY(WaitForEnd());
    QCOMPARE(m_pFinished->count(), 1);
    QVERIFY(Account().bStopped);
    QVERIFY(s_nOnDisk <= MIB);
}

void tst_PacedCopy::pauseDoesNotWaitForTheDisk()
{
    QVERIFY(StartOnHangingDisk());
    m_pWorker->SetCopyStatus(COPY_STATUS_PAUSE);
    QTRY_COMPARE(m_pWorker->CurrentStep(), ENCopyStep::PAUSED);
    s_bHangs = false;
    m_pGo->Open();
    m_pWorker->SetCopyStatus(COPY_STATUS_RUN);
    QVERIFY(WaitForEnd());
    QCOMPARE(Copied("file"), Pattern(20 * MIB));
}

void tst_PacedCopy::stuckDiskIsSeen()
{
    CMovedClock clock;
    QVERIFY(StartOnHangingDisk());
    const auto fnStuck = [&] {
        clock.Move(1000);
        return m_pWorker->SinceProgressMs() >= 30000;
    };
    QVERIFY(QTest::qWaitFor(fnStuck, PATIENCE_MS));
    QCOMPARE(m_pWorker->CurrentStep(), ENCopyStep::WRITING);
    QVERIFY(m_pWorker->BytesDone() < 10 * MIB);
    s_bHangs = false;
    m_pGo->Open();
    QVERIFY(WaitForEnd());
    QCOMPARE(Account().nFiles, 1);
}

void tst_PacedCopy::slowDiskIsNotStuck()
{
    CMovedClock clock;
    QVERIFY(StartOnHangingDisk());
    for (int nStep = 0; nStep < 8; ++nStep) {
        clock.Move(15000);
        QCOMPARE(m_pWorker->SinceProgressMs() / 1000, qint64(15));
        m_pGo->Open();
        QVERIFY(m_pHangs->Pass(PATIENCE_MS));
        QTRY_COMPARE(m_pWorker->SinceProgressMs(), qint64(0));
    }
    s_bHangs = false;
    m_pGo->Open();
    QVERIFY(WaitForEnd());
    QCOMPARE(Copied("file"), Pattern(20 * MIB));
}

void tst_PacedCopy::nothingIsOpenAtTheFlush()
{
    for (int nFile = 0; nFile < 40; ++nFile) {
        Add(QString("small %1").arg(nFile), Pattern(1000));
    }
    Add("file", Pattern(3 * MIB));
    QStringList listOpen{"no flush"};
    CFailingCalls::Watch(ENCall::FLUSH, m_pTree->Path(), [&] {
        listOpen.clear();
        const QDir dir("/proc/self/fd");
        for (const QString& strEntry : dir.entryList(QDir::Files | QDir::System)) {
            const QString strPath = QFile::symLinkTarget(dir.filePath(strEntry));
            if (strPath.startsWith(m_strDest + '/')) {
                listOpen.append(strPath);
            }
        }
    });
    Run(4 * MIB);
    QCOMPARE(listOpen, QStringList());
    QCOMPARE(s_nTypesAsked.load(), 1); // it was paced, even if the disk has begun with nothing yet
}

QTEST_GUILESS_MAIN(tst_PacedCopy)
#include "tst_PacedCopy.moc"
