#pragma once

#include <QPersistentModelIndex>
#include <QPointer>
#include <QVector>

class CDirModel;
class QAbstractItemModel;
class QItemSelectionModel;
class QTreeView;
class QWidget;

/**
 * Keeps a view from its nodes while they belong to the size worker: from the
 * making of this object to Return().
 *
 * A view without model can read no node, whatever makes it look: a repaint, a
 * resize, a key, the pointer, a screen reader, a late layout. A picture lies over
 * it, shows what it last looked like and swallows the mouse. GUI thread only.
 */
class CNodeLoan
{
public:
    /** Takes the model from the view. Call it before the worker starts; both must live longer than this. */
    CNodeLoan(QTreeView* pView, CDirModel* pModel);

    /** Frees the model for others. Without Return() the view stays without it. */
    ~CNodeLoan();

    CNodeLoan(const CNodeLoan&) = delete;
    CNodeLoan& operator=(const CNodeLoan&) = delete;

    /**
     * Gives the model back to the view: open folders, selection and scroll position
     * are the same as before. Call it once, after the worker's end.
     */
    void Return();

private:
    void ExchangeModel(QAbstractItemModel* pModel);

    QTreeView* const m_pView;
    CDirModel* const m_pModel;
    QPointer<QWidget> m_pPicture;
    QPointer<QItemSelectionModel> m_pSelection;
    QVector<QPersistentModelIndex> m_listExpanded;
    int m_nScrollX = 0;
    int m_nScrollY = 0;
};
