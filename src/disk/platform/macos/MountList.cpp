#include "disk/platform/macos/MountList.h"

#include <sys/mount.h>
#include <sys/param.h>

/**
 * Asked of the kernel: the system's own list of volumes leaves the hidden ones
 * out, and a clean-up must not run into one of those either.
 */
std::optional<QVector<STMountedVolume>> MountList()
{
    // Volumes may be mounted between counting and reading: a list that fills its
    // room to the last entry may be cut short, and is read again with more.
    QVector<struct statfs> listEntry(16);
    int nCount = 0;
    while ((nCount = getfsstat(listEntry.data(), int(listEntry.size() * sizeof(struct statfs)), MNT_NOWAIT))
           == listEntry.size()) {
        listEntry.resize(listEntry.size() * 2);
    }
    if (nCount <= 0) {
        return std::nullopt;
    }
    QVector<STMountedVolume> listVolume;
    for (int i = 0; i < nCount; ++i) {
        listVolume.append({listEntry[i].f_mntonname, DeviceNode(listEntry[i].f_mntfromname)});
    }
    return listVolume;
}

QByteArray DeviceNode(const QByteArray& baMounted)
{
    static const QByteArray s_baMark = "://";
    const int nMark = baMounted.indexOf(s_baMark + "disk");
    const int nName = nMark + s_baMark.size();
    const int nEnd = baMounted.indexOf('/', nName);
    return nMark < 0 || nEnd < 0 ? baMounted : "/dev/" + baMounted.mid(nName, nEnd - nName);
}
