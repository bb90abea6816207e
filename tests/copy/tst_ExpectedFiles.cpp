#include "copy/CDiskWalk.h"
#include "copy/CNodeWalk.h"
#include "files/CFileNameCodec.h"
#include "support/CCopyBed.h"
#include "support/CWalkRecorder.h"

#include <QDir>
#include <QtTest>

#include <deque>
#include <unistd.h>

namespace {

/** A copy that wants to know what comes, and compares it with what comes. */
class CExpectingWork : public CCopyWork
{
public:
    bool WaitWhilePaused() override { return true; }
    void ChunkDone(const QString&, qint64) override { }
    void StepBegins(ENCopyStep) override { }
    void BytesWritten(qint64) override { }
    bool MakeRoom(qint64) override { return false; }
    bool IsStopped() const override { return m_listCopied.count() == m_nMostFiles; }
    void ItemBegins(const QString&) override { }
    const CCopyDestination& Destination() const override { return m_destination; }
    std::optional<STCopyReason> MakeFolder(const QString&) override { return std::nullopt; }
    void BookFile(const STCopyOutcome&) override { }
    void BookLink() override { }
    void BookProblem(const STCopyOutcome&) override { }
    void BookNote(const STCopyOutcome&) override { }

    bool WantsMore() const override { return int(m_listNext.size()) < m_nMostWaiting && m_nAsleep == 0; }

    void Expect(const QVector<STExpectedFile>& listFile, bool bAnew) override
    {
        m_nToldStopped += IsStopped() ? 1 : 0;
        if (bAnew) {
            m_listNext.clear();
        }
        for (const STExpectedFile& stFile : listFile) {
            m_listNext.push_back(QFile::decodeName(stFile.baPath));
        }
    }

    void CopyListedFile(const QFileInfo& source, const QString&, bool bListedAsLink) override
    {
        m_listCopied.append(source.absoluteFilePath());
        m_nAsleep = qMax(0, m_nAsleep - 1);
        if (bListedAsLink) {
            return;
        }
        if (m_listNext.empty()) {
            m_listUntold.append(source.absoluteFilePath());
        } else if (m_listNext.front() != source.absoluteFilePath()) {
            m_listWrong.append(source.absoluteFilePath() + " instead of " + m_listNext.front());
        } else {
            m_listNext.pop_front();
        }
    }

    STCopyOutcome CopyBytes(const QFileInfo&, const QString&, const QString&) override { return {}; }

    int m_nMostWaiting = 100000; ///< so many are told ahead and no more are wanted
    int m_nAsleep = 0; ///< files for which nothing is wanted
    int m_nMostFiles = -1; ///< after so many it is stopped
    QStringList m_listCopied;
    QStringList m_listUntold; ///< copied, and nobody had told of any file
    QStringList m_listWrong;
    std::deque<QString> m_listNext; ///< told, not copied yet
    int m_nToldStopped = 0; ///< how often it was told of files after the stop

private:
    CCopyDestination m_destination;
};

/** A visitor of the walk over the disk that wants to know what comes. */
class CExpectingVisitor : public CWalkRecorder
{
public:
    using CWalkRecorder::CWalkRecorder;

    bool WantsMore() const override { return m_bWants; }
    bool WantsAnew() const override { return m_bWants && m_nAnew < m_nMostAnew; }

    void Expect(const QVector<STExpectedFile>& listFile, bool bAnew) override
    {
        if (bAnew) {
            m_listNext.clear();
            ++m_nAnew;
        }
        m_nMostTold = qMax(m_nMostTold, listFile.count());
        for (const STExpectedFile& stFile : listFile) {
            m_listNext.push_back(QFile::decodeName(stFile.baPath) + (stFile.bFolder ? "/" : ""));
        }
    }

    bool BeginFolder(const STDiskEntry& stFolder) override
    {
        Meet(QFile::decodeName(stFolder.baPath) + '/');
        return CWalkRecorder::BeginFolder(stFolder);
    }

    void File(const STDiskEntry& stFile) override
    {
        Meet(QFile::decodeName(stFile.baPath));
        CWalkRecorder::File(stFile);
    }

    bool m_bWants = true;
    int m_nMostAnew = 1000;
    int m_nAnew = 0; ///< how often it was told anew
    int m_nMostTold = 0; ///< at once
    int m_nMet = 0; ///< that were told as the next
    QStringList m_listUnmet; ///< came, and something else was told as the next
    std::deque<QString> m_listNext;

private:
    void Meet(const QString& strPath)
    {
        if (!m_listNext.empty() && m_listNext.front() == strPath) {
            m_listNext.pop_front();
            ++m_nMet;
        } else {
            m_listUnmet.append(strPath);
        }
    }
};

}

/** Both walks tell which files they will come to, in the order in which they do. */
class tst_ExpectedFiles : public CCopyBed
{
    Q_OBJECT

private slots:
    void init() { Make(); }
    void cleanup() { Clear(); }

    void nodesInTheirOrder_data();
    void nodesInTheirOrder();
    void nodesAfterASleep();
    void nodesAreLeftAloneAfterAStop();
    void diskInItsOrder_data();
    void diskInItsOrder();
    void diskIsToldAnewOnlyWhenWanted();
    void diskAsWithoutTelling_data();
    void diskAsWithoutTelling();

private:
    void MakeNodes();
    CDirNode* Folder(const QString& strName, Qt::CheckState enState, CDirNode* pParent);
};

CDirNode* tst_ExpectedFiles::Folder(const QString& strName, Qt::CheckState enState, CDirNode* pParent)
{
    QDir().mkpath(m_pTree->Path("src/" + strName));
    return m_pNodes->Add(m_pTree->Path("src/" + strName), enState, pParent);
}

/** Folders and files of all kinds of ticks, links and empty folders. */
void tst_ExpectedFiles::MakeNodes()
{
    CDirNode* pOne = Folder("one", Qt::PartiallyChecked, nullptr);
    CDirNode* pInner = Folder("one/inner", Qt::Checked, pOne);
    Folder("one/inner/empty", Qt::Checked, pInner);
    for (int i = 0; i < 20; ++i) {
        Add(QStringLiteral("one/inner/%1").arg(i), "x", i % 3 == 0 ? Qt::Unchecked : Qt::Checked, pInner);
    }
    CDirNode* pNot = Folder("one/not", Qt::Unchecked, pOne);
    Add("one/not/file", "x", Qt::Unchecked, pNot);
    Folder("one/empty", Qt::Checked, pOne);
    Add("one/file", "x", Qt::Checked, pOne);
    QVERIFY(symlink("file", QFile::encodeName(m_pTree->Path("src/one/link")).constData()) == 0);
    m_pNodes->Add(m_pTree->Path("src/one/link"), Qt::Checked, pOne);
    CDirNode* pTwo = Folder("two", Qt::Checked, nullptr);
    CDirNode* pDeep = pTwo;
    for (const char* pszName : {"two/a", "two/a/b", "two/a/b/c"}) {
        pDeep = Folder(pszName, Qt::Checked, pDeep);
        Add(QString(pszName) + "/file", "x", Qt::Checked, pDeep);
    }
    Add("two/last", "x", Qt::Checked, pTwo);
    Folder("three", Qt::Checked, nullptr);
}

void tst_ExpectedFiles::nodesInTheirOrder_data()
{
    QTest::addColumn<int>("nMostWaiting");
    QTest::newRow("all at once") << 100000;
    QTest::newRow("some at a time") << 5;
    QTest::newRow("when nothing is left") << 1;
}

void tst_ExpectedFiles::nodesInTheirOrder()
{
    QFETCH(int, nMostWaiting);
    MakeNodes();
    CExpectingWork work;
    work.m_nMostWaiting = nMostWaiting;
    CNodeWalk(*m_pNodes->Root(), work, m_strDest).Walk();
    QCOMPARE(work.m_listCopied.count(), 19);
    QCOMPARE(work.m_listWrong, QStringList());
    QCOMPARE(work.m_listUntold, QStringList());
    QVERIFY(work.m_listNext.empty());
}

void tst_ExpectedFiles::nodesAfterASleep()
{
    for (int nAsleep = 1; nAsleep < 19; ++nAsleep) {
        m_pNodes->Clear();
        MakeNodes();
        CExpectingWork work;
        work.m_nAsleep = nAsleep;
        CNodeWalk(*m_pNodes->Root(), work, m_strDest).Walk();
        QCOMPARE(work.m_listCopied.count(), 19);
        QCOMPARE(work.m_listWrong, QStringList());
        QVERIFY(work.m_listUntold.count() <= nAsleep);
        QVERIFY(work.m_listNext.empty());
        QFile::remove(m_pTree->Path("src/one/link"));
    }
}

void tst_ExpectedFiles::nodesAreLeftAloneAfterAStop()
{
    MakeNodes();
    CExpectingWork work;
    work.m_nMostWaiting = 1;
    work.m_nMostFiles = 7;
    CNodeWalk(*m_pNodes->Root(), work, m_strDest).Walk();
    QCOMPARE(work.m_listCopied.count(), 7);
    QCOMPARE(work.m_nToldStopped, 0);
}

void tst_ExpectedFiles::diskInItsOrder_data()
{
    QTest::addColumn<int>("nFiles");
    QTest::newRow("a few") << 5;
    QTest::newRow("as many as are read ahead") << 256;
    QTest::newRow("more") << 1000;
}

void tst_ExpectedFiles::diskInItsOrder()
{
    QFETCH(int, nFiles);
    for (int i = 0; i < nFiles; ++i) {
        m_pTree->Write(QStringLiteral("disk/file %1").arg(i), "x");
    }
    for (const char* pszName : {"a", "b", "c"}) {
        m_pTree->Write(QStringLiteral("disk/%1/file").arg(pszName), "x");
        QDir().mkpath(m_pTree->Path(QStringLiteral("disk/%1/empty").arg(pszName)));
    }
    const QString strDisk = m_pTree->Path("disk");
    CExpectingVisitor visitor(strDisk);
    CDiskWalk({{strDisk, strDisk}}, visitor).Walk();
    // The folder that is the item was not told, as nothing was known before it.
    QCOMPARE(visitor.m_listUnmet, QStringList(strDisk + '/'));
    QCOMPARE(visitor.m_nMet, nFiles + 3 + 6);
    QVERIFY2(visitor.m_nMostTold <= 256 + 3, qPrintable(QString::number(visitor.m_nMostTold)));
}

/** Who still works on what was told first is not told all of it again in each folder. */
void tst_ExpectedFiles::diskIsToldAnewOnlyWhenWanted()
{
    for (const char* pszPath :
         {"disk/file", "disk/a/file", "disk/a/b/c/file", "disk/a/d/file", "disk/e/file"}) {
        m_pTree->Write(pszPath, "x");
    }
    const QString strDisk = m_pTree->Path("disk");
    CExpectingVisitor visitor(strDisk);
    visitor.m_nMostAnew = 1;
    CDiskWalk({{strDisk, strDisk}}, visitor).Walk();
    QCOMPARE(visitor.m_nAnew, 1);
    // Deep inside, what waits in all folders around is told.
    CExpectingVisitor deep(strDisk);
    CDiskWalk({{strDisk, strDisk}}, deep).Walk();
    QVERIFY(deep.m_nAnew > 1);
    QCOMPARE(deep.m_listUnmet, QStringList(strDisk + '/'));
}

void tst_ExpectedFiles::diskAsWithoutTelling_data()
{
    QTest::addColumn<bool>("bWants");
    QTest::newRow("told") << true;
    QTest::newRow("not told") << false;
}

/** The walk asks as often whether it goes on, and hands over the same in the same order. */
void tst_ExpectedFiles::diskAsWithoutTelling()
{
    QFETCH(bool, bWants);
    for (int i = 0; i < 300; ++i) {
        m_pTree->Write(QStringLiteral("disk/%1/file %2").arg(i % 7).arg(i), "x");
    }
    const QString strDisk = m_pTree->Path("disk");
    CWalkRecorder plain(strDisk);
    CDiskWalk({{strDisk, strDisk}}, plain).Walk();
    for (const qint64 nMostSteps : {qint64(-1), plain.m_nSteps / 2, qint64(20)}) {
        CWalkRecorder without(strDisk);
        CExpectingVisitor with(strDisk);
        without.m_nMostSteps = with.m_nMostSteps = nMostSteps;
        with.m_bWants = bWants;
        CDiskWalk({{strDisk, strDisk}}, without).Walk();
        CDiskWalk({{strDisk, strDisk}}, with).Walk();
        QCOMPARE(with.m_listLine, without.m_listLine);
        QCOMPARE(with.m_nSteps, without.m_nSteps);
        QCOMPARE(with.m_nAfterEnd, 0);
        QCOMPARE(with.m_nMostTold > 0, bWants);
    }
}

QTEST_GUILESS_MAIN(tst_ExpectedFiles)
#include "tst_ExpectedFiles.moc"
