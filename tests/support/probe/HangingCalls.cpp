#include "support/probe/HangingCalls.h"

#include <cerrno>
#include <climits>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <dirent.h>
#include <dlfcn.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <unistd.h>

// Stands in front of the C library's calls and holds those that a journey names: a
// disk that does not answer. The commands that the program runs are held as well.

static const char VOLUMES[] = "/Volumes";

/** Calls the C library's function of that name. */
template <typename Result, typename... Args> static Result Next(const char* pName, Args... args)
{
    return reinterpret_cast<Result (*)(Args...)>(dlsym(RTLD_NEXT, pName))(args...);
}

static bool BeginsWith(const char* pText, const char* pBegin)
{
    return strncmp(pText, pBegin, strlen(pBegin)) == 0;
}

static bool IsHeld(const char* pFile, const char* pCall, const char* pPath)
{
    const int nDescriptor = Next<int>("open", pFile, O_RDONLY | O_CLOEXEC, 0);
    char szText[4096] = {};
    const ssize_t nRead = nDescriptor < 0 ? 0 : Next<ssize_t>("read", nDescriptor, szText, sizeof szText - 1);
    close(nDescriptor);
    char* pRest = nullptr;
    for (char* pLine = nRead > 0 ? strtok_r(szText, "\n", &pRest) : nullptr; pLine != nullptr;
         pLine = strtok_r(nullptr, "\n", &pRest)) {
        const size_t nCall = strlen(pCall);
        if (BeginsWith(pLine, pCall) && pLine[nCall] == ' ' && BeginsWith(pPath, pLine + nCall + 1)) {
            return true;
        }
    }
    return false;
}

void HangOnPath(const char* pCall, const char* pPath)
{
    // The end of a folder is told by errno being left alone.
    const int nError = errno;
    const char* pFile = getenv("TARNWICK_HANG");
    while (pFile != nullptr && pPath != nullptr && BeginsWith(pPath, VOLUMES)
           && IsHeld(pFile, pCall, pPath)) {
        usleep(20000);
    }
    errno = nError;
}

void HangOnDescriptor(const char* pCall, int nDescriptor)
{
    const int nError = errno;
    char szLink[64] = {};
    char szPath[PATH_MAX] = {};
    snprintf(szLink, sizeof szLink, "/proc/self/fd/%d", nDescriptor);
    if (getenv("TARNWICK_HANG") != nullptr && readlink(szLink, szPath, sizeof szPath - 1) > 0) {
        HangOnPath(pCall, szPath);
    }
    errno = nError;
}

extern "C" {

int open(const char* pPath, int nFlags, ...)
{
    va_list arguments;
    va_start(arguments, nFlags);
    const mode_t nMode = (nFlags & O_CREAT) != 0 ? va_arg(arguments, mode_t) : 0;
    va_end(arguments);
    HangOnPath("open", pPath);
    return Next<int>("open", pPath, nFlags, nMode);
}

int open64(const char* pPath, int nFlags, ...)
{
    va_list arguments;
    va_start(arguments, nFlags);
    const mode_t nMode = (nFlags & O_CREAT) != 0 ? va_arg(arguments, mode_t) : 0;
    va_end(arguments);
    HangOnPath("open", pPath);
    return Next<int>("open64", pPath, nFlags, nMode);
}

ssize_t read(int nDescriptor, void* pData, size_t nBytes)
{
    HangOnDescriptor("read", nDescriptor);
    return Next<ssize_t>("read", nDescriptor, pData, nBytes);
}

dirent* readdir(DIR* pFolder)
{
    HangOnDescriptor("readdir", dirfd(pFolder));
    return Next<dirent*>("readdir", pFolder);
}

int stat(const char* pPath, struct stat* pStatus) noexcept
{
    HangOnPath("stat", pPath);
    return Next<int>("stat", pPath, pStatus);
}

int stat64(const char* pPath, struct stat64* pStatus) noexcept
{
    HangOnPath("stat", pPath);
    return Next<int>("stat64", pPath, pStatus);
}

int lstat(const char* pPath, struct stat* pStatus) noexcept
{
    HangOnPath("stat", pPath);
    return Next<int>("lstat", pPath, pStatus);
}

int lstat64(const char* pPath, struct stat64* pStatus) noexcept
{
    HangOnPath("stat", pPath);
    return Next<int>("lstat64", pPath, pStatus);
}

int statx(int nFolder, const char* pPath, int nFlags, unsigned nMask, struct statx* pStatus) noexcept
{
    HangOnPath("stat", pPath);
    return Next<int>("statx", nFolder, pPath, nFlags, nMask, pStatus);
}

int statvfs(const char* pPath, struct statvfs* pStatus) noexcept
{
    HangOnPath("statvfs", pPath);
    return Next<int>("statvfs", pPath, pStatus);
}

int statvfs64(const char* pPath, struct statvfs64* pStatus) noexcept
{
    HangOnPath("statvfs", pPath);
    return Next<int>("statvfs64", pPath, pStatus);
}

} // extern "C"
