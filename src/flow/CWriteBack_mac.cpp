#include "flow/CWriteBack.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/mount.h>
#include <sys/param.h>
#include <sys/stat.h>
#include <unistd.h>

ENWriteBack CWriteBack::KindOf(int nDescriptor) const
{
    struct statfs stRaw;
    // What could not be written in the background is told to nobody but who flushes the file. What lies on
    // another computer tells at each close what could not be written.
    const bool bLocal = fstatfs(nDescriptor, &stRaw) == 0 && (stRaw.f_flags & MNT_LOCAL) != 0;
    return bLocal ? ENWriteBack::FILES : ENWriteBack::NONE;
}

int CWriteBack::OpenAgain(int nDescriptor) const { return fcntl(nDescriptor, F_DUPFD_CLOEXEC, 0); }

bool CWriteBack::Start(int /*nDescriptor*/, qint64 /*nFrom*/, qint64 /*nBytes*/) const
{
    // There is no way to begin without waiting here; the system begins soon by itself.
    return true;
}

bool CWriteBack::Wait(int nDescriptor, qint64 /*nFrom*/, qint64 /*nBytes*/) const
{
    return Flush(nDescriptor);
}

/** Whether the disk of an open file was not pulled out; then nothing of it can be asked for any more. */
static bool IsDiskThere(int nDescriptor)
{
    struct stat stRaw;
    const bool bThere = fstat(nDescriptor, &stRaw) == 0;
    errno = !bThere && errno == EBADF ? ENXIO : errno;
    return bThere;
}

// F_FULLFSYNC would empty the disk's own cache, too, which belongs to the end of a copy.
bool CWriteBack::Flush(int nDescriptor) const
{
    int nResult = fsync(nDescriptor);
    while (nResult != 0 && errno == EINTR) {
        nResult = fsync(nDescriptor);
    }
    // With a file whose disk was pulled out it does nothing, and says that all went well.
    return nResult == 0 && IsDiskThere(nDescriptor);
}
