#pragma once

#include <QtGlobal>

#include <functional>

/**
 * Lets the destination's disk write while the copy goes on, and lets no more wait in the
 * system's memory than the disk writes in about two seconds: what the window says is
 * on the disk then, and the end of a copy is not a long flush. Used on the thread that
 * copies. It reports no error: what the disk cannot take is told by the flush at the end.
 */
class CWritePace
{
public:
    /** fnGoesOn is asked while it waits, about every 50 ms; false lets the copy go on without waiting. */
    explicit CWritePace(std::function<bool()> fnGoesOn);

    ~CWritePace();

    CWritePace(const CWritePace&) = delete;
    CWritePace& operator=(const CWritePace&) = delete;

    /** The copy begins, nothing waits. */
    void Begin();

    /**
     * nBytes from nFrom on were written to the open file; may wait for the disk. errno is
     * as before.
     */
    void Written(int nDescriptor, qint64 nFrom, qint64 nBytes);

    /** The file is complete and will be closed next; the descriptor is not used afterwards. */
    void Ends(int nDescriptor);

    /** Holds nothing of the destination open any more. Before the destination is flushed. */
    void End();
};
