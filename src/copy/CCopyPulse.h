#pragma once

#include "copy/ENCopyStep.h"

#include <QString>
#include <QtGlobal>

#include <atomic>
#include <mutex>

/**
 * The sign of life of a copy: what it does at the moment, and since when it has
 * got no further. The thread that copies tells it; any thread may ask.
 */
class CCopyPulse
{
public:
    /** A copy into that folder begins. */
    void Begin(const QString& strDest);

    /** The copy has ended. */
    void End();

    /** The copy comes to the item of that path: one at the source, or the folder that is copied into. */
    void BeginItem(const QString& strPath);

    /** What the copy did before has ended, and the next call to the system may take long. */
    void BeginStep(ENCopyStep enStep);

    /** nBytes more have reached the destination. */
    void AddBytes(qint64 nBytes);

    /** One more file is whole. */
    void AddFile();

    /** One that was taken for whole is not. */
    void TakeFile();

    /** Time since the last step ended, in ms; 0 while no copy runs or it is paused. */
    qint64 SinceProgressMs() const;

    /** The item that the copy is at; empty before the first copy. */
    QString Path() const;

    /** What the copy waits for. */
    ENCopyStep Step() const;

    /** Files that are whole so far. */
    qint64 Files() const;

    /** Bytes that have reached the destination so far. */
    qint64 Bytes() const;

private:
    mutable std::mutex m_mutex;
    QString m_strPath; // guarded by the mutex
    std::atomic<ENCopyStep> m_enStep{ENCopyStep::IDLE};
    std::atomic<qint64> m_nLastMs{0}; // when the last step ended
    std::atomic<qint64> m_nFiles{0};
    std::atomic<qint64> m_nBytes{0};
};
