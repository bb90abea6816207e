#include "copy/CFileIdSet.h"

#include <algorithm>

static const std::size_t FIRST_SLOTS = 64;

/** Where the search for the number ends: at its slot, or at the free one that it would take. */
std::size_t CFileIdSet::STNumbers::SlotOf(quint64 nNumber) const
{
    const std::size_t nMask = listSlot.size() - 1;
    // Numbers that follow each other are the rule; this spreads them.
    const quint64 nSpread = nNumber * 0x9e3779b97f4a7c15ULL;
    std::size_t nSlot = std::size_t(nSpread ^ (nSpread >> 32U)) & nMask;
    while (listSlot[nSlot] != 0 && listSlot[nSlot] != nNumber) {
        nSlot = (nSlot + 1) & nMask;
    }
    return nSlot;
}

bool CFileIdSet::STNumbers::Contains(quint64 nNumber) const
{
    if (nNumber == 0) {
        return bZero;
    }
    return !listSlot.empty() && listSlot[SlotOf(nNumber)] == nNumber;
}

bool CFileIdSet::STNumbers::Insert(quint64 nNumber)
{
    if (nNumber == 0) {
        return !std::exchange(bZero, true);
    }
    if (nUsed >= listSlot.size() / 3 * 2) {
        Grow();
    }
    quint64& nSlot = listSlot[SlotOf(nNumber)];
    if (nSlot == nNumber) {
        return false;
    }
    nSlot = nNumber;
    ++nUsed;
    return true;
}

void CFileIdSet::STNumbers::Grow()
{
    const std::vector<quint64> listOld = std::move(listSlot);
    listSlot.assign(std::max(FIRST_SLOTS, listOld.size() * 2), 0);
    for (const quint64 nNumber : listOld) {
        if (nNumber != 0) {
            listSlot[SlotOf(nNumber)] = nNumber;
        }
    }
}

bool CFileIdSet::Insert(const STFileId& stId)
{
    for (auto& [nDevice, stNumbers] : m_listDevice) {
        if (nDevice == stId.nDevice) {
            return stNumbers.Insert(stId.nInode);
        }
    }
    m_listDevice.emplace_back(stId.nDevice, STNumbers());
    return m_listDevice.back().second.Insert(stId.nInode);
}

bool CFileIdSet::Contains(const STFileId& stId) const
{
    return std::any_of(m_listDevice.begin(), m_listDevice.end(), [&stId](const auto& device) {
        return device.first == stId.nDevice && device.second.Contains(stId.nInode);
    });
}
