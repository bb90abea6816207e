#include "flow/CSourceDisk.h"

#include <algorithm>

static const qint64 BYTES_A_US = 40; // 40 MB/s: a slow disk, for what a read took beside its seek
static const qint64 MEMORY_US = 100; // what was read in less came from memory

CSourceDisk::CSourceDisk(const STSourceDisk& stDisk, ENThere enThere)
    : m_bMayHelp(!stDisk.bInMemory && (stDisk.bKeeps || enThere != ENThere::UNKNOWN))
    , m_bProven(enThere == ENThere::UNKNOWN)
    , m_bTurns(stDisk.bSeeks)
{
}

void CSourceDisk::NoteRead(bool bFirst, qint64 nBytes, qint64 nUs)
{
    if (nBytes < 0 || nUs >= STALL_US) {
        End();
        return;
    }
    m_nReads = std::min(m_nReads + 1, MOST_READS);
    if (bFirst && m_nSamples < SAMPLES) {
        m_listSeekUs[size_t(m_nSamples++)]
            = nUs < MEMORY_US ? 0 : std::max<qint64>(1, nUs - nBytes / BYTES_A_US);
    }
}

void CSourceDisk::NoteAsked(bool bThere)
{
    m_bProven = m_bProven || bThere;
    m_nMissed = bThere ? 0 : m_nMissed + 1;
    if (m_nMissed >= MOST_MISSED) {
        End();
    }
}

bool CSourceDisk::Seeks() const
{
    // Those that have not come yet are 0, and so the first ones.
    std::array<qint64, SAMPLES> listUs = m_listSeekUs;
    std::sort(listUs.begin(), listUs.end());
    const qint64 nUs = listUs[size_t(SAMPLES - 1 - m_nSamples / 2)];
    // Files that lie one behind the other are read without a seek on any disk.
    return nUs >= SEEK_US || m_bTurns.value_or(nUs == 0);
}
