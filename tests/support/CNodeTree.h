#pragma once

#include "tree/CDirNode.h"

#include <QFileInfo>

/** A tree of nodes for one test, freed from the bottom up at the end. */
class CNodeTree
{
public:
    CNodeTree()
    {
        m_root.m_bDir = true;
        m_root.m_chkState = Qt::PartiallyChecked;
    }

    ~CNodeTree() { Clear(&m_root); }

    CNodeTree(const CNodeTree&) = delete;
    CNodeTree& operator=(const CNodeTree&) = delete;

    /** The invisible root, partially checked unless a test says otherwise. */
    CDirNode* Root() { return &m_root; }

    /** Adds the node of one entry, without listing it; below the root when no parent is given. */
    CDirNode* Add(const QString& strPath, Qt::CheckState enState = Qt::Checked, CDirNode* pParent = nullptr)
    {
        CDirNode* pOwner = pParent != nullptr ? pParent : &m_root;
        CDirNode* pNode = new CDirNode(QFileInfo(strPath), pOwner);
        pNode->m_chkState = enState;
        pOwner->AppendChild(pNode);
        return pNode;
    }

    /** Adds a ticked folder with everything in it, at any depth. */
    CDirNode* AddListed(const QString& strPath)
    {
        CDirNode* pNode = Add(strPath);
        List(pNode);
        return pNode;
    }

    /** Frees every node but the root. */
    void Clear() { Clear(&m_root); }

private:
    static void List(CDirNode* pNode)
    {
        pNode->LoadChild();
        for (CDirNode* pChild : qAsConst(pNode->m_listChild)) {
            if (pChild->m_bDir) {
                List(pChild);
            }
        }
    }

    static void Clear(CDirNode* pNode)
    {
        for (CDirNode* pChild : qAsConst(pNode->m_listChild)) {
            Clear(pChild);
        }
        pNode->RemoveAll();
    }

    CDirNode m_root;
};
