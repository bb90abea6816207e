#include "flow/CWriteBack.h"

#include <cstdio>
#include <fcntl.h>
#include <linux/magic.h>
#include <sys/vfs.h>
#include <unistd.h>

// The headers have none for these.
static const quint32 CIFS_MAGIC = 0xff534d42;
static const quint32 SMB2_MAGIC = 0xfe534d42;

/** What the type of a file system lets do. */
static ENWriteBack KindOfType(quint32 nType)
{
    switch (nType) {
    case TMPFS_MAGIC:
    case RAMFS_MAGIC:
    case NFS_SUPER_MAGIC: // these tell at each close what could not be written: nobody may hear it before
    case SMB_SUPER_MAGIC:
    case CIFS_MAGIC:
    case SMB2_MAGIC:
    case V9FS_MAGIC:
        return ENWriteBack::NONE;
    case FUSE_SUPER_MAGIC:
        // The bytes wait in the disk's cache, not in the file's, and the driver flushes that.
        return ENWriteBack::DISK;
    default:
        return ENWriteBack::RANGES;
    }
}

ENWriteBack CWriteBack::KindOf(int nDescriptor) const
{
    struct statfs stRaw;
    return fstatfs(nDescriptor, &stRaw) == 0 ? KindOfType(quint32(stRaw.f_type)) : ENWriteBack::NONE;
}

int CWriteBack::OpenAgain(int nDescriptor) const
{
    // Not a duplicate: as long as somebody might write more to a file, the disk leaves room
    // behind it for that, and then the files do not lie beside each other.
    char szPath[32] = {};
    snprintf(szPath, sizeof szPath, "/proc/self/fd/%d", nDescriptor);
    return open(szPath, O_RDONLY | O_CLOEXEC | O_NOCTTY);
}

bool CWriteBack::Start(int nDescriptor, qint64 nFrom, qint64 nBytes) const
{
    return sync_file_range(nDescriptor, nFrom, nBytes, SYNC_FILE_RANGE_WRITE) == 0;
}

bool CWriteBack::Wait(int nDescriptor, qint64 nFrom, qint64 nBytes) const
{
    const unsigned nFlags = SYNC_FILE_RANGE_WAIT_BEFORE | SYNC_FILE_RANGE_WRITE | SYNC_FILE_RANGE_WAIT_AFTER;
    return sync_file_range(nDescriptor, nFrom, nBytes, nFlags) == 0;
}

bool CWriteBack::Flush(int nDescriptor) const { return fdatasync(nDescriptor) == 0; }
