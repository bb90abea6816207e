#pragma once

#include <QAccessibleWidget>
#include <QHash>
#include <QObject>

class CFileRowAccess;
class CFileTreeView;

/**
 * The source tree as a screen reader sees it: the shown rows are its children,
 * from top to bottom, whatever their depth. While the nodes are lent there are
 * none, and the tree says that it is busy.
 *
 * Qt's own interface for trees tells nothing of a tick that the delegate draws. It
 * listens to the view and its model, which know nothing of it. Ticks are told once
 * per turn of the event loop and for the rows in sight: a folder may hold 100,000.
 * GUI thread only.
 */
class CFileTreeAccess : public QAccessibleWidget
{
public:
    /**
     * Makes Qt use this class for every CFileTreeView. Call it before the first one is
     * made: readers that are at work by then keep what they were given. Saying so
     * again changes nothing.
     */
    static void Install();

    /** The interface of the view; null when somebody else has made it. */
    static CFileTreeAccess* Of(CFileTreeView* pView);

    explicit CFileTreeAccess(CFileTreeView* pView);
    ~CFileTreeAccess() override;

    /** The interface of a shown row, made when first asked for; null for a row that is not shown. */
    CFileRowAccess* Row(const QModelIndex& index) const;

    int childCount() const override;
    QAccessibleInterface* child(int nIndex) const override;
    QAccessibleInterface* childAt(int nX, int nY) const override;
    int indexOfChild(const QAccessibleInterface* pChild) const override;
    /** The current row. */
    QAccessibleInterface* focusChild() const override;
    QAccessible::State state() const override;

private:
    CFileTreeView* View() const;
    CFileRowAccess* Known(const QModelIndex& index) const;
    CFileRowAccess* RowToTell(const QModelIndex& index) const;
    void ListenToModel();
    void ListenToView();
    void DropGoneRows() const;
    void TellFocus() const;
    void TellExpanded(const QModelIndex& index) const;
    void TellSelected(const QModelIndex& index, bool bSelected) const;
    void TellTicksSoon();
    void TellTicks();
    void TellTick(const QModelIndex& index) const;

    mutable QHash<const void*, QAccessible::Id> m_hashRow; // by node
    bool m_bTicksToTell = false;
    QObject m_context; // of connections that end with this object
};
