// Lets a file system in user space mount an image file that would mount block
// devices only: it asks the kernel for "fuseblk", and gets "fuse".

#include <dlfcn.h>
#include <string>
#include <sys/mount.h>

static const char BLOCK_TYPE[] = "fuseblk";
static const char SIZE_OPTION[] = ",blksize="; // an option of block devices only

static std::string WithoutBlockSize(std::string strOptions)
{
    const size_t nFrom = strOptions.find(SIZE_OPTION);
    if (nFrom != std::string::npos) {
        const size_t nEnd = strOptions.find(',', nFrom + 1);
        strOptions.erase(nFrom, nEnd == std::string::npos ? nEnd : nEnd - nFrom);
    }
    return strOptions;
}

extern "C" int mount(const char* pszSource, const char* pszPoint, const char* pszType, unsigned long nFlags,
                     const void* pOptions) noexcept
{
    using Mount = int (*)(const char*, const char*, const char*, unsigned long, const void*);
    const auto pfnMount = reinterpret_cast<Mount>(dlsym(RTLD_NEXT, "mount"));
    if (pszType == nullptr || std::string(pszType).rfind(BLOCK_TYPE, 0) != 0 || pOptions == nullptr) {
        return pfnMount(pszSource, pszPoint, pszType, nFlags, pOptions);
    }
    const std::string strOptions = WithoutBlockSize(static_cast<const char*>(pOptions));
    return pfnMount(pszSource, pszPoint, "fuse", nFlags, strOptions.c_str());
}
