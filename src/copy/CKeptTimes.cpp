#include "copy/CKeptTimes.h"

#include "copy/CCopyPlatform.h"

// What every file system holds: from 2 January 1980, as FAT begins with the first in its
// local time, to the end of 2037, as the old ones count seconds in 31 bits.
static const qint64 OLDEST_SEC = 315619200;
static const qint64 NEWEST_SEC = 2145916799;

bool CKeptTimes::Keep(int nDescriptor, const STFileState& stState)
{
    if (!HasToLook(stState)) {
        return CCopyPlatform::SetTimes(nDescriptor, stState);
    }
    const bool bKept = CCopyPlatform::KeepTimes(nDescriptor, stState);
    m_bDoubt = m_bDoubt || !bKept;
    return bKept;
}

bool CKeptTimes::HasToLook(const STFileState& stState)
{
    const qint64 nFile = m_nFiles++;
    return m_bDoubt || nFile < FIRST_FILES || nFile % ONE_IN == 0 || stState.nModifiedSec < OLDEST_SEC
        || stState.nModifiedSec > NEWEST_SEC;
}
