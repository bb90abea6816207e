#pragma once

// What the program asks of files and volumes by lists of attributes. On macOS the calls
// stand in <unistd.h>.

#include <sys/types.h>

typedef u_int32_t attrgroup_t;
struct attrlist
{
    u_short bitmapcount;
    u_int16_t reserved;
    attrgroup_t commonattr;
    attrgroup_t volattr;
    attrgroup_t dirattr;
    attrgroup_t fileattr;
    attrgroup_t forkattr;
};
typedef u_int32_t vol_capabilities_set_t[4];
typedef struct vol_capabilities_attr
{
    vol_capabilities_set_t capabilities;
    vol_capabilities_set_t valid;
} vol_capabilities_attr_t;

#define ATTR_BIT_MAP_COUNT 5
#define ATTR_CMN_CRTIME 0x00000200
#define ATTR_VOL_INFO 0x80000000
#define ATTR_VOL_CAPABILITIES 0x00020000
#define VOL_CAPABILITIES_FORMAT 0
#define VOL_CAPABILITIES_INTERFACES 1
#define VOL_CAP_FMT_NO_PERMISSIONS 0x00400000
#define VOL_CAP_INT_EXTENDED_SECURITY 0x00000400
#define VOL_CAP_INT_EXTENDED_ATTR 0x00004000

extern "C" {
int getattrlist(const char* pszPath, void* pWanted, void* pAnswer, size_t nSize, unsigned nOptions);
int fgetattrlist(int nDescriptor, void* pWanted, void* pAnswer, size_t nSize, unsigned nOptions);
int setattrlist(const char* pszPath, void* pWanted, void* pValues, size_t nSize, unsigned nOptions);
int fsetattrlist(int nDescriptor, void* pWanted, void* pValues, size_t nSize, unsigned nOptions);
}
