#include "copy/CCopyPlatform.h"
#include "files/CFileName.h"

#include <QStorageInfo>

#include <fcntl.h>
#include <linux/magic.h>
#include <sys/prctl.h>
#include <sys/stat.h>
#include <sys/vfs.h>
#include <unistd.h>

// Sizes in its entries have 32 bits.
static const qint64 FAT_MOST_FILE_BYTES = 0xffffffffLL;

// The headers of older systems have none for it.
static const long EXFAT_MAGIC = 0x2011bab0;

void CCopyPlatform::SetLeastTimerSlack()
{
    // The kernel adds 50 µs to every short sleep unless told otherwise, half as
    // much again as the pause after a chunk; 1 ns is the least it takes.
    prctl(PR_SET_TIMERSLACK, 1UL, 0UL, 0UL, 0UL);
}

struct timespec CCopyPlatform::AccessTime(const struct stat& stRaw) { return stRaw.st_atim; }

struct timespec CCopyPlatform::ModifiedTime(const struct stat& stRaw) { return stRaw.st_mtim; }

int CCopyPlatform::OpenForDirectRead(const QString& strPath)
{
    const int nFlags = O_RDONLY | O_DIRECT | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY | O_CLOEXEC;
    return open(CFileName::Encode(strPath).constData(), nFlags);
}

void CCopyPlatform::StopReadAhead(int nDescriptor) { posix_fadvise(nDescriptor, 0, 0, POSIX_FADV_RANDOM); }

bool CCopyPlatform::Reserve(int nDescriptor, qint64 nSize, qint64 nBytes)
{
    return fallocate(nDescriptor, FALLOC_FL_KEEP_SIZE, nSize, nBytes) == 0;
}

bool CCopyPlatform::FlushFile(int nDescriptor) { return fsync(nDescriptor) == 0; }

bool CCopyPlatform::FlushFileSystem(int nDescriptor) { return syncfs(nDescriptor) == 0; }

bool CCopyPlatform::IsMountPoint(int nFolder, const char* pszName)
{
    struct statx stRaw;
    if (statx(nFolder, pszName, AT_SYMLINK_NOFOLLOW | AT_NO_AUTOMOUNT, STATX_TYPE, &stRaw) != 0) {
        return true;
    }
    const bool bSays = (stRaw.stx_attributes_mask & STATX_ATTR_MOUNT_ROOT) != 0;
    return !bSays || (stRaw.stx_attributes & STATX_ATTR_MOUNT_ROOT) != 0;
}

STDiskSpace CCopyPlatform::GetDiskSpace(const QString& strPath)
{
    const QStorageInfo info(strPath);
    return {info.bytesAvailable(), info.bytesTotal(), info.isReadOnly()};
}

STDiskRules CCopyPlatform::GetDiskRules(const QString& strPath)
{
    STDiskRules stRules;
    struct statfs stRaw;
    if (statfs(CFileName::Encode(strPath).constData(), &stRaw) != 0) {
        return stRules;
    }
    stRules.nBlockBytes = qMax<qint64>(1, stRaw.f_frsize > 0 ? stRaw.f_frsize : stRaw.f_bsize);
    if (stRaw.f_type == MSDOS_SUPER_MAGIC) {
        stRules.nMostFileBytes = FAT_MOST_FILE_BYTES;
    }
    stRules.bDropsDots = stRaw.f_type == MSDOS_SUPER_MAGIC || stRaw.f_type == EXFAT_MAGIC;
    // Drivers of exFAT and NTFS: one ends, or loses a folder, at a name that is no text.
    stRules.bTextNames = stRules.bDropsDots || stRaw.f_type == FUSE_SUPER_MAGIC;
    return stRules;
}
