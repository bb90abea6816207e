#pragma once

#include "copy/CCopyPlatform.h"

#include <cstddef>
#include <utility>
#include <vector>

/** What a file or folder is known by, whatever its names. */
struct STFileId
{
    quint64 nDevice = 0; ///< identifies the file system while it is mounted
    quint64 nInode = 0; ///< identifies the file there while it exists

    /** Of what was looked at. */
    static STFileId Of(const STFileState& stState) { return {stState.nDevice, stState.nInode}; }

    bool operator==(const STFileId& other) const
    {
        return nDevice == other.nDevice && nInode == other.nInode;
    }
};

/** Files and folders, in little memory: at most 24 bytes for each. One thread. */
class CFileIdSet
{
public:
    /** Adds it; false when it was there already. */
    bool Insert(const STFileId& stId);

    bool Contains(const STFileId& stId) const;

private:
    struct STNumbers
    {
        std::vector<quint64> listSlot = {}; ///< 0: free
        std::size_t nUsed = 0;
        bool bZero = false; ///< the number 0 is there, too

        std::size_t SlotOf(quint64 nNumber) const;
        bool Insert(quint64 nNumber);
        bool Contains(quint64 nNumber) const;
        void Grow();
    };

    std::vector<std::pair<quint64, STNumbers>> m_listDevice; // there are few
};
