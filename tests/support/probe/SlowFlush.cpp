#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <dlfcn.h>
#include <unistd.h>

static const useconds_t LOOK_US = 10000;

/** The number in the file that TARNWICK_FLUSH names; -1 when there is no file. */
static int Order()
{
    const char* pszPath = getenv("TARNWICK_FLUSH");
    FILE* pFile = pszPath != nullptr ? fopen(pszPath, "r") : nullptr;
    if (pFile == nullptr) {
        return -1;
    }
    int nOrder = 0;
    if (fscanf(pFile, "%d", &nOrder) != 1) {
        nOrder = 0;
    }
    fclose(pFile);
    return nOrder;
}

// Stands in front of the C library's syncfs: while the file is there with 0 in it,
// the disk goes on writing; another number is the error that it ends with.
extern "C" int syncfs(int nDescriptor) noexcept
{
    int nOrder = Order();
    while (nOrder == 0) {
        usleep(LOOK_US);
        nOrder = Order();
    }
    if (nOrder > 0) {
        errno = nOrder;
        return -1;
    }
    using PFNSync = int (*)(int);
    static const PFNSync s_pfnSync = reinterpret_cast<PFNSync>(dlsym(RTLD_NEXT, "syncfs"));
    return s_pfnSync(nDescriptor);
}
