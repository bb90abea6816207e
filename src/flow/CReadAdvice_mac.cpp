#include "flow/CReadAdvice.h"

#include <QVector>

#include <cstring>
#include <fcntl.h>
#include <sys/mount.h>
#include <sys/param.h>
#include <sys/sysctl.h>

static const int MOST_VOLUMES = 256; // of a list that is longer the rest is not known

STSourceDisk CReadAdvice::DiskOf(quint64 nDevice)
{
    QVector<struct statfs> listVolume(MOST_VOLUMES);
    const int nCount
        = getfsstat(listVolume.data(), int(listVolume.size() * sizeof(struct statfs)), MNT_NOWAIT);
    STSourceDisk stDisk;
    for (int i = 0; i < nCount; ++i) {
        const struct statfs& stVolume = listVolume[i];
        if (quint64(stVolume.f_fsid.val[0]) == nDevice) {
            stDisk.bInMemory = std::strcmp(stVolume.f_fstypename, "devfs") == 0;
            stDisk.bKeeps = (stVolume.f_flags & MNT_LOCAL) != 0
                && std::strstr(stVolume.f_fstypename, "fuse") == nullptr;
        }
    }
    return stDisk;
}

quint64 CReadAdvice::PlaceOf(const STSourceFile& stFile)
{
    struct log2phys stPlace = {};
    stPlace.l2p_contigbytes = 1;
    stPlace.l2p_devoffset = 0; // in: where in the file; out: where on the disk
    const bool bTold = fcntl(stFile.nDescriptor, F_LOG2PHYS_EXT, &stPlace) != -1;
    return bTold ? quint64(stPlace.l2p_devoffset) : stFile.nInode;
}

bool CReadAdvice::WillNeed(int nDescriptor, qint64 nFrom, qint64 nBytes)
{
    struct radvisory stAdvice = {nFrom, int(nBytes)};
    return fcntl(nDescriptor, F_RDADVISE, &stAdvice) != -1;
}

ENThere CReadAdvice::IsThere(int /*nDescriptor*/, qint64 /*nFrom*/)
{
    // There is no read here that does not wait.
    return ENThere::UNKNOWN;
}

void CReadAdvice::StopReadAhead(int nDescriptor) { fcntl(nDescriptor, F_RDAHEAD, 0); }

qint64 CReadAdvice::FreeMemory()
{
    // What is free at once; what could be freed is not told without a share of the kernel's own counts.
    unsigned nPages = 0;
    unsigned nPageBytes = 0;
    size_t nBytes = sizeof(nPages);
    if (sysctlbyname("vm.page_free_count", &nPages, &nBytes, nullptr, 0) != 0) {
        return 0;
    }
    nBytes = sizeof(nPageBytes);
    if (sysctlbyname("vm.pagesize", &nPageBytes, &nBytes, nullptr, 0) != 0) {
        return 0;
    }
    return qint64(nPages) * nPageBytes;
}
