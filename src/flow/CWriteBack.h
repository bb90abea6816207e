#pragma once

#include <QtGlobal>

/** How bytes that were written to a file can be brought to its disk before the end of a copy. */
enum class ENWriteBack
{
    NONE, ///< not at all, or to no use: memory, another computer
    RANGES, ///< part by part, while the copy goes on
    FILES, ///< by flushing each file, which alone tells what could not be written of it
    DISK ///< by flushing one file, which brings all that was written before to the disk with it
};

/**
 * How the system is told to bring bytes of an open file to its disk. Every function may be
 * called on any thread; false leaves the reason in errno. A test has one of its own.
 */
class CWriteBack
{
public:
    CWriteBack() = default;
    virtual ~CWriteBack() = default;
    CWriteBack(const CWriteBack&) = delete;
    CWriteBack& operator=(const CWriteBack&) = delete;

    /** What works on the file system of an open file; NONE where it does not say what it is. */
    virtual ENWriteBack KindOf(int nDescriptor) const;

    /**
     * Another descriptor of an open file, for the functions below, by which nothing can be
     * written; the programs that are started do not get it. -1 on failure.
     */
    virtual int OpenAgain(int nDescriptor) const;

    /** Lets the disk begin with these bytes; does not wait for it, unless its queue is full. */
    virtual bool Start(int nDescriptor, qint64 nFrom, qint64 nBytes) const;

    /** Returns when these bytes, as they were, are on the disk or have failed. */
    virtual bool Wait(int nDescriptor, qint64 nFrom, qint64 nBytes) const;

    /** Returns when the whole file is on the disk. A failure is told once, and to nobody else. */
    virtual bool Flush(int nDescriptor) const;
};
