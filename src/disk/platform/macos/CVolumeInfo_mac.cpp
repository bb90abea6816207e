#include "disk/platform/CVolumeInfo.h"
#include "disk/platform/macos/MountList.h"
#include "files/CFileName.h"

#include <sys/mount.h>
#include <sys/param.h>

QByteArray CVolumeInfo::DeviceOf(const QString& strPath)
{
    struct statfs stVolume = {};
    if (statfs(CFileName::Encode(strPath).constData(), &stVolume) != 0) {
        return QByteArray();
    }
    return DeviceNode(stVolume.f_mntfromname);
}

std::optional<QByteArrayList> CVolumeInfo::MountPoints()
{
    const std::optional<QVector<STMountedVolume>> listVolume = MountList();
    if (!listVolume) {
        return std::nullopt;
    }
    QByteArrayList listPoint;
    for (const STMountedVolume& volume : *listVolume) {
        listPoint.append(volume.baPoint);
    }
    return listPoint;
}
