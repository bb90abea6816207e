#include "copy/CSourceFile.h"

#include "copy/CCopyPlatform.h"

#include <QFile>

#include <cerrno>
#include <unistd.h>

CSourceFile::CSourceFile() = default;

CSourceFile::~CSourceFile() = default;

void CSourceFile::Open(int nDescriptor)
{
    m_pFile.reset();
    m_stFailure.reset();
    m_descriptor.Reset(nDescriptor);
}

qint64 CSourceFile::ReadAt(QFile& file, char* pBuf, int nLen, qint64 nPos)
{
    if (!file.seek(nPos)) {
        return SEEK_FAILED;
    }
    const qint64 nRead = file.read(pBuf, nLen);
    return nRead < 0 ? READ_FAILED : nRead;
}

qint64 CSourceFile::Read(char* pBuf, int nLen, qint64 nPos)
{
    return m_bTryOnce ? ReadOnce(pBuf, nLen, nPos) : ReadAt(File(), pBuf, nLen, nPos);
}

qint64 CSourceFile::ReadFirst(char* pBuf, int nLen)
{
    const qint64 nRead = ReadHere(pBuf, nLen, 0);
    if (m_bTryOnce || nRead <= 0 || nRead == nLen) {
        return nRead;
    }
    const qint64 nMore = ReadAt(File(), pBuf + nRead, int(nLen - nRead), nRead);
    return nRead + qMax<qint64>(0, nMore);
}

QFile& CSourceFile::File()
{
    if (!m_pFile) {
        m_pFile = std::make_unique<QFile>();
        m_pFile->open(m_descriptor.Get(), QIODevice::ReadOnly | QIODevice::Unbuffered,
                      QFileDevice::DontCloseHandle);
    }
    return *m_pFile;
}

/** Read by one call to the system, which does not try a bad place again as QFile does. */
qint64 CSourceFile::ReadOnce(char* pBuf, int nLen, qint64 nPos)
{
    if (m_stFailure) {
        errno = m_stFailure->nError;
        return m_stFailure->nResult;
    }
    return File().seek(nPos) ? ReadHere(pBuf, nLen, nPos) : SEEK_FAILED;
}

/** The same where the file stands, which is at nPos. */
qint64 CSourceFile::ReadHere(char* pBuf, int nLen, qint64 nPos)
{
    ssize_t nRead = -1;
    do {
        errno = 0;
        nRead = read(m_descriptor.Get(), pBuf, size_t(nLen));
    } while (nRead < 0 && errno == EINTR);
    const int nError = errno;
    if (nRead < 0) {
        m_stFailure = STFailure{READ_FAILED, nError};
    } else if (nRead < nLen) {
        // Short of what the file has, the rest of the piece was tried and failed.
        const std::optional<STFileState> stNow = CCopyPlatform::GetOpenState(m_descriptor.Get());
        if (stNow && nRead > 0 && nPos + nRead < stNow->nSize) {
            m_stFailure = STFailure{READ_FAILED, EIO};
        }
    }
    errno = nError;
    return nRead < 0 ? READ_FAILED : nRead;
}
