#include "copy/CMadeRescue.h"
#include "support/CImageDisk.h"

#include <sys/stat.h>

using ENKind = CImageDisk::ENKind;
Q_DECLARE_METATYPE(ENKind)

static const int FILES = 600;
static const int STICK_MIB = 200;

/** The made volume, copied whole to the file systems that sticks have. */
class tst_CompleteSticks : public CMadeRescue
{
    Q_OBJECT

private slots:
    void initTestCase() { umask(022); }
    void init();
    void cleanup();

    void everyContentArrivesOnce_data();
    void everyContentArrivesOnce();

private:
    std::unique_ptr<CImageDisk> m_pDisk;
};

void tst_CompleteSticks::init()
{
    NEEDS_VOLUMES();
    NEEDS_COMPARE_TOOLS();
    QFETCH(ENKind, enKind);
    const QString strMissing = CImageDisk::Missing(enKind);
    if (!strMissing.isEmpty()) {
        QSKIP(qPrintable(strMissing));
    }
    MakeVolume(FILES);
    m_pDisk = std::make_unique<CImageDisk>(enKind, "DISK", STICK_MIB);
    QVERIFY(m_pDisk->IsValid());
    m_strDest = m_pDisk->Path("Tarnwick");
}

void tst_CompleteSticks::cleanup()
{
    Clear();
    m_pDisk.reset();
    ClearVolume();
}

void tst_CompleteSticks::everyContentArrivesOnce_data()
{
    QTest::addColumn<ENKind>("enKind");
    QTest::newRow("exFAT") << ENKind::EXFAT;
    QTest::newRow("NTFS") << ENKind::NTFS;
    QTest::newRow("FAT") << ENKind::FAT;
}

void tst_CompleteSticks::everyContentArrivesOnce()
{
    m_pMac->PlantLinksOut();
    Tick({""});
    CountAndCopy(true);
    const STMadeMac& stMade = m_pMac->Made();
    QCOMPARE(Said(false), QStringList());
    QCOMPARE(m_nCounted, stMade.nBytes);
    QCOMPARE(Account().nBytes, stMade.nBytes);
    QFETCH(ENKind, enKind);
    // The driver for FAT tells blocks that are smaller than the clusters that it takes.
    if (enKind != ENKind::FAT) {
        QVERIFY2(m_nTaken <= m_nRoom, qPrintable(QString("%1, not %2").arg(m_nTaken).arg(m_nRoom)));
    }
    QVERIFY(m_pDisk->MountAnew());
    QCOMPARE(CToolCompare::Contents(m_strDest), CToolCompare::Contents(m_pMac->Path()));
    const STToolCount stCount = CToolCompare::Count(m_strDest);
    QCOMPARE(stCount.nFiles, stMade.nFiles);
    QCOMPARE(stCount.nFolders, stMade.nFolders + 1); // the volume's own
    QCOMPARE(stCount.nBytes, stMade.nBytes);
    // What no name changed for, and no link, arrived under its own.
    QVERIFY(Account().nFiles == stMade.nFiles);
    QVERIFY(Account().nLinks == stCount.nLinks);
    QVERIFY(QFile::exists(Arrived("Users/anna/Documents/letter.txt")));
}

QTEST_GUILESS_MAIN(tst_CompleteSticks)
#include "tst_CompleteSticks.moc"
