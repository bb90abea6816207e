#include "disk/platform/CVolumeInfo.h"
#include "files/CFileName.h"

#include <QVector>

#include <sys/mount.h>
#include <sys/param.h>

QByteArray CVolumeInfo::DeviceOf(const QString& strPath)
{
    struct statfs stVolume = {};
    if (statfs(CFileName::Encode(strPath).constData(), &stVolume) != 0) {
        return QByteArray();
    }
    return QByteArray(stVolume.f_mntfromname);
}

/**
 * Asked of the kernel: the system's own list of volumes leaves the hidden ones
 * out, and a clean-up must not run into one of those either.
 */
std::optional<QByteArrayList> CVolumeInfo::MountPoints()
{
    // Volumes may be mounted between counting and reading: a list that fills its
    // room to the last entry may be cut short, and is read again with more.
    QVector<struct statfs> listVolume(16);
    int nCount = 0;
    while ((nCount = getfsstat(listVolume.data(), int(listVolume.size() * sizeof(struct statfs)), MNT_NOWAIT))
           == listVolume.size()) {
        listVolume.resize(listVolume.size() * 2);
    }
    if (nCount <= 0) {
        return std::nullopt;
    }
    QByteArrayList listPoint;
    for (int i = 0; i < nCount; ++i) {
        listPoint.append(QByteArray(listVolume[i].f_mntonname));
    }
    return listPoint;
}
