#pragma once

#include <QString>

/**
 * The clean-up of left-over mount points: a disk that is pulled can leave its
 * empty folder behind, which would be mistaken for a volume.
 */
class CLeftoverFolder
{
public:
    /**
     * True when everything below strFolder is empty plain folders: no mount
     * point, no file, no link. Otherwise false, also when that cannot be found
     * out, and *pReason (may be null) says what stands there. The folder itself
     * may be a mount point, but not a link. Any thread.
     */
    static bool IsHarmlessToRemove(const QString& strFolder, QString* pReason);

    /**
     * Starts to clean away what the removed volume of this name has left; the
     * log tells, also when something stands in the way. Waits for nothing.
     */
    static void CleanMountPoint(const QString& strVolume);
};
