#include "tree/CFolderOpening.h"

#include "tree/CDirNode.h"

#include <algorithm>

static bool IsAwaited(const CDirNode& node)
{
    return node.m_enListed == ENListed::AWAITED || node.m_enListed == ENListed::OVERDUE;
}

/** Those that nobody waits for yet; they are awaited ones from now on. */
static QVector<STFolderRow> Claimed(const QVector<STFolderRow>& listRow)
{
    QVector<STFolderRow> listClaimed;
    for (const STFolderRow& stRow : listRow) {
        // The invisible root has no path, and nothing to list.
        if (!IsAwaited(*stRow.pNode) && !stRow.pNode->m_fileInfo.filePath().isEmpty()) {
            stRow.pNode->SetListed(ENListed::AWAITED);
            listClaimed.append(stRow);
        }
    }
    return listClaimed;
}

static QVector<STFolderToList> ToList(const QVector<STFolderRow>& listRow)
{
    QVector<STFolderToList> listFolder;
    listFolder.reserve(listRow.size());
    for (const STFolderRow& stRow : listRow) {
        // One copy of the paths above does for all: there may be 100,000 folders in one.
        listFolder.append(listFolder.isEmpty() ? stRow.pNode->ToList()
                                               : STFolderToList{stRow.pNode->m_fileInfo.absoluteFilePath(),
                                                                listFolder.first().listAbove});
    }
    return listFolder;
}

CFolderOpening::CFolderOpening(const QVector<STFolderRow>& listRow,
                               std::initializer_list<QLatin1String> listSkip)
    : m_listRow(Claimed(listRow))
    , m_listAhead(ToList(m_listRow), listSkip)
{
}

std::vector<STListedRow> CFolderOpening::Take(Clock::time_point end)
{
    const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(end - Clock::now());
    std::vector<STListedRow> listListed;
    for (STListedFolder& stFolder : m_listAhead.Take(left)) {
        ++m_nTaken;
        const STFolderRow& stRow = m_listRow.at(stFolder.nFolder);
        if (IsAwaited(*stRow.pNode)) {
            listListed.push_back({stRow, std::move(stFolder.stListing)});
        }
    }
    return listListed;
}

bool CFolderOpening::IsComing() const
{
    const auto nOverdue = std::count_if(m_listRow.begin(), m_listRow.end(), [](const STFolderRow& stRow) {
        return stRow.pNode->m_enListed == ENListed::OVERDUE;
    });
    return m_nTaken + nOverdue < m_listRow.size();
}

bool CFolderOpening::IsBelow(const CDirNode* pNode) const
{
    const CDirNode* pAbove = m_listRow.isEmpty() ? nullptr : m_listRow.first().pNode;
    while (pAbove && pAbove != pNode) {
        pAbove = pAbove->m_pParent;
    }
    return pAbove;
}

std::vector<STFolderRow> CFolderOpening::MarkOverdue(std::chrono::milliseconds time)
{
    std::vector<STFolderRow> listNew;
    for (const int nFolder : m_listAhead.Overdue(time)) {
        const STFolderRow& stRow = m_listRow.at(nFolder);
        if (stRow.pNode->m_enListed == ENListed::AWAITED) {
            stRow.pNode->SetListed(ENListed::OVERDUE);
            listNew.push_back(stRow);
        }
    }
    return listNew;
}
