#include "flow/CReadAdvice.h"

#include "files/CCloudFile.h"
#include "files/CFolderReader.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

STSourceFile CReadAdvice::Open(const QByteArray& baPath, quint64 nDevice)
{
    STSourceFile stFile;
    struct stat stRaw;
    if (lstat(baPath.constData(), &stRaw) != 0) {
        stFile.nError = errno;
        return stFile;
    }
    if (!S_ISREG(stRaw.st_mode) || stRaw.st_size <= 0 || CCloudFile::IsOnlyInCloud(stRaw)) {
        return stFile;
    }
    stFile.nDevice = quint64(stRaw.st_dev);
    if (stFile.nDevice != nDevice) {
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

STSourceFolder CReadAdvice::List(const QByteArray& baPath, quint64 nDevice, int nMost)
{
    STSourceFolder stFolder;
    struct stat stRaw;
    if (lstat(baPath.constData(), &stRaw) != 0) {
        stFolder.nError = errno;
        return stFolder;
    }
    if (!S_ISDIR(stRaw.st_mode) || quint64(stRaw.st_dev) != nDevice || CCloudFile::IsOnlyInCloud(stRaw)) {
        stFolder.bWhole = true;
        return stFolder;
    }
    CFolderReader reader(AT_FDCWD, baPath.constData());
    for (int i = 0; i < nMost; ++i) {
        if (!reader.Next()) {
            stFolder.nError = reader.Error();
            stFolder.bWhole = stFolder.nError == 0;
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
