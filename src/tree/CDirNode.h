#pragma once

#include <QFileInfo>
#include <QIcon>
#include <QList>
#include <QString>

struct STDirEntry;

/**
 * One file or folder of the source tree: what the user sees in a row, its tick,
 * and its children, listed only when somebody asks.
 *
 * The ticks in the nodes are the user's selection; no other list of it exists.
 * Nothing in a node is locked or atomic: a tree belongs to one thread at a time.
 * The GUI thread owns it, and lends it to the size worker, and later to the copy
 * worker, while it keeps its own hands off.
 */
class CDirNode
{
public:
    /** A node without entry: no path, no icon, no name, unchecked, not a folder. */
    CDirNode();

    /**
     * The node of `info` below `parent` (null for a root), unchecked. Asks the
     * file system once for what kind of entry it is; safe on any thread, but see
     * m_icon. It is not added to the parent's children.
     */
    CDirNode(QFileInfo info, CDirNode* parent);

    /** The node of an entry of a listing, whose kind is known already: asks the file system nothing. */
    CDirNode(const STDirEntry& stEntry, CDirNode* parent);

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

    /** Deletes the direct child at `row`; does nothing when there is none. */
    void RemoveAt(int row);

    /**
     * Lists the folder and appends its entries, folders first, then by name
     * without regard to case. To be called on a node without children. The new
     * nodes are checked when this one is, else unchecked. Tells no model, so the
     * size worker calls it on its own thread. A folder that cannot be listed
     * gets no children and leaves the reason in m_nListError.
     */
    void LoadChild();

    /** The entry; path, size and times come from it, read when first asked for. */
    QFileInfo m_fileInfo;

    /**
     * Icon of the kind of entry, shared by all nodes of that kind. Null without a
     * QApplication, and for nodes built outside the GUI thread before the GUI
     * thread has built its first.
     */
    QIcon m_icon;

    /** A Qt::CheckState: 0 unchecked, 1 partially checked, 2 checked. */
    qint32 m_chkState = Qt::Unchecked;

    /** Whether the entry was a folder, or a link to one, when the node was built. */
    bool m_bDir = false;

    /** What the row shows: the file name; for a top-level entry the path as it was given. */
    QString m_strName;

    /** The node that owns this one; null for a root. */
    CDirNode* m_pParent = nullptr;

    /** The children in the order of the rows; owned. Empty means not listed, or nothing to list. */
    QList<CDirNode*> m_listChild;

    /**
     * Why the last listing of this folder was refused or cut short, as an errno
     * value; ELOOP for a link that leads back to a folder that it lies in; 0 when all was well.
     */
    int m_nListError = 0;
};
