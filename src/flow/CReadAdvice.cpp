#include "flow/CReadAdvice.h"

#include "files/CFolderReader.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

/** The device that an open file lies on; 0 when that is not known. */
static quint64 DeviceOf(int nDescriptor)
{
    struct stat stRaw;
    return fstat(nDescriptor, &stRaw) == 0 ? quint64(stRaw.st_dev) : 0;
}

STSourceFile CReadAdvice::Open(const QByteArray& baPath)
{
    STSourceFile stFile;
    struct stat stRaw;
    if (lstat(baPath.constData(), &stRaw) != 0) {
        stFile.nError = errno;
        return stFile;
    }
    if (!S_ISREG(stRaw.st_mode) || stRaw.st_size <= 0) {
        return stFile;
    }
    stFile.nDescriptor = open(baPath.constData(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
    if (stFile.nDescriptor == -1) {
        stFile.nError = errno;
        return stFile;
    }
    if (fstat(stFile.nDescriptor, &stRaw) != 0 || !S_ISREG(stRaw.st_mode)) {
        Close(stFile.nDescriptor);
        return {};
    }
    stFile.nDevice = quint64(stRaw.st_dev);
    stFile.nInode = quint64(stRaw.st_ino);
    stFile.nSize = stRaw.st_size;
    return stFile;
}

std::optional<STSourceFolder> CReadAdvice::List(const QByteArray& baPath, int nMost)
{
    CFolderReader reader(AT_FDCWD, baPath.constData());
    if (!reader.IsOpen()) {
        return std::nullopt;
    }
    STSourceFolder stFolder;
    stFolder.nDevice = DeviceOf(reader.Descriptor());
    for (int i = 0; i < nMost; ++i) {
        if (!reader.Next()) {
            stFolder.bWhole = true;
            break;
        }
        if (reader.IsKnownFolder()) {
            stFolder.listFolder.append(reader.Name());
        } else if (reader.MayBeFile()) {
            stFolder.listFile.append(reader.Name());
        }
    }
    return stFolder;
}

void CReadAdvice::Close(int nDescriptor) { close(nDescriptor); }
