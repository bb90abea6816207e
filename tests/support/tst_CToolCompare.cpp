#include "files/CFileNameCodec.h"
#include "support/CMadeMac.h"
#include "support/CTempTree.h"
#include "support/CToolCompare.h"
#include "support/CVolume.h"
#include "support/TestFiles.h"

#include <QFile>
#include <QProcess>
#include <QtTest>

#include <memory>

static const int FILES = 300;

/** The made volume and the tools that compare: what they do not see, no test would. */
class tst_CToolCompare : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();

    void madeVolumeIsWhatItCounts_data();
    void madeVolumeIsWhatItCounts();
    void madeVolumeIsTheSameEachTime();
    void sameFoldersDoNotDiffer();
    void changeIsSeen_data();
    void changeIsSeen();

private:
    void MakeCopy();
    void Change(const QString& strCommand) const;

    std::unique_ptr<CTempTree> m_pTree;
    bool m_bAttributes = false;
};

void tst_CToolCompare::initTestCase() { CFileNameCodec::Install(); }

void tst_CToolCompare::init()
{
    NEEDS_COMPARE_TOOLS();
    m_pTree = std::make_unique<CTempTree>();
    m_pTree->MkDir("mac");
}

/** A made volume with a copy beside it that the system's own command has made. */
void tst_CToolCompare::MakeCopy()
{
    CMadeMac mac(m_pTree->Path("mac"), FILES);
    mac.PlantLinksOut();
    m_bAttributes = mac.Made().bAttributes;
    QCOMPARE(QProcess::execute("cp", {"-a", "--", m_pTree->Path("mac"), m_pTree->Path("copy")}), 0);
}

void tst_CToolCompare::Change(const QString& strCommand) const
{
    QProcess process;
    process.setWorkingDirectory(m_pTree->Path("copy/Users/anna/Documents"));
    process.start("sh", {"-c", strCommand});
    QVERIFY(process.waitForFinished());
    QCOMPARE(process.exitCode(), 0);
}

void tst_CToolCompare::madeVolumeIsWhatItCounts_data()
{
    QTest::addColumn<int>("nFiles");
    QTest::newRow("the fewest") << CMadeMac::LEAST_FILES;
    QTest::newRow("some") << 1234;
}

void tst_CToolCompare::madeVolumeIsWhatItCounts()
{
    NEEDS_VOLUMES();
    QFETCH(int, nFiles);
    CMadeMac mac(m_pTree->Path("mac"), nFiles);
    mac.PlantLinksOut();
    mac.PlantSpecials();
    QVERIFY(mac.PlantMount());
    const STMadeMac& stMade = mac.Made();
    const STToolCount stCount = CToolCompare::Count(mac.Path());
    QCOMPARE(stMade.nFiles, qint64(nFiles));
    QCOMPARE(stCount.nFiles, stMade.nFiles);
    QCOMPARE(stCount.nFolders, stMade.nFolders);
    QCOMPARE(stCount.nLinks, stMade.nLinks);
    QCOMPARE(stCount.nBytes, stMade.nBytes);
    QCOMPARE(stCount.nOthers + 1, qint64(stMade.listLeftOut.size()));
    QVERIFY(stMade.nLinks > 30 * 6);
}

void tst_CToolCompare::madeVolumeIsTheSameEachTime()
{
    m_pTree->MkDir("again");
    const CMadeMac mac(m_pTree->Path("mac"), FILES);
    const CMadeMac again(m_pTree->Path("again"), FILES);
    const bool bAttributes = mac.Made().bAttributes;
    QCOMPARE(CToolCompare::RsyncDifferences(mac.Path(), again.Path(), bAttributes), QStringList());
    QCOMPARE(CToolCompare::Digest(mac.Path()), CToolCompare::Digest(again.Path()));
}

void tst_CToolCompare::sameFoldersDoNotDiffer()
{
    MakeCopy();
    const QString strSource = m_pTree->Path("mac");
    const QString strCopy = m_pTree->Path("copy");
    QCOMPARE(CToolCompare::RsyncDifferences(strSource, strCopy, true), QStringList());
    QCOMPARE(CToolCompare::DiffDifferences(strSource, strCopy), QStringList());
    QCOMPARE(CToolCompare::Digest(strSource), CToolCompare::Digest(strCopy));
}

void tst_CToolCompare::changeIsSeen_data()
{
    QTest::addColumn<QString>("strCommand");
    QTest::addColumn<bool>("bByRsync");
    QTest::addColumn<bool>("bByDiff");
    QTest::addColumn<bool>("bByDigest");
    const auto fnRow
        = [](const char* pszWhat, const char* pszCommand, bool bRsync, bool bDiff, bool bDigest) {
              QTest::newRow(pszWhat) << pszCommand << bRsync << bDiff << bDigest;
          };
    fnRow("a byte alone",
          "t=$(stat -c %y keys.txt); printf S | dd of=keys.txt conv=notrunc status=none; touch -d \"$t\" "
          "keys.txt",
          true, true, true);
    fnRow("a missing file", "rm letter.txt", true, true, true);
    fnRow("one file more", "echo >more", true, true, true);
    fnRow("a missing empty folder", "rmdir Names/bbbbb*", true, true, true);
    fnRow("a link's text", "ln -sfn /else ../Library/Loops/here", true, true, true);
    fnRow("a link that was followed", "rm ../Library/Loops/one/two; mkdir ../Library/Loops/one/two", true,
          true, true);
    fnRow("a file's time", "touch -d @1 letter.txt", true, false, true);
    fnRow("a file's nanosecond", "touch -d @$(stat -c %Y letter.txt).000000001 letter.txt", true, false,
          true);
    fnRow("a folder's time", "touch -d @1 .", true, false, false);
    fnRow("permissions of a file", "chmod 0640 keys.txt", true, false, true);
    fnRow("permissions of a folder", "chmod 0755 .", true, false, false);
    fnRow("an attribute", "setfattr -x 'user.of a locked one' 'read only.txt'", true, false, false);
}

void tst_CToolCompare::changeIsSeen()
{
    QFETCH(QString, strCommand);
    QFETCH(bool, bByRsync);
    QFETCH(bool, bByDiff);
    QFETCH(bool, bByDigest);
    MakeCopy();
    if (strCommand.startsWith("setfattr") && !m_bAttributes) {
        QSKIP("the file system holds no attributes");
    }
    Change(strCommand);
    const QString strSource = m_pTree->Path("mac");
    const QString strCopy = m_pTree->Path("copy");
    QCOMPARE(!CToolCompare::RsyncDifferences(strSource, strCopy, true).isEmpty(), bByRsync);
    QCOMPARE(!CToolCompare::DiffDifferences(strSource, strCopy).isEmpty(), bByDiff);
    QCOMPARE(CToolCompare::Digest(strSource) != CToolCompare::Digest(strCopy), bByDigest);
}

QTEST_GUILESS_MAIN(tst_CToolCompare)
#include "tst_CToolCompare.moc"
