#include "copy/CFileMetadata.h"
#include "copy/CSpotCopy.h"
#include "files/CDescriptor.h"
#include "macos/CFakeFiles.h"
#include "macos/CFakeMetadata.h"
#include "support/CCopyBed.h"

#include <QDir>
#include <QDirIterator>
#include <QTest>

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/time.h>

static const char FINDER[] = "com.apple.FinderInfo";
static const char FORK[] = "com.apple.ResourceFork";
static const char TAGS[] = "com.apple.metadata:_kMDItemUserTags";
static const char ORIGIN[] = "com.apple.metadata:kMDItemWhereFroms";
static const char SYSTEMS[] = "com.apple.provenance";
static const unsigned IMMUTABLE = 2;
static const unsigned HIDDEN = 0x8000;
static const qint64 CREATED = 1000000000;
static const qint64 FOLDER_TIME = 1200000000;

namespace {

/** Asks and tells what a file's own copy would. */
class CControl : public CCopyControl
{
public:
    bool WaitWhilePaused() override { return m_nPieces-- > 0; }
    void ChunkDone(const QString& /*strName*/, qint64 /*nBytes*/) override { }
    void StepBegins(ENCopyStep /*enStep*/) override { ++m_nSteps; }
    void BytesWritten(qint64 /*nBytes*/) override { }

    bool MakeRoom(qint64 nBytes) override
    {
        m_listRoom.append(nBytes);
        return m_fnRoom && m_fnRoom();
    }

    std::optional<STCopyReason> KeepMetadata(const QString& strName, int nSource, int nTarget) override
    {
        return m_metadata.GiveToFile(*this, strName, nSource, nTarget);
    }

    int m_nPieces = 1000; // before it is told to stop
    int m_nSteps = 0;
    QVector<qint64> m_listRoom;
    std::function<bool()> m_fnRoom;
    CFileMetadata m_metadata;
};

} // namespace

/** What belongs to a Mac's files beside their bytes, given and counted with macOS's calls. */
class tst_MacMetadata : public CCopyBed
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void everythingArrives_data() { Modes(); }
    void everythingArrives();
    void dateOfCreationAfterTheChangeArrives_data() { Modes(); }
    void dateOfCreationAfterTheChangeArrives();
    void onlyProgramsCanBeExecuted_data();
    void onlyProgramsCanBeExecuted();
    void copyCanBeThrownAway_data() { Modes(); }
    void copyCanBeThrownAway();
    void itemIsCountedOnceForAKind_data() { Modes(); }
    void itemIsCountedOnceForAKind();
    void copyMadeAnewIsCountedOnce();
    void hiddenFolderIsSeenOnTheDisk_data() { Modes(); }
    void hiddenFolderIsSeenOnTheDisk();
    void whatADiskCannotHoldIsCounted_data() { Modes(); }
    void whatADiskCannotHoldIsCounted();
    void fileOfAForkAloneIsNotWhole_data() { Modes(); }
    void fileOfAForkAloneIsNotWhole();
    void secondFilesAreMadeWhereTheyAreWanted();
    void secondFilesOfTheSourceAreNothingLost();
    void refusedAttributeIsCounted();
    void dateThatADiskOnlySaysToKeepIsCounted();
    void silentDiskIsKnownByItsName_data();
    void silentDiskIsKnownByItsName();
    void forkThatCannotBeReadIsNamed_data() { Modes(); }
    void forkThatCannotBeReadIsNamed();
    void forkThatCannotBeMeasuredIsNamed();
    void removedFolderLosesNothing();
    void largeForkIsGivenInPieces();
    void stopEndsALargeFork();
    void roomIsMadeForAttributes();
    void forkWithoutRoomIsNoPart();
    void forkThatArrivesShortIsNamed();
    void damagedFileGetsIt();

private:
    static void Modes();
    static void SetOld(const QString& strPath);
    QString AddFile(const QString& strName, const QByteArray& baContent, const QByteArray& baFork);
    void CopyAll(bool bComplete);
    QStringList Items(bool bNotes) const;
    static QString Kind(ENCopyProblem enProblem, const QString& strDetail = QString());
    std::optional<STCopyReason> Give(CControl& control, const QString& strSource, const QString& strTarget);
};

void tst_MacMetadata::init()
{
    umask(022);
    Make();
    CFakeFiles::Reset();
    CFakeMetadata::Reset();
    qunsetenv("TARNWICK_APPLEDOUBLE");
}

void tst_MacMetadata::cleanup() { Clear(); }

void tst_MacMetadata::Modes()
{
    QTest::addColumn<bool>("bComplete");
    QTest::newRow("ticked") << false;
    QTest::newRow("complete") << true;
}

/** A file below "src/folder" with a fork, without one when that is empty. */
QString tst_MacMetadata::AddFile(const QString& strName, const QByteArray& baContent,
                                 const QByteArray& baFork)
{
    const QString strPath = m_pTree->Write("src/folder/" + strName, baContent);
    if (!baFork.isEmpty()) {
        CFakeMetadata::SetAttribute(strPath, FORK, baFork);
    }
    return strPath;
}

/** The folder, fully ticked. */
void tst_MacMetadata::CopyAll(bool bComplete)
{
    m_pNodes->Root()->m_bComplete = bComplete;
    CDirNode* pFolder = m_pNodes->Add(Source("folder"));
    const auto listEntry = QDir(Source("folder")).entryInfoList(QDir::Files | QDir::Hidden, QDir::Name);
    for (const QFileInfo& info : listEntry) {
        m_pNodes->Add(info.filePath(), Qt::Checked, pFolder);
    }
    Run();
}

/** What the account says, as "number:detail" of its kinds. */
QStringList tst_MacMetadata::Items(bool bNotes) const
{
    QStringList listItem;
    const STCopyAccount stAccount = Account();
    for (const STCopyItem& stItem : stAccount.listItem) {
        if (stItem.bNote == bNotes) {
            listItem.append(Kind(stItem.enProblem, stItem.strDetail));
        }
    }
    listItem.sort();
    return listItem;
}

QString tst_MacMetadata::Kind(ENCopyProblem enProblem, const QString& strDetail)
{
    return QString::number(int(enProblem)) + ':' + strDetail;
}

/** Gives it to a file that is there already, without a copy around it. */
std::optional<STCopyReason> tst_MacMetadata::Give(CControl& control, const QString& strSource,
                                                  const QString& strTarget)
{
    const CDescriptor source(open(QFile::encodeName(strSource).constData(), O_RDONLY | O_CLOEXEC));
    const CDescriptor target(open(QFile::encodeName(strTarget).constData(), O_WRONLY | O_CLOEXEC));
    return control.KeepMetadata(QFileInfo(strSource).fileName(), source.Get(), target.Get());
}

void tst_MacMetadata::SetOld(const QString& strPath)
{
    const timespec listTime[2] = {{time_t(FOLDER_TIME), 0}, {time_t(FOLDER_TIME), 0}};
    QCOMPARE(utimensat(AT_FDCWD, QFile::encodeName(strPath).constData(), listTime, 0), 0);
}

void tst_MacMetadata::everythingArrives()
{
    QFETCH(bool, bComplete);
    const QString strFile = AddFile("tool", "text", Pattern(300000));
    SetOld(strFile);
    SetOld(Source("folder"));
    const QByteArray baFinder(32, 'f');
    CFakeMetadata::SetAttribute(strFile, FINDER, baFinder);
    CFakeMetadata::SetAttribute(strFile, TAGS, "red");
    CFakeMetadata::SetAttribute(strFile, SYSTEMS, "own");
    CFakeMetadata::SetCreated(strFile, CREATED);
    CFakeMetadata::SetAccessList(strFile, "everyone deny writeattr");
    CFakeFiles::SetFlags(strFile, HIDDEN | IMMUTABLE);
    QCOMPARE(chmod(QFile::encodeName(strFile).constData(), 0755), 0);
    CFakeMetadata::SetAttribute(Source("folder"), TAGS, "blue");
    CFakeMetadata::SetCreated(Source("folder"), CREATED);
    CFakeMetadata::SetAccessList(Source("folder"), "everyone deny writeattr");
    CopyAll(bComplete);
    const QString strCopy = Copy("folder/tool");
    QCOMPARE(Content(strCopy), QByteArray("text"));
    QCOMPARE(CFakeMetadata::Attributes(strCopy), QStringList({FINDER, FORK, TAGS}));
    QCOMPARE(CFakeMetadata::Attribute(strCopy, FORK), Pattern(300000));
    QCOMPARE(CFakeMetadata::Attribute(strCopy, FINDER), baFinder);
    QCOMPARE(CFakeMetadata::Attribute(strCopy, TAGS), QByteArray("red"));
    QCOMPARE(CFakeMetadata::Created(strCopy), CREATED);
    QCOMPARE(CFakeMetadata::AccessList(strCopy), QByteArray("everyone deny writeattr"));
    QCOMPARE(CFakeMetadata::Flags(strCopy), HIDDEN);
    QVERIFY(QFileInfo(strCopy).permission(QFile::ExeOwner | QFile::ExeGroup | QFile::ExeOther));
    QCOMPARE(QFileInfo(strCopy).lastModified().toSecsSinceEpoch(), FOLDER_TIME);
    QCOMPARE(CFakeMetadata::Attributes(Copy("folder")), QStringList{TAGS});
    QCOMPARE(CFakeMetadata::Created(Copy("folder")), CREATED);
    QCOMPARE(CFakeMetadata::AccessList(Copy("folder")), QByteArray("everyone deny writeattr"));
    QCOMPARE(QFileInfo(Copy("folder")).lastModified().toSecsSinceEpoch(), FOLDER_TIME);
    // A lock would keep the copy from being thrown away, and is the only thing that is told.
    QCOMPARE(Items(true), QStringList{Kind(ENCopyProblem::LOCKS_LOST, "1")});
    QVERIFY(Account().IsWhole());
    // Each thing is given once.
    QCOMPARE(CFakeFiles::TakeCalls().filter("fsetxattr " + QString(FORK) + ' ' + strCopy).count(), 1);
}

// As everything has it that was copied to its disk with its date of change.
void tst_MacMetadata::dateOfCreationAfterTheChangeArrives()
{
    QFETCH(bool, bComplete);
    const QString strFile = AddFile("photo", "text", QByteArray());
    for (const QString& strPath : {strFile, Source("folder")}) {
        SetOld(strPath);
        CFakeMetadata::SetCreated(strPath, FOLDER_TIME + 1000);
    }
    CopyAll(bComplete);
    for (const char* pszCopy : {"folder/photo", "folder"}) {
        QCOMPARE(CFakeMetadata::Created(Copy(pszCopy)), FOLDER_TIME + 1000);
        QCOMPARE(QFileInfo(Copy(pszCopy)).lastModified().toSecsSinceEpoch(), FOLDER_TIME);
    }
    QCOMPARE(Items(true), QStringList());
}

void tst_MacMetadata::onlyProgramsCanBeExecuted_data()
{
    QTest::addColumn<QString>("strKind");
    QTest::addColumn<bool>("bSaysThatItHasNone");
    QTest::addColumn<bool>("bExecutable");
    QTest::newRow("a Mac's disk") << "apfs" << false << true;
    QTest::newRow("a disk without permissions") << "smbfs" << true << false;
    QTest::newRow("exFAT, whatever it says") << "exfat" << false << false;
}

void tst_MacMetadata::onlyProgramsCanBeExecuted()
{
    QFETCH(QString, strKind);
    QFETCH(bool, bSaysThatItHasNone);
    QFETCH(bool, bExecutable);
    CFakeFiles::SetVolume(strKind.toLatin1().constData());
    // Where there are no permissions all of them are shown.
    QCOMPARE(chmod(QFile::encodeName(AddFile("photo", "text", QByteArray())).constData(), 0777), 0);
    CFakeMetadata::SetHolds("/src/", true, true, true, !bSaysThatItHasNone);
    CopyAll(false);
    QCOMPARE(QFileInfo(Copy("folder/photo")).permission(QFile::ExeOwner), bExecutable);
    QCOMPARE(Items(true), QStringList());
}

void tst_MacMetadata::copyCanBeThrownAway()
{
    QFETCH(bool, bComplete);
    const QString strFile = AddFile("file", "text", QByteArray());
    CFakeMetadata::SetAccessList(
        strFile, "all deny delete; bert deny delete_child; all deny delete,writeattr; anna allow delete");
    CFakeMetadata::SetAccessList(Source("folder"), "everyone deny delete");
    CopyAll(bComplete);
    QCOMPARE(CFakeMetadata::AccessList(Copy("folder/file")),
             QByteArray("all deny writeattr; anna allow delete"));
    QCOMPARE(CFakeMetadata::AccessList(Copy("folder")), QByteArray());
    QCOMPARE(Items(true), QStringList());
    QCOMPARE(CFakeFiles::TakeCalls().filter("acl_set"), QStringList{"acl_set " + Copy("folder/file")});
}

void tst_MacMetadata::itemIsCountedOnceForAKind()
{
    QFETCH(bool, bComplete);
    const QString strFile = AddFile("tool", "text", QByteArray());
    CFakeMetadata::SetAttribute(strFile, ORIGIN, "here");
    CFakeFiles::SetFlags(strFile, 1);
    QCOMPARE(chmod(QFile::encodeName(strFile).constData(), 0755), 0);
    CFakeFiles::Fail(QString("fsetxattr ") + ORIGIN, "/tool", EPERM);
    CFakeFiles::Fail("fchflags", "/tool", EINVAL);
    CFakeMetadata::SetHolds("/dst/", true, true, true, false);
    CopyAll(bComplete);
    QStringList listExpected{Kind(ENCopyProblem::ATTRIBUTES_LOST, "1"),
                             Kind(ENCopyProblem::PERMISSIONS_LOST, "1")};
    listExpected.sort();
    QCOMPARE(Items(true), listExpected);
}

// A disk may say only at the end of a file that it had no room for all of it.
void tst_MacMetadata::copyMadeAnewIsCountedOnce()
{
    const QString strSource = AddFile("file", "text", QByteArray());
    const QString strTarget = m_pTree->Write("dst/file", "text");
    CFakeFiles::SetFlags(strSource, IMMUTABLE);
    CControl control;
    QVERIFY(!Give(control, strSource, strTarget));
    QVERIFY(!Give(control, strSource, strTarget));
    control.m_metadata.FileEnds();
    QCOMPARE(control.m_metadata.Lost().count(), 1);
    QCOMPARE(control.m_metadata.Lost().constFirst().strDetail, QString("1"));
}

void tst_MacMetadata::hiddenFolderIsSeenOnTheDisk()
{
    QFETCH(bool, bComplete);
    AddFile("mail", "text", QByteArray());
    QByteArray baFinder(32, '\0');
    baFinder[8] = char(0x44);
    CFakeMetadata::SetAttribute(Source("folder"), FINDER, baFinder);
    CFakeFiles::SetFlags(Source("folder"), HIDDEN | 1);
    CopyAll(bComplete);
    baFinder[8] = char(0x04);
    QCOMPARE(CFakeMetadata::Attribute(Copy("folder"), FINDER), baFinder);
    QCOMPARE(CFakeMetadata::Flags(Copy("folder")), 1U);
    QVERIFY(Account().IsWhole());
    QCOMPARE(Items(true), QStringList());
}

void tst_MacMetadata::whatADiskCannotHoldIsCounted()
{
    QFETCH(bool, bComplete);
    CFakeMetadata::SetHolds("/dst/", false, false, false);
    for (const char* pszName : {"one", "two"}) {
        const QString strFile = AddFile(pszName, "text", "fork");
        CFakeMetadata::SetAttribute(strFile, TAGS, "red");
        CFakeMetadata::SetAttribute(strFile, FINDER, "f");
        CFakeMetadata::SetCreated(strFile, CREATED);
    }
    const QString strThird = AddFile("three", "text", QByteArray());
    CFakeMetadata::SetAttribute(strThird, ORIGIN, "here");
    CFakeMetadata::SetAttribute(strThird, "com.apple.quarantine", "q");
    CFakeMetadata::SetAccessList(strThird, "anna allow read");
    CopyAll(bComplete);
    QStringList listExpected{Kind(ENCopyProblem::FORKS_LOST, "2"), Kind(ENCopyProblem::FINDER_LOST, "2"),
                             Kind(ENCopyProblem::ATTRIBUTES_LOST, "1"),
                             Kind(ENCopyProblem::ACCESS_LISTS_LOST, "1"),
                             Kind(ENCopyProblem::CREATION_DATES_LOST, "2")};
    listExpected.sort();
    QCOMPARE(Items(true), listExpected);
    QVERIFY(Account().IsWhole());
    QCOMPARE(Account().nFiles, 3);
    // The system would make a second file of each.
    QCOMPARE(CFakeFiles::TakeCalls().filter("setxattr"), QStringList());
    QCOMPARE(QDir(Copy("folder")).entryList(QDir::Files | QDir::Hidden).count(), 3);
}

void tst_MacMetadata::fileOfAForkAloneIsNotWhole()
{
    QFETCH(bool, bComplete);
    CFakeMetadata::SetHolds("/dst/", false, false);
    const QString strFont = AddFile("Font", QByteArray(), "letters");
    AddFile("Icon\r", QByteArray(), "picture");
    AddFile("empty", QByteArray(), QByteArray());
    CopyAll(bComplete);
    QCOMPARE(Items(false), QStringList{Kind(ENCopyProblem::FORK_NEEDED)});
    QCOMPARE(Items(true), QStringList{Kind(ENCopyProblem::FORKS_LOST, "1")});
    QCOMPARE(Account().listItem.first().strPath, strFont);
    QVERIFY(!Account().IsWhole());
    QCOMPARE(Account().nFiles, 2);
    QCOMPARE(Account().nProblems, 1);
}

void tst_MacMetadata::secondFilesAreMadeWhereTheyAreWanted()
{
    qputenv("TARNWICK_APPLEDOUBLE", "1");
    CFakeMetadata::SetHolds("/dst/", false, false);
    AddFile("Font", QByteArray(), "letters");
    CopyAll(false);
    QVERIFY(Account().IsWhole());
    QCOMPARE(Items(true), QStringList());
    QCOMPARE(CFakeMetadata::Attribute(Copy("folder/Font"), FORK), QByteArray("letters"));
    QVERIFY(QFile::exists(Copy("folder/._Font")));
}

// From one exFAT disk to another they are there as files and are copied as such.
void tst_MacMetadata::secondFilesOfTheSourceAreNothingLost()
{
    qputenv("TARNWICK_APPLEDOUBLE", "1");
    CFakeMetadata::SetHolds("/", false, false);
    CFakeMetadata::SetAttribute(AddFile("Font", QByteArray(), "letters"), TAGS, "red");
    AddFile("._Font", "second", QByteArray());
    CopyAll(false);
    QVERIFY(Account().IsWhole());
    QCOMPARE(Items(true), QStringList());
    QCOMPARE(Copied("folder/._Font"), QByteArray("second"));
    QCOMPARE(CFakeFiles::TakeCalls().filter("setxattr"), QStringList());
}

void tst_MacMetadata::refusedAttributeIsCounted()
{
    const QString strFile = AddFile("file", "text", "fork");
    CFakeMetadata::SetAttribute(strFile, ORIGIN, "here");
    CFakeMetadata::SetAttribute(strFile, TAGS, "red");
    CFakeFiles::Fail(QString("fsetxattr ") + ORIGIN, "/file", EPERM);
    CFakeFiles::Fail(QString("fsetxattr ") + FORK, "/file", EPERM);
    CopyAll(false);
    QStringList listExpected{Kind(ENCopyProblem::ATTRIBUTES_LOST, "1"), Kind(ENCopyProblem::FORKS_LOST, "1")};
    listExpected.sort();
    QCOMPARE(Items(true), listExpected);
    QCOMPARE(CFakeMetadata::Attributes(Copy("folder/file")), QStringList{TAGS});
    QVERIFY(Account().IsWhole());
}

void tst_MacMetadata::dateThatADiskOnlySaysToKeepIsCounted()
{
    CFakeMetadata::SetHolds("/dst/", true, true, false);
    CFakeMetadata::SetCreated(AddFile("file", "text", QByteArray()), CREATED);
    CopyAll(false);
    QCOMPARE(Items(true), QStringList{Kind(ENCopyProblem::CREATION_DATES_LOST, "1")});
}

void tst_MacMetadata::silentDiskIsKnownByItsName_data()
{
    QTest::addColumn<QString>("strKind");
    QTest::addColumn<bool>("bHolds");
    QTest::newRow("apfs") << "apfs" << true;
    QTest::newRow("hfs") << "hfs" << true;
    QTest::newRow("exfat") << "exfat" << false;
}

void tst_MacMetadata::silentDiskIsKnownByItsName()
{
    QFETCH(QString, strKind);
    QFETCH(bool, bHolds);
    CFakeMetadata::SetAttribute(AddFile("file", "text", QByteArray()), TAGS, "red");
    CFakeFiles::SetVolume(strKind.toLatin1().constData());
    CFakeFiles::Fail("getattrlist", "/dst" + Source("folder/file"), EINVAL);
    CopyAll(false);
    QCOMPARE(CFakeMetadata::Attribute(Copy("folder/file"), TAGS), QByteArray(bHolds ? "red" : ""));
    QCOMPARE(Items(true).isEmpty(), bHolds);
}

void tst_MacMetadata::forkThatCannotBeReadIsNamed()
{
    QFETCH(bool, bComplete);
    AddFile("file", "text", "fork");
    CFakeMetadata::SetAttribute(Source("folder/file"), TAGS, "red");
    CFakeFiles::Fail(QString("fgetxattr ") + FORK, "/file", EIO);
    SetOld(Source("folder/file"));
    QCOMPARE(chmod(QFile::encodeName(Source("folder/file")).constData(), 0755), 0);
    CopyAll(bComplete);
    QCOMPARE(Items(false), QStringList{Kind(ENCopyProblem::FORK_READ)});
    QCOMPARE(Account().listItem.first().nError, EIO);
    QCOMPARE(Account().nFiles, 0);
    // All else is there.
    QCOMPARE(Copied("folder/file"), QByteArray("text"));
    QCOMPARE(CFakeMetadata::Attributes(Copy("folder/file")), QStringList{TAGS});
    QVERIFY(QFileInfo(Copy("folder/file")).permission(QFile::ExeOwner));
    QCOMPARE(QFileInfo(Copy("folder/file")).lastModified().toSecsSinceEpoch(), FOLDER_TIME);
}

void tst_MacMetadata::forkThatCannotBeMeasuredIsNamed()
{
    AddFile("file", "text", "fork");
    CFakeFiles::Fail(QString("size of ") + FORK, "/src/folder/file", EIO);
    CopyAll(false);
    QCOMPARE(Items(false), QStringList{Kind(ENCopyProblem::FORK_READ)});
}

// Nothing that a disk that is gone could not hold is counted.
void tst_MacMetadata::removedFolderLosesNothing()
{
    AddFile("file", "text", QByteArray());
    SetOld(Source("folder"));
    AfterEachChunk([this] { QVERIFY(QDir(m_strDest).removeRecursively()); });
    CopyAll(false);
    QCOMPARE(Items(true), QStringList());
}

void tst_MacMetadata::largeForkIsGivenInPieces()
{
    const QByteArray baFork = Pattern(9 * 1024 * 1024 + 5);
    const QString strSource = AddFile("large", "text", baFork);
    const QString strTarget = m_pTree->Write("dst/large", "text");
    CControl control;
    QVERIFY(!Give(control, strSource, strTarget));
    QVERIFY(CFakeMetadata::Attribute(strTarget, FORK) == baFork);
    const QString strCall = QString("fsetxattr ") + FORK + ' ' + strTarget + ' ';
    QCOMPARE(CFakeFiles::TakeCalls().filter("fsetxattr"),
             QStringList({strCall + "0+4194304", strCall + "4194304+4194304", strCall + "8388608+1048581"}));
    QVERIFY2(control.m_nSteps > 6, "signs of life");
}

void tst_MacMetadata::stopEndsALargeFork()
{
    const QString strSource = AddFile("large", "text", QByteArray(9 * 1024 * 1024, 'a'));
    const QString strTarget = m_pTree->Write("dst/large", "text");
    CControl control;
    control.m_nPieces = 1;
    const std::optional<STCopyReason> stReason = Give(control, strSource, strTarget);
    QVERIFY(stReason);
    QCOMPARE(int(stReason->enProblem), int(ENCopyProblem::STOPPED));
    QCOMPARE(CFakeMetadata::Attribute(strTarget, FORK).size(), 4 * 1024 * 1024);
}

void tst_MacMetadata::roomIsMadeForAttributes()
{
    const QString strSource = AddFile("file", "text", "fork of it");
    CFakeMetadata::SetAttribute(strSource, TAGS, "red");
    const QString strTarget = m_pTree->Write("dst/file", "text");
    CFakeFiles::Fail(QString("fsetxattr ") + FORK, "/dst/file", ENOSPC);
    CFakeFiles::Fail(QString("fsetxattr ") + TAGS, "/dst/file", ENOSPC);
    CControl control;
    control.m_fnRoom = [] {
        CFakeFiles::Fail(QString("fsetxattr ") + FORK, "/dst/file", 0);
        CFakeFiles::Fail(QString("fsetxattr ") + TAGS, "/dst/file", 0);
        return true;
    };
    QVERIFY(!Give(control, strSource, strTarget));
    QCOMPARE(control.m_listRoom, QVector<qint64>{10});
    QCOMPARE(CFakeMetadata::Attributes(strTarget), QStringList({FORK, TAGS}));
    control.m_metadata.FileEnds();
    QVERIFY(control.m_metadata.Lost().isEmpty());
}

void tst_MacMetadata::forkWithoutRoomIsNoPart()
{
    const QString strSource = AddFile("file", "text", "fork of it");
    const QString strTarget = m_pTree->Write("dst/file", "text");
    CFakeMetadata::SetAttribute(strTarget, FORK, "fo");
    CFakeFiles::Fail(QString("fsetxattr ") + FORK, "/dst/file", ENOSPC);
    CControl control;
    const std::optional<STCopyReason> stReason = Give(control, strSource, strTarget);
    QVERIFY(stReason);
    QCOMPARE(int(stReason->enProblem), int(ENCopyProblem::TARGET_WRITE));
    QCOMPARE(stReason->nError, ENOSPC);
    QCOMPARE(CFakeMetadata::Attributes(strTarget), QStringList());
}

// A disk that takes only the last piece of a fork.
void tst_MacMetadata::forkThatArrivesShortIsNamed()
{
    const QString strSource = AddFile("file", "text", "fork of it");
    const QString strTarget = m_pTree->Write("dst/file", "text");
    CFakeMetadata::SetAttribute(strTarget, FORK, "another fork that was longer");
    CControl control;
    const std::optional<STCopyReason> stReason = Give(control, strSource, strTarget);
    QVERIFY(stReason);
    QCOMPARE(int(stReason->enProblem), int(ENCopyProblem::TARGET_WRITE));
    QCOMPARE(CFakeMetadata::Attributes(strTarget), QStringList());
}

void tst_MacMetadata::damagedFileGetsIt()
{
    const QString strSource = AddFile("film", Pattern(8192), "fork");
    const QString strTarget = m_pTree->Write("dst/film", Pattern(8192).left(4096));
    STCopyOutcome stOutcome{ENCopyEnd::NOT_WHOLE, strSource, {ENCopyProblem::SOURCE_READ}, 4096, 8192};
    stOutcome.nTold = 4096;
    const STFileState stState = *CCopyPlatform::GetEntryState(strSource);
    CControl control;
    CSpotCopy copy(control, {strSource, strTarget, stOutcome, stState}, std::nullopt, {1000});
    const STCopyOutcome stEnd = copy.Finish();
    QCOMPARE(int(stEnd.enEnd), int(ENCopyEnd::WHOLE));
    QCOMPARE(Content(strTarget), Pattern(8192));
    QCOMPARE(CFakeMetadata::Attribute(strTarget, FORK), QByteArray("fork"));
    CFakeFiles::Fail(QString("fgetxattr ") + FORK, "/film", EIO);
    QVERIFY(QFile::resize(strTarget, 4096));
    CSpotCopy again(control, {strSource, strTarget, stOutcome, stState}, std::nullopt, {1000});
    QCOMPARE(int(again.Finish().stReason.enProblem), int(ENCopyProblem::FORK_READ));
}

QTEST_GUILESS_MAIN(tst_MacMetadata)
#include "tst_MacMetadata.moc"
