#include "disk/platform/CVolumeInfo.h"
#include "disk/platform/linux/CMountTable.h"

#include <QFile>

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
    QByteArray baText;
    if (nId == NO_MOUNT || !CMountTable::Read(&baText)) {
        return QByteArray();
    }
    const QVector<STMount> listMount = CMountTable::Parse(baText);
    for (const STMount& mount : listMount) {
        if (mount.nId == nId) {
            return mount.baSource;
        }
    }
    return QByteArray();
}

bool CVolumeInfo::MountPoints(QList<QByteArray>* pListPoints)
{
    QByteArray baText;
    if (!CMountTable::Read(&baText)) {
        return false;
    }
    const QVector<STMount> listMount = CMountTable::Parse(baText);
    for (const STMount& mount : listMount) {
        pListPoints->append(mount.baPoint);
    }
    return true;
}
