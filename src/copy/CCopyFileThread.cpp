#include "copy/CCopyFileThread.h"

#include "copy/CCopyPlatform.h"
#include "log/CClock.h"
#include "tree/CDirNode.h"

#include <QDebug>
#include <QDir>
#include <QFile>
#include <QSet>

#include <cerrno>
#include <cstdio>
#include <dirent.h>
#include <limits>
#include <memory>
#include <new>
#include <unistd.h>
#include <utility>

namespace {

constexpr qint64 MIB = qint64(1024) * 1024;
constexpr qint64 SMALL_TOTAL = 50 * MIB;
constexpr qint64 LARGE_TOTAL = 200 * MIB;

// A chunk goes through the front of its buffer in pieces: what was read is then
// still in the processor's cache when it is written.
constexpr qint64 PIECE = qint64(256) * 1024;

constexpr unsigned long PAUSE_POLL_MS = 1;
constexpr unsigned long CHUNK_SLEEP_US = 100; // keeps the machine responsive
constexpr qint64 REMAIN_TIME_MS = 999; // a report once more than this has passed

__extension__ typedef __int128 int128; // NOLINT: -Wpedantic takes no alias declaration here

struct STCloseFile
{
    void operator()(FILE* pFile) const { fclose(pFile); }
};

struct STCloseDir
{
    void operator()(DIR* pDir) const { closedir(pDir); }
};

} // namespace

/** One file on its way. */
struct CCopyFileThread::STFileCopy
{
    QString m_strPath; // of the source
    QString m_strName; // as shown while it is copied
    QString m_strFolder; // of the target
    QFile m_source;
    std::unique_ptr<FILE, STCloseFile> m_pTarget;
    std::unique_ptr<char[]> m_pBuffer;
    STFileState m_stBegin; // of the source when it was opened
    qint64 m_nChunk = 0;
    qint64 m_nSize = 0; // bytes to copy
    qint64 m_nOffset = 0; // bytes dealt with
    qint64 m_nWritten = 0; // bytes that reached the target
    bool m_bStopped = false;
    QString m_strReason; // why the copy is not whole; empty while it may be
};

static QString ErrorText(const char* pszWhat, int nError)
{
    const QString strWhat = QString::fromLatin1(pszWhat);
    return nError == 0 ? strWhat : strWhat + QStringLiteral(": ") + qt_error_string(nError);
}

static QString GoneText() { return QStringLiteral("destination gone"); }

/** The file system that holds the path, or would hold it once it is made. */
static std::optional<quint64> NearestDevice(QString strPath)
{
    STFileState stState;
    while (!CCopyPlatform::GetPathState(strPath, stState)) {
        const int nSlash = strPath.lastIndexOf(QLatin1Char('/'));
        if ((errno != ENOENT && errno != ENOTDIR) || nSlash < 0 || strPath.size() == 1) {
            return std::nullopt;
        }
        strPath.truncate(qMax(nSlash, 1));
    }
    return stState.m_nDevice;
}

/** Share of the total in whole percent; the total is an estimate and may be too small. */
static int Percent(qint64 nCopied, qint64 nTotal)
{
    if (nCopied >= nTotal) {
        return 100;
    }
    return qMax(0, int(double(nCopied) * 100.0 / double(nTotal)));
}

static qint64 RemainingSeconds(qint64 nTotal, qint64 nCopied, qint64 nUsedMs)
{
    if (nCopied <= 0 || nCopied >= nTotal || nUsedMs <= 0) {
        return 0;
    }
    // Exabytes times days do not fit into 64 bits.
    const int128 nLeftMs = int128(nTotal - nCopied) * nUsedMs / nCopied;
    return qint64(qMin(nLeftMs / 1000, int128(std::numeric_limits<qint64>::max())));
}

/** True when fopen(…, "r") would succeed; a pipe of that name is not waited for. */
static bool CanBeRead(const QString& strPath)
{
    const int nDescriptor = CCopyPlatform::OpenForRead(strPath);
    if (nDescriptor == -1) {
        return false;
    }
    close(nDescriptor);
    return true;
}

/** Whether opening the path may hang or set something off. */
static bool IsSpecial(const QString& strPath)
{
    STFileState stState;
    return CCopyPlatform::GetPathState(strPath, stState) && stState.m_enKind == ENFileKind::SPECIAL;
}

/** The name of the next entry of a folder; empty at the end, with nError set when it is not the true end. */
static QString NextName(DIR* pDir, int& nError)
{
    errno = 0;
    while (const dirent* pEntry = readdir(pDir)) {
        if (qstrcmp(pEntry->d_name, ".") != 0 && qstrcmp(pEntry->d_name, "..") != 0) {
            return QFile::decodeName(pEntry->d_name);
        }
    }
    nError = errno;
    return QString();
}

CCopyFileThread::CCopyFileThread(QObject* pParent)
    : QThread(pParent)
    , m_enStatus(COPY_STATUS_RUN)
{
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
    // The jump at exactly the border is old and known; a total that meets it to
    // the byte is copied with the largest chunk, which does no harm.
    if (m_nTotalSize > SMALL_TOTAL && m_nTotalSize < LARGE_TOTAL) {
        return 4 * MIB;
    }
    return 8 * MIB;
}

void CCopyFileThread::CalculateRemainTime()
{
    m_nUsedTime = CClock::NowMs() - m_nStartTime - m_nPauseTime;
    emit SignalRemainTime(RemainingSeconds(m_nTotalSize, m_nCopiedSize, m_nUsedTime));
}

int CCopyFileThread::ReadFile(QFile* pFile, char* pBuf, int nLen, qint64 nPos, qint64& nReadLen)
{
    if (!pFile->seek(nPos)) {
        return -1;
    }
    const qint64 nRead = pFile->read(pBuf, nLen);
    if (nRead < 0) {
        return -2;
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
    m_nStartTime = m_nLastTime = CClock::NowMs();
    m_nPauseTime = 0;
    m_report.Reset();
    m_nDestDevice = NearestDevice(m_strDestPath);

    CopyFile(m_pRootNode, m_strDestPath);

    const bool bStopped = m_enStatus == COPY_STATUS_STOP;
    if (!bStopped) {
        FlushDestination();
    }
    m_report.WriteSummary(bStopped, CClock::NowMs() - m_nStartTime - m_nPauseTime);
    emit SignalCopyFinish();
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
    // Paths of the start-up volume keep their leading separator: the doubled one
    // is harmless, and the layout below the destination is the one users know.
    QString strFolder = strDest + QLatin1Char('/') + strSource;
    const QString strReason = MakeFolder(strFolder, strDest);
    if (m_enStatus == COPY_STATUS_STOP) {
        return; // a slow disk may have taken long, and the node may be gone
    }
    if (!strReason.isEmpty()) {
        ReportBranch(pChild, strReason);
        return;
    }
    if (!bDir) {
        WriteFile(pChild, strFolder, nChunk, strDest);
        return;
    }
    ReportUnlisted(pChild);
    CopyFile(pChild, strDest);
}

QString CCopyFileThread::MakeFolder(const QString& strFolder, const QString& strDest) const
{
    // Where the stick was mounted an empty folder may be left: making the path
    // again would fill the disk that the machine runs from.
    if (m_nDestDevice && NearestDevice(strDest).value_or(*m_nDestDevice) != *m_nDestDevice) {
        return GoneText();
    }
    errno = 0;
    if (QDir().mkpath(strFolder)) {
        return QString();
    }
    return ErrorText("its target folder cannot be created", errno);
}

/** Logs a ticked node that has no target folder, with everything ticked below it. */
void CCopyFileThread::ReportBranch(CDirNode* pNode, const QString& strReason)
{
    const qint64 nExpected = pNode->m_bDir ? CCopyReport::UNKNOWN_SIZE : pNode->m_fileInfo.size();
    m_report.AddProblem(pNode->m_fileInfo.absoluteFilePath(), strReason, 0, nExpected);
    const int nCount = pNode->m_listChild.count();
    for (int nRow = 0; nRow < nCount && m_enStatus != COPY_STATUS_STOP; ++nRow) {
        CDirNode* pChild = pNode->Child(nRow);
        if (pChild != nullptr && pChild->m_chkState != Qt::Unchecked) {
            ReportBranch(pChild, strReason);
        }
    }
}

/** Logs what a fully ticked folder holds on the disk but not in the tree: only nodes are copied. */
void CCopyFileThread::ReportUnlisted(CDirNode* pNode)
{
    if (pNode->m_chkState != Qt::Checked) {
        return;
    }
    const QString strFolder = pNode->m_fileInfo.absoluteFilePath();
    const bool bLeadsBack = pNode->m_nListError == ELOOP;
    QSet<QString> setListed;
    setListed.reserve(pNode->m_listChild.count());
    for (const CDirNode* pChild : qAsConst(pNode->m_listChild)) {
        setListed.insert(pChild->m_fileInfo.fileName());
    }

    const std::unique_ptr<DIR, STCloseDir> pDir(opendir(QFile::encodeName(strFolder).constData()));
    if (!pDir) {
        ReportFolder(strFolder, ErrorText("its contents cannot be listed", errno));
        return;
    }
    int nError = 0;
    QString strName = NextName(pDir.get(), nError);
    for (; !strName.isEmpty() && m_enStatus != COPY_STATUS_STOP; strName = NextName(pDir.get(), nError)) {
        if (setListed.isEmpty()) {
            ReportFolder(strFolder,
                         bLeadsBack ? QStringLiteral("a link to a folder that it lies in, not followed")
                                    : QStringLiteral("its contents were never listed"));
            return;
        }
        if (!setListed.contains(strName)) {
            ReportLeftOut(strFolder + QLatin1Char('/') + strName);
        }
    }
    if (nError != 0) {
        ReportFolder(strFolder, ErrorText("its contents cannot be listed to the end", nError));
    }
}

void CCopyFileThread::ReportFolder(const QString& strFolder, const QString& strReason)
{
    m_report.AddProblem(strFolder, strReason, 0, CCopyReport::UNKNOWN_SIZE);
}

void CCopyFileThread::ReportLeftOut(const QString& strPath)
{
    STFileState stState;
    const bool bFile
        = CCopyPlatform::GetPathState(strPath, stState) && stState.m_enKind == ENFileKind::REGULAR;
    m_report.AddProblem(strPath,
                        QStringLiteral("not in the tree: left out for its name, or newer than the list"), 0,
                        bFile ? stState.m_nSize : CCopyReport::UNKNOWN_SIZE);
}

void CCopyFileThread::WriteFile(CDirNode* pNode, QString& strFolder, qint64 nChunk, QString /*strDest*/)
{
    // A copy of what the node knows: the node itself may be gone after a stop.
    const QFileInfo source = pNode->m_fileInfo;
    QString strTarget = strFolder + QLatin1Char('/') + source.fileName();
    DealExistingFile(strTarget, strFolder, source);
    DealCopyFile(strTarget, strFolder, source, nChunk);
}

void CCopyFileThread::DealExistingFile(QString& strTarget, QString strFolder, QFileInfo source)
{
    // What cannot be read counts as free and is truncated later: it is most
    // likely the broken remains of an earlier attempt.
    if (!CanBeRead(strTarget)) {
        return;
    }
    // There is no dot before the suffix (report.pdf becomes report_1pdf). That is
    // deliberate: whoever looks for a copy's second version finds it by this name.
    const QString strSuffix = source.suffix();
    const QString strStem = strFolder + QLatin1Char('/')
        + (strSuffix.isEmpty() ? source.fileName() : source.completeBaseName()) + QLatin1Char('_');
    qint64 nNumber = 0;
    do {
        ++nNumber;
        strTarget = strStem + QString::number(nNumber) + strSuffix;
    } while (CanBeRead(strTarget));
}

void CCopyFileThread::DealCopyFile(QString& strTarget, QString strFolder, QFileInfo source, qint64 nChunk)
{
    STFileCopy stCopy;
    stCopy.m_strPath = source.absoluteFilePath();
    stCopy.m_strName = source.fileName();
    stCopy.m_strFolder = std::move(strFolder);
    stCopy.m_nChunk = qMax<qint64>(nChunk, 1);
    stCopy.m_nSize = source.size();
    if (IsSpecial(stCopy.m_strPath)) {
        stCopy.m_strReason = QStringLiteral("a pipe, socket or device");
    } else if (OpenTarget(stCopy, strTarget) && OpenSource(stCopy)) {
        CopyBytes(stCopy);
    }
    FinishFile(stCopy);
}

bool CCopyFileThread::OpenTarget(STFileCopy& stCopy, const QString& strTarget)
{
    stCopy.m_pTarget.reset(fopen(QFile::encodeName(strTarget).constData(), "wb"));
    if (!stCopy.m_pTarget) {
        const int nError = errno;
        stCopy.m_strReason = QFileInfo::exists(stCopy.m_strFolder)
            ? ErrorText("its target cannot be created", nError) + QStringLiteral(", ")
                + CCopyReport::Quoted(strTarget)
            : GoneText();
        return false;
    }
    CCopyPlatform::KeepFromChildren(fileno(stCopy.m_pTarget.get()));
    // The pieces are large already; a buffer between would copy them once more.
    setvbuf(stCopy.m_pTarget.get(), nullptr, _IONBF, 0);
    return true;
}

bool CCopyFileThread::OpenSource(STFileCopy& stCopy)
{
    const int nDescriptor = CCopyPlatform::OpenForRead(stCopy.m_strPath);
    const int nError = errno;
    const QIODevice::OpenMode mode = QIODevice::ReadOnly | QIODevice::Unbuffered;
    if (nDescriptor == -1 || !stCopy.m_source.open(nDescriptor, mode, QFileDevice::AutoCloseHandle)) {
        qDebug().noquote() << QStringLiteral("open file failed");
        stCopy.m_strReason = ErrorText("open file failed", nError);
        return false;
    }
    if (!CCopyPlatform::GetOpenState(nDescriptor, stCopy.m_stBegin)
        || stCopy.m_stBegin.m_enKind != ENFileKind::REGULAR) {
        stCopy.m_strReason = QStringLiteral("no longer a file");
        return false;
    }
    // The size known so far may date from when the selection was counted.
    stCopy.m_nSize = stCopy.m_stBegin.m_nSize;
    // Not zeroed: for a small file that would cost more than the copy itself.
    stCopy.m_pBuffer.reset(new (std::nothrow) char[size_t(stCopy.m_nChunk)]);
    if (!stCopy.m_pBuffer) {
        stCopy.m_strReason = QStringLiteral("not enough memory");
    }
    return bool(stCopy.m_pBuffer);
}

void CCopyFileThread::CopyBytes(STFileCopy& stCopy)
{
    while (stCopy.m_nOffset < stCopy.m_nSize) {
        if (!WaitWhilePaused()) {
            stCopy.m_bStopped = true;
            return;
        }
        const qint64 nRemaining = stCopy.m_nSize - stCopy.m_nOffset;
        const qint64 nMoved = CopyChunk(stCopy, qMin(nRemaining, stCopy.m_nChunk));
        if (nMoved < 0) {
            return;
        }
        if (!QFileInfo::exists(stCopy.m_strFolder)) {
            stCopy.m_strReason = GoneText();
            return;
        }
        // An empty read is the end of a file that became shorter; counting the
        // rest as done keeps the percentage right for the files that follow.
        const qint64 nStep = nMoved > 0 ? nMoved : nRemaining;
        if (nMoved == 0) {
            stCopy.m_strReason = QStringLiteral("became shorter while it was copied");
        }
        m_nCopiedSize += nStep;
        ReportProgress(stCopy.m_strName);
        usleep(CHUNK_SLEEP_US);
        stCopy.m_nOffset += nStep;
    }
}

/** Moves up to nLen bytes and returns their number, or -1 with the reason set. */
qint64 CCopyFileThread::CopyChunk(STFileCopy& stCopy, qint64 nLen)
{
    qint64 nMoved = 0;
    while (nMoved < nLen) {
        const int nPiece = int(qMin(nLen - nMoved, PIECE));
        qint64 nRead = 0;
        const int nResult
            = ReadFile(&stCopy.m_source, stCopy.m_pBuffer.get(), nPiece, stCopy.m_nOffset + nMoved, nRead);
        if (nResult != 0 && nMoved > 0) {
            // As with one large read, what came before the bad place is a short
            // chunk of its own, and the next chunk meets the failure at its start.
            return nMoved;
        }
        if (nResult != 0) {
            const QString strLine = QStringLiteral("ReadFile ret = ") + QString::number(nResult);
            qDebug().noquote() << strLine;
            stCopy.m_strReason = strLine + QStringLiteral(": ") + stCopy.m_source.errorString();
            return -1;
        }
        const size_t nWritten = fwrite(stCopy.m_pBuffer.get(), 1, size_t(nRead), stCopy.m_pTarget.get());
        stCopy.m_nWritten += qint64(nWritten);
        if (qint64(nWritten) != nRead) {
            stCopy.m_strReason = ErrorText("its target cannot be written", errno);
            return -1;
        }
        nMoved += nRead;
        if (nRead < nPiece) {
            break;
        }
    }
    return nMoved;
}

/** Returns when the copy goes on: true; or when it is to stop: false. */
bool CCopyFileThread::WaitWhilePaused()
{
    if (m_enStatus == COPY_STATUS_PAUSE) {
        const qint64 nBegin = CClock::NowMs();
        while (m_enStatus == COPY_STATUS_PAUSE) {
            msleep(PAUSE_POLL_MS);
        }
        m_nPauseTime += CClock::NowMs() - nBegin;
    }
    return m_enStatus != COPY_STATUS_STOP;
}

void CCopyFileThread::ReportProgress(const QString& strFileName)
{
    emit SignalCopyCopyInfo(strFileName, Percent(m_nCopiedSize, m_nTotalSize));
    const qint64 nNow = CClock::NowMs();
    if (nNow - m_nLastTime > REMAIN_TIME_MS) {
        m_nLastTime = nNow;
        CalculateRemainTime();
    }
}

/** Closes the target, with the source's time when it is whole, and books the file. */
void CCopyFileThread::FinishFile(STFileCopy& stCopy)
{
    const bool bWhole = stCopy.m_strReason.isEmpty() && !stCopy.m_bStopped;
    if (bWhole) {
        KeepTime(stCopy);
    }
    // Some file systems tell only now that the bytes found no room.
    if (stCopy.m_pTarget && fclose(stCopy.m_pTarget.release()) != 0 && stCopy.m_strReason.isEmpty()) {
        stCopy.m_strReason = ErrorText("its target cannot be closed", errno);
    }
    m_report.AddBytes(stCopy.m_nWritten);
    if (stCopy.m_bStopped) {
        m_report.AddStopped(stCopy.m_strPath, stCopy.m_nWritten, stCopy.m_nSize);
    } else if (!stCopy.m_strReason.isEmpty()) {
        m_report.AddProblem(stCopy.m_strPath, stCopy.m_strReason, stCopy.m_nWritten, stCopy.m_nSize);
    } else {
        m_report.AddFile();
    }
}

/** Gives the whole copy its source's time and looks whether the source is still what was copied. */
void CCopyFileThread::KeepTime(STFileCopy& stCopy)
{
    if (!CCopyPlatform::SetModifiedTime(fileno(stCopy.m_pTarget.get()), stCopy.m_stBegin)) {
        stCopy.m_strReason = ErrorText("its time cannot be kept", errno);
    }
    STFileState stEnd;
    if (!CCopyPlatform::GetOpenState(stCopy.m_source.handle(), stEnd)) {
        return;
    }
    const STFileState& stBegin = stCopy.m_stBegin;
    if (stEnd.m_bRemoved) {
        stCopy.m_strReason = QStringLiteral("was removed while it was copied");
    } else if (stEnd.m_nSize != stBegin.m_nSize || stEnd.m_nModifiedSec != stBegin.m_nModifiedSec
               || stEnd.m_nModifiedNsec != stBegin.m_nModifiedNsec) {
        stCopy.m_strReason = QStringLiteral("changed while it was copied, it has ")
            + QString::number(stEnd.m_nSize) + QStringLiteral(" bytes now");
    }
}

void CCopyFileThread::FlushDestination()
{
    // Nothing was ever made there, so there is nothing to flush.
    if (m_report.Files() == 0 && !QFileInfo::exists(m_strDestPath)) {
        return;
    }
    if (!CCopyPlatform::FlushFileSystem(m_strDestPath)) {
        m_report.AddProblem(m_strDestPath, ErrorText("the data may not be on the disk", errno),
                            m_report.Bytes(), m_nTotalSize);
    }
}

void CCopyFileThread::TrimPoint(QString& strPath)
{
    while (strPath.contains(QLatin1String("/."))) {
        strPath.replace(QLatin1String("/."), QLatin1String("/"));
    }
}
