#pragma once

#include "tree/STFolderFacts.h"

#include <QPersistentModelIndex>
#include <QStringList>
#include <QTreeView>

#include <memory>

class CDirModel;
class CNodeLoan;

/** The source tree on the selection page: one column without header over the one CDirModel. */
class CFileTreeView : public QTreeView
{
    Q_OBJECT

public:
    explicit CFileTreeView(QWidget* parent = nullptr);
    ~CFileTreeView() override;

    /** Takes the one model and shows it. The constructor does so; doing it again changes nothing. */
    void InitData();
    /** Connects the view to the model. Called once, by the constructor. */
    void InitConnect();
    /** Sets up the header, the delegate and the scroll bar. Called once, by the constructor. */
    void InitView();

    /**
     * Makes `roots` the top-level entries and lists their first level; waits for their
     * disks 1.5 seconds at most, and what comes later is shown later. Works once:
     * as soon as a list that is not empty has been taken, further calls do nothing.
     * While the nodes are lent the list is kept and taken when they are returned.
     */
    void Parse(QStringList roots);

    /**
     * Appends those of `roots` that are no top-level entries yet, and lists empty ones once
     * more: a disk may have come to lie there. Nothing that is shown or ticked goes. While
     * the nodes are lent, or the view is not to be seen, that is put off until they are back
     * and no copy of what was counted follows at once.
     */
    void AddRoots(const QStringList& roots);

    /**
     * Lends the nodes to the size worker (true: call it before the worker starts)
     * and takes them back (false: call it after the worker's end). What is still being
     * listed is awaited before, unless its disk does not answer. Meanwhile the
     * view takes no input, and whoever reads a node through the model breaks the
     * contract (see CNodeLoan). What the worker listed is shown afterwards. Saying
     * the same twice changes nothing.
     */
    void LendNodes(bool bLent);

    /**
     * Ticks or unticks a row as a press on its box does, brings it into sight
     * and emits SignalItemClicked. Nothing for an invalid index and while the
     * nodes are lent.
     */
    void ToggleTick(const QModelIndex& index);

    /** Number of rows that no closed folder hides, in sight or not; 0 while the nodes are lent. */
    int ShownCount() const;

    /** The row at a place among the shown rows, counted from 0 at the top; invalid beyond them. */
    QModelIndex ShownAt(int nPlace) const;

    /** The place of a row among the shown ones; -1 when it is not shown. */
    int ShownPlace(const QModelIndex& index) const;

    /**
     * Whether a volume that is fully ticked has folders that were never listed, so that
     * nothing in them is copied. Costs next to nothing. While the nodes are lent the
     * answer is that from before.
     */
    bool HasUnlistedFolder() const;

    /** Whether a volume is fully ticked; while the nodes are lent whether one was before. */
    bool HasTickedVolume() const;

    /**
     * Whether the folder that SignalFolderOpened told of last is ticked in part; while the
     * nodes are lent whether it was before.
     */
    bool IsToldFolderTickedInPart() const;

signals:
    /** A row was clicked, on its box or elsewhere, or ticked by key; its tick is already the new one. */
    void SignalItemClicked();

    /**
     * The user has opened a folder, or has pressed on one that cannot be opened since it
     * could not be listed. It is listed by then, unless it does not answer; it is told
     * again when its list comes in later while it is open.
     */
    void SignalFolderOpened(const STFolderFacts& stFacts);

    /** AddRoots has done its work, at once or late. */
    void SignalRootsAdded();

    /** Another row is the current one; invalid when there is none any more. */
    void SignalCurrentChanged(const QModelIndex& index);

    /** The selection has changed by these rows. */
    void SignalSelectionChanged(const QItemSelection& selected, const QItemSelection& deselected);

public slots:
    void dataChanged(const QModelIndex& topLeft, const QModelIndex& bottomRight,
                     const QVector<int>& roles = QVector<int>()) override;

protected:
    /** The view's width, or more for deep rows, in pixels; no name is measured. */
    int sizeHintForColumn(int nColumn) const override;
    /** The row, and a mark before the current one while the view has the focus and is used by keys. */
    void drawRow(QPainter* pPainter, const QStyleOptionViewItem& option,
                 const QModelIndex& index) const override;
    void rowsInserted(const QModelIndex& parent, int nStart, int nEnd) override;
    bool event(QEvent* pEvent) override;
    bool viewportEvent(QEvent* pEvent) override;
    void resizeEvent(QResizeEvent* pEvent) override;
    void showEvent(QShowEvent* pEvent) override;
    void hideEvent(QHideEvent* pEvent) override;
    void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;
    void selectionChanged(const QItemSelection& selected, const QItemSelection& deselected) override;

    /**
     * Space ticks the current row; the arrows, "+" and "-" open and close it;
     * letters look for a name. No key does anything while the nodes are lent.
     */
    void keyPressEvent(QKeyEvent* pEvent) override;
    /** Makes the first row the current one when there is none, so that Space has a row to tick. */
    void focusInEvent(QFocusEvent* pEvent) override;

private:
    void AddPutOff();
    void EnsureCurrentRow();
    void MarkCurrentRow(bool bMark);
    void KeysGoOnFrom(const QModelIndex& index);
    void TellFolder(const QModelIndex& index);
    void TellRefusal(const QModelIndex& index);

    QStringList m_listRoot;
    CDirModel* m_pDirModel = nullptr;
    QStringList m_listLateRoot; // given while the nodes were lent
    QStringList m_listAddLater; // to be appended as soon as the nodes are at hand
    std::unique_ptr<CNodeLoan> m_pLoan; // while the nodes are lent
    bool m_bUnlistedAtLoan = false; // what HasUnlistedFolder said when they were lent
    bool m_bTickedAtLoan = false; // the same of HasTickedVolume
    bool m_bInPartAtLoan = false; // the same of IsToldFolderTickedInPart
    QPersistentModelIndex m_toldFolder;
    bool m_bKeysUsed = false; // the last input was a key
};
