#include "copy/CTickedItems.h"

#include "tree/CDirNode.h"

static void Add(const CDirNode& node, const QString& strVolume, const std::function<bool()>& fnStopped,
                QVector<STTickedItem>& listItem)
{
    if (fnStopped() || node.m_chkState == Qt::Unchecked) {
        return;
    }
    if (node.m_chkState == Qt::Checked) {
        listItem.append({node.m_fileInfo.absoluteFilePath(), strVolume});
        return;
    }
    for (const CDirNode* pChild : node.m_listChild) {
        Add(*pChild, strVolume, fnStopped, listItem);
    }
}

QVector<STTickedItem> CTickedItems::Of(const CDirNode& root, const std::function<bool()>& fnStopped)
{
    QVector<STTickedItem> listItem;
    for (const CDirNode* pVolume : root.m_listChild) {
        Add(*pVolume, pVolume->m_fileInfo.absoluteFilePath(), fnStopped, listItem);
    }
    return listItem;
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
