#include "diskutil/CMountList.h"

#include <algorithm>
#include <utility>

/** A volume that the program shows comes first, then a whole file system before a folder of one. */
static int Rank(const STMount& mount)
{
    if (mount.strPoint.rfind("/Volumes/", 0) == 0) {
        return 0;
    }
    return mount.strRoot == "/" ? 1 : 2;
}

template <typename Predicate>
static const STMount* FindBest(const std::vector<STMount>& listMount, Predicate fnMatches)
{
    const STMount* pBest = nullptr;
    for (const STMount& mount : listMount) {
        if (fnMatches(mount) && (pBest == nullptr || Rank(mount) < Rank(*pBest))) {
            pBest = &mount;
        }
    }
    return pBest;
}

CMountList::CMountList(std::vector<STMount> listMount)
    : m_listMount(std::move(listMount))
{
}

const STMount* CMountList::FindSource(const std::vector<std::string>& listSource) const
{
    return FindBest(m_listMount, [&listSource](const STMount& mount) {
        return std::find(listSource.begin(), listSource.end(), mount.strSource) != listSource.end();
    });
}

const STMount* CMountList::FindNumber(const std::string& strNumber) const
{
    return FindBest(m_listMount, [&strNumber](const STMount& mount) { return mount.strNumber == strNumber; });
}
