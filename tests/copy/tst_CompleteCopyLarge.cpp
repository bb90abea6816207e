#include "copy/CMadeRescue.h"
#include "support/ProcessUse.h"

#include <QElapsedTimer>

#include <sys/stat.h>

static const int FILES = 200000;
static const int DISK_MIB = 2000;
// For the folders, of which there are some 2,000, and what belongs to one file.
static const qint64 MOST_MIB = 30;

/** As many files as a home has: all of them, once, in little memory. */
class tst_CompleteCopyLarge : public CMadeRescue
{
    Q_OBJECT

private slots:
    void initTestCase() { umask(022); }
    void init();
    void cleanup() { ClearVolume(); }

    void manyFilesNeedLittleMemory();
};

void tst_CompleteCopyLarge::init()
{
    NEEDS_VOLUMES();
    NEEDS_COMPARE_TOOLS();
}

void tst_CompleteCopyLarge::manyFilesNeedLittleMemory()
{
    MakeVolume(FILES, DISK_MIB);
    Tick({""});
    // What is told of each chunk is kept for the test, and would count as the copy's.
    m_pProgress.reset();
    m_pRemaining.reset();
    QVERIFY(ForgetPeakMemory());
    const qint64 nBefore = PeakMemoryMiB();
    QElapsedTimer timer;
    timer.start();
    CountAndCopy(true);
    const qint64 nAdded = PeakMemoryMiB() - nBefore;
    qInfo("%d files in %lld ms, %lld MiB more at the most", FILES, timer.elapsed(), nAdded);

    const STMadeMac& stMade = m_pMac->Made();
    QVERIFY(Account().IsWhole());
    QCOMPARE(Account().nFiles, stMade.nFiles);
    QCOMPARE(Account().nLinks, stMade.nLinks);
    QCOMPARE(Account().nNotes, qint64(0));
    QCOMPARE(m_nCounted, stMade.nBytes);
    const STToolCount stCount = CToolCompare::Count(m_strDest);
    QCOMPARE(stCount.nFiles, stMade.nFiles);
    QCOMPARE(stCount.nFolders, stMade.nFolders + 1); // the volume's own
    QCOMPARE(stCount.nLinks, stMade.nLinks);
    QCOMPARE(stCount.nBytes, stMade.nBytes);
    QCOMPARE(CToolCompare::RsyncDifferences(m_pMac->Path(), Arrived(), stMade.bAttributes), QStringList());
    QVERIFY2(nAdded <= MOST_MIB, "the walk keeps what it has come to");
}

QTEST_GUILESS_MAIN(tst_CompleteCopyLarge)
#include "tst_CompleteCopyLarge.moc"
