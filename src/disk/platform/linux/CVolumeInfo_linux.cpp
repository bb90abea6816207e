#include "disk/platform/CVolumeInfo.h"
#include "files/CMountTable.h"

#include <QFile>

#include <algorithm>
#include <fcntl.h>
#include <unistd.h>

static const qint64 NO_MOUNT = -1;

/** The number of the mount that an open path lies on, as the kernel's table gives it. */
static qint64 MountIdOf(int nFd)
{
    QFile file(QStringLiteral("/proc/self/fdinfo/%1").arg(nFd));
    if (!file.open(QIODevice::ReadOnly | QIODevice::Unbuffered)) {
        return NO_MOUNT;
    }
    const QList<QByteArray> listLine = file.readAll().split('\n');
    for (const QByteArray& baLine : listLine) {
        if (baLine.startsWith("mnt_id:")) {
            return baLine.mid(int(qstrlen("mnt_id:"))).trimmed().toLongLong();
        }
    }
    return NO_MOUNT;
}

static qint64 MountIdOf(const QString& strPath)
{
    const int nFd = ::open(QFile::encodeName(strPath).constData(), O_PATH | O_CLOEXEC);
    if (nFd < 0) {
        return NO_MOUNT;
    }
    const qint64 nId = MountIdOf(nFd);
    ::close(nFd);
    return nId;
}

/**
 * QStorageInfo looks for the mount with the longest matching path, and so names
 * the hidden volume where one is mounted over another. The kernel's own number
 * of the mount is right whatever the volume is called and wherever it stands.
 */
QByteArray CVolumeInfo::DeviceOf(const QString& strPath)
{
    const qint64 nId = MountIdOf(strPath);
    const auto listMount = nId == NO_MOUNT ? std::nullopt : CMountTable::Mounts();
    if (!listMount) {
        return QByteArray();
    }
    const auto mount = std::find_if(listMount->begin(), listMount->end(),
                                    [nId](const STMount& stMount) { return stMount.nId == nId; });
    return mount == listMount->end() ? QByteArray() : QByteArray::fromStdString(mount->strSource);
}

std::optional<QByteArrayList> CVolumeInfo::MountPoints()
{
    const auto listMount = CMountTable::Mounts();
    if (!listMount) {
        return std::nullopt;
    }
    QByteArrayList listPoint;
    for (const STMount& mount : *listMount) {
        listPoint.append(QByteArray::fromStdString(mount.strPoint));
    }
    return listPoint;
}
