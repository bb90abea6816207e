#include "copy/CCopyPlatform.h"
#include "files/CFileName.h"

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

bool CCopyPlatform::FlushFile(int nDescriptor)
{
    // F_FULLFSYNC waits until the disk has emptied its own cache. File systems
    // without it have fsync.
    return fcntl(nDescriptor, F_FULLFSYNC) != -1 || fsync(nDescriptor) == 0;
}

bool CCopyPlatform::FlushFileSystem(int nDescriptor)
{
    // sync() hands everything to the disks.
    sync();
    return FlushFile(nDescriptor);
}

bool CCopyPlatform::IsMountPoint(int /*nFolder*/, const char* /*pszName*/)
{
    // A device of its own means a file system of its own here.
    return true;
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
