#pragma once

#include <chrono>

class CFileTreeView;
class CGetFileSizeThread;
class CSearchWaitView;

class QString;

/**
 * The count of the ticked bytes as the selection page sees it: what has to
 * happen before the size worker starts and after it has ended.
 *
 * While it runs the nodes belong to the worker, the tree takes no input, the
 * waiting dialog is shown and nothing on this thread reads a node. GUI thread only.
 */
class CSelectionCount
{
public:
    /** None of the three is owned; they have to live as long. */
    CSelectionCount(CFileTreeView* pTree, CGetFileSizeThread* pThread, CSearchWaitView* pWaitView);

    /** Lends the nodes to the worker and starts it; strText is what the waiting dialog says. */
    void Begin(const QString& strText);

    /** Waits for the worker's end and takes the nodes back. False when no count was running. */
    bool End();

    /**
     * Tells a running worker to end without result and waits up to that time. One that
     * does not end, as its disk does not answer, is left behind with the nodes, which
     * stay as long as the process, and frees itself when it ends after all.
     */
    void Abandon(std::chrono::milliseconds time);

    /** True from Begin to End. */
    bool IsRunning() const { return m_bRunning; }

    /** Whether an entry of the tree is ticked; during a count whether one was at its begin. */
    bool IsSomethingTicked() const;

private:
    CFileTreeView* m_pTree;
    CGetFileSizeThread* m_pThread;
    CSearchWaitView* m_pWaitView;
    bool m_bRunning = false;
    bool m_bTickedAtBegin = false;
};
