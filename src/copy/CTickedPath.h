#pragma once

#include "copy/CTickedItems.h"
#include "copy/CVolumePath.h"
#include "copy/CVolumeRoot.h"

#include <functional>
#include <memory>

/**
 * Goes to ticked items, one after the other. For those that follow each other the
 * volume is opened once, and so is the folder that they lie in. One thread.
 */
class CTickedPath
{
public:
    /** fnGoesOn is asked before each call that may take long. */
    explicit CTickedPath(std::function<bool()> fnGoesOn);

    /** Goes to the item; a link at its end is not gone through. */
    ENPathEnd GoTo(const STTickedItem& stItem);

    /** The errno value that goes with FAILED and NOTHING, of the volume when that cannot be opened. */
    int Error() const;

    /** The volume of the last item, also when it could not be opened; after a GoTo. */
    const CVolumeRoot& Root() const { return *m_pRoot; }

    /** What was found last; after a GoTo that has found something. */
    const CVolumePath& Found() const { return *m_pFound; }

private:
    const std::function<bool()> m_fnGoesOn;
    QString m_strVolume; // what the root is of
    QByteArray m_baAbove; // below the volume, with a separator at its end
    std::unique_ptr<CVolumeRoot> m_pRoot;
    std::unique_ptr<CVolumePath> m_pAbove; // at that folder
    std::unique_ptr<CVolumePath> m_pFound; // begins there
    ENPathEnd m_enAbove = ENPathEnd::FOUND;
};
