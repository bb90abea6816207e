#pragma once

// As macOS declares them: with a position for forks and with options. Under names that do
// not meet this system's own.

#include <sys/types.h>

#define flistxattr FakeFlistxattr
#define fgetxattr FakeFgetxattr
#define fsetxattr FakeFsetxattr
#define fremovexattr FakeFremovexattr

#define XATTR_FINDERINFO_NAME "com.apple.FinderInfo"
#define XATTR_RESOURCEFORK_NAME "com.apple.ResourceFork"
#define ENOATTR 93

extern "C" {
ssize_t flistxattr(int nDescriptor, char* pNames, size_t nSize, int nOptions);
ssize_t fgetxattr(int nDescriptor, const char* pszName, void* pValue, size_t nSize, u_int32_t nPosition,
                  int nOptions);
int fsetxattr(int nDescriptor, const char* pszName, const void* pValue, size_t nSize, u_int32_t nPosition,
              int nOptions);
int fremovexattr(int nDescriptor, const char* pszName, int nOptions);
}
