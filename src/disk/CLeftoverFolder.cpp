#include "disk/CLeftoverFolder.h"

#include "disk/CDestinationDiscovery.h"
#include "disk/platform/CVolumeInfo.h"
#include "files/CFileName.h"
#include "files/CFolderReader.h"
#include "log/CLogTarnwick.h"

#include <QDir>
#include <QFileInfo>
#include <QProcess>

#include <cerrno>
#include <climits>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <memory>
#include <sys/stat.h>

// Left-over mount points are shallow. Whatever is deeper is something else, and
// every level holds an open folder while the ones below are looked at.
static const int MAX_DEPTH = 64;

static QString Told(const QByteArray& baPath, const QString& strWhat)
{
    return QStringLiteral("\"%1\" %2").arg(CFileName::Decode(baPath), strWhat);
}

static QString ToldUnknown(const QByteArray& baPath, int nError)
{
    return Told(baPath,
                QStringLiteral("cannot be looked at: ") + QString::fromLocal8Bit(std::strerror(nError)));
}

static std::optional<QString> ObstacleIn(CFolderReader& folder, const QByteArray& baPath, dev_t nDevice,
                                         int nDepth);

/** What stands in the way of removing the entry that the reader is at. */
static std::optional<QString> ObstacleAt(const CFolderReader& parent, const QByteArray& baPath, dev_t nDevice,
                                         int nDepth)
{
    struct stat status;
    if (::fstatat(parent.Descriptor(), parent.Name(), &status, AT_SYMLINK_NOFOLLOW) != 0) {
        return ToldUnknown(baPath, errno);
    }
    if (S_ISLNK(status.st_mode)) {
        return Told(baPath, QStringLiteral("is a link"));
    }
    if (!S_ISDIR(status.st_mode)) {
        return Told(baPath, QStringLiteral("is a file"));
    }
    // Mounted after the table was read, or a part of the volume with a life of its own.
    if (status.st_dev != nDevice) {
        return Told(baPath, QStringLiteral("is on another volume"));
    }
    if (nDepth >= MAX_DEPTH) {
        return Told(baPath, QStringLiteral("is nested too deeply"));
    }
    CFolderReader folder(parent.Descriptor(), parent.Name());
    return ObstacleIn(folder, baPath, nDevice, nDepth + 1);
}

static std::optional<QString> ObstacleIn(CFolderReader& folder, const QByteArray& baPath, dev_t nDevice,
                                         int nDepth)
{
    while (folder.Next()) {
        if (auto strObstacle = ObstacleAt(folder, baPath + '/' + folder.Name(), nDevice, nDepth)) {
            return strObstacle;
        }
    }
    return folder.Error() == 0 ? std::nullopt : std::optional(ToldUnknown(baPath, folder.Error()));
}

/**
 * The table of mounts is asked as well as the devices of the folders: a volume
 * can be mounted a second time inside itself, with one device for both.
 */
static std::optional<QString> MountPointIn(const QByteArray& baFolder)
{
    const std::optional<QByteArrayList> listPoint = CVolumeInfo::MountPoints();
    if (!listPoint) {
        return Told(baFolder, QStringLiteral("may hold mount points: the table cannot be read"));
    }
    const QByteArray baPrefix = baFolder == "/" ? baFolder : baFolder + '/';
    for (const QByteArray& baPoint : *listPoint) {
        if (baPoint.startsWith(baPrefix) && baPoint != baPrefix) {
            return Told(baPoint, QStringLiteral("is a mount point"));
        }
    }
    return std::nullopt;
}

static QByteArray RealPath(const QByteArray& baPath)
{
    const std::unique_ptr<char, decltype(&std::free)> pReal(::realpath(baPath.constData(), nullptr),
                                                            &std::free);
    return QByteArray(pReal.get());
}

std::optional<QString> CLeftoverFolder::Obstacle(const QString& strFolder)
{
    // A trailing slash would make the system follow a link.
    const QByteArray baFolder = CFileName::Encode(QDir::cleanPath(strFolder));
    CFolderReader folder(AT_FDCWD, baFolder.constData());
    if (!folder.IsOpen()) {
        return ToldUnknown(baFolder, folder.Error());
    }
    struct stat status;
    if (::fstat(folder.Descriptor(), &status) != 0) {
        return ToldUnknown(baFolder, errno);
    }
    const QByteArray baReal = RealPath(baFolder);
    if (baReal.isEmpty()) {
        return ToldUnknown(baFolder, errno);
    }
    const std::optional<QString> strMountPoint = MountPointIn(baReal);
    return strMountPoint ? strMountPoint : ObstacleIn(folder, baReal, status.st_dev, 0);
}

/** Whether the folder has an entry of that name; the entry itself is not touched. */
static bool HasEntry(const QString& strFolder, const QString& strName)
{
    const QByteArray baName = CFileName::Encode(strName);
    CFolderReader folder(CFileName::Encode(strFolder).constData());
    while (folder.Next()) {
        if (baName == folder.Name()) {
            return true;
        }
    }
    return false;
}

// The command is pointed at the folder of all volumes, not at the one mount
// point, so it may run only when nothing at all stands there that could be lost.
void CLeftoverFolder::CleanMountPoint(const QString& strVolume)
{
    const QString strFolder = CDestinationDiscovery::VolumesFolder();
    if (strVolume.isEmpty() || !HasEntry(strFolder, strVolume)) {
        return;
    }
    if (const std::optional<QString> strObstacle = Obstacle(strFolder)) {
        g_TarnwickLog.LogExt(QStringLiteral("left-over mount point kept, \"%1\" is not empty: %2")
                                 .arg(strFolder, *strObstacle));
        return;
    }
    g_TarnwickLog.LogExt(QStringLiteral("cleaning left-over mount points in \"%1\"").arg(strFolder));
    // Destroyed at once on purpose: nothing waits for the clean-up, and ending
    // this function ends the command with it.
    QProcess process;
    process.start(QStringLiteral("rm"), {QStringLiteral("-rf"), strFolder});
}
