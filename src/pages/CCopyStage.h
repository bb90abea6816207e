#pragma once

/** How far the present copy has come. */
enum class ENCopyStage
{
    NONE, ///< none was ordered yet
    WAITING, ///< ordered, but the worker has not ended the one before
    COPYING, ///< the worker runs for it and will say when it has finished
    REFUSED, ///< the worker ended without a word; only the user ends the copy
    ENDED, ///< its end has been or is being told
    REMOVED, ///< that its destination is gone has been or is being told
};

/**
 * The stages of the copies that one worker makes, one copy after another. What
 * happens is told to it, and it answers what has to be done about it.
 *
 *       .------.   Begin, worker free     .---------.  WorkerEnded   .---------.
 *       | NONE |------------------------->| COPYING |--------------->| REFUSED |
 *       '------'                          '---------'                '---------'
 *           |                              ^       |                      |
 *           | Begin, worker busy           |       | Finish               | Stop
 *           v              WorkerEnded     |       v                      |
 *       .---------.------------------------'    .-------.                 |
 *       | WAITING |---------------------------->| ENDED |<----------------'
 *       '---------'          Stop               '-------'
 *
 * LeaveWorker does what WorkerEnded does, for a worker that does not end: a waiting
 * copy gets a fresh one, and COPYING leads to ENDED, as no word will come of it.
 *
 * Begin leads from every stage to COPYING or WAITING, as from NONE. Finish leads to
 * ENDED from every stage but WAITING, whose worker is another copy's, and REMOVED,
 * to which Remove leads from every stage. The worker is a story of its own: when its
 * disk is slow to answer it outlasts its copy, and the next one waits for it.
 */
class CCopyStage
{
public:
    /** A copy is ordered. True when the worker is to be started for it now. */
    bool Begin();

    /** The worker says that it has finished. True when that is the present copy's end, to be told. */
    bool Finish();

    /** The worker has ended and says no more. True when it is to be started for the waiting copy now. */
    bool WorkerEnded();

    /** The worker is left behind, a fresh one takes its place. True when that is to be started now. */
    bool LeaveWorker();

    /** The user stops the copy. True when it ends here and now, as no worker will report its end. */
    bool Stop();

    /** The destination is gone. True when that is to be told; one removal comes as several events. */
    bool Remove();

    /** How far the present copy has come. */
    ENCopyStage Stage() const;

    /** True from the worker's start until it has ended. */
    bool IsWorkerBusy() const;

    /**
     * True while the worker is not through with a copy before the present one.
     * That copy has been reported, and stays stopped whatever happens to the present one.
     */
    bool IsWorkerOfEarlierCopy() const;

private:
    enum class ENWorker
    {
        FREE,
        OF_THIS_COPY,
        OF_EARLIER_COPY, ///< until it has ended
    };

    void StartWorker();

    ENCopyStage m_enStage = ENCopyStage::NONE;
    ENWorker m_enWorker = ENWorker::FREE;
};
