#pragma once

#include <QtGlobal>

/** What the system can be told and asked about reads to come. Every function may be called on any thread. */
class CReadAdvice
{
public:
    /** Asks for bytes of an open file without waiting for them; false when the system takes no such advice.
     */
    static bool WillNeed(int nDescriptor, qint64 nFrom, qint64 nBytes);
};
