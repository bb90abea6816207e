#pragma once

#include "files/CDescriptor.h"
#include "flow/CWriteBack.h"

#include <QtGlobal>

#include <functional>
#include <memory>
#include <optional>
#include <vector>

/** A part of a file that the disk is to write. */
struct STWritePart
{
    std::shared_ptr<const CDescriptor> pFile = {}; ///< held open until the part is written
    qint64 nFrom = 0; ///< bytes
    qint64 nBytes = 0;
};

/** What the disk is to write at once. */
struct STWriteJob
{
    std::vector<STWritePart> listPart = {}; ///< the last one stands for all when they are waited for
    qint64 nBytes = 0; ///< that this counts in the sum of what waits
};

/**
 * What a disk is to write, in order, on a thread of its own: that one lets the disk have a
 * few MiB at a time, waits for them and sees how fast it is. What fails is passed over.
 *
 * The other functions are for one calling thread, and none waits for the disk unless it
 * says so.
 */
class CWriteQueue
{
public:
    static constexpr qint64 DEPTH_BYTES = qint64(8) * 1024 * 1024; ///< that the disk has at a time
    static constexpr qint64 WAIT_BYTES = qint64(256) * 1024; ///< that are waited for at a time

    /** fnSteadyMs gives the time in ms, on any thread. */
    CWriteQueue(std::shared_ptr<const CWriteBack> pWriteBack, std::function<qint64()> fnSteadyMs);

    /**
     * Forgets what the disk does not have yet and closes all files. Waits a second for the
     * call that the thread is in; where the disk does not answer it is left behind.
     */
    ~CWriteQueue();

    CWriteQueue(const CWriteQueue&) = delete;
    CWriteQueue& operator=(const CWriteQueue&) = delete;

    /** Whether the system has given a thread; nothing may be added without. */
    bool IsValid() const { return m_bThread; }

    /** Something more to write, behind all that came before. */
    void Add(STWriteJob stJob);

    /** Bytes that were added and are not known to be on the disk. */
    qint64 WaitingBytes() const;

    /** Bytes that the disk writes in that time; nothing before enough was seen. */
    std::optional<qint64> BytesIn(qint64 nMs) const;

    /** Waits about 50 ms for the disk; whether it has answered since the last such call. */
    bool WaitForAnswer();

private:
    struct STShared;
    class CServer;

    const std::shared_ptr<STShared> m_pShared;
    qint64 m_nSeen = 0; // answers
    bool m_bThread = true;
};
