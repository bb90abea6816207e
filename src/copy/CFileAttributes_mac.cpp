#include "copy/CFileAttributes.h"

#include <cerrno>

// CFileMetadata gives them here: set by the path they would become a second file beside the
// copy on a disk that holds none, without a word.
qint64 CFileAttributes::List(const char* /*pszPath*/, char* /*pNames*/, size_t /*nSize*/) { return 0; }

qint64 CFileAttributes::Get(const char* /*pszPath*/, const char* /*pszName*/, void* /*pValue*/,
                            size_t /*nSize*/)
{
    errno = ENOTSUP;
    return -1;
}

bool CFileAttributes::SetOne(const char* /*pszPath*/, const char* /*pszName*/, const void* /*pValue*/,
                             size_t /*nSize*/)
{
    errno = ENOTSUP;
    return false;
}

bool CFileAttributes::IsUsers(const QByteArray& /*baName*/) { return true; }

QByteArray CFileAttributes::NameOfCopy(const QByteArray& baName) { return baName; }
