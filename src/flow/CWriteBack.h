#pragma once

#include <QtGlobal>

/**
 * How the system is told to bring bytes of an open file to its disk. Every function may be
 * called on any thread; false leaves the reason in errno.
 */
class CWriteBack
{
public:
    /** Lets the disk begin with these bytes; does not wait for it, unless its queue is full. */
    static bool Start(int nDescriptor, qint64 nFrom, qint64 nBytes);

    /** Returns when these bytes, as they were, are on the disk or have failed. */
    static bool Wait(int nDescriptor, qint64 nFrom, qint64 nBytes);
};
