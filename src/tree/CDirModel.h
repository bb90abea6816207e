#pragma once

#include "tree/CDirListing.h"

#include <QAbstractItemModel>
#include <QHash>
#include <QTimer>
#include <QVector>

#include <chrono>
#include <memory>
#include <vector>

class CDirNode;
class CFolderOpening;
struct STDirListing;
struct STFolderRow;

/**
 * The model of the source tree: one column of names with an icon and a
 * three-state tick, listed two levels ahead of what is open.
 *
 * Disks are asked on other threads. Who lists waits for them, but not for ever: what has
 * not come by then comes in later, when it comes, unless the nodes are lent or held.
 *
 * Everything here runs on the GUI thread. The workers read the nodes directly,
 * never through the model. While the nodes are lent, nothing but GetRootNode() may
 * be called; debug builds end the program where somebody does so all the same.
 */
class CDirModel : public QAbstractItemModel
{
    Q_OBJECT

public:
    /** So long listing a folder waits for the disks, all that is asked for together. */
    static constexpr std::chrono::milliseconds PATIENCE{5000};
    /** The same for what kind of entry a volume is. */
    static constexpr std::chrono::milliseconds KIND_PATIENCE{500};

    /** A model with nothing but its invisible root. The program uses GetInstence(). */
    explicit CDirModel(QObject* parent = nullptr);

    /** Frees all nodes. */
    ~CDirModel() override;

    /** The one model of the program, made on the first call and kept until the process ends. */
    static CDirModel* GetInstence();

    /** The invisible root; its children are the top-level entries. Owned by the model. */
    CDirNode* GetRootNode() const;

    /** Whether anything in the tree is checked or partially checked. */
    bool HasCheckedEntry() const;

    /**
     * Whether a top-level entry that is fully ticked has folders that were never listed:
     * nothing in them is copied. Looks at the top-level entries alone.
     */
    bool HasUnlistedFolder() const;

    /** Whether a top-level entry is fully ticked. */
    bool HasTickedVolume() const;

    /**
     * Whether a tick means everything in it, whether the tree shows it or not; false at
     * first. The root says it to the workers.
     */
    void SetComplete(bool bComplete);

    /** Whether a tick means everything in it. */
    bool IsComplete() const;

    /** Tells whether the nodes belong to a worker from now on. They can be lent to one at a time. */
    void SetLent(bool bLent);

    /**
     * Keeps out what comes in late: while the nodes are held, no node is changed but by
     * who calls this model. The view holds them while it is not to be seen, as the copy
     * worker may be reading them.
     */
    void SetHeld(bool bHeld);

    /**
     * Waits for listings that are still coming, up to that time, and takes them in. Not for
     * disks that do not answer.
     */
    void AwaitListings(std::chrono::milliseconds wait = PATIENCE);

    /** Forgets all listings that are still to come: for those who remove the nodes themselves. */
    void DropListings();

    /**
     * Asks all at once and aside what kinds of entries the paths are, so that Parse() of
     * them need not. Waits KIND_PATIENCE at most.
     */
    void AskKinds(const QStringList& listPath);

    /** The node of `index`; the root for an invalid index. */
    CDirNode* nodeFromIndex(const QModelIndex& index) const;

    QModelIndex index(int row, int column, const QModelIndex& parent = QModelIndex()) const override;
    QModelIndex parent(const QModelIndex& child) const override;
    using QObject::parent;
    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    int columnCount(const QModelIndex& parent = QModelIndex()) const override;

    /** Name, icon and tick (an int) of a row; invalid for every other role. */
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;

    /**
     * For Qt::CheckStateRole sets the tick and spreads it down and up the tree.
     * Always returns false, also when it changed the tick.
     */
    bool setData(const QModelIndex& index, const QVariant& value, int role = Qt::EditRole) override;

    /** Gives `state` to every loaded descendant of `index`; partially checked is not passed on. */
    void ChangeChildChkState(const QModelIndex& index, Qt::CheckState state);

    /** Works out the ticks of all ancestors of `index`, the invisible root included, from their children. */
    void ChangeParentChkState(const QModelIndex& index);

    /** The tick that the children of `index` (of the root for an invalid index) make; changes nothing. */
    Qt::CheckState GetParentChkState(const QModelIndex& index);

    /**
     * Lists the folder of `index` unless it has children already. New entries are
     * unchecked, those that come late are ticked as the folder is.
     */
    void LoadChild(const QModelIndex& index);

    /** LoadChild for `index` and for each of its rows that is a folder; waits so long for all together. */
    void LoadGrandChild(const QModelIndex& index, std::chrono::milliseconds wait = PATIENCE);

    /** Drops what lies below each child of `index` and emits layoutChanged(). */
    void ClearGrandChild(const QModelIndex& index);

    /** Drops everything below `index`, from the bottom up. */
    void RemoveAllChild(const QModelIndex& index);

    /**
     * Appends a top-level entry that shows `path` as it is given. One whose disk does not
     * answer counts as a folder.
     */
    void Parse(QString path);

    /** The same when views may show the tree already; the new entry is not ticked. */
    void ParseLate(const QString& strPath);

signals:
    /** A listing that nobody waited for any more has come in: the folder's rows and ticks are there. */
    void SignalListedLate(const QModelIndex& index);

public slots:
    /** Lists two levels below an opened folder and hands the folder's tick down to them. */
    void SlotExpanded(QModelIndex index);

    /** Nothing: a closed folder keeps its entries and their ticks. */
    void SlotCollapsed(QModelIndex index);

private:
    void AssertOwned() const;
    void AppendRoot(const QString& strPath, int nFirst, int nLast);
    void AppendListing(const QModelIndex& index, const STDirListing& stListing);
    bool ListFolders(const QVector<STFolderRow>& listRow, bool bBelow,
                     std::chrono::steady_clock::time_point end);
    void ListBelow(CDirNode* pNode, std::chrono::steady_clock::time_point end);
    QModelIndex IndexOf(const STFolderRow& stRow) const;
    void TakeLate();
    void TakeLate(CFolderOpening& opening, std::chrono::steady_clock::time_point end);
    void LookForOverdue();
    void MarkOverdue(CFolderOpening& opening, std::chrono::milliseconds time);
    bool IsOwned() const { return !m_bLent && !m_bHeld; }
    void TakeLateSoon();

    /** What is still to come. */
    struct STLate
    {
        std::unique_ptr<CFolderOpening> pOpening;
        CDirNode* pListBelow = nullptr; ///< whose folders are to be listed afterwards; null for none
    };

    CDirNode* m_pRoot;
    bool m_bLent = false; // the nodes belong to a worker
    bool m_bHeld = false; // a worker may be reading the nodes
    std::vector<STLate> m_listLate;
    QTimer m_overdueTimer{this}; // while something is late
    QHash<QString, STEntryKind> m_hashKind; // of paths to parse

    static CDirModel* s_pDirModel;
};
