#include "CFailingCalls.h"
#include "copy/CCopyText.h"
#include "files/CLeftBehind.h"
#include "support/CCopyBed.h"
#include "support/CMovedClock.h"
#include "support/CVolume.h"

#include <QDir>
#include <QFile>

#include <cerrno>

using ENCall = CFailingCalls::ENCall;

static const int MIB = 1024 * 1024;
static const QString NO_ANSWER = "The disk does not answer.";

/** What a copy tells of itself when its disks fail or do not answer: report, account and sign of life. */
class tst_ReportFaults : public CCopyBed
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void faultlessCopyLeavesNone();
    void faultyCopyLeavesItsReport();
    void stoppedCopyLeavesItsReport();
    void reportIsThereWhileTheCopyRuns();
    void reportCannotMakeTheCopyFail_data();
    void reportCannotMakeTheCopyFail();
    void vanishedDestinationKeepsWhatItSaid();

    void fullDiskKeepsTheReport();
    void selectionThatFitsToTheByte();
    void selectionThatFitsToTheLastEntry_data();
    void selectionThatFitsToTheLastEntry();
    void folderWithoutRoomIsTriedAgain();
    void closeWithoutRoomWritesAnew();

    void signOfLife();
    void pauseIsNoLackOfProgress();
    void nodesAreNotTouchedWhenTheReportWasSlow();
    void workerLeftBehind_data();
    void workerLeftBehind();
    void reportThatHangs_data();
    void reportThatHangs();
    void copyThatEndedMeanwhile();

private:
    QString Last() const { return m_pTree->Path("src/last"); }

    std::unique_ptr<CVolume> m_pStick;
    CGate m_entered; // one Open by each call that hangs
    CGate m_go;
};

void tst_ReportFaults::init()
{
    NEEDS_VOLUMES();
    Make();
    while (m_entered.Pass(0) || m_go.Pass(0)) { }
    Add("first", "first");
    Add("last", "last");
}

void tst_ReportFaults::cleanup()
{
    m_go.Open();
    Clear();
    CFailingCalls::Reset();
    m_pStick.reset();
}

// ---- the report

void tst_ReportFaults::faultlessCopyLeavesNone()
{
    Run();
    QVERIFY(Account().IsWhole());
    QCOMPARE(Account().nFiles, 2);
    QVERIFY(Account().strReport.isEmpty());
    QVERIFY(!Account().bReportMissing);
    QCOMPARE(QDir(m_pTree->Path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot),
             (QStringList{"dst", "src"}));
}

void tst_ReportFaults::faultyCopyLeavesItsReport()
{
    CFailingCalls::Fail(ENCall::READ, "/src/last", EIO);
    Run();
    QCOMPARE(Account().strReport, ReportPath());
    QCOMPARE(Account().nProblems, 1);
    const STCopyItem stItem = Account().listItem.value(0);
    QCOMPARE(stItem.strPath, Last());
    QCOMPARE(stItem.enProblem, ENCopyProblem::SOURCE_READ);
    QCOMPARE(stItem.nError, EIO);
    QCOMPARE(stItem.nExpected, 4);
    const QStringList listLine = ReportLines();
    QVERIFY(listLine.contains("1 of 2 items was not copied whole."));
    QVERIFY(listLine.contains("From: \"" + Source("first") + "\", \"" + Last() + '"'));
    QVERIFY(listLine.contains('"' + Last()
                              + "\": It cannot be read. The disk reports an error. (0 bytes of 4 bytes)"));
}

void tst_ReportFaults::stoppedCopyLeavesItsReport()
{
    AfterChunk("first", 1, [&] { m_pWorker->SetCopyStatus(COPY_STATUS_STOP); });
    Run();
    QVERIFY(Account().bStopped);
    QCOMPARE(Account().nProblems, 0);
    QCOMPARE(Account().strReport, ReportPath());
    QVERIFY(ReportLines().contains("The copy was stopped. 1 file, 5 bytes are on the disk."));
}

void tst_ReportFaults::reportIsThereWhileTheCopyRuns()
{
    QStringList listLine;
    AfterChunk("first", 1, [&] { listLine = ReportLines(); });
    Run();
    QVERIFY(listLine.contains("This copy has not come to its end."));
}

void tst_ReportFaults::reportCannotMakeTheCopyFail_data()
{
    QTest::addColumn<int>("nGood");
    QTest::newRow("from the beginning") << 0;
    QTest::newRow("first line") << 1;
    QTest::newRow("last head") << 2;
}

void tst_ReportFaults::reportCannotMakeTheCopyFail()
{
    QFETCH(int, nGood);
    Add("broken", "1");
    QVERIFY(QFile::remove(Source("broken")));
    CFailingCalls::Fail(ENCall::WRITE_AT, "dst.txt", EIO, nGood);
    Run();
    CFailingCalls::Reset();
    QCOMPARE(Copied("last"), QByteArray("last"));
    QCOMPARE(Account().nFiles, 2);
    QCOMPARE(Account().nProblems, 1);
    QVERIFY(Account().bReportMissing);
    QCOMPARE(Account().listItem.count(), 1);
    QCOMPARE(m_pFinished->count(), 1);
}

void tst_ReportFaults::vanishedDestinationKeepsWhatItSaid()
{
    m_pStick = std::make_unique<CVolume>("Stick", "/dev/disk8s4", 8);
    m_strDest = m_pStick->Path("Tarnwick");
    std::unique_ptr<CVolume> pOther;
    AfterChunk("first", 1, [&] {
        m_pStick->Pull();
        pOther = std::make_unique<CVolume>("Stick", "/dev/disk9s9", 8);
    });
    Run();
    QVERIFY(Account().bGone);
    QVERIFY(Account().bReportMissing);
    QVERIFY(Account().strReport.isEmpty());
    QVERIFY2(QDir(pOther->Path()).isEmpty(), "another disk was written to");
}

// ---- its room

void tst_ReportFaults::fullDiskKeepsTheReport()
{
    // What does not fit by far does not take the room of the report with it.
    m_pStick = std::make_unique<CVolume>("Stick", "/dev/disk8s4", 1);
    m_strDest = m_pStick->Path("Tarnwick");
    Add("large", Pattern(3 * MIB));
    Add("larger", Pattern(4 * MIB));
    Run();
    QCOMPARE(Account().nFiles, 2);
    QCOMPARE(Account().nProblems, 2);
    QCOMPARE(Account().strReport, ReportPath());
    QVERIFY(!Account().bReportMissing);
    QVERIFY(ReportLines().contains("2 of 4 items were not copied whole."));
    QCOMPARE(ReportLines().filter("The disk is full.").count(), 2);
}

void tst_ReportFaults::selectionThatFitsToTheByte()
{
    m_pStick = std::make_unique<CVolume>("Stick", "/dev/disk8s4", 1);
    m_strDest = m_pStick->Path("Tarnwick");
    m_pNodes->Clear();
    const QByteArray baExact = Pattern(MIB);
    Add("exact", baExact);
    Run();
    QCOMPARE(Problems(), QStringList{});
    QVERIFY(Copied("exact") == baExact);
    QVERIFY(Account().IsWhole());
    QVERIFY(!Account().bReportMissing);
    QCOMPARE(QDir(m_pStick->Path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot),
             QStringList{"Tarnwick"});
}

void tst_ReportFaults::selectionThatFitsToTheLastEntry_data()
{
    QTest::addColumn<QString>("strName");
    QTest::addColumn<int>("nEntries");
    QTest::newRow("file") << "more" << 1;
    QTest::newRow("folder") << "sub/more" << 2;
}

void tst_ReportFaults::selectionThatFitsToTheLastEntry()
{
    // Room for the stick's own folder, the one of the copy, those of the path of the
    // source and the files, and for no report beside them.
    QFETCH(QString, strName);
    QFETCH(int, nEntries);
    Add(strName, "more");
    const int nFolders = 1 + 1 + m_pTree->Path("src").count('/');
    const QByteArray baOptions = "size=1m,nr_inodes=" + QByteArray::number(nFolders + 2 + nEntries);
    QVERIFY(CVolume::Mount("/dev/disk8s4", "/Volumes/Few", baOptions));
    m_strDest = "/Volumes/Few/Tarnwick";
    Run();
    QCOMPARE(Problems(), QStringList{});
    QCOMPARE(Copied(strName), QByteArray("more"));
    QVERIFY(Account().IsWhole());
    QVERIFY(!QFileInfo::exists(ReportPath()));
    QVERIFY(CVolume::Unmount("/Volumes/Few"));
}

void tst_ReportFaults::folderWithoutRoomIsTriedAgain()
{
    CFailingCalls::Fail(ENCall::MAKE_FOLDER, "/src", ENOSPC);
    Run();
    // The reserve is given up, then the report, once for all; it is written again at the end.
    QCOMPARE(CFailingCalls::Calls(), 3 + 1);
    QCOMPARE(Account().nProblems, 2);
    QCOMPARE(CCopyText::Summary(Account()), QString("Nothing was copied."));
    QCOMPARE(ReportLines().filter("The disk is full.").count(), 2);
}

void tst_ReportFaults::closeWithoutRoomWritesAnew()
{
    CFailingCalls::Fail(ENCall::CLOSE, Copy("last"), ENOSPC);
    Run(18);
    QCOMPARE(CFailingCalls::Calls(), 3);
    QCOMPARE(Copied("last"), QByteArray("last"));
    QCOMPARE(Account().nBytes, 9);
    QCOMPARE(m_pWorker->BytesDone(), 9);
    QCOMPARE(Told(*m_pProgress), (QStringList{"first 27", "last 50", "last 50", "last 50"}));
    QCOMPARE(ReportLines().filter("The disk is full. (4 bytes of 4 bytes)").count(), 1);
}

// ---- disks that do not answer

void tst_ReportFaults::signOfLife()
{
    CMovedClock clock;
    QCOMPARE(m_pWorker->SinceProgressMs(), 0);
    QCOMPARE(m_pWorker->CurrentStep(), ENCopyStep::IDLE);
    CFailingCalls::Watch(ENCall::READ, "/src/last", [&] {
        m_entered.Open();
        m_go.Pass(PATIENCE_MS);
    });
    Start(9);
    QVERIFY(m_entered.Pass(PATIENCE_MS));
    clock.Move(20000);
    QCOMPARE(m_pWorker->SinceProgressMs(), 20000);
    QCOMPARE(m_pWorker->CurrentStep(), ENCopyStep::READING);
    QCOMPARE(m_pWorker->CurrentPath(), Last());
    QCOMPARE(m_pWorker->FilesDone(), 1);
    QCOMPARE(m_pWorker->BytesDone(), 5);
    m_go.Open();
    QVERIFY(WaitForEnd());
    QCOMPARE(m_pWorker->SinceProgressMs(), 0);
    QCOMPARE(m_pWorker->CurrentStep(), ENCopyStep::IDLE);
    QCOMPARE(m_pWorker->FilesDone(), 2);
}

void tst_ReportFaults::pauseIsNoLackOfProgress()
{
    CMovedClock clock;
    QVERIFY(StartAndHold(9));
    m_pWorker->SetCopyStatus(COPY_STATUS_PAUSE);
    LetGo();
    QTRY_COMPARE(m_pWorker->CurrentStep(), ENCopyStep::PAUSED);
    clock.Move(20000);
    QCOMPARE(m_pWorker->SinceProgressMs(), 0);
    m_pWorker->SetCopyStatus(COPY_STATUS_RUN);
    QVERIFY(WaitForEnd());
}

void tst_ReportFaults::nodesAreNotTouchedWhenTheReportWasSlow()
{
    m_pNodes->Clear();
    m_pTree->Write("src/top/in", "1");
    m_pNodes->AddListed(Source("top"));
    m_pTree->Write("dst" + Source("top"), "in the way");
    // What is below the folder is not looked at any more.
    CFailingCalls::Watch(
        ENCall::WRITE_AT, "/dst.txt", [&] { m_pWorker->SetCopyStatus(COPY_STATUS_STOP); }, 1);
    Run();
    QCOMPARE(Problems(),
             QStringList{"top: its target folder cannot be created: File exists (0 of unknown "
                         "bytes copied)"});
    QCOMPARE(m_pFinished->count(), 1);
}

void tst_ReportFaults::workerLeftBehind_data()
{
    QTest::addColumn<int>("nCall");
    QTest::addColumn<QString>("strEnd"); // of the path that it hangs at
    QTest::addColumn<int>("nStep");
    QTest::addColumn<QString>("strItem");
    const auto fnRow = [](const char* pszRow, ENCall enCall, const char* pszEnd, ENCopyStep enStep,
                          const char* pszItem = "src/last") {
        QTest::newRow(pszRow) << int(enCall) << pszEnd << int(enStep) << pszItem;
    };
    fnRow("read", ENCall::READ, "/src/last", ENCopyStep::READING);
    fnRow("write", ENCall::WRITE, "/src/last", ENCopyStep::WRITING);
    fnRow("close", ENCall::CLOSE, "/src/last", ENCopyStep::WRITING);
    fnRow("look at the source", ENCall::STAT, "/src/last", ENCopyStep::READING);
    fnRow("open", ENCall::OPEN, "/src/last", ENCopyStep::WRITING);
    fnRow("make a folder", ENCall::MAKE_FOLDER, "/src", ENCopyStep::WRITING, "src/first");
    fnRow("flush", ENCall::FLUSH, "", ENCopyStep::FLUSHING, "dst");
}

void tst_ReportFaults::workerLeftBehind()
{
    QFETCH(int, nCall);
    QFETCH(QString, strEnd);
    QFETCH(int, nStep);
    CFailingCalls::Watch(ENCall(nCall), strEnd, [&] {
        m_entered.Open();
        m_go.Pass(PATIENCE_MS);
    });
    Start(9);
    QVERIFY(m_entered.Pass(PATIENCE_MS));
    QCOMPARE(int(m_pWorker->CurrentStep()), nStep);
    m_pWorker->SetCopyStatus(COPY_STATUS_STOP);
    // What hangs is named: never a file that is whole.
    QFETCH(QString, strItem);
    const QString strPath = m_pTree->Path(strItem);
    const STCopyAccount stAccount = m_pWorker->CloseAccount(PATIENCE_MS);

    QVERIFY(stAccount.bStopped);
    // What is whole can be relied on, unless it is the last flush that does not end.
    const bool bFlush = nCall == int(ENCall::FLUSH);
    QCOMPARE(stAccount.enFlush, bFlush ? ENCopyFlush::FAILED : ENCopyFlush::DONE);
    QCOMPARE(stAccount.nProblems, 1);
    QCOMPARE(stAccount.listItem.value(0).enProblem, ENCopyProblem::NO_ANSWER);
    QCOMPARE(stAccount.listItem.value(0).strPath, strPath);
    QCOMPARE(stAccount.strReport, ReportPath());
    QVERIFY(!stAccount.bReportMissing);
    const QByteArray baReport = Content(ReportPath());
    QVERIFY(ReportLines().contains('"' + strPath + "\": " + NO_ANSWER));
    QCOMPARE(Problems().count(), 1);
    QVERIFY(Problems().at(0).contains("its disk does not answer"));
    QVERIFY(Summary().startsWith("Copy stopped: files "));
    const QStringList listLine = LogLines();

    // The nodes belong to the window again, and nobody listens any more.
    m_pNodes->Clear();
    m_go.Open();
    QVERIFY(m_pWorker->wait(PATIENCE_MS));
    QCoreApplication::processEvents();
    QCOMPARE(m_pFinished->count(), 0);
    QCOMPARE(m_pAccounts->count(), 0);
    QCOMPARE(LogLines(), listLine);
    QVERIFY(Content(ReportPath()) == baReport);
    QCOMPARE(m_pWorker->CloseAccount(0).nProblems, 1);
}

void tst_ReportFaults::reportThatHangs_data()
{
    QTest::addColumn<int>("nCall");
    QTest::addColumn<int>("nGood");
    QTest::addColumn<int>("nProblems");
    QTest::newRow("when it is made") << int(ENCall::SYNC_FILE) << 0 << 1;
    QTest::newRow("at a line") << int(ENCall::WRITE_AT) << 1 << 2;
}

void tst_ReportFaults::reportThatHangs()
{
    QFETCH(int, nCall);
    QFETCH(int, nGood);
    QVERIFY(QFile::remove(Source("first")));
    const auto fnHang = [&] {
        m_entered.Open();
        m_go.Pass(PATIENCE_MS);
    };
    CFailingCalls::Watch(ENCall(nCall), "/dst.txt", fnHang, nGood);
    Start(9);
    QVERIFY(m_entered.Pass(PATIENCE_MS));
    m_pWorker->SetCopyStatus(COPY_STATUS_STOP);
    const STCopyAccount stAccount = m_pWorker->CloseAccount(50);
    QVERIFY(stAccount.bReportMissing);
    QTEST(int(stAccount.nProblems), "nProblems");
    QVERIFY(CLeftBehind::Any());
    m_pNodes->Clear();
    m_go.Open();
    QVERIFY(m_pWorker->wait(PATIENCE_MS));
    QTRY_VERIFY(!CLeftBehind::Any());
    // Who was left behind has completed it after all.
    QCOMPARE(ReportLines().filter(NO_ANSWER).count(), 1);
}

void tst_ReportFaults::copyThatEndedMeanwhile()
{
    Run();
    const QStringList listLine = LogLines();
    const STCopyAccount stAccount = m_pWorker->CloseAccount(0);
    QVERIFY(stAccount.IsWhole());
    QCOMPARE(stAccount.nFiles, 2);
    QCOMPARE(LogLines(), listLine);
}

QTEST_GUILESS_MAIN(tst_ReportFaults)
#include "tst_ReportFaults.moc"
