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
#include <sys/types.h>
#include <unistd.h>
#include <utility>

// Set while no worker runs, read on all threads.
static CFailingCalls::ENCall s_enCall = CFailingCalls::ENCall::NONE;
static QByteArray s_baEnd;
static int s_nError = 0;
static int s_nGood = 0;
static std::function<void()> s_fnAction;
static std::atomic<int> s_nCalls{0};

static void Set(CFailingCalls::ENCall enCall, const QString& strEnd, int nError, int nGood,
                std::function<void()> fnAction)
{
    s_baEnd = QFile::encodeName(strEnd);
    s_nError = nError;
    s_nGood = nGood;
    s_fnAction = std::move(fnAction);
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

void CFailingCalls::Reset() { Set(ENCall::NONE, QString(), 0, 0, std::function<void()>()); }

int CFailingCalls::Calls() { return s_nCalls; }

/** Counts a call for the path; the errno value with which it has to fail, 0 when it may go on. */
static int ErrorForPath(CFailingCalls::ENCall enCall, const char* pszPath)
{
    if (enCall != s_enCall || !QByteArray::fromRawData(pszPath, int(qstrlen(pszPath))).endsWith(s_baEnd)) {
        return 0;
    }
    const int nCall = s_nCalls++;
    if (s_fnAction) {
        if (nCall == s_nGood) {
            s_fnAction();
        }
        return 0;
    }
    return nCall >= s_nGood ? s_nError : 0;
}

static int ErrorForDescriptor(CFailingCalls::ENCall enCall, int nDescriptor)
{
    if (enCall != s_enCall) {
        return 0;
    }
    const QByteArray baLink = "/proc/self/fd/" + QByteArray::number(nDescriptor);
    char szPath[PATH_MAX] = {};
    if (readlink(baLink.constData(), szPath, sizeof(szPath) - 1) < 0) {
        return 0;
    }
    return ErrorForPath(enCall, szPath);
}

template <typename Function> static Function* Real(const char* pszName)
{
    return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, pszName));
}

extern "C" {

int open(const char* pszPath, int nFlags, ...)
{
    static auto* const s_pfnReal = Real<int(const char*, int, ...)>("open");
    va_list arguments;
    va_start(arguments, nFlags);
    const mode_t nMode = (nFlags & O_CREAT) != 0 ? va_arg(arguments, mode_t) : 0;
    va_end(arguments);
    if (const int nError = ErrorForPath(CFailingCalls::ENCall::OPEN, pszPath)) {
        errno = nError;
        return -1;
    }
    return s_pfnReal(pszPath, nFlags, nMode);
}

ssize_t read(int nDescriptor, void* pBuf, size_t nLen)
{
    static auto* const s_pfnReal = Real<ssize_t(int, void*, size_t)>("read");
    if (const int nError = ErrorForDescriptor(CFailingCalls::ENCall::READ, nDescriptor)) {
        errno = nError;
        return -1;
    }
    return s_pfnReal(nDescriptor, pBuf, nLen);
}

off_t lseek(int nDescriptor, off_t nOffset, int nWhence) noexcept
{
    static auto* const s_pfnReal = Real<off_t(int, off_t, int)>("lseek");
    if (const int nError = ErrorForDescriptor(CFailingCalls::ENCall::SEEK, nDescriptor)) {
        errno = nError;
        return -1;
    }
    return s_pfnReal(nDescriptor, nOffset, nWhence);
}

off64_t lseek64(int nDescriptor, off64_t nOffset, int nWhence) noexcept
{
    static auto* const s_pfnReal = Real<off64_t(int, off64_t, int)>("lseek64");
    if (const int nError = ErrorForDescriptor(CFailingCalls::ENCall::SEEK, nDescriptor)) {
        errno = nError;
        return -1;
    }
    return s_pfnReal(nDescriptor, nOffset, nWhence);
}

size_t fwrite(const void* pBuf, size_t nSize, size_t nCount, FILE* pFile)
{
    static auto* const s_pfnReal = Real<size_t(const void*, size_t, size_t, FILE*)>("fwrite");
    if (const int nError = ErrorForDescriptor(CFailingCalls::ENCall::WRITE, fileno(pFile))) {
        errno = nError;
        return 0;
    }
    return s_pfnReal(pBuf, nSize, nCount, pFile);
}

int fclose(FILE* pFile)
{
    static auto* const s_pfnReal = Real<int(FILE*)>("fclose");
    const int nError = ErrorForDescriptor(CFailingCalls::ENCall::CLOSE, fileno(pFile));
    const int nResult = s_pfnReal(pFile);
    if (nError != 0) {
        errno = nError;
        return EOF;
    }
    return nResult;
}

int mkdir(const char* pszPath, mode_t nMode) noexcept
{
    static auto* const s_pfnReal = Real<int(const char*, mode_t)>("mkdir");
    if (const int nError = ErrorForPath(CFailingCalls::ENCall::MAKE_FOLDER, pszPath)) {
        errno = nError;
        return -1;
    }
    return s_pfnReal(pszPath, nMode);
}

dirent* readdir(DIR* pDir)
{
    static auto* const s_pfnReal = Real<dirent*(DIR*)>("readdir");
    if (const int nError = ErrorForDescriptor(CFailingCalls::ENCall::LIST, dirfd(pDir))) {
        errno = nError;
        return nullptr;
    }
    return s_pfnReal(pDir);
}

int futimens(int nDescriptor, const timespec* pListTime) noexcept
{
    static auto* const s_pfnReal = Real<int(int, const timespec*)>("futimens");
    if (const int nError = ErrorForDescriptor(CFailingCalls::ENCall::SET_TIME, nDescriptor)) {
        errno = nError;
        return -1;
    }
    return s_pfnReal(nDescriptor, pListTime);
}

int syncfs(int nDescriptor) noexcept
{
    static auto* const s_pfnReal = Real<int(int)>("syncfs");
    if (const int nError = ErrorForDescriptor(CFailingCalls::ENCall::FLUSH, nDescriptor)) {
        errno = nError;
        return -1;
    }
    return s_pfnReal(nDescriptor);
}

} // extern "C"
