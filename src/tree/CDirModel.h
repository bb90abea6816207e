#pragma once

#include <QAbstractItemModel>

class CDirNode;
struct STDirListing;

/**
 * The model of the source tree: one column of names with an icon and a
 * three-state tick, listed two levels ahead of what is open.
 *
 * Everything here runs on the GUI thread. The workers read the nodes directly,
 * never through the model. While the nodes are lent, nothing but GetRootNode() may
 * be called; debug builds end the program where somebody does so all the same.
 */
class CDirModel : public QAbstractItemModel
{
    Q_OBJECT

public:
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

    /** Tells whether the nodes belong to a worker from now on. They can be lent to one at a time. */
    void SetLent(bool bLent);

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

    /** Lists the folder of `index` unless it has children already. New entries are unchecked. */
    void LoadChild(const QModelIndex& index);

    /** LoadChild for `index` and for each of its rows that is a folder. */
    void LoadGrandChild(const QModelIndex& index);

    /** Drops what lies below each child of `index` and emits layoutChanged(). */
    void ClearGrandChild(const QModelIndex& index);

    /** Drops everything below `index`, from the bottom up. */
    void RemoveAllChild(const QModelIndex& index);

    /** Appends a top-level entry that shows `path` as it is given. */
    void Parse(QString path);

public slots:
    /** Lists two levels below an opened folder and hands the folder's tick down to them. */
    void SlotExpanded(QModelIndex index);

    /** Nothing: a closed folder keeps its entries and their ticks. */
    void SlotCollapsed(QModelIndex index);

private:
    void AssertOwned() const;
    void AppendListing(const QModelIndex& index, const STDirListing& stListing);

    CDirNode* m_pRoot;
    bool m_bLent = false; // the nodes belong to a worker

    static CDirModel* s_pDirModel;
};
