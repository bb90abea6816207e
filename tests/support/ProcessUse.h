#pragma once

#include <QFile>
#include <QtGlobal>

#include <sys/resource.h>

/** Processor time that this process has used so far, in milliseconds. */
inline qint64 ProcessorTimeMs()
{
    rusage usage;
    getrusage(RUSAGE_SELF, &usage);
    return (usage.ru_utime.tv_sec + usage.ru_stime.tv_sec) * 1000
        + (usage.ru_utime.tv_usec + usage.ru_stime.tv_usec) / 1000;
}

/** Makes the most memory that this process has had what it has now; false where the system cannot. */
inline bool ForgetPeakMemory()
{
    QFile file(QStringLiteral("/proc/self/clear_refs"));
    return file.open(QIODevice::WriteOnly) && file.write("5") == 1;
}

/** The most memory that this process has had so far, or since ForgetPeakMemory. */
inline qint64 PeakMemoryMiB()
{
    rusage usage;
    getrusage(RUSAGE_SELF, &usage);
    return usage.ru_maxrss / 1024;
}
