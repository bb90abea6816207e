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
 * Qt's own interface for trees tells nothing of a tick that the delegate draws.
 * GUI thread only.
 */
class CFileTreeAccess : public QAccessibleWidget
{
public:
    /** Makes Qt use this class for every CFileTreeView. Saying so again changes nothing. */
    static void Install();

    /** The interface of the view; null when somebody else has made it. */
    static CFileTreeAccess* Of(CFileTreeView* pView);

    explicit CFileTreeAccess(CFileTreeView* pView);
    ~CFileTreeAccess() override;

    /** The interface of a shown row, made when first asked for; null for a row that is not shown. */
    CFileRowAccess* Row(const QModelIndex& index) const;

    /** Tells readers that the row is the current one, when it is shown. */
    void TellFocus(const QModelIndex& index) const;

    /** Tells readers that the row was opened or closed. */
    void TellExpanded(const QModelIndex& index) const;

    /** Tells readers that the row was selected or is so no more. */
    void TellSelected(const QModelIndex& index, bool bSelected) const;

    /** Tells readers of a new tick, when they know of the row and have not been told of it. */
    void TellTick(const QModelIndex& index) const;

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
    void DropGoneRows() const;

    mutable QHash<const void*, QAccessible::Id> m_hashRow; // by node
    QObject m_context; // of connections that end with this object
};
