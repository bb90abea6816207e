#include "copy/CCopyFileThread.h"

#include "copy/CCopyLogFile.h"
#include "copy/CCopyPlatform.h"
#include "copy/CFileCopy.h"
#include "copy/CNodeWalk.h"
#include "copy/CSourceFile.h"
#include "copy/CWalkChoice.h"
#include "files/CAsideQuestion.h"
#include "log/CClock.h"
#include "tree/CDirNode.h"

#include <QDebug>
#include <QFile>

#include <cerrno>
#include <chrono>
#include <optional>
#include <utility>

static const qint64 MIB = qint64(1024) * 1024;
static const qint64 SMALL_TOTAL = 50 * MIB;
static const qint64 LARGE_TOTAL = 200 * MIB;

static const unsigned long PAUSE_POLL_MS = 1;

/** Share of the total in whole percent; the total is an estimate and may be too small. */
static int Percent(qint64 nCopied, qint64 nTotal)
{
    if (nCopied >= nTotal) {
        return 100;
    }
    return qMax(0, int(double(nCopied) * 100.0 / double(nTotal)));
}

CCopyFileThread::CCopyFileThread(QObject* pParent)
    : QThread(pParent)
    , m_enStatus(COPY_STATUS_RUN)
    , m_pace([this](bool bMoved) { return GoesOnWriting(bMoved); }, CClock::SteadyMs)
{
    qRegisterMetaType<STCopyAccount>();
}

CCopyFileThread::~CCopyFileThread() { wait(); }

void CCopyFileThread::SetCopyParam(qint64 nTotalSize, CDirNode* pRootNode, QString strDestPath,
                                   ENCopyStatus enStatus)
{
    m_nTotalSize = nTotalSize;
    m_pRootNode = pRootNode;
    m_strDestPath = std::move(strDestPath);
    m_enStatus = enStatus;
    m_pReportFile = std::make_shared<CCopyReportFile>(m_strDestPath);
}

void CCopyFileThread::SetCopyStatus(ENCopyStatus enStatus) { m_enStatus = enStatus; }

ENCopyStatus CCopyFileThread::GetCopyStatus() const { return m_enStatus; }

qint64 CCopyFileThread::CopySpeed() const
{
    if (m_nTotalSize < SMALL_TOTAL) {
        return MIB;
    }
    // A total of exactly the border gets the largest chunk: docs/behaviour.md.
    if (m_nTotalSize > SMALL_TOTAL && m_nTotalSize < LARGE_TOTAL) {
        return 4 * MIB;
    }
    return 8 * MIB;
}

void CCopyFileThread::CalculateRemainTime()
{
    m_nUsedTime = m_clock.UsedMs();
    emit SignalRemainTime(CCopyClock::RemainingSeconds(m_nTotalSize, m_nCopiedSize, m_nUsedTime));
}

int CCopyFileThread::ReadFile(QFile* pFile, char* pBuf, int nLen, qint64 nPos, qint64& nReadLen)
{
    const qint64 nRead = CSourceFile::ReadAt(*pFile, pBuf, nLen, nPos);
    if (nRead < 0) {
        return int(nRead);
    }
    nReadLen = nRead;
    return 0;
}

void CCopyFileThread::run()
{
    m_nCopiedSize = 0;
    if (m_strDestPath.isEmpty()) {
        qDebug("CCopyFileThread::run() path failed");
        return;
    }
    if (m_pRootNode == nullptr) {
        qDebug("CCopyFileThread::run() dirnode failed");
        return;
    }
    CCopyPlatform::SetLeastTimerSlack();
    m_clock.Start();
    m_pulse.Begin(m_strDestPath);
    m_report.Reset();
    m_destination = CCopyDestination(m_strDestPath);
    m_times.Begin();

    const std::unique_ptr<CCopyWalk> pWalk = CWalkChoice::Of(*m_pRootNode, *this, m_strDestPath);
    m_metadata.Begin(pWalk->GivesPermissions());
    const QStringList listSource = pWalk->Sources();
    Begin(listSource);
    m_pAhead = std::make_unique<CReadAhead>();
    m_pace.Begin();
    pWalk->Walk();
    m_pAhead.reset();
    m_pulse.BeginItem(m_strDestPath);
    m_pulse.BeginStep(ENCopyStep::WRITING);
    m_pace.End();
    m_metadata.BookLost(*this, listSource.count() == 1 ? listSource.constFirst() : m_strDestPath);

    // One that was left behind has nobody to finish for: what is to be said is said.
    const STCopyEnd stEnd = m_report.IsClosed() ? STCopyEnd() : Finish();
    // Nothing of the destination stays open when the window is told of the end.
    auto pParent = stEnd.bGone ? nullptr : m_destination.Parent();
    m_destination = CCopyDestination();
    m_pulse.End();
    if (m_report.Close(stEnd)) {
        CCopyLogFile::Save(pParent, m_strDestPath);
        pParent.reset();
        emit SignalCopyAccount(m_report.Account());
        emit SignalCopyFinish();
    }
}

/** Says in the log and on the destination that a copy begins. */
void CCopyFileThread::Begin(const QStringList& listSource)
{
    m_report.WriteBegin(listSource, m_strDestPath, m_nTotalSize);
    // Of nothing there is nothing to report.
    if (!listSource.isEmpty()) {
        m_pReportFile->Begin(m_destination.Parent(),
                             {CClock::Now(), listSource, m_strDestPath, m_nTotalSize});
    }
}

/** Brings what was copied to the disk, and the report up to it. */
STCopyEnd CCopyFileThread::Finish()
{
    m_pulse.BeginStep(ENCopyStep::FLUSHING);
    STCopyEnd stEnd;
    stEnd.bStopped = m_enStatus == COPY_STATUS_STOP;
    stEnd.bGone = m_destination.IsGone();
    stEnd.enFlush = FlushDestination(stEnd.bStopped, stEnd.bGone);
    m_nUsedTime = stEnd.nMs = m_clock.UsedMs();
    const STReportEnd stReport = m_pReportFile->End(m_report.AccountWith(stEnd));
    stEnd.strReport = stReport.strPath;
    stEnd.bReportMissing = stReport.bMissing;
    return stEnd;
}

void CCopyFileThread::CopyFile(CDirNode* pNode, QString strDest)
{
    if (pNode == nullptr || strDest.isEmpty()) {
        m_enStatus = COPY_STATUS_STOP;
        return;
    }
    CNodeWalk(m_pRootNode != nullptr ? *m_pRootNode : *pNode, *this, std::move(strDest)).CopyBelow(*pNode);
}

bool CCopyFileThread::IsStopped() const { return m_enStatus == COPY_STATUS_STOP; }

void CCopyFileThread::ItemBegins(const QString& strPath) { m_pulse.BeginItem(strPath); }

const CCopyDestination& CCopyFileThread::Destination() const { return m_destination; }

std::optional<STCopyReason> CCopyFileThread::MakeFolder(const QString& strFolder)
{
    m_pulse.BeginStep(ENCopyStep::WRITING);
    std::optional<STCopyReason> stReason = m_destination.MakeFolder(strFolder);
    while (stReason && IsNoRoom(stReason->nError) && MakeRoom(0)) {
        stReason = m_destination.MakeFolder(strFolder);
    }
    return stReason;
}

void CCopyFileThread::BookProblem(const STCopyOutcome& stOutcome)
{
    if (m_report.AddProblem(stOutcome)) {
        m_pulse.BeginStep(ENCopyStep::WRITING);
        m_pReportFile->Add(CCopyReport::Item(stOutcome));
    }
}

void CCopyFileThread::BookLink() { m_report.AddLink(); }

void CCopyFileThread::BookNote(const STCopyOutcome& stOutcome)
{
    if (m_report.AddNote(stOutcome)) {
        m_pulse.BeginStep(ENCopyStep::WRITING);
        m_pReportFile->Add(CCopyReport::Item(stOutcome));
    }
}

void CCopyFileThread::WriteFile(CDirNode* pNode, QString& strFolder, qint64 nChunk, QString /*strDest*/)
{
    CopyListed(pNode->m_fileInfo, strFolder, pNode->m_bLink, nChunk);
}

void CCopyFileThread::CopyListedFile(const QFileInfo& source, const QString& strFolder, bool bListedAsLink)
{
    CopyListed(source, strFolder, bListedAsLink, CopySpeed());
}

/** Copies of what the node knows: the node itself may be gone after a stop. */
void CCopyFileThread::CopyListed(QFileInfo source, const QString& strFolder, bool bLink, qint64 nChunk)
{
    CFileCopy copy(source, strFolder, nChunk, *this, bLink);
    copy.WantNewTarget([&](QString& strTarget) { return FindTarget(strTarget, strFolder, source); });
    BookFile(copy.Copy(strFolder + '/' + source.fileName()));
}

/** A name for a file whose own could not be made, for the reason in errno. */
std::optional<STCopyReason> CCopyFileThread::FindTarget(QString& strTarget, const QString& strFolder,
                                                        const QFileInfo& source)
{
    if (errno != EEXIST && m_destination.ForgetFolder(strFolder)) {
        // It may be gone, or all of the disk.
        if (std::optional<STCopyReason> stReason = MakeFolder(strFolder)) {
            return stReason;
        }
    }
    DealExistingFile(strTarget, strFolder, source);
    return std::nullopt;
}

void CCopyFileThread::DealExistingFile(QString& strTarget, QString strFolder, QFileInfo source)
{
    m_pulse.BeginStep(ENCopyStep::WRITING);
    strTarget = CCopyDestination::FreeName(strTarget, strFolder, source);
}

void CCopyFileThread::DealCopyFile(QString& strTarget, QString strFolder, QFileInfo source, qint64 nChunk)
{
    CFileCopy copy(source, std::move(strFolder), nChunk, *this);
    BookFile(copy.Copy(strTarget));
}

STCopyOutcome CCopyFileThread::CopyBytes(const QFileInfo& source, const QString& strFolder,
                                         const QString& strTarget)
{
    CFileCopy copy(source, strFolder, CopySpeed(), *this, false);
    copy.TryBadPlacesOnce();
    return copy.Copy(strTarget);
}

STCopyOutcome CCopyFileThread::CopyBytesTo(CDescriptor& target, const QFileInfo& source,
                                           const QString& strFolder, const QString& strTarget)
{
    CFileCopy copy(source, strFolder, CopySpeed(), *this, false);
    copy.TryBadPlacesOnce();
    copy.TakeTarget(target.Release());
    return copy.Copy(strTarget);
}

void CCopyFileThread::BookFile(const STCopyOutcome& stOutcome)
{
    m_metadata.FileEnds();
    if (stOutcome.HasAllBytes()) {
        m_pulse.AddFile();
        m_pace.Booked([this, stOutcome](int nError) { BookLost(stOutcome, nError); });
    } else {
        m_pace.Booked(nullptr);
    }
    if (m_report.AddFile(stOutcome) && stOutcome.enEnd != ENCopyEnd::WHOLE) {
        m_pulse.BeginStep(ENCopyStep::WRITING);
        m_pReportFile->Add(CCopyReport::Item(stOutcome));
    }
    if (stOutcome.bLeavesVolume && stOutcome.HasAllBytes()) {
        BookNote(STCopyOutcome::LeavesVolume(stOutcome.strPath));
    }
    if (!stOutcome.strStandsFor.isEmpty() && stOutcome.HasAllBytes()) {
        BookProblem(STCopyOutcome::Missing(stOutcome.strStandsFor, STCopyReason::OnlyInCloud()));
    }
}

/** Books a small file whose flush has failed when it was booked already. */
void CCopyFileThread::BookLost(const STCopyOutcome& stBooked, int nError)
{
    const STCopyReason stReason = STCopyReason::NotOnDisk(nError);
    if (!m_report.TakeBack(stBooked, stReason)) {
        m_pace.KeepError(nError);
        return;
    }
    m_pulse.TakeFile();
    m_pReportFile->Add(CCopyReport::Item(
        {ENCopyEnd::NOT_WHOLE, stBooked.strPath, stReason, stBooked.nCopied, stBooked.nExpected}));
}

bool CCopyFileThread::WaitWhilePaused()
{
    if (m_enStatus == COPY_STATUS_PAUSE) {
        m_clock.BeginPause();
        m_pulse.BeginStep(ENCopyStep::PAUSED);
        while (m_enStatus == COPY_STATUS_PAUSE) {
            msleep(PAUSE_POLL_MS);
        }
        m_clock.EndPause();
        m_pulse.BeginStep(ENCopyStep::READING);
    }
    return m_enStatus != COPY_STATUS_STOP;
}

void CCopyFileThread::ChunkDone(const QString& strName, qint64 nBytes)
{
    m_nCopiedSize += nBytes;
    emit SignalCopyCopyInfo(strName, Percent(m_nCopiedSize, m_nTotalSize));
    if (m_clock.IsReportDue()) {
        CalculateRemainTime();
    }
}

void CCopyFileThread::StepBegins(ENCopyStep enStep) { m_pulse.BeginStep(enStep); }

void CCopyFileThread::BytesWritten(qint64 nBytes) { m_pulse.AddBytes(nBytes); }

bool CCopyFileThread::MakeRoom(qint64 nBytes)
{
    const int nError = errno;
    const bool bMade = m_pReportFile->GiveUpRoom(nBytes);
    errno = nError;
    return bMade;
}

bool CCopyFileThread::WantsMore() const { return m_pAhead && m_pAhead->WantsMore(); }

bool CCopyFileThread::WantsAnew() const { return m_pAhead && m_pAhead->WantsAnew(); }

void CCopyFileThread::Expect(const QVector<STExpectedFile>& listFile, bool bAnew)
{
    if (m_pAhead) {
        m_pAhead->Expect(listFile, bAnew);
    }
}

bool CCopyFileThread::KeepTimes(int nDescriptor, const STFileState& stState)
{
    return m_times.Keep(nDescriptor, stState);
}

void CCopyFileThread::SourceOpened(const QString& strPath, quint64 nDevice, int nDescriptor)
{
    if (m_pAhead) {
        m_pAhead->SourceOpened(strPath, nDevice, nDescriptor);
    }
}

void CCopyFileThread::SourceRead(qint64 nResult, qint64 nUs)
{
    if (m_pAhead) {
        m_pAhead->SourceRead(nResult, nUs);
    }
}

void CCopyFileThread::TargetWritten(int nDescriptor, qint64 nFrom, qint64 nBytes)
{
    m_pace.Written(nDescriptor, nFrom, nBytes);
}

bool CCopyFileThread::FlushTarget(int nDescriptor) { return m_pace.Settle(nDescriptor); }

void CCopyFileThread::TargetEnds(int nDescriptor) { m_pace.Ends(nDescriptor); }

/** While the disk is waited for: what it has done meanwhile is a sign of life. */
bool CCopyFileThread::GoesOnWriting(bool bMoved)
{
    if (bMoved) {
        m_pulse.BeginStep(ENCopyStep::WRITING);
    }
    return m_enStatus == COPY_STATUS_RUN;
}

ENCopyFlush CCopyFileThread::FlushDestination(bool bStopped, bool bGone)
{
    // Nothing was ever made there, so there is nothing to flush.
    if (!bGone && m_report.Files() == 0 && !CCopyPlatform::Exists(m_strDestPath)) {
        return ENCopyFlush::NOT_NEEDED;
    }
    const bool bFlushed = !bGone && m_destination.Flush();
    if (bFlushed && m_pace.FlushError() == 0) {
        return ENCopyFlush::DONE;
    }
    const int nFlushError = bFlushed ? m_pace.FlushError() : errno;
    const int nError = bGone ? ENOENT : nFlushError;
    // Who has stopped a copy, or whose disk was pulled out and is told so, misses no more lines.
    if (!bStopped || !bGone) {
        const STCopyReason stReason{ENCopyProblem::NOT_FLUSHED,
                                    QStringLiteral("the data may not be on the disk"), nError};
        BookProblem({ENCopyEnd::NOT_WHOLE, m_strDestPath, stReason, m_report.Bytes(), m_nTotalSize});
    }
    return ENCopyFlush::FAILED;
}

STCopyAccount CCopyFileThread::CloseAccount(int nWaitMs)
{
    STCopyEnd stEnd;
    stEnd.bStopped = true;
    stEnd.enFlush = ENCopyFlush::FAILED;
    stEnd.nMs = m_clock.UsedMs();
    stEnd.bReportMissing = true;
    const STCopyReason stReason{ENCopyProblem::NO_ANSWER, QStringLiteral("its disk does not answer")};
    const STCopyOutcome stOutcome = STCopyOutcome::Missing(m_pulse.Path(), stReason);
    if (!m_report.CloseWith(stOutcome, stEnd)) {
        return m_report.Account();
    }
    // On a thread of its own: it may be this very disk that the worker waits for. When it
    // is the source's, all that is whole can be relied on as after any stop.
    const auto fnEnd
        = [pFile = m_pReportFile, stItem = CCopyReport::Item(stOutcome), stAccount = m_report.Account(),
           fnFlushLate = m_pace.TakeLate(), // before it is known what has failed so far
           bFlushes = m_pulse.Step() != ENCopyStep::FLUSHING && m_pace.FlushError() == 0]() mutable {
              if (bFlushes && fnFlushLate() && pFile->FlushDisk()) {
                  stAccount.enFlush = ENCopyFlush::DONE;
              }
              pFile->Add(stItem);
              const STReportEnd stReport = pFile->End(stAccount);
              stAccount.strReport = stReport.strPath;
              stAccount.bReportMissing = stReport.bMissing;
              return stAccount;
          };
    if (const auto stAccount
        = CAsideQuestion<STCopyAccount>::Ask(std::chrono::milliseconds(nWaitMs), fnEnd)) {
        m_report.SetEnd(*stAccount);
    }
    return m_report.Account();
}

qint64 CCopyFileThread::SinceProgressMs() const { return m_pulse.SinceProgressMs(); }

QString CCopyFileThread::CurrentPath() const { return m_pulse.Path(); }

ENCopyStep CCopyFileThread::CurrentStep() const { return m_pulse.Step(); }

qint64 CCopyFileThread::FilesDone() const { return m_pulse.Files(); }

qint64 CCopyFileThread::BytesDone() const { return m_pulse.Bytes(); }

void CCopyFileThread::TrimPoint(QString& strPath)
{
    while (strPath.contains(QLatin1String("/."))) {
        strPath.replace(QLatin1String("/."), QLatin1String("/"));
    }
}
