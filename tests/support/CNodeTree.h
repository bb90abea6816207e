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

    ~CNodeTree() { m_root.RemoveAllBelow(); }

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
        ListAll(pNode);
        return pNode;
    }

    /** Frees every node but the root. */
    void Clear() { m_root.RemoveAllBelow(); }

    /** Calls fnVisit with each node below pNode, a folder before what is in it by then. */
    template <typename TVisit> static void Walk(const CDirNode* pNode, TVisit fnVisit)
    {
        for (CDirNode* pChild : pNode->m_listChild) {
            fnVisit(pChild);
            Walk(pChild, fnVisit);
        }
    }

    /** Lists each unlisted folder from pNode down, as the size worker does; returns how many nodes follow. */
    static int ListAll(CDirNode* pNode)
    {
        int nNodes = -1;
        const auto fnList = [&nNodes](CDirNode* pEach) {
            ++nNodes;
            if (pEach->m_bDir && pEach->m_listChild.isEmpty()) {
                pEach->LoadChild();
            }
        };
        fnList(pNode);
        Walk(pNode, fnList);
        return nNodes;
    }

private:
    CDirNode m_root;
};
