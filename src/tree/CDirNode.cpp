#include "tree/CDirNode.h"

#include "tree/CDirListing.h"
#include "tree/CEntryIcon.h"

#include <QtAlgorithms>

/** The model's invisible root, whose children are the volumes: a node without path and parent. */
static bool IsInvisibleRoot(const CDirNode* pNode)
{
    return pNode && !pNode->m_pParent && pNode->m_fileInfo.filePath().isEmpty();
}

static ENEntryKind KindOf(const CDirNode* pParent, bool bDir, bool bLink)
{
    if (IsInvisibleRoot(pParent)) {
        return ENEntryKind::Volume;
    }
    if (bDir) {
        return bLink ? ENEntryKind::FolderLink : ENEntryKind::Folder;
    }
    return bLink ? ENEntryKind::FileLink : ENEntryKind::File;
}

CDirNode::CDirNode()
    : m_strName(QLatin1String(""))
{
}

CDirNode::CDirNode(QFileInfo info, CDirNode* parent)
    : m_fileInfo(info)
    , m_icon(CEntryIcon::Of(KindOf(parent, info.isDir(), info.isSymLink())))
    , m_bDir(info.isDir())
    , m_strName(info.fileName())
    , m_pParent(parent)
{
}

CDirNode::CDirNode(const STDirEntry& stEntry, CDirNode* parent)
    : m_fileInfo(stEntry.m_fileInfo)
    , m_icon(CEntryIcon::Of(KindOf(parent, stEntry.m_bDir, stEntry.m_bLink)))
    , m_bDir(stEntry.m_bDir)
    , m_strName(stEntry.m_strName)
    , m_pParent(parent)
{
}

void CDirNode::AppendChild(CDirNode* child)
{
    child->m_pParent = this;
    m_listChild.append(child);
}

CDirNode* CDirNode::Child(int row)
{
    return row >= 0 && row < m_listChild.size() ? m_listChild.at(row) : nullptr;
}

int CDirNode::ChildIndex(CDirNode* child) { return m_listChild.indexOf(child); }

void CDirNode::RemoveAll()
{
    qDeleteAll(m_listChild);
    m_listChild.clear();
}

void CDirNode::RemoveAt(int row)
{
    if (row < 0 || row >= m_listChild.size()) {
        return;
    }
    delete m_listChild.takeAt(row);
}

void CDirNode::LoadChild()
{
    // At every depth, not only where a system keeps its device and home folders:
    // "development" and "homework" are left out too. The model's listing also
    // leaves out "Volumes"; this one does not.
    const STDirListing stListing = CDirListing::List(*this, {QLatin1String("dev"), QLatin1String("home")});
    m_nListError = stListing.m_nError;
    m_listChild.reserve(stListing.m_listEntry.size());
    for (const STDirEntry& stEntry : stListing.m_listEntry) {
        auto* pChild = new CDirNode(stEntry, this);
        if (m_chkState == Qt::Checked) {
            pChild->m_chkState = Qt::Checked;
        }
        AppendChild(pChild);
    }
}
