#include "copy/CCopyFileThread.h"

#include "copy/CCopyPlatform.h"
#include "copy/CFileCopy.h"
#include "copy/CUnlistedEntries.h"
#include "tree/CDirNode.h"

#include <QDebug>
#include <QFile>

#include <cerrno>
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
{
    qRegisterMetaType<STCopyAccount>();
}

void CCopyFileThread::SetCopyParam(qint64 nTotalSize, CDirNode* pRootNode, QString strDestPath,
                                   ENCopyStatus enStatus)
{
    m_nTotalSize = nTotalSize;
    m_pRootNode = pRootNode;
    m_strDestPath = std::move(strDestPath);
    m_enStatus = enStatus;
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
    const qint64 nRead = CFileCopy::ReadAt(*pFile, pBuf, nLen, nPos);
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
    m_pulse.Begin();
    m_report.Reset();
    m_destination = CCopyDestination(m_strDestPath);

    CopyFile(m_pRootNode, m_strDestPath);

    STCopyEnd stEnd;
    stEnd.bStopped = m_enStatus == COPY_STATUS_STOP;
    if (!stEnd.bStopped) {
        stEnd.enFlush = FlushDestination();
    }
    m_pulse.End();
    m_nUsedTime = stEnd.nMs = m_clock.UsedMs();
    if (m_report.Close(stEnd)) {
        emit SignalCopyAccount(m_report.Account());
        emit SignalCopyFinish();
    }
}

void CCopyFileThread::CopyFile(CDirNode* pNode, QString strDest)
{
    if (pNode == nullptr || strDest.isEmpty()) {
        m_enStatus = COPY_STATUS_STOP;
        return;
    }
    // Once a stop is noticed the nodes are the GUI's again, so every look at one
    // comes after a look at the status.
    if (m_enStatus == COPY_STATUS_STOP || pNode->m_chkState == Qt::Unchecked) {
        return;
    }
    const qint64 nChunk = CopySpeed();
    const int nCount = pNode->m_listChild.count();
    for (int nRow = 0; nRow < nCount; ++nRow) {
        if (m_enStatus == COPY_STATUS_STOP) {
            return;
        }
        CDirNode* pChild = pNode->Child(nRow);
        if (pChild != nullptr && pChild->m_chkState != Qt::Unchecked) {
            CopyChild(pChild, strDest, nChunk);
        }
    }
}

void CCopyFileThread::CopyChild(CDirNode* pChild, const QString& strDest, qint64 nChunk)
{
    const bool bDir = pChild->m_bDir;
    QString strSource = bDir ? pChild->m_fileInfo.absoluteFilePath() : pChild->m_fileInfo.absolutePath();
    const QLatin1String volumes("/Volumes/");
    if (strSource.startsWith(volumes)) {
        strSource.remove(0, volumes.size());
    }
    // Paths of the start-up volume keep their leading separator: docs/behaviour.md.
    QString strFolder = strDest + '/' + strSource;
    m_pulse.BeginItem(pChild->m_fileInfo.absoluteFilePath());
    m_pulse.BeginStep(ENCopyStep::WRITING);
    const std::optional<STCopyReason> stReason = m_destination.MakeFolder(strFolder);
    if (m_enStatus == COPY_STATUS_STOP) {
        return; // a slow disk may have taken long, and the node may be gone
    }
    if (stReason) {
        ReportBranch(pChild, *stReason);
        return;
    }
    if (!bDir) {
        WriteFile(pChild, strFolder, nChunk, strDest);
        return;
    }
    if (pChild->m_chkState == Qt::Checked) {
        ReportUnlisted(*pChild);
    }
    CopyFile(pChild, strDest);
}

/** Books what is not copied of a fully ticked folder, since it is not in the tree. */
void CCopyFileThread::ReportUnlisted(const CDirNode& node)
{
    m_pulse.BeginStep(ENCopyStep::LISTING);
    CUnlistedEntries entries(node);
    while (m_enStatus != COPY_STATUS_STOP) {
        m_pulse.BeginStep(ENCopyStep::LISTING);
        const std::optional<STCopyOutcome> stOutcome = entries.Next();
        if (!stOutcome) {
            return;
        }
        m_report.AddProblem(*stOutcome);
    }
}

/** Books a ticked node that has no target folder, with everything ticked below it. */
void CCopyFileThread::ReportBranch(CDirNode* pNode, const STCopyReason& stReason)
{
    const qint64 nExpected = pNode->m_bDir ? STCopyOutcome::UNKNOWN_SIZE : pNode->m_fileInfo.size();
    m_report.AddProblem(STCopyOutcome::Missing(pNode->m_fileInfo.absoluteFilePath(), stReason, nExpected));
    const int nCount = pNode->m_listChild.count();
    for (int nRow = 0; nRow < nCount && m_enStatus != COPY_STATUS_STOP; ++nRow) {
        CDirNode* pChild = pNode->Child(nRow);
        if (pChild != nullptr && pChild->m_chkState != Qt::Unchecked) {
            ReportBranch(pChild, stReason);
        }
    }
}

void CCopyFileThread::WriteFile(CDirNode* pNode, QString& strFolder, qint64 nChunk, QString /*strDest*/)
{
    // A copy of what the node knows: the node itself may be gone after a stop.
    const QFileInfo source = pNode->m_fileInfo;
    QString strTarget = strFolder + '/' + source.fileName();
    DealExistingFile(strTarget, strFolder, source);
    DealCopyFile(strTarget, strFolder, source, nChunk);
}

void CCopyFileThread::DealExistingFile(QString& strTarget, QString strFolder, QFileInfo source)
{
    strTarget = CCopyDestination::FreeName(strTarget, strFolder, source);
}

void CCopyFileThread::DealCopyFile(QString& strTarget, QString strFolder, QFileInfo source, qint64 nChunk)
{
    const STCopyOutcome stOutcome = CFileCopy(source, std::move(strFolder), nChunk, *this).Copy(strTarget);
    m_report.AddFile(stOutcome);
    if (stOutcome.enEnd == ENCopyEnd::WHOLE || stOutcome.stReason.enProblem == ENCopyProblem::TIME_LOST) {
        m_pulse.AddFile();
    }
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

ENCopyFlush CCopyFileThread::FlushDestination()
{
    // Nothing was ever made there, so there is nothing to flush.
    if (m_report.Files() == 0 && !QFileInfo::exists(m_strDestPath)) {
        return ENCopyFlush::NOT_NEEDED;
    }
    m_pulse.BeginStep(ENCopyStep::FLUSHING);
    if (CCopyPlatform::FlushFileSystem(m_strDestPath)) {
        return ENCopyFlush::DONE;
    }
    const STCopyReason stReason{ENCopyProblem::NOT_FLUSHED, QStringLiteral("the data may not be on the disk"),
                                errno};
    m_report.AddProblem({ENCopyEnd::NOT_WHOLE, m_strDestPath, stReason, m_report.Bytes(), m_nTotalSize});
    return ENCopyFlush::FAILED;
}

STCopyAccount CCopyFileThread::CloseAccount(int nWaitMs)
{
    Q_UNUSED(nWaitMs)
    STCopyEnd stEnd;
    stEnd.bStopped = true;
    stEnd.enFlush = ENCopyFlush::FAILED;
    stEnd.nMs = m_clock.UsedMs();
    const STCopyReason stReason{ENCopyProblem::NO_ANSWER, QStringLiteral("its disk does not answer")};
    m_report.CloseWith(STCopyOutcome::Missing(m_pulse.Path(), stReason), stEnd);
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
