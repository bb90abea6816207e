#include <cstdio>
#include <cstdlib>
#include <dlfcn.h>
#include <unistd.h>

// Stands in front of the C library's fwrite: while the file named by
// TARNWICK_SLOW exists, each block of data takes the milliseconds that it holds
// longer. A journey makes and removes the file to hold a copy in its middle.
static int SlowMs()
{
    const char* pPath = getenv("TARNWICK_SLOW");
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
    if (nSize * nCount >= nBlock) {
        usleep(useconds_t(SlowMs()) * 1000);
    }
    return s_pfnWrite(pData, nSize, nCount, pFile);
}
