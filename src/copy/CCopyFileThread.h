#pragma once

#include "copy/CCopyClock.h"
#include "copy/CCopyDestination.h"
#include "copy/CCopyPulse.h"
#include "copy/CCopyReport.h"
#include "copy/CCopyReportFile.h"
#include "copy/CCopyWork.h"
#include "copy/CFileMetadata.h"
#include "copy/CKeptTimes.h"
#include "copy/ENCopyStatus.h"
#include "copy/STCopyAccount.h"
#include "flow/CReadAhead.h"
#include "flow/CWritePace.h"

#include <QFileInfo>
#include <QString>
#include <QThread>

#include <atomic>
#include <memory>
#include <optional>

class CDirNode;
class QFile;

/**
 * Copies the ticked part of the source tree to the destination folder, one file
 * after another in chunks, on a thread of its own, and obeys the status. A CCopyWalk
 * goes through what is ticked, a CFileCopy does the work on each file.
 *
 * SetCopyParam comes before start(); what says "any thread" may be called at any
 * time; everything else belongs to the worker. The worker reads the nodes until it
 * has noticed a stop and not afterwards. The owner tells it to stop and waits for it
 * before destroying it. A worker whose disk does not answer may be left behind
 * after CloseAccount: it touches nothing but itself, and has to outlive its run.
 */
class CCopyFileThread : public QThread, private CCopyWork
{
    Q_OBJECT

public:
    explicit CCopyFileThread(QObject* pParent = nullptr);

    /** Waits for the end of the run: what it uses goes with this object. */
    ~CCopyFileThread() override;

    /**
     * What to copy: the bytes to expect, the root of the ticked tree (not
     * owned), the folder to copy into and the status to begin with.
     */
    void SetCopyParam(qint64 nTotalSize, CDirNode* pRootNode, QString strDestPath, ENCopyStatus enStatus);

    /** Pauses, resumes or stops the copy; the worker notices it before the next chunk. Any thread. */
    void SetCopyStatus(ENCopyStatus enStatus);

    /** The status as last set. Any thread. */
    ENCopyStatus GetCopyStatus() const;

    /**
     * Time in ms since the running copy got any further, by a call to the system that
     * returned; 0 while it is paused or none runs. Any thread.
     */
    qint64 SinceProgressMs() const;

    /**
     * The item at the source that the copy is at; the folder that is copied into at the
     * beginning and while it is flushed. Empty before the first copy. Any thread.
     */
    QString CurrentPath() const;

    /** What the copy waits for at the moment. Any thread. */
    ENCopyStep CurrentStep() const;

    /** Files of the running or the last copy that are whole so far. Any thread. */
    qint64 FilesDone() const;

    /** Bytes of the running or the last copy that have reached the destination so far. Any thread. */
    qint64 BytesDone() const;

    /**
     * Ends the account of a copy whose disk does not answer: the item that it is at
     * is booked, and what the worker does afterwards books, logs and tells nothing.
     * Waits up to nWaitMs for the report on the destination. A copy that has ended
     * meanwhile gives its own account. GUI thread, after the stop.
     */
    STCopyAccount CloseAccount(int nWaitMs);

    /** Bytes moved between two looks at the status, chosen from the total size. */
    qint64 CopySpeed() const;

    /** Computes the remaining time now and emits SignalRemainTime. */
    void CalculateRemainTime();

    /**
     * Reads up to nLen bytes from nPos into pBuf; nReadLen gets their number.
     * Returns 0, -1 when the position cannot be reached, -2 when reading fails.
     */
    int ReadFile(QFile* pFile, char* pBuf, int nLen, qint64 nPos, qint64& nReadLen);

    /** The whole copy. Without destination or root it ends without any signal. */
    void run() override;

    /**
     * Copies the ticked children of the node, at any depth; strDest is always
     * the folder of the whole copy. A null node or an empty folder stops the copy.
     */
    void CopyFile(CDirNode* pNode, QString strDest);

    /** Copies the node's file into strFolder, which exists, under a free name. */
    void WriteFile(CDirNode* pNode, QString& strFolder, qint64 nChunk, QString strDest);

    /** Changes strTarget to the first free name when a readable file has it already. */
    void DealExistingFile(QString& strTarget, QString strFolder, QFileInfo source);

    /**
     * Copies the bytes of the source to strTarget, in chunks of nChunk bytes,
     * honouring pause and stop. Whatever keeps it from being whole is logged.
     */
    void DealCopyFile(QString& strTarget, QString strFolder, QFileInfo source, qint64 nChunk);

    /** Replaces every "/." by "/" until none is left. The copy itself does not use it. */
    void TrimPoint(QString& strPath);

signals:
    /** What became of the copy; once a copy, directly before SignalCopyFinish. */
    void SignalCopyAccount(STCopyAccount stAccount);

    /** The copy has ended, completed or stopped; after a completed one the data is on the disk. */
    void SignalCopyFinish();

    /** A chunk of the file was copied; percent of the whole copy, 0 to 100. */
    void SignalCopyCopyInfo(QString strFileName, int nPercent);

    /** Estimated time left in whole seconds, 0 while nothing is known; at most once a second. */
    void SignalRemainTime(qint64 nSeconds);

private:
    void Begin(const QStringList& listSource);
    STCopyEnd Finish();
    void CopyListed(QFileInfo source, const QString& strFolder, bool bLink, qint64 nChunk);
    std::optional<STCopyReason> FindTarget(QString& strTarget, const QString& strFolder,
                                           const QFileInfo& source);
    ENCopyFlush FlushDestination(bool bStopped, bool bGone);
    bool IsStopped() const override;
    void ItemBegins(const QString& strPath) override;
    const CCopyDestination& Destination() const override;
    std::optional<STCopyReason> MakeFolder(const QString& strFolder) override;
    void CopyListedFile(const QFileInfo& source, const QString& strFolder, bool bListedAsLink) override;
    STCopyOutcome CopyBytes(const QFileInfo& source, const QString& strFolder,
                            const QString& strTarget) override;
    STCopyOutcome CopyBytesTo(CDescriptor& target, const QFileInfo& source, const QString& strFolder,
                              const QString& strTarget) override;
    void BookFile(const STCopyOutcome& stOutcome) override;
    void BookLink() override;
    void BookProblem(const STCopyOutcome& stOutcome) override;
    void BookNote(const STCopyOutcome& stOutcome) override;
    bool WaitWhilePaused() override;
    void ChunkDone(const QString& strName, qint64 nBytes) override;
    void StepBegins(ENCopyStep enStep) override;
    void BytesWritten(qint64 nBytes) override;
    bool MakeRoom(qint64 nBytes) override;
    bool WantsMore() const override;
    bool WantsAnew() const override;
    void Expect(const QVector<STExpectedFile>& listFile, bool bAnew) override;
    bool KeepTimes(int nDescriptor, const STFileState& stState) override;
    void SourceOpened(const QString& strPath, quint64 nDevice, int nDescriptor) override;
    void SourceRead(qint64 nResult, qint64 nUs) override;
    void TargetWritten(int nDescriptor, qint64 nFrom, qint64 nBytes) override;
    bool FlushTarget(int nDescriptor) override;
    void TargetEnds(int nDescriptor) override;
    void BookLost(const STCopyOutcome& stBooked, int nError);
    bool GoesOnWriting(bool bMoved);

    std::optional<STCopyReason> KeepMetadata(const QString& strName, int nSource, int nTarget) override
    {
        return m_metadata.GiveToFile(*this, strName, nSource, nTarget);
    }

    void KeepLast(int nSource, int nTarget) override { m_metadata.GiveLast(*this, nSource, nTarget); }

    void KeepFolderLast(const QString& strSource, const QString& strTarget) override
    {
        m_metadata.GiveFolderLast(*this, strSource, strTarget);
    }

    void KeepFolderMetadata(const QString& strSource, const QString& strTarget) override
    {
        m_metadata.GiveToFolder(*this, strSource, strTarget);
    }

    void FolderEnds(const QString& strSource, const QString& strTarget) override
    {
        m_metadata.FinishFolder(*this, strSource, strTarget);
    }

    std::atomic<ENCopyStatus> m_enStatus; // written by the GUI thread, polled by the worker
    qint64 m_nTotalSize = 0;
    qint64 m_nCopiedSize = 0;
    qint64 m_nUsedTime = 0; // ms, pauses left out, as last computed
    QString m_strDestPath;
    CDirNode* m_pRootNode = nullptr;

    CCopyClock m_clock;
    CCopyDestination m_destination;
    CCopyReport m_report;
    std::shared_ptr<CCopyReportFile> m_pReportFile; // shared with who completes it for a worker that hangs
    CCopyPulse m_pulse;
    std::unique_ptr<CReadAhead> m_pAhead; // while a copy runs
    CWritePace m_pace;
    CKeptTimes m_times;
    CFileMetadata m_metadata;
};
