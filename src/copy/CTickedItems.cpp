#include "copy/CTickedItems.h"

#include "tree/CDirNode.h"

namespace {

/** What is found, and when to end: after a stop no node is looked at any more. */
struct STSearch
{
    const std::function<bool()>& fnStopped;
    QVector<STTickedItem> listItem = {};
};

}

/** The items at or below the children of the node; false after a stop. */
static bool AddBelow(const CDirNode& node, const QString& strVolume, STSearch& stSearch)
{
    const int nCount = node.m_listChild.count();
    for (int nRow = 0; nRow < nCount; ++nRow) {
        if (stSearch.fnStopped()) {
            return false;
        }
        const CDirNode& child = *node.m_listChild.at(nRow);
        const QString strPath
            = child.m_chkState == Qt::Unchecked ? QString() : child.m_fileInfo.absoluteFilePath();
        const QString strIn = strVolume.isEmpty() ? strPath : strVolume;
        if (child.m_chkState == Qt::Checked) {
            stSearch.listItem.append({strPath, strIn});
        } else if (child.m_chkState == Qt::PartiallyChecked && !AddBelow(child, strIn, stSearch)) {
            return false;
        }
    }
    return true;
}

QVector<STTickedItem> CTickedItems::Of(const CDirNode& root, const std::function<bool()>& fnStopped)
{
    STSearch stSearch{fnStopped};
    if (!fnStopped()) {
        AddBelow(root, QString(), stSearch);
    }
    return stSearch.listItem;
}

QStringList CTickedItems::Volumes(const QVector<STTickedItem>& listItem)
{
    QStringList listVolume;
    for (const STTickedItem& stItem : listItem) {
        // Items of one volume follow each other.
        if (listVolume.isEmpty() || listVolume.constLast() != stItem.strVolume) {
            listVolume.append(stItem.strVolume);
        }
    }
    return listVolume;
}
