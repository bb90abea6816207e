#pragma once

#include "copy/CSpotSearch.h"
#include "copy/CSpotSource.h"
#include "copy/STDamagedFile.h"
#include "files/CDescriptor.h"

#include <QString>

#include <cstdlib>
#include <memory>
#include <optional>

class CCopyControl;

/** What the bad places of one file may cost. */
struct STSpotLimits
{
    qint64 nMs = 0; ///< time of reads that fail or are slow
    bool bOneTry = false; ///< nothing more after a first read that fails: the disk may not be there
    bool bToEnd = true; ///< when the time is over the end is read once, and on from there while all goes well
};

/**
 * Finishes the copy of one file with places that cannot be read: in its place, from
 * where it broke off. Asks and tells the control as the copy of a file does. One
 * object finishes one file, on one thread.
 */
class CSpotCopy
{
public:
    /**
     * The control outlives this; stTarget is the copy's state since it broke off, nothing
     * when nobody knows.
     */
    CSpotCopy(CCopyControl& control, const STDamagedFile& stFile, const std::optional<STFileState>& stTarget,
              const STSpotLimits& stLimits);

    /** Reads what can be read and fills up what cannot; call it once. */
    STCopyOutcome Finish();

    /** Time that the bad places took, in ms. */
    qint64 BadMs() const { return m_nBadMs; }

    /** Whether its disk is lost, or all that was tried has failed. */
    bool IsDiskInDoubt() const { return m_bDiskLost || (m_bTried && !m_bReadAny); }

private:
    struct STFree
    {
        void operator()(char* pBuf) const { std::free(pBuf); }
    };

    bool OpenSource();
    bool OpenTarget();
    bool MakeBuffer();
    bool IsTarget(const STFileState& stNow) const;
    bool MayGoOn();
    bool IsOver() const;
    bool JumpToEnd();
    bool IsDiskThere();
    void MoveBytes();
    bool MoveRange(const STByteRange& stRange);
    qint64 Read(const STByteRange& stRange);
    bool Write(qint64 nPos, qint64 nLen, bool bZeros = false);
    bool FillUp();
    bool Grow(qint64 nSize, qint64 nStep);
    bool ChunkDone(qint64 nBytes);
    void Conclude();
    QString DamageText(const CByteRanges& damage, const CByteRanges& untried) const;
    void CompareSource();
    void Fail(const STCopyReason& stReason);

    CCopyControl& m_control;
    const STDamagedFile m_stFile;
    const std::optional<STFileState> m_stTarget;
    const STSpotLimits m_stLimits;
    const QString m_strName; // as told to the control
    const QString m_strFolder; // of the copy
    CSpotSource m_source;
    CDescriptor m_target;
    std::unique_ptr<char, STFree> m_pBuffer;
    CSpotSearch m_search;
    qint64 m_nUntold; // bytes that the control does not know to be dealt with
    qint64 m_nBadMs = 0;
    bool m_bTried = false;
    bool m_bReadAny = false;
    bool m_bTrouble = true; // the last read failed or was slow
    bool m_bDiskLost = false;
    STCopyOutcome m_stOutcome;
};
