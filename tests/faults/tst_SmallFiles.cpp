#include "CFailingCalls.h"
#include "copy/CKeptTimes.h"
#include "support/CCopyBed.h"
#include "support/CMovedClock.h"
#include "support/CVolume.h"

#include <QDir>
#include <QFile>

#include <cerrno>
#include <fcntl.h>
#include <functional>
#include <sys/stat.h>
#include <sys/xattr.h>

using ENCall = CFailingCalls::ENCall;

static const QByteArray CONTENT = "what it was";

static void SetModified(const QString& strPath, qint64 nSec)
{
    const timespec listTime[2] = {{time_t(nSec), 0}, {time_t(nSec), 0}};
    QCOMPARE(utimensat(AT_FDCWD, QFile::encodeName(strPath).constData(), listTime, 0), 0);
}

/** Copies of small files, for which less is asked of the system, while something happens to them. */
class tst_SmallFiles : public CCopyBed
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void sourceBeforeItIsRead_data();
    void sourceBeforeItIsRead();
    void sourceThatIsReadAlready();
    void failingRead();
    void nothingStaysOpen_data();
    void nothingStaysOpen();

    void targetThatMayNotBeRead();
    void folderIsMadeOnceForItsFiles();
    void diskThatGoesWhileItsFolderIsMade();
    void folderThatNobodyMade();
    void otherDiskWithTheSameFolders_data();
    void otherDiskWithTheSameFolders();

    void permissionsOfNewFilesDifferByFolder();
    void closeWithoutRoomInACompleteCopy();

    void timesAreLookedAtNowAndThen();
    void datesThatNotEveryDiskHolds_data();
    void datesThatNotEveryDiskHolds();

private:
    void AddMany(int nFiles, qint64 nSec);
    QStringList LostTimes() const;
};

void tst_SmallFiles::init()
{
    NEEDS_VOLUMES();
    Make();
    Add("before", "before");
    Add("file", CONTENT);
    Add("last", "last");
}

void tst_SmallFiles::cleanup()
{
    CFailingCalls::Reset();
    Clear();
}

// ---- sources that change

void tst_SmallFiles::sourceBeforeItIsRead_data()
{
    QTest::addColumn<QString>("strChange");
    QTest::addColumn<QByteArray>("baCopied");
    QTest::addColumn<QString>("strProblem");
    const auto fnRow = [](const char* pszChange, const QByteArray& baCopied, const char* pszProblem = "") {
        QTest::newRow(pszChange) << pszChange << baCopied << pszProblem;
    };
    fnRow("grows", CONTENT + " and more");
    fnRow("grows beyond a piece", CONTENT + QByteArray(300 * 1024, 'm'));
    fnRow("shrinks", CONTENT.left(4));
    fnRow("has other bytes", QByteArray(CONTENT).replace('w', 'W'));
    fnRow("another file", "", "another file has taken its place (0 of 11 bytes copied)");
    fnRow("a pipe", "", "no longer a file (0 of 11 bytes copied)");
    fnRow("no name", CONTENT, "was removed while it was copied (11 of 11 bytes copied)");
}

void tst_SmallFiles::sourceBeforeItIsRead()
{
    QFETCH(QString, strChange);
    QFETCH(QByteArray, baCopied);
    QFETCH(QString, strProblem);
    const QString strFile = Source("file");
    SetModified(strFile, 1100000000);
    const bool bRenamed = strChange == "another file" || strChange == "a pipe";
    const auto fnChange = [&] {
        if (bRenamed || strChange == "no name") {
            QVERIFY(QFile::rename(strFile, Source("old")));
        }
        if (strChange == "a pipe") {
            QCOMPARE(mkfifo(QFile::encodeName(strFile).constData(), 0600), 0);
        } else if (strChange == "another file") {
            m_pTree->Write("src/file", "of other bytes");
        } else if (strChange == "no name") {
            QVERIFY(QFile::remove(Source("old")));
        } else {
            m_pTree->Write("src/file", baCopied);
        }
    };
    // What was looked at is opened, or is open already: the target is opened before it.
    const bool bOpen = strChange == "no name";
    CFailingCalls::Watch(bOpen ? ENCall::READ : ENCall::OPEN, "/src/file", fnChange, bOpen ? 0 : 1);
    Run();
    QCOMPARE(Problems(), strProblem.isEmpty() ? QStringList() : QStringList{"file: " + strProblem});
    QCOMPARE(Copied("file"), baCopied);
    QCOMPARE(Copied("before") + Copied("last"), QByteArray("beforelast"));
    if (strProblem.isEmpty()) {
        QCOMPARE(QFileInfo(Copy("file")).lastModified(), QFileInfo(strFile).lastModified());
    }
}

void tst_SmallFiles::sourceThatIsReadAlready()
{
    // All of it was read, and was then what it had been before: the copy is of one moment.
    AfterChunk("file", 1, [this] { m_pTree->Write("src/file", "of another day"); });
    Run();
    QCOMPARE(Problems(), QStringList());
    QCOMPARE(Copied("file"), CONTENT);
}

void tst_SmallFiles::failingRead()
{
    CFailingCalls::Fail(ENCall::READ, "/src/file", EIO);
    Run();
    QCOMPARE(CFailingCalls::Calls(), 1); // a bad place is not tried again
    QCOMPARE(Problems(), QStringList{"file: ReadFile ret = -2: Input/output error (0 of 11 bytes copied)"});
}

void tst_SmallFiles::nothingStaysOpen_data()
{
    QTest::addColumn<int>("nCall");
    QTest::addColumn<int>("nError");
    QTest::addColumn<bool>("bComplete");
    const auto fnRow = [](const char* pszWhat, ENCall enCall, int nError) {
        QTest::newRow(pszWhat) << int(enCall) << nError << false;
        QTest::addRow("%s, complete", pszWhat) << int(enCall) << nError << true;
    };
    fnRow("nothing fails", ENCall::NONE, 0);
    fnRow("look", ENCall::STAT, EIO);
    fnRow("open", ENCall::OPEN, EACCES);
    fnRow("a pipe in its place", ENCall::OPEN, 0);
    fnRow("read", ENCall::READ, EIO);
    fnRow("write", ENCall::WRITE, EIO);
    fnRow("no room", ENCall::WRITE, ENOSPC);
    fnRow("folder gone", ENCall::ACCESS, ENOENT);
    fnRow("times", ENCall::SET_TIME, EPERM);
    fnRow("close", ENCall::CLOSE, EIO);
    fnRow("close without room", ENCall::CLOSE, ENOSPC);
}

void tst_SmallFiles::nothingStaysOpen()
{
    QFETCH(int, nCall);
    QFETCH(int, nError);
    QFETCH(bool, bComplete);
    const auto fnOpen = [this] {
        QStringList listOpen;
        for (const QFileInfo& info : QDir("/proc/self/fd").entryInfoList(QDir::AllEntries | QDir::System)) {
            listOpen.append(info.symLinkTarget());
        }
        return listOpen.filter(m_pTree->Path());
    };
    if (bComplete) {
        m_pNodes->Clear();
        m_pNodes->Root()->m_bComplete = true;
        m_pNodes->Add(m_pTree->Path("src"));
    }
    const ENCall enCall = ENCall(nCall);
    if (nError != 0) {
        CFailingCalls::Fail(enCall, enCall == ENCall::ACCESS ? "/src" : "/src/file", nError);
    } else {
        CFailingCalls::Watch(enCall, "/src/file", [this] {
            QVERIFY(QFile::remove(Source("file")));
            QCOMPARE(mkfifo(QFile::encodeName(Source("file")).constData(), 0600), 0);
        });
    }
    Run();
    QVERIFY(enCall == ENCall::NONE || CFailingCalls::Calls() > 0);
    CFailingCalls::Reset();
    QTRY_COMPARE(fnOpen(), QStringList()); // the helpers close theirs themselves
}

// ---- the destination

void tst_SmallFiles::targetThatMayNotBeRead()
{
    m_pTree->Write("dst" + Source("file"), "the broken remains of an earlier attempt");
    m_pTree->Write("dst" + Source("last"), "of another copy");
    // The program's path has its separator twice there.
    CFailingCalls::Fail(ENCall::OPEN, m_strDest + '/' + Source("file"), EACCES);
    Run();
    QVERIFY(CFailingCalls::Calls() > 1);
    CFailingCalls::Reset();
    QCOMPARE(Problems(), QStringList());
    QCOMPARE(Copied("file"), CONTENT);
    QVERIFY(!QFileInfo::exists(Copy("file_1")));
    QCOMPARE(Copied("last"), QByteArray("of another copy"));
    QCOMPARE(Copied("last_1"), QByteArray("last"));
}

void tst_SmallFiles::folderIsMadeOnceForItsFiles()
{
    const CMovedClock clock;
    CFailingCalls::Watch(ENCall::MAKE_FOLDER, "/src", [] {});
    Run();
    // It is tried before the folders above it are made.
    QCOMPARE(CFailingCalls::Calls(), 2);
    QCOMPARE(Copied("last"), QByteArray("last"));
}

void tst_SmallFiles::diskThatGoesWhileItsFolderIsMade()
{
    const CMovedClock clock;
    CVolume stick("Stick", "/dev/disk8s4", 8);
    m_strDest = stick.Path("Tarnwick");
    // Its empty folder is left behind, in which the machine's own disk lets all be made.
    CFailingCalls::Watch(ENCall::MAKE_FOLDER, "/src", [&] { stick.Pull(); });
    Run();
    QCOMPARE(CFailingCalls::Calls(), 2);
    CFailingCalls::Reset();
    QCOMPARE(Problems().mid(0, 3),
             (QStringList{"before: destination gone (0 of 6 bytes copied)",
                          "file: destination gone (0 of 11 bytes copied)",
                          "last: destination gone (0 of 4 bytes copied)"}));
    QVERIFY2(QDir(QFileInfo(Copy("file")).path()).isEmpty(), "the machine's own disk was written to");
}

void tst_SmallFiles::folderThatNobodyMade()
{
    QString strFolder = m_strDest + "/never made";
    m_pWorker->SetCopyParam(1, m_pNodes->Root(), m_strDest, COPY_STATUS_RUN);
    m_pWorker->WriteFile(m_pNodes->Root()->Child(0), strFolder, 1024, m_strDest);
    QVERIFY(!QFileInfo::exists(strFolder));
    QCOMPARE(Problems(), QStringList{"before: destination gone (0 of 6 bytes copied)"});
}

void tst_SmallFiles::otherDiskWithTheSameFolders_data()
{
    QTest::addColumn<int>("nMs"); // that it takes to put it in
    QTest::addColumn<QStringList>("listGone");
    QTest::newRow("at once, as none can") << 0 << QStringList();
    QTest::newRow("a tenth of a second")
        << 100 << QStringList{"last: destination gone (0 of 4 bytes copied)"};
}

void tst_SmallFiles::otherDiskWithTheSameFolders()
{
    QFETCH(int, nMs);
    QFETCH(QStringList, listGone);
    CMovedClock clock;
    CVolume stick("Stick", "/dev/disk8s4", 8);
    m_strDest = stick.Path("Tarnwick");
    std::unique_ptr<CVolume> pOther;
    AfterChunk("before", 1, [&] {
        stick.Pull();
        pOther = std::make_unique<CVolume>("Stick", "/dev/disk9s9", 8);
        QVERIFY(QDir().mkpath(QFileInfo(Copy("file")).path()));
    });
    AfterChunk("file", 1, [&] { clock.Move(nMs); });
    Run();
    QVERIFY(pOther && pOther->IsValid());
    QCOMPARE(Problems().filter("last: "), listGone);
    // A copy that ends on another disk than it began on is never told to be whole.
    QVERIFY(Account().bGone);
}

void tst_SmallFiles::permissionsOfNewFilesDifferByFolder()
{
    // Version 2; then owner, group and others: kind, what they may, nobody by name.
    static const uchar PRIVATE[] = {2, 0,    0,    0,    1,    0,    6, 0, 0xff, 0xff, 0xff, 0xff, 4,   0, 0,
                                    0, 0xff, 0xff, 0xff, 0xff, 0x20, 0, 0, 0,    0xff, 0xff, 0xff, 0xff};
    m_pNodes->Clear();
    m_pNodes->Root()->m_bComplete = true;
    for (const QString strName : {"top/one", "top/two", "top/in it/three", "top/in it/four"}) {
        m_pTree->Write("src/" + strName, "1");
        QCOMPARE(chmod(QFile::encodeName(Source(strName)).constData(), 0644), 0);
    }
    m_pNodes->Add(Source("top"));
    int nSet = -1;
    CFailingCalls::Watch(ENCall::LIST, Source("top/in it"), [&] {
        const QByteArray baFolder = QFile::encodeName(Copy("top/in it"));
        nSet = setxattr(baFolder.constData(), "system.posix_acl_default", PRIVATE, sizeof(PRIVATE), 0);
    });
    Run();
    QVERIFY(CFailingCalls::Calls() > 0);
    if (nSet != 0) {
        QSKIP("no folder whose new files are private here");
    }
    QCOMPARE(Account().nFiles, 4);
    for (const QString strName : {"top/one", "top/two", "top/in it/three", "top/in it/four"}) {
        struct stat stCopy = {};
        QCOMPARE(stat(QFile::encodeName(Copy(strName)).constData(), &stCopy), 0);
        QCOMPARE(int(stCopy.st_mode & 07777U), 0644);
    }
}

void tst_SmallFiles::closeWithoutRoomInACompleteCopy()
{
    m_pNodes->Clear();
    m_pNodes->Root()->m_bComplete = true;
    m_pTree->Write("src/top/file", CONTENT);
    m_pNodes->Add(Source("top"));
    CFailingCalls::Fail(ENCall::CLOSE, Copy("top/file"), ENOSPC);
    Run(CONTENT.size());
    // The report's room is given up for it twice, and the bytes are written again to the same file.
    QCOMPARE(CFailingCalls::Calls(), 3);
    QCOMPARE(Copied("top/file"), CONTENT);
    QVERIFY(!QFileInfo::exists(Copy("top/file_1")));
    QCOMPARE(Account().nBytes, CONTENT.size());
}

// ---- times

void tst_SmallFiles::AddMany(int nFiles, qint64 nSec)
{
    m_pNodes->Clear();
    for (int nFile = 0; nFile < nFiles; ++nFile) {
        const QString strName = QString("%1").arg(nFile, 3, 10, QChar('0'));
        m_pTree->Write("src/" + strName, "1");
        SetModified(Source(strName), nSec);
        m_pNodes->Add(Source(strName));
    }
}

/** The files of which the lost time was told. */
QStringList tst_SmallFiles::LostTimes() const
{
    return Problems().filter("its time cannot be kept").replaceInStrings(QRegExp(":.*"), "");
}

void tst_SmallFiles::timesAreLookedAtNowAndThen()
{
    AddMany(70, 1100000000);
    CFailingCalls::Fail(ENCall::SET_TIME, "", CFailingCalls::IGNORED, CKeptTimes::FIRST_FILES);
    Run();
    CFailingCalls::Reset();
    // The first that is looked at tells, and then each.
    QCOMPARE(CKeptTimes::ONE_IN, 64);
    QCOMPARE(LostTimes(), (QStringList{"064", "065", "066", "067", "068", "069"}));
}

void tst_SmallFiles::datesThatNotEveryDiskHolds_data()
{
    QTest::addColumn<qint64>("nSec");
    QTest::addColumn<bool>("bTold");
    QTest::newRow("1979") << qint64(315000000) << true;
    QTest::newRow("3 January 1980") << qint64(315705600) << false;
    QTest::newRow("31 December 2037") << qint64(2145830400) << false;
    QTest::newRow("2038") << qint64(2146000000) << true;
}

void tst_SmallFiles::datesThatNotEveryDiskHolds()
{
    QFETCH(qint64, nSec);
    QFETCH(bool, bTold);
    AddMany(CKeptTimes::FIRST_FILES + 2, 1100000000);
    SetModified(Source("016"), nSec);
    CFailingCalls::Fail(ENCall::SET_TIME, "/016", CFailingCalls::IGNORED);
    Run();
    CFailingCalls::Reset();
    QCOMPARE(LostTimes(), bTold ? QStringList{"016"} : QStringList());
}

QTEST_GUILESS_MAIN(tst_SmallFiles)
#include "tst_SmallFiles.moc"
