#include "copy/CFileAttributes.h"

#include <sys/xattr.h>

static const char USERS[] = "user.";

// Before the names that a Mac gave, on its own file systems; no other one takes it.
static const char MACS[] = "osx.";

qint64 CFileAttributes::List(const char* pszPath, char* pNames, size_t nSize)
{
    return llistxattr(pszPath, pNames, nSize);
}

qint64 CFileAttributes::Get(const char* pszPath, const char* pszName, void* pValue, size_t nSize)
{
    return lgetxattr(pszPath, pszName, pValue, nSize);
}

bool CFileAttributes::SetOne(const char* pszPath, const char* pszName, const void* pValue, size_t nSize)
{
    return lsetxattr(pszPath, pszName, pValue, nSize, 0) == 0;
}

bool CFileAttributes::IsUsers(const QByteArray& baName)
{
    // The others are the system's, and may mean something to the one that runs here.
    return baName.startsWith(USERS) || baName.startsWith(MACS);
}

QByteArray CFileAttributes::NameOfCopy(const QByteArray& baName)
{
    return baName.startsWith(MACS) ? USERS + baName.mid(int(qstrlen(MACS))) : baName;
}
