#include "copy/CNodeWalk.h"

#include "copy/CCopyPlatform.h"
#include "copy/CCopyWork.h"
#include "copy/CUnlistedEntries.h"
#include "files/CFileName.h"
#include "tree/CDirNode.h"

#include <utility>

static const int MOST_TOLD = 1024; // files at once
static const int MOST_LOOKED_AT = 4096; // nodes for that, most of which may be empty folders

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
    m_listAt.append({&node, 0});
    for (int nRow = 0; nRow < nCount; ++nRow) {
        if (m_work.IsStopped()) {
            break;
        }
        CDirNode* pChild = node.Child(nRow);
        if (pChild != nullptr && pChild->m_chkState != Qt::Unchecked) {
            m_listAt.last().nRow = nRow;
            TellAhead();
            CopyChild(*pChild);
        }
    }
    m_listAt.removeLast();
}

/** Tells which files come next; the status was looked at just before. */
void CNodeWalk::TellAhead()
{
    if (m_bAllTold || !m_work.WantsMore()) {
        return;
    }
    if (!IsAhead()) {
        BeginToTell();
    }
    const QVector<STExpectedFile> listFile = NextFiles(MOST_TOLD);
    m_bAllTold = m_listNext.isEmpty();
    if (!listFile.isEmpty()) {
        m_work.Expect(listFile, false);
    }
}

/** Whether what is told next lies behind where the walk is. */
bool CNodeWalk::IsAhead() const
{
    const int nDepth = qMin(m_listNext.count(), m_listAt.count());
    for (int i = 0; i < nDepth; ++i) {
        const bool bLast = i == m_listNext.count() - 1;
        const int nRow = m_listNext.at(i).nRow - (bLast ? 0 : 1);
        if (m_listNext.at(i).pNode != m_listAt.at(i).pNode || nRow < m_listAt.at(i).nRow) {
            return false;
        }
        if (nRow > m_listAt.at(i).nRow) {
            return true;
        }
    }
    return m_listNext.count() >= m_listAt.count();
}

void CNodeWalk::BeginToTell()
{
    m_listNext = m_listAt;
    for (int i = 0; i < m_listNext.count() - 1; ++i) {
        ++m_listNext[i].nRow;
    }
}

/** The files from m_listNext on, in the order of the walk; nothing is asked of the disk. */
QVector<STExpectedFile> CNodeWalk::NextFiles(int nMost)
{
    QVector<STExpectedFile> listFile;
    for (int i = 0; i < MOST_LOOKED_AT && !m_listNext.isEmpty() && listFile.count() < nMost; ++i) {
        CDirNode* pNode = m_listNext.last().pNode;
        const int nRow = m_listNext.last().nRow++;
        if (nRow >= pNode->m_listChild.count()) {
            m_listNext.removeLast();
            continue;
        }
        CDirNode* pChild = pNode->Child(nRow);
        if (pChild == nullptr || pChild->m_chkState == Qt::Unchecked) {
            continue;
        }
        if (pChild->m_bDir) {
            m_listNext.append({pChild, 0});
        } else if (!pChild->m_bLink) {
            listFile.append(STExpectedFile{CFileName::Encode(pChild->m_fileInfo.absoluteFilePath())});
        }
    }
    return listFile;
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
    if (!m_work.IsStopped()) {
        m_work.FolderEnds(strPath, strFolder);
    }
}

/**
 * The reason why a folder is not to be entered: a link has taken its place, or what is in
 * it would have to be fetched. Notes a link that leads to another volume, once for all
 * that is below it. The node is looked at before the disk and not afterwards.
 */
std::optional<STCopyReason> CNodeWalk::LookAtFolder(const CDirNode& node)
{
    const QString strPath = node.m_fileInfo.absoluteFilePath();
    const bool bLink = node.m_bLink;
    const bool bVolume = node.m_pParent == &m_root;
    const bool bNothingListed = node.m_listChild.isEmpty();
    if (bVolume) {
        return std::nullopt; // a volume may be a link to where it is mounted
    }
    m_work.StepBegins(ENCopyStep::READING);
    const std::optional<STFileState> stEntry = CCopyPlatform::GetEntryState(strPath);
    if (stEntry && stEntry->bOnlyInCloud && bNothingListed) {
        return STCopyReason::OnlyInCloud();
    }
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
    const QString strPath = node.m_fileInfo.absoluteFilePath();
    const int nCount = node.m_listChild.count();
    const qint64 nExpected = node.m_bDir ? STCopyOutcome::UNKNOWN_SIZE : CCopyPlatform::SizeOf(strPath);
    m_work.BookProblem(STCopyOutcome::Missing(strPath, stReason, nExpected));
    // The size and the line of the report came from disks that may be slow.
    for (int nRow = 0; nRow < nCount && !m_work.IsStopped(); ++nRow) {
        CDirNode* pChild = node.Child(nRow);
        if (pChild != nullptr && pChild->m_chkState != Qt::Unchecked) {
            ReportBranch(*pChild, stReason);
        }
    }
}
