#include "support/CMadeMac.h"

#include "support/TestFiles.h"

#include <QFile>

#include <cerrno>
#include <climits>
#include <cstring>
#include <fcntl.h>
#include <sys/mount.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

static const qint64 MIB = qint64(1024) * 1024;
static const int CONTAINERS = 30;
static const int FILES_A_FOLDER = 100;
static const int LONGEST_NAME = 255;
// Of the path below the volume: a copy, whose folder has a longer path, still has room for it.
static const int DEEPEST_PATH = 3900;

static const QByteArray HOME = "Users/anna";

static void Require(bool bDone, const QByteArray& baWhat)
{
    if (!bDone) {
        qFatal("fixture failed: %s: %s", baWhat.constData(), std::strerror(errno));
    }
}

static QByteArray Parent(const QByteArray& baEntry)
{
    return baEntry.left(qMax(0, baEntry.lastIndexOf('/')));
}

static QByteArray Number(qint64 n) { return QByteArray::number(n).rightJustified(5, '0'); }

/** A time that belongs to the name, somewhere between 2001 and 2017. */
static timespec TimeOf(const QByteArray& baEntry)
{
    quint32 nHash = 2166136261U;
    for (const char cByte : baEntry) {
        nHash = (nHash ^ quint8(cByte)) * 16777619U;
    }
    timespec stTime;
    stTime.tv_sec = 1000000000 + nHash % 500000000;
    stTime.tv_nsec = nHash % 1000000 * 1000;
    return stTime;
}

CMadeMac::CMadeMac(const QString& strVolume, int nFiles)
    : m_baVolume(QFile::encodeName(strVolume))
    , m_setFolder({QByteArray()})
{
    Require(chmod(m_baVolume.constData(), 0755) == 0, m_baVolume);
    MakeHome();
    MakeSizes();
    MakeNames();
    MakeLoops();
    MakeApplication();
    MakeContainers();
    MakeKinds();
    MakeDeep();
    Require(m_stMade.nFiles <= LEAST_FILES && nFiles >= LEAST_FILES, "number of files");
    Fill(nFiles - m_stMade.nFiles);
    // After the last entry has been made, since each changes its folder's time.
    for (const QByteArray& baFolder : qAsConst(m_setFolder)) {
        SetTime(baFolder);
    }
    Require(chmod(Bytes("Users/Shared/Locked").constData(), 0555) == 0, "permissions");
}

CMadeMac::~CMadeMac()
{
    if (!m_baMounted.isEmpty()) {
        umount2(m_baMounted.constData(), MNT_DETACH);
    }
}

QString CMadeMac::Path(const QString& strEntry) const
{
    return QFile::decodeName(Bytes(QFile::encodeName(strEntry)));
}

QByteArray CMadeMac::Bytes(const QByteArray& baEntry) const
{
    return baEntry.isEmpty() ? m_baVolume : m_baVolume + '/' + baEntry;
}

void CMadeMac::MakeHome()
{
    for (const char* pszName :
         {"Desktop", "Documents", "Downloads", "Movies", "Music", "Pictures", "Public"}) {
        Folder(HOME + '/' + pszName, 0700);
    }
    File(HOME + "/Desktop/to do.txt", "call grandma\n");
    File(HOME + "/Documents/letter.txt", "Dear grandma,\n");
    File(HOME + "/Documents/keys.txt", "secret", 0600);
    File(HOME + "/Documents/read only.txt", "only to be read", 0444);
    File(HOME + "/Documents/run me.sh", "#!/bin/sh\n", 0755);
    File(HOME + "/Downloads/page.html", "<b>bold</b>");
    File(HOME + "/Movies/holiday.mov", Pattern(70000));
    File(HOME + "/Music/song.mp3", Pattern(30000));
    const QByteArray baPhotos = HOME + "/Pictures/Photos Library.photoslibrary";
    File(baPhotos + "/database/Photos.sqlite", Pattern(5000));
    Link(baPhotos + "/database/latest.sqlite", "Photos.sqlite");
    for (char cDigit = '0'; cDigit <= '3'; ++cDigit) {
        const QByteArray baName = QByteArray(1, cDigit) + "/IMG_" + cDigit + ".HEIC";
        File(baPhotos + "/originals/" + baName, Pattern(2000 + cDigit));
    }
    File("private/etc/hosts", "127.0.0.1 localhost\n");
    Link("etc", "private/etc");
}

/** At the borders of blocks and of what one step of a copy moves, and beyond. */
void CMadeMac::MakeSizes()
{
    const QByteArray baFolder = "Users/Shared/Sizes";
    for (const qint64 nSize : {qint64(0), qint64(1), qint64(4095), qint64(4096), qint64(4097), MIB - 1, MIB,
                               MIB + 1, 5 * MIB + 77}) {
        File(baFolder + '/' + Number(nSize), Pattern(nSize));
    }
    Sparse(baFolder + "/sparse", 3 * MIB + 5);
    Sparse(baFolder + "/hole only", MIB);
}

void CMadeMac::MakeNames()
{
    const QByteArray baFolder = HOME + "/Documents/Names";
    const QList<QByteArray> listName{"line\nbreak.txt",
                                     "return\r",
                                     "tab\t",
                                     "\x01\x7f",
                                     "quote\"s.txt",
                                     "apostrophe's.txt",
                                     "%1 %2 %n.txt",
                                     "trailing blank ",
                                     "trailing dot.",
                                     " leading blank",
                                     "-leading dash",
                                     "--",
                                     "...",
                                     "..two dots",
                                     ".hidden",
                                     "\xff\xfe invalid.txt",
                                     "half \xe5\x86",
                                     "caf\xc3\xa9.txt",
                                     "cafe\xcc\x81.txt",
                                     "Case.txt",
                                     "case.TXT",
                                     "CASE.txt",
                                     "<b>bold<b>",
                                     "back\\slash",
                                     "colon:and|bar",
                                     "star*?",
                                     "$HOME`x`;&",
                                     "NUL.txt",
                                     "con",
                                     "name.",
                                     "name",
                                     "\xf0\x9f\x98\x80.txt",
                                     "\xe5\x86\x99\xe7\x9c\x9f",
                                     ".DS_Store",
                                     "._name",
                                     QByteArray(LONGEST_NAME, 'a'),
                                     "~",
                                     "dev",
                                     "developer.txt",
                                     "home",
                                     "homework.txt",
                                     "Volumes",
                                     "Volumes2.txt"};
    for (const QByteArray& baName : listName) {
        File(baFolder + '/' + baName, "content of " + baName);
    }
    for (const char* pszName : {"dev", "devices", "home", "homework", "Volumes", "Volumes2", ".Trash"}) {
        File(QByteArray(pszName) + "/in it.txt", pszName);
        File(HOME + '/' + pszName + "/in it.txt", pszName);
    }
    File(baFolder + "/folder \n<b>%1/in it.txt", "hostile folder");
    File(baFolder + "/\xfe\xff folder/\xff in it", "invalid folder");
    File(baFolder + "/folder. /in it.txt", "folder with an end");
    Link(baFolder + "/\xfe link", "\xfe\xff folder");
    Link(baFolder + "/link \n<b>%1", "folder \n<b>%1/in it.txt");
    Folder(baFolder + '/' + QByteArray(LONGEST_NAME, 'b'));
}

void CMadeMac::MakeLoops()
{
    const QByteArray baFolder = HOME + "/Library/Loops";
    File(baFolder + "/one/a.txt", "a");
    File(baFolder + "/two/b.txt", "b");
    Link(baFolder + "/parent", "..");
    Link(baFolder + "/here", ".");
    Link(baFolder + "/self", "self");
    Link(baFolder + "/volume", "../../../..");
    Link(baFolder + "/one/two", "../two");
    Link(baFolder + "/two/one", "../one");
}

void CMadeMac::MakeApplication()
{
    const QByteArray baContents = "Applications/Notes.app/Contents";
    const QByteArray baBundle = baContents + "/Frameworks/Kit.framework";
    File(baContents + "/MacOS/Notes", Pattern(9000), 0755);
    File(baContents + "/Info.plist", "<plist/>");
    File(baBundle + "/Versions/A/Kit", Pattern(7000), 0755);
    File(baBundle + "/Versions/A/Resources/Info.plist", "<plist/>");
    Link(baBundle + "/Versions/Current", "A");
    Link(baBundle + "/Kit", "Versions/Current/Kit");
    Link(baBundle + "/Resources", "Versions/Current/Resources");
}

/** Each has links to what the user has, as an application finds it that may see nothing else. */
void CMadeMac::MakeContainers()
{
    for (int n = 0; n < CONTAINERS; ++n) {
        const QByteArray baData = HOME + "/Library/Containers/com.example.app" + Number(n) + "/Data";
        File(baData + "/Library/Preferences/app.plist", "<plist/>" + Number(n));
        for (const char* pszName : {"Desktop", "Documents", "Downloads", "Movies", "Music", "Pictures"}) {
            const QByteArray baBase = n % 2 == 0 ? QByteArray("../../../../") : '/' + HOME + '/';
            Link(baData + '/' + pszName, baBase + pszName);
        }
    }
}

void CMadeMac::MakeKinds()
{
    const QByteArray baFolder = "Users/Shared/Kinds";
    File(baFolder + "/one name.txt", "a file with two names");
    HardLink(baFolder + "/one name.txt", baFolder + "/other name.txt");
    HardLink(baFolder + "/one name.txt", "Users/Shared/Sizes/third name.txt");
    Folder(baFolder + "/empty");
    Folder(baFolder + "/.hidden and empty");
    Folder(baFolder + "/empty, closed", 0500);
    File(baFolder + "/.hidden folder/.hidden file", "hidden");
    File("Users/Shared/Locked/in it.txt", "locked", 0444);
    File(baFolder + "/with attributes.txt", "text");
    Attribute(baFolder + "/with attributes.txt", "user.com.apple.quarantine", "0081;5e3f;Safari;");
    Attribute(baFolder + "/with attributes.txt", "user.bytes", QByteArray("\0\xff\n\0", 4));
    Attribute(baFolder + "/with attributes.txt", "user.empty", QByteArray());
    Attribute(baFolder + "/empty", "user.com.apple.FinderInfo", Pattern(32));
    Attribute(HOME + "/Documents/read only.txt", "user.of a locked one", "value");
}

/** Folders in each other, as deep as a path can tell of, and a file at the end. */
void CMadeMac::MakeDeep()
{
    QByteArray baFolder = "Users/Shared/Deep";
    while (baFolder.size() < DEEPEST_PATH - 2 * 60) {
        baFolder += '/' + QByteArray(60, 'd');
    }
    File(baFolder + "/at the end.txt", "deep");
}

/** The many: every fourth has bytes, so that they take little room. */
void CMadeMac::Fill(qint64 nFiles)
{
    const QList<QByteArray> listPlace{HOME + "/Documents/Papers ",
                                      HOME + "/Pictures/Photos Library.photoslibrary/originals/",
                                      HOME + "/Library/Mail/", "Applications/Notes.app/Contents/Resources/"};
    for (qint64 n = 0; n < nFiles; ++n) {
        const QByteArray& baPlace = listPlace.at(int(n / FILES_A_FOLDER % listPlace.size()));
        const QByteArray baContent = n % 4 == 0 ? "content of " + Number(n) : QByteArray();
        File(baPlace + Number(n / FILES_A_FOLDER) + "/item " + Number(n) + ".dat", baContent);
    }
}

void CMadeMac::PlantLinksOut()
{
    const QByteArray baFolder = HOME + "/Library/Links out";
    // The running system has these, and the volume has not.
    Link(baFolder + "/folder of a running system", "/usr/bin");
    Link(baFolder + "/file of a running system", "/proc/self/status");
    Link(baFolder + "/other volume", "/Volumes/Other/x");
    Link(baFolder + "/by name",
         "/Volumes" + m_baVolume.mid(m_baVolume.lastIndexOf('/')) + '/' + HOME + "/Documents");
    Link(baFolder + "/too many dots", "../../../../../../../../../../../../../../usr/lib");
    Link(baFolder + "/nowhere", "not there/at all");
    Link(baFolder + "/through a file", "../../Documents/letter.txt/x");
    Link(baFolder + "/long", QByteArray(1000, 'x') + "/y");
    for (const QByteArray& baEntry : {baFolder, HOME + "/Library"}) {
        SetTime(baEntry);
    }
}

void CMadeMac::PlantSpecials()
{
    Special(HOME + "/Library/pipe", S_IFIFO | 0644);
    Special(HOME + "/Library/socket", S_IFSOCK | 0755);
    SetTime(HOME + "/Library");
}

bool CMadeMac::PlantMount()
{
    const QByteArray baPoint = HOME + "/Library/Mounted";
    Folder(baPoint);
    SetTime(HOME + "/Library");
    const QByteArray baPath = Bytes(baPoint);
    if (!qEnvironmentVariableIsSet("TARNWICK_SANDBOX")
        || mount("other", baPath.constData(), "tmpfs", 0, "mode=755") != 0) {
        SetTime(baPoint);
        return false;
    }
    m_baMounted = baPath;
    WriteFile(QFile::decodeName(baPath) + "/of another disk.txt", "not to be entered");
    SetTime(baPoint + "/of another disk.txt");
    SetTime(baPoint);
    m_stMade.listLeftOut.append(QFile::decodeName(baPath));
    return true;
}

void CMadeMac::PlantTooDeep()
{
    const QByteArray baTop = "Users/Shared/Too deep";
    const QByteArray baName(LONGEST_NAME, 'e');
    Folder(baTop);
    int nFolder = open(Bytes(baTop).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    for (int nLength = 0; nLength < PATH_MAX + LONGEST_NAME; nLength += LONGEST_NAME + 1) {
        Require(nFolder >= 0 && mkdirat(nFolder, baName.constData(), 0755) == 0, baTop);
        const int nNext = openat(nFolder, baName.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
        close(nFolder);
        nFolder = nNext;
    }
    const int nFile = openat(nFolder, "too deep.txt", O_WRONLY | O_CREAT | O_CLOEXEC, 0644);
    Require(nFile >= 0 && close(nFile) == 0 && close(nFolder) == 0, baTop);
    for (const char* pszEntry : {"Users/Shared/Too deep", "Users/Shared"}) {
        SetTime(pszEntry);
    }
}

/** Makes a folder with its parents. */
void CMadeMac::Folder(const QByteArray& baEntry, unsigned nMode)
{
    if (m_setFolder.contains(baEntry)) {
        return;
    }
    Folder(Parent(baEntry));
    const QByteArray baPath = Bytes(baEntry);
    // By chmod as well, since the mask of the process takes bits from what mkdir gives.
    Require(mkdir(baPath.constData(), 0700) == 0 && chmod(baPath.constData(), nMode) == 0, baPath);
    m_setFolder.insert(baEntry);
    ++m_stMade.nFolders;
}

static int Create(const QByteArray& baPath, unsigned nMode)
{
    const int nFile = open(baPath.constData(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600);
    Require(nFile >= 0 && fchmod(nFile, nMode) == 0, baPath);
    return nFile;
}

void CMadeMac::File(const QByteArray& baEntry, const QByteArray& baContent, unsigned nMode)
{
    Folder(Parent(baEntry));
    const QByteArray baPath = Bytes(baEntry);
    const int nFile = Create(baPath, nMode);
    Require(write(nFile, baContent.constData(), size_t(baContent.size())) == baContent.size(), baPath);
    Require(close(nFile) == 0, baPath);
    SetTime(baEntry);
    ++m_stMade.nFiles;
    m_stMade.nBytes += baContent.size();
}

/** A file of that size with a few bytes in its middle, and nothing on the disk for the rest. */
void CMadeMac::Sparse(const QByteArray& baEntry, qint64 nSize)
{
    Folder(Parent(baEntry));
    const QByteArray baPath = Bytes(baEntry);
    const int nFile = Create(baPath, 0644);
    const QByteArray baMiddle = nSize % 2 == 0 ? QByteArray() : QByteArray("in the middle");
    Require(ftruncate(nFile, nSize) == 0, baPath);
    Require(pwrite(nFile, baMiddle.constData(), size_t(baMiddle.size()), nSize / 2) == baMiddle.size(),
            baPath);
    Require(close(nFile) == 0, baPath);
    SetTime(baEntry);
    ++m_stMade.nFiles;
    m_stMade.nBytes += nSize;
}

void CMadeMac::HardLink(const QByteArray& baOld, const QByteArray& baNew)
{
    Folder(Parent(baNew));
    Require(link(Bytes(baOld).constData(), Bytes(baNew).constData()) == 0, baNew);
    struct stat stRaw = {};
    Require(stat(Bytes(baOld).constData(), &stRaw) == 0, baOld);
    ++m_stMade.nFiles;
    m_stMade.nBytes += stRaw.st_size;
}

void CMadeMac::Link(const QByteArray& baEntry, const QByteArray& baTarget)
{
    Folder(Parent(baEntry));
    Require(symlink(baTarget.constData(), Bytes(baEntry).constData()) == 0, baEntry);
    SetTime(baEntry);
    ++m_stMade.nLinks;
}

void CMadeMac::Attribute(const QByteArray& baEntry, const char* pszName, const QByteArray& baValue)
{
    const QByteArray baPath = Bytes(baEntry);
    if (setxattr(baPath.constData(), pszName, baValue.constData(), size_t(baValue.size()), 0) == 0) {
        m_stMade.bAttributes = true;
        return;
    }
    Require(errno == ENOTSUP, baPath);
}

void CMadeMac::Special(const QByteArray& baEntry, unsigned nMode)
{
    Folder(Parent(baEntry));
    const QByteArray baPath = Bytes(baEntry);
    Require(mknod(baPath.constData(), nMode, 0) == 0, baPath);
    m_stMade.listLeftOut.append(QFile::decodeName(baPath));
}

/** Gives an entry, a link itself too, the time that belongs to its name. */
void CMadeMac::SetTime(const QByteArray& baEntry)
{
    const timespec stTime = TimeOf(baEntry);
    const timespec arrTime[2] = {stTime, stTime};
    Require(utimensat(AT_FDCWD, Bytes(baEntry).constData(), arrTime, AT_SYMLINK_NOFOLLOW) == 0, baEntry);
}
