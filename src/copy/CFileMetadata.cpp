#include "copy/CFileMetadata.h"

#include "copy/CCopyWork.h"

QVector<STCopyReason> CFileMetadata::Lost() const
{
    QVector<STCopyReason> listReason;
    const auto fnAdd = [&](ENLost enLost, ENCopyProblem enProblem, const char* pszText) {
        const QString strItems = QString::number(m_listLost[enLost]);
        if (m_listLost[enLost] > 0) {
            listReason.append({enProblem, QLatin1String(pszText) + strItems, 0, QString(), strItems});
        }
    };
    fnAdd(LOST_FORKS, ENCopyProblem::FORKS_LOST, "items whose resource forks the disk cannot hold: ");
    fnAdd(LOST_FINDER, ENCopyProblem::FINDER_LOST, "items whose Finder information the disk cannot hold: ");
    fnAdd(LOST_ATTRIBUTES, ENCopyProblem::ATTRIBUTES_LOST,
          "items whose extended attributes the disk cannot hold: ");
    fnAdd(LOST_ACCESS_LISTS, ENCopyProblem::ACCESS_LISTS_LOST,
          "items whose access lists the disk cannot hold: ");
    fnAdd(LOST_CREATION_DATES, ENCopyProblem::CREATION_DATES_LOST,
          "items whose creation dates the disk cannot hold: ");
    fnAdd(LOST_LOCKS, ENCopyProblem::LOCKS_LOST, "locked items whose copies are not locked: ");
    fnAdd(LOST_PERMISSIONS, ENCopyProblem::PERMISSIONS_LOST,
          "items whose permissions the disk cannot hold: ");
    fnAdd(LOST_FOLDER_TIMES, ENCopyProblem::FOLDER_TIMES_LOST, "folders whose times the disk cannot hold: ");
    return listReason;
}

void CFileMetadata::FileEnds()
{
    for (size_t i = 0; i < m_listItem.size(); ++i) {
        m_listLost[i] += m_listItem[i] ? 1 : 0;
    }
    m_listItem = {};
}

void CFileMetadata::BookLost(CCopyWork& work, const QString& strPath) const
{
    for (const STCopyReason& stReason : Lost()) {
        work.BookNote(STCopyOutcome::Missing(strPath, stReason));
    }
}
