#pragma once

#include "tree/CDirListing.h"
#include "tree/CNodeFileInfo.h"

#include <QFileInfo>
#include <QIcon>
#include <QList>
#include <QString>
#include <QStringList>

#include <initializer_list>

/** How far a folder of the tree has been listed. */
enum class ENListed : quint8
{
    NEVER, ///< nobody has asked, or what was listed has been removed
    AWAITED, ///< its disk has been asked
    OVERDUE, ///< the same, and the disk does not answer
    DONE ///< to its end, or as far as it could be read
};

/**
 * One file or folder of the source tree: what the user sees in a row, its tick,
 * and its children, listed only when somebody asks.
 *
 * The ticks in the nodes are the user's selection; no other list of it exists.
 * Nothing in a node is locked or atomic: a tree belongs to one thread at a time.
 * The GUI thread owns it. While it is lent to the size worker the GUI thread reads
 * no node (CDirModel::SetLent); while the copy worker reads it, nobody changes one.
 *
 * The icon is shared by all nodes of one kind of entry. It is null without a
 * QApplication, and for nodes built outside the GUI thread before the GUI thread
 * has built its first. A folder whose last listing was refused or cut short says
 * why in m_nListError, by an errno value; ELOOP stands for a link that leads back
 * to a folder that it lies in.
 */
class CDirNode
{
public:
    /** A node without entry: no path, no icon, no name, unchecked, not a folder. */
    CDirNode();

    /**
     * The node of `info` below `parent` (null for a root), unchecked. Asks the
     * file system once for what kind of entry it is; safe on any thread. It is not
     * added to the parent's children.
     */
    CDirNode(QFileInfo info, CDirNode* parent);

    /** The node of an entry of a listing, whose kind is known already: asks the file system nothing. */
    CDirNode(STDirEntry stEntry, CDirNode* parent);

    /** Frees the node alone. Its children are freed by RemoveAll and RemoveAt, from the bottom up. */
    ~CDirNode() = default;

    CDirNode(const CDirNode&) = delete;
    CDirNode& operator=(const CDirNode&) = delete;

    /** Makes `child` the last child of this node, which owns it from now on. */
    void AppendChild(CDirNode* child);

    /** The child at `row`; null when there is none. */
    CDirNode* Child(int row);

    /** The row of `child`, compared by address; -1 when it is no child of this node. */
    int ChildIndex(CDirNode* child);

    /** Deletes all direct children. Theirs must have been removed before. */
    void RemoveAll();

    /** Deletes everything below this node, from the bottom up. */
    void RemoveAllBelow();

    /** Deletes the direct child at `row`; does nothing when there is none. */
    void RemoveAt(int row);

    /** The paths of this node and of the folders that it lies in, from here upwards. */
    QStringList PathsFromHere() const;

    /** What has to be known to list the folder. */
    STFolderToList ToList() const;

    /**
     * Whether this is a symbolic link below another node whose target is, or
     * contains, one of the folders that the node lies in: listing it would go round
     * for ever. A top-level entry never leads back, since it lies in none.
     */
    bool LeadsBack() const;

    /**
     * What CDirListing::List says of the folder; a link that leads back is refused
     * with ELOOP. Changes nothing. Of different nodes it may be asked on several
     * threads at once.
     */
    STDirListing List(std::initializer_list<QLatin1String> listSkip) const;

    /**
     * Lists the folder and appends its entries, folders first, then by name
     * without regard to case. To be called on a node without children. The new
     * nodes are checked when this one is, else unchecked. Tells no model, so the
     * size worker calls it on its own thread. A folder that cannot be listed
     * gets no children and leaves the reason in m_nListError.
     */
    void LoadChild();

    /** What LoadChild lists of a folder, its files told to fnFile; safe on any thread. */
    static STDirListing ListForCopy(const STFolderToList& stFolder, const PFNListedFile& fnFile = {});

    /** The second half of LoadChild: takes what ListForCopy has said of this folder. */
    void TakeListing(STDirListing stListing);

    /** How far it has been listed from now on. */
    void SetListed(ENListed enListed);

    /** Notes that the folder has been listed, and what the listing said beside its entries. */
    void NoteListing(const STDirListing& stListing);

    /**
     * How many folders were never listed, this one and all below it. Kept up to date
     * by the functions of this class.
     */
    int CountUnlisted() const { return m_nUnlisted; }

    CNodeFileInfo m_fileInfo; ///< the entry, read as a QFileInfo: path, size and times come from it
    QIcon m_icon; ///< of the kind of entry; may be null
    qint32 m_chkState = Qt::Unchecked; ///< a Qt::CheckState: 0 unchecked, 1 partially checked, 2 checked
    bool m_bDir = false; ///< it was a folder, or a link to one, when the node was built
    ENListed m_enListed = ENListed::NEVER; ///< of a folder; changed by SetListed, NoteListing and RemoveAll
    quint16 m_nLeftOut = 0; ///< entries that the last listing left out for their names, 65535 for more
    QString m_strName; ///< what the row shows: the file name; for a top-level entry the path as it was given
    CDirNode* m_pParent = nullptr; ///< the node that owns this one; null for a root
    QList<CDirNode*> m_listChild; ///< in the order of the rows; owned; empty: not listed, or nothing to list
    qint16 m_nListError = 0; ///< why the last listing failed; 0 when all was well
    bool m_bLink = false; ///< it was a symbolic link, of whatever target, when the node was built
    bool m_bComplete = false; ///< of a root: a tick below it means everything in it, in the tree or not

private:
    void AddUnlisted(int nMore);

    int m_nUnlisted = 0; // folders here and below that were never listed
};
