#include "copy/CFileAttributes.h"

#include <sys/xattr.h>

qint64 CFileAttributes::List(const char* pszPath, char* pNames, size_t nSize)
{
    return listxattr(pszPath, pNames, nSize, XATTR_NOFOLLOW);
}

qint64 CFileAttributes::Get(const char* pszPath, const char* pszName, void* pValue, size_t nSize)
{
    return getxattr(pszPath, pszName, pValue, nSize, 0, XATTR_NOFOLLOW);
}

bool CFileAttributes::SetOne(const char* pszPath, const char* pszName, const void* pValue, size_t nSize)
{
    return setxattr(pszPath, pszName, pValue, nSize, 0, XATTR_NOFOLLOW) == 0;
}

bool CFileAttributes::IsUsers(const QByteArray& baName)
{
    // What is left out is refused to programs, and says nothing about the file.
    return baName != "com.apple.provenance" && baName != "com.apple.macl" && baName != "com.apple.rootless";
}

QByteArray CFileAttributes::NameOfCopy(const QByteArray& baName) { return baName; }
