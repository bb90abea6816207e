#pragma once

#include <QString>

/** What the file system says of a disk's space at the time of the call. */
class CDiskSpace
{
public:
    /**
     * The bytes that a user without special rights can still write; less than 0
     * when not known. The file system's own count of free blocks can be larger,
     * and a copy that was admitted by it would run full. Any thread.
     */
    static qint64 FreeBytes(const QString& strPath);

    /** The bytes of the whole volume; less than 0 when not known. Any thread. */
    static qint64 TotalBytes(const QString& strPath);

    /** Decimal gigabytes with two decimals; less than nothing counts as 0. Any thread. */
    static QString GigabyteText(qint64 nBytes);
};
