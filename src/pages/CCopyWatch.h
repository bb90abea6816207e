#pragma once

#include "pages/CCopyStateLine.h"

#include <QObject>
#include <QPointer>
#include <QTimer>

#include <optional>

class CCopyFileThread;
class CElidedLabel;

/**
 * Looks at the copy's worker now and then: shows in a label how it goes, and tells
 * when one that has to end does not, because its disk does not answer.
 * GUI thread only.
 */
class CCopyWatch : public QObject
{
    Q_OBJECT

public:
    static constexpr qint64 STOP_MS = 2300; ///< without progress, until a stopped worker is given up
    static constexpr qint64 FLUSH_MS
        = 20000; ///< the same while it waits for a slow disk to take the last bytes

    /** Watches for the page whose label it is. */
    explicit CCopyWatch(CElidedLabel* pLabel);

    /** The worker begins a copy. */
    void Begin(const CCopyFileThread* pWorker);

    /** The copy was told to stop: its worker is to end soon. */
    void Stop();

    /** A worker of an earlier copy holds up the next one; nothing is shown of it. */
    void Await(const CCopyFileThread* pWorker);

    /** The copy has ended, there is nothing to watch any more. */
    void End();

    /** Shows what the line says in a label, in the ink of a warning when a disk does not answer. */
    static void ShowLine(CElidedLabel& label, const CCopyStateLine& line);

    /** Whether a worker that has to end is given up, nStopMs after it was told so. */
    static bool IsGivenUp(qint64 nStopMs, qint64 nSinceProgressMs, bool bFlushing);

signals:
    /** The worker does not end; nothing is watched any more. */
    void SignalGivenUp();

private:
    void Start(const CCopyFileThread* pWorker, int nIntervalMs);
    void Look();
    void Show(const STCopySample& stSample);

    CElidedLabel* m_pLabel;
    QTimer m_timer{this};
    std::optional<qint64> m_nStopMs; // time of CClock, while an end is waited for
    QPointer<const CCopyFileThread> m_pWorker;
    bool m_bShown = false; // in the label
    CCopyStateLine m_line;
};
