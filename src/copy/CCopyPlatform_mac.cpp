#include "copy/CCopyPlatform.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

void CCopyPlatform::SetLeastTimerSlack()
{
    // A thread of the highest priority sleeps exactly here without being asked.
}

struct timespec CCopyPlatform::ModifiedTime(const struct stat& stRaw) { return stRaw.st_mtimespec; }

bool CCopyPlatform::FlushDescriptor(int nDescriptor)
{
    // sync() hands everything to the disks; F_FULLFSYNC then waits until this
    // disk has emptied its own cache. File systems without it have fsync.
    sync();
    return fcntl(nDescriptor, F_FULLFSYNC) != -1 || fsync(nDescriptor) == 0;
}
