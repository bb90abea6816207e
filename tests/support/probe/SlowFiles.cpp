#include "support/probe/HangingCalls.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <dirent.h>
#include <dlfcn.h>
#include <unistd.h>

// Stands in front of the C library's fwrite and opendir: while the file named by
// TARNWICK_SLOW or TARNWICK_SLOW_LIST exists, each block of data or each folder
// of a volume takes the milliseconds that it holds longer. A journey makes and
// removes the files to hold a copy or a count in its middle.
static int SlowMs(const char* pVariable)
{
    const char* pPath = getenv(pVariable);
    FILE* pFile = pPath ? fopen(pPath, "r") : nullptr;
    if (!pFile) {
        return 0;
    }
    int nMs = 0;
    if (fscanf(pFile, "%d", &nMs) != 1) {
        nMs = 0;
    }
    fclose(pFile);
    return nMs;
}

extern "C" size_t fwrite(const void* pData, size_t nSize, size_t nCount, FILE* pFile)
{
    using PFNWrite = size_t (*)(const void*, size_t, size_t, FILE*);
    static const PFNWrite s_pfnWrite = reinterpret_cast<PFNWrite>(dlsym(RTLD_NEXT, "fwrite"));
    const size_t nBlock = 4096;
    HangOnDescriptor("write", fileno(pFile));
    if (nSize * nCount >= nBlock) {
        usleep(useconds_t(SlowMs("TARNWICK_SLOW")) * 1000);
    }
    return s_pfnWrite(pData, nSize, nCount, pFile);
}

extern "C" DIR* opendir(const char* pPath)
{
    using PFNOpen = DIR* (*)(const char*);
    static const PFNOpen s_pfnOpen = reinterpret_cast<PFNOpen>(dlsym(RTLD_NEXT, "opendir"));
    // Folders of the system, in which Qt looks things up, are on no slow disk. Also,
    // a sleep of no time at all takes longer than to open a folder.
    const char VOLUMES[] = "/Volumes/";
    const int nMs = strncmp(pPath, VOLUMES, sizeof VOLUMES - 1) == 0 ? SlowMs("TARNWICK_SLOW_LIST") : 0;
    if (nMs > 0) {
        usleep(useconds_t(nMs) * 1000);
    }
    HangOnPath("opendir", pPath);
    return s_pfnOpen(pPath);
}
