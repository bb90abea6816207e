#include "flow/CWriteBack.h"
#include "support/CCopyBed.h"
#include "support/CFaultyDisk.h"
#include "support/CImageDisk.h"
#include "support/TestFiles.h"

#include <QFile>

#include <cerrno>
#include <cstring>
#include <fcntl.h>

using ENKind = CImageDisk::ENKind;
Q_DECLARE_METATYPE(ENKind)

static const qint64 MIB = 1024 * 1024;

/** Paced copies to drivers in user space, which write past the system's cache of files. */
class tst_PacedSticks : public CCopyBed
{
    Q_OBJECT

private slots:
    void init() { Make(); }
    void cleanup();

    void kindOfMemory();
    void kindOfADriver();
    void fileIsOpenedAgainToRead();
    void fileIsFlushedWhileItIsCopied();
    void failedFlushIsTold();
    void smallFilesAreNotFlushedOneByOne();
    void copiesArrive_data();
    void copiesArrive();

private:
    void UseFaultyDisk();
    static ENWriteBack KindAt(const QString& strPath);

    std::unique_ptr<CFaultyDisk> m_pDisk;
    std::unique_ptr<CImageDisk> m_pImage;
};

void tst_PacedSticks::cleanup()
{
    if (m_pDisk) {
        m_pDisk->Heal();
    }
    Clear();
    m_pDisk.reset();
    m_pImage.reset();
}

void tst_PacedSticks::UseFaultyDisk()
{
    m_pDisk = std::make_unique<CFaultyDisk>("DISK", "/dev/sdz1", 200);
    QVERIFY(m_pDisk->IsValid());
    m_strDest = m_pDisk->Path("Tarnwick");
}

/** What works on the file system of a file that is made there. */
ENWriteBack tst_PacedSticks::KindAt(const QString& strPath)
{
    WriteFile(strPath, "x");
    QFile file(strPath);
    return file.open(QIODevice::ReadOnly) ? CWriteBack().KindOf(file.handle()) : ENWriteBack::RANGES;
}

void tst_PacedSticks::kindOfMemory()
{
    QCOMPARE(KindAt(m_pTree->Path("file")), ENWriteBack::NONE); // the sandbox lies in memory
    QCOMPARE(CWriteBack().KindOf(-1), ENWriteBack::NONE);
}

void tst_PacedSticks::kindOfADriver()
{
    NEEDS_FAULTY_DISKS();
    UseFaultyDisk();
    QCOMPARE(KindAt(m_pDisk->Path("file")), ENWriteBack::DISK);
}

void tst_PacedSticks::fileIsOpenedAgainToRead()
{
    const QByteArray baPath = QFile::encodeName(m_pTree->Write("file", "content"));
    const int nFirst = open(baPath.constData(), O_WRONLY | O_CLOEXEC);
    const int nAgain = CWriteBack().OpenAgain(nFirst);
    close(nFirst);
    QVERIFY(nAgain != -1);
    QCOMPARE(fcntl(nAgain, F_GETFL) & O_ACCMODE, O_RDONLY);
    QCOMPARE(fcntl(nAgain, F_GETFD) & FD_CLOEXEC, FD_CLOEXEC);
    char szContent[8] = {};
    QCOMPARE(int(read(nAgain, szContent, sizeof szContent)), 7);
    QCOMPARE(QByteArray(szContent), QByteArray("content"));
    close(nAgain);
    QCOMPARE(CWriteBack().OpenAgain(-1), -1);
}

void tst_PacedSticks::fileIsFlushedWhileItIsCopied()
{
    NEEDS_FAULTY_DISKS();
    UseFaultyDisk();
    Add("file", Pattern(12 * MIB));
    m_pDisk->Rule("fsync", "hang", 0, "/file");
    Start(12 * MIB);
    // A disk that does not write what it has is waited for before more is told.
    QTRY_VERIFY(m_pWorker->BytesDone() > 0 && m_pWorker->SinceProgressMs() > 300);
    QVERIFY(m_pWorker->BytesDone() <= 2 * MIB);
    QCOMPARE(m_pProgress->count(), 0);
    m_pDisk->Heal();
    QVERIFY(WaitForEnd());
    QCOMPARE(Copied("file"), Pattern(12 * MIB));
    QCOMPARE(Account().enFlush, ENCopyFlush::DONE);
}

void tst_PacedSticks::failedFlushIsTold()
{
    NEEDS_FAULTY_DISKS();
    UseFaultyDisk();
    Add("file", Pattern(12 * MIB));
    m_pDisk->Rule("fsync", "error", EIO, "/file");
    Run(12 * MIB);
    QCOMPARE(Copied("file"), Pattern(12 * MIB));
    QCOMPARE(Account().nFiles, 1);
    QCOMPARE(Account().enFlush, ENCopyFlush::FAILED);
    QCOMPARE(ProblemLines().size(), 1);
    QVERIFY2(ProblemLines().first().contains(strerror(EIO)), qPrintable(ProblemLines().first()));
}

void tst_PacedSticks::smallFilesAreNotFlushedOneByOne()
{
    NEEDS_FAULTY_DISKS();
    UseFaultyDisk();
    for (int nFile = 0; nFile < 20; ++nFile) {
        Add(QString("file %1").arg(nFile), Pattern(40000));
    }
    // Less than a MiB in all; a flush of one of them would fail.
    for (int nDigit = 0; nDigit < 10; ++nDigit) {
        m_pDisk->Rule("fsync", "error", EIO, QString::number(nDigit));
    }
    Run(20 * 40000);
    QCOMPARE(Account().nFiles, 20);
    QCOMPARE(Account().enFlush, ENCopyFlush::DONE);
}

void tst_PacedSticks::copiesArrive_data()
{
    QTest::addColumn<ENKind>("enKind");
    QTest::newRow("exFAT") << ENKind::EXFAT;
    QTest::newRow("NTFS") << ENKind::NTFS;
    QTest::newRow("FAT") << ENKind::FAT;
}

void tst_PacedSticks::copiesArrive()
{
    QFETCH(ENKind, enKind);
    const QString strMissing = CImageDisk::Missing(enKind);
    if (!strMissing.isEmpty()) {
        QSKIP(qPrintable(strMissing));
    }
    m_pImage = std::make_unique<CImageDisk>(enKind, "DISK", 100);
    QVERIFY(m_pImage->IsValid());
    m_strDest = m_pImage->Path("Tarnwick");
    QCOMPARE(KindAt(m_pImage->Path("any")), ENWriteBack::DISK);
    Add("big", Pattern(20 * MIB));
    for (int nFile = 0; nFile < 60; ++nFile) {
        Add(QString("small %1").arg(nFile), Pattern(30000 + nFile));
    }
    Run(22 * MIB);
    QCOMPARE(Account().nFiles, 61);
    QCOMPARE(Account().enFlush, ENCopyFlush::DONE);
    QVERIFY(m_pImage->MountAnew());
    QCOMPARE(Copied("big"), Pattern(20 * MIB));
    for (int nFile = 0; nFile < 60; ++nFile) {
        QCOMPARE(Copied(QString("small %1").arg(nFile)), Pattern(30000 + nFile));
    }
}

QTEST_GUILESS_MAIN(tst_PacedSticks)
#include "tst_PacedSticks.moc"
