#pragma once

#include <QString>

/** Why a volume cannot be shown. */
enum class ENMissing
{
    LOCKED, ///< encrypted, and not opened
    DAMAGED, ///< its file system could not be read
    UNKNOWN, ///< nothing here can read this kind
    SILENT, ///< its disk does not answer
    APART, ///< of several disks that belong together, and were not put together
    LOST ///< reading it takes more memory than there is
};

/** A volume, or what may be one, that is not among those that can be copied. */
struct STMissingVolume
{
    ENMissing enWhy = ENMissing::UNKNOWN; ///< why it is not
    QString strName; ///< as it is, may be empty
    QString strDisk; ///< model of its disk, may be empty
    qint64 nSize = -1; ///< in bytes, -1 when it is not known
};
