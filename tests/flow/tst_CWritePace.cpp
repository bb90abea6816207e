#include "CFakeStick.h"
#include "files/CLeftBehind.h"
#include "flow/CWritePace.h"
#include "support/CTempTree.h"
#include "support/TestFiles.h"

#include <QDir>
#include <QFile>
#include <QTest>

#include <algorithm>
#include <cstring>
#include <fcntl.h>
#include <memory>
#include <thread>
#include <vector>

static const qint64 KIB = 1024;
static const qint64 MIB = 1024 * KIB;
static const qint64 PIECE = 256 * KIB;
static const int PATIENCE_MS = 30000; // for a machine with much else to do

static int OpenDescriptors()
{
    return QDir("/proc/self/fd").entryList(QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot).size();
}

/** Paced writing to a disk that only counts. */
class tst_CWritePace : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void fileIsStartedAsItGrows();
    void smallFilesAreStartedTogether();
    void whatWasWrittenFirstIsStartedFirst();
    void noMoreThanTheWindowWaits_data();
    void noMoreThanTheWindowWaits();
    void smallFilesCountForMoreThanTheirBytes();
    void fastDiskDoesNotHoldUp();
    void windowFollowsTheDisk();
    void stopEndsTheWait();
    void pauseEndsTheWaitForNow();
    void diskThatDoesNothingGivesNoSignOfLife();
    void slowDiskGivesSignsOfLife();
    void failuresAreNobodysBusiness();
    void fewFilesAreHeldOpen();
    void fileThatCannotBeHeldOpen();
    void hangingDiskIsLeftBehind();
    void memoryIsLeftAlone();
    void nothingOutsideACopy();
    void anotherDiskForTheNextCopy();

    void filesAreFlushedNowAndThen();
    void flushesTakeHalfASecond_data();
    void flushesTakeHalfASecond();
    void failedFlushIsKept_data();
    void failedFlushIsKept();
    void closedFilesAreFlushed_data();
    void closedFilesAreFlushed();
    void settledOnlyWhereFilesTell_data();
    void settledOnlyWhereFilesTell();
    void bigFileIsSettledAtOnce();
    void endOfAFileLeavesTheWindow();
    void smallFilesAreSettledTogether();
    void smallFilesAreSettledWithABigOne();
    void fileThatCannotWaitIsSettledAtOnce();
    void fileOfAnotherHandIsSettled();
    void endSettlesWhatWaits();
    void failureIsOfTheFileThatHasIt();
    void failureOfAFileThatIsNotSettledIsKept();
    void failureThatNobodyIsToldOfIsKept();
    void lateFilesOfAHangingCopy();

private:
    void Use(ENWriteBack enKind);
    int Open();
    void WriteMore(int nDescriptor, qint64 nTo, qint64 nFrom = 0);
    void Close(int nDescriptor);
    void WriteFile(qint64 nBytes);
    bool SettleFile(qint64 nBytes);

    std::unique_ptr<CTempTree> m_pTree;
    std::shared_ptr<CFakeStick> m_pStick;
    std::unique_ptr<CWritePace> m_pPace;
    std::function<bool(bool)> m_fnGoesOn;
    int m_nFiles = 0;
    QVector<QPair<int, int>> m_listLost; // numbers of files and errors
};

void tst_CWritePace::init()
{
    m_pTree = std::make_unique<CTempTree>();
    m_fnGoesOn = [](bool) { return true; };
    m_nFiles = 0;
    m_listLost.clear();
    Use(ENWriteBack::RANGES);
}

void tst_CWritePace::cleanup()
{
    m_pStick->m_bHolds = false;
    m_pStick->m_go.Open();
    m_pPace.reset();
    m_pStick.reset();
    QTRY_VERIFY_WITH_TIMEOUT(!CLeftBehind::Any(), PATIENCE_MS);
    m_pTree.reset();
}

void tst_CWritePace::Use(ENWriteBack enKind)
{
    m_pStick = std::make_shared<CFakeStick>(enKind);
    m_pPace = std::make_unique<CWritePace>([this](bool bMoved) { return m_fnGoesOn(bMoved); },
                                           m_pStick->Clock(), m_pStick);
    m_pPace->Begin();
}

int tst_CWritePace::Open()
{
    const QString strPath = m_pTree->Write(QString("file %1").arg(++m_nFiles), {});
    return open(QFile::encodeName(strPath).constData(), O_WRONLY | O_CLOEXEC);
}

/** Tells of a file that grows piece by piece. */
void tst_CWritePace::WriteMore(int nDescriptor, qint64 nTo, qint64 nFrom)
{
    for (qint64 nAt = nFrom; nAt < nTo; nAt += PIECE) {
        m_pPace->Written(nDescriptor, nAt, std::min(PIECE, nTo - nAt));
    }
}

void tst_CWritePace::Close(int nDescriptor)
{
    m_pPace->Ends(nDescriptor);
    ::close(nDescriptor);
}

void tst_CWritePace::WriteFile(qint64 nBytes)
{
    const int nDescriptor = Open();
    WriteMore(nDescriptor, nBytes);
    Close(nDescriptor);
}

/** The same, and brings it to its disk as the copy does; what becomes of it later is in m_listLost. */
bool tst_CWritePace::SettleFile(qint64 nBytes)
{
    const int nDescriptor = Open();
    WriteMore(nDescriptor, nBytes);
    const bool bSettled = m_pPace->Settle(nDescriptor);
    const int nError = errno;
    Close(nDescriptor);
    m_pPace->Booked([this, nFile = m_nFiles](int nLost) { m_listLost.append({nFile, nLost}); });
    errno = nError;
    return bSettled;
}

void tst_CWritePace::fileIsStartedAsItGrows()
{
    const int nDescriptor = Open();
    WriteMore(nDescriptor, MIB - PIECE);
    QCOMPARE(m_pPace->WaitingBytes(), MIB - PIECE);
    WriteMore(nDescriptor, MIB, MIB - PIECE);
    QTRY_COMPARE_WITH_TIMEOUT(m_pStick->Calls("start"), QStringList({"start 1: 0+1024"}), PATIENCE_MS);
    WriteMore(nDescriptor, 2 * MIB + 5 * KIB, MIB);
    QTRY_COMPARE_WITH_TIMEOUT(m_pStick->Calls("start"),
                              QStringList({"start 1: 0+1024", "start 1: 1024+1024"}), PATIENCE_MS);
    Close(nDescriptor);
    QTRY_COMPARE_WITH_TIMEOUT(m_pStick->Calls("start").last(), QString("start 1: 2048+5"), PATIENCE_MS);
    QTRY_COMPARE_WITH_TIMEOUT(m_pPace->WaitingBytes(), qint64(0), PATIENCE_MS);
    QCOMPARE(m_pStick->m_nOnDisk.load(), 2 * MIB + 5 * KIB);
}

void tst_CWritePace::smallFilesAreStartedTogether()
{
    QStringList listExpected;
    for (int nFile = 1; nFile <= 32; ++nFile) {
        WriteFile(4 * KIB);
        listExpected.append(QString("start %1: 0+4").arg(nFile));
    }
    QCOMPARE(m_pStick->Calls("start"), QStringList());
    WriteFile(4 * KIB);
    QTRY_COMPARE_WITH_TIMEOUT(m_pStick->Calls("start"), listExpected, PATIENCE_MS);
    QTRY_COMPARE_WITH_TIMEOUT(m_pStick->Calls("wait"), QStringList({"wait 32: 0+4"}), PATIENCE_MS);
}

void tst_CWritePace::whatWasWrittenFirstIsStartedFirst()
{
    WriteFile(4 * KIB);
    WriteFile(8 * KIB);
    WriteFile(MIB + KIB);
    QTRY_COMPARE_WITH_TIMEOUT(
        m_pStick->Calls("start"),
        QStringList({"start 1: 0+4", "start 2: 0+8", "start 3: 0+1024", "start 3: 1024+1"}), PATIENCE_MS);
}

void tst_CWritePace::noMoreThanTheWindowWaits_data()
{
    QTest::addColumn<qint64>("nBytesASecond");
    for (const int nMegabytes : {1, 3, 10, 20}) {
        QTest::addRow("%d MB/s", nMegabytes) << qint64(nMegabytes) * 1000 * 1000;
    }
}

void tst_CWritePace::noMoreThanTheWindowWaits()
{
    QFETCH(qint64, nBytesASecond);
    m_pStick->m_nBytesAMs = nBytesASecond / 1000;
    const qint64 nTwoSeconds = 2 * nBytesASecond;
    qint64 nMost = 0;
    qint64 nWritten = 0;
    for (const qint64 nSize : {90 * MIB, 700 * KIB, 3 * MIB, 5 * MIB + 1, 30 * MIB}) {
        const int nDescriptor = Open();
        for (qint64 nAt = 0; nAt < nSize; nAt += PIECE) {
            WriteMore(nDescriptor, std::min(nSize, nAt + PIECE), nAt);
            nWritten += std::min(PIECE, nSize - nAt);
            nMost = std::max(nMost, nWritten - m_pStick->m_nOnDisk);
        }
        Close(nDescriptor);
    }
    // A tenth for what the disk has written between two looks at it.
    const qint64 nBound = std::max(CWritePace::FIRST_BYTES, nTwoSeconds + nTwoSeconds / 10);
    QVERIFY2(nMost <= nBound, qPrintable(QString("%1 of %2").arg(nMost).arg(nBound)));
    QVERIFY2(nMost >= std::min(nTwoSeconds / 2, CWritePace::FIRST_BYTES / 2),
             qPrintable(QString::number(nMost)));
    m_pPace->End();
    QVERIFY(m_pStick->m_nOnDisk <= nWritten);
}

void tst_CWritePace::smallFilesCountForMoreThanTheirBytes()
{
    m_pStick->m_bHolds = true;
    for (int nFile = 0; nFile < 40; ++nFile) {
        WriteFile(1);
    }
    QCOMPARE(m_pPace->WaitingBytes(), 40 * (4 * KIB + 1));
}

void tst_CWritePace::fastDiskDoesNotHoldUp()
{
    int nAsked = 0;
    m_fnGoesOn = [&](bool) { return ++nAsked > 0; };
    const int nDescriptor = Open();
    for (qint64 nAt = 0; nAt < 100 * MIB; nAt += MIB) {
        WriteMore(nDescriptor, nAt + MIB, nAt);
        QTRY_COMPARE_WITH_TIMEOUT(m_pPace->WaitingBytes(), qint64(0), PATIENCE_MS);
    }
    QCOMPARE(nAsked, 0);
    Close(nDescriptor);
}

void tst_CWritePace::windowFollowsTheDisk()
{
    QCOMPARE(m_pPace->WindowBytes(), CWritePace::FIRST_BYTES);
    m_pStick->m_nBytesAMs = 20 * 1000;
    WriteFile(60 * MIB);
    const qint64 nFast = m_pPace->WindowBytes();
    QVERIFY2(nFast > 36 * 1000 * 1000 && nFast < 44 * 1000 * 1000, qPrintable(QString::number(nFast)));
    m_pStick->m_nBytesAMs = 2000;
    WriteFile(80 * MIB);
    const qint64 nSlow = m_pPace->WindowBytes();
    QVERIFY2(nSlow > 3600 * 1000 && nSlow < 4400 * 1000, qPrintable(QString::number(nSlow)));
    m_pStick->m_nBytesAMs = 100;
    WriteFile(10 * MIB);
    QCOMPARE(m_pPace->WindowBytes(), CWritePace::LEAST_BYTES);
}

void tst_CWritePace::stopEndsTheWait()
{
    m_pStick->m_bHolds = true;
    std::atomic<bool> bStopped{false};
    CGate waits;
    m_fnGoesOn = [&](bool) {
        waits.Open();
        return !bStopped;
    };
    const int nDescriptor = Open();
    CGate done;
    std::thread copy([&] {
        WriteMore(nDescriptor, 20 * MIB);
        Close(nDescriptor);
        done.Open();
    });
    const bool bWaits = waits.Pass(20000) && m_pStick->m_held.Pass(20000);
    const bool bDoneTooSoon = done.Pass(0);
    bStopped = true;
    const bool bDone = done.Pass(20000);
    copy.join();
    QVERIFY(bWaits);
    QVERIFY(!bDoneTooSoon);
    QVERIFY(bDone);
    QCOMPARE(m_pStick->m_nOnDisk.load(), qint64(0));
}

void tst_CWritePace::pauseEndsTheWaitForNow()
{
    m_pStick->m_bHolds = true;
    m_fnGoesOn = [](bool) { return false; };
    const int nDescriptor = Open();
    WriteMore(nDescriptor, 8 * MIB);
    QCOMPARE(m_pPace->WaitingBytes(), 8 * MIB);
    // It goes on, and so does the disk.
    m_fnGoesOn = [this](bool) {
        m_pStick->m_bHolds = false;
        m_pStick->m_go.Open();
        return true;
    };
    WriteMore(nDescriptor, 8 * MIB + PIECE, 8 * MIB);
    QVERIFY(m_pPace->WaitingBytes() <= CWritePace::FIRST_BYTES);
    Close(nDescriptor);
}

void tst_CWritePace::diskThatDoesNothingGivesNoSignOfLife()
{
    m_pStick->m_bHolds = true;
    const int nDescriptor = Open();
    WriteMore(nDescriptor, CWritePace::FIRST_BYTES);
    QVERIFY(m_pStick->m_held.Pass(20000));
    int nMoved = 0;
    int nAsked = 0;
    m_fnGoesOn = [&](bool bMoved) {
        nMoved += bMoved ? 1 : 0;
        return ++nAsked < 10;
    };
    WriteMore(nDescriptor, CWritePace::FIRST_BYTES + PIECE, CWritePace::FIRST_BYTES);
    QCOMPARE(nAsked, 10);
    // What the disk was given before the wait began may be seen at its beginning.
    QVERIFY2(nMoved <= 1, qPrintable(QString::number(nMoved)));
    Close(nDescriptor);
}

void tst_CWritePace::slowDiskGivesSignsOfLife()
{
    m_pStick->m_bHolds = true;
    int nMoved = 0;
    m_fnGoesOn = [&](bool bMoved) {
        nMoved += bMoved ? 1 : 0;
        m_pStick->m_go.Open(); // the disk does a little each time that it is looked at
        return true;
    };
    const int nDescriptor = Open();
    WriteMore(nDescriptor, CWritePace::FIRST_BYTES + 2 * MIB);
    QVERIFY2(nMoved >= 2, qPrintable(QString::number(nMoved)));
    Close(nDescriptor);
}

void tst_CWritePace::failuresAreNobodysBusiness()
{
    m_pStick->m_nError = EIO;
    WriteFile(20 * MIB);
    QTRY_COMPARE_WITH_TIMEOUT(m_pPace->WaitingBytes(), qint64(0), PATIENCE_MS);
    for (int nFile = 0; nFile < 100; ++nFile) {
        WriteFile(4 * KIB);
    }
    QTRY_COMPARE_WITH_TIMEOUT(m_pStick->Calls("start").size(), 20 + 96, PATIENCE_MS);
    QCOMPARE(m_pPace->FlushError(), 0);
    const int nDescriptor = Open();
    errno = EXDEV;
    WriteMore(nDescriptor, 8 * MIB);
    m_pPace->Ends(nDescriptor);
    m_pPace->End();
    QCOMPARE(errno, EXDEV);
    ::close(nDescriptor);
}

void tst_CWritePace::fewFilesAreHeldOpen()
{
    const int nBefore = OpenDescriptors();
    m_pStick->m_bHolds = true;
    int nMost = 0;
    bool bGoesOn = true;
    m_fnGoesOn = [&](bool) { return bGoesOn; };
    // As many as may wait, big and small, while the disk does nothing.
    for (int nFile = 0; nFile < 3; ++nFile) {
        WriteFile(MIB);
    }
    bGoesOn = false;
    for (int nFile = 0; nFile < 300; ++nFile) {
        WriteFile(nFile % 3 == 0 ? MIB + KIB : KIB);
        nMost = std::max(nMost, OpenDescriptors());
    }
    QVERIFY2(nMost - nBefore <= CWritePace::MOST_KEPT, qPrintable(QString::number(nMost - nBefore)));
    QVERIFY(nMost - nBefore >= CWritePace::MOST_KEPT / 2);
    m_pStick->m_bHolds = false;
    m_pStick->m_go.Open();
    m_pPace->End();
    QCOMPARE(OpenDescriptors(), nBefore);
}

void tst_CWritePace::fileThatCannotBeHeldOpen()
{
    m_pStick->m_bKeeps = false;
    WriteFile(20 * MIB);
    for (int nFile = 0; nFile < 100; ++nFile) {
        WriteFile(4 * KIB);
    }
    QCOMPARE(m_pPace->WaitingBytes(), qint64(0));
    QCOMPARE(m_pStick->Calls("start"), QStringList());
}

void tst_CWritePace::hangingDiskIsLeftBehind()
{
    m_pStick->m_bHolds = true;
    WriteFile(2 * MIB);
    QVERIFY(m_pStick->m_held.Pass(20000));
    m_pPace->End();
    QVERIFY(CLeftBehind::Any());
    m_pStick->m_bHolds = false;
    m_pStick->m_go.Open();
    QTRY_VERIFY_WITH_TIMEOUT(!CLeftBehind::Any(), PATIENCE_MS);
    QVERIFY(m_pStick->m_nOnDisk <= PIECE);
}

void tst_CWritePace::memoryIsLeftAlone()
{
    Use(ENWriteBack::NONE);
    const int nBefore = OpenDescriptors();
    const int nDescriptor = Open();
    WriteMore(nDescriptor, 50 * MIB);
    QCOMPARE(OpenDescriptors(), nBefore + 1);
    Close(nDescriptor);
    for (int nFile = 0; nFile < 100; ++nFile) {
        WriteFile(4 * KIB);
    }
    QCOMPARE(OpenDescriptors(), nBefore);
    QCOMPARE(m_pStick->m_nKindsAsked.load(), 1);
    QCOMPARE(m_pStick->Calls(".*"), QStringList());
}

void tst_CWritePace::nothingOutsideACopy()
{
    m_pPace->End();
    WriteFile(50 * MIB);
    QCOMPARE(m_pStick->m_nKindsAsked.load(), 0);
    QCOMPARE(m_pStick->Calls(".*"), QStringList());
}

void tst_CWritePace::anotherDiskForTheNextCopy()
{
    m_pStick->m_nBytesAMs = 20 * 1000;
    WriteFile(40 * MIB);
    QVERIFY(m_pPace->WindowBytes() > 2 * CWritePace::FIRST_BYTES);
    m_pPace->End();
    m_pPace->Begin();
    QCOMPARE(m_pPace->WindowBytes(), CWritePace::FIRST_BYTES);
    QCOMPARE(m_pPace->WaitingBytes(), qint64(0));
    WriteFile(MIB);
    QCOMPARE(m_pStick->m_nKindsAsked.load(), 2);
}

void tst_CWritePace::filesAreFlushedNowAndThen()
{
    Use(ENWriteBack::DISK);
    for (int nFile = 1; nFile <= 10; ++nFile) {
        WriteFile(256 * KIB);
    }
    // The first four make a MiB; the flush was done in no time, so the next is due after two.
    QCOMPARE(m_pStick->Calls(".*"), QStringList({"flush 1: 0+0"}));
    QCOMPARE(m_pPace->WaitingBytes(), 6 * PIECE);
    WriteFile(512 * KIB);
    QCOMPARE(m_pStick->Calls("flush").size(), 2);
    QCOMPARE(m_pPace->WaitingBytes(), qint64(0));
}

void tst_CWritePace::flushesTakeHalfASecond_data()
{
    QTest::addColumn<qint64>("nFlushMs");
    QTest::addColumn<QVector<int>>("listExpected"); // MiB written at each flush

    QTest::newRow("no time") << qint64(0) << QVector<int>{1, 3, 7, 15, 31};
    QTest::newRow("as it should") << qint64(500) << QVector<int>{1, 2, 3, 4, 5, 6, 7, 8, 9, 10};
    QTest::newRow("never less") << qint64(30000) << QVector<int>{1, 2, 3, 4, 5, 6, 7, 8, 9, 10};
}

void tst_CWritePace::flushesTakeHalfASecond()
{
    QFETCH(qint64, nFlushMs);
    QFETCH(QVector<int>, listExpected);
    Use(ENWriteBack::DISK);
    m_pStick->m_nFlushMs = nFlushMs;
    const int nDescriptor = Open();
    QVector<int> listFlush;
    for (int nMiB = 1; nMiB <= listExpected.last(); ++nMiB) {
        WriteMore(nDescriptor, nMiB * MIB, (nMiB - 1) * MIB);
        if (m_pStick->Calls("flush").size() > listFlush.size()) {
            listFlush.append(nMiB);
        }
    }
    Close(nDescriptor);
    QCOMPARE(listFlush, listExpected);
}

void tst_CWritePace::failedFlushIsKept_data()
{
    QTest::addColumn<int>("nError");
    QTest::addColumn<int>("nKept");
    for (const int nError : {EIO, ENOSPC, ENODEV}) {
        QTest::addRow("%s", strerror(nError)) << nError << nError;
    }
    for (const int nError : {EINVAL, ENOSYS, ENOTSUP, EINTR}) {
        QTest::addRow("%s", strerror(nError)) << nError << 0;
    }
}

void tst_CWritePace::failedFlushIsKept()
{
    QFETCH(int, nError);
    QFETCH(int, nKept);
    Use(ENWriteBack::DISK);
    m_pStick->m_nError = nError;
    WriteFile(MIB);
    m_pStick->m_nError = 0;
    WriteFile(4 * MIB);
    QVERIFY(m_pStick->Calls("flush").size() >= 2);
    m_pPace->End();
    QCOMPARE(m_pPace->FlushError(), nKept);
    m_pPace->Begin();
    QCOMPARE(m_pPace->FlushError(), 0);
}

void tst_CWritePace::closedFilesAreFlushed_data()
{
    QTest::addColumn<bool>("bAll");
    QTest::newRow("each file by itself") << false;
    QTest::newRow("one brings all along") << true;
}

void tst_CWritePace::closedFilesAreFlushed()
{
    QFETCH(bool, bAll);
    Use(bAll ? ENWriteBack::DISK : ENWriteBack::FILES);
    const int nBefore = OpenDescriptors();
    WriteFile(MIB); // the next one is due after two
    WriteFile(MIB + PIECE);
    WriteFile(PIECE); // a small one is not worth it
    const int nHeld = OpenDescriptors() - nBefore;
    WriteFile(2 * MIB);
    QCOMPARE(nHeld, bAll ? 0 : 1);
    QCOMPARE(m_pStick->Calls("flush"),
             bAll ? QStringList({"flush 1: 0+0", "flush 2: 0+0"})
                  : QStringList({"flush 1: 0+0", "flush 2: 0+0", "flush 3: 0+0"}));
    m_pPace->End();
    QCOMPARE(OpenDescriptors(), nBefore);
}

void tst_CWritePace::settledOnlyWhereFilesTell_data()
{
    QTest::addColumn<int>("nKind");
    QTest::newRow("none") << int(ENWriteBack::NONE);
    QTest::newRow("ranges") << int(ENWriteBack::RANGES);
    QTest::newRow("disk") << int(ENWriteBack::DISK);
}

void tst_CWritePace::settledOnlyWhereFilesTell()
{
    QFETCH(int, nKind);
    Use(ENWriteBack(nKind));
    WriteFile(KIB); // the kind is known
    m_pStick->m_nError = EIO;
    QVERIFY(SettleFile(512 * KIB));
    const int nDescriptor = Open();
    QVERIFY(m_pPace->Settle(nDescriptor));
    Close(nDescriptor);
    m_pPace->End();
    QCOMPARE(m_pStick->Calls("flush"), QStringList());
    QVERIFY(m_listLost.isEmpty());
}

void tst_CWritePace::bigFileIsSettledAtOnce()
{
    Use(ENWriteBack::FILES);
    const int nBefore = OpenDescriptors();
    QVERIFY(SettleFile(MIB)); // flushed when it was written, and once more with what came since
    QCOMPARE(m_pStick->Calls("flush"), QStringList({"flush 1: 0+0", "flush 1: 0+0"}));
    QVERIFY(SettleFile(MIB + PIECE));
    QCOMPARE(m_pStick->Calls("flush").size(), 3);
    QCOMPARE(m_pPace->WaitingBytes(), qint64(0));
    QCOMPARE(OpenDescriptors(), nBefore);
    m_pStick->m_nError = ENOSPC;
    QVERIFY(!SettleFile(MIB + PIECE));
    QCOMPARE(errno, ENOSPC);
    m_pPace->End();
    QCOMPARE(m_pPace->FlushError(), 0); // the file itself is named
    QVERIFY(m_listLost.isEmpty());
}

/** What is left of a file at its end is little, and was flushed in no time. */
void tst_CWritePace::endOfAFileLeavesTheWindow()
{
    Use(ENWriteBack::FILES);
    QVERIFY(SettleFile(7 * MIB + KIB)); // after 1, 3 and 7 MiB, and at the end
    QCOMPARE(m_pStick->Calls("flush").size(), 4);
    QVERIFY(SettleFile(7 * MIB)); // the next one is due after eight
    QCOMPARE(m_pStick->Calls("flush").size(), 5);
    m_pStick->m_nFlushMs = 30000;
    QVERIFY(SettleFile(6 * MIB));
    QCOMPARE(m_pStick->Calls("flush").size(), 6);
    QVERIFY(SettleFile(2 * MIB)); // one for each MiB, and at the end
    QCOMPARE(m_pStick->Calls("flush").size(), 9);
}

void tst_CWritePace::smallFilesAreSettledTogether()
{
    Use(ENWriteBack::FILES);
    const int nBefore = OpenDescriptors();
    QStringList listExpected;
    for (int nFile = 1; nFile <= 32; ++nFile) {
        QVERIFY(SettleFile(4 * KIB));
        listExpected.append(QString("flush %1: 0+0").arg(nFile));
    }
    QCOMPARE(m_pStick->Calls("flush"), QStringList());
    QCOMPARE(OpenDescriptors() - nBefore, 32);
    QCOMPARE(m_pPace->WaitingBytes(), 32 * 4 * KIB);
    QVERIFY(SettleFile(4 * KIB));
    listExpected.append("flush 33: 0+0");
    QCOMPARE(m_pStick->Calls("flush"), listExpected);
    QCOMPARE(OpenDescriptors(), nBefore);
    QCOMPARE(m_pPace->WaitingBytes(), qint64(0));
}

void tst_CWritePace::smallFilesAreSettledWithABigOne()
{
    Use(ENWriteBack::FILES);
    QVERIFY(SettleFile(PIECE));
    QVERIFY(SettleFile(PIECE));
    QVERIFY(SettleFile(2 * MIB)); // its third piece makes a MiB of them all
    QCOMPARE(m_pStick->Calls("flush"),
             QStringList({"flush 1: 0+0", "flush 2: 0+0", "flush 3: 0+0", "flush 3: 0+0"}));
}

void tst_CWritePace::fileThatCannotWaitIsSettledAtOnce()
{
    Use(ENWriteBack::FILES);
    m_pStick->m_bKeeps = false;
    QVERIFY(SettleFile(4 * KIB));
    QCOMPARE(m_pStick->Calls("flush"), QStringList("flush 1: 0+0"));
    m_pStick->m_nError = EIO;
    QVERIFY(!SettleFile(4 * KIB));
    QCOMPARE(errno, EIO);
    QVERIFY(m_listLost.isEmpty());
}

/** One that was begun long ago, and of whose bytes the pace was not told. */
void tst_CWritePace::fileOfAnotherHandIsSettled()
{
    Use(ENWriteBack::FILES);
    const int nDescriptor = Open();
    QVERIFY(m_pPace->Settle(nDescriptor));
    QCOMPARE(m_pStick->Calls("flush"), QStringList("flush 1: 0+0"));
    m_pStick->m_nError = EIO;
    QVERIFY(!m_pPace->Settle(nDescriptor));
    QCOMPARE(errno, EIO);
    ::close(nDescriptor);
}

void tst_CWritePace::endSettlesWhatWaits()
{
    Use(ENWriteBack::FILES);
    const int nBefore = OpenDescriptors();
    QVERIFY(SettleFile(4 * KIB));
    QVERIFY(SettleFile(4 * KIB));
    m_pStick->m_nError = EIO;
    m_fnGoesOn = [](bool) { return false; }; // it was stopped
    m_pPace->End();
    QCOMPARE(m_pStick->Calls("flush"), QStringList({"flush 1: 0+0", "flush 2: 0+0"}));
    QCOMPARE(m_listLost, (QVector<QPair<int, int>>{{1, EIO}, {2, EIO}}));
    QCOMPARE(OpenDescriptors(), nBefore);
    QCOMPARE(m_pPace->FlushError(), 0);
}

void tst_CWritePace::failureIsOfTheFileThatHasIt()
{
    Use(ENWriteBack::FILES);
    QVERIFY(SettleFile(4 * KIB));
    const int nDescriptor = Open();
    m_pStick->m_nError = EIO;
    WriteMore(nDescriptor, 3 * MIB); // is flushed on the way
    m_pStick->m_nError = 0;
    QVERIFY(!m_pPace->Settle(nDescriptor));
    QCOMPARE(errno, EIO);
    Close(nDescriptor);
    m_pPace->Booked(nullptr);
    QCOMPARE(m_listLost, (QVector<QPair<int, int>>{{1, EIO}}));
    QVERIFY(SettleFile(3 * MIB));
    QCOMPARE(m_pPace->FlushError(), 0);
}

void tst_CWritePace::failureOfAFileThatIsNotSettledIsKept()
{
    Use(ENWriteBack::FILES);
    m_pStick->m_nError = EIO;
    WriteFile(3 * MIB);
    QCOMPARE(m_pPace->FlushError(), EIO);
}

/** Its copy was closed while it was being flushed. */
void tst_CWritePace::failureThatNobodyIsToldOfIsKept()
{
    Use(ENWriteBack::FILES);
    QVERIFY(SettleFile(4 * KIB));
    m_pPace->Booked(nullptr);
    m_pPace->KeepError(0);
    QCOMPARE(m_pPace->FlushError(), 0);
    m_pPace->KeepError(EIO);
    m_pPace->KeepError(ENOSPC);
    m_pPace->KeepError(0);
    QCOMPARE(m_pPace->FlushError(), EIO);
    m_pPace->Begin();
    QCOMPARE(m_pPace->FlushError(), 0);
}

void tst_CWritePace::lateFilesOfAHangingCopy()
{
    Use(ENWriteBack::FILES);
    QVERIFY(SettleFile(4 * KIB));
    const std::function<bool()> fnFlush = m_pPace->TakeLate();
    QCOMPARE(m_pStick->Calls("flush"), QStringList());
    QVERIFY(fnFlush());
    QCOMPARE(m_pStick->Calls("flush"), QStringList("flush 1: 0+0"));
    m_pPace->End();
    QCOMPARE(m_pStick->Calls("flush").size(), 1); // they were taken
    QVERIFY(m_pPace->TakeLate()());

    Use(ENWriteBack::FILES);
    QVERIFY(SettleFile(4 * KIB));
    m_pStick->m_nError = EIO;
    QVERIFY(!m_pPace->TakeLate()());
}

QTEST_GUILESS_MAIN(tst_CWritePace)
#include "tst_CWritePace.moc"
