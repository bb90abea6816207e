#include "tree/CNodeLoan.h"

#include "tree/CDirModel.h"

#include <QEvent>
#include <QHeaderView>
#include <QItemSelectionModel>
#include <QPainter>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QTreeView>

namespace {

/** Lies over a view, shows what it last looked like and swallows the mouse. */
class CViewPicture : public QWidget
{
public:
    CViewPicture(const QPixmap& pixmap, QWidget* pView)
        : QWidget(pView)
        , m_pixmap(pixmap)
    {
        setAttribute(Qt::WA_NoMousePropagation);
        setAttribute(Qt::WA_OpaquePaintEvent);
        setGeometry(pView->rect());
        pView->installEventFilter(this);
        show();
    }

    bool eventFilter(QObject* pView, QEvent* pEvent) override
    {
        if (pEvent->type() == QEvent::Resize) {
            setGeometry(static_cast<QWidget*>(pView)->rect());
        }
        return false;
    }

protected:
    void paintEvent(QPaintEvent*) override
    {
        QPainter painter(this);
        painter.fillRect(rect(), palette().base());
        painter.drawPixmap(0, 0, m_pixmap);
    }

private:
    const QPixmap m_pixmap;
};

}

/** What is open below `parent`, the folders before those in them. */
static QVector<QPersistentModelIndex> ExpandedBelow(const QTreeView& view, const QModelIndex& parent)
{
    QVector<QPersistentModelIndex> listExpanded;
    const QAbstractItemModel& model = *view.model();
    for (int i = 0; i < model.rowCount(parent); ++i) {
        const QModelIndex index = model.index(i, 0, parent);
        if (!model.hasChildren(index)) {
            continue;
        }
        if (view.isExpanded(index)) {
            listExpanded.append(index);
        }
        // Folders below a closed one may be open too, and are so again once it is opened.
        listExpanded += ExpandedBelow(view, index);
    }
    return listExpanded;
}

CNodeLoan::CNodeLoan(QTreeView* pView, CDirModel* pModel)
    : m_pView(pView)
    , m_pModel(pModel)
    , m_pPicture(new CViewPicture(pView->grab(), pView))
    , m_pSelection(pView->selectionModel())
    , m_listExpanded(ExpandedBelow(*pView, QModelIndex()))
    , m_nScrollX(pView->horizontalScrollBar()->value())
    , m_nScrollY(pView->verticalScrollBar()->value())
{
    ExchangeModel(nullptr);
    m_pModel->SetLent(true);
}

CNodeLoan::~CNodeLoan() { m_pModel->SetLent(false); }

void CNodeLoan::ExchangeModel(QAbstractItemModel* pModel)
{
    m_pView->setModel(pModel);
    // The header makes itself a selection model each time, takes the view's
    // instead at once, and leaves its own lying about.
    const QHeaderView* pHeader = m_pView->header();
    const auto listOwn = pHeader->findChildren<QItemSelectionModel*>(QString(), Qt::FindDirectChildrenOnly);
    for (QItemSelectionModel* pOwn : listOwn) {
        if (pOwn != pHeader->selectionModel()) {
            delete pOwn;
        }
    }
}

void CNodeLoan::Return()
{
    m_pModel->SetLent(false);
    delete m_pView->selectionModel();
    ExchangeModel(m_pModel);
    {
        // The folders were listed and ticked when the user opened them. They are
        // open before the current row is back: the view would open those above it.
        const QSignalBlocker blocker(m_pView);
        for (const QPersistentModelIndex& index : qAsConst(m_listExpanded)) {
            m_pView->setExpanded(index, true);
        }
        if (m_pSelection) {
            delete m_pView->selectionModel();
            m_pView->setSelectionModel(m_pSelection);
        }
    }
    m_pView->doItemsLayout();
    m_pView->horizontalScrollBar()->setValue(m_nScrollX);
    m_pView->verticalScrollBar()->setValue(m_nScrollY);
    delete m_pPicture;
}
