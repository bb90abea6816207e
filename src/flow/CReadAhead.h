#pragma once

#include "flow/CReadPlan.h"
#include "flow/STExpectedFile.h"

#include <QString>
#include <QVector>

#include <memory>

/**
 * Asks the source's disk for what the copy will read next, so that it comes in the
 * order in which it lies there, while the copy still works on what came before.
 *
 * It only asks: nothing of the copy depends on it, and where it cannot help (a source in
 * memory, a file system that keeps nothing of what it was asked for, a disk that fails or
 * stalls, little memory: CSourceDisk) it does nothing. All functions are for the thread that
 * copies and return at once; what may take long happens on a thread of its own, which
 * holds copies of paths and is left behind where its disk does not answer.
 *
 * Two batches are in flight, one that the copy works on and one that is being asked for.
 * Nothing is told or asked before the first file was opened, as its device is known by that.
 */
class CReadAhead
{
public:
    CReadAhead();

    /** Ends the work; waits END_MS at most for the helper to close what it has open. */
    ~CReadAhead();

    CReadAhead(const CReadAhead&) = delete;
    CReadAhead& operator=(const CReadAhead&) = delete;

    /** Whether more files are to be told now; false all the time where it cannot help. */
    bool WantsMore() const { return m_pPlan->HasRoom(); }

    /** Whether the disk was asked for all that was told, so that it is told anew what comes. */
    bool WantsAnew() const { return m_pPlan->IsDry(); }

    /**
     * The next files, in the order in which they will be copied: behind those told
     * before, or, anew, in place of those that the disk was not asked for yet.
     */
    void Expect(const QVector<STExpectedFile>& listFile, bool bAnew);

    /**
     * The copy has opened that file of that device and will read it from its beginning. What was told
     * before it and not opened is forgotten.
     */
    void SourceOpened(const QString& strPath, quint64 nDevice, int nDescriptor);

    /** A read of that file has taken nUs microseconds; nResult: its bytes, negative when it failed. */
    void SourceRead(qint64 nResult, qint64 nUs);

private:
    static constexpr int END_MS = 100;

    void Start();

    const std::shared_ptr<CReadPlan> m_pPlan;
    bool m_bStarted = false;
    quint64 m_nLeftAlone = 0; // the device of the file that was opened last, when nothing is asked of it
};
