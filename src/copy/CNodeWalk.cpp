#include "copy/CNodeWalk.h"

#include "copy/CCopyPlatform.h"
#include "copy/CCopyWork.h"
#include "copy/CUnlistedEntries.h"
#include "tree/CDirNode.h"

#include <utility>

CNodeWalk::CNodeWalk(CDirNode& root, CCopyWork& work, QString strDest)
    : m_root(root)
    , m_work(work)
    , m_strDest(std::move(strDest))
{
}

QStringList CNodeWalk::Sources()
{
    QStringList listSource;
    const int nCount = m_work.IsStopped() ? 0 : m_root.m_listChild.count();
    for (int nRow = 0; nRow < nCount && !m_work.IsStopped(); ++nRow) {
        const CDirNode* pChild = m_root.Child(nRow);
        if (pChild != nullptr && pChild->m_chkState != Qt::Unchecked) {
            listSource.append(pChild->m_fileInfo.absoluteFilePath());
        }
    }
    return listSource;
}

void CNodeWalk::Walk() { CopyBelow(m_root); }

void CNodeWalk::CopyBelow(CDirNode& node)
{
    if (m_work.IsStopped() || node.m_chkState == Qt::Unchecked) {
        return;
    }
    const int nCount = node.m_listChild.count();
    for (int nRow = 0; nRow < nCount; ++nRow) {
        if (m_work.IsStopped()) {
            return;
        }
        CDirNode* pChild = node.Child(nRow);
        if (pChild != nullptr && pChild->m_chkState != Qt::Unchecked) {
            CopyChild(*pChild);
        }
    }
}

void CNodeWalk::CopyChild(CDirNode& child)
{
    // Copies of what the node knows: the node itself may be gone after a stop.
    const QFileInfo source = child.m_fileInfo;
    const bool bDir = child.m_bDir;
    const bool bLink = child.m_bLink;
    // Paths of the start-up volume keep their leading separator: docs/behaviour.md.
    const QString strPath = source.absoluteFilePath();
    const QString strFolder
        = m_strDest + '/' + PlaceOf(bDir ? strPath : strPath.left(qMax(1, strPath.lastIndexOf('/'))));
    m_work.ItemBegins(strPath);
    const std::optional<STCopyReason> stReason = m_work.MakeFolder(strFolder);
    if (m_work.IsStopped()) {
        return; // a slow disk may have taken long, and the node may be gone
    }
    if (stReason) {
        ReportBranch(child, *stReason);
        return;
    }
    if (!bDir) {
        m_work.CopyListedFile(source, strFolder, bLink);
        return;
    }
    const std::optional<STCopyReason> stReplaced = LookAtFolder(child);
    if (m_work.IsStopped()) {
        return;
    }
    if (stReplaced) {
        ReportBranch(child, *stReplaced);
        return;
    }
    if (child.m_chkState == Qt::Checked) {
        ReportUnlisted(child);
    }
    CopyBelow(child);
}

/**
 * The reason why a folder is not to be entered: a link has taken its place. Notes a
 * link that leads to another volume, once for all that is below it. The node is
 * looked at before the disk and not afterwards.
 */
std::optional<STCopyReason> CNodeWalk::LookAtFolder(const CDirNode& node)
{
    const QString strPath = node.m_fileInfo.absoluteFilePath();
    const bool bLink = node.m_bLink;
    const bool bVolume = node.m_pParent == &m_root;
    if (bVolume) {
        return std::nullopt; // a volume may be a link to where it is mounted
    }
    m_work.StepBegins(ENCopyStep::READING);
    const std::optional<STFileState> stEntry = CCopyPlatform::GetEntryState(strPath);
    if (!stEntry || stEntry->enKind != ENFileKind::LINK) {
        return std::nullopt;
    }
    if (!bLink) {
        return STCopyReason{ENCopyProblem::SOURCE_REPLACED, QStringLiteral("a link has taken its place")};
    }
    const std::optional<STFileState> stTarget = CCopyPlatform::GetPathState(strPath);
    if (stTarget && stTarget->nDevice != stEntry->nDevice) {
        m_work.BookNote(STCopyOutcome::LeavesVolume(strPath));
    }
    return std::nullopt;
}

/** Books what is not copied of a fully ticked folder, since it is not in the tree. */
void CNodeWalk::ReportUnlisted(const CDirNode& node)
{
    m_work.StepBegins(ENCopyStep::LISTING);
    CUnlistedEntries entries(node);
    while (!m_work.IsStopped()) {
        m_work.StepBegins(ENCopyStep::LISTING);
        const std::optional<STCopyOutcome> stOutcome = entries.Next();
        if (!stOutcome) {
            return;
        }
        m_work.BookProblem(*stOutcome);
    }
}

/** Books a ticked node that is not copied, with everything ticked below it. */
void CNodeWalk::ReportBranch(CDirNode& node, const STCopyReason& stReason)
{
    const QFileInfo info = node.m_fileInfo;
    const int nCount = node.m_listChild.count();
    const qint64 nExpected = node.m_bDir ? STCopyOutcome::UNKNOWN_SIZE : info.size();
    m_work.BookProblem(STCopyOutcome::Missing(info.absoluteFilePath(), stReason, nExpected));
    // The size and the line of the report came from disks that may be slow.
    for (int nRow = 0; nRow < nCount && !m_work.IsStopped(); ++nRow) {
        CDirNode* pChild = node.Child(nRow);
        if (pChild != nullptr && pChild->m_chkState != Qt::Unchecked) {
            ReportBranch(*pChild, stReason);
        }
    }
}
