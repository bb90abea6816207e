#include "CBadPages.h"
#include "copy/CCopyControl.h"
#include "copy/CFileCopy.h"
#include "files/CFileNameCodec.h"
#include "support/CTempTree.h"
#include "support/TestFiles.h"

#include <QtTest>

#include <cerrno>

static const qint64 PAGE = 4096;
static const qint64 SIZE = 4 * PAGE;
static const qint64 MIB = 1024 * 1024;

namespace {

class CControl : public CCopyControl
{
public:
    QVector<qint64> m_listChunk; // bytes of each

private:
    bool WaitWhilePaused() override { return true; }
    void ChunkDone(const QString& /*strName*/, qint64 nBytes) override { m_listChunk.append(nBytes); }
    void StepBegins(ENCopyStep /*enStep*/) override { }
    void BytesWritten(qint64 /*nBytes*/) override { }
    bool MakeRoom(qint64 /*nBytes*/) override { return false; }
};

} // namespace

/** Files of one piece in which the disk comes to a bad place. */
class tst_ShortReads : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { CFileNameCodec::Install(); }
    void cleanup() { CBadPages::Reset(); }
    void badPageInASmallFile_data();
    void badPageInASmallFile();
    void fileThatLeavesForTheCloud();
};

void tst_ShortReads::badPageInASmallFile_data()
{
    QTest::addColumn<qint64>("nBad"); // first page
    QTest::addColumn<bool>("bTryOnce");
    QTest::addColumn<int>("nReads");
    // What comes before the bad place is a chunk; the read that breaks off there is tried
    // to its end, and again as the next chunk.
    QTest::newRow("in the middle") << qint64(2) << false << 3;
    QTest::newRow("in the middle, tried once") << qint64(2) << true << 1;
    QTest::newRow("at the beginning") << qint64(0) << false << 1;
    QTest::newRow("at the beginning, tried once") << qint64(0) << true << 1;
}

void tst_ShortReads::badPageInASmallFile()
{
    QFETCH(qint64, nBad);
    QFETCH(bool, bTryOnce);
    CTempTree tree;
    const QByteArray baContent = Pattern(SIZE);
    const QString strSource = tree.Write("src/file", baContent);
    const QString strFolder = tree.MkDir("dst");
    CBadPages::Set("src/file", {{nBad * PAGE, (nBad + 1) * PAGE}}, EIO);
    CControl control;
    CFileCopy copy(QFileInfo(strSource), strFolder, MIB, control);
    if (bTryOnce) {
        copy.TryBadPlacesOnce();
    }
    const STCopyOutcome stOutcome = copy.Copy(strFolder + "/target");
    const int nReads = CBadPages::Reads();
    CBadPages::Reset();
    QCOMPARE(stOutcome.stReason.strText, QString("ReadFile ret = -2"));
    QCOMPARE(stOutcome.stReason.nError, EIO);
    QCOMPARE(stOutcome.nExpected, SIZE);
    QCOMPARE(stOutcome.nCopied, nBad * PAGE);
    QVERIFY(Content(strFolder + "/target") == baContent.left(int(nBad * PAGE)));
    QCOMPARE(control.m_listChunk, nBad == 0 ? QVector<qint64>() : QVector<qint64>{nBad * PAGE});
    QTEST(nReads, "nReads");
}

/** After it was looked at; it is no damaged file, whose copy would be made of zeros. */
void tst_ShortReads::fileThatLeavesForTheCloud()
{
    CTempTree tree;
    const QString strSource = tree.Write("src/file", Pattern(SIZE));
    const QString strFolder = tree.MkDir("dst");
    CBadPages::Set("src/file", {{0, SIZE}}, EDEADLK);
    CControl control;
    CFileCopy copy(QFileInfo(strSource), strFolder, MIB, control);
    copy.TryBadPlacesOnce();
    const STCopyOutcome stOutcome = copy.Copy(strFolder + "/target");
    CBadPages::Reset();
    QCOMPARE(stOutcome.enEnd, ENCopyEnd::NOT_WHOLE);
    QCOMPARE(stOutcome.stReason.enProblem, ENCopyProblem::ONLY_IN_CLOUD);
    QCOMPARE(stOutcome.nCopied, qint64(0));
}

QTEST_GUILESS_MAIN(tst_ShortReads)
#include "tst_ShortReads.moc"
