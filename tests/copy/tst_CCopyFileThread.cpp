#include "support/CCopyBed.h"
#include "support/CLogCapture.h"
#include "support/CMovedClock.h"

#include <QDir>
#include <QFile>
#include <QtTest>

#include <limits>
#include <sys/stat.h>

static const qint64 MIB = 1024 * 1024;
static const qint64 LARGEST = std::numeric_limits<qint64>::max();

Q_DECLARE_METATYPE(Qt::CheckState)
Q_DECLARE_METATYPE(ENCopyStatus)

class tst_CCopyFileThread : public CCopyBed
{
    Q_OBJECT

private slots:
    void init() { Make(); }
    void cleanup() { Clear(); }

    void chunkSize_data();
    void chunkSize();

    void remainingTimeIsToldInTheCopy();
    void percent_data();
    void percent();
    void progressAfterEveryChunk();

    void readFile_data();
    void readFile();
    void trimPoint_data();
    void trimPoint();

    void badParametersOnlyWriteTheirLine_data();
    void badParametersOnlyWriteTheirLine();
    void badCopyFileParametersStop();
    void nothingIsCopied_data();
    void nothingIsCopied();

    void layout_data();
    void layout();
    void onlyTickedChildrenAreCopied();
    void whatIsTickedButNotInTheTreeIsLogged();
    void partlyTickedFolderLogsNothingMissing();

    void hostileName_data();
    void hostileName();
    void longPathIsLogged();
    void longestNameThatIsTakenIsLogged();
    void operationsOnOneFile();

    void pauseHoldsAndResumeCompletes();
    void pauseCountsAsNoTime();
    void stopEndsFileAndWalk_data();
    void stopEndsFileAndWalk();
    void nodesAreNotTouchedAfterAStop();

    void summaryOfACompletedCopy();
    void secondRunStartsAfreshAndOverwritesNothing();
};

// ---- chunk size

void tst_CCopyFileThread::chunkSize_data()
{
    QTest::addColumn<qint64>("nTotal");
    QTest::addColumn<qint64>("nChunk");
    QTest::newRow("negative") << qint64(-1) << qint64(1048576);
    QTest::newRow("nothing") << qint64(0) << qint64(1048576);
    QTest::newRow("one below 50 MiB") << qint64(52428799) << qint64(1048576);
    QTest::newRow("exactly 50 MiB jumps") << qint64(52428800) << qint64(8388608);
    QTest::newRow("one above 50 MiB") << qint64(52428801) << qint64(4194304);
    QTest::newRow("one below 200 MiB") << qint64(209715199) << qint64(4194304);
    QTest::newRow("exactly 200 MiB") << qint64(209715200) << qint64(8388608);
    QTest::newRow("one above 200 MiB") << qint64(209715201) << qint64(8388608);
    QTest::newRow("largest") << LARGEST << qint64(8388608);
}

void tst_CCopyFileThread::chunkSize()
{
    QFETCH(qint64, nTotal);
    QFETCH(qint64, nChunk);
    const QByteArray baContent = Pattern(9 * MIB + 1);
    Add("f", baContent);
    Run(nTotal);
    QCOMPARE(m_pWorker->CopySpeed(), nChunk);
    QCOMPARE(m_pProgress->count(), 9 * MIB / nChunk + 1);
    QVERIFY(Copied("f") == baContent);
}

// ---- remaining time and progress

void tst_CCopyFileThread::remainingTimeIsToldInTheCopy()
{
    CMovedClock clock;
    Add("f", QByteArray(int(6 * MIB), 'x'));
    AfterEachChunk([&] { clock.Move(500); });
    Run(12 * MIB);
    QCOMPARE(Told(*m_pRemaining), (QStringList{"5", "4", "3"}));
    clock.Move(3000);
    m_pWorker->CalculateRemainTime();
    QCOMPARE(Told(*m_pRemaining), (QStringList{"5", "4", "3", "6"}));
}

void tst_CCopyFileThread::percent_data()
{
    QTest::addColumn<qint64>("nTotal");
    QTest::addColumn<int>("nSize");
    QTest::addColumn<int>("nPercent");
    QTest::newRow("a third truncates") << qint64(300) << 100 << 33;
    QTest::newRow("two thirds truncate") << qint64(300) << 200 << 66;
    QTest::newRow("all") << qint64(300) << 300 << 100;
    QTest::newRow("just not all") << qint64(100000) << 99999 << 99;
    QTest::newRow("next to nothing") << LARGEST << 1 << 0;
    QTest::newRow("total too small") << qint64(10) << 300 << 100;
    QTest::newRow("total of nothing") << qint64(0) << 300 << 100;
    QTest::newRow("total unknown") << qint64(-1) << 300 << 100;
}

void tst_CCopyFileThread::percent()
{
    QFETCH(qint64, nTotal);
    QFETCH(int, nSize);
    QFETCH(int, nPercent);
    Add("f.bin", QByteArray(nSize, 'x'));
    Run(nTotal);
    QCOMPARE(Told(*m_pProgress), QStringList{"f.bin " + QString::number(nPercent)});
}

void tst_CCopyFileThread::progressAfterEveryChunk()
{
    Add("a", QByteArray(int(2 * MIB), 'x'));
    Add("b", QByteArray(int(2 * MIB), 'x'));
    Run(4 * MIB);
    QCOMPARE(Told(*m_pProgress), (QStringList{"a 25", "a 50", "b 75", "b 100"}));
}

// ---- small operations

void tst_CCopyFileThread::readFile_data()
{
    QTest::addColumn<bool>("bReadable");
    QTest::addColumn<qint64>("nPos");
    QTest::addColumn<int>("nLen");
    QTest::addColumn<int>("nResult");
    QTest::addColumn<QByteArray>("baRead");
    QTest::newRow("from the start") << true << qint64(0) << 4 << 0 << QByteArray("0123");
    QTest::newRow("from the middle") << true << qint64(5) << 3 << 0 << QByteArray("567");
    QTest::newRow("short at the end") << true << qint64(8) << 4 << 0 << QByteArray("89");
    QTest::newRow("nothing behind the end") << true << qint64(20) << 4 << 0 << QByteArray();
    QTest::newRow("seek fails") << true << qint64(-5) << 4 << -1 << QByteArray();
    QTest::newRow("read fails") << false << qint64(0) << 4 << -2 << QByteArray();
}

void tst_CCopyFileThread::readFile()
{
    QFETCH(bool, bReadable);
    QFETCH(qint64, nPos);
    QFETCH(int, nLen);
    QFile file(m_pTree->Write("f", "0123456789"));
    const QIODevice::OpenMode mode = bReadable ? QIODevice::ReadOnly : QIODevice::Append;
    QVERIFY(file.open(mode | QIODevice::Unbuffered));
    char buf[16] = {};
    qint64 nReadLen = 0;
    QTEST(m_pWorker->ReadFile(&file, buf, nLen, nPos, nReadLen), "nResult");
    QTEST(QByteArray(buf, int(nReadLen)), "baRead");
}

void tst_CCopyFileThread::trimPoint_data()
{
    QTest::addColumn<QString>("strPath");
    QTest::addColumn<QString>("strTrimmed");
    const auto fnRow = [](const char* pszRow, const char* pszPath, const char* pszTrimmed) {
        QTest::newRow(pszRow) << pszPath << pszTrimmed;
    };
    fnRow("nothing to do", "/a/b.txt", "/a/b.txt");
    fnRow("hidden file", "/a/.b", "/a/b");
    fnRow("every place", "/.a/.b", "/a/b");
    fnRow("several points", "/a/...b", "/a/b");
    fnRow("points and separators", "/./.a", "//a");
    fnRow("point at the start stays", ".a", ".a");
    fnRow("empty", "", "");
}

void tst_CCopyFileThread::trimPoint()
{
    QFETCH(QString, strPath);
    CCopyFileThread().TrimPoint(strPath);
    QTEST(strPath, "strTrimmed");
}

// ---- bad parameters

void tst_CCopyFileThread::badParametersOnlyWriteTheirLine_data()
{
    QTest::addColumn<bool>("bRoot");
    QTest::addColumn<QString>("strDest");
    QTest::addColumn<QString>("strLine");
    QTest::newRow("no destination") << true << QString() << "CCopyFileThread::run() path failed";
    QTest::newRow("no root") << false << "/nowhere"
                             << "CCopyFileThread::run() dirnode failed";
}

void tst_CCopyFileThread::badParametersOnlyWriteTheirLine()
{
    QFETCH(bool, bRoot);
    QFETCH(QString, strDest);
    QFETCH(QString, strLine);
    m_pWorker->SetCopyParam(1, bRoot ? m_pNodes->Root() : nullptr, strDest, COPY_STATUS_RUN);
    const CLogCapture capture;
    m_pWorker->run();
    QCOMPARE(capture.Lines(), QStringList{strLine});
    QCOMPARE(LogLines(), QStringList());
    QCOMPARE(m_pFinished->count(), 0);
}

void tst_CCopyFileThread::badCopyFileParametersStop()
{
    QCOMPARE(m_pWorker->GetCopyStatus(), COPY_STATUS_RUN);
    m_pWorker->CopyFile(nullptr, "/nowhere");
    QCOMPARE(m_pWorker->GetCopyStatus(), COPY_STATUS_STOP);
    m_pWorker->SetCopyStatus(COPY_STATUS_RUN);
    m_pWorker->CopyFile(m_pNodes->Root(), QString());
    QCOMPARE(m_pWorker->GetCopyStatus(), COPY_STATUS_STOP);
}

void tst_CCopyFileThread::nothingIsCopied_data()
{
    QTest::addColumn<Qt::CheckState>("enRoot");
    QTest::addColumn<ENCopyStatus>("enStatus");
    QTest::addColumn<QString>("strEnd");
    QTest::newRow("unticked root") << Qt::Unchecked << COPY_STATUS_RUN << "Copy completed: ";
    QTest::newRow("stopped before the first child")
        << Qt::PartiallyChecked << COPY_STATUS_STOP << "Copy stopped: ";
}

void tst_CCopyFileThread::nothingIsCopied()
{
    QFETCH(Qt::CheckState, enRoot);
    QFETCH(ENCopyStatus, enStatus);
    QFETCH(QString, strEnd);
    m_pTree->Write("src/sub/f", "123");
    m_pNodes->Add(Source("sub"));
    m_pNodes->Root()->m_chkState = enRoot;
    m_pWorker->SetCopyStatus(enStatus);
    m_pWorker->CopyFile(m_pNodes->Root(), m_strDest);
    QCOMPARE(LogLines(), QStringList{});
    Run(3, enStatus);
    QVERIFY(!m_pTree->Has("dst"));
    QCOMPARE(m_pFinished->count(), 1);
    QCOMPARE(m_pWorker->GetCopyStatus(), enStatus);
    QVERIFY(Summary().startsWith(strEnd + "files 0, bytes 0, seconds "));
    QVERIFY(Summary().endsWith(", problems 0"));
}

// ---- layout

void tst_CCopyFileThread::layout_data()
{
    QTest::addColumn<QString>("strSource");
    QTest::addColumn<QString>("strBelow");
    const auto fnRow = [](const char* pszRow, const char* pszSource, const char* pszBelow) {
        QTest::newRow(pszRow) << pszSource << pszBelow;
    };
    fnRow("volume's name becomes the first folder", "/Volumes/Data/a/b.txt", "Data/a/b.txt");
    fnRow("top of a volume", "/Volumes/Data/b.txt", "Data/b.txt");
    fnRow("start-up volume keeps its separator", "/Users/x/c.txt", "/Users/x/c.txt");
    fnRow("directly in the folder of volumes", "/Volumes/c.txt", "/Volumes/c.txt");
    fnRow("other case", "/volumes/Data/c.txt", "/volumes/Data/c.txt");
    fnRow("longer name", "/Volumes2/Data/c.txt", "/Volumes2/Data/c.txt");
    fnRow("only at the beginning", "/Users/Volumes/c.txt", "/Users/Volumes/c.txt");
    fnRow("only once", "/Volumes/Volumes/c.txt", "Volumes/c.txt");
}

void tst_CCopyFileThread::layout()
{
    QFETCH(QString, strSource);
    QFETCH(QString, strBelow);
    if (!qEnvironmentVariableIsSet("TARNWICK_SANDBOX")) {
        QSKIP("needs the sandbox to create what it copies");
    }
    WriteFile(strSource, "data");
    m_pNodes->Add(strSource);
    Run();
    QCOMPARE(Content(m_strDest + '/' + strBelow), QByteArray("data"));
    QCOMPARE(Problems(), QStringList{});
    QVERIFY(QFile::remove(strSource));
}

void tst_CCopyFileThread::onlyTickedChildrenAreCopied()
{
    CDirNode* pTop = m_pNodes->Add(m_pTree->MkDir("src"), Qt::PartiallyChecked);
    Add("ticked", "1", Qt::Checked, pTop);
    Add("unticked", "2", Qt::Unchecked, pTop);
    CDirNode* pPartly = m_pNodes->Add(m_pTree->MkDir("src/partly"), Qt::PartiallyChecked, pTop);
    Add("partly/in", "3", Qt::Checked, pPartly);
    Add("partly/out", "4", Qt::Unchecked, pPartly);
    CDirNode* pOff = m_pNodes->Add(m_pTree->MkDir("src/off"), Qt::Unchecked, pTop);
    Add("off/never", "5", Qt::Checked, pOff);
    Run();
    const auto fnEntries = [&](const QString& strFolder) {
        return QDir(Copy(strFolder)).entryList(QDir::AllEntries | QDir::NoDotAndDotDot, QDir::Name);
    };
    QCOMPARE(fnEntries("."), (QStringList{"partly", "ticked"}));
    QCOMPARE(fnEntries("partly"), QStringList{"in"});
    QCOMPARE(Copied("partly/in"), QByteArray("3"));
}

void tst_CCopyFileThread::whatIsTickedButNotInTheTreeIsLogged()
{
    m_pTree->Write("src/listed/known", "1");
    m_pTree->MkDir("src/listed/empty");
    m_pTree->Write("src/unlisted/f", "1");
    m_pNodes->AddListed(Source("listed"));
    m_pNodes->Add(Source("unlisted"));
    m_pTree->Write("src/listed/a", "123");
    m_pTree->Write("src/listed/b", "12345");
    Run();
    QStringList listProblem = Problems();
    listProblem.sort();
    const QString strReason = "not in the tree: left out for its name, or newer than the list (0 of ";
    QCOMPARE(listProblem,
             (QStringList{"listed/a: " + strReason + "3 bytes copied)",
                          "listed/b: " + strReason + "5 bytes copied)",
                          "unlisted: its contents were never listed (0 of unknown bytes copied)"}));
    QCOMPARE(Copied("listed/known"), QByteArray("1"));
    for (const QString strFolder : {"listed/empty", "unlisted"}) {
        QVERIFY(QFileInfo(Copy(strFolder)).isDir());
        QVERIFY(QDir(Copy(strFolder)).isEmpty());
    }
}

void tst_CCopyFileThread::partlyTickedFolderLogsNothingMissing()
{
    m_pTree->Write("src/developer.txt", "12345");
    CDirNode* pTop = m_pNodes->Add(m_pTree->Path("src"), Qt::PartiallyChecked);
    Add("known", "1", Qt::Checked, pTop);
    Run();
    QCOMPARE(Problems(), QStringList{});
    QCOMPARE(Copied("known"), QByteArray("1"));
}

// ---- names

void tst_CCopyFileThread::hostileName_data()
{
    QTest::addColumn<QByteArray>("baName");
    QTest::newRow("placeholder") << QByteArray("%1 %2 %s");
    QTest::newRow("markup") << QByteArray("<b>bold<|b> &amp;");
    QTest::newRow("newline") << QByteArray("a\nb");
    QTest::newRow("255 bytes") << QByteArray(255, 'n');
    QTest::newRow("255 bytes of three each") << QByteArray("\xe3\x81\x82").repeated(85);
    QTest::newRow("not UTF-8") << QByteArray("a\xff\xfe\x80.txt");
    QTest::newRow("Latin-1") << QByteArray("caf\xe9");
    QTest::newRow("leading dash") << QByteArray("-rf");
    QTest::newRow("trailing blank") << QByteArray("a ");
    QTest::newRow("only a blank") << QByteArray(" ");
    QTest::newRow("backslash") << QByteArray("a\\b");
    QTest::newRow("quotes") << QByteArray("a\"b'c`d$e");
    QTest::newRow("control characters") << QByteArray("\x01\x1b[2J\x7f");
    QTest::newRow("hidden") << QByteArray(".hidden");
    QTest::newRow("three points") << QByteArray("...");
    QTest::newRow("outside the basic plane") << QByteArray("\xf0\x9f\x98\x80");
    QTest::newRow("decomposed") << QByteArray("e\xcc\x81");
    QTest::newRow("colon and star") << QByteArray("C:*?|");
}

void tst_CCopyFileThread::hostileName()
{
    QFETCH(QByteArray, baName);
    // Once as the name of a file, once as the name of the folder that holds it.
    const QByteArray baFolder = QFile::encodeName(m_pTree->MkDir("src")) + '/' + baName;
    QCOMPARE(mkdir(baFolder.constData(), 0700), 0);
    m_pTree->WriteBytesName("src/" + baName + '/' + baName, "data");
    m_pNodes->AddListed(m_pTree->Path("src"));
    Run();
    QCOMPARE(Problems(), QStringList{});
    const QByteArray baCopy = QFile::encodeName(m_strDest) + baFolder + '/' + baName;
    struct stat stCopy;
    QVERIFY2(lstat(baCopy.constData(), &stCopy) == 0, baCopy.constData());
    QCOMPARE(qint64(stCopy.st_size), 4);
    QCOMPARE(m_pProgress->count(), 1);
    QCOMPARE(QFile::encodeName(m_pProgress->at(0).at(0).toString()), baName);
}

void tst_CCopyFileThread::longPathIsLogged()
{
    // The source is as long as a path can be, so the destination in front makes it too long.
    QString strFile;
    while (Source(strFile).size() < 4087) {
        strFile += QString(qMin(250, 4087 - Source(strFile).size()), 'p') + '/';
    }
    Add(strFile + "f", "123");
    Add("after", "1");
    Run();
    QCOMPARE(
        Problems(),
        QStringList{strFile
                    + "f: its target folder cannot be created: File name too long (0 of 3 bytes copied)"});
    QCOMPARE(Copied("after"), QByteArray("1"));
}

void tst_CCopyFileThread::longestNameThatIsTakenIsLogged()
{
    const QString strName(255, 'n');
    Add(strName, "new");
    Add("after", "1");
    m_pTree->Write("dst" + Source(strName), "old");
    Run();
    // The double separator in the path of the target stays as it is.
    const QString strTarget = m_strDest + '/' + Source(strName) + "_1";
    QCOMPARE(Problems(),
             QStringList{strName + ": its target cannot be created: File name too long, \"" + strTarget
                         + "\" (0 of 3 bytes copied)"});
    QCOMPARE(Copied(strName), QByteArray("old"));
    QCOMPARE(Copied("after"), QByteArray("1"));
}

void tst_CCopyFileThread::operationsOnOneFile()
{
    CDirNode* pNode = Add("a.txt", "new");
    m_pTree->Write("dst/a.txt", "old");
    QString strTarget = m_pTree->Path("dst/a.txt");
    m_pWorker->DealExistingFile(strTarget, m_strDest, pNode->m_fileInfo);
    QCOMPARE(strTarget, m_pTree->Path("dst/a_1txt"));
    m_pWorker->DealCopyFile(strTarget, m_strDest, pNode->m_fileInfo, MIB);
    QCOMPARE(Content(strTarget), QByteArray("new"));
    m_pWorker->WriteFile(pNode, m_strDest, MIB, m_strDest);
    QCOMPARE(m_pTree->Read("dst/a_2txt"), QByteArray("new"));
}

// ---- pause and stop

void tst_CCopyFileThread::pauseHoldsAndResumeCompletes()
{
    const QByteArray baContent = Pattern(3 * MIB);
    Add("first", baContent);
    Add("second", "2");
    QVERIFY(StartAndHold(3 * MIB + 1));
    m_pWorker->SetCopyStatus(COPY_STATUS_PAUSE);
    LetGo();
    QVERIFY2(!NextChunk(100), "copied on in the pause");
    QCOMPARE(QFileInfo(Copy("first")).size(), MIB);
    QVERIFY(m_pWorker->isRunning());
    m_pWorker->SetCopyStatus(COPY_STATUS_RUN);
    QVERIFY(WaitForEnd());
    QCOMPARE(m_pFinished->count(), 1);
    QVERIFY(Copied("first") == baContent);
    QCOMPARE(Copied("second"), QByteArray("2"));
    QCOMPARE(Problems(), QStringList{});
}

void tst_CCopyFileThread::pauseCountsAsNoTime()
{
    CMovedClock clock;
    Add("f", QByteArray(int(2 * MIB), 'x'));
    QVERIFY(StartAndHold(4 * MIB));
    clock.Move(5000);
    m_pWorker->SetCopyStatus(COPY_STATUS_PAUSE);
    LetGo();
    QTRY_COMPARE(m_pWorker->CurrentStep(), ENCopyStep::PAUSED);
    clock.Move(30000);
    m_pWorker->SetCopyStatus(COPY_STATUS_RUN);
    QVERIFY(WaitForEnd());
    // 3 MiB left after 5 s for 1 MiB, then 2 MiB left after 5 s for 2 MiB.
    QCOMPARE(Told(*m_pRemaining), (QStringList{"15", "5"}));
    QCOMPARE(Summary(), QString("Copy completed: files 1, bytes 2097152, seconds 5.000, problems 0"));
}

void tst_CCopyFileThread::stopEndsFileAndWalk_data()
{
    QTest::addColumn<bool>("bPaused");
    QTest::newRow("running") << false;
    QTest::newRow("paused") << true;
}

void tst_CCopyFileThread::stopEndsFileAndWalk()
{
    QFETCH(bool, bPaused);
    Add("first", QByteArray(int(3 * MIB), 'x'));
    Add("second", "2");
    QVERIFY(StartAndHold(3 * MIB + 1));
    if (bPaused) {
        m_pWorker->SetCopyStatus(COPY_STATUS_PAUSE);
        LetGo();
        QVERIFY2(!NextChunk(50), "copied on in the pause");
    }
    m_pWorker->SetCopyStatus(COPY_STATUS_STOP);
    LetGo();
    QVERIFY(WaitForEnd(1000));
    QCOMPARE(m_pFinished->count(), 1);
    QVERIFY(!NextChunk(0));
    QCOMPARE(m_pWorker->GetCopyStatus(), COPY_STATUS_STOP);
    QCOMPARE(QFileInfo(Copy("first")).size(), MIB);
    QVERIFY(!QFileInfo::exists(Copy("second")));
    QCOMPARE(Problems(), QStringList{"first: the copy was stopped (1048576 of 3145728 bytes copied)"});
    QVERIFY(Summary().startsWith("Copy stopped: files 0, bytes 1048576, seconds "));
    QVERIFY(Summary().endsWith(", problems 1, half-copied \"" + Source("first") + '"'));
}

void tst_CCopyFileThread::nodesAreNotTouchedAfterAStop()
{
    // The nodes are gone when the worker goes on, and two levels of the walk are
    // still to be left: a worker that looked at them would crash or copy on.
    m_pTree->Write("src/a/b/first", QByteArray(int(2 * MIB), 'x'));
    m_pTree->Write("src/a/second", "2");
    m_pTree->Write("src/third", "3");
    m_pNodes->AddListed(m_pTree->Path("src"));
    QVERIFY(StartAndHold(2 * MIB + 2));
    m_pWorker->SetCopyStatus(COPY_STATUS_STOP);
    m_pNodes->Clear();
    m_pNodes->Root()->m_chkState = Qt::Unchecked;
    LetGo();
    QVERIFY(WaitForEnd());
    QCOMPARE(QFileInfo(Copy("a/b/first")).size(), MIB);
    QVERIFY(!QFileInfo::exists(Copy("a/second")));
    QVERIFY(!QFileInfo::exists(Copy("third")));
    QCOMPARE(LogLines().count(), 3); // it begins, one file is not whole, it is stopped
}

// ---- summary

void tst_CCopyFileThread::summaryOfACompletedCopy()
{
    CMovedClock clock;
    Add("a", "123");
    Add("b", "4567");
    m_pNodes->Add(m_pTree->Link("src/broken", "nowhere"));
    AfterEachChunk([&] { clock.Move(600); });
    const CLogCapture capture;
    Run(7);
    const QStringList listExpected{
        QString("Copy begins: from \"%1\", \"%2\", \"%3\" to \"%4\", bytes at most 7")
            .arg(Source("a"), Source("b"), Source("broken"), m_strDest),
        Problem(Source("broken"), "open file failed: No such file or directory (0 of 0 bytes copied)"),
        "Copy completed: files 2, bytes 7, seconds 1.200, problems 1",
    };
    QCOMPARE(LogLines(), listExpected);
    QCOMPARE(capture.Lines(), QStringList{"open file failed"});
    // The empty target of a source that cannot be opened stays.
    QVERIFY(QFileInfo::exists(Copy("broken")));
}

void tst_CCopyFileThread::secondRunStartsAfreshAndOverwritesNothing()
{
    CMovedClock clock;
    Add("a.txt", "new");
    m_pTree->Write("dst" + Source("a.txt"), "old");
    for (const QString strCopy : {"a_1txt", "a_2txt"}) {
        Run(6);
        QCOMPARE(Told(*m_pProgress).last(), QString("a.txt 50"));
        QCOMPARE(Summary(), QString("Copy completed: files 1, bytes 3, seconds 0.000, problems 0"));
        QCOMPARE(Copied(strCopy), QByteArray("new"));
        clock.Move(5000);
    }
    QCOMPARE(Copied("a.txt"), QByteArray("old"));
}

QTEST_GUILESS_MAIN(tst_CCopyFileThread)
#include "tst_CCopyFileThread.moc"
