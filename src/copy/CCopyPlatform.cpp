#include "copy/CCopyPlatform.h"

#include "files/CCloudFile.h"
#include "files/CFileName.h"

#include <array>
#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

// The coarsest times that file systems keep are even seconds; they lose no date.
static const qint64 TIME_STEP_SEC = 2;

static ENFileKind Kind(mode_t nMode)
{
    if (S_ISREG(nMode)) {
        return ENFileKind::REGULAR;
    }
    if (S_ISLNK(nMode)) {
        return ENFileKind::LINK;
    }
    return S_ISDIR(nMode) ? ENFileKind::DIRECTORY : ENFileKind::SPECIAL;
}

STFileState CCopyPlatform::State(const struct stat& stRaw)
{
    const struct timespec stAccessed = AccessTime(stRaw);
    const struct timespec stModified = ModifiedTime(stRaw);
    STFileState stState;
    stState.enKind = Kind(stRaw.st_mode);
    stState.bOnlyInCloud = CCloudFile::IsOnlyInCloud(stRaw);
    stState.bRemoved = stRaw.st_nlink == 0;
    stState.nDevice = quint64(stRaw.st_dev);
    stState.nInode = quint64(stRaw.st_ino);
    stState.nPermissions = unsigned(stRaw.st_mode) & 0777U;
    stState.nSize = stRaw.st_size;
    stState.nAccessedSec = stAccessed.tv_sec;
    stState.nAccessedNsec = stAccessed.tv_nsec;
    stState.nModifiedSec = stModified.tv_sec;
    stState.nModifiedNsec = stModified.tv_nsec;
    return stState;
}

std::optional<STFileState> CCopyPlatform::GetPathState(const QString& strPath)
{
    struct stat stRaw;
    if (stat(CFileName::Encode(strPath).constData(), &stRaw) != 0) {
        return std::nullopt;
    }
    return State(stRaw);
}

std::optional<STFileState> CCopyPlatform::GetEntryState(const QString& strPath)
{
    struct stat stRaw;
    if (lstat(CFileName::Encode(strPath).constData(), &stRaw) != 0) {
        return std::nullopt;
    }
    return State(stRaw);
}

std::optional<STFileState> CCopyPlatform::GetEntryState(int nFolder, const char* pszName)
{
    struct stat stRaw;
    if (fstatat(nFolder, pszName, &stRaw, AT_SYMLINK_NOFOLLOW) != 0) {
        return std::nullopt;
    }
    return State(stRaw);
}

std::optional<STFileState> CCopyPlatform::GetOpenState(int nDescriptor)
{
    struct stat stRaw;
    if (fstat(nDescriptor, &stRaw) != 0) {
        return std::nullopt;
    }
    return State(stRaw);
}

static qint64 ReadableBytes(const struct stat& stRaw)
{
    return CCloudFile::IsOnlyInCloud(stRaw) ? 0 : qint64(stRaw.st_size);
}

qint64 CCopyPlatform::SizeOf(const QString& strPath)
{
    struct stat stRaw;
    return stat(CFileName::Encode(strPath).constData(), &stRaw) == 0 ? ReadableBytes(stRaw) : 0;
}

qint64 CCopyPlatform::SizeOf(int nFolder, const char* pszName)
{
    struct stat stRaw;
    return fstatat(nFolder, pszName, &stRaw, 0) == 0 ? ReadableBytes(stRaw) : 0;
}

bool CCopyPlatform::Exists(const QString& strPath)
{
    return access(CFileName::Encode(strPath).constData(), F_OK) == 0;
}

bool CCopyPlatform::CanWrite(const QString& strFolder)
{
    return access(CFileName::Encode(strFolder).constData(), W_OK | X_OK) == 0;
}

int CCopyPlatform::OpenForRead(const QString& strPath, bool bFollowLink)
{
    const int nFlags = O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC | (bFollowLink ? 0 : O_NOFOLLOW);
    return open(CFileName::Encode(strPath).constData(), nFlags);
}

int CCopyPlatform::CreateNew(const QByteArray& baPath)
{
    return open(baPath.constData(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
}

static bool IsFolder(const QByteArray& baPath)
{
    struct stat stRaw;
    return stat(baPath.constData(), &stRaw) == 0 && S_ISDIR(stRaw.st_mode);
}

/** Makes a folder; one that is there already will do. What keeps it from being made is in errno. */
static bool MakeFolder(const QByteArray& baPath)
{
    if (mkdir(baPath.constData(), 0777) == 0 || errno == EISDIR) {
        return true;
    }
    const bool bThere = errno == EEXIST;
    const bool bFolder = bThere && IsFolder(baPath);
    errno = bThere ? EEXIST : errno;
    return bFolder;
}

/** The same with the folders that it lies in. */
static bool MakeFolders(const QByteArray& baPath)
{
    if (MakeFolder(baPath)) {
        return true;
    }
    const int nSlash = baPath.lastIndexOf('/');
    return errno == ENOENT && nSlash > 0 && MakeFolders(baPath.left(nSlash)) && MakeFolder(baPath);
}

bool CCopyPlatform::MakePath(const QString& strFolder) { return MakeFolders(CFileName::Encode(strFolder)); }

int CCopyPlatform::OpenForWrite(const QString& strPath)
{
    const int nFlags = O_WRONLY | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY | O_CLOEXEC;
    return open(CFileName::Encode(strPath).constData(), nFlags);
}

int CCopyPlatform::OpenFolder(const QString& strPath)
{
    return open(CFileName::Encode(strPath).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
}

void CCopyPlatform::KeepFromChildren(int nDescriptor) { fcntl(nDescriptor, F_SETFD, FD_CLOEXEC); }

/** Both: asked to leave one as it is, some file systems set none and call it done. */
static std::array<struct timespec, 2> Times(const STFileState& stState)
{
    return {{
        {time_t(stState.nAccessedSec), long(stState.nAccessedNsec)},
        {time_t(stState.nModifiedSec), long(stState.nModifiedNsec)},
    }};
}

bool CCopyPlatform::SetTimes(int nDescriptor, const STFileState& stState)
{
    return futimens(nDescriptor, Times(stState).data()) == 0;
}

bool CCopyPlatform::SetTimes(const QString& strPath, const STFileState& stState)
{
    const QByteArray baPath = CFileName::Encode(strPath);
    return utimensat(AT_FDCWD, baPath.constData(), Times(stState).data(), AT_SYMLINK_NOFOLLOW) == 0;
}

bool CCopyPlatform::KeepTimes(int nDescriptor, const STFileState& stState)
{
    if (!SetTimes(nDescriptor, stState)) {
        return false;
    }
    const std::optional<STFileState> stNow = GetOpenState(nDescriptor);
    errno = 0;
    return !stNow || IsModifiedAlike(*stNow, stState);
}

bool CCopyPlatform::IsModifiedAlike(const STFileState& stOne, const STFileState& stOther)
{
    return qAbs(stOne.nModifiedSec - stOther.nModifiedSec) <= TIME_STEP_SEC;
}

bool CCopyPlatform::FlushFileSystem(const QString& strFolder)
{
    const int nDescriptor = OpenFolder(strFolder);
    if (nDescriptor == -1) {
        return false;
    }
    const bool bDone = FlushFileSystem(nDescriptor);
    const int nError = errno;
    close(nDescriptor);
    errno = nError;
    return bDone;
}
