#include "CBadPages.h"
#include "copy/CCopyDestination.h"
#include "copy/CCopyWork.h"
#include "copy/CDamagedFiles.h"
#include "copy/CFileCopy.h"
#include "files/CFileNameCodec.h"
#include "support/CMovedClock.h"
#include "support/CTempTree.h"
#include "support/TestFiles.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QtTest>

#include <cerrno>
#include <fcntl.h>
#include <functional>
#include <sys/stat.h>
#include <unistd.h>

using Places = CBadPages::Places;
Q_DECLARE_METATYPE(Places)

static const qint64 PAGE = 4096;
static const qint64 KIB = 1024;
static const qint64 MIB = 1024 * 1024;
static const qint64 MODIFIED_SEC = 1100000000;

namespace {

/** Files and their copies, and what the work is asked and told meanwhile. */
class CDamageBed : private CCopyWork
{
public:
    CDamageBed() { m_tree.MkDir("dst"); }

    void Use(const STDamageRules& stRules)
    {
        const auto fnDone = [this](const STDamagedFile& /*stFile*/, const STCopyOutcome& stOutcome) {
            m_listDone.append(stOutcome);
        };
        m_pFiles = std::make_unique<CDamagedFiles>(static_cast<CCopyWork&>(*this), fnDone, stRules);
    }

    /** Writes a file, copies it as far as that goes, and puts it aside. */
    void Add(const QString& strName, const QByteArray& baContent)
    {
        const QString strSource = m_tree.Write("src/" + strName, baContent);
        const timespec listTime[2] = {{1000000000, 0}, {time_t(MODIFIED_SEC), 123456789}};
        QCOMPARE(utimensat(AT_FDCWD, QFile::encodeName(strSource).constData(), listTime, 0), 0);
        AddWritten(strName);
    }

    void AddWritten(const QString& strName)
    {
        const QString strSource = m_tree.Path("src/" + strName);
        const STFileState stState = CCopyPlatform::GetEntryState(strSource).value_or(STFileState());
        const STCopyOutcome stOutcome = CopyBytes(QFileInfo(strSource), m_tree.Path("dst"), Copy(strName));
        QCOMPARE(int(stOutcome.stReason.enProblem), int(ENCopyProblem::SOURCE_READ));
        m_pFiles->Add({strSource, Copy(strName), stOutcome, stState});
    }

    void Finish() { m_pFiles->Finish(); }

    QString Source(const QString& strName) const { return m_tree.Path("src/" + strName); }
    QString Copy(const QString& strName) const { return m_tree.Path("dst/" + strName); }

    /** An outcome in one line. */
    QString Done(int nFile = 0) const
    {
        const STCopyOutcome stOutcome = m_listDone.value(nFile);
        const QStringList listEnd{"whole", "stopped: ", "not whole: "};
        QString strText = listEnd.at(int(stOutcome.enEnd)) + stOutcome.stReason.strText;
        if (stOutcome.stReason.nError != 0) {
            strText += ": " + qt_error_string(stOutcome.stReason.nError);
        }
        return strText + QString(", %1 of %2").arg(stOutcome.nCopied).arg(stOutcome.nExpected);
    }

    CTempTree m_tree;
    QVector<STCopyOutcome> m_listDone;
    bool m_bStopped = false;
    int m_nAllowed = INT_MAX; // chunks until it is to stop
    int m_nAsked = 0;
    int m_nChunks = 0;
    qint64 m_nTold = 0; // bytes dealt with
    qint64 m_nWritten = 0;
    int m_nRoomMade = 0;
    QStringList m_listItem; // that the work has come to
    std::function<void()> m_fnAfterChunk;
    QStringList m_listFlushed; // targets, with their times
    int m_nFlushError = 0;

private:
    bool IsStopped() const override { return m_bStopped; }
    void ItemBegins(const QString& strPath) override { m_listItem.append(QFileInfo(strPath).fileName()); }
    const CCopyDestination& Destination() const override { return m_destination; }
    std::optional<STCopyReason> MakeFolder(const QString& /*strFolder*/) override { return std::nullopt; }
    void CopyListedFile(const QFileInfo& /*source*/, const QString& /*strFolder*/, bool /*bLink*/) override {
    }
    STCopyOutcome CopyBytes(const QFileInfo& source, const QString& strFolder,
                            const QString& strTarget) override
    {
        CFileCopy copy(source, strFolder, MIB, *this, false);
        copy.TryBadPlacesOnce();
        return copy.Copy(strTarget);
    }
    void BookFile(const STCopyOutcome& /*stOutcome*/) override { }
    void BookLink() override { }
    void BookProblem(const STCopyOutcome& /*stOutcome*/) override { }
    void BookNote(const STCopyOutcome& /*stOutcome*/) override { }
    bool WaitWhilePaused() override
    {
        m_bStopped = m_bStopped || ++m_nAsked > m_nAllowed;
        return !m_bStopped;
    }
    void ChunkDone(const QString& /*strName*/, qint64 nBytes) override
    {
        ++m_nChunks;
        m_nTold += nBytes;
        if (m_fnAfterChunk) {
            m_fnAfterChunk();
        }
    }
    void StepBegins(ENCopyStep /*enStep*/) override { }
    void BytesWritten(qint64 nBytes) override { m_nWritten += nBytes; }
    bool FlushTarget(int nDescriptor) override
    {
        const QString strPath = QFile::symLinkTarget(QString("/proc/self/fd/%1").arg(nDescriptor));
        const STFileState stState = CCopyPlatform::GetOpenState(nDescriptor).value_or(STFileState());
        m_listFlushed.append(QFileInfo(strPath).fileName() + ' ' + QString::number(stState.nModifiedSec));
        errno = m_nFlushError;
        return m_nFlushError == 0;
    }
    bool MakeRoom(qint64 /*nBytes*/) override
    {
        ++m_nRoomMade;
        return false;
    }

    CCopyDestination m_destination;
    std::unique_ptr<CDamagedFiles> m_pFiles;
};

} // namespace

static STDamageRules Rules(qint64 nFileMs = 60000, qint64 nAllMs = 900000, int nMostAside = 1000)
{
    return {nFileMs, nAllMs, nMostAside};
}

/** The content with zeros in the places. */
static QByteArray WithZeros(QByteArray baContent, const Places& listPlace)
{
    for (const auto& place : listPlace) {
        const int nLen = int(qMin<qint64>(place.second, baContent.size()) - place.first);
        baContent.replace(int(place.first), nLen, QByteArray(nLen, '\0'));
    }
    return baContent;
}

class tst_CDamagedFiles : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { CFileNameCodec::Install(); }
    void init();
    void cleanup();

    void ranges_data();
    void ranges();
    void sparseFile();
    void moreRangesThanTheReportHasRoomFor();
    void sectorsWhereTheDiskTellsThem();
    void smallStepsGoPastTheCache_data();
    void smallStepsGoPastTheCache();
    void wholeAfterAll();
    void timeThatCannotBeKept();
    void targetIsFlushedLast();
    void targetThatIsNotOnTheDisk();

    void asideUntilFinish();
    void tooManyAreFinishedAtOnce();

    void timeOfAFile();
    void timeOfAll();
    void slowPlacesTakeTimeToo();
    void whatLiesBehindASlowPlace();
    void endOfAFileWhenTheTimeOfAllIsOver();
    void placesThatFailAtOnce();

    void stopInTheMiddle();
    void stopBefore();
    void askedBeforeEachChunk();

    void sourceThatMoved_data();
    void sourceThatMoved();
    void targetThatMoved_data();
    void targetThatMoved();
    void targetWithAnotherNumber();
    void destinationThatGoes();
    void fullDisk_data();
    void fullDisk();
    void fileThatCannotBeMadeLonger();

    void diskThatIsGone_data();
    void diskThatIsGone();
    void diskThatGoesInTheMiddle();
    void diskInDoubtIsTriedOnce();
    void diskInDoubtThatIsThere();

private:
    std::unique_ptr<CDamageBed> m_pBed;
};

void tst_CDamagedFiles::init()
{
    m_pBed = std::make_unique<CDamageBed>();
    m_pBed->Use(Rules());
}

void tst_CDamagedFiles::cleanup()
{
    CBadPages::Reset();
    m_pBed.reset();
}

void tst_CDamagedFiles::ranges_data()
{
    QTest::addColumn<qint64>("nSize");
    QTest::addColumn<Places>("listBad");
    QTest::addColumn<QString>("strDetail");
    QTest::newRow("start") << 100 * KIB << Places{{0, PAGE}} << "0-4095";
    QTest::newRow("end") << 100 * KIB << Places{{96 * KIB, 100 * KIB}} << "98304-102399";
    QTest::newRow("last odd bytes") << 100 * KIB + 3 << Places{{100 * KIB, 104 * KIB}} << "102400-102402";
    QTest::newRow("one byte") << qint64(1) << Places{{0, PAGE}} << "0-0";
    QTest::newRow("one page") << PAGE << Places{{0, PAGE}} << "0-4095";
    QTest::newRow("whole file") << 100 * KIB << Places{{0, 100 * KIB}} << "0-102399";
    QTest::newRow("a large one, whole") << 5 * MIB + 1 << Places{{0, 6 * MIB}} << "0-5242880";
    QTest::newRow("one in the middle") << 5 * MIB << Places{{2 * MIB, 2 * MIB + PAGE}} << "2097152-2101247";
    QTest::newRow("neighbours") << 5 * MIB << Places{{MIB, MIB + PAGE}, {MIB + PAGE, MIB + 2 * PAGE}}
                                << "1048576-1056767";
    QTest::newRow("several") << 3 * MIB << Places{{PAGE, 2 * PAGE}, {3 * PAGE, 4 * PAGE}, {MIB, 2 * MIB}}
                             << "4096-8191, 12288-16383, 1048576-2097151";
}

void tst_CDamagedFiles::ranges()
{
    QFETCH(qint64, nSize);
    QFETCH(Places, listBad);
    QFETCH(QString, strDetail);
    const QByteArray baContent = Pattern(nSize);
    CBadPages::Set("/src/file", listBad, EIO);
    m_pBed->Add("file", baContent);
    CBadPages::CountAnew();
    m_pBed->Finish();
    QVERIFY(Content(m_pBed->Copy("file")) == WithZeros(baContent, listBad));
    qint64 nBad = 0;
    for (const auto& place : qAsConst(listBad)) {
        nBad += qMin(place.second, nSize) - place.first;
    }
    QCOMPARE(m_pBed->m_listDone.count(), 1);
    const STCopyOutcome stOutcome = m_pBed->m_listDone.first();
    QCOMPARE(stOutcome.stReason.enProblem, ENCopyProblem::DAMAGED);
    QCOMPARE(stOutcome.stReason.strDetail, strDetail);
    QCOMPARE(stOutcome.strPath, m_pBed->Source("file"));
    QCOMPARE(m_pBed->Done(),
             QString("not whole: parts of it cannot be read, zeros stand for the bytes %1: Input/output "
                     "error, %2 of %3")
                 .arg(strDetail)
                 .arg(nSize - nBad)
                 .arg(nSize));
    QCOMPARE(m_pBed->m_nTold, nSize); // the progress comes to its end
    QCOMPARE(stOutcome.nTold, nSize); // and nobody adds to it
    QCOMPARE(m_pBed->m_nWritten, nSize - nBad);
    QCOMPARE(CBadPages::MostFailuresOfAPage(), 1);
    struct stat stCopy = {};
    QCOMPARE(stat(QFile::encodeName(m_pBed->Copy("file")).constData(), &stCopy), 0);
    QCOMPARE(qint64(stCopy.st_mtim.tv_sec), MODIFIED_SEC);
    QCOMPARE(qint64(stCopy.st_mtim.tv_nsec), qint64(123456789));
}

void tst_CDamagedFiles::sparseFile()
{
    const QByteArray baContent = QByteArray("begin") + QByteArray(3 * MIB, '\0') + "end";
    const QString strSource = m_pBed->m_tree.Write("src/file", "begin");
    QFile file(strSource);
    QVERIFY(file.open(QIODevice::ReadWrite) && file.seek(5 + 3 * MIB) && file.write("end") == 3);
    file.close();
    CBadPages::Set("/src/file", {{MIB, MIB + PAGE}}, EIO);
    m_pBed->AddWritten("file");
    m_pBed->Finish();
    QVERIFY(Content(m_pBed->Copy("file")) == baContent);
    QCOMPARE(m_pBed->m_listDone.value(0).stReason.strDetail, QString("1048576-1052671"));
}

void tst_CDamagedFiles::moreRangesThanTheReportHasRoomFor()
{
    Places listBad;
    for (qint64 nFrom = 0; nFrom < 25 * 2 * PAGE; nFrom += 2 * PAGE) {
        listBad.append({nFrom, nFrom + PAGE});
    }
    CBadPages::Set("/src/file", listBad, EIO);
    m_pBed->Add("file", Pattern(MIB));
    m_pBed->Finish();
    const STCopyReason stReason = m_pBed->m_listDone.value(0).stReason;
    QVERIFY(stReason.strDetail.startsWith("0-4095, 8192-12287, "));
    QVERIFY(stReason.strDetail.endsWith("155648-159743, …"));
    QCOMPARE(stReason.strDetail.count('-'), 20);
    QCOMPARE(stReason.strText.count('-'), 25); // the log has them all
    QVERIFY(Content(m_pBed->Copy("file")) == WithZeros(Pattern(MIB), listBad));
}

void tst_CDamagedFiles::sectorsWhereTheDiskTellsThem()
{
    // A disk that gives what lies in the page before the bad sector: nobody asks behind it.
    CBadPages::Set("/src/file", {{5 * PAGE + 512, 5 * PAGE + 1024}}, EIO);
    m_pBed->Add("file", Pattern(MIB));
    m_pBed->Finish();
    QCOMPARE(m_pBed->m_listDone.value(0).stReason.strDetail, QString("20992-24575"));
    QCOMPARE(CBadPages::MostFailuresOfAPage(), 1);
}

void tst_CDamagedFiles::smallStepsGoPastTheCache_data()
{
    QTest::addColumn<bool>("bRefused");
    QTest::newRow("where that is possible") << false;
    QTest::newRow("where it is refused with the first read") << true;
}

void tst_CDamagedFiles::smallStepsGoPastTheCache()
{
    QFETCH(bool, bRefused);
    const Places listBad{{MIB, MIB + 3 * PAGE}};
    CBadPages::Set("/src/file", listBad, EIO);
    if (bRefused) {
        CBadPages::RefuseDirect();
    }
    m_pBed->Add("file", Pattern(3 * MIB));
    const int nDescriptor = open(QFile::encodeName(m_pBed->Source("file")).constData(), O_RDONLY | O_DIRECT);
    const bool bPossible = nDescriptor != -1;
    close(nDescriptor);
    m_pBed->Finish();
    QVERIFY(Content(m_pBed->Copy("file")) == WithZeros(Pattern(3 * MIB), listBad));
    QCOMPARE(CBadPages::DirectReads() > 0, bPossible && !bRefused);
    QCOMPARE(CBadPages::MostFailuresOfAPage(), 1);
}

void tst_CDamagedFiles::wholeAfterAll()
{
    CBadPages::Set("/src/file", {{MIB, MIB + PAGE}}, EIO);
    m_pBed->Add("file", Pattern(3 * MIB));
    CBadPages::Reset();
    m_pBed->Finish();
    QCOMPARE(m_pBed->Done(), QString("whole, 3145728 of 3145728"));
    QVERIFY(Content(m_pBed->Copy("file")) == Pattern(3 * MIB));
    QCOMPARE(QFileInfo(m_pBed->Copy("file")).lastModified().toSecsSinceEpoch(), MODIFIED_SEC);
    QCOMPARE(m_pBed->m_nTold, 3 * MIB);
}

void tst_CDamagedFiles::timeThatCannotBeKept()
{
    // What was read whole says so; what is damaged has more important things to say.
    CBadPages::Set("/src/file", {{MIB, MIB + PAGE}}, EIO);
    m_pBed->Add("file", Pattern(2 * MIB));
    CBadPages::Reset();
    CBadPages::FailTimes(EPERM);
    m_pBed->Finish();
    QCOMPARE(m_pBed->Done(),
             QString("not whole: its time cannot be kept: Operation not permitted, 2097152 of 2097152"));
    QVERIFY(m_pBed->m_listDone.value(0).HasAllBytes());
}

// ---- which file comes when

void tst_CDamagedFiles::targetIsFlushedLast()
{
    CBadPages::Set("/src/file", {{PAGE, 2 * PAGE}}, EIO);
    m_pBed->Add("file", Pattern(100 * KIB));
    QCOMPARE(m_pBed->m_listFlushed, QStringList()); // not yet all that it gets
    m_pBed->Finish();
    QCOMPARE(m_pBed->m_listFlushed, QStringList("file " + QString::number(MODIFIED_SEC)));
    QVERIFY(m_pBed->Done().startsWith("not whole: parts of it cannot be read"));
}

void tst_CDamagedFiles::targetThatIsNotOnTheDisk()
{
    CBadPages::Set("/src/file", {{PAGE, 2 * PAGE}}, EIO);
    m_pBed->Add("file", Pattern(100 * KIB));
    m_pBed->m_nFlushError = ENOSPC;
    m_pBed->Finish();
    QCOMPARE(
        m_pBed->Done(),
        QString(
            "not whole: its target cannot be brought to the disk: No space left on device, 98304 of 102400"));
    QCOMPARE(int(m_pBed->m_listDone.first().stReason.enProblem), int(ENCopyProblem::TARGET_CLOSE));
}

void tst_CDamagedFiles::asideUntilFinish()
{
    CBadPages::Set("/src/", {{PAGE, 2 * PAGE}}, EIO);
    m_pBed->Add("a file", Pattern(MIB));
    m_pBed->Add("b file", Pattern(MIB));
    QCOMPARE(m_pBed->m_listDone.count(), 0);
    QCOMPARE(m_pBed->m_listItem, QStringList{});
    QCOMPARE(QFileInfo(m_pBed->Copy("a file")).size(), PAGE);
    m_pBed->Finish();
    QCOMPARE(m_pBed->m_listItem, (QStringList{"a file", "b file"}));
    QCOMPARE(m_pBed->m_listDone.count(), 2);
    QCOMPARE(m_pBed->m_nTold, 2 * MIB);
    m_pBed->Finish();
    QCOMPARE(m_pBed->m_listDone.count(), 2); // each once
}

void tst_CDamagedFiles::tooManyAreFinishedAtOnce()
{
    m_pBed->Use(Rules(60000, 900000, 1));
    CBadPages::Set("/src/", {{PAGE, 2 * PAGE}}, EIO);
    m_pBed->Add("a file", Pattern(MIB));
    m_pBed->Add("b file", Pattern(MIB));
    QCOMPARE(m_pBed->m_listItem, QStringList{"b file"});
    QCOMPARE(m_pBed->m_listDone.value(0).stReason.strDetail, QString("4096-8191"));
    m_pBed->Finish();
    QCOMPARE(m_pBed->m_listItem, (QStringList{"b file", "a file"}));
}

// ---- time

void tst_CDamagedFiles::timeOfAFile()
{
    CMovedClock clock;
    m_pBed->Use(Rules(10000));
    const Places listBad{{MIB, 9 * MIB}};
    CBadPages::Set("/src/", listBad, EIO);
    m_pBed->Add("a file", Pattern(16 * MIB));
    m_pBed->Add("b file", Pattern(4 * PAGE + MIB));
    const int nBefore = CBadPages::Failures();
    CBadPages::Watch(
        [&](qint64 nFrom, qint64 nLen) { clock.Move(nFrom < 9 * MIB && nFrom + nLen > MIB ? 1000 : 1); });
    m_pBed->Finish();
    // Ten bad places, and it is over; the other file has time of its own.
    const STCopyReason stReason = m_pBed->m_listDone.value(0).stReason;
    QCOMPARE(stReason.enProblem, ENCopyProblem::DAMAGED);
    QVERIFY2(stReason.strDetail.startsWith("1048576-"), qPrintable(stReason.strDetail));
    QVERIFY(stReason.strText.contains("; not tried any more: "));
    QVERIFY(CBadPages::Failures() - nBefore <= 10 + 5);
    QCOMPARE(m_pBed->m_listDone.value(1).stReason.strDetail, QString("1048576-1064959"));
    // What lies behind the bad area came before the time was over.
    const QByteArray baCopy = Content(m_pBed->Copy("a file"));
    QCOMPARE(baCopy.size(), 16 * int(MIB));
    QVERIFY(baCopy.right(int(6 * MIB)) == Pattern(16 * MIB).right(int(6 * MIB)));
    QCOMPARE(m_pBed->m_nTold, 17 * MIB + 4 * PAGE);
}

void tst_CDamagedFiles::timeOfAll()
{
    CMovedClock clock;
    m_pBed->Use(Rules(10000, 15000));
    CBadPages::Set("/src/", {{MIB, 9 * MIB}}, EIO);
    for (const QString strName : {"a file", "b file", "c file"}) {
        m_pBed->Add(strName, Pattern(10 * MIB));
    }
    const int nBefore = CBadPages::Failures();
    // The look at the end of the first file takes what was left for all, and as much again.
    CBadPages::Watch([&](qint64 nFrom, qint64) { clock.Move(nFrom < 9 * MIB ? 1000 : 20000); });
    m_pBed->Finish();
    QCOMPARE(m_pBed->m_listDone.count(), 3);
    QVERIFY(CBadPages::Failures() - nBefore <= 15);
    // Nothing of the last one was tried any more.
    const STCopyReason stReason = m_pBed->m_listDone.value(2).stReason;
    QCOMPARE(stReason.strDetail, QString("1048576-10485759"));
    QCOMPARE(stReason.strText,
             QString("parts of it cannot be read, zeros stand for the bytes 1048576-10485759; "
                     "not tried any more: 1048576-10485759"));
    QCOMPARE(QFileInfo(m_pBed->Copy("c file")).size(), 10 * MIB);
    QCOMPARE(m_pBed->m_nTold, 30 * MIB);
}

void tst_CDamagedFiles::slowPlacesTakeTimeToo()
{
    CMovedClock clock;
    m_pBed->Use(Rules(10000));
    CBadPages::Set("/src/", {{MIB, MIB + PAGE}}, EIO);
    m_pBed->Add("file", Pattern(40 * MIB));
    CBadPages::Watch([&](qint64 nFrom, qint64) { clock.Move(nFrom < 4 * MIB ? 100 : 2500); });
    m_pBed->Finish();
    const QString strDetail = m_pBed->m_listDone.value(0).stReason.strDetail;
    QVERIFY2(strDetail.startsWith("1048576-1052671, 5"), qPrintable(strDetail));
    QVERIFY2(strDetail.endsWith("-41938943"), qPrintable(strDetail)); // the end was looked at
}

void tst_CDamagedFiles::whatLiesBehindASlowPlace()
{
    // One bad sector on which the disk itself tries for longer than a file has time.
    CMovedClock clock;
    CBadPages::Set("/src/", {{MIB, MIB + PAGE}}, EIO);
    m_pBed->Add("file", Pattern(40 * MIB + 5));
    CBadPages::Watch(
        [&](qint64 nFrom, qint64 nLen) { clock.Move(nFrom < MIB + PAGE && nFrom + nLen > MIB ? 70000 : 0); });
    CBadPages::CountAnew();
    m_pBed->Finish();
    QCOMPARE(m_pBed->m_listDone.value(0).stReason.strDetail, QString("1048576-1052671"));
    QVERIFY(Content(m_pBed->Copy("file")) == WithZeros(Pattern(40 * MIB + 5), {{MIB, MIB + PAGE}}));
    QCOMPARE(CBadPages::Failures(), 1);
    QCOMPARE(m_pBed->m_nTold, 40 * MIB + 5);
}

void tst_CDamagedFiles::endOfAFileWhenTheTimeOfAllIsOver()
{
    CMovedClock clock;
    m_pBed->Use(Rules(60000, 60000));
    CBadPages::Set("/src/", {{MIB, MIB + PAGE}}, EIO);
    for (const QString strName : {"a file", "b file", "c file"}) {
        m_pBed->Add(strName, Pattern(20 * MIB + 2 * PAGE));
    }
    CBadPages::Watch(
        [&](qint64 nFrom, qint64 nLen) { clock.Move(nFrom < MIB + PAGE && nFrom + nLen > MIB ? 70000 : 0); });
    CBadPages::CountAnew();
    m_pBed->Finish();
    // The second one is read from its end on until it fails, in steps that are large by then.
    QCOMPARE(m_pBed->m_listDone.value(1).stReason.strDetail, QString("1048576-1060863"));
    QCOMPARE(Content(m_pBed->Copy("b file")),
             WithZeros(Pattern(20 * MIB + 2 * PAGE), {{MIB, MIB + 3 * PAGE}}));
    // That has taken as much time once more, and nothing of the third one is tried.
    QCOMPARE(m_pBed->m_listDone.value(2).stReason.strDetail, QString("1048576-20979711"));
    QCOMPARE(CBadPages::Failures(), 2);
    QCOMPARE(m_pBed->m_nTold, 60 * MIB + 6 * PAGE);
}

void tst_CDamagedFiles::placesThatFailAtOnce()
{
    CMovedClock clock; // stands still: no read takes a millisecond
    m_pBed->Use(Rules(100));
    CBadPages::Set("/src/", {{MIB, 9 * MIB}}, EIO);
    m_pBed->Add("file", Pattern(9 * MIB));
    CBadPages::CountAnew();
    m_pBed->Finish();
    QVERIFY2(CBadPages::Failures() <= 101, qPrintable(QString::number(CBadPages::Failures())));
    QCOMPARE(m_pBed->m_listDone.value(0).stReason.strDetail, QString("1048576-9437183"));
}

// ---- stop and pause

void tst_CDamagedFiles::stopInTheMiddle()
{
    CBadPages::Set("/src/", {{PAGE, 2 * PAGE}}, EIO);
    m_pBed->Add("a file", Pattern(MIB));
    m_pBed->Add("b file", Pattern(MIB));
    m_pBed->m_nAllowed = m_pBed->m_nAsked + 2;
    m_pBed->Finish();
    // 4096 bytes of the first way, the bad page, and one page more.
    QCOMPARE(m_pBed->Done(0), QString("stopped: the copy was stopped, 8192 of 1048576"));
    QCOMPARE(m_pBed->Done(1), QString("not whole: ReadFile ret = -2: Input/output error, 4096 of 1048576"));
    QCOMPARE(m_pBed->m_listItem, QStringList{"a file"});
    QVERIFY(QFileInfo(m_pBed->Copy("a file")).lastModified().toSecsSinceEpoch() != MODIFIED_SEC);
    QCOMPARE(QFileInfo(m_pBed->Copy("b file")).size(), PAGE);
}

void tst_CDamagedFiles::stopBefore()
{
    CBadPages::Set("/src/", {{PAGE, 2 * PAGE}}, EIO);
    m_pBed->Add("file", Pattern(MIB));
    const int nReads = CBadPages::Reads();
    m_pBed->m_bStopped = true;
    m_pBed->Finish();
    QCOMPARE(m_pBed->Done(), QString("not whole: ReadFile ret = -2: Input/output error, 4096 of 1048576"));
    QCOMPARE(CBadPages::Reads(), nReads);
    QCOMPARE(m_pBed->m_listDone.count(), 1);
}

void tst_CDamagedFiles::askedBeforeEachChunk()
{
    CBadPages::Set("/src/", {{MIB, 2 * MIB}}, EIO);
    m_pBed->Add("file", Pattern(3 * MIB));
    const int nReads = CBadPages::Reads();
    const int nAsked = m_pBed->m_nAsked;
    const int nChunks = m_pBed->m_nChunks;
    m_pBed->Finish();
    QVERIFY(CBadPages::Reads() - nReads > 20);
    QCOMPARE(m_pBed->m_nAsked - nAsked, CBadPages::Reads() - nReads);
    QCOMPARE(m_pBed->m_nChunks - nChunks, CBadPages::Reads() - nReads);
}

// ---- what has moved meanwhile

void tst_CDamagedFiles::sourceThatMoved_data()
{
    QTest::addColumn<QString>("strWhat");
    QTest::addColumn<QString>("strReason");
    QTest::newRow("link") << "link"
                          << "a link has taken its place";
    QTest::newRow("another") << "another"
                             << "another file has taken its place";
    QTest::newRow("folder") << "folder"
                            << "no longer a file";
    QTest::newRow("removed") << "removed"
                             << "open file failed: No such file or directory";
    QTest::newRow("grown") << "grown"
                           << "changed while it was copied, it has 2097152 bytes now";
    QTest::newRow("another time") << "time"
                                  << "changed while it was copied, it has 1048576 bytes now";
}

void tst_CDamagedFiles::sourceThatMoved()
{
    QFETCH(QString, strWhat);
    QFETCH(QString, strReason);
    CBadPages::Set("/src/", {{PAGE, 2 * PAGE}}, EIO);
    m_pBed->Add("file", Pattern(MIB));
    const QString strSource = m_pBed->Source("file");
    if (strWhat == "grown") {
        QVERIFY(QFile::resize(strSource, 2 * MIB));
    } else if (strWhat == "time") {
        QCOMPARE(utimensat(AT_FDCWD, QFile::encodeName(strSource).constData(), nullptr, 0), 0);
    } else {
        QVERIFY(QFile::rename(strSource, m_pBed->Source("old")));
        if (strWhat == "link") {
            m_pBed->m_tree.Link("src/file", "old");
        } else if (strWhat == "another") {
            m_pBed->m_tree.Write("src/file", "another");
        } else if (strWhat == "folder") {
            m_pBed->m_tree.MkDir("src/file");
        }
    }
    m_pBed->Finish();
    QCOMPARE(m_pBed->Done(), "not whole: " + strReason + ", 4096 of 1048576");
    QVERIFY(Content(m_pBed->Copy("file")) == Pattern(MIB).left(int(PAGE))); // as it was left
}

void tst_CDamagedFiles::targetThatMoved_data()
{
    QTest::addColumn<QString>("strWhat");
    QTest::newRow("another") << "another";
    QTest::newRow("longer") << "longer";
    QTest::newRow("link") << "link";
    QTest::newRow("removed") << "removed";
}

void tst_CDamagedFiles::targetThatMoved()
{
    QFETCH(QString, strWhat);
    CBadPages::Set("/src/file", {{PAGE, 2 * PAGE}}, EIO);
    m_pBed->Add("file", Pattern(MIB));
    const QString strTarget = m_pBed->Copy("file");
    const QByteArray baOther(int(PAGE), 'o');
    if (strWhat == "longer") {
        QFile file(strTarget);
        QVERIFY(file.open(QIODevice::Append) && file.write("more") == 4);
    } else {
        // While the copy is there, whose number the file system might give it otherwise.
        m_pBed->m_tree.Write("dst/other", baOther);
        const timespec listTime[2] = {{MODIFIED_SEC, 0}, {time_t(MODIFIED_SEC), 0}};
        QCOMPARE(utimensat(AT_FDCWD, QFile::encodeName(m_pBed->Copy("other")).constData(), listTime, 0), 0);
        QVERIFY(QFile::remove(strTarget));
        if (strWhat == "link") {
            m_pBed->m_tree.Link("dst/file", "other");
        } else if (strWhat == "another") {
            QVERIFY(QFile::rename(m_pBed->Copy("other"), strTarget));
        }
    }
    m_pBed->Finish();
    const STCopyOutcome stOutcome = m_pBed->m_listDone.value(0);
    QCOMPARE(stOutcome.stReason.enProblem, ENCopyProblem::TARGET_WRITE);
    QCOMPARE(stOutcome.stReason.strTarget, strTarget);
    QVERIFY(stOutcome.stReason.nError != 0);
    QCOMPARE(stOutcome.nCopied, PAGE);
    QVERIFY(strWhat != "another" || Content(strTarget) == baOther);
    QVERIFY(strWhat != "link" || Content(m_pBed->Copy("other")) == baOther);
    QVERIFY(strWhat != "longer" || QFileInfo(strTarget).size() == PAGE + 4);
    QCOMPARE(QFileInfo::exists(strTarget), strWhat != "removed"); // not made anew
}

void tst_CDamagedFiles::targetWithAnotherNumber()
{
    // Some file systems give a file another number each time that it is looked up.
    CBadPages::Set("/src/file", {{PAGE, 2 * PAGE}}, EIO);
    m_pBed->Add("file", Pattern(MIB));
    const QString strTarget = m_pBed->Copy("file");
    const STFileState stBefore = CCopyPlatform::GetEntryState(strTarget).value_or(STFileState());
    QVERIFY(QFile::rename(strTarget, m_pBed->Copy("old")));
    m_pBed->m_tree.Write("dst/file", Pattern(MIB).left(int(PAGE)));
    const timespec listTime[2] = {{time_t(stBefore.nAccessedSec), long(stBefore.nAccessedNsec)},
                                  {time_t(stBefore.nModifiedSec), long(stBefore.nModifiedNsec)}};
    QCOMPARE(utimensat(AT_FDCWD, QFile::encodeName(strTarget).constData(), listTime, 0), 0);
    m_pBed->Finish();
    QCOMPARE(m_pBed->m_listDone.value(0).stReason.strDetail, QString("4096-8191"));
}

void tst_CDamagedFiles::destinationThatGoes()
{
    CBadPages::Set("/src/", {{PAGE, 2 * PAGE}}, EIO);
    m_pBed->Add("file", Pattern(3 * MIB));
    m_pBed->m_tree.MkDir("dst/b");
    m_pBed->Add("b/file", Pattern(3 * MIB));
    const int nChunks = m_pBed->m_nChunks;
    m_pBed->m_fnAfterChunk = [this, nChunks] {
        if (m_pBed->m_nChunks == nChunks + 3) {
            QVERIFY(QFile::rename(m_pBed->m_tree.Path("dst"), m_pBed->m_tree.Path("elsewhere")));
        }
    };
    m_pBed->Finish();
    QVERIFY(m_pBed->Done(0).startsWith("not whole: destination gone, "));
    QVERIFY(m_pBed->Done(1).startsWith("not whole: destination gone, "));
    QVERIFY(!QFileInfo::exists(m_pBed->m_tree.Path("dst")));
}

void tst_CDamagedFiles::fullDisk_data()
{
    QTest::addColumn<int>("nError");
    QTest::addColumn<bool>("bRoom"); // whether the room that is kept may help
    QTest::newRow("full") << ENOSPC << true;
    QTest::newRow("broken") << EIO << false;
}

void tst_CDamagedFiles::fullDisk()
{
    QFETCH(int, nError);
    QFETCH(bool, bRoom);
    CBadPages::Set("/src/file", {{PAGE, 2 * PAGE}}, EIO);
    m_pBed->Add("file", Pattern(MIB));
    CBadPages::FailWrites("/dst/file", nError, 2);
    m_pBed->Finish();
    QCOMPARE(m_pBed->Done(),
             "not whole: its target cannot be written: " + qt_error_string(nError) + ", 12288 of 1048576");
    QCOMPARE(m_pBed->m_nRoomMade, bRoom ? 1 : 0);
}

void tst_CDamagedFiles::fileThatCannotBeMadeLonger()
{
    // The last part is bad, so that nothing that is written gives the file its size.
    CBadPages::Set("/src/file", {{MIB, 20 * MIB}}, EIO);
    CBadPages::FailResize(EPERM);
    m_pBed->Add("file", Pattern(20 * MIB));
    m_pBed->Finish();
    QVERIFY(Content(m_pBed->Copy("file"))
            == Pattern(20 * MIB).left(int(MIB)) + QByteArray(int(19 * MIB), '\0'));
    QCOMPARE(m_pBed->m_listDone.value(0).stReason.strDetail, QString("1048576-20971519"));
    QCOMPARE(m_pBed->m_listDone.value(0).nCopied, MIB);
    QCOMPARE(m_pBed->m_nWritten, MIB);
}

// ---- disks that are gone

void tst_CDamagedFiles::diskThatIsGone_data()
{
    QTest::addColumn<int>("nError");
    QTest::newRow("ENODEV") << ENODEV;
    QTest::newRow("ENXIO") << ENXIO;
    QTest::newRow("ENOTCONN") << ENOTCONN;
}

void tst_CDamagedFiles::diskThatIsGone()
{
    QFETCH(int, nError);
    CBadPages::Set("/src/", {{MIB, MIB + PAGE}}, EIO);
    m_pBed->Add("a file", Pattern(3 * MIB));
    m_pBed->Add("b file", Pattern(3 * MIB));
    CBadPages::Set("/src/", {{0, 3 * MIB}}, nError);
    m_pBed->Finish();
    QCOMPARE(CBadPages::Reads(), 2); // one for each
    for (int nFile : {0, 1}) {
        QCOMPARE(m_pBed->Done(nFile),
                 "not whole: ReadFile ret = -2: " + qt_error_string(nError) + ", 1048576 of 3145728");
    }
    QCOMPARE(QFileInfo(m_pBed->Copy("a file")).size(), MIB); // as it was left
}

void tst_CDamagedFiles::diskThatGoesInTheMiddle()
{
    CBadPages::Set("/src/", {{MIB, MIB + PAGE}}, EIO);
    m_pBed->Add("a file", Pattern(3 * MIB));
    m_pBed->Add("b file", Pattern(3 * MIB));
    CBadPages::Set("/src/", {{2 * MIB, 3 * MIB}}, ENODEV);
    m_pBed->Finish();
    const STCopyReason stReason = m_pBed->m_listDone.value(0).stReason;
    QCOMPARE(stReason.strDetail, QString("2097152-3145727"));
    QCOMPARE(stReason.nError, ENODEV);
    QVERIFY(stReason.strText.endsWith("; not tried any more: 2097152-3145727"));
    QCOMPARE(m_pBed->m_listDone.value(1).stReason.enProblem, ENCopyProblem::SOURCE_READ);
}

void tst_CDamagedFiles::diskInDoubtIsTriedOnce()
{
    CBadPages::Set("/src/", {{MIB, MIB + PAGE}}, EIO);
    for (const QString strName : {"a file", "b file", "c file"}) {
        m_pBed->Add(strName, Pattern(2 * MIB));
    }
    CBadPages::Set("/src/", {{0, 2 * MIB}}, EIO);
    m_pBed->Finish();
    // All pages of the first, as nobody knows better; then one of each.
    QCOMPARE(CBadPages::Reads(), int(MIB / PAGE) + 2);
    QCOMPARE(m_pBed->m_listDone.value(0).stReason.strDetail, QString("1048576-2097151"));
    QCOMPARE(m_pBed->Done(1),
             QString("not whole: ReadFile ret = -2: Input/output error, 1048576 of 2097152"));
    QCOMPARE(m_pBed->Done(2), m_pBed->Done(1));
}

void tst_CDamagedFiles::diskInDoubtThatIsThere()
{
    CBadPages::Set("/src/", {{MIB, 2 * MIB}}, EIO);
    m_pBed->Add("a file", Pattern(2 * MIB));
    m_pBed->Add("b file", Pattern(3 * MIB));
    m_pBed->Finish();
    QCOMPARE(m_pBed->m_listDone.value(0).stReason.strDetail, QString("1048576-2097151"));
    QCOMPARE(m_pBed->m_listDone.value(1).stReason.strDetail, QString("1048576-2097151"));
    QVERIFY(Content(m_pBed->Copy("b file")).right(int(MIB)) == Pattern(3 * MIB).right(int(MIB)));
}

QTEST_GUILESS_MAIN(tst_CDamagedFiles)
#include "tst_CDamagedFiles.moc"
