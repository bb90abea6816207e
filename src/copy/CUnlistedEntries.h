#pragma once

#include "copy/STCopyOutcome.h"
#include "files/CFolderReader.h"

#include <QSet>
#include <QString>

#include <optional>

class CDirNode;

/**
 * What a ticked folder holds on the disk but not in the tree, and what is thus
 * not copied: only nodes are. Used on the thread that copies.
 */
class CUnlistedEntries
{
public:
    /** Opens the node's folder. The node is looked at before and not afterwards. */
    explicit CUnlistedEntries(const CDirNode& node);

    /**
     * The next entry that is not in the tree, or the folder itself when nothing of
     * it is or it cannot be read; nothing once all is told.
     */
    std::optional<STCopyOutcome> Next();

private:
    STCopyReason NothingListed() const;
    STCopyOutcome Entry(const QString& strName) const;
    STCopyOutcome Folder(const STCopyReason& stReason);

    const QString m_strFolder;
    const bool m_bLeadsBack; // the tree did not list it, since it is a link to an ancestor
    const QSet<QString> m_setListed; // names of the node's children
    CFolderReader m_folder;
    bool m_bEnded = false;
};
