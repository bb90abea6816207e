#include "copy/CCopyLogFile.h"
#include "files/CLeftBehind.h"
#include "log/CLogTarnwick.h"
#include "support/CCopyBed.h"
#include "support/CFaultyDisk.h"
#include "support/CVolume.h"

#include <QDir>

static const char VARIABLE[] = "TARNWICK_LOG_BESIDE_COPY";

/** The log that is saved beside a copy where the program cannot keep it beside itself. */
class tst_CCopyLogFile : public CCopyBed
{
    Q_OBJECT

private slots:
    void init() { Make(); }
    void cleanup();

    void logWhereItBelongsIsNotSaved();
    void logIsSavedBesideTheCopy();
    void environmentHasItSavedWhereverItLies_data();
    void environmentHasItSavedWhereverItLies();
    void nothingThatIsThereIsReplaced();
    void stoppedCopyHasItsLog();
    void fullStickKeepsNoHalf();
    void goneStickIsNotTouched();
    void stickThatHangsKeepsNobodyWaiting_data();
    void stickThatHangsKeepsNobodyWaiting();

private:
    void LetLogGoElsewhere();
    QString LogPath() const { return m_strDest + ".log"; }
};

void tst_CCopyLogFile::cleanup()
{
    Clear();
    QFile::remove(QCoreApplication::applicationDirPath() + "/Log");
    QDir(QDir::tempPath() + "/Tarnwick Log").removeRecursively();
    qunsetenv(VARIABLE);
}

void tst_CCopyLogFile::LetLogGoElsewhere()
{
    const QString strFolder = QCoreApplication::applicationDirPath() + "/Log";
    QVERIFY(QDir(strFolder).removeRecursively());
    WriteFile(strFolder, "no folder");
    g_TarnwickLog.LogExt("before the copy");
    QVERIFY(!g_TarnwickLog.FallbackFile().isEmpty());
}

void tst_CCopyLogFile::logWhereItBelongsIsNotSaved()
{
    Add("a.txt", "content");
    Run();
    QCOMPARE(Copied("a.txt"), "content");
    QVERIFY(!QFileInfo::exists(LogPath()));
}

void tst_CCopyLogFile::logIsSavedBesideTheCopy()
{
    LetLogGoElsewhere();
    Add("a.txt", "content");
    bool bThere = false;
    connect(
        m_pWorker.get(), &CCopyFileThread::SignalCopyFinish, m_pWorker.get(),
        [&] { bThere = QFileInfo::exists(LogPath()); }, Qt::DirectConnection);
    Run();
    QVERIFY(bThere); // by the time at which the user is told of the end
    const QByteArray baLog = Content(LogPath());
    const QByteArray baAll = Content(g_TarnwickLog.FallbackFile());
    QVERIFY(baLog.contains("before the copy\n"));
    QVERIFY(baAll.startsWith(baLog));
    QVERIFY2(baAll.mid(baLog.size()).contains("the log was saved beside the copy: "), baAll.constData());
    QCOMPARE(baAll.mid(baLog.size()).count('\n'), 1); // its last line was that of the copy's end
    // Where the files are there is nothing but them.
    QCOMPARE(QDir(m_strDest).entryList({"*.log"}), QStringList());
}

void tst_CCopyLogFile::environmentHasItSavedWhereverItLies_data()
{
    QTest::addColumn<QByteArray>("baValue");
    QTest::addColumn<bool>("bElsewhere");
    QTest::addColumn<bool>("bSaved");
    QTest::newRow("beside the program") << QByteArray("1") << false << true;
    QTest::newRow("in the temporary folder") << QByteArray("1") << true << true;
    QTest::newRow("another value") << QByteArray("yes") << false << false;
    QTest::newRow("another value, in the temporary folder") << QByteArray("0") << true << true;
}

void tst_CCopyLogFile::environmentHasItSavedWhereverItLies()
{
    QFETCH(QByteArray, baValue);
    QFETCH(bool, bElsewhere);
    QFETCH(bool, bSaved);
    qputenv(VARIABLE, baValue);
    if (bElsewhere) {
        LetLogGoElsewhere();
    } else {
        g_TarnwickLog.LogExt("before the copy");
    }
    QCOMPARE(g_TarnwickLog.FallbackFile().isEmpty(), !bElsewhere);
    Add("a.txt", "content");
    Run();
    QCOMPARE(QFileInfo::exists(LogPath()), bSaved);
    const QByteArray baLog = Content(LogPath());
    const QByteArray baAll = Content(g_TarnwickLog.CurrentFile());
    QCOMPARE(baAll.contains("the log was saved beside the copy: "), bSaved);
    QVERIFY(!bSaved || (baLog.contains("before the copy\n") && baAll.startsWith(baLog)));
}

void tst_CCopyLogFile::nothingThatIsThereIsReplaced()
{
    LetLogGoElsewhere();
    Add("a.txt", "content");
    WriteFile(LogPath(), "somebody's");
    Run();
    QCOMPARE(Content(LogPath()), "somebody's");
    QVERIFY(Content(m_strDest + "_1.log").contains("before the copy\n"));
}

void tst_CCopyLogFile::stoppedCopyHasItsLog()
{
    LetLogGoElsewhere();
    Add("a.txt", QByteArray(100, 'x'));
    AfterEachChunk([this] { m_pWorker->SetCopyStatus(COPY_STATUS_STOP); });
    Run();
    QVERIFY(Content(LogPath()).contains("before the copy\n"));
}

void tst_CCopyLogFile::fullStickKeepsNoHalf()
{
    NEEDS_VOLUMES();
    LetLogGoElsewhere();
    const CVolume stick("STICK", "/dev/sdb1", 1);
    m_strDest = stick.Path("Tarnwick");
    g_TarnwickLog.LogExt(QString(1024 * 1024, 'l'));
    Add("a.txt", "content");
    Run();
    QCOMPARE(Copied("a.txt"), "content");
    QVERIFY(!QFileInfo::exists(LogPath()));
    const QByteArray baWhy
        = QByteArray("the log could not be saved beside the copy: ").append(strerror(ENOSPC));
    QVERIFY(Content(g_TarnwickLog.FallbackFile()).endsWith(baWhy + '\n'));
}

void tst_CCopyLogFile::goneStickIsNotTouched()
{
    NEEDS_VOLUMES();
    LetLogGoElsewhere();
    CVolume stick("STICK", "/dev/sdb1", 5);
    m_strDest = stick.Path("Tarnwick");
    Add("a.txt", "content");
    AfterEachChunk([&stick] { stick.Pull(); });
    Run();
    QVERIFY(Account().bGone);
    QCOMPARE(QDir("/Volumes/STICK").entryList(QDir::AllEntries | QDir::NoDotAndDotDot), QStringList());
    QVERIFY(Content(g_TarnwickLog.FallbackFile()).contains("the log could not be saved beside the copy: "));
}

void tst_CCopyLogFile::stickThatHangsKeepsNobodyWaiting_data()
{
    QTest::addColumn<QString>("strCall");
    QTest::newRow("when the file is made") << "create";
    QTest::newRow("when it is written") << "write";
    QTest::newRow("when it is flushed") << "fsync";
}

void tst_CCopyLogFile::stickThatHangsKeepsNobodyWaiting()
{
    QFETCH(QString, strCall);
    NEEDS_FAULTY_DISKS();
    CFaultyDisk stick("STICK", "/dev/sdb1", 5);
    if (!stick.IsValid()) {
        QSKIP("the failing file system is not built for the sanitizers");
    }
    LetLogGoElsewhere();
    m_strDest = stick.Path("Tarnwick");
    stick.Rule(strCall, "hang", 0, "/Tarnwick.log");
    Add("a.txt", "content");
    const auto patience = CCopyLogFile::Patience();
    CCopyLogFile::SetPatience(std::chrono::milliseconds(100));
    Start(7);
    const bool bEnded = WaitForEnd();
    CCopyLogFile::SetPatience(patience);
    stick.Heal();
    QVERIFY(bEnded);
    QCOMPARE(Account().nFiles, 1);
    QVERIFY(Content(g_TarnwickLog.FallbackFile()).contains("the log could not be saved beside the copy: "));
    QTRY_VERIFY(!CLeftBehind::Any());
}

QTEST_GUILESS_MAIN(tst_CCopyLogFile)
#include "tst_CCopyLogFile.moc"
