#pragma once

#include <QTimer>

#include <chrono>
#include <functional>

class CFileTreeView;
class CGetFileSizeThread;
class CNoticeLine;
class CSearchWaitView;

class QString;
struct STDiskRules;

/**
 * The count of the ticked bytes as the selection page sees it: what has to
 * happen before the size worker starts and after it has ended.
 *
 * While it runs the nodes belong to the worker, the tree takes no input, the
 * waiting dialog is shown and nothing on this thread reads a node. A disk that does
 * not answer is named in the line of notices, and some time later the count is given
 * up, so that the dialog does not stand for ever. GUI thread only.
 */
class CSelectionCount
{
public:
    /** None of the four is owned; they have to live as long. fnGivenUp is run when a count was given up. */
    CSelectionCount(CFileTreeView* pTree, CGetFileSizeThread* pThread, CSearchWaitView* pWaitView,
                    CNoticeLine* pNotice, std::function<void()> fnGivenUp);

    /** How long a disk may not answer before it is named (20 s), and before the count is given up (60 s). */
    static void SetPatience(std::chrono::milliseconds notice, std::chrono::milliseconds end);

    /**
     * Lends the nodes to the worker and starts it; strText is what the waiting dialog says,
     * stRules what the destination can hold.
     */
    void Begin(const QString& strText, const STDiskRules& stRules);

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
    void Look();

    CFileTreeView* m_pTree;
    CGetFileSizeThread* m_pThread;
    CSearchWaitView* m_pWaitView;
    CNoticeLine* m_pNotice;
    const std::function<void()> m_fnGivenUp;
    QTimer m_timer; // runs while the count does
    bool m_bRunning = false;
    bool m_bNamed = false; // the notice names the source's disk
    bool m_bTickedAtBegin = false;
};
