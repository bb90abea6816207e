#pragma once

#include "flow/STExpectedFile.h"

#include <QString>
#include <QVector>

/**
 * Asks the source's disk for what the copy will read next, so that it comes in the
 * order in which it lies there, while the copy still works on what came before.
 *
 * It only asks: nothing of the copy depends on it, and where it cannot help (a source in
 * memory, a file system that keeps nothing of what it was asked for, a disk that fails or
 * stalls, little memory) it does nothing. All functions are for the thread that copies
 * and return at once; what may take long happens on a thread of its own, which holds copies
 * of paths and is left behind where its disk does not answer.
 */
class CReadAhead
{
public:
    CReadAhead();

    /** Ends the work; does not wait for a disk. */
    ~CReadAhead();

    CReadAhead(const CReadAhead&) = delete;
    CReadAhead& operator=(const CReadAhead&) = delete;

    /** Whether more files are to be told now; false all the time where it cannot help. */
    bool WantsMore() const;

    /** The next files, in the order in which they will be copied, behind those told before. */
    void Expect(const QVector<STExpectedFile>& listFile);

    /**
     * The copy has opened that file and will read it from its beginning. What was told
     * before it and not opened is forgotten.
     */
    void SourceOpened(const QString& strPath, int nDescriptor);

    /** A read of that file has taken nUs microseconds; nResult is its number of bytes, or negative when it
     * failed. */
    void SourceRead(qint64 nResult, qint64 nUs);
};
