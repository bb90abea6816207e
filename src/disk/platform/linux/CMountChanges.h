#pragma once

#include "disk/platform/STDiskEvent.h"
#include "files/CMountTable.h"

#include <QVector>

#include <string>
#include <vector>

/** Tells from two tables of mounts which volumes came and went. No state; any thread. */
class CMountChanges
{
public:
    /**
     * The volumes of a folder (its real path): what is mounted directly in it
     * and is not covered by another mount on the same point.
     */
    static std::vector<STMount> VolumesIn(const std::string& strFolder,
                                          const std::vector<STMount>& listMount);

    /**
     * What happened to the volumes between two tables: first those that went,
     * then those that came, each in the order of its table. A volume that is
     * moved, or replaced by another, went and came; one that is only mounted
     * with other options did neither.
     */
    static QVector<STDiskEvent> Between(const std::vector<STMount>& listBefore,
                                        const std::vector<STMount>& listAfter);
};
