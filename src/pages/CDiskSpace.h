#pragma once

#include <QString>

/** How the selection page writes a disk's space. */
class CDiskSpace
{
public:
    /** Decimal gigabytes with two decimals; less than nothing counts as 0. Any thread. */
    static QString GigabyteText(qint64 nBytes);
};
