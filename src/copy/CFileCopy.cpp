#include "copy/CFileCopy.h"

#include "copy/CCloudStandIn.h"
#include "copy/CCopyControl.h"
#include "files/CFileName.h"

#include <QDebug>
#include <QElapsedTimer>
#include <QThread>

#include <cerrno>
#include <new>
#include <unistd.h>
#include <utility>

// A chunk goes through the front of its buffer in pieces: what was read is then
// still in the processor's cache when it is written.
static const qint64 PIECE = qint64(256) * 1024;

static const unsigned long CHUNK_SLEEP_US = 100; // keeps the machine responsive

CFileCopy::CFileCopy(const QFileInfo& source, QString strFolder, qint64 nChunk, CCopyControl& control,
                     std::optional<bool> bListedAsLink)
    : m_control(control)
    , m_listed(source)
    , m_strName(source.fileName())
    , m_strFolder(std::move(strFolder))
    , m_nChunk(qMax<qint64>(nChunk, 1))
    , m_bListedAsLink(bListedAsLink)
{
    m_stOutcome.strPath = source.absoluteFilePath();
}

STCopyOutcome CFileCopy::Copy(const QString& strTarget)
{
    m_strTarget = strTarget;
    CopyOnce();
    // Where the disk says only at the end that the bytes found no room, all are written again.
    while (m_stOutcome.stReason.enProblem == ENCopyProblem::TARGET_CLOSE
           && IsNoRoom(m_stOutcome.stReason.nError) && m_control.MakeRoom(0)) {
        BeginAnew();
        CopyOnce();
    }
    m_stOutcome.nTold = m_nTold;
    return m_stOutcome;
}

void CFileCopy::CopyOnce()
{
    if (LookAtSource() && OpenTarget() && OpenSource()) {
        MoveBytes();
    }
    Finish();
}

void CFileCopy::BeginAnew()
{
    m_control.BytesWritten(-m_stOutcome.nCopied);
    m_stOutcome.enEnd = ENCopyEnd::WHOLE;
    m_stOutcome.stReason = STCopyReason();
    m_stOutcome.nCopied = 0;
    m_nOffset = 0;
    m_source.Open(-1);
}

/** Looks at the source without opening it, as opening some may hang or set something off. */
bool CFileCopy::LookAtSource()
{
    m_control.StepBegins(ENCopyStep::READING);
    m_stFound = CCopyPlatform::GetEntryState(m_stOutcome.strPath);
    m_bLink = m_stFound && m_stFound->enKind == ENFileKind::LINK;
    if (m_bLink) {
        if (m_bListedAsLink == false) {
            m_stOutcome.nExpected = m_listed.size();
            Fail(ENCopyProblem::SOURCE_REPLACED, QStringLiteral("a link has taken its place"));
            return false;
        }
        const quint64 nDevice = m_stFound->nDevice;
        m_stFound = CCopyPlatform::GetPathState(m_stOutcome.strPath);
        m_stOutcome.bLeavesVolume = m_stFound && m_stFound->nDevice != nDevice;
    }
    if (m_stFound && m_stFound->bOnlyInCloud) {
        m_stOutcome.nExpected = 0;
        Fail(STCopyReason::OnlyInCloud());
        return false;
    }
    const bool bFile = m_stFound && m_stFound->enKind == ENFileKind::REGULAR;
    m_stOutcome.nExpected = bFile ? m_stFound->nSize : m_listed.size();
    if (m_stFound && m_stFound->enKind == ENFileKind::SPECIAL) {
        Fail(ENCopyProblem::SPECIAL_FILE, QStringLiteral("a pipe, socket or device"));
        return false;
    }
    return true;
}

bool CFileCopy::OpenTarget()
{
    m_control.StepBegins(ENCopyStep::WRITING);
    m_pTarget.reset(TargetFile());
    if (m_stOutcome.enEnd != ENCopyEnd::WHOLE) {
        return false;
    }
    if (!m_pTarget) {
        const int nError = errno;
        if (CCopyPlatform::Exists(m_strFolder)) {
            Fail({ENCopyProblem::TARGET_CREATE, QStringLiteral("its target cannot be created"), nError,
                  m_strTarget});
        } else {
            Fail(STCopyReason::DestinationGone());
        }
        return false;
    }
    // The pieces are large already; a buffer between would copy them once more.
    setvbuf(m_pTarget.get(), nullptr, _IONBF, 0);
    return true;
}

/** The open target; null when it cannot be had, with the reason in errno or already told. */
FILE* CFileCopy::TargetFile()
{
    FILE* pFile = m_made.IsOpen() ? AsFile(m_made.Release()) : nullptr;
    if (pFile == nullptr && m_fnOther) {
        pFile = CreateNewTarget();
    }
    m_fnOther = nullptr; // from now on the name is the copy's own
    return pFile != nullptr || m_stOutcome.enEnd != ENCopyEnd::WHOLE ? pFile : CreateTarget();
}

/** Opens the target if nothing has its name; else m_strTarget is another one afterwards. */
FILE* CFileCopy::CreateNewTarget()
{
    const int nDescriptor = CCopyPlatform::CreateNew(CFileName::Encode(m_strTarget));
    if (nDescriptor != -1) {
        return AsFile(nDescriptor);
    }
    if (const std::optional<STCopyReason> stReason = m_fnOther(m_strTarget)) {
        Fail(*stReason);
    }
    return nullptr;
}

/** Null when there is no memory for it. */
FILE* CFileCopy::AsFile(int nDescriptor)
{
    FILE* const pFile = fdopen(nDescriptor, "wb");
    if (pFile == nullptr) {
        close(nDescriptor);
    }
    return pFile;
}

/** Opens the target, whatever was in it before. */
FILE* CFileCopy::CreateTarget()
{
    const QByteArray baTarget = CFileName::Encode(m_strTarget);
    FILE* pFile = fopen(baTarget.constData(), "wb");
    while (pFile == nullptr && IsNoRoom(errno) && m_control.MakeRoom(0)) {
        pFile = fopen(baTarget.constData(), "wb");
    }
    if (pFile != nullptr) {
        CCopyPlatform::KeepFromChildren(fileno(pFile));
    }
    return pFile;
}

bool CFileCopy::OpenSource()
{
    m_control.StepBegins(ENCopyStep::READING);
    m_source.Open(CCopyPlatform::OpenForRead(m_stOutcome.strPath, m_bLink || !m_stFound));
    const int nError = errno;
    if (m_source.Descriptor() == -1 && nError == ELOOP && !m_bLink && m_stFound) {
        Fail(ENCopyProblem::SOURCE_REPLACED, QStringLiteral("a link has taken its place"));
        return false;
    }
    if (m_source.Descriptor() == -1) {
        qDebug("open file failed");
        Fail(ENCopyProblem::SOURCE_OPEN, QStringLiteral("open file failed"), nError);
        return false;
    }
    m_bSmall = IsSmall();
    m_bSettled = false;
    if (m_bSmall) {
        m_stBegin = *m_stFound;
    } else if (!LookAtOpened()) {
        return false;
    }
    m_control.SourceOpened(m_stOutcome.strPath, m_stBegin.nDevice, m_source.Descriptor());
    // Not zeroed: for a small file that would cost more than the copy itself.
    m_pBuffer.reset(new (std::nothrow) char[size_t(m_nChunk)]);
    if (!m_pBuffer) {
        Fail(ENCopyProblem::NO_MEMORY, QStringLiteral("not enough memory"));
    }
    return bool(m_pBuffer);
}

/** Whether the source was a file of one piece when it was looked at. */
bool CFileCopy::IsSmall() const
{
    return m_stFound && m_stFound->enKind == ENFileKind::REGULAR && m_stFound->nSize > 0
        && m_stFound->nSize <= qMin(PIECE, m_nChunk);
}

/** Looks at what was opened: whether it is what was looked at before, and its size. */
bool CFileCopy::LookAtOpened()
{
    const std::optional<STFileState> stState = CCopyPlatform::GetOpenState(m_source.Descriptor());
    if (!stState || stState->enKind != ENFileKind::REGULAR) {
        Fail(ENCopyProblem::SOURCE_REPLACED, QStringLiteral("no longer a file"));
        return false;
    }
    m_stBegin = *stState;
    if (!IsSameFile()) {
        Fail(ENCopyProblem::SOURCE_REPLACED, QStringLiteral("another file has taken its place"));
        return false;
    }
    m_stOutcome.nExpected = m_stBegin.nSize;
    return true;
}

/** Whether what was opened is what was looked at. */
bool CFileCopy::IsSameFile() const
{
    // Not every file system gives a file the same number each time that it is looked up.
    return !m_stFound || m_stFound->IsSameFile(m_stBegin) || m_stFound->IsSameContent(m_stBegin);
}

void CFileCopy::MoveBytes()
{
    while (m_nOffset < m_stOutcome.nExpected) {
        if (!m_control.WaitWhilePaused()) {
            Fail(ENCopyProblem::STOPPED, QStringLiteral("the copy was stopped"));
            return;
        }
        const qint64 nRemaining = m_stOutcome.nExpected - m_nOffset;
        const std::optional<qint64> nMoved = MoveChunk(qMin(nRemaining, m_nChunk));
        if (!nMoved) {
            return;
        }
        if (!CCopyPlatform::Exists(m_strFolder)) {
            Fail(STCopyReason::DestinationGone());
            return;
        }
        if (*nMoved == 0) {
            Fail(ENCopyProblem::SOURCE_SHORTER, QStringLiteral("became shorter while it was copied"));
        }
        // An empty read is the end of a file that became shorter; counting the
        // rest as done keeps the percentage right for the files that follow.
        const qint64 nStep = *nMoved > 0 ? *nMoved : nRemaining;
        m_nOffset += nStep;
        // A file that began anew is not counted twice.
        m_control.ChunkDone(m_strName, qMax<qint64>(0, m_nOffset - m_nTold));
        m_nTold = qMax(m_nTold, m_nOffset);
        QThread::usleep(CHUNK_SLEEP_US);
    }
}

/** Moves up to nLen bytes and returns their number, or nothing when it failed. */
std::optional<qint64> CFileCopy::MoveChunk(qint64 nLen)
{
    qint64 nMoved = 0;
    while (nMoved < nLen) {
        const int nPiece = int(qMin(nLen - nMoved, PIECE));
        const qint64 nRead = m_bSmall ? ReadSmall(nPiece) : ReadPiece(nPiece, m_nOffset + nMoved);
        const int nError = errno;
        if (m_stOutcome.enEnd != ENCopyEnd::WHOLE) {
            return std::nullopt;
        }
        if (nRead < 0 && nMoved > 0) {
            // As with one large read, what came before the bad place is a short
            // chunk of its own, and the next chunk meets the failure at its start.
            return nMoved;
        }
        if (nRead < 0 && nError == EDEADLK) { // by which a system says that it would have to fetch it
            Fail(STCopyReason::OnlyInCloud());
            return std::nullopt;
        }
        if (nRead < 0) {
            const QString strLine = QStringLiteral("ReadFile ret = ") + QString::number(nRead);
            qDebug().noquote() << strLine;
            Fail(ENCopyProblem::SOURCE_READ, strLine, nError);
            return std::nullopt;
        }
        if (!Write(nRead)) {
            return std::nullopt;
        }
        nMoved += nRead;
        if (nRead < nPiece) {
            break;
        }
    }
    return nMoved;
}

/**
 * ReadPiece for all of a small file, which is looked at afterwards: when it is as it was before it
 * was opened, then what was read is the whole of it, and what becomes of it later is
 * nothing to the copy. Else it is dealt with as any other, from its beginning.
 */
qint64 CFileCopy::ReadSmall(int nLen)
{
    const qint64 nRead = ReadPiece(nLen, 0);
    const int nError = errno;
    m_bSmall = false;
    const std::optional<STFileState> stNow = CCopyPlatform::GetOpenState(m_source.Descriptor());
    const bool bSame = stNow && stNow->enKind == ENFileKind::REGULAR && !stNow->bRemoved
        && stNow->IsSameContent(*m_stFound);
    m_bSettled = bSame && nRead == nLen;
    if (!bSame && LookAtOpened() && nRead >= 0) {
        return ReadPiece(nLen, 0);
    }
    errno = nError;
    return nRead;
}

/** Reads up to nLen bytes from nPos, as CSourceFile does, and tells how long it took. */
qint64 CFileCopy::ReadPiece(int nLen, qint64 nPos)
{
    m_control.StepBegins(ENCopyStep::READING);
    QElapsedTimer timer;
    timer.start();
    errno = 0;
    const qint64 nResult
        = m_bSmall ? m_source.ReadFirst(m_pBuffer.get(), nLen) : m_source.Read(m_pBuffer.get(), nLen, nPos);
    const int nError = errno;
    m_control.SourceRead(nResult, timer.nsecsElapsed() / 1000);
    errno = nError;
    return nResult;
}

/** Writes the front of the buffer to the target. */
bool CFileCopy::Write(qint64 nLen)
{
    const size_t nAll = size_t(nLen);
    size_t nWritten = WriteSome(m_pBuffer.get(), nAll);
    while (nWritten != nAll && IsNoRoom(errno)
           && m_control.MakeRoom(m_stOutcome.nExpected - m_stOutcome.nCopied)) {
        nWritten += WriteSome(m_pBuffer.get() + nWritten, nAll - nWritten);
    }
    if (nWritten != nAll) {
        Fail(ENCopyProblem::TARGET_WRITE, QStringLiteral("its target cannot be written"), errno);
        return false;
    }
    m_control.TargetWritten(fileno(m_pTarget.get()), m_stOutcome.nCopied - nLen, nLen);
    return true;
}

/** Writes as much as there is room for; what keeps it from more is in errno. */
size_t CFileCopy::WriteSome(const char* pBuf, size_t nLen)
{
    m_control.StepBegins(ENCopyStep::WRITING);
    const size_t nWritten = fwrite(pBuf, 1, nLen, m_pTarget.get());
    const int nError = errno;
    m_stOutcome.nCopied += qint64(nWritten);
    m_control.BytesWritten(qint64(nWritten));
    errno = nError;
    return nWritten;
}

/** Closes the target, with the source's times when it is whole. */
void CFileCopy::Finish()
{
    m_control.StepBegins(ENCopyStep::WRITING);
    if (m_stOutcome.enEnd == ENCopyEnd::WHOLE) {
        KeepMetadata();
        KeepTimes();
        m_control.KeepLast(m_source.Descriptor(), fileno(m_pTarget.get()));
        CompareSource();
        LookForStandIn();
    }
    // Some file systems tell only now that the bytes found no room.
    if (m_pTarget && m_stOutcome.HasAllBytes() && m_stOutcome.nCopied > 0
        && !m_control.FlushTarget(fileno(m_pTarget.get()))) {
        Fail(STCopyReason::NotOnDisk(errno));
    }
    if (m_pTarget) {
        m_control.TargetEnds(fileno(m_pTarget.get()));
    }
    if (m_pTarget && fclose(m_pTarget.release()) != 0 && m_stOutcome.HasAllBytes()) {
        Fail(ENCopyProblem::TARGET_CLOSE, QStringLiteral("its target cannot be closed"), errno);
    }
}

void CFileCopy::KeepMetadata()
{
    const std::optional<STCopyReason> stReason
        = m_control.KeepMetadata(m_strName, m_source.Descriptor(), fileno(m_pTarget.get()));
    if (stReason) {
        Fail(*stReason);
    }
}

void CFileCopy::KeepTimes()
{
    if (!m_control.KeepTimes(fileno(m_pTarget.get()), m_stBegin) && m_stOutcome.enEnd == ENCopyEnd::WHOLE) {
        Fail(ENCopyProblem::TIME_LOST, QStringLiteral("its time cannot be kept"), errno);
    }
}

/** Looks whether the source is still what was copied. */
void CFileCopy::CompareSource()
{
    const std::optional<STFileState> stEnd
        = m_bSettled ? std::nullopt : CCopyPlatform::GetOpenState(m_source.Descriptor());
    if (!stEnd) {
        return;
    }
    if (stEnd->bRemoved) {
        Fail(ENCopyProblem::SOURCE_REMOVED, QStringLiteral("was removed while it was copied"));
    } else if (!stEnd->IsSameContent(m_stBegin)) {
        Fail(STCopyReason::SourceChanged(stEnd->nSize));
    }
}

/** Looks whether what was copied is there for another file, which is not. */
void CFileCopy::LookForStandIn()
{
    const QString strName = m_bLink ? QString() : CCloudStandIn::NameOf(m_strName, m_stOutcome.nCopied);
    if (strName.isEmpty() || !CCloudStandIn::IsOne(m_pBuffer.get(), qMin(m_stOutcome.nCopied, m_nChunk))) {
        return;
    }
    m_control.StepBegins(ENCopyStep::READING);
    const QString strPath = m_stOutcome.strPath.left(m_stOutcome.strPath.lastIndexOf('/') + 1) + strName;
    if (!CCopyPlatform::GetEntryState(strPath)) {
        m_stOutcome.strStandsFor = strPath;
    }
    m_control.StepBegins(ENCopyStep::WRITING);
}

void CFileCopy::Fail(ENCopyProblem enProblem, const QString& strText, int nError)
{
    Fail(STCopyReason{enProblem, strText, nError});
}

void CFileCopy::Fail(const STCopyReason& stReason)
{
    const bool bStopped = stReason.enProblem == ENCopyProblem::STOPPED;
    m_stOutcome.enEnd = bStopped ? ENCopyEnd::STOPPED : ENCopyEnd::NOT_WHOLE;
    m_stOutcome.stReason = stReason;
}
