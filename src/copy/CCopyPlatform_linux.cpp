#include "copy/CCopyPlatform.h"

#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/stat.h>
#include <unistd.h>

void CCopyPlatform::SetLeastTimerSlack()
{
    // The kernel adds 50 µs to every short sleep unless told otherwise, half as
    // much again as the pause after a chunk; 1 ns is the least it takes.
    prctl(PR_SET_TIMERSLACK, 1UL, 0UL, 0UL, 0UL);
}

struct timespec CCopyPlatform::AccessTime(const struct stat& stRaw) { return stRaw.st_atim; }

struct timespec CCopyPlatform::ModifiedTime(const struct stat& stRaw) { return stRaw.st_mtim; }

bool CCopyPlatform::Reserve(int nDescriptor, qint64 nSize, qint64 nBytes)
{
    return fallocate(nDescriptor, FALLOC_FL_KEEP_SIZE, nSize, nBytes) == 0;
}

bool CCopyPlatform::FlushFile(int nDescriptor) { return fsync(nDescriptor) == 0; }

bool CCopyPlatform::FlushFileSystem(int nDescriptor) { return syncfs(nDescriptor) == 0; }
