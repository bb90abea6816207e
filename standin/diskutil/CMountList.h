#pragma once

#include "files/CMountTable.h"

#include <string>
#include <vector>

/** What is mounted, searched by device. */
class CMountList
{
public:
    explicit CMountList(std::vector<STMount> listMount);

    /** Best mount whose source text is one of the given; nullptr without one. */
    const STMount* FindSource(const std::vector<std::string>& listSource) const;

    /** Best mount of the device with this number; nullptr without one. */
    const STMount* FindNumber(const std::string& strNumber) const;

private:
    std::vector<STMount> m_listMount;
};
