#include "CFailingCalls.h"
#include "support/CCopyBed.h"
#include "support/CLogCapture.h"
#include "support/CVolume.h"

#include <QDir>
#include <QFile>

#include <cerrno>
#include <cstring>
#include <dlfcn.h>
#include <fcntl.h>
#include <linux/magic.h>
#include <sys/stat.h>
#include <sys/vfs.h>
#include <sys/xattr.h>
#include <unistd.h>

using ENCall = CFailingCalls::ENCall;

static const char ATTRIBUTE[] = "user.note";

// What every disk says of its kind, if not 0.
static long s_nMagic = 0;

extern "C" int statfs(const char* pszPath, struct statfs* pStatus) noexcept
{
    using Call = int (*)(const char*, struct statfs*);
    const int nResult = reinterpret_cast<Call>(dlsym(RTLD_NEXT, "statfs"))(pszPath, pStatus);
    if (s_nMagic != 0) {
        pStatus->f_type = s_nMagic;
    }
    return nResult;
}

// What the disk of a Mac shows instead of the attribute.
static const char MACS_ATTRIBUTE[] = "osx.note";
static bool s_bMac = false;

extern "C" ssize_t llistxattr(const char* pszPath, char* pNames, size_t nSize) noexcept
{
    using Call = ssize_t (*)(const char*, char*, size_t);
    if (!s_bMac) {
        return reinterpret_cast<Call>(dlsym(RTLD_NEXT, "llistxattr"))(pszPath, pNames, nSize);
    }
    if (!QByteArray(pszPath).endsWith("/src/folder/file")) {
        return 0;
    }
    if (nSize >= sizeof(MACS_ATTRIBUTE)) {
        std::memcpy(pNames, MACS_ATTRIBUTE, sizeof(MACS_ATTRIBUTE));
    }
    return ssize_t(sizeof(MACS_ATTRIBUTE));
}

extern "C" ssize_t lgetxattr(const char* pszPath, const char* pszName, void* pValue, size_t nSize) noexcept
{
    using Call = ssize_t (*)(const char*, const char*, void*, size_t);
    const bool bMac = s_bMac && qstrcmp(pszName, MACS_ATTRIBUTE) == 0;
    return reinterpret_cast<Call>(dlsym(RTLD_NEXT, "lgetxattr"))(pszPath, bMac ? ATTRIBUTE : pszName, pValue,
                                                                 nSize);
}

/** Complete copies of a folder to disks that refuse this and that. */
class tst_DiskCopyFaults : public CCopyBed
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void refusedFolder_data();
    void refusedFolder();
    void refusedFile_data();
    void refusedFile();
    void refusedFolderOfTheCopy();
    void fullDisk();
    void noLinks_data();
    void noLinks();
    void brokenLink();
    void refusedTextOfALink_data();
    void refusedTextOfALink();
    void noAttributes_data();
    void noAttributes();
    void noPermissions_data();
    void noPermissions();
    void noTimesOfFolders_data();
    void noTimesOfFolders();
    void whatIsLostIsOfTheWholeCopy();
    void attributesLeaveTheTimeAlone();
    void attributesThatAMacGave();
    void tooLarge();
    void namesAreTextWhereTheDriverIsNoPartOfTheKernel();
    void unreadableFilesComeLast();
    void unreadableFileAndAStop();
    void unopenableFileCounts();
    void stopWhileSomethingIsMade_data();
    void stopWhileSomethingIsMade();
    void stopEndsTheSearchForAName();
    void vanishedDestination();
    void hangingFolderIsTold();

private:
    void Write(const QString& strName, const QByteArray& baContent = {})
    {
        m_pTree->Write("src/folder/" + strName, baContent);
    }

    QString Source(const QString& strName) const { return CCopyBed::Source("folder/" + strName); }
    QString Copy(const QString& strName) const { return CCopyBed::Copy("folder/" + strName); }
    QByteArray Copied(const QString& strName) const { return Content(Copy(strName)); }

    /** The account's items as "name = kind error detail", the names below the ticked folder. */
    QStringList Items() const;

    static QString Item(const QString& strName, ENCopyProblem enProblem, int nError = 0,
                        const QString& strDetail = {})
    {
        return QString("%1 = %2 %3 %4").arg(strName).arg(int(enProblem)).arg(nError).arg(strDetail);
    }

    QString m_strVolume; // "src"
};

void tst_DiskCopyFaults::init()
{
    NEEDS_VOLUMES();
    Make();
    m_pNodes->Root()->m_bComplete = true;
    m_strVolume = m_pTree->MkDir("src");
    m_pTree->MkDir("src/folder");
    m_pNodes->Add(m_pTree->Path("src/folder"), Qt::Checked, m_pNodes->Add(m_strVolume, Qt::PartiallyChecked));
}

void tst_DiskCopyFaults::cleanup()
{
    s_nMagic = 0;
    s_bMac = false;
    CFailingCalls::Reset();
    Clear();
}

QStringList tst_DiskCopyFaults::Items() const
{
    QStringList listItem;
    for (const STCopyItem& stItem : Account().listItem) {
        QString strName = stItem.strPath;
        strName.replace(Source(""), "");
        listItem.append(Item(strName, stItem.enProblem, stItem.nError, stItem.strDetail));
    }
    listItem.sort();
    return listItem;
}

void tst_DiskCopyFaults::refusedFolder_data()
{
    QTest::addColumn<int>("nError");
    for (const int nError : {EACCES, EIO, EROFS, EINVAL, EMLINK}) {
        QTest::newRow(strerror(nError)) << nError;
    }
}

void tst_DiskCopyFaults::refusedFolder()
{
    QFETCH(int, nError);
    Write("a", "1");
    Write("refused folder/b", "22");
    Write("refused folder/in it/c", "333");
    m_pTree->Link("src/folder/refused folder/link", "b");
    CFailingCalls::Fail(ENCall::MAKE_FOLDER, "refused folder", nError);
    Run(6);
    const ENCopyProblem enFolder = ENCopyProblem::TARGET_FOLDER;
    QCOMPARE(
        Items(),
        (QStringList{Item("refused folder", enFolder, nError), Item("refused folder/b", enFolder, nError),
                     Item("refused folder/in it", enFolder, nError),
                     Item("refused folder/in it/c", enFolder, nError),
                     Item("refused folder/link", enFolder, nError)}));
    QCOMPARE(Account().nProblems, 5);
    QCOMPARE(Copied("a"), QByteArray("1"));
    QCOMPARE(Told(*m_pProgress).constLast(), QString("c 100"));
}

void tst_DiskCopyFaults::refusedFile_data() { refusedFolder_data(); }

void tst_DiskCopyFaults::refusedFile()
{
    QFETCH(int, nError);
    Write("before", "1");
    Write("refused", "22");
    Write("folder/after", "333");
    CFailingCalls::Fail(ENCall::OPEN, "refused", nError);
    Run(6);
    CFailingCalls::Reset();
    QCOMPARE(Items(), QStringList{Item("refused", ENCopyProblem::TARGET_CREATE, nError)});
    QCOMPARE(Account().nFiles, 2);
    QCOMPARE(Copied("before") + Copied("folder/after"), QByteArray("1333"));
    QCOMPARE(Told(*m_pProgress).constLast(), QString("after 100"));
}

void tst_DiskCopyFaults::refusedFolderOfTheCopy()
{
    Write("a", "1");
    Write("b", "2");
    CFailingCalls::Fail(ENCall::MAKE_FOLDER, m_strDest, EACCES);
    Run(2);
    const ENCopyProblem enFolder = ENCopyProblem::TARGET_FOLDER;
    QCOMPARE(Items(),
             (QStringList{Item(CCopyBed::Source("folder"), enFolder, EACCES), Item("a", enFolder, EACCES),
                          Item("b", enFolder, EACCES)}));
}

void tst_DiskCopyFaults::fullDisk()
{
    Write("a", "1");
    Write("in it/b", "2");
    CFailingCalls::Fail(ENCall::MAKE_FOLDER, "in it", ENOSPC);
    Run(2);
    const ENCopyProblem enFolder = ENCopyProblem::TARGET_FOLDER;
    QCOMPARE(Items(), (QStringList{Item("in it", enFolder, ENOSPC), Item("in it/b", enFolder, ENOSPC)}));
    // All that the report had kept for itself was given up first.
    QVERIFY(CFailingCalls::Calls() > 1);
    QCOMPARE(Copied("a"), QByteArray("1"));
}

void tst_DiskCopyFaults::noLinks_data()
{
    QTest::addColumn<int>("nError");
    for (const int nError : {EPERM, ENOSYS, EOPNOTSUPP}) {
        QTest::newRow(strerror(nError)) << nError;
    }
}

void tst_DiskCopyFaults::noLinks()
{
    QFETCH(int, nError);
    m_pTree->Link("src/folder/one", "nowhere");
    m_pTree->Link("src/folder/two", QFile::decodeName("a\n\xff"));
    Write("file", "1");
    CFailingCalls::Fail(ENCall::LINK, "", nError);
    Run(1);
    QCOMPARE(CFailingCalls::Calls(), 1); // the disk is not asked again
    QCOMPARE(Items(),
             (QStringList{Item("one", ENCopyProblem::LINK_LOST, 0, "nowhere"),
                          Item("two", ENCopyProblem::LINK_LOST, 0, "\"a\\n\\xff\"")}));
    QCOMPARE(Account().nProblems, 0);
    QCOMPARE(Account().nFiles, 1);
    QVERIFY(LogLines().contains("Note: \"" + Source("one")
                                + "\": the disk cannot hold links, it leads to \"nowhere\""));
}

void tst_DiskCopyFaults::brokenLink()
{
    m_pTree->Link("src/folder/one", "nowhere");
    m_pTree->Link("src/folder/two", "nowhere");
    CFailingCalls::Fail(ENCall::LINK, "/one", EIO);
    Run(1);
    QCOMPARE(Items(), QStringList{Item("one", ENCopyProblem::TARGET_CREATE, EIO)});
    QCOMPARE(Account().nProblems, 1);
    QVERIFY(QFileInfo(Copy("two")).isSymLink());
}

void tst_DiskCopyFaults::refusedTextOfALink_data()
{
    QTest::addColumn<int>("nError");
    for (const int nError : {EINVAL, EILSEQ}) {
        QTest::newRow(strerror(nError)) << nError;
    }
}

void tst_DiskCopyFaults::refusedTextOfALink()
{
    m_pTree->Link("src/folder/one", "nowhere");
    m_pTree->Link("src/folder/two", "nowhere");
    QFETCH(int, nError);
    CFailingCalls::Fail(ENCall::LINK, "one", nError);
    Run(1);
    QCOMPARE(Items(), QStringList{Item("one", ENCopyProblem::LINK_LOST, 0, "nowhere")});
    QVERIFY2(QFileInfo(Copy("two")).isSymLink(), "the disk can hold links");
}

void tst_DiskCopyFaults::noAttributes_data()
{
    QTest::addColumn<int>("nError");
    QTest::addColumn<int>("nCalls");
    for (const int nError : {EOPNOTSUPP, ENOSYS}) {
        QTest::newRow(strerror(nError)) << nError << 1; // the disk is not asked again
    }
    for (const int nError : {ENOSPC, E2BIG, EPERM, EIO}) {
        QTest::newRow(strerror(nError)) << nError << 4;
    }
}

void tst_DiskCopyFaults::noAttributes()
{
    for (const QString strName : {"one", "two", "without"}) {
        Write(strName, strName.toUtf8());
        const QByteArray baPath = QFile::encodeName(Source(strName));
        const bool bWith = strName != "without";
        if (bWith
            && (lsetxattr(baPath.constData(), ATTRIBUTE, "1", 1, 0) != 0
                || lsetxattr(baPath.constData(), "user.other", "", 0, 0) != 0)) {
            QSKIP("no extended attributes here");
        }
    }
    QFETCH(int, nError);
    CFailingCalls::Fail(ENCall::SET_ATTRIBUTE, "", nError);
    Run(13);
    QTEST(CFailingCalls::Calls(), "nCalls");
    QCOMPARE(Items(), QStringList{Item(m_strVolume, ENCopyProblem::ATTRIBUTES_LOST, 0, "2")});
    QCOMPARE(Account().nNotes, 1);
    QCOMPARE(Copied("two"), QByteArray("two"));
    QVERIFY(LogLines().contains("Note: \"" + m_strVolume
                                + "\": items whose extended attributes the disk cannot hold: 2"));
}

void tst_DiskCopyFaults::noPermissions_data()
{
    QTest::addColumn<int>("nError");
    QTest::newRow("refused") << EPERM;
    QTest::newRow("said to be done") << CFailingCalls::IGNORED;
}

void tst_DiskCopyFaults::noPermissions()
{
    for (const QString strName : {"one", "two", "usual"}) {
        Write(strName);
        QCOMPARE(chmod(QFile::encodeName(Source(strName)).constData(), strName == "usual" ? 0644 : 0711), 0);
    }
    QCOMPARE(chmod(QFile::encodeName(CCopyBed::Source("folder")).constData(), 0700), 0);
    QFETCH(int, nError);
    CFailingCalls::Fail(ENCall::SET_MODE, "", nError);
    Run(1);
    QCOMPARE(CFailingCalls::Calls(), 1); // the disk is not asked again
    QCOMPARE(Items(), QStringList{Item(m_strVolume, ENCopyProblem::PERMISSIONS_LOST, 0, "3")});
    QVERIFY(LogLines().contains("Note: \"" + m_strVolume
                                + "\": items whose permissions the disk cannot hold: 3"));
}

void tst_DiskCopyFaults::noTimesOfFolders_data() { noPermissions_data(); }

void tst_DiskCopyFaults::noTimesOfFolders()
{
    Write("in it/file");
    for (const QString strName : {"in it", "", ".."}) {
        const timespec listTime[2] = {{1000000000, 0}, {1000000000, 0}};
        QCOMPARE(utimensat(AT_FDCWD, QFile::encodeName(Source(strName)).constData(), listTime, 0), 0);
    }
    QFETCH(int, nError);
    CFailingCalls::Fail(ENCall::SET_PATH_TIME, "", nError);
    Run(1);
    QCOMPARE(Items(), QStringList{Item(m_strVolume, ENCopyProblem::FOLDER_TIMES_LOST, 0, "3")});
    QVERIFY(
        LogLines().contains("Note: \"" + m_strVolume + "\": folders whose times the disk cannot hold: 3"));
}

void tst_DiskCopyFaults::whatIsLostIsOfTheWholeCopy()
{
    Write("one");
    QCOMPARE(chmod(QFile::encodeName(Source("one")).constData(), 0711), 0);
    m_pTree->MkDir("second volume");
    m_pNodes->Add(m_pTree->Path("second volume"));
    CFailingCalls::Fail(ENCall::SET_MODE, "", EPERM);
    Run(1);
    QCOMPARE(Items(), QStringList{Item(m_strDest, ENCopyProblem::PERMISSIONS_LOST, 0, "1")});
}

void tst_DiskCopyFaults::attributesLeaveTheTimeAlone()
{
    Write("file", "1");
    const QByteArray baSource = QFile::encodeName(Source("file"));
    if (lsetxattr(baSource.constData(), ATTRIBUTE, "1", 1, 0) != 0) {
        QSKIP("no extended attributes here");
    }
    const timespec listTime[2] = {{1000000000, 1}, {1000000000, 123456789}};
    QCOMPARE(utimensat(AT_FDCWD, baSource.constData(), listTime, 0), 0);
    // As where the attributes of a file are kept in a file beside it.
    CFailingCalls::Watch(ENCall::SET_ATTRIBUTE, "/file", [this] {
        const timespec listNow[2] = {{0, UTIME_NOW}, {0, UTIME_NOW}};
        utimensat(AT_FDCWD, QFile::encodeName(Copy("file")).constData(), listNow, 0);
    });
    Run(1);
    QCOMPARE(CFailingCalls::Calls(), 1);
    struct stat stCopy = {};
    QCOMPARE(stat(QFile::encodeName(Copy("file")).constData(), &stCopy), 0);
    QCOMPARE(qint64(stCopy.st_mtim.tv_sec), 1000000000);
    QCOMPARE(qint64(stCopy.st_mtim.tv_nsec), 123456789);
}

void tst_DiskCopyFaults::attributesThatAMacGave()
{
    Write("file", "1");
    if (lsetxattr(QFile::encodeName(Source("file")).constData(), ATTRIBUTE, "value", 5, 0) != 0) {
        QSKIP("no extended attributes here");
    }
    s_bMac = true;
    Run(1);
    s_bMac = false;
    QCOMPARE(Items(), QStringList());
    char szValue[10] = {};
    QCOMPARE(int(lgetxattr(QFile::encodeName(Copy("file")).constData(), ATTRIBUTE, szValue, 9)), 5);
    QCOMPARE(szValue, "value");
}

void tst_DiskCopyFaults::tooLarge()
{
    const qint64 nMost = 0xffffffffLL;
    Write("small", "1");
    Write("too large");
    if (!QFile::resize(Source("too large"), nMost + 1)) {
        QSKIP("no files of that size here");
    }
    Write("z/after", "2");
    s_nMagic = MSDOS_SUPER_MAGIC;
    Run(2); // the count has left it out
    QCOMPARE(Items(), QStringList{Item("too large", ENCopyProblem::TOO_LARGE, EFBIG)});
    QCOMPARE(Account().listItem.constFirst().nExpected, nMost + 1);
    QCOMPARE(Account().nProblems, 1);
    QCOMPARE(Account().nBytes, 2);
    QVERIFY(!QFileInfo::exists(Copy("too large")));
    QCOMPARE(Copied("z/after"), QByteArray("2"));
    QCOMPARE(Told(*m_pProgress), (QStringList{"small 50", "after 100"}));
}

void tst_DiskCopyFaults::namesAreTextWhereTheDriverIsNoPartOfTheKernel()
{
    Write(QFile::decodeName("a\xff"), "1");
    Write("b. ", "2");
    s_nMagic = FUSE_SUPER_MAGIC;
    Run(2);
    const QString strPlace = Copy("a_").mid(m_strDest.size() + 1);
    QCOMPARE(Items(),
             QStringList{Item(QFile::decodeName("a\xff"), ENCopyProblem::NAME_CHANGED, 0, strPlace)});
    QCOMPARE(Copied("a_") + Copied("b. "), QByteArray("12"));
}

void tst_DiskCopyFaults::unreadableFilesComeLast()
{
    const int nSize = 1024 * 1024;
    Write("in it/bad", Pattern(nSize));
    Write("in it/z/last", "2");
    const QStringList listFolder{"in it", ""};
    for (const QString& strName : listFolder) {
        const timespec listTime[2] = {{1000000000, 0}, {1000000000, 0}};
        QCOMPARE(chmod(QFile::encodeName(Source(strName)).constData(), 0711), 0);
        QCOMPARE(utimensat(AT_FDCWD, QFile::encodeName(Source(strName)).constData(), listTime, 0), 0);
    }
    QCOMPARE(chmod(QFile::encodeName(Source("in it/bad")).constData(), 0711), 0);
    int nBooked = -1;
    AfterChunk("last", 1, [&] { nBooked = m_pWorker->FilesDone() + int(ProblemLines().count()); });
    QString strModes; // when the last of it is dealt with
    AfterEachChunk([&] {
        strModes.clear();
        for (const QString& strName : listFolder) {
            struct stat stCopy = {};
            QCOMPARE(stat(QFile::encodeName(Copy(strName)).constData(), &stCopy), 0);
            strModes += QString::asprintf("%o ", stCopy.st_mode & 07777U);
        }
    });
    CFailingCalls::Fail(ENCall::READ, "/src/folder/in it/bad", EIO, 1);
    Run(nSize + 1);
    CFailingCalls::Reset();
    QCOMPARE(nBooked, 0);
    // The calls that fail are those of the first way: on the second one all of it can be read.
    QCOMPARE(Items(), QStringList());
    QCOMPARE(Account().nFiles, 2);
    QVERIFY(Copied("in it/bad") == Pattern(nSize));
    QCOMPARE(Told(*m_pProgress).constLast(), QString("bad 100"));
    // A folder that is closed to its owner could not be entered again.
    QCOMPARE(strModes, QString("755 755 "));
    for (const QString& strName : listFolder) {
        struct stat stCopy = {};
        QCOMPARE(stat(QFile::encodeName(Copy(strName)).constData(), &stCopy), 0);
        QCOMPARE(qint64(stCopy.st_mtim.tv_sec), 1000000000);
        QCOMPARE(int(stCopy.st_mode & 07777), 0711);
    }
}

void tst_DiskCopyFaults::unreadableFileAndAStop()
{
    Write("bad", Pattern(1000));
    Write("z/last", "2");
    AfterChunk("last", 1, [this] { m_pWorker->SetCopyStatus(COPY_STATUS_STOP); });
    CFailingCalls::Fail(ENCall::READ, "/src/folder/bad", EIO);
    Run(1001);
    QCOMPARE(Account().nProblems, 1);
    QCOMPARE(Account().listItem.constFirst().strPath, Source("bad"));
    QVERIFY(Account().bStopped);
}

void tst_DiskCopyFaults::unopenableFileCounts()
{
    Write("bad", Pattern(1000));
    Write("z/last", "2");
    const CLogCapture capture;
    // What is made at the destination has the same end, and comes first.
    CFailingCalls::Fail(ENCall::OPEN, "/src/folder/bad", EACCES, 1);
    Run(1001);
    CFailingCalls::Reset();
    QCOMPARE(Items(), QStringList{Item("bad", ENCopyProblem::SOURCE_OPEN, EACCES)});
    QCOMPARE(Told(*m_pProgress), (QStringList{"bad 99", "last 100"}));
    QCOMPARE(Copied("z/last"), QByteArray("2"));
}

void tst_DiskCopyFaults::stopWhileSomethingIsMade_data()
{
    QTest::addColumn<int>("nCall");
    QTest::addColumn<QString>("strEnd");
    QTest::newRow("folder") << int(ENCall::MAKE_FOLDER) << "/in it";
    QTest::newRow("folder of the copy") << int(ENCall::MAKE_FOLDER) << "/dst";
    QTest::newRow("file") << int(ENCall::OPEN) << "/in it/file";
    QTest::newRow("link") << int(ENCall::LINK) << "/in it/link";
}

void tst_DiskCopyFaults::stopWhileSomethingIsMade()
{
    QFETCH(int, nCall);
    QFETCH(QString, strEnd);
    m_pTree->Link("src/folder/in it/link", "nowhere");
    Write("in it/file", "1");
    Write("in it/z/last", "2");
    CFailingCalls::Watch(ENCall(nCall), strEnd, [this] { m_pWorker->SetCopyStatus(COPY_STATUS_STOP); });
    Run(2);
    QCOMPARE(CFailingCalls::Calls(), 1);
    QVERIFY(Account().bStopped);
    // A file that was made and got no bytes is named.
    const bool bFile = ENCall(nCall) == ENCall::OPEN;
    QCOMPARE(Items(), bFile ? QStringList{Item("in it/file", ENCopyProblem::STOPPED, 0)} : QStringList());
    QVERIFY(!bFile || QFileInfo::exists(Copy("in it/file")));
    QVERIFY(!QFileInfo::exists(Copy("in it/z")));
    for (const QString& strLine : ProblemLines()) {
        QVERIFY2(strLine.contains("the copy was stopped"), qPrintable(strLine));
    }
}

void tst_DiskCopyFaults::stopEndsTheSearchForAName()
{
    Write("file", "1");
    m_pTree->MkDir("dst" + CCopyBed::Source("folder"));
    CFailingCalls::Watch(ENCall::MAKE_FOLDER, "/src/folder",
                         [this] { m_pWorker->SetCopyStatus(COPY_STATUS_STOP); });
    Run(1);
    QCOMPARE(CFailingCalls::Calls(), 1);
    QVERIFY(!QFileInfo::exists(CCopyBed::Copy("folder_1")));
    QCOMPARE(Items(), QStringList());
}

void tst_DiskCopyFaults::vanishedDestination()
{
    Write("first", "1");
    Write("in it/second", "2");
    Write("in it/third", "3");
    CVolume stick("Stick", "/dev/disk8s4", 8);
    m_strDest = stick.Path("Tarnwick");
    AfterChunk("first", 1, [&] { stick.Pull(); });
    Run(3);
    const ENCopyProblem enGone = ENCopyProblem::DESTINATION_GONE;
    for (const QString strName : {"in it", "in it/second", "in it/third"}) {
        QVERIFY2(Items().contains(Item(strName, enGone)), qPrintable(Items().join('\n')));
    }
    QVERIFY(Account().bGone);
    QVERIFY2(QDir("/Volumes/Stick").isEmpty(), "the disk that the machine runs from is not to be filled");
}

void tst_DiskCopyFaults::hangingFolderIsTold()
{
    Write("file", "1");
    Write("in it/other", "2");
    CGate gate;
    CFailingCalls::Watch(ENCall::MAKE_FOLDER, "/in it", [&] { gate.Pass(PATIENCE_MS); });
    Start(2);
    QTRY_COMPARE(m_pWorker->CurrentPath(), Source("in it"));
    QCOMPARE(int(m_pWorker->CurrentStep()), int(ENCopyStep::WRITING));
    gate.Open();
    QVERIFY(WaitForEnd());
    QCOMPARE(Items(), QStringList());
}

QTEST_GUILESS_MAIN(tst_DiskCopyFaults)
#include "tst_DiskCopyFaults.moc"
