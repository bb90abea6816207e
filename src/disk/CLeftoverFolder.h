#pragma once

#include <QString>

#include <optional>

/**
 * The clean-up of left-over mount points: a disk that is pulled can leave its
 * empty folder behind, which would be mistaken for a volume.
 */
class CLeftoverFolder
{
public:
    /**
     * What stands in the way of removing strFolder, in words; nothing when all
     * below it is empty plain folders: no mount point, no file, no link. What
     * cannot be found out stands in the way. The folder itself may be a mount
     * point, but not a link. Any thread.
     */
    static std::optional<QString> Obstacle(const QString& strFolder);

    /**
     * Starts to clean away what the removed volume of this name has left; the
     * log tells, also when something stands in the way. Waits for nothing.
     */
    static void CleanMountPoint(const QString& strVolume);
};
