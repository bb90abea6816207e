#include "copy/CSpotCopy.h"

#include "copy/CCopyControl.h"
#include "log/CClock.h"

#include <QFile>
#include <QFileInfo>
#include <QThread>

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <unistd.h>

static const unsigned long SPOT_SLEEP_US = 100; // keeps the machine responsive
static const qint64 FILL_STEP = qint64(8) * 1024 * 1024;

// A read that takes longer has met a place that the disk has trouble with.
static const qint64 SLOW_MS = 500;

// A read that fails at once takes time all the same, with all that is done around it.
static const qint64 LEAST_MS = 1;

static const int RANGES = 20; // that the report names
static const int LOGGED_RANGES = 200; // that the log names

CSpotCopy::CSpotCopy(CCopyControl& control, const STDamagedFile& stFile,
                     const std::optional<STFileState>& stTarget, const STSpotLimits& stLimits)
    : m_control(control)
    , m_stFile(stFile)
    , m_stTarget(stTarget)
    , m_stLimits(stLimits)
    , m_strName(QFileInfo(stFile.stOutcome.strPath).fileName())
    , m_strFolder(QFileInfo(stFile.strTarget).path())
    , m_search(stFile.stOutcome.nCopied, stFile.stState.nSize)
    , m_nUntold(qMax<qint64>(0, stFile.stState.nSize - stFile.stOutcome.nTold))
    , m_stOutcome(stFile.stOutcome)
{
}

STCopyOutcome CSpotCopy::Finish()
{
    if (OpenSource() && OpenTarget() && MakeBuffer()) {
        MoveBytes();
    }
    return m_stOutcome;
}

bool CSpotCopy::OpenSource()
{
    m_control.StepBegins(ENCopyStep::READING);
    const std::optional<STCopyReason> stReason = m_source.Open(m_stFile.strSource, m_stFile.stState);
    if (stReason) {
        m_bDiskLost = IsDiskLost(stReason->nError) || stReason->nError == EIO;
        Fail(*stReason);
    }
    return !stReason;
}

/** Opens the copy as it was left: it is neither made anew nor cut short. */
bool CSpotCopy::OpenTarget()
{
    m_control.StepBegins(ENCopyStep::WRITING);
    m_target.Reset(CCopyPlatform::OpenForWrite(m_stFile.strTarget));
    const int nError = errno;
    if (!m_target.IsOpen() && !CCopyPlatform::Exists(m_strFolder)) {
        Fail(STCopyReason::DestinationGone());
        return false;
    }
    if (!m_target.IsOpen()) {
        Fail({ENCopyProblem::TARGET_WRITE, QStringLiteral("its target cannot be opened again"), nError,
              m_stFile.strTarget});
        return false;
    }
    const std::optional<STFileState> stNow = CCopyPlatform::GetOpenState(m_target.Get());
    if (!stNow || !IsTarget(*stNow)) {
        Fail({ENCopyProblem::TARGET_WRITE, QStringLiteral("something else is in the place of its target"),
              EEXIST, m_stFile.strTarget});
        return false;
    }
    return true;
}

/** Whether that is the copy that was begun. */
bool CSpotCopy::IsTarget(const STFileState& stNow) const
{
    if (stNow.enKind != ENFileKind::REGULAR || stNow.nSize != m_stFile.stOutcome.nCopied) {
        return false;
    }
    // Not every file system gives a file the same number each time that it is looked up.
    return !m_stTarget || m_stTarget->IsSameFile(stNow) || m_stTarget->IsSameContent(stNow);
}

bool CSpotCopy::MakeBuffer()
{
    void* pBuf = nullptr;
    if (posix_memalign(&pBuf, size_t(CSpotSearch::SMALL_STEP), size_t(CSpotSearch::LARGE_STEP)) != 0) {
        Fail({ENCopyProblem::NO_MEMORY, QStringLiteral("not enough memory")});
        return false;
    }
    m_pBuffer.reset(static_cast<char*>(pBuf));
    return true;
}

void CSpotCopy::MoveBytes()
{
    if (m_stLimits.bOneTry && m_search.Next() && !IsDiskThere()) {
        return; // as it was left: zeros for all the rest would help nobody
    }
    while (!IsOver() || JumpToEnd()) {
        const std::optional<STByteRange> stNext = m_search.Next();
        if (!stNext) {
            break;
        }
        if (!MayGoOn() || !MoveRange(*stNext)) {
            return;
        }
    }
    if ((m_bReadAny || !m_bDiskLost) && FillUp()) {
        Conclude();
    }
}

/** Tries the end of the file, which is as far from the bad place as can be. */
bool CSpotCopy::IsDiskThere()
{
    const qint64 nSize = m_stFile.stState.nSize;
    return MayGoOn() && Read({CSpotSearch::LastStep(nSize), nSize}) > 0;
}

/** Before each chunk. */
bool CSpotCopy::MayGoOn()
{
    if (m_control.WaitWhilePaused()) {
        return true;
    }
    Fail({ENCopyProblem::STOPPED, QStringLiteral("the copy was stopped")});
    return false;
}

/** Whether no more is to be risked. What goes well goes on, as it costs nothing. */
bool CSpotCopy::IsOver() const { return m_bDiskLost || (m_bTrouble && m_nBadMs >= m_stLimits.nMs); }

/** A disk may spend all the time on its first bad sector, and most of the file lies behind it. */
bool CSpotCopy::JumpToEnd() { return m_stLimits.bToEnd && !m_bDiskLost && m_search.JumpToEnd(); }

bool CSpotCopy::MoveRange(const STByteRange& stRange)
{
    const qint64 nRead = Read(stRange);
    if (nRead == 0 && errno == 0) {
        Fail({ENCopyProblem::SOURCE_SHORTER, QStringLiteral("became shorter while it was copied")});
        return false;
    }
    return Write(stRange.nFrom, nRead) && ChunkDone(m_search.Done(nRead));
}

qint64 CSpotCopy::Read(const STByteRange& stRange)
{
    m_control.StepBegins(ENCopyStep::READING);
    const qint64 nBeginMs = CClock::SteadyMs();
    const qint64 nRead = m_source.Read(stRange, m_pBuffer.get());
    const int nError = errno;
    const qint64 nMs = CClock::SteadyMs() - nBeginMs;
    m_bTried = true;
    m_bReadAny = m_bReadAny || nRead > 0;
    m_bTrouble = nRead < stRange.Bytes() || nMs >= SLOW_MS;
    m_nBadMs += m_bTrouble ? qMax(nMs, LEAST_MS) : 0;
    if (nRead == 0 && nError != 0) {
        m_stOutcome.stReason.nError = nError;
        m_bDiskLost = IsDiskLost(nError);
    }
    errno = nError;
    return nRead;
}

/** Writes the front of the buffer to its place in the target. */
bool CSpotCopy::Write(qint64 nPos, qint64 nLen, bool bZeros)
{
    qint64 nDone = 0;
    while (nDone < nLen) {
        m_control.StepBegins(ENCopyStep::WRITING);
        errno = 0;
        const ssize_t nWritten
            = pwrite(m_target.Get(), m_pBuffer.get() + nDone, size_t(nLen - nDone), off_t(nPos + nDone));
        if (nWritten > 0) {
            nDone += nWritten;
            if (!bZeros) {
                m_stOutcome.nCopied += nWritten;
                m_control.BytesWritten(nWritten);
            }
        } else if (errno != EINTR && !(IsNoRoom(errno) && m_control.MakeRoom(m_nUntold))) {
            Fail({ENCopyProblem::TARGET_WRITE, QStringLiteral("its target cannot be written"), errno});
            return false;
        }
    }
    return true;
}

/** After each chunk; false when the destination is gone. */
bool CSpotCopy::ChunkDone(qint64 nBytes)
{
    if (!CCopyPlatform::Exists(m_strFolder)) {
        Fail(STCopyReason::DestinationGone());
        return false;
    }
    const qint64 nTold = qMin(nBytes, m_nUntold);
    m_nUntold -= nTold;
    m_stOutcome.nTold += nTold;
    m_control.ChunkDone(m_strName, nTold);
    QThread::usleep(SPOT_SLEEP_US);
    return true;
}

/** Gives the target its full size; what was not written reads as zeros. */
bool CSpotCopy::FillUp()
{
    const std::optional<STFileState> stNow = CCopyPlatform::GetOpenState(m_target.Get());
    qint64 nSize = stNow ? stNow->nSize : m_stFile.stOutcome.nCopied;
    // In steps, as some file systems write all the zeros.
    while (nSize < m_stFile.stState.nSize) {
        const qint64 nStep = qMin(FILL_STEP, m_stFile.stState.nSize - nSize);
        if (!MayGoOn() || !Grow(nSize, nStep) || !ChunkDone(nStep)) {
            return false;
        }
        nSize += nStep;
    }
    return m_nUntold == 0 || ChunkDone(m_nUntold);
}

/** Adds nStep zeros behind nSize. */
bool CSpotCopy::Grow(qint64 nSize, qint64 nStep)
{
    m_control.StepBegins(ENCopyStep::WRITING);
    if (ftruncate(m_target.Get(), off_t(nSize + nStep)) == 0) {
        return true;
    }
    // Not every file system can make a file longer without writing.
    std::memset(m_pBuffer.get(), 0, size_t(CSpotSearch::LARGE_STEP));
    for (qint64 nPos = nSize; nPos < nSize + nStep; nPos += CSpotSearch::LARGE_STEP) {
        if (!Write(nPos, qMin(CSpotSearch::LARGE_STEP, nSize + nStep - nPos), true)) {
            return false;
        }
    }
    return true;
}

/** Says what became of the file, and gives it the source's times. */
void CSpotCopy::Conclude()
{
    m_control.StepBegins(ENCopyStep::WRITING);
    const CByteRanges untried = m_search.Untried();
    CByteRanges damage = m_search.Bad();
    damage.Add(untried);
    const std::optional<STCopyReason> stLost
        = m_control.KeepMetadata(m_strName, m_source.Descriptor(), m_target.Get());
    const bool bTimes = CCopyPlatform::KeepTimes(m_target.Get(), m_stFile.stState);
    const int nTimesError = errno;
    m_control.KeepLast(m_source.Descriptor(), m_target.Get());
    if (!damage.IsEmpty()) {
        const int nError = m_stOutcome.stReason.nError;
        Fail({ENCopyProblem::DAMAGED, DamageText(damage, untried), nError != 0 ? nError : EIO, QString(),
              damage.Text(RANGES)});
    } else if (stLost) {
        Fail(*stLost);
    } else if (!bTimes) {
        Fail({ENCopyProblem::TIME_LOST, QStringLiteral("its time cannot be kept"), nTimesError});
    } else {
        m_stOutcome.enEnd = ENCopyEnd::WHOLE;
        m_stOutcome.stReason = STCopyReason();
    }
    CompareSource();
    // Some file systems tell only now that the bytes found no room.
    if (!m_control.FlushTarget(m_target.Get())) {
        Fail(STCopyReason::NotOnDisk(errno));
    } else if (m_target.Close() != 0) {
        Fail({ENCopyProblem::TARGET_CLOSE, QStringLiteral("its target cannot be closed"), errno});
    }
}

QString CSpotCopy::DamageText(const CByteRanges& damage, const CByteRanges& untried) const
{
    const QString strText = QStringLiteral("parts of it cannot be read, zeros stand for the bytes ")
        + damage.Text(LOGGED_RANGES);
    return untried.IsEmpty()
        ? strText
        : strText + QStringLiteral("; not tried any more: ") + untried.Text(LOGGED_RANGES);
}

/** Looks whether a file that was read to its end is still what was copied. */
void CSpotCopy::CompareSource()
{
    const std::optional<STFileState> stEnd = m_source.State();
    if (!stEnd || m_stOutcome.stReason.enProblem == ENCopyProblem::DAMAGED) {
        return;
    }
    if (stEnd->bRemoved) {
        Fail({ENCopyProblem::SOURCE_REMOVED, QStringLiteral("was removed while it was copied")});
    } else if (!stEnd->IsSameContent(m_stFile.stState)) {
        Fail(STCopyReason::SourceChanged(stEnd->nSize));
    }
}

void CSpotCopy::Fail(const STCopyReason& stReason)
{
    const bool bStopped = stReason.enProblem == ENCopyProblem::STOPPED;
    m_stOutcome.enEnd = bStopped ? ENCopyEnd::STOPPED : ENCopyEnd::NOT_WHOLE;
    m_stOutcome.stReason = stReason;
}
