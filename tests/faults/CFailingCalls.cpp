#include "CFailingCalls.h"

#include <QFile>

#include <atomic>
#include <cerrno>
#include <climits>
#include <cstdarg>
#include <cstdio>
#include <dirent.h>
#include <dlfcn.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <sys/types.h>
#include <sys/xattr.h>
#include <unistd.h>
#include <utility>

using ENCall = CFailingCalls::ENCall;

// Set while no worker runs, read on all threads.
static ENCall s_enCall = ENCall::NONE;
static QByteArray s_baEnd;
static int s_nError = 0;
static int s_nGood = 0;
static std::function<void()> s_fnAction;
static bool s_bEachTime = false; // the action runs with each call
static std::atomic<int> s_nCalls{0};

static void Set(ENCall enCall, const QString& strEnd, int nError, int nGood, std::function<void()> fnAction)
{
    s_baEnd = QFile::encodeName(strEnd);
    s_nError = nError;
    s_nGood = nGood;
    s_fnAction = std::move(fnAction);
    s_bEachTime = false;
    s_nCalls = 0;
    s_enCall = enCall;
}

void CFailingCalls::Fail(ENCall enCall, const QString& strEnd, int nError, int nGood)
{
    Set(enCall, strEnd, nError, nGood, std::function<void()>());
}

void CFailingCalls::Watch(ENCall enCall, const QString& strEnd, std::function<void()> fnAction, int nGood)
{
    Set(enCall, strEnd, 0, nGood, std::move(fnAction));
}

void CFailingCalls::WatchAll(ENCall enCall, const QString& strEnd, std::function<void()> fnAction)
{
    Set(ENCall::NONE, strEnd, 0, 0, std::move(fnAction));
    s_bEachTime = true;
    s_enCall = enCall;
}

void CFailingCalls::Reset() { Set(ENCall::NONE, QString(), 0, 0, std::function<void()>()); }

int CFailingCalls::Calls() { return s_nCalls; }

/** Counts a call for the path; the errno value with which it has to fail, 0 when it may go on. */
static int ErrorForPath(ENCall enCall, const char* pszPath)
{
    if (enCall != s_enCall || !QByteArray::fromRawData(pszPath, int(qstrlen(pszPath))).endsWith(s_baEnd)) {
        return 0;
    }
    const int nCall = s_nCalls++;
    if (s_fnAction) {
        if (s_bEachTime || nCall == s_nGood) {
            s_fnAction();
        }
        return 0;
    }
    return nCall >= s_nGood ? s_nError : 0;
}

/** The path that an open descriptor has; null when it has none. */
static QByteArray PathOf(int nDescriptor)
{
    const QByteArray baLink = "/proc/self/fd/" + QByteArray::number(nDescriptor);
    char szPath[PATH_MAX] = {};
    return readlink(baLink.constData(), szPath, sizeof(szPath) - 1) < 0 ? QByteArray() : QByteArray(szPath);
}

static int ErrorForDescriptor(ENCall enCall, int nDescriptor)
{
    if (enCall != s_enCall) {
        return 0;
    }
    const QByteArray baPath = PathOf(nDescriptor);
    return baPath.isNull() ? 0 : ErrorForPath(enCall, baPath.constData());
}

static int ErrorForEntry(ENCall enCall, int nFolder, const char* pszName)
{
    if (enCall != s_enCall) {
        return 0;
    }
    const bool bWhole = pszName[0] == '/' || nFolder == AT_FDCWD;
    return ErrorForPath(enCall, bWhole ? pszName : (PathOf(nFolder) + '/' + pszName).constData());
}

/** Fails with nError when there is one, else calls the C library's function of that name. */
template <typename Result, typename... Args>
static Result Pass(const char* pszName, int nError, Result failure, Args... args)
{
    if (nError == CFailingCalls::IGNORED) {
        return Result();
    }
    if (nError != 0) {
        errno = nError;
        return failure;
    }
    return reinterpret_cast<Result (*)(Args...)>(dlsym(RTLD_NEXT, pszName))(args...);
}

extern "C" {

int open(const char* pszPath, int nFlags, ...)
{
    va_list arguments;
    va_start(arguments, nFlags);
    const mode_t nMode = (nFlags & O_CREAT) != 0 ? va_arg(arguments, mode_t) : 0;
    va_end(arguments);
    return Pass("open", ErrorForPath(ENCall::OPEN, pszPath), -1, pszPath, nFlags, nMode);
}

ssize_t read(int nDescriptor, void* pBuf, size_t nLen)
{
    const int nError = ErrorForDescriptor(ENCall::READ, nDescriptor);
    return Pass("read", nError, ssize_t(-1), nDescriptor, pBuf, nLen);
}

off64_t lseek64(int nDescriptor, off64_t nOffset, int nWhence) noexcept
{
    const int nError = ErrorForDescriptor(ENCall::SEEK, nDescriptor);
    return Pass("lseek64", nError, off64_t(-1), nDescriptor, nOffset, nWhence);
}

size_t fwrite(const void* pBuf, size_t nSize, size_t nCount, FILE* pFile)
{
    const int nError = ErrorForDescriptor(ENCall::WRITE, fileno(pFile));
    return Pass("fwrite", nError, size_t(0), pBuf, nSize, nCount, pFile);
}

ssize_t pwrite(int nDescriptor, const void* pBuf, size_t nLen, off_t nOffset)
{
    const int nError = ErrorForDescriptor(ENCall::WRITE_AT, nDescriptor);
    return Pass("pwrite", nError, ssize_t(-1), nDescriptor, pBuf, nLen, nOffset);
}

int fclose(FILE* pFile)
{
    const int nError = ErrorForDescriptor(ENCall::CLOSE, fileno(pFile));
    const int nResult = Pass("fclose", 0, EOF, pFile); // closed in any case
    return nError == 0 ? nResult : Pass("fclose", nError, EOF, pFile);
}

int mkdir(const char* pszPath, mode_t nMode) noexcept
{
    return Pass("mkdir", ErrorForPath(ENCall::MAKE_FOLDER, pszPath), -1, pszPath, nMode);
}

dirent* readdir(DIR* pDir)
{
    const int nError = ErrorForDescriptor(ENCall::LIST, dirfd(pDir));
    return Pass("readdir", nError, static_cast<dirent*>(nullptr), pDir);
}

DIR* opendir(const char* pszPath)
{
    return Pass("opendir", ErrorForPath(ENCall::OPEN_FOLDER, pszPath), static_cast<DIR*>(nullptr), pszPath);
}

int stat(const char* pszPath, struct stat* pStatus) noexcept
{
    return Pass("stat", ErrorForPath(ENCall::STAT, pszPath), -1, pszPath, pStatus);
}

int stat64(const char* pszPath, struct stat64* pStatus) noexcept
{
    return Pass("stat64", ErrorForPath(ENCall::STAT, pszPath), -1, pszPath, pStatus);
}

int lstat(const char* pszPath, struct stat* pStatus) noexcept
{
    return Pass("lstat", ErrorForPath(ENCall::STAT, pszPath), -1, pszPath, pStatus);
}

int lstat64(const char* pszPath, struct stat64* pStatus) noexcept
{
    return Pass("lstat64", ErrorForPath(ENCall::STAT, pszPath), -1, pszPath, pStatus);
}

int fstatat(int nFolder, const char* pszPath, struct stat* pStatus, int nFlags) noexcept
{
    const int nError = ErrorForEntry(ENCall::STAT, nFolder, pszPath);
    return Pass("fstatat", nError, -1, nFolder, pszPath, pStatus, nFlags);
}

ssize_t readlinkat(int nFolder, const char* pszPath, char* pBuf, size_t nLen) noexcept
{
    const int nError = ErrorForEntry(ENCall::READ_LINK, nFolder, pszPath);
    return Pass("readlinkat", nError, ssize_t(-1), nFolder, pszPath, pBuf, nLen);
}

int openat(int nFolder, const char* pszPath, int nFlags, ...)
{
    va_list arguments;
    va_start(arguments, nFlags);
    const mode_t nMode = (nFlags & O_CREAT) != 0 ? va_arg(arguments, mode_t) : 0;
    va_end(arguments);
    const ENCall enCall = (nFlags & O_DIRECTORY) != 0 ? ENCall::OPEN_FOLDER : ENCall::OPEN;
    return Pass("openat", ErrorForEntry(enCall, nFolder, pszPath), -1, nFolder, pszPath, nFlags, nMode);
}

int statx(int nFolder, const char* pszPath, int nFlags, unsigned nMask, struct statx* pStatus) noexcept
{
    const int nError = pszPath[0] == '\0' ? 0 : ErrorForPath(ENCall::STAT, pszPath);
    return Pass("statx", nError, -1, nFolder, pszPath, nFlags, nMask, pStatus);
}

int statvfs(const char* pszPath, struct statvfs* pStatus) noexcept
{
    return Pass("statvfs", ErrorForPath(ENCall::SPACE, pszPath), -1, pszPath, pStatus);
}

int statvfs64(const char* pszPath, struct statvfs64* pStatus) noexcept
{
    return Pass("statvfs64", ErrorForPath(ENCall::SPACE, pszPath), -1, pszPath, pStatus);
}

int access(const char* pszPath, int nMode) noexcept
{
    return Pass("access", ErrorForPath(ENCall::ACCESS, pszPath), -1, pszPath, nMode);
}

int fsync(int nDescriptor)
{
    return Pass("fsync", ErrorForDescriptor(ENCall::SYNC_FILE, nDescriptor), -1, nDescriptor);
}

int futimens(int nDescriptor, const timespec* pListTime) noexcept
{
    return Pass("futimens", ErrorForDescriptor(ENCall::SET_TIME, nDescriptor), -1, nDescriptor, pListTime);
}

int utimensat(int nFolder, const char* pszPath, const timespec* pListTime, int nFlags) noexcept
{
    const int nError = ErrorForPath(ENCall::SET_PATH_TIME, pszPath);
    return Pass("utimensat", nError, -1, nFolder, pszPath, pListTime, nFlags);
}

int chmod(const char* pszPath, mode_t nMode) noexcept
{
    return Pass("chmod", ErrorForPath(ENCall::SET_MODE, pszPath), -1, pszPath, nMode);
}

int lsetxattr(const char* pszPath, const char* pszName, const void* pValue, size_t nSize, int nFlags) noexcept
{
    const int nError = ErrorForPath(ENCall::SET_ATTRIBUTE, pszPath);
    return Pass("lsetxattr", nError, -1, pszPath, pszName, pValue, nSize, nFlags);
}

int symlink(const char* pszText, const char* pszPath) noexcept
{
    return Pass("symlink", ErrorForPath(ENCall::LINK, pszPath), -1, pszText, pszPath);
}

int syncfs(int nDescriptor) noexcept
{
    return Pass("syncfs", ErrorForDescriptor(ENCall::FLUSH, nDescriptor), -1, nDescriptor);
}

} // extern "C"
