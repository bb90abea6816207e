#include "copy/CCopyPlatform.h"

#include <QFile>

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

static ENFileKind Kind(mode_t nMode)
{
    if (S_ISREG(nMode)) {
        return ENFileKind::REGULAR;
    }
    return S_ISDIR(nMode) ? ENFileKind::DIRECTORY : ENFileKind::SPECIAL;
}

void CCopyPlatform::Fill(const struct stat& stRaw, STFileState& stState)
{
    const struct timespec stModified = ModifiedTime(stRaw);
    stState.m_enKind = Kind(stRaw.st_mode);
    stState.m_bRemoved = stRaw.st_nlink == 0;
    stState.m_nDevice = quint64(stRaw.st_dev);
    stState.m_nSize = stRaw.st_size;
    stState.m_nModifiedSec = stModified.tv_sec;
    stState.m_nModifiedNsec = stModified.tv_nsec;
}

bool CCopyPlatform::GetPathState(const QString& strPath, STFileState& stState)
{
    struct stat stRaw;
    if (stat(QFile::encodeName(strPath).constData(), &stRaw) != 0) {
        return false;
    }
    Fill(stRaw, stState);
    return true;
}

bool CCopyPlatform::GetOpenState(int nDescriptor, STFileState& stState)
{
    struct stat stRaw;
    if (fstat(nDescriptor, &stRaw) != 0) {
        return false;
    }
    Fill(stRaw, stState);
    return true;
}

int CCopyPlatform::OpenForRead(const QString& strPath)
{
    return open(QFile::encodeName(strPath).constData(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
}

void CCopyPlatform::KeepFromChildren(int nDescriptor) { fcntl(nDescriptor, F_SETFD, FD_CLOEXEC); }

bool CCopyPlatform::SetModifiedTime(int nDescriptor, const STFileState& stState)
{
    const struct timespec listTime[2] = {
        {0, UTIME_OMIT},
        {time_t(stState.m_nModifiedSec), long(stState.m_nModifiedNsec)},
    };
    return futimens(nDescriptor, listTime) == 0;
}

bool CCopyPlatform::FlushFileSystem(const QString& strFolder)
{
    const int nDescriptor
        = open(QFile::encodeName(strFolder).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (nDescriptor == -1) {
        return false;
    }
    const bool bDone = FlushDescriptor(nDescriptor);
    const int nError = errno;
    close(nDescriptor);
    errno = nError;
    return bDone;
}
