#include "disk/CLeftoverFolder.h"

#include "disk/platform/CVolumeInfo.h"

#include <QDir>
#include <QFile>

#include <cerrno>
#include <climits>
#include <cstdlib>
#include <cstring>
#include <dirent.h>
#include <fcntl.h>
#include <memory>
#include <sys/stat.h>
#include <unistd.h>

// Left-over mount points are shallow. Whatever is deeper is something else, and
// every level holds an open folder while the ones below are looked at.
static const int MAX_DEPTH = 64;

struct STCloseFolder
{
    void operator()(DIR* pFolder) const { ::closedir(pFolder); }
};
using FolderPtr = std::unique_ptr<DIR, STCloseFolder>;

static bool Refuse(QString* pReason, const QByteArray& baPath, const QString& strWhat)
{
    if (pReason != nullptr) {
        *pReason = QStringLiteral("\"%1\" %2").arg(QFile::decodeName(baPath), strWhat);
    }
    return false;
}

static bool RefuseUnknown(QString* pReason, const QByteArray& baPath)
{
    return Refuse(pReason, baPath,
                  QStringLiteral("cannot be looked at: ") + QString::fromLocal8Bit(std::strerror(errno)));
}

static FolderPtr OpenFolder(int nParent, const char* pName)
{
    const int nFd = ::openat(nParent, pName, O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
    if (nFd < 0) {
        return nullptr;
    }
    FolderPtr pFolder(::fdopendir(nFd));
    if (!pFolder) {
        ::close(nFd);
    }
    return pFolder;
}

static bool IsDots(const char* pName)
{
    return std::strcmp(pName, ".") == 0 || std::strcmp(pName, "..") == 0;
}

static bool HoldsOnlyFolders(DIR* pFolder, const QByteArray& baPath, dev_t nDevice, int nDepth,
                             QString* pReason);

static bool IsOnlyFolders(DIR* pParent, const char* pName, const QByteArray& baPath, dev_t nDevice,
                          int nDepth, QString* pReason)
{
    struct stat status;
    if (::fstatat(::dirfd(pParent), pName, &status, AT_SYMLINK_NOFOLLOW) != 0) {
        return RefuseUnknown(pReason, baPath);
    }
    if (S_ISLNK(status.st_mode)) {
        return Refuse(pReason, baPath, QStringLiteral("is a link"));
    }
    if (!S_ISDIR(status.st_mode)) {
        return Refuse(pReason, baPath, QStringLiteral("is a file"));
    }
    // Mounted after the table was read, or a part of the volume with a life of its own.
    if (status.st_dev != nDevice) {
        return Refuse(pReason, baPath, QStringLiteral("is on another volume"));
    }
    if (nDepth >= MAX_DEPTH) {
        return Refuse(pReason, baPath, QStringLiteral("is nested too deeply"));
    }
    const FolderPtr pFolder = OpenFolder(::dirfd(pParent), pName);
    if (!pFolder) {
        return RefuseUnknown(pReason, baPath);
    }
    return HoldsOnlyFolders(pFolder.get(), baPath, nDevice, nDepth + 1, pReason);
}

static bool HoldsOnlyFolders(DIR* pFolder, const QByteArray& baPath, dev_t nDevice, int nDepth,
                             QString* pReason)
{
    for (;;) {
        errno = 0;
        const dirent* const pEntry = ::readdir(pFolder);
        if (pEntry == nullptr) {
            return errno == 0 || RefuseUnknown(pReason, baPath);
        }
        if (IsDots(pEntry->d_name)) {
            continue;
        }
        const QByteArray baEntry = baPath + '/' + pEntry->d_name;
        if (!IsOnlyFolders(pFolder, pEntry->d_name, baEntry, nDevice, nDepth, pReason)) {
            return false;
        }
    }
}

/**
 * The table of mounts is asked as well as the devices of the folders: a volume
 * can be mounted a second time inside itself, with one device for both.
 */
static bool HoldsNoMountPoint(const QByteArray& baFolder, QString* pReason)
{
    QList<QByteArray> listPoint;
    if (!CVolumeInfo::MountPoints(&listPoint)) {
        return Refuse(pReason, baFolder, QStringLiteral("may hold mount points: the table cannot be read"));
    }
    const QByteArray baPrefix = baFolder == "/" ? baFolder : baFolder + '/';
    for (const QByteArray& baPoint : listPoint) {
        if (baPoint.startsWith(baPrefix) && baPoint != baPrefix) {
            return Refuse(pReason, baPoint, QStringLiteral("is a mount point"));
        }
    }
    return true;
}

static QByteArray RealPath(const QByteArray& baPath)
{
    const std::unique_ptr<char, decltype(&std::free)> pReal(::realpath(baPath.constData(), nullptr),
                                                            &std::free);
    return QByteArray(pReal.get());
}

bool CLeftoverFolder::IsHarmlessToRemove(const QString& strFolder, QString* pReason)
{
    // A trailing slash would make the system follow a link.
    const QByteArray baFolder = QFile::encodeName(QDir::cleanPath(strFolder));
    const FolderPtr pFolder = OpenFolder(AT_FDCWD, baFolder.constData());
    struct stat status;
    if (!pFolder || ::fstat(::dirfd(pFolder.get()), &status) != 0) {
        return RefuseUnknown(pReason, baFolder);
    }
    const QByteArray baReal = RealPath(baFolder);
    if (baReal.isEmpty()) {
        return RefuseUnknown(pReason, baFolder);
    }
    return HoldsNoMountPoint(baReal, pReason)
        && HoldsOnlyFolders(pFolder.get(), baReal, status.st_dev, 0, pReason);
}
