#pragma once

#include "tree/CDirModel.h"
#include "tree/CDirNode.h"

#include <QStringList>

/** Handles the one source tree of the program, which outlives the pages of a single test. */
class CPageTree
{
public:
    /** Takes every entry out of the tree. No view may be looking at it. */
    static void Clear()
    {
        CDirModel::GetInstence()->DropListings();
        CDirNode* pRoot = CDirModel::GetInstence()->GetRootNode();
        pRoot->RemoveAllBelow();
        pRoot->m_chkState = Qt::Unchecked;
    }

    /** Makes the path a top-level entry and lists what is in it, as the view does. */
    static void Add(const QString& strPath)
    {
        CDirModel* pModel = CDirModel::GetInstence();
        pModel->Parse(strPath);
        pModel->LoadGrandChild(QModelIndex());
    }

    /** Ticks or unticks an entry, opening the folders that lead to it. False when it is not in the tree. */
    static bool Tick(const QString& strPath, Qt::CheckState enState = Qt::Checked)
    {
        CDirModel* pModel = CDirModel::GetInstence();
        const QModelIndex index = Find(QModelIndex(), strPath);
        if (!index.isValid()) {
            return false;
        }
        pModel->setData(index, enState, Qt::CheckStateRole);
        return true;
    }

    /** Full paths of the top-level entries. */
    static QStringList Roots()
    {
        QStringList listPath;
        const CDirNode* pRoot = CDirModel::GetInstence()->GetRootNode();
        for (const CDirNode* pChild : pRoot->m_listChild) {
            listPath.append(pChild->m_fileInfo.absoluteFilePath());
        }
        return listPath;
    }

private:
    static QModelIndex Find(const QModelIndex& parent, const QString& strPath)
    {
        CDirModel* pModel = CDirModel::GetInstence();
        for (int i = 0; i < pModel->rowCount(parent); ++i) {
            const QModelIndex index = pModel->index(i, 0, parent);
            const QString strEntry = pModel->nodeFromIndex(index)->m_fileInfo.absoluteFilePath();
            if (strEntry == strPath) {
                return index;
            }
            if (strPath.startsWith(strEntry + QLatin1Char('/'))) {
                pModel->SlotExpanded(index);
                return Find(index, strPath);
            }
        }
        return QModelIndex();
    }
};
