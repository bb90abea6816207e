#pragma once

#include "flow/CSourceDisk.h"
#include "flow/STExpectedFile.h"

#include <QSet>
#include <QVector>

#include <atomic>
#include <condition_variable>
#include <deque>
#include <map>
#include <mutex>
#include <optional>

/** A file that a helper is to ask for. */
struct STAskedFile
{
    qint64 nNumber = 0; ///< in the order of the copy, from 1 on
    STExpectedFile stFile = {};
    qint64 nAdvised = 0; ///< bytes from its beginning that were asked for
    bool bWhole = false; ///< all of it was asked for
};

/** What a helper is to do next. */
enum class ENReadWork
{
    END, ///< nobody wants anything any more
    BATCH, ///< there is room for files, and there are some
    LARGE, ///< the file that was asked for in part is read, or was left
    LOOK ///< see whether what was asked for has come
};

/** Until where the file that was asked for in part is to be asked for now. */
struct STLargeWork
{
    bool bLeft = false; ///< the copy is past it
    qint64 nTo = 0; ///< bytes from its beginning
};

/**
 * What the copy has told, what of it a helper has asked the disk for, and how far the
 * copy has come: shared by the two, each function takes the lock. It holds no descriptor
 * and calls nothing of the system.
 */
class CReadPlan
{
public:
    static constexpr int MOST_WAITING = 1024; ///< files that were told and not asked for

    // For the thread that copies.

    /** Whether that device has been told of. */
    bool IsKnown(quint64 nDevice) const;

    /** What is known of that device at first. */
    void AddDisk(quint64 nDevice, const CSourceDisk& disk);

    /** The files and folders to come, behind those told before, or instead of those not asked for yet. */
    void Expect(const QVector<STExpectedFile>& listFile, bool bAnew);

    /** Whether the device of the file that was opened last may be asked for anything. */
    bool MayHelp() const { return m_bHelps; }

    /** Whether more files may be told. */
    bool HasRoom() const { return m_bHelps && m_nWaiting < MOST_WAITING / 2; }

    /** Whether nothing is left of what was told. */
    bool IsDry() const { return m_bHelps && m_nWaiting == 0; }

    /** The copy has opened that file of that device; what was asked for of it, if anything. */
    std::optional<STAskedFile> Opened(const QByteArray& baPath, quint64 nDevice);

    /** Whether the file that was opened last had come, when it was asked for. */
    void NoteThere(const STAskedFile& stFile, bool bThere);

    /** A read of the file that was opened last; negative when it failed. */
    void NoteRead(qint64 nBytes, qint64 nUs);

    /** Nobody wants anything any more; true when the helper ends within that time. */
    bool End(int nWaitMs);

    // For the helper.

    /** Waits for work; looks now and then while something has not come. */
    ENReadWork Wait();

    /** The bytes that a batch may have, and no more than nFree/16 of them; 0 with little memory, for good. */
    qint64 BeginBatch(qint64 nFree);

    /** How many files it may have. */
    int BatchFiles() const;

    /** Whether a batch is asked for in the order of the disk. */
    bool Seeks() const;

    /** The next file or folder; nothing when there is none, or none may be asked for any more. */
    std::optional<STAskedFile> Take();

    /** What is in the folder that was taken: comes next. Without its end nothing behind it is known. */
    void Unfold(const QVector<STExpectedFile>& listEntry, bool bWhole);

    /** Whether to ask for that file: the copy has not come to it, and nothing is over. */
    bool IsWanted(qint64 nNumber) const;

    /** The same of one that was asked for in part: the copy has not left it. */
    bool IsWantedOn(qint64 nNumber) const;

    /** The device of the file that was opened last. */
    quint64 Device() const;

    /** Whether a file that was taken lies on the device of the copy; one that does not is waited for. */
    bool IsOnDisk(qint64 nNumber, quint64 nDevice);

    /** So much of it was asked for; what is not whole is asked for as the copy reads it. */
    void NoteAdvised(qint64 nNumber, qint64 nBytes, bool bWhole);

    /** The file that was asked for in part, and its size. */
    void SetLarge(qint64 nNumber, qint64 nSize);

    /** What to do with that; after it, it is asked for until there. */
    STLargeWork TakeLarge();

    /** Nothing is held of it any more. */
    void DropLarge();

    /** A batch was asked for, nothing behind that file; it is seen when it has come. */
    void EndBatch(qint64 nNumber);

    /** The end of the batch has come. Disks serve in an order of their own, so the batch before it has. */
    void NoteArrived();

    /** An error, or a call that took long: the device is left alone. */
    void EndDisk();

    /** The helper has ended. */
    void NoteEnded();

private:
    CSourceDisk& Disk() { return m_mapDisk[m_nDevice]; }
    bool IsAsking() const;
    ENReadWork Work() const;
    void EndIfOver();
    QSet<QByteArray> Asked() const;
    void Pop(size_t nAsked);

    mutable std::mutex m_mutex;
    std::condition_variable m_changed;
    std::deque<STAskedFile> m_listAsked; // not opened yet, numbers without gaps
    std::deque<STExpectedFile> m_listWaiting;
    std::map<quint64, CSourceDisk> m_mapDisk;
    quint64 m_nDevice = 0; // of the file that was opened last
    bool m_bFirstRead = false; // of that file comes
    qint64 m_nOpened = 0; // its number, or that of the last one that had any
    qint64 m_nPosition = 0; // bytes that were read of it
    qint64 m_nNext = 1; // number of the next file that is taken
    qint64 m_nAskedBytes = 0; // of all in m_listAsked
    qint64 m_nElsewhere = 0; // a file on another device; nothing behind it is taken until it is opened
    int m_nUnknown = 0; // files in a row that nobody had told
    qint64 m_nBatchBytes = CSourceDisk::TRIAL_BYTES;
    qint64 m_nLastOfBatch = 0;
    qint64 m_nArrived = 0; // the last file of that batch has come
    qint64 m_nAllArrived = 0; // all files up to that one have come, the batch behind them being through
    int m_nLooks = 0; // for that, since the batch ended
    qint64 m_nLarge = 0; // number of the file that was asked for in part; 0 for none
    qint64 m_nLargeSize = 0;
    qint64 m_nLargeTo = 0;
    bool m_bEnd = false;
    bool m_bEnded = false;
    bool m_bLeftBehind = false;
    std::atomic<bool> m_bHelps{false};
    std::atomic<int> m_nWaiting{0};
};
