#include "files/CFolderReader.h"
#include "flow/CReadAdvice.h"
#include "support/CCopyBed.h"
#include "support/CFaultyDisk.h"
#include "support/CLoopDisk.h"
#include "support/CVolume.h"
#include "support/TestFiles.h"

#include <QFile>
#include <QMap>

#include <atomic>
#include <cerrno>
#include <dlfcn.h>
#include <fcntl.h>
#include <memory>
#include <unistd.h>

static const int FILES = 800;
static const int FIRST_BAD = 60; // in the order of the copy
static const int SECOND_BAD = 90;
static const int PROOF = 15; // comes before the copy
static const int ASKED_BEFORE = 20; // the copy goes on behind it when the first bad one was asked for
static const qint64 FILE_BYTES = 9000;
static const qint64 SECTOR = 4096;

// What is asked for ahead; set while no copy runs.
static bool s_bRefuses = false;
static QByteArray s_baBad; // path of the first bad file
static CGate* s_pBadAsked = nullptr; // opened when it is asked for
static std::atomic<int> s_nAsked{0};
static std::atomic<bool> s_bPast{false}; // the copy is past its first error
static std::atomic<int> s_nAskedPast{0};

extern "C" int posix_fadvise(int nDescriptor, off_t nFrom, off_t nBytes, int nAdvice) noexcept
{
    if (nAdvice == POSIX_FADV_WILLNEED) {
        if (s_bRefuses) {
            return ENOSYS;
        }
        ++s_nAsked;
        s_nAskedPast += s_bPast ? 1 : 0;
    }
    using Real = int (*)(int, off_t, off_t, int);
    const int nResult
        = reinterpret_cast<Real>(dlsym(RTLD_NEXT, "posix_fadvise"))(nDescriptor, nFrom, nBytes, nAdvice);
    const QString strPath = QFile::symLinkTarget(QString("/proc/self/fd/%1").arg(nDescriptor));
    if (nAdvice == POSIX_FADV_WILLNEED && QFile::encodeName(strPath) == s_baBad) {
        s_pBadAsked->Open();
    }
    return nResult;
}

/** Copies from a disk with bad sectors that the kernel reads, beside the same without advice. */
class tst_AdvisedDisk : public CCopyBed
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();

    void badSectorsAreCopiedAsWithoutAdvice_data();
    void badSectorsAreCopiedAsWithoutAdvice();
    void volumeIsFreeWhenTheCopyEnds();

private:
    /** What one copy told and left. */
    struct STResult
    {
        QStringList listTold;
        QMap<QString, QByteArray> mapFile;
        QMap<qint64, int> mapFailed; // reads of bad sectors
    };

    QString Image() const { return m_pFaulty->Path("image"); }
    QString File(const QByteArray& baName) const
    {
        return m_pDisk->Path("Anna/" + QFile::decodeName(baName));
    }
    void Fill();
    void Break(int nFile);
    void PutIn(bool bComplete);
    void WaitForFile(const QByteArray& baName) const;
    STResult Copy(bool bComplete, bool bAdvice);

    std::unique_ptr<CFaultyDisk> m_pFaulty;
    std::unique_ptr<CLoopDisk> m_pDisk;
    QVector<QByteArray> m_listName; // in the order of the folder
};

void tst_AdvisedDisk::initTestCase()
{
    NEEDS_VOLUMES();
    NEEDS_FAULTY_DISKS();
    const QString strMissing = CLoopDisk::Missing();
    if (!strMissing.isEmpty()) {
        QSKIP(qPrintable(strMissing));
    }
}

void tst_AdvisedDisk::init()
{
    m_pFaulty = std::make_unique<CFaultyDisk>("behind", "/dev/nvme0n1p1", 200);
    QVERIFY(m_pFaulty->IsValid());
    QVERIFY(CLoopDisk::Format(m_pFaulty->Behind("image"), 64));
    m_pFaulty->Rule("open", "direct"); // nothing of the image is kept in memory
    m_pDisk = std::make_unique<CLoopDisk>(Image(), "Photos");
    QVERIFY(m_pDisk->IsValid());
    Fill();
}

void tst_AdvisedDisk::cleanup()
{
    s_pBadAsked = nullptr;
    s_baBad.clear();
    Clear();
    m_pDisk.reset();
    m_pFaulty.reset();
}

void tst_AdvisedDisk::Fill()
{
    for (int nFile = 0; nFile < FILES; ++nFile) {
        const QByteArray baName = QByteArray::number(nFile) + ".jpg";
        WriteFile(File(baName), baName + Pattern(FILE_BYTES));
    }
    m_listName.clear();
    {
        CFolderReader reader(QFile::encodeName(m_pDisk->Path("Anna")));
        while (reader.Next()) {
            m_listName.append(reader.Name());
        }
    }
    QCOMPARE(m_listName.count(), FILES);
    QVERIFY(m_pDisk->Unmount()); // all of it has its place now
    m_pDisk.reset();
}

/** Makes the second sector of that file unreadable. */
void tst_AdvisedDisk::Break(int nFile)
{
    m_pDisk = std::make_unique<CLoopDisk>(Image(), "Photos");
    QFile file(File(m_listName.at(nFile)));
    QVERIFY(file.open(QIODevice::ReadOnly));
    STSourceFile stFile;
    stFile.nDescriptor = file.handle();
    const quint64 nPlace = CReadAdvice::PlaceOf(stFile);
    QVERIFY(nPlace > quint64(SECTOR));
    file.close();
    m_pDisk.reset();
    m_pFaulty->BadSectors(qint64(nPlace) + SECTOR, SECTOR, "/image");
}

/** The disk as it is after it was put in: nothing of it is in memory. */
void tst_AdvisedDisk::PutIn(bool bComplete)
{
    m_pDisk = std::make_unique<CLoopDisk>(Image(), "Photos");
    QVERIFY(m_pDisk->IsValid());
    Make();
    m_pNodes->Root()->m_bComplete = bComplete;
    CDirNode* pFolder = m_pNodes->Add(m_pDisk->Path("Anna"));
    for (int nFile = 0; nFile < FILES && !bComplete; ++nFile) {
        m_pNodes->Add(File(m_listName.at(nFile)), Qt::Checked, pFolder);
    }
}

/** Until its bytes have come ahead. */
void tst_AdvisedDisk::WaitForFile(const QByteArray& baName) const
{
    QFile file(File(baName));
    QVERIFY(file.open(QIODevice::ReadOnly));
    QTRY_COMPARE_WITH_TIMEOUT(CReadAdvice::IsThere(file.handle(), 0), ENThere::YES, PATIENCE_MS);
}

tst_AdvisedDisk::STResult tst_AdvisedDisk::Copy(bool bComplete, bool bAdvice)
{
    PutIn(bComplete);
    s_bRefuses = !bAdvice;
    s_nAsked = s_nAskedPast = 0;
    s_bPast = false;
    CGate badAsked;
    s_pBadAsked = &badAsked;
    s_baBad = QFile::encodeName(File(m_listName.at(FIRST_BAD)));
    if (bAdvice) {
        // Advice is found to help when a file has come before the copy, and then goes far ahead.
        AfterChunk(m_listName.at(PROOF - 5), 1, [&] { WaitForFile(m_listName.at(PROOF)); });
        AfterChunk(m_listName.at(ASKED_BEFORE), 1, [&] { QVERIFY(badAsked.Pass(PATIENCE_MS)); });
    }
    AfterChunk(m_listName.at(FIRST_BAD + 1), 1, [] { s_bPast = true; });
    const QMap<qint64, int> mapBefore = m_pFaulty->FailedReads("/image");
    Run(FILES * FILE_BYTES);
    STResult stResult;
    const QMap<qint64, int> mapAfter = m_pFaulty->FailedReads("/image");
    for (auto it = mapAfter.begin(); it != mapAfter.end(); ++it) {
        stResult.mapFailed[it.key()] = it.value() - mapBefore.value(it.key());
    }
    const STCopyAccount stAccount = Account();
    stResult.listTold = ProblemLines() + Told(*m_pProgress);
    stResult.listTold.append(
        QString("%1 files, flushed %2").arg(stAccount.nFiles).arg(int(stAccount.enFlush)));
    for (const STCopyItem& stItem : stAccount.listItem) {
        stResult.listTold.append(QString("%1: %2 of %3, %4, errno %5, %6")
                                     .arg(stItem.strPath)
                                     .arg(stItem.nCopied)
                                     .arg(stItem.nExpected)
                                     .arg(int(stItem.enProblem))
                                     .arg(stItem.nError)
                                     .arg(stItem.strDetail));
    }
    for (const QByteArray& baName : qAsConst(m_listName)) {
        stResult.mapFile[baName] = Content(m_strDest + "/Photos/Anna/" + baName);
    }
    Clear();
    m_pDisk.reset();
    return stResult;
}

void tst_AdvisedDisk::badSectorsAreCopiedAsWithoutAdvice_data()
{
    QTest::addColumn<bool>("bComplete");
    QTest::newRow("ticked items") << false;
    QTest::newRow("complete rescue") << true;
}

void tst_AdvisedDisk::badSectorsAreCopiedAsWithoutAdvice()
{
    QFETCH(bool, bComplete);
    Break(FIRST_BAD);
    Break(SECOND_BAD);
    const STResult stWithout = Copy(bComplete, false);
    QCOMPARE(s_nAsked.load(), 0);
    const STResult stWith = Copy(bComplete, true);
    QVERIFY2(s_nAsked > FIRST_BAD && s_nAsked < FILES, qPrintable(QString::number(s_nAsked)));
    QVERIFY2(s_nAskedPast <= 1, qPrintable(QString::number(s_nAskedPast))); // one that was on its way
    QCOMPARE(stWith.listTold, stWithout.listTold);
    QCOMPARE(stWith.mapFile, stWithout.mapFile);
    QCOMPARE(stWith.mapFailed.keys(), stWithout.mapFailed.keys());
    QCOMPARE(stWith.mapFailed.count(), 2);
    for (const qint64 nSector : stWith.mapFailed.keys()) {
        // Once for the advice; what else the copy tries is the same.
        const int nMore = stWith.mapFailed.value(nSector) - stWithout.mapFailed.value(nSector);
        QVERIFY2(nMore <= 1, qPrintable(QString::number(nMore)));
    }
    const QByteArray baWhole = m_listName.at(FILES - 1) + Pattern(FILE_BYTES);
    QCOMPARE(stWith.mapFile.value(m_listName.at(FILES - 1)), baWhole);
}

void tst_AdvisedDisk::volumeIsFreeWhenTheCopyEnds()
{
    PutIn(false);
    s_bRefuses = false;
    s_nAsked = 0;
    bool bFree = false;
    connect(
        m_pWorker.get(), &CCopyFileThread::SignalCopyFinish, m_pWorker.get(),
        [&] { bFree = m_pDisk->Unmount(); }, Qt::DirectConnection);
    AfterChunk(m_listName.at(ASKED_BEFORE), 1, [&] {
        QTRY_VERIFY_WITH_TIMEOUT(s_nAsked > 0, PATIENCE_MS);
        m_pWorker->SetCopyStatus(COPY_STATUS_STOP);
    });
    Run(FILES * FILE_BYTES);
    QVERIFY(s_nAsked > 0);
    QVERIFY(bFree);
}

QTEST_GUILESS_MAIN(tst_AdvisedDisk)
#include "tst_AdvisedDisk.moc"
