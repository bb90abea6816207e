#include "copy/CSpotSource.h"

#include "copy/CSpotSearch.h"

#include <QtGlobal>

#include <cerrno>
#include <unistd.h>

std::optional<STCopyReason> CSpotSource::Open(const QString& strPath, const STFileState& stState)
{
    m_file.Reset(CCopyPlatform::OpenForRead(strPath, false));
    if (!m_file.IsOpen() && errno == ELOOP) {
        return STCopyReason{ENCopyProblem::SOURCE_REPLACED, QStringLiteral("a link has taken its place")};
    }
    if (!m_file.IsOpen()) {
        return STCopyReason{ENCopyProblem::SOURCE_OPEN, QStringLiteral("open file failed"), errno};
    }
    const std::optional<STFileState> stNow = State();
    if (!stNow || stNow->enKind != ENFileKind::REGULAR) {
        return STCopyReason{ENCopyProblem::SOURCE_REPLACED, QStringLiteral("no longer a file")};
    }
    if (!stNow->IsSameContent(stState)) {
        return stNow->IsSameFile(stState) ? STCopyReason::SourceChanged(stNow->nSize)
                                          : STCopyReason{ENCopyProblem::SOURCE_REPLACED,
                                                         QStringLiteral("another file has taken its place")};
    }
    CCopyPlatform::StopReadAhead(m_file.Get());
    m_direct.Reset(CCopyPlatform::OpenForDirectRead(strPath));
    const std::optional<STFileState> stDirect = CCopyPlatform::GetOpenState(m_direct.Get());
    if (!stDirect || !stDirect->IsSameFile(*stNow)) {
        m_direct.Reset();
    }
    return std::nullopt;
}

static ssize_t ReadAt(int nDescriptor, char* pBuf, qint64 nLen, qint64 nPos)
{
    ssize_t nRead = -1;
    do {
        errno = 0;
        nRead = pread(nDescriptor, pBuf, size_t(nLen), off_t(nPos));
    } while (nRead == -1 && errno == EINTR);
    return nRead;
}

qint64 CSpotSource::Read(const STByteRange& stRange, char* pBuf)
{
    const bool bPage
        = stRange.nFrom % CSpotSearch::SMALL_STEP == 0 && stRange.Bytes() <= CSpotSearch::SMALL_STEP;
    if (bPage && m_direct.IsOpen()) {
        const ssize_t nRead = ReadAt(m_direct.Get(), pBuf, CSpotSearch::SMALL_STEP, stRange.nFrom);
        if (nRead >= 0 || errno != EINVAL) {
            return qBound<qint64>(0, nRead, stRange.Bytes());
        }
        m_direct.Reset();
    }
    return qMax<qint64>(0, ReadAt(m_file.Get(), pBuf, stRange.Bytes(), stRange.nFrom));
}
