#pragma once

#include <QByteArray>

class CCopyControl;

/** An open file, or, with -1, what the path names: a folder may be closed to its own user. */
struct STLastEntry
{
    int nDescriptor = -1;
    QByteArray baPath;
};

/**
 * What a copy is given on macOS when its times are set. Used on the thread that copies; false
 * when the copy has not got what its source has.
 */
class CLastMetadata
{
public:
    /** The date of creation, which an older date of change takes along with it. */
    static bool GiveCreationDate(CCopyControl& control, const STLastEntry& stSource,
                                 const STLastEntry& stTarget);

    /**
     * The access list, but for what forbids to delete; it may forbid all the rest. bHolds says
     * whether the disk takes any.
     */
    static bool GiveAccessList(CCopyControl& control, const STLastEntry& stSource,
                               const STLastEntry& stTarget, bool bHolds);
};
