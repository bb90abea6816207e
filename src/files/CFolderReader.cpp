#include "files/CFolderReader.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

static bool IsDotOrDotDot(const char* pszName)
{
    return std::strcmp(pszName, ".") == 0 || std::strcmp(pszName, "..") == 0;
}

CFolderReader::CFolderReader(const char* pszPath)
    : m_pFolder(opendir(pszPath))
    , m_nError(m_pFolder ? 0 : errno)
{
}

CFolderReader::CFolderReader(int nParent, const char* pszName)
{
    const int nDescriptor = openat(nParent, pszName, O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
    if (nDescriptor != -1) {
        m_pFolder.reset(fdopendir(nDescriptor));
    }
    if (m_pFolder) {
        return;
    }
    m_nError = errno;
    if (nDescriptor != -1) {
        close(nDescriptor);
    }
}

bool CFolderReader::IsOpen() const { return m_pFolder != nullptr; }

int CFolderReader::Descriptor() const { return m_pFolder ? dirfd(m_pFolder.get()) : -1; }

bool CFolderReader::Next()
{
    if (!m_pFolder) {
        return false;
    }
    do {
        errno = 0; // the end of the folder leaves it alone
        m_pEntry = readdir(m_pFolder.get());
    } while (m_pEntry != nullptr && IsDotOrDotDot(m_pEntry->d_name));
    if (m_pEntry == nullptr) {
        m_nError = errno;
    }
    return m_pEntry != nullptr;
}

int CFolderReader::Error() const { return m_nError; }

const char* CFolderReader::Name() const { return m_pEntry->d_name; }

bool CFolderReader::IsLink() const
{
    if (m_pEntry->d_type != DT_UNKNOWN) {
        return m_pEntry->d_type == DT_LNK;
    }
    struct stat status;
    return fstatat(Descriptor(), Name(), &status, AT_SYMLINK_NOFOLLOW) == 0 && S_ISLNK(status.st_mode);
}

bool CFolderReader::IsKnownFolder() const { return m_pEntry->d_type == DT_DIR; }

bool CFolderReader::MayBeFile() const { return m_pEntry->d_type == DT_REG || m_pEntry->d_type == DT_UNKNOWN; }

bool CFolderReader::IsFolder() const
{
    if (m_pEntry->d_type != DT_UNKNOWN && m_pEntry->d_type != DT_LNK) {
        return m_pEntry->d_type == DT_DIR;
    }
    struct stat status;
    return fstatat(Descriptor(), Name(), &status, 0) == 0 && S_ISDIR(status.st_mode);
}
