#pragma once

// What macOS has of calls on files that this system has not.

#include <sys/stat.h>
#include <sys/types.h>

#define st_atimespec st_atim
#define st_mtimespec st_mtim
// This system keeps the place free, and gives 0. What its headers have for an
// architecture that is not its own is only compiled.
#if defined(__APPLE__) && defined(__arm64__)
#define st_flags __glibc_reserved4
#else
#define st_flags __glibc_reserved[0]
#endif
#define SF_DATALESS 0x40000000

#define IOPOL_TYPE_VFS_MATERIALIZE_DATALESS_FILES 3
#define IOPOL_SCOPE_PROCESS 0
#define IOPOL_MATERIALIZE_DATALESS_FILES_OFF 1
extern "C" int setiopolicy_np(int nType, int nScope, int nPolicy);

#define UF_NODUMP 0x00000001
#define UF_IMMUTABLE 0x00000002
#define UF_APPEND 0x00000004
#define UF_HIDDEN 0x00008000
#define SF_IMMUTABLE 0x00020000
#define SF_APPEND 0x00040000
#define fchflags FakeFchflags
extern "C" int fchflags(int nDescriptor, __uint32_t nFlags);

#define SYNC_VOLUME_FULLSYNC 0x01
#define SYNC_VOLUME_WAIT 0x02
extern "C" int sync_volume_np(const char* pszPath, int nFlags);
extern "C" int fsync_volume_np(int nDescriptor, int nFlags);

#define F_FULLFSYNC 51
#define F_NOCACHE 48
#define F_RDAHEAD 45
#define F_RDADVISE 44
#define F_LOG2PHYS_EXT 65
#define F_PREALLOCATE 42
#define F_ALLOCATEALL 4
#define F_PEOFPOSMODE 3
struct fstore_t
{
    unsigned fst_flags;
    int fst_posmode;
    off_t fst_offset;
    off_t fst_length;
    off_t fst_bytesalloc;
};
struct log2phys
{
    unsigned l2p_flags;
    off_t l2p_contigbytes;
    off_t l2p_devoffset;
};
struct radvisory
{
    off_t ra_offset;
    int ra_count;
};
