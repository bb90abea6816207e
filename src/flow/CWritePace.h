#pragma once

#include "flow/CLateFlush.h"
#include "flow/CWriteBack.h"
#include "flow/CWriteQueue.h"

#include <QtGlobal>

#include <atomic>
#include <functional>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

/**
 * Lets the destination's disk write while the copy goes on, and lets no more wait in the
 * system's memory than the disk writes in about two seconds: what the window says is
 * on the disk then, and the end of a copy is not a long flush. Used on the thread that
 * copies.
 *
 * What the disk cannot take is told by the flush at the end, as without this; only where
 * a file has to be flushed for it the failure is told here, and by nobody else. Where each file
 * has to be (ENWriteBack::FILES), Settle does that before a file is closed.
 */
class CWritePace
{
public:
    static constexpr qint64 WINDOW_MS = 2000; ///< how long the disk writes at what waits
    static constexpr qint64 FLUSH_MS = 500; ///< how long a file is flushed, where nothing else helps
    static constexpr qint64 FIRST_BYTES = qint64(4) * 1024 * 1024; ///< may wait while the speed is not known
    static constexpr qint64 LEAST_BYTES = qint64(1024) * 1024; ///< may wait however slow the disk is
    static constexpr qint64 BIG_BYTES
        = qint64(1024) * 1024; ///< the disk begins with a file of that size while it grows
    static constexpr int MOST_KEPT = 64; ///< files that are held open beside the copy's own

    /**
     * fnGoesOn is asked while it waits, about every 50 ms, and told whether the disk has done
     * something since; false lets the copy go on without waiting. fnSteadyMs gives the
     * time in ms, on any thread.
     */
    CWritePace(std::function<bool(bool)> fnGoesOn, std::function<qint64()> fnSteadyMs,
               std::shared_ptr<const CWriteBack> pWriteBack = std::make_shared<const CWriteBack>());

    ~CWritePace();

    CWritePace(const CWritePace&) = delete;
    CWritePace& operator=(const CWritePace&) = delete;

    /** The copy begins, nothing waits. */
    void Begin();

    /**
     * nBytes from nFrom on were written to the open file, behind what was written to it
     * before; may wait for the disk. errno is as before.
     */
    void Written(int nDescriptor, qint64 nFrom, qint64 nBytes);

    /**
     * The file has all that it gets. Where only its own flush tells what could not be written, it is
     * flushed; false when that fails, or has failed before, with the reason in errno. A small
     * one is flushed together with others: its failure is told by what Booked was given.
     */
    bool Settle(int nDescriptor);

    /**
     * What has become of the file that was settled last is booked: fnLost is told, on this thread, why it
     * cannot be flushed after all. Without it the file is not whole for other reasons.
     */
    void Booked(CLateFlush::Lost fnLost) { m_late.Booked(std::move(fnLost)); }

    /** The file is complete, and its descriptor is not used afterwards. errno is as before. */
    void Ends(int nDescriptor);

    /** Flushes the last small files and holds nothing open any more. Before the destination is flushed. */
    void End();

    /** Bytes that may wait at the moment. */
    qint64 WindowBytes() const;

    /** Bytes that wait, as far as is known, and something for each small file. */
    qint64 WaitingBytes() const;

    /**
     * For a copy whose thread is left behind: what flushes the small files that are not flushed, on any
     * thread; it gives false when one fails, or nobody knows. Any thread.
     */
    std::function<bool()> TakeLate();

    /** A file that nobody can be told of could not be flushed for that errno value; 0 is none. */
    void KeepError(int nError);

    /** Why a file could not be flushed since the copy began, as in errno; 0 when none failed. Any thread. */
    int FlushError() const { return m_nFlushError; }

private:
    /** The file that the copy writes. */
    struct STFile
    {
        int nDescriptor = -1; ///< the copy's own
        qint64 nBytes = 0; ///< written so far
        qint64 nAdded = 0; ///< of these the queue has
        int nError = 0; ///< for which it could not be flushed, and nobody was told
        bool bSettled = false; ///< it is flushed, or waits with other small ones
        std::shared_ptr<const CDescriptor> pKept = {}; ///< another one of the same file
    };

    bool FindKind(int nDescriptor);
    qint64 StepBytes() const;
    void AddGrown(bool bAll);
    void EndSmall();
    void AddBatch();
    void KeepToWindow();
    bool WaitForAnswer();
    bool Keep();
    bool KeepForLater();
    void FlushAll();
    void FlushTook(qint64 nMs);
    int FlushOne(int nDescriptor) const;
    void EndFlushed();

    const std::function<bool(bool)> m_fnGoesOn;
    const std::function<qint64()> m_fnSteadyMs;
    const std::shared_ptr<const CWriteBack> m_pWriteBack;
    const qint64 m_nMostBytes; // may wait however fast the disk is
    std::optional<ENWriteBack> m_enKind = ENWriteBack::NONE; // nothing before it is known
    STFile m_stFile;
    STWriteJob m_stBatch; // small files that the queue does not have, or files that are to be flushed
    std::unique_ptr<CWriteQueue> m_pQueue;
    std::vector<std::weak_ptr<const CDescriptor>> m_listKept;
    CLateFlush m_late;
    qint64 m_nUnflushed = 0; // bytes, where files are flushed
    qint64 m_nFlushBytes = LEAST_BYTES; // wait until a file is flushed
    std::atomic<int> m_nFlushError{0};
};
