#pragma once

#include "copy/CByteRanges.h"
#include "copy/CCopyPlatform.h"
#include "copy/STCopyOutcome.h"
#include "files/CDescriptor.h"

#include <QString>

#include <optional>

/**
 * A file with places that cannot be read, opened for reading in small and large steps.
 * Nothing but what is asked for is read from the disk: a small step past the system's
 * cache, which would try a bad page twice, where the file system can do that.
 */
class CSpotSource
{
public:
    /** Opens the file; the reason when that fails or it is no longer the file of that state. */
    std::optional<STCopyReason> Open(const QString& strPath, const STFileState& stState);

    /**
     * Reads a range into pBuf, which holds LARGE_STEP bytes at an address that is a multiple of
     * SMALL_STEP of CSpotSearch. Returns the number of bytes from its beginning on that could be
     * read; where that is none, errno is the reason, 0 behind the file's end.
     */
    qint64 Read(const STByteRange& stRange, char* pBuf);

    /** The descriptor; -1 when none is open. */
    int Descriptor() const { return m_file.Get(); }

    /** State of the open file. */
    std::optional<STFileState> State() const { return CCopyPlatform::GetOpenState(m_file.Get()); }

private:
    CDescriptor m_file;
    CDescriptor m_direct; // the same file; none where the file system cannot do that
};
