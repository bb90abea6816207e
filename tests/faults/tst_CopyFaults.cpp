#include "CFailingCalls.h"
#include "copy/CCopyText.h"
#include "files/CWriteSignals.h"
#include "support/CCopyBed.h"
#include "support/CLogCapture.h"
#include "support/CVolume.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>

#include <cerrno>
#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/stat.h>

using ENCall = CFailingCalls::ENCall;

static const int MIB = 1024 * 1024;
static const int PIECE = 256 * 1024;
static const int SIZE = 3 * MIB; // of "file"
static const int KEPT = 64 * 1024; // what the report has of room once a small file has taken a page of it
static const QString OTHERS = "before, after, 1";

/** What stands behind the name of a file that is not whole. */
static QString Rest(const QString& strReason, qint64 nCopied, qint64 nExpected = SIZE)
{
    return QString(": %1 (%2 of %3 bytes copied)")
        .arg(strReason, QString::number(nCopied), QString::number(nExpected));
}

/** Copies of "before", "file" and "after", of which the one in the middle meets what fails. */
class tst_CopyFaults : public CCopyBed
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void failingCall_data();
    void failingCall();
    void failedReadCountsWhatCameBefore();
    void listingThatBreaksOff();

    void sourceThatBecomesAPipeWhenOpened();
    void sourceThatIsReplaced_data();
    void sourceThatIsReplaced();
    void folderThatIsReplacedByALink();
    void linksThatLeaveTheirVolume();
    void timeThatIsSaidToBeKept();
    void sourceDiskThatVanishes();

    void fullDestination();
    void fileSizeLimit();
    void readOnlyDestination();
    void fileInTheWayOfAFolder();

    void vanishedDestination_data();
    void vanishedDestination();
    void otherDiskInThePlaceOfTheDestination();
    void vanishedBetweenFolderAndFile();
    void destinationFolderDeletedIsMadeAgain();

    void stopWhileAFolderIsMade_data();
    void stopWhileAFolderIsMade();
    void workersSleepsAreExact();
    void childrenOfTheProgramInheritNoFile();
    void flushComesBeforeTheFinish();
    void stopIsFlushedBeforeItIsTold();
    void stopWhoseFlushFailsIsNotTrusted();
    void stopOnALostDestinationIsNotFlushed();
    void flushSeesWhatFailedFromTheBeginning();
    void failedFlushIsLogged();
    void nothingCopiedNothingFlushed();
    void lostDestinationIsNotFlushed();

private:
    /** Copies to a stick of 8 MiB, unless another size is given. */
    void UseStick(int nMiB = 8);

    /** Content of the files around the faulty one, and how often the end was told. */
    QString Others() const;

    QByteArray m_baContent; // of "file"
    std::unique_ptr<CVolume> m_pStick;
};

void tst_CopyFaults::init()
{
    NEEDS_VOLUMES();
    Make();
    m_baContent = Pattern(SIZE);
    Add("before", "before");
    Add("file", m_baContent);
    Add("after", "after");
}

void tst_CopyFaults::cleanup()
{
    CFailingCalls::Reset();
    Clear();
    m_pStick.reset();
}

void tst_CopyFaults::UseStick(int nMiB)
{
    m_pStick = std::make_unique<CVolume>("Stick", "/dev/disk8s4", nMiB);
    m_strDest = m_pStick->Path("Tarnwick");
}

QString tst_CopyFaults::Others() const
{
    return QString("%1, %2, %3")
        .arg(QString(Copied("before")), QString(Copied("after")))
        .arg(m_pFinished->count());
}

// ---- calls that fail

void tst_CopyFaults::failingCall_data()
{
    QTest::addColumn<int>("nCall");
    QTest::addColumn<QString>("strFile"); // "src" or "dst"
    QTest::addColumn<int>("nError");
    QTest::addColumn<int>("nGood");
    QTest::addColumn<QString>("strReason");
    QTest::addColumn<int>("nCopied");
    const auto fnRow
        = [](const char* pszRow, ENCall enCall, int nError, int nGood, const char* pszReason, int nCopied) {
              const bool bSource = enCall == ENCall::READ || enCall == ENCall::SEEK || enCall == ENCall::OPEN;
              QTest::newRow(pszRow) << int(enCall) << (bSource ? "src" : "dst") << nError << nGood
                                    << pszReason << nCopied;
          };
    // Every piece is one read and one write.
    const char READ[] = "ReadFile ret = -2: Input/output error";
    fnRow("read, at once", ENCall::READ, EIO, 0, READ, 0);
    fnRow("read, second piece", ENCall::READ, EIO, 1, READ, PIECE);
    fnRow("read, second chunk", ENCall::READ, EIO, 4, READ, MIB);
    fnRow("read, last piece", ENCall::READ, EIO, 11, READ, SIZE - PIECE);
    fnRow("seek", ENCall::SEEK, EIO, 0, "ReadFile ret = -1: Input/output error", 0);
    const char FULL[] = "its target cannot be written: No space left on device";
    fnRow("write, full disk at once", ENCall::WRITE, ENOSPC, 0, FULL, 0);
    fnRow("write, full disk in the middle", ENCall::WRITE, ENOSPC, 5, FULL, 5 * PIECE);
    fnRow("write, broken disk", ENCall::WRITE, EIO, 1, "its target cannot be written: Input/output error",
          PIECE);
    fnRow("write, largest file of FAT", ENCall::WRITE, EFBIG, 1,
          "its target cannot be written: File too large", PIECE);
    fnRow("close", ENCall::CLOSE, ENOSPC, 0, "its target cannot be closed: No space left on device", SIZE);
    fnRow("close, quota", ENCall::CLOSE, EDQUOT, 0, "its target cannot be closed: Disk quota exceeded", SIZE);
    fnRow("time", ENCall::SET_TIME, EPERM, 0, "its time cannot be kept: Operation not permitted", SIZE);
    fnRow("open source, permission", ENCall::OPEN, EACCES, 0, "open file failed: Permission denied", 0);
    fnRow("open source, broken disk", ENCall::OPEN, EIO, 0, "open file failed: Input/output error", 0);
}

void tst_CopyFaults::failingCall()
{
    QFETCH(int, nCall);
    QFETCH(QString, strFile);
    QFETCH(int, nError);
    QFETCH(int, nGood);
    QFETCH(QString, strReason);
    QFETCH(int, nCopied);
    // The target's path ends with the source's, which is told by "/src" alone: what
    // fails is done to the source only, but for opening, where the look whether the
    // target is free fails as well and leaves it free.
    CFailingCalls::Fail(ENCall(nCall), strFile == "src" ? "/src/file" : Copy("file"), nError, nGood);
    const CLogCapture capture;
    Run();
    CFailingCalls::Reset();
    QCOMPARE(Problems(), QStringList{"file" + Rest(strReason, nCopied)});
    // What goes wrong with the source is a line of its own; Qt has one more for a seek.
    const QStringList listLine
        = strFile == "src" ? QStringList{strReason.section(": ", 0, 0)} : QStringList{};
    QCOMPARE(capture.Lines().filter(QRegularExpression("^(ReadFile|open file)")), listLine);
    QVERIFY2(QFileInfo::exists(Copy("file")), "the empty target has to stay");
    QVERIFY(Copied("file") == m_baContent.left(nCopied));
    QCOMPARE(Others(), OTHERS);
    QVERIFY(Summary().startsWith(QString("Copy completed: files 2, bytes %1, seconds ").arg(nCopied + 11)));
    QVERIFY(Summary().endsWith(", problems 1"));
}

void tst_CopyFaults::failedReadCountsWhatCameBefore()
{
    // A piece, then a bad place: it is told as one large read would tell it.
    CFailingCalls::Fail(ENCall::READ, "/src/file", EIO, 1);
    Run(SIZE);
    QCOMPARE(m_pProgress->count(), 3);
    QCOMPARE(Told(*m_pProgress).at(1), QString("file 8")); // 256 KiB of 3 MiB
}

void tst_CopyFaults::listingThatBreaksOff()
{
    m_pNodes->AddListed(m_pTree->Path("src"));
    CFailingCalls::Fail(ENCall::LIST, m_pTree->Path("src"), EIO);
    Run();
    CFailingCalls::Reset();
    const QString strRest
        = "its contents cannot be listed to the end: Input/output error (0 of unknown bytes copied)";
    QCOMPARE(ProblemLines(), QStringList{Problem(m_pTree->Path("src"), strRest)});
    QCOMPARE(Copied("after_1"), QByteArray("after"));
}

// ---- sources that move

void tst_CopyFaults::sourceThatBecomesAPipeWhenOpened()
{
    // Between the look at the file and its opening; the target's look comes first.
    const QString strFile = Source("file");
    const auto fnReplace = [&] {
        QVERIFY(QFile::remove(strFile));
        QCOMPARE(mkfifo(QFile::encodeName(strFile).constData(), 0600), 0);
    };
    CFailingCalls::Watch(ENCall::OPEN, "/src/file", fnReplace, 1);
    Run();
    QCOMPARE(Problems(), QStringList{"file" + Rest("no longer a file", 0)});
    QCOMPARE(Others(), OTHERS);
}

void tst_CopyFaults::sourceThatIsReplaced_data()
{
    QTest::addColumn<int>("nWhen"); // before which opening of the file; -1: before the copy
    QTest::addColumn<bool>("bLink");
    QTest::addColumn<QString>("strReason");
    QTest::newRow("by a link, after it was listed") << -1 << true << "a link has taken its place";
    QTest::newRow("by a link, before it is opened") << 1 << true << "a link has taken its place";
    QTest::newRow("by a file, before it is opened") << 1 << false << "another file has taken its place";
}

void tst_CopyFaults::sourceThatIsReplaced()
{
    QFETCH(int, nWhen);
    QFETCH(bool, bLink);
    QFETCH(QString, strReason);
    const auto fnReplace = [&] {
        QVERIFY(QFile::rename(Source("file"), Source("old")));
        if (bLink) {
            m_pTree->Link("src/file", Source("before"));
        } else {
            m_pTree->Write("src/file", "another");
        }
    };
    if (nWhen < 0) {
        fnReplace();
    } else {
        CFailingCalls::Watch(ENCall::OPEN, "/src/file", fnReplace, nWhen);
    }
    Run();
    QCOMPARE(Problems(), QStringList{"file" + Rest(strReason, 0)});
    QCOMPARE(Account().listItem.value(0).enProblem, ENCopyProblem::SOURCE_REPLACED);
    QVERIFY(Copied("file").isEmpty() || !QFileInfo::exists(Copy("file")));
    QCOMPARE(Others(), OTHERS);
}

void tst_CopyFaults::folderThatIsReplacedByALink()
{
    CDirNode* pFolder = m_pNodes->Add(m_pTree->MkDir("src/top"));
    CDirNode* pSub = m_pNodes->Add(m_pTree->MkDir("src/top/sub"), Qt::Checked, pFolder);
    Add("top/sub/in", "1", Qt::Checked, pSub);
    QVERIFY(QFile::rename(Source("top/sub"), Source("other")));
    m_pTree->Link("src/top/sub", Source("other"));
    Run();
    const QString strReason = ": a link has taken its place (0 of ";
    QCOMPARE(Problems(),
             (QStringList{"top/sub" + strReason + "unknown bytes copied)",
                          "top/sub/in" + strReason + "1 bytes copied)"}));
    QVERIFY(!QFileInfo::exists(Copy("top/sub/in")));
}

void tst_CopyFaults::linksThatLeaveTheirVolume()
{
    const CVolume volume("Other", "/dev/disk8s1", 1);
    WriteFile(volume.Path("passwd"), "secret");
    WriteFile(volume.Path("folder/in"), "inside");
    m_pTree->Link("src/top/near", Source("before"));
    m_pTree->Link("src/top/passwd", volume.Path("passwd"));
    m_pTree->Link("src/top/broken", volume.Path("nowhere"));
    m_pTree->Link("src/top/folder", volume.Path("folder"));
    m_pNodes->AddListed(Source("top"));
    Run();
    QCOMPARE(Copied("top/passwd"), QByteArray("secret"));
    QCOMPARE(Copied("top/folder/in"), QByteArray("inside"));
    QCOMPARE(Copied("top/near"), QByteArray("before"));
    const QString strRest = "\": a link to another volume, copied as it resolves";
    QCOMPARE(LogLines().filter("Note: "),
             (QStringList{"Note: \"" + Source("top/folder") + strRest,
                          "Note: \"" + Source("top/passwd") + strRest}));
    QCOMPARE(Problems().count(), 1);
    QVERIFY(Problems().at(0).startsWith("top/broken: open file failed"));
    QCOMPARE(Account().nNotes, 2);
    QCOMPARE(Account().nProblems, 1);
    QCOMPARE(Account().listItem.value(0).enProblem, ENCopyProblem::LEAVES_VOLUME);
    QVERIFY(ReportLines().contains('"' + Source("top/passwd")
                                   + "\": It is a link to another disk. What it leads to was copied."));
}

void tst_CopyFaults::timeThatIsSaidToBeKept()
{
    const timespec listTime[2] = {{1000000000, 0}, {1100000000, 0}};
    QCOMPARE(utimensat(AT_FDCWD, QFile::encodeName(Source("file")).constData(), listTime, 0), 0);
    CFailingCalls::Fail(ENCall::SET_TIME, Copy("file"), CFailingCalls::IGNORED);
    Run();
    QCOMPARE(Problems(), QStringList{"file" + Rest("its time cannot be kept", SIZE)});
    // Its bytes are whole all the same.
    QCOMPARE(Account().nFiles, 3);
    QCOMPARE(Account().nProblems, 0);
    QCOMPARE(Account().nNotes, 1);
    QVERIFY(ReportLines().contains('"' + Source("file")
                                   + "\": It was copied whole, but its date could not be kept."));
}

void tst_CopyFaults::sourceDiskThatVanishes()
{
    CVolume volume("Source", "/dev/disk8s1", 4);
    QStringList listExpected;
    for (const QString strName : {"one", "two"}) {
        WriteFile(volume.Path(strName), "1234");
        QCOMPARE(m_pNodes->Add(volume.Path(strName))->m_fileInfo.size(), 4);
        listExpected.append(Problem(volume.Path(strName),
                                    "open file failed: No such file or directory (0 of 4 bytes copied)"));
    }
    Add("last", "last");
    AfterChunk("file", 1, [&] { volume.Pull(); });
    Run();
    QCOMPARE(ProblemLines(), listExpected);
    QCOMPARE(Copied("last"), QByteArray("last"));
    QCOMPARE(Others(), OTHERS);
}

// ---- destinations that do not take it

void tst_CopyFaults::fullDestination()
{
    UseStick(1);
    Add("rest", QByteArray(KEPT, 'r'));
    Add("none", "none");
    Add("empty");
    Run();
    // The big file takes all the room there is but what the copy keeps for its report;
    // that room goes to small ones, and so does the report's own. After that a small one
    // finds none, and an empty one needs none.
    const qint64 nRoom = QFileInfo(Copy("file")).size();
    QVERIFY(nRoom > MIB / 2 && nRoom < MIB);
    const QString strReason = "its target cannot be written: No space left on device";
    QCOMPARE(Problems(), (QStringList{"file" + Rest(strReason, nRoom), "none" + Rest(strReason, 0, 4)}));
    QCOMPARE(Copied("before"), QByteArray("before"));
    QCOMPARE(Copied("after"), QByteArray("after"));
    QCOMPARE(Copied("rest").size(), KEPT);
    QVERIFY(QFileInfo::exists(Copy("empty")));
    QCOMPARE(m_pFinished->count(), 1);
    QVERIFY(Summary().startsWith("Copy completed: files 4, bytes " + QString::number(nRoom + KEPT + 11)));
    QVERIFY(!QFileInfo::exists(ReportPath()));
    QVERIFY(Account().bReportMissing);
    QCOMPARE(Account().listItem.count(), 2);
}

void tst_CopyFaults::fileSizeLimit()
{
    // Stands in for the 4 GiB of FAT, which gives the same error.
    rlimit stOld;
    QCOMPARE(getrlimit(RLIMIT_FSIZE, &stOld), 0);
    const rlimit stLimit = {MIB + 1000, stOld.rlim_max};
    CWriteSignals::Ignore(); // as the program does at its start
    QCOMPARE(setrlimit(RLIMIT_FSIZE, &stLimit), 0);
    Run();
    QCOMPARE(setrlimit(RLIMIT_FSIZE, &stOld), 0);
    const QString strReason = "its target cannot be written: File too large";
    QCOMPARE(Problems(), QStringList{"file" + Rest(strReason, MIB + 1000)});
    QCOMPARE(QFileInfo(Copy("file")).size(), qint64(MIB + 1000));
    QCOMPARE(Others(), OTHERS);
}

void tst_CopyFaults::readOnlyDestination()
{
    UseStick();
    QVERIFY(m_pStick->MakeReadOnly());
    m_pNodes->Clear();
    m_pTree->Write("src/top/sub/a", "123");
    m_pTree->Write("src/top/b", "4567");
    CDirNode* pTop = m_pNodes->AddListed(Source("top"));
    pTop->m_chkState = Qt::PartiallyChecked;
    Add("top/unticked", "", Qt::Unchecked, pTop);
    Add("c", "89");
    Run();
    const QString strReason = ": its target folder cannot be created: Read-only file system (0 of ";
    QCOMPARE(Problems(),
             (QStringList{"top" + strReason + "unknown bytes copied)",
                          "top/sub" + strReason + "unknown bytes copied)",
                          "top/sub/a" + strReason + "3 bytes copied)",
                          "top/b" + strReason + "4 bytes copied)", "c" + strReason + "2 bytes copied)"}));
    QCOMPARE(m_pFinished->count(), 1);
}

void tst_CopyFaults::fileInTheWayOfAFolder()
{
    CDirNode* pFolder = m_pNodes->Add(m_pTree->MkDir("src/sub"));
    Add("sub/a", "123", Qt::Checked, pFolder);
    Add("last", "last");
    m_pTree->Write("dst" + Source("sub"), "in the way");
    Run();
    const QString strReason = ": its target folder cannot be created: File exists (0 of ";
    QCOMPARE(
        Problems(),
        (QStringList{"sub" + strReason + "unknown bytes copied)", "sub/a" + strReason + "3 bytes copied)"}));
    QCOMPARE(Copied("last"), QByteArray("last"));
    QCOMPARE(Copied("sub"), QByteArray("in the way"));
}

// ---- destinations that go away

void tst_CopyFaults::vanishedDestination_data()
{
    QTest::addColumn<bool>("bFolderStays");
    QTest::newRow("mount point stays as an empty folder") << true;
    QTest::newRow("mount point is removed") << false;
}

void tst_CopyFaults::vanishedDestination()
{
    QFETCH(bool, bFolderStays);
    UseStick();
    CDirNode* pFolder = m_pNodes->Add(m_pTree->MkDir("src/folder"));
    Add("folder/in", "1", Qt::Checked, pFolder);
    AfterChunk("file", 1, [&] { m_pStick->Pull(!bFolderStays); });
    Run();
    // One more chunk has gone to the disk that is no longer reached.
    QCOMPARE(Problems().mid(0, 4),
             (QStringList{"file: destination gone (2097152 of 3145728 bytes copied)",
                          "after: destination gone (0 of 5 bytes copied)",
                          "folder: destination gone (0 of unknown bytes copied)",
                          "folder/in: destination gone (0 of 1 bytes copied)"}));
    QCOMPARE(Problems().count(), 5);
    QVERIFY(Problems().at(4).contains("the data may not be on the disk"));
    QCOMPARE(QFileInfo::exists(m_pStick->Path()), bFolderStays);
    QVERIFY2(!QFileInfo::exists(m_strDest), "the machine's own disk was written to");
    QCOMPARE(m_pFinished->count(), 1);
}

void tst_CopyFaults::otherDiskInThePlaceOfTheDestination()
{
    UseStick();
    std::unique_ptr<CVolume> pOther;
    // What is open keeps the pulled disk alive, so the other one has another identity.
    AfterChunk("file", 1, [&] {
        m_pStick->Pull();
        pOther = std::make_unique<CVolume>("Stick", "/dev/disk9s9", 8);
    });
    Run();
    QVERIFY(pOther->IsValid());
    QVERIFY(QDir(pOther->Path()).isEmpty());
    QCOMPARE(Problems().count(), 3);
    QCOMPARE(Problems().at(1), "after" + Rest("destination gone", 0, 5));
}

void tst_CopyFaults::vanishedBetweenFolderAndFile()
{
    UseStick();
    // The look whether the name is free comes between the folder and the file.
    CFailingCalls::Watch(ENCall::OPEN, m_strDest + '/' + Source("file"), [&] { m_pStick->Pull(); });
    Run();
    QCOMPARE(Problems().value(0), "file" + Rest("destination gone", 0));
    QVERIFY(!QFileInfo::exists(m_strDest));
}

void tst_CopyFaults::destinationFolderDeletedIsMadeAgain()
{
    // A plain folder on the same disk may be made again: the walk goes on.
    AfterChunk("file", 1, [&] { QVERIFY(QDir(m_strDest).removeRecursively()); });
    Run();
    QCOMPARE(Problems(), QStringList{"file" + Rest("destination gone", 2 * MIB)});
    QCOMPARE(Copied("after"), QByteArray("after"));
    QVERIFY(!QFileInfo::exists(Copy("file")));
    QCOMPARE(m_pFinished->count(), 1);
}

// ---- the worker as a thread of the program

void tst_CopyFaults::stopWhileAFolderIsMade_data()
{
    QTest::addColumn<QString>("strTicked");
    QTest::addColumn<bool>("bMade");
    QTest::newRow("folder") << "sub" << true;
    QTest::newRow("folder that cannot be made") << "sub" << false;
    QTest::newRow("file") << "sub/f" << true;
}

void tst_CopyFaults::stopWhileAFolderIsMade()
{
    // A slow disk may take long for it, and the nodes are the window's again afterwards.
    QFETCH(QString, strTicked);
    QFETCH(bool, bMade);
    m_pNodes->Clear();
    m_pTree->Write("src/sub/f", "1");
    m_pNodes->Add(Source(strTicked));
    if (!bMade) {
        m_pTree->Write("dst" + Source("sub"), "in the way");
    }
    CFailingCalls::Watch(ENCall::MAKE_FOLDER, "/src/sub", [&] {
        m_pWorker->SetCopyStatus(COPY_STATUS_STOP);
        m_pNodes->Clear();
    });
    Run();
    QVERIFY(CFailingCalls::Calls() > 0);
    QCOMPARE(Problems(), QStringList{});
    QVERIFY(!QFileInfo::exists(Copy("sub/f")));
    QCOMPARE(m_pFinished->count(), 1);
}

void tst_CopyFaults::workersSleepsAreExact()
{
    int nSlack = 0;
    AfterEachChunk([&nSlack] { nSlack = prctl(PR_GET_TIMERSLACK, 0UL, 0UL, 0UL, 0UL); });
    Start(SIZE);
    QVERIFY(WaitForEnd());
    QCOMPARE(nSlack, 1);
}

void tst_CopyFaults::childrenOfTheProgramInheritNoFile()
{
    // A command that runs on would keep the stick busy with a file that it never asked for.
    int nOpen = 0;
    int nInherited = 0;
    AfterChunk("file", 1, [&] {
        const QDir dir("/proc/self/fd");
        for (const QString& strName : dir.entryList(QDir::AllEntries | QDir::System)) {
            if (QFile::symLinkTarget(dir.filePath(strName)).startsWith(m_pTree->Path())) {
                ++nOpen;
                nInherited += (fcntl(strName.toInt(), F_GETFD) & FD_CLOEXEC) == 0 ? 1 : 0;
            }
        }
    });
    Run();
    QCOMPARE(nOpen, 4); // source and target, the report and the folder that it is in
    QCOMPARE(nInherited, 0);
}

// ---- the end of a copy

void tst_CopyFaults::flushComesBeforeTheFinish()
{
    int nFinishedAtFlush = -1;
    QByteArray baAtFlush;
    CFailingCalls::Watch(ENCall::FLUSH, m_pTree->Path(), [&] {
        nFinishedAtFlush = m_pFinished->count();
        baAtFlush = Copied("after");
    });
    Run();
    QCOMPARE(CFailingCalls::Calls(), 1);
    QCOMPARE(nFinishedAtFlush, 0);
    QCOMPARE(baAtFlush, QByteArray("after"));
    QCOMPARE(Others(), OTHERS);
}

void tst_CopyFaults::stopIsFlushedBeforeItIsTold()
{
    int nFinishedAtFlush = -1;
    CFailingCalls::Watch(ENCall::FLUSH, m_pTree->Path(), [&] { nFinishedAtFlush = m_pFinished->count(); });
    AfterChunk("file", 1, [&] { m_pWorker->SetCopyStatus(COPY_STATUS_STOP); });
    Run();
    QCOMPARE(CFailingCalls::Calls(), 1);
    QCOMPARE(nFinishedAtFlush, 0);
    QCOMPARE(m_pFinished->count(), 1);
    QVERIFY(Account().bStopped);
    QCOMPARE(Account().enFlush, ENCopyFlush::DONE);
    QCOMPARE(CCopyText::Summary(Account()),
             QString("The copy was stopped. 1 file, 1.05 MB are on the disk."));
}

void tst_CopyFaults::stopWhoseFlushFailsIsNotTrusted()
{
    CFailingCalls::Fail(ENCall::FLUSH, m_pTree->Path(), EIO);
    AfterChunk("file", 1, [&] { m_pWorker->SetCopyStatus(COPY_STATUS_STOP); });
    Run();
    QCOMPARE(Account().enFlush, ENCopyFlush::FAILED);
    QVERIFY(Problems().last().contains("the data may not be on the disk: Input/output error"));
    QVERIFY(ReportLines().contains(
        "The disk did not confirm that everything is on it. Do not rely on this copy."));
}

void tst_CopyFaults::stopOnALostDestinationIsNotFlushed()
{
    UseStick();
    CFailingCalls::Watch(ENCall::FLUSH, QString(), [] {});
    AfterChunk("file", 1, [&] {
        m_pStick->Pull();
        m_pWorker->SetCopyStatus(COPY_STATUS_STOP);
    });
    Run();
    QCOMPARE(CFailingCalls::Calls(), 0);
    QVERIFY(Account().bGone);
    QVERIFY(!Account().IsWhole());
    QVERIFY(QDir(m_pStick->Path()).isEmpty());
}

void tst_CopyFaults::flushSeesWhatFailedFromTheBeginning()
{
    // A descriptor that is opened at the end knows nothing of an error that another
    // program's flush has been told of.
    bool bBegun = true;
    CFailingCalls::Watch(ENCall::OPEN, m_pTree->Path(), [&] { bBegun = QFileInfo::exists(m_strDest); });
    Run();
    QCOMPARE(CFailingCalls::Calls(), 1);
    QVERIFY(!bBegun);
    QCOMPARE(Account().enFlush, ENCopyFlush::DONE);
}

void tst_CopyFaults::failedFlushIsLogged()
{
    CFailingCalls::Fail(ENCall::FLUSH, m_pTree->Path(), EIO);
    Run(SIZE + 20);
    const QString strRest
        = "the data may not be on the disk: Input/output error (3145739 of 3145748 bytes copied)";
    QCOMPARE(ProblemLines(), QStringList{Problem(m_strDest, strRest)});
    QVERIFY(Summary().endsWith("problems 1"));
    QCOMPARE(Others(), OTHERS);
}

void tst_CopyFaults::nothingCopiedNothingFlushed()
{
    m_pNodes->Clear();
    CFailingCalls::Watch(ENCall::FLUSH, QString(), [] {});
    Run();
    QCOMPARE(CFailingCalls::Calls(), 0);
    QCOMPARE(Problems(), QStringList{});
}

void tst_CopyFaults::lostDestinationIsNotFlushed()
{
    UseStick();
    CFailingCalls::Watch(ENCall::FLUSH, QString(), [] {});
    AfterChunk("file", 3, [&] { m_pStick->Pull(); });
    Run();
    QCOMPARE(CFailingCalls::Calls(), 0);
    QVERIFY(ProblemLines().last().startsWith(
        Problem(m_strDest, "the data may not be on the disk: No such file or directory (")));
}

QTEST_GUILESS_MAIN(tst_CopyFaults)
#include "tst_CopyFaults.moc"
