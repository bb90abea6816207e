#include "tree/CDirNode.h"

#include "tree/CEntryIcon.h"

#include <QtAlgorithms>

#include <limits>
#include <utility>

/** The model's invisible root, whose children are the volumes: a node without path and parent. */
static bool IsInvisibleRoot(const CDirNode* pNode)
{
    return pNode && !pNode->m_pParent && pNode->m_fileInfo.filePath().isEmpty();
}

static ENEntryKind KindOf(const CDirNode* pParent, bool bDir, bool bLink)
{
    if (IsInvisibleRoot(pParent)) {
        return ENEntryKind::VOLUME;
    }
    if (bDir) {
        return bLink ? ENEntryKind::FOLDER_LINK : ENEntryKind::FOLDER;
    }
    return bLink ? ENEntryKind::FILE_LINK : ENEntryKind::FILE;
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
    , m_bLink(info.isSymLink())
    , m_nUnlisted(m_bDir ? 1 : 0)
{
}

CDirNode::CDirNode(STDirEntry stEntry, CDirNode* parent)
    : m_fileInfo(std::move(stEntry.fileInfo))
    , m_icon(CEntryIcon::Of(KindOf(parent, stEntry.bDir, stEntry.bLink)))
    , m_bDir(stEntry.bDir)
    , m_strName(std::move(stEntry.strName))
    , m_pParent(parent)
    , m_bLink(stEntry.bLink)
    , m_nUnlisted(m_bDir ? 1 : 0)
{
}

void CDirNode::AppendChild(CDirNode* child)
{
    child->m_pParent = this;
    m_listChild.append(child);
    AddUnlisted(child->m_nUnlisted);
}

CDirNode* CDirNode::Child(int row)
{
    return row >= 0 && row < m_listChild.size() ? m_listChild.at(row) : nullptr;
}

int CDirNode::ChildIndex(CDirNode* child) { return m_listChild.indexOf(child); }

void CDirNode::RemoveAll()
{
    int nUnlisted = 0;
    for (const CDirNode* pChild : qAsConst(m_listChild)) {
        nUnlisted += pChild->m_nUnlisted;
    }
    qDeleteAll(m_listChild);
    m_listChild.clear();
    AddUnlisted(-nUnlisted);
    SetListed(ENListed::NEVER);
}

void CDirNode::RemoveAllBelow()
{
    for (CDirNode* pChild : qAsConst(m_listChild)) {
        pChild->RemoveAllBelow();
    }
    RemoveAll();
}

void CDirNode::RemoveAt(int row)
{
    if (row < 0 || row >= m_listChild.size()) {
        return;
    }
    AddUnlisted(-m_listChild.at(row)->m_nUnlisted);
    delete m_listChild.takeAt(row);
}

QStringList CDirNode::PathsFromHere() const
{
    QStringList listPath;
    for (const CDirNode* pNode = this; pNode; pNode = pNode->m_pParent) {
        if (!pNode->m_fileInfo.filePath().isEmpty()) {
            listPath.append(pNode->m_fileInfo.absoluteFilePath());
        }
    }
    return listPath;
}

STFolderToList CDirNode::ToList() const
{
    return {m_fileInfo.absoluteFilePath(), m_pParent ? m_pParent->PathsFromHere() : QStringList()};
}

bool CDirNode::LeadsBack() const { return CDirListing::LeadsBack(ToList()); }

STDirListing CDirNode::List(std::initializer_list<QLatin1String> listSkip) const
{
    return CDirListing::List(ToList(), listSkip);
}

void CDirNode::LoadChild() { TakeListing(ListForCopy(ToList())); }

STDirListing CDirNode::ListForCopy(const STFolderToList& stFolder, const PFNListedFile& fnFile)
{
    // At every depth, not only where a system keeps its device and home folders:
    // "development" and "homework" are left out too. The model's listing also
    // leaves out "Volumes"; this one does not.
    return CDirListing::List(stFolder, {QLatin1String("dev"), QLatin1String("home")}, fnFile);
}

void CDirNode::TakeListing(STDirListing stListing)
{
    NoteListing(stListing);
    m_listChild.reserve(stListing.listEntry.size());
    for (STDirEntry& stEntry : stListing.listEntry) {
        auto* pChild = new CDirNode(std::move(stEntry), this);
        if (m_chkState == Qt::Checked) {
            pChild->m_chkState = Qt::Checked;
        }
        AppendChild(pChild);
    }
}

void CDirNode::NoteListing(const STDirListing& stListing)
{
    m_nListError = qint16(stListing.nError);
    m_nLeftOut = quint16(qMin(stListing.nLeftOut, int(std::numeric_limits<quint16>::max())));
    SetListed(ENListed::DONE);
}

void CDirNode::SetListed(ENListed enListed)
{
    const int nBefore = m_enListed == ENListed::DONE ? 0 : 1;
    m_enListed = enListed;
    if (m_bDir) {
        AddUnlisted((enListed == ENListed::DONE ? 0 : 1) - nBefore);
    }
}

void CDirNode::AddUnlisted(int nMore)
{
    for (CDirNode* pNode = nMore == 0 ? nullptr : this; pNode; pNode = pNode->m_pParent) {
        pNode->m_nUnlisted += nMore;
    }
}
