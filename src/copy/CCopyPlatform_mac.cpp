#include "copy/CCopyPlatform.h"
#include "files/CFileName.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/mount.h>
#include <sys/param.h>
#include <sys/stat.h>
#include <unistd.h>

// Sizes in its entries have 32 bits.
static const qint64 FAT_MOST_FILE_BYTES = 0xffffffffLL;

void CCopyPlatform::SetLeastTimerSlack()
{
    // A thread of the highest priority sleeps exactly here without being asked.
}

struct timespec CCopyPlatform::AccessTime(const struct stat& stRaw) { return stRaw.st_atimespec; }

struct timespec CCopyPlatform::ModifiedTime(const struct stat& stRaw) { return stRaw.st_mtimespec; }

int CCopyPlatform::OpenForDirectRead(const QString& strPath)
{
    const int nDescriptor = OpenForRead(strPath, false);
    if (nDescriptor != -1) {
        fcntl(nDescriptor, F_NOCACHE, 1);
        StopReadAhead(nDescriptor);
    }
    return nDescriptor;
}

void CCopyPlatform::StopReadAhead(int nDescriptor) { fcntl(nDescriptor, F_RDAHEAD, 0); }

bool CCopyPlatform::Reserve(int nDescriptor, qint64 /*nSize*/, qint64 nBytes)
{
    // Counted from the physical end of the file, behind what it holds already.
    fstore_t stStore = {F_ALLOCATEALL, F_PEOFPOSMODE, 0, nBytes, 0};
    return fcntl(nDescriptor, F_PREALLOCATE, &stStore) != -1;
}

/** Whether that error says that the file system has no such call, and nothing about the disk. */
static bool IsNoSuchCall(int nError)
{
    return nError == ENOTSUP || nError == ENOTTY || nError == EINVAL || nError == ENOSYS;
}

bool CCopyPlatform::FlushFile(int nDescriptor)
{
    // It waits until the disk has emptied its own cache, too.
    if (fcntl(nDescriptor, F_FULLFSYNC) != -1) {
        return true;
    }
    return IsNoSuchCall(errno) && fsync(nDescriptor) == 0;
}

static bool FlushVolume(int nDescriptor, int nFlags)
{
    // It returns the error itself and leaves errno alone.
    const int nError = fsync_volume_np(nDescriptor, nFlags);
    if (nError != -1) {
        errno = nError;
    }
    return nError == 0;
}

bool CCopyPlatform::FlushFileSystem(int nDescriptor)
{
    // By the descriptor: another disk may have taken the path meanwhile. Of this volume alone:
    // the source's disk may be one that answers no more.
    if (FlushVolume(nDescriptor, SYNC_VOLUME_FULLSYNC | SYNC_VOLUME_WAIT)) {
        return true;
    }
    if (!IsNoSuchCall(errno)) {
        return false;
    }
    const bool bWritten = FlushVolume(nDescriptor, SYNC_VOLUME_WAIT);
    if (!bWritten && !IsNoSuchCall(errno)) {
        return false;
    }
    // A disk that cannot be told to empty its cache has got everything at least.
    return FlushFile(nDescriptor) || (bWritten && IsNoSuchCall(errno));
}

bool CCopyPlatform::IsMountPoint(int /*nFolder*/, const char* /*pszName*/)
{
    // A device of its own means a file system of its own here.
    return true;
}

STDiskSpace CCopyPlatform::GetDiskSpace(const QString& strPath)
{
    struct statfs stRaw;
    if (statfs(CFileName::Encode(strPath).constData(), &stRaw) != 0) {
        return {};
    }
    const qint64 nBlock = stRaw.f_bsize;
    return {qint64(stRaw.f_bavail) * nBlock, qint64(stRaw.f_blocks) * nBlock,
            (stRaw.f_flags & MNT_RDONLY) != 0};
}

STDiskRules CCopyPlatform::GetDiskRules(const QString& strPath)
{
    STDiskRules stRules;
    struct statfs stRaw;
    if (statfs(CFileName::Encode(strPath).constData(), &stRaw) != 0) {
        return stRules;
    }
    stRules.nBlockBytes = qMax<qint64>(1, stRaw.f_bsize);
    const bool bFat = std::strcmp(stRaw.f_fstypename, "msdos") == 0;
    if (bFat) {
        stRules.nMostFileBytes = FAT_MOST_FILE_BYTES;
    }
    stRules.bDropsDots = bFat || std::strcmp(stRaw.f_fstypename, "exfat") == 0;
    stRules.bTextNames = stRules.bDropsDots;
    return stRules;
}
