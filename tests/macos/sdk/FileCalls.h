#pragma once

// What macOS's fcntl() takes that this system's does not.

#include <sys/types.h>

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
