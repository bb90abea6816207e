#include "CBadPages.h"

#include <QFile>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <dlfcn.h>
#include <fcntl.h>
#include <map>
#include <sys/stat.h>
#include <sys/types.h>
#include <unistd.h>
#include <utility>

static const qint64 PAGE = 4096;

namespace {

struct STFaults
{
    QByteArray baPart;
    CBadPages::Places listPlace;
    int nError = 0;
    std::function<void(qint64, qint64)> fnAction;
    QByteArray baWritePart;
    int nWriteError = 0;
    int nGoodWrites = 0;
    int nResizeError = 0;
    int nTimesError = 0;
    bool bNoDirect = false;
    int nReads = 0;
    int nFailed = 0;
    int nDirect = 0;
    std::map<qint64, int> mapFailed; ///< reads of no more than a page, by where they began
};

} // namespace

static STFaults s_stFaults;

void CBadPages::Set(const QString& strPart, const Places& listPlace, int nError)
{
    s_stFaults = STFaults();
    s_stFaults.baPart = QFile::encodeName(strPart);
    s_stFaults.listPlace = listPlace;
    s_stFaults.nError = nError;
}

void CBadPages::Watch(std::function<void(qint64, qint64)> fnAction)
{
    s_stFaults.fnAction = std::move(fnAction);
}

void CBadPages::FailWrites(const QString& strPart, int nError, int nGood)
{
    s_stFaults.baWritePart = QFile::encodeName(strPart);
    s_stFaults.nWriteError = nError;
    s_stFaults.nGoodWrites = nGood;
}

void CBadPages::FailResize(int nError) { s_stFaults.nResizeError = nError; }

void CBadPages::FailTimes(int nError) { s_stFaults.nTimesError = nError; }

void CBadPages::RefuseDirect() { s_stFaults.bNoDirect = true; }

void CBadPages::Reset() { s_stFaults = STFaults(); }

void CBadPages::CountAnew()
{
    s_stFaults.nReads = 0;
    s_stFaults.nFailed = 0;
    s_stFaults.nDirect = 0;
    s_stFaults.mapFailed.clear();
}

int CBadPages::Failures() { return s_stFaults.nFailed; }

int CBadPages::Reads() { return s_stFaults.nReads; }

int CBadPages::MostFailuresOfAPage()
{
    int nMost = 0;
    for (const auto& [nFrom, nTimes] : s_stFaults.mapFailed) {
        nMost = qMax(nMost, nTimes);
    }
    return nMost;
}

int CBadPages::DirectReads() { return s_stFaults.nDirect; }

static bool IsOf(int nDescriptor, const QByteArray& baPart)
{
    const QByteArray baLink = "/proc/self/fd/" + QByteArray::number(nDescriptor);
    char szPath[PATH_MAX] = {};
    return !baPart.isEmpty() && readlink(baLink.constData(), szPath, sizeof(szPath) - 1) > 0
        && QByteArray(szPath).contains(baPart);
}

/** How many bytes of that read the disk gives; -1, with errno, for a bad place. */
static qint64 Meet(int nDescriptor, qint64 nFrom, qint64 nLen)
{
    if (!IsOf(nDescriptor, s_stFaults.baPart)) {
        return nLen;
    }
    const bool bDirect = (fcntl(nDescriptor, F_GETFL) & O_DIRECT) != 0;
    if (bDirect && s_stFaults.bNoDirect) {
        errno = EINVAL;
        return -1;
    }
    s_stFaults.nDirect += bDirect ? 1 : 0;
    ++s_stFaults.nReads;
    if (s_stFaults.fnAction) {
        s_stFaults.fnAction(nFrom, nLen);
    }
    qint64 nGood = nLen;
    for (const auto& place : qAsConst(s_stFaults.listPlace)) {
        if (place.first < nFrom + nLen && place.second > nFrom) {
            nGood = std::min(nGood, place.first - nFrom);
        }
    }
    if (nGood <= 0 && nLen > 0) {
        ++s_stFaults.nFailed;
        if (nLen <= PAGE) {
            ++s_stFaults.mapFailed[nFrom];
        }
        errno = s_stFaults.nError;
        return -1;
    }
    return nGood;
}

template <typename Function> static Function Next(const char* pszName)
{
    return reinterpret_cast<Function>(dlsym(RTLD_NEXT, pszName));
}

/** pread in the file itself; a direct one needs a whole page of room even where the disk gives less. */
static ssize_t ReadAt(int nDescriptor, void* pBuf, size_t nLen, off_t nFrom)
{
    const qint64 nGood = Meet(nDescriptor, nFrom, qint64(nLen));
    if (nGood < 0) {
        return -1;
    }
    const auto pfnRead = Next<ssize_t (*)(int, void*, size_t, off_t)>("pread");
    return std::min(pfnRead(nDescriptor, pBuf, nLen, nFrom), ssize_t(nGood));
}

extern "C" {

ssize_t read(int nDescriptor, void* pBuf, size_t nLen)
{
    const off_t nFrom = lseek(nDescriptor, 0, SEEK_CUR);
    const qint64 nGood = nFrom < 0 ? qint64(nLen) : Meet(nDescriptor, nFrom, qint64(nLen));
    if (nGood < 0) {
        return -1;
    }
    return Next<ssize_t (*)(int, void*, size_t)>("read")(nDescriptor, pBuf, size_t(nGood));
}

ssize_t pread(int nDescriptor, void* pBuf, size_t nLen, off_t nFrom)
{
    return ReadAt(nDescriptor, pBuf, nLen, nFrom);
}

ssize_t pread64(int nDescriptor, void* pBuf, size_t nLen, off64_t nFrom)
{
    return ReadAt(nDescriptor, pBuf, nLen, nFrom);
}

ssize_t pwrite(int nDescriptor, const void* pBuf, size_t nLen, off_t nFrom)
{
    if (s_stFaults.nWriteError != 0 && IsOf(nDescriptor, s_stFaults.baWritePart)
        && --s_stFaults.nGoodWrites < 0) {
        errno = s_stFaults.nWriteError;
        return -1;
    }
    return Next<ssize_t (*)(int, const void*, size_t, off_t)>("pwrite")(nDescriptor, pBuf, nLen, nFrom);
}

int ftruncate(int nDescriptor, off_t nSize) noexcept
{
    if (s_stFaults.nResizeError != 0) {
        errno = s_stFaults.nResizeError;
        return -1;
    }
    return Next<int (*)(int, off_t)>("ftruncate")(nDescriptor, nSize);
}

int futimens(int nDescriptor, const timespec* pListTime) noexcept
{
    if (s_stFaults.nTimesError != 0) {
        errno = s_stFaults.nTimesError;
        return -1;
    }
    return Next<int (*)(int, const timespec*)>("futimens")(nDescriptor, pListTime);
}

} // extern "C"
