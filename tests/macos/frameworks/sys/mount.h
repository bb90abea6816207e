#pragma once

// What the program uses of the BSD calls that tell of volumes, under names that do
// not meet this system's own.

#define statfs FakeStatfs
#define fstatfs FakeFstatfs
#define getfsstat FakeGetfsstat
#define MNT_RDONLY 0x1
#define MNT_LOCAL 0x1000
#define MNT_WAIT 1
#define MNT_NOWAIT 2

struct statfs
{
    unsigned f_bsize;
    unsigned long long f_blocks;
    unsigned long long f_bavail;
    unsigned f_flags;
    struct
    {
        int val[2];
    } f_fsid;
    char f_fstypename[16];
    char f_mntonname[1024];
    char f_mntfromname[1024];
};

int statfs(const char* pPath, struct statfs* pVolume);
int fstatfs(int nDescriptor, struct statfs* pVolume);
int getfsstat(struct statfs* pVolumes, int nBytes, int nFlags);
