#pragma once

// As macOS declares them: with a position for forks and with options.

#include <sys/types.h>

#define XATTR_NOFOLLOW 0x0001

extern "C" {
ssize_t getxattr(const char* pszPath, const char* pszName, void* pValue, size_t nSize, unsigned nPosition,
                 int nOptions);
ssize_t listxattr(const char* pszPath, char* pNames, size_t nSize, int nOptions);
int setxattr(const char* pszPath, const char* pszName, const void* pValue, size_t nSize, unsigned nPosition,
             int nOptions);
}
