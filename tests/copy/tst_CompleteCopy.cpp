#include "copy/CMadeRescue.h"

#include <sys/stat.h>

static const int FILES = 2000;
static const char CONTAINERS[] = "Users/anna/Library/Containers";

/** The copy of everything, compared with its source by tools that know nothing of the program. */
class tst_CompleteCopy : public CMadeRescue
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();

    void wholeVolumeIsTheSameOnTheStick_data();
    void wholeVolumeIsTheSameOnTheStick();
    void whatCannotBeCopiedIsNamedAndNothingElse();
    void tickedPartIsTheSameOnTheStick_data();
    void tickedPartIsTheSameOnTheStick();
    void linksToWhatIsNotTickedAreFollowedOnce();
    void linksToWhatIsTickedStayLinks();
    void tickedLinkIsWhatItLeadsTo_data();
    void tickedLinkIsWhatItLeadsTo();
    void twoVolumesAreTheSameOnTheStick();
    void whatIsDeeperThanAnyPathIsNamed();
    void stoppedCopyHasNothingThatItDoesNotOwnUpTo();

private:
    void VerifySame(const QString& strEntry) const;
    void VerifyCount(const STMadeMac& stMade) const;
    void VerifyNothingSaid() const;
    void VerifyProgress() const;
};

void tst_CompleteCopy::initTestCase() { umask(022); }

void tst_CompleteCopy::init()
{
    NEEDS_VOLUMES();
    NEEDS_COMPARE_TOOLS();
}

void tst_CompleteCopy::cleanup() { ClearVolume(); }

/** Source and copy of an entry are the same, by two tools. */
void tst_CompleteCopy::VerifySame(const QString& strEntry) const
{
    const QString strSource = m_pMac->Path(strEntry);
    const bool bAttributes = m_pMac->Made().bAttributes;
    QCOMPARE(CToolCompare::RsyncDifferences(strSource, Arrived(strEntry), bAttributes).join('\n'), QString());
    QCOMPARE(CToolCompare::DiffDifferences(strSource, Arrived(strEntry)).join('\n'), QString());
}

/** All of the volume is on the stick, and nothing twice. */
void tst_CompleteCopy::VerifyCount(const STMadeMac& stMade) const
{
    const STToolCount stCount = CToolCompare::Count(m_strDest);
    QCOMPARE(stCount.nFiles, stMade.nFiles);
    QCOMPARE(stCount.nFolders, stMade.nFolders + 1); // the volume's own
    QCOMPARE(stCount.nLinks, stMade.nLinks);
    QCOMPARE(stCount.nBytes, stMade.nBytes);
    QCOMPARE(m_nCounted, stMade.nBytes);
    // What was said to be needed is enough, and not much more: an own block for each folder and link.
    const qint64 nBlock = CCopyPlatform::GetDiskRules(m_pStick->Path()).nBlockBytes;
    QVERIFY(nBlock > 1);
    QVERIFY2(m_nTaken <= m_nRoom, qPrintable(QString("%1, not %2").arg(m_nTaken).arg(m_nRoom)));
    QVERIFY2(m_nRoom <= m_nTaken + (stMade.nFolders + stMade.nLinks + 2) * nBlock,
             qPrintable(QString("%1, not %2").arg(m_nTaken).arg(m_nRoom)));
    QCOMPARE(Account().nFiles, stMade.nFiles);
    QCOMPARE(Account().nLinks, stMade.nLinks);
    QCOMPARE(Account().nBytes, stMade.nBytes);
}

void tst_CompleteCopy::VerifyNothingSaid() const
{
    QCOMPARE(Said(false), QStringList());
    QCOMPARE(Said(true), QStringList());
    QVERIFY(Account().IsWhole());
    QVERIFY(!QFile::exists(ReportPath()));
}

/** It is of the whole copy: it never goes back, and ends where all of it is done. */
void tst_CompleteCopy::VerifyProgress() const
{
    int nLast = 0;
    for (const QList<QVariant>& listTold : *m_pProgress) {
        const int nPercent = listTold.at(1).toInt();
        QVERIFY(nPercent >= nLast);
        nLast = nPercent;
    }
    QVERIFY(m_pProgress->size() > 2 && m_pProgress->first().at(1).toInt() < 50);
    QCOMPARE(nLast, 100);
}

void tst_CompleteCopy::wholeVolumeIsTheSameOnTheStick_data()
{
    QTest::addColumn<QStringList>("listEntry");
    QTest::addColumn<int>("nOpened");
    QTest::newRow("never opened") << QStringList{""} << 0;
    QTest::newRow("opened two levels") << QStringList{""} << 2;
    QTest::newRow("all that it shows") << QStringList{"*"} << 1;
}

void tst_CompleteCopy::wholeVolumeIsTheSameOnTheStick()
{
    QFETCH(QStringList, listEntry);
    QFETCH(int, nOpened);
    MakeVolume(FILES);
    m_pMac->PlantLinksOut();
    Tick(listEntry, nOpened);
    CountAndCopy(true);
    VerifyNothingSaid();
    VerifySame({});
    VerifyCount(m_pMac->Made());
    VerifyProgress();
}

void tst_CompleteCopy::whatCannotBeCopiedIsNamedAndNothingElse()
{
    MakeVolume(CMadeMac::LEAST_FILES);
    m_pMac->PlantSpecials();
    QVERIFY(m_pMac->PlantMount());
    Tick({""});
    CountAndCopy(true);
    const STMadeMac& stMade = m_pMac->Made();
    QStringList listLeftOut = stMade.listLeftOut;
    listLeftOut.sort();
    QCOMPARE(listLeftOut.size(), 3);
    QCOMPARE(Said(false), listLeftOut);
    QCOMPARE(Said(true), QStringList());
    QVERIFY(QFile::exists(ReportPath()));

    // The mounted one is there as the empty folder that it hides.
    const QStringList listDifference = CToolCompare::RsyncDifferences(m_pMac->Path(), Arrived());
    QVERIFY2(listDifference.size() == 2, qPrintable(listDifference.join('\n')));
    QVERIFY(listDifference.at(0).endsWith(" Users/anna/Library/pipe"));
    QVERIFY(listDifference.at(1).endsWith(" Users/anna/Library/socket"));
    QCOMPARE(CToolCompare::DiffDifferences(m_pMac->Path(), Arrived()).size(), 3);
    VerifyCount(stMade);
}

void tst_CompleteCopy::tickedPartIsTheSameOnTheStick_data()
{
    QTest::addColumn<QStringList>("listEntry");
    QTest::newRow("a home") << QStringList{"Users/anna"};
    QTest::newRow("a folder that links lead to") << QStringList{"Users/anna/Documents"};
    QTest::newRow("a bundle") << QStringList{"Applications/Notes.app"};
    QTest::newRow("parts of the tree")
        << QStringList{"Applications", "Users/anna/Documents",
                       "Users/anna/Pictures/Photos Library.photoslibrary", "Users/Shared/Kinds"};
}

void tst_CompleteCopy::tickedPartIsTheSameOnTheStick()
{
    QFETCH(QStringList, listEntry);
    MakeVolume(FILES);
    m_pMac->PlantLinksOut();
    Tick(listEntry);
    CountAndCopy(true);
    VerifyNothingSaid();
    STToolCount stExpected;
    for (const QString& strEntry : qAsConst(listEntry)) {
        VerifySame(strEntry);
        const STToolCount stCount = CToolCompare::Count(m_pMac->Path(strEntry));
        stExpected.nFiles += stCount.nFiles;
        stExpected.nLinks += stCount.nLinks;
        stExpected.nBytes += stCount.nBytes;
    }
    const STToolCount stArrived = CToolCompare::Count(m_strDest);
    QCOMPARE(stArrived.nFiles, stExpected.nFiles);
    QCOMPARE(stArrived.nLinks, stExpected.nLinks);
    QCOMPARE(stArrived.nBytes, stExpected.nBytes);
    QCOMPARE(m_nCounted, stExpected.nBytes);
    QCOMPARE(Account().nFiles, stExpected.nFiles);
    QCOMPARE(Account().nLinks, stExpected.nLinks);
}

/** Thirty containers link to the same six folders: one has each of them, the others have the links. */
void tst_CompleteCopy::linksToWhatIsNotTickedAreFollowedOnce()
{
    MakeVolume(FILES);
    Tick({CONTAINERS});
    CountAndCopy(true);
    QVERIFY(Account().IsWhole());

    const STToolCount stOwn = CToolCompare::Count(m_pMac->Path(CONTAINERS));
    qint64 nFiles = stOwn.nFiles;
    qint64 nBytes = stOwn.nBytes;
    qint64 nLinks = stOwn.nLinks;
    for (const char* pszName : {"Desktop", "Documents", "Downloads", "Movies", "Music", "Pictures"}) {
        const QString strLinked = m_pMac->Path(QString("Users/anna/") + pszName);
        int nFollowed = 0;
        for (const QString& strContainer :
             QDir(Arrived(CONTAINERS)).entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
            const QString strPlace = QString("%1/%2/Data/%3").arg(CONTAINERS, strContainer, pszName);
            if (QFileInfo(Arrived(strPlace)).isSymLink()) {
                QCOMPARE(QFile::symLinkTarget(Arrived(strPlace)).isEmpty(), false);
            } else {
                ++nFollowed;
                QCOMPARE(CToolCompare::RsyncDifferences(strLinked, Arrived(strPlace)), QStringList());
            }
        }
        QCOMPARE(nFollowed, 1);
        const STToolCount stLinked = CToolCompare::Count(strLinked);
        nFiles += stLinked.nFiles;
        nBytes += stLinked.nBytes;
        nLinks += stLinked.nLinks - 1;
    }
    const STToolCount stArrived = CToolCompare::Count(m_strDest);
    QCOMPARE(stArrived.nFiles, nFiles);
    QCOMPARE(stArrived.nBytes, nBytes);
    QCOMPARE(stArrived.nLinks, nLinks);
    QCOMPARE(m_nCounted, nBytes);
}

/** One folder that a container links to is ticked itself, the others are not. */
void tst_CompleteCopy::linksToWhatIsTickedStayLinks()
{
    MakeVolume(FILES);
    const QString strContainer = QString(CONTAINERS) + "/com.example.app00001";
    Tick({strContainer, "Users/anna/Documents"});
    CountAndCopy(true);
    VerifyNothingSaid();
    VerifySame("Users/anna/Documents");
    const QString strLink = strContainer + "/Data/Documents";
    QVERIFY(QFileInfo(Arrived(strLink)).isSymLink());
    // The other is one of the photos' own.
    QCOMPARE(CToolCompare::Links(Arrived(strContainer)).join('\n'),
             QString("Data/Documents -> /Users/anna/Documents\n"
                     "Data/Pictures/Photos Library.photoslibrary/database/latest.sqlite -> Photos.sqlite"));
    for (const char* pszName : {"Desktop", "Downloads", "Movies", "Music", "Pictures"}) {
        const QString strFollowed = Arrived(strContainer + "/Data/" + pszName);
        const QString strSource = m_pMac->Path(QString("Users/anna/") + pszName);
        QCOMPARE(CToolCompare::RsyncDifferences(strSource, strFollowed).join('\n'), QString());
    }
    QCOMPARE(CToolCompare::Count(m_strDest).nBytes, m_nCounted);
}

void tst_CompleteCopy::tickedLinkIsWhatItLeadsTo_data()
{
    QTest::addColumn<QString>("strLink");
    QTest::addColumn<QString>("strTarget");
    const QString strData = QString(CONTAINERS) + "/com.example.app0000%1/Data/Documents";
    QTest::newRow("a way from the link") << strData.arg(0) << "Users/anna/Documents";
    QTest::newRow("a way from the volume") << strData.arg(1) << "Users/anna/Documents";
    QTest::newRow("by the volume's name") << "Users/anna/Library/Links out/by name"
                                          << "Users/anna/Documents";
    QTest::newRow("at the top") << "etc"
                                << "private/etc";
}

void tst_CompleteCopy::tickedLinkIsWhatItLeadsTo()
{
    QFETCH(QString, strLink);
    QFETCH(QString, strTarget);
    MakeVolume(FILES);
    m_pMac->PlantLinksOut();
    Tick({strLink});
    CountAndCopy(true);
    VerifyNothingSaid();
    QVERIFY(!QFileInfo(Arrived(strLink)).isSymLink());
    const QString strSource = m_pMac->Path(strTarget);
    QCOMPARE(CToolCompare::RsyncDifferences(strSource, Arrived(strLink)), QStringList());
    QCOMPARE(CToolCompare::Count(m_strDest).nFiles, CToolCompare::Count(strSource).nFiles);
    QCOMPARE(m_nCounted, CToolCompare::Count(strSource).nBytes);
}

/** Their folders have the same numbers, and links of one lead to the other. */
void tst_CompleteCopy::twoVolumesAreTheSameOnTheStick()
{
    MakeVolume(FILES);
    m_pMac->PlantLinksOut();
    const CVolume other("Other", "/dev/nvme0n1p2", 100);
    QVERIFY(other.IsValid());
    CMadeMac otherMac(other.Path(), CMadeMac::LEAST_FILES);
    WriteFile(other.Path("x"), "what a link of the first leads to");
    Tick({""});
    m_pNodes->Add(other.Path());
    CountAndCopy(true);
    VerifyNothingSaid();
    VerifySame({});
    const QString strArrived = m_strDest + "/Other";
    QCOMPARE(CToolCompare::RsyncDifferences(other.Path(), strArrived).join('\n'), QString());
    QCOMPARE(CToolCompare::Count(m_strDest).nFiles, m_pMac->Made().nFiles + otherMac.Made().nFiles + 1);
    QCOMPARE(CToolCompare::Count(m_strDest).nBytes, m_nCounted);
}

/** No call takes a path of more than 4,095 bytes: what has one is said, and all else is there. */
void tst_CompleteCopy::whatIsDeeperThanAnyPathIsNamed()
{
    MakeVolume(CMadeMac::LEAST_FILES);
    m_pMac->PlantTooDeep();
    Tick({""});
    CountAndCopy(true);
    QVERIFY(!Account().IsWhole());
    const QStringList listSaid = Said(false);
    QVERIFY2(!listSaid.isEmpty(), "nothing is left out without a word");
    for (const QString& strPath : listSaid) {
        QVERIFY2(strPath.startsWith(m_pMac->Path("Users/Shared/Too deep/")), qPrintable(strPath));
    }
    const QStringList listDifferent = CToolCompare::RsyncDifferences(m_pMac->Path(), Arrived());
    for (const QString& strLine : listDifferent) {
        // The tool complains of the depth, too.
        const bool bOwnError = strLine.startsWith("rsync") || strLine.startsWith("IO error");
        QVERIFY2(bOwnError || strLine.contains("Users/Shared/Too deep/"), qPrintable(strLine));
    }
    QVERIFY(CToolCompare::Count(m_strDest).nFiles >= m_pMac->Made().nFiles);
}

/** What stands on the stick is whole, or is said not to be. */
void tst_CompleteCopy::stoppedCopyHasNothingThatItDoesNotOwnUpTo()
{
    MakeVolume(FILES);
    Tick({""});
    AfterChunk("5242957", 2, [this] { m_pWorker->SetCopyStatus(COPY_STATUS_STOP); });
    CountAndCopy(true);
    QVERIFY(Account().bStopped);
    const STToolCount stCount = CToolCompare::Count(m_strDest);
    QVERIFY(stCount.nFiles < m_pMac->Made().nFiles);
    const QStringList listSaid = Said(false);
    QCOMPARE(listSaid.size(), 1);
    QCOMPARE(stCount.nFiles, Account().nFiles + 1);
    QCOMPARE(stCount.nLinks, Account().nLinks);
    QCOMPARE(stCount.nBytes, Account().nBytes);
    for (const QString& strLine : CToolCompare::RsyncDifferences(m_pMac->Path(), Arrived())) {
        // Not there yet, or a folder that the copy had not left.
        const bool bExpected = strLine.contains("+++++++++") || strLine.startsWith(".d")
            || m_pMac->Path(strLine.section(' ', 1)) == listSaid.constFirst();
        QVERIFY2(bExpected, qPrintable(strLine));
    }
}

QTEST_GUILESS_MAIN(tst_CompleteCopy)
#include "tst_CompleteCopy.moc"
