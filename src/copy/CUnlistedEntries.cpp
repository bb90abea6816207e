#include "copy/CUnlistedEntries.h"

#include "copy/CCopyPlatform.h"
#include "files/CFileName.h"
#include "tree/CDirNode.h"

#include <cerrno>

static QSet<QString> NamesOfChildren(const CDirNode& node)
{
    QSet<QString> setName;
    setName.reserve(node.m_listChild.count());
    for (const CDirNode* pChild : node.m_listChild) {
        setName.insert(pChild->m_fileInfo.fileName());
    }
    return setName;
}

// The folder is opened last: a slow disk may take long for it, and the node may be gone.
CUnlistedEntries::CUnlistedEntries(const CDirNode& node)
    : m_strFolder(node.m_fileInfo.absoluteFilePath())
    , m_bLeadsBack(node.m_nListError == ELOOP)
    , m_setListed(NamesOfChildren(node))
    , m_folder(CFileName::Encode(m_strFolder).constData())
{
}

std::optional<STCopyOutcome> CUnlistedEntries::Next()
{
    while (!m_bEnded && m_folder.Next()) {
        if (m_setListed.isEmpty()) {
            return Folder(NothingListed());
        }
        const QString strName = CFileName::Decode(m_folder.Name());
        if (!m_setListed.contains(strName)) {
            return Entry(strName);
        }
    }
    if (m_bEnded || m_folder.Error() == 0) {
        return std::nullopt;
    }
    return Folder(STCopyReason::CannotList(m_folder.IsOpen(), m_folder.Error()));
}

STCopyReason CUnlistedEntries::NothingListed() const
{
    if (m_bLeadsBack) {
        return {ENCopyProblem::LEADS_BACK,
                QStringLiteral("a link to a folder that it lies in, not followed")};
    }
    return {ENCopyProblem::NOT_LISTED, QStringLiteral("its contents were never listed")};
}

STCopyOutcome CUnlistedEntries::Entry(const QString& strName) const
{
    const QString strPath = m_strFolder + '/' + strName;
    const std::optional<STFileState> stState = CCopyPlatform::GetPathState(strPath);
    const bool bFile = stState && stState->enKind == ENFileKind::REGULAR;
    return STCopyOutcome::Missing(
        strPath,
        {ENCopyProblem::LEFT_OUT,
         QStringLiteral("not in the tree: left out for its name, or newer than the list")},
        bFile ? stState->nSize : STCopyOutcome::UNKNOWN_SIZE);
}

/** The folder as a whole, which is the last that is told. */
STCopyOutcome CUnlistedEntries::Folder(const STCopyReason& stReason)
{
    m_bEnded = true;
    return STCopyOutcome::Missing(m_strFolder, stReason);
}
