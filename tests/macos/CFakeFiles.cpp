#include "macos/CFakeFiles.h"

#include "sdk/FileCalls.h"

#include <QFile>
#include <QFileInfo>
#include <QMap>
#include <QMutex>
#include <QPair>

#include <algorithm>
#include <cerrno>
#include <cstdarg>
#include <cstring>
#include <dirent.h>
#include <dlfcn.h>
#include <fcntl.h>
#include <sys/mount.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace {

struct STFailure
{
    QString strCall;
    QString strPathEnd;
    int nError = 0;
};

struct STState
{
    QMutex lock;
    QStringList listCall;
    QVector<STFailure> listFailure;
    std::function<void(const QString& strCall)> fnWatch;
    QMap<QPair<quint64, quint64>, unsigned> mapFlags; // by device and inode
    QByteArray baKind = "apfs";
    bool bLocal = true;
};

} // namespace

static STState& State()
{
    static STState s_state;
    return s_state;
}

void CFakeFiles::Reset()
{
    QMutexLocker locker(&State().lock);
    State().listCall.clear();
    State().listFailure.clear();
    State().fnWatch = nullptr;
    State().mapFlags.clear();
    State().baKind = "apfs";
    State().bLocal = true;
}

void CFakeFiles::Fail(const QString& strCall, const QString& strPathEnd, int nError)
{
    QMutexLocker locker(&State().lock);
    State().listFailure.append({strCall, strPathEnd, nError});
}

void CFakeFiles::Watch(std::function<void(const QString& strCall)> fnWatch)
{
    QMutexLocker locker(&State().lock);
    State().fnWatch = std::move(fnWatch);
}

QStringList CFakeFiles::TakeCalls()
{
    QMutexLocker locker(&State().lock);
    return std::exchange(State().listCall, QStringList());
}

void CFakeFiles::SetFlags(const QString& strPath, unsigned nFlags)
{
    struct stat stRaw = {};
    lstat(QFile::encodeName(strPath).constData(), &stRaw);
    QMutexLocker locker(&State().lock);
    State().mapFlags.insert({quint64(stRaw.st_dev), quint64(stRaw.st_ino)}, nFlags);
}

void CFakeFiles::SetVolume(const char* pszKind, bool bLocal)
{
    QMutexLocker locker(&State().lock);
    State().baKind = pszKind;
    State().bLocal = bLocal;
}

int CFakeFiles::Called(const QString& strCall, const QString& strPath, const QString& strArgument)
{
    const QString strNote = strCall + ' ' + strPath + (strArgument.isEmpty() ? QString() : ' ' + strArgument);
    int nError = 0;
    std::function<void(const QString&)> fnWatch;
    {
        QMutexLocker locker(&State().lock);
        State().listCall.append(strNote);
        for (const STFailure& stFailure : qAsConst(State().listFailure)) {
            const bool bCall
                = stFailure.strCall == strCall || stFailure.strCall == strCall + ' ' + strArgument;
            if (bCall && strPath.endsWith(stFailure.strPathEnd)) {
                nError = stFailure.nError;
            }
        }
        fnWatch = State().fnWatch;
    }
    if (fnWatch) {
        fnWatch(strNote);
    }
    return nError;
}

QString CFakeFiles::PathOf(int nDescriptor)
{
    char path[4096] = "";
    const QByteArray baLink = "/proc/self/fd/" + QByteArray::number(nDescriptor);
    const ssize_t nLength = readlink(baLink.constData(), path, sizeof(path));
    return nLength > 0 ? QFile::decodeName(QByteArray(path, int(nLength))) : QString();
}

static int Result(int nError)
{
    if (nError != 0) {
        errno = nError;
    }
    return nError == 0 ? 0 : -1;
}

extern "C" int FakeFsync(int nDescriptor)
{
    return Result(CFakeFiles::Called("fsync", CFakeFiles::PathOf(nDescriptor)));
}

// These two return the error itself and leave errno as it was.

extern "C" int sync_volume_np(const char* pszPath, int nFlags)
{
    return CFakeFiles::Called("sync_volume_np", QFile::decodeName(pszPath), QString::number(nFlags));
}

extern "C" int fsync_volume_np(int nDescriptor, int nFlags)
{
    const QString strFlags = QString::number(nFlags);
    return CFakeFiles::Called("fsync_volume_np", CFakeFiles::PathOf(nDescriptor), strFlags);
}

extern "C" int setiopolicy_np(int nType, int nScope, int nPolicy)
{
    const QString strArguments = QStringLiteral("%1 %2 %3").arg(nType).arg(nScope).arg(nPolicy);
    return Result(CFakeFiles::Called("setiopolicy_np", strArguments));
}

extern "C" void FakeSync() { CFakeFiles::Called("sync", QString()); }

extern "C" int FakeFcntl(int nDescriptor, int nCommand, ...)
{
    va_list arguments;
    va_start(arguments, nCommand);
    void* const pArgument = va_arg(arguments, void*);
    va_end(arguments);
    const QString strPath = CFakeFiles::PathOf(nDescriptor);
    const QString strValue = QString::number(qint64(quintptr(pArgument)));
    switch (nCommand) {
    case F_FULLFSYNC:
        return Result(CFakeFiles::Called("F_FULLFSYNC", strPath));
    case F_NOCACHE:
        return Result(CFakeFiles::Called("F_NOCACHE", strPath, strValue));
    case F_RDAHEAD:
        return Result(CFakeFiles::Called("F_RDAHEAD", strPath, strValue));
    case F_PREALLOCATE: {
        const auto* const pStore = static_cast<const fstore_t*>(pArgument);
        return Result(CFakeFiles::Called("F_PREALLOCATE", strPath,
                                         QString("flags %1 mode %2 from %3 length %4")
                                             .arg(pStore->fst_flags)
                                             .arg(pStore->fst_posmode)
                                             .arg(pStore->fst_offset)
                                             .arg(pStore->fst_length)));
    }
    case F_DUPFD_CLOEXEC:
        return dup3(nDescriptor, fcntl(nDescriptor, F_DUPFD, 3), O_CLOEXEC);
    case F_SETFD:
        return fcntl(nDescriptor, nCommand, int(quintptr(pArgument)));
    default:
        return Result(EINVAL);
    }
}

static void Fill(struct statfs* pVolume, const QString& strPath)
{
    QMutexLocker locker(&State().lock);
    std::memset(pVolume, 0, sizeof(*pVolume));
    pVolume->f_bsize = 4096;
    pVolume->f_blocks = 1000;
    pVolume->f_bavail = 100;
    pVolume->f_flags = State().bLocal ? MNT_LOCAL : 0;
    std::strncpy(pVolume->f_mntonname, QFile::encodeName(strPath).constData(),
                 sizeof(pVolume->f_mntonname) - 1);
    std::strncpy(pVolume->f_fstypename, State().baKind.constData(), sizeof(pVolume->f_fstypename) - 1);
}

int statfs(const char* pszPath, struct statfs* pVolume)
{
    Fill(pVolume, QFile::decodeName(pszPath));
    return Result(CFakeFiles::Called("statfs", QFile::decodeName(pszPath)));
}

int fstatfs(int nDescriptor, struct statfs* pVolume)
{
    Fill(pVolume, CFakeFiles::PathOf(nDescriptor));
    return Result(CFakeFiles::Called("fstatfs", CFakeFiles::PathOf(nDescriptor)));
}

// The program's questions for a file go through these on their way to the system.

/** Whether that call, which is not noted, is to fail for any file. */
static bool FailsUnnoted(const QString& strCall)
{
    QMutexLocker locker(&State().lock);
    const QVector<STFailure>& listFailure = State().listFailure;
    return std::any_of(listFailure.begin(), listFailure.end(),
                       [&](const STFailure& stFailure) { return stFailure.strCall == strCall; });
}

/** What it is to fail with for that file. */
static int ErrorOf(const QString& strCall, const QString& strPath)
{
    int nError = 0;
    QMutexLocker locker(&State().lock);
    for (const STFailure& stFailure : qAsConst(State().listFailure)) {
        if (stFailure.strCall == strCall && strPath.endsWith(stFailure.strPathEnd)) {
            nError = stFailure.nError;
        }
    }
    return nError;
}

static int WithFlags(int nResult, struct stat* pState)
{
    if (nResult == 0) {
        QMutexLocker locker(&State().lock);
        pState->st_flags = State().mapFlags.value({quint64(pState->st_dev), quint64(pState->st_ino)}, 0);
    }
    return nResult;
}

template <typename PFN> static PFN Next(const char* pszName)
{
    return reinterpret_cast<PFN>(dlsym(RTLD_NEXT, pszName));
}

extern "C" {

int stat(const char* pszPath, struct stat* pState) noexcept
{
    static const auto s_pfn = Next<int (*)(const char*, struct stat*)>("stat");
    return WithFlags(s_pfn(pszPath, pState), pState);
}

int lstat(const char* pszPath, struct stat* pState) noexcept
{
    static const auto s_pfn = Next<int (*)(const char*, struct stat*)>("lstat");
    return WithFlags(s_pfn(pszPath, pState), pState);
}

int fstat(int nDescriptor, struct stat* pState) noexcept
{
    if (FailsUnnoted("fstat")) {
        const int nError = ErrorOf("fstat", CFakeFiles::PathOf(nDescriptor));
        if (nError != 0) {
            return Result(nError);
        }
    }
    static const auto s_pfn = Next<int (*)(int, struct stat*)>("fstat");
    return WithFlags(s_pfn(nDescriptor, pState), pState);
}

// A folder that is in the cloud alone is not to be fetched.
struct dirent* readdir(DIR* pFolder)
{
    static const auto s_pfn = Next<struct dirent* (*)(DIR*)>("readdir");
    struct stat stRaw = {};
    if (fstat(dirfd(pFolder), &stRaw) == 0 && (stRaw.st_flags & SF_DATALESS) != 0) {
        errno = EDEADLK;
        return nullptr;
    }
    return s_pfn(pFolder);
}

int fstatat(int nFolder, const char* pszPath, struct stat* pState, int nFlags) noexcept
{
    static const auto s_pfn = Next<int (*)(int, const char*, struct stat*, int)>("fstatat");
    return WithFlags(s_pfn(nFolder, pszPath, pState, nFlags), pState);
}
}
