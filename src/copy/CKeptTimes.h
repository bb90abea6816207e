#pragma once

#include <QtGlobal>

struct STFileState;

/**
 * Gives the files of one copy the times of their sources, and says whether the
 * disk has kept them. Used on the thread that copies.
 *
 * Some file systems say that they have set the times, and have not. That lies with their
 * driver, and so holds for every file, or with a date that they cannot hold. So a disk
 * that has kept the times of the first files is asked no more than now and then, but
 * for dates that not every file system holds; once it has not, it is asked each time.
 */
class CKeptTimes
{
public:
    /** Files whose times are looked at in any case, from the first on. */
    static constexpr int FIRST_FILES = 16;

    /** After these one file in so many. */
    static constexpr int ONE_IN = 64;

    /** Nothing is known of the disk. */
    void Begin() { *this = CKeptTimes(); }

    /**
     * Gives the open file the times of the state. False when they are not kept, with the
     * reason in errno, 0 when the disk has only said that they are.
     */
    bool Keep(int nDescriptor, const STFileState& stState);

private:
    bool HasToLook(const STFileState& stState);

    bool m_bDoubt = false; // it has not kept one
    qint64 m_nFiles = 0; // that were given times
};
