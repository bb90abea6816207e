#pragma once

#include "copy/CCopyFileThread.h"
#include "files/CFileNameCodec.h"
#include "support/CGate.h"
#include "support/CNodeTree.h"
#include "support/CTempTree.h"
#include "support/LogFile.h"
#include "support/TestFiles.h"

#include <QFileInfo>
#include <QSignalSpy>
#include <QTest>

#include <functional>
#include <memory>

/**
 * What the tests of a copy stand on: files below "src" with their nodes, a worker
 * that copies them to m_strDest, and what it tells. The worker runs on the test's
 * own thread, or on its own between Start and WaitForEnd.
 */
class CCopyBed : public QObject
{
protected:
    /** Longer than any wait of a test that passes. */
    static constexpr int PATIENCE_MS = 20000;

    /** Before each test. */
    void Make()
    {
        CFileNameCodec::Install();
        UseLogFile();
        m_pTree = std::make_unique<CTempTree>();
        m_pNodes = std::make_unique<CNodeTree>();
        m_strDest = m_pTree->Path("dst");
        m_pEnds = std::make_unique<CGate>();
        m_pWorker = std::make_unique<CCopyFileThread>();
        m_pProgress = std::make_unique<QSignalSpy>(m_pWorker.get(), &CCopyFileThread::SignalCopyCopyInfo);
        m_pRemaining = std::make_unique<QSignalSpy>(m_pWorker.get(), &CCopyFileThread::SignalRemainTime);
        m_pFinished = std::make_unique<QSignalSpy>(m_pWorker.get(), &CCopyFileThread::SignalCopyFinish);
        m_pAccounts = std::make_unique<QSignalSpy>(m_pWorker.get(), &CCopyFileThread::SignalCopyAccount);
        connect(
            m_pWorker.get(), &CCopyFileThread::SignalCopyFinish, m_pWorker.get(),
            [pEnds = m_pEnds.get()] { pEnds->Open(); }, Qt::DirectConnection);
    }

    /** After each test: ends the worker, also when a check has failed in between. */
    void Clear()
    {
        if (!m_pWorker) {
            return; // skipped before Make
        }
        m_pWorker->SetCopyStatus(COPY_STATUS_STOP);
        if (m_pHeld) {
            m_pHeld->go.Open();
        }
        m_pWorker->wait();
        m_pHeld.reset();
        m_pAccounts.reset();
        m_pFinished.reset();
        m_pRemaining.reset();
        m_pProgress.reset();
        m_pWorker.reset();
        m_pNodes.reset();
        m_pTree.reset();
    }

    /** Writes "src/" + strName and adds its node, below the root when no parent is given. */
    CDirNode* Add(const QString& strName, const QByteArray& baContent = {},
                  Qt::CheckState enState = Qt::Checked, CDirNode* pParent = nullptr)
    {
        return m_pNodes->Add(m_pTree->Write("src/" + strName, baContent), enState, pParent);
    }

    /** Copies everything ticked, on this thread. */
    void Run(qint64 nTotal = 1, ENCopyStatus enStatus = COPY_STATUS_RUN)
    {
        m_pWorker->SetCopyParam(nTotal, m_pNodes->Root(), m_strDest, enStatus);
        m_pWorker->run();
    }

    /** Copies everything ticked, on the worker's thread. */
    void Start(qint64 nTotal)
    {
        m_pWorker->SetCopyParam(nTotal, m_pNodes->Root(), m_strDest, COPY_STATUS_RUN);
        m_pWorker->start();
    }

    /** Like Start, but the worker waits after its first chunk until LetGo; returns when it does. */
    bool StartAndHold(qint64 nTotal)
    {
        m_pHeld = std::make_unique<STHeld>();
        AfterEachChunk([pHeld = m_pHeld.get()] {
            pHeld->chunks.Open();
            if (!pHeld->bDone.exchange(true)) {
                pHeld->go.Pass(PATIENCE_MS);
            }
        });
        Start(nTotal);
        return NextChunk(PATIENCE_MS);
    }

    void LetGo() { m_pHeld->go.Open(); }

    /** Whether a held copy moves, or has moved, one chunk more; the first is taken by StartAndHold. */
    bool NextChunk(int nMs) { return m_pHeld->chunks.Pass(nMs); }

    /** Waits for the end of what was started; false when it did not come in time. */
    bool WaitForEnd(int nMs = PATIENCE_MS) { return m_pEnds->Pass(nMs) && m_pWorker->wait(PATIENCE_MS); }

    /** Runs fnAction after each chunk, on the thread that copies, while the file is open. */
    void AfterEachChunk(const std::function<void()>& fnAction)
    {
        connect(m_pWorker.get(), &CCopyFileThread::SignalCopyCopyInfo, m_pWorker.get(), fnAction,
                Qt::DirectConnection);
    }

    /** The same once, after the chunk number nChunk, from 1, of the file strName. */
    void AfterChunk(const QString& strName, int nChunk, const std::function<void()>& fnAction)
    {
        connect(
            m_pWorker.get(), &CCopyFileThread::SignalCopyCopyInfo, m_pWorker.get(),
            [strName, nLeft = nChunk, fnAction](const QString& strChunk) mutable {
                if (strChunk == strName && --nLeft == 0) {
                    fnAction();
                }
            },
            Qt::DirectConnection);
    }

    /** Path of an entry of "src". */
    QString Source(const QString& strName) const { return m_pTree->Path("src/" + strName); }

    /** Where its copy is to be. */
    QString Copy(const QString& strName) const { return m_strDest + Source(strName); }

    /** Content of its copy. */
    QByteArray Copied(const QString& strName) const { return Content(Copy(strName)); }

    /** The account of the last copy. */
    STCopyAccount Account() const
    {
        return m_pAccounts->isEmpty() ? STCopyAccount() : m_pAccounts->last().at(0).value<STCopyAccount>();
    }

    /** Where the report of the copy is as long as it is needed. */
    QString ReportPath() const { return m_strDest + ".txt"; }

    /** The lines of the report, the head's without the blanks behind them. */
    QStringList ReportLines() const
    {
        QStringList listLine;
        for (const QByteArray& baLine : Content(ReportPath()).split('\n')) {
            listLine.append(QString::fromUtf8(baLine).trimmed());
        }
        return listLine;
    }

    /** What a signal has told, one text for each time, its values with blanks between. */
    static QStringList Told(const QSignalSpy& spy)
    {
        QStringList listTold;
        for (const QList<QVariant>& listValue : spy) {
            listTold.append(QVariant(listValue).toStringList().join(' '));
        }
        return listTold;
    }

    /** What was logged as not copied whole, as "name: why" when it lies in "src". */
    QStringList Problems() const
    {
        return ProblemLines()
            .replaceInStrings(QString("Not copied whole: \"") + m_pTree->Path("src/"), "")
            .replaceInStrings("\": ", ": ");
    }

    std::unique_ptr<CTempTree> m_pTree;
    std::unique_ptr<CNodeTree> m_pNodes;
    QString m_strDest; // "dst" of the tree, unless a test says otherwise
    std::unique_ptr<CCopyFileThread> m_pWorker;
    std::unique_ptr<QSignalSpy> m_pProgress;
    std::unique_ptr<QSignalSpy> m_pRemaining;
    std::unique_ptr<QSignalSpy> m_pFinished;
    std::unique_ptr<QSignalSpy> m_pAccounts;

private:
    struct STHeld
    {
        CGate chunks; ///< one Open for each chunk
        CGate go;
        std::atomic<bool> bDone{false};
    };

    std::unique_ptr<STHeld> m_pHeld;
    std::unique_ptr<CGate> m_pEnds;
};
