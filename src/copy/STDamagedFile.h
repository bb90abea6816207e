#pragma once

#include "copy/CCopyPlatform.h"
#include "copy/STCopyOutcome.h"

#include <QString>

/** A file that could not be read any further at one place. */
struct STDamagedFile
{
    QString strSource; ///< path to read it by
    QString strTarget; ///< its copy so far, nCopied bytes of it
    STCopyOutcome stOutcome; ///< of the copy that came to the bad place
    STFileState stState; ///< of the source before it was copied
};
