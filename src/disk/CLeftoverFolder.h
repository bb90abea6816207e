#pragma once

#include <QString>

/**
 * The check before a left-over mount-point folder is cleaned away: a pulled
 * disk can leave its empty folder behind, and the clean-up is pointed at that
 * folder's parent, where other volumes may be mounted.
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
};
