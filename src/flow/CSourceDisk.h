#pragma once

#include "flow/CReadAdvice.h"

#include <array>

/**
 * What one device has shown of itself while a copy reads from it: whether it pays to ask it for
 * files ahead, and in what order. Plain logic, no lock.
 *
 * It does not pay where nothing is gained (memory), where what was asked for is gone when
 * the file is opened (some drivers forget it: what is neither known to keep it nor tells what
 * it has is left alone, and MOST_MISSED files in a row are proof), and it is over
 * for good after an error or a stall: a disk that dies gets no more work than the copy itself.
 *
 * The order is that of the disk where a seek is dear, and the copy's where it is not. The
 * first files are read without advice, and the first read of each may be a seek and its bytes:
 * at SEEK_US and more beyond the time of the bytes a seek is dear, whatever the system says of the
 * disk. Less proves nothing where the files may lie one behind the other, so a disk that
 * is said to turn is taken for one. Sticks are often said to turn, too; there the order
 * is worth little, and costs little.
 */
class CSourceDisk
{
public:
    static constexpr int SAMPLES = 3; ///< first reads that say what a seek costs
    static constexpr int MOST_MISSED = 4; ///< files in a row that were asked for in vain
    static constexpr int TRIAL_FILES = 8; ///< in a batch until one was found in memory
    static constexpr int MOST_FILES = 256; ///< in a batch
    static constexpr qint64 TRIAL_BYTES = qint64(1) << 20; ///< in a batch until one was found in memory
    static constexpr qint64 MOST_BYTES = qint64(16) << 20; ///< in a batch
    static constexpr qint64 SEEK_US = 2000; ///< a seek of that many microseconds is dear
    static constexpr qint64 STALL_US = 2000000; ///< a call of that many microseconds is a stall

    CSourceDisk() = default;

    /** enThere: what the device says of a byte of one of its files. */
    CSourceDisk(const STSourceDisk& stDisk, ENThere enThere);

    /** Whether it may be asked for anything. */
    bool MayHelp() const { return m_bMayHelp; }

    /** Nothing more is asked of it. */
    void End() { m_bMayHelp = false; }

    /** A read, the first one of its file or a later one, of that many bytes, took that many microseconds. */
    void NoteRead(bool bFirst, qint64 nBytes, qint64 nUs);

    /** A file that had been asked for was in memory, or had not come although later ones had. */
    void NoteAsked(bool bThere);

    /** Whether enough was read to tell what a seek costs. */
    bool IsLearned() const { return m_nSamples == SAMPLES || m_nReads >= MOST_READS; }

    /** Whether to ask in the order of the disk. */
    bool Seeks() const;

    /** The largest batch at present. */
    int BatchFiles() const { return m_bProven ? MOST_FILES : TRIAL_FILES; }
    qint64 BatchBytes() const { return m_bProven ? MOST_BYTES : TRIAL_BYTES; }

private:
    static constexpr int MOST_READS = 16; // a large file is not learned from for ever

    bool m_bMayHelp = false;
    bool m_bProven = false;
    std::optional<bool> m_bTurns;
    std::array<qint64, SAMPLES> m_listSeekUs = {};
    int m_nSamples = 0;
    int m_nReads = 0;
    int m_nMissed = 0; // in a row
};
