#include "tree/CFileTreeAccess.h"

#include "tree/CDirModel.h"
#include "tree/CFileRowAccess.h"
#include "tree/CFileTreeView.h"

#include <QApplication>
#include <QScrollBar>

namespace {

/** Has a reader that comes late know of the trees at once: it may listen for long before it asks for one. */
class CReaderWatch : public QAccessible::ActivationObserver
{
public:
    void accessibilityActiveChanged(bool bActive) override
    {
        const QWidgetList listWidget = bActive ? QApplication::allWidgets() : QWidgetList();
        for (QWidget* pWidget : listWidget) {
            if (qobject_cast<CFileTreeView*>(pWidget)) {
                QAccessible::queryAccessibleInterface(pWidget);
            }
        }
    }
};

}

static QAccessibleInterface* MakeInterface(const QString& strClass, QObject* pObject)
{
    if (strClass != QLatin1String(CFileTreeView::staticMetaObject.className())) {
        return nullptr;
    }
    return new CFileTreeAccess(static_cast<CFileTreeView*>(pObject));
}

static void TellState(QAccessibleInterface* pRow, QAccessible::State changed)
{
    QAccessibleStateChangeEvent event(pRow, changed);
    QAccessible::updateAccessibility(&event);
}

static void Tell(QAccessibleInterface* pRow, QAccessible::Event enEvent)
{
    QAccessibleEvent event(pRow, enEvent);
    QAccessible::updateAccessibility(&event);
}

void CFileTreeAccess::Install()
{
    static CReaderWatch s_watch;
    QAccessible::installActivationObserver(&s_watch);
    QAccessible::installFactory(MakeInterface);
}

CFileTreeAccess* CFileTreeAccess::Of(CFileTreeView* pView)
{
    return dynamic_cast<CFileTreeAccess*>(QAccessible::queryAccessibleInterface(pView));
}

CFileTreeAccess::CFileTreeAccess(CFileTreeView* pView)
    : QAccessibleWidget(pView, QAccessible::Tree)
{
    ListenToModel();
    ListenToView();
}

void CFileTreeAccess::ListenToModel()
{
    const CDirModel* pModel = CDirModel::GetInstence();
    const auto fnDrop = [this] { DropGoneRows(); };
    QObject::connect(pModel, &QAbstractItemModel::rowsRemoved, &m_context, fnDrop);
    QObject::connect(pModel, &QAbstractItemModel::modelReset, &m_context, fnDrop);
    QObject::connect(pModel, &QAbstractItemModel::dataChanged, &m_context, [this] { TellTicksSoon(); });
}

void CFileTreeAccess::ListenToView()
{
    const auto fnExpanded = [this](const QModelIndex& index) { TellExpanded(index); };
    QObject::connect(View(), &QTreeView::expanded, &m_context, fnExpanded);
    QObject::connect(View(), &QTreeView::collapsed, &m_context, fnExpanded);
    QObject::connect(View()->verticalScrollBar(), &QScrollBar::valueChanged, &m_context,
                     [this] { TellTicksSoon(); });
    QObject::connect(View(), &CFileTreeView::SignalCurrentChanged, &m_context, [this] { TellFocus(); });
    QObject::connect(View(), &CFileTreeView::SignalSelectionChanged, &m_context,
                     [this](const QItemSelection& selected, const QItemSelection& deselected) {
                         // One row at most is selected.
                         TellSelected(deselected.indexes().value(0), false);
                         TellSelected(selected.indexes().value(0), true);
                     });
    // It waits for its turn: Qt tells readers of the whole tree after this signal, and
    // the row is to be the last word; a view that is just being destroyed sends it, too.
    QObject::connect(
        qApp, &QApplication::focusChanged, &m_context, [this] { TellFocus(); }, Qt::QueuedConnection);
}

CFileTreeAccess::~CFileTreeAccess()
{
    for (const QAccessible::Id nId : qAsConst(m_hashRow)) {
        QAccessible::deleteAccessibleInterface(nId);
    }
}

CFileTreeView* CFileTreeAccess::View() const { return static_cast<CFileTreeView*>(widget()); }

// The row's interface, when it has been asked for before. Another entry may have
// taken the place of one that has gone, in memory as well.
CFileRowAccess* CFileTreeAccess::Known(const QModelIndex& index) const
{
    const auto it = m_hashRow.constFind(index.internalPointer());
    if (it == m_hashRow.constEnd()) {
        return nullptr;
    }
    auto* pRow = static_cast<CFileRowAccess*>(QAccessible::accessibleInterface(*it));
    return pRow && pRow->Index() == index ? pRow : nullptr;
}

void CFileTreeAccess::DropGoneRows() const
{
    for (auto it = m_hashRow.begin(); it != m_hashRow.end();) {
        const auto* pRow = static_cast<const CFileRowAccess*>(QAccessible::accessibleInterface(*it));
        if (pRow && pRow->Index().isValid()) {
            ++it;
            continue;
        }
        QAccessible::deleteAccessibleInterface(*it);
        it = m_hashRow.erase(it);
    }
}

CFileRowAccess* CFileTreeAccess::Row(const QModelIndex& index) const
{
    if (View()->ShownPlace(index) < 0) {
        return nullptr;
    }
    if (CFileRowAccess* pKnown = Known(index)) {
        return pKnown;
    }
    auto* pRow = new CFileRowAccess(View(), index);
    m_hashRow.insert(index.internalPointer(), QAccessible::registerAccessibleInterface(pRow));
    return pRow;
}

// Null also while nobody listens.
CFileRowAccess* CFileTreeAccess::RowToTell(const QModelIndex& index) const
{
    return QAccessible::isActive() ? Row(index) : nullptr;
}

void CFileTreeAccess::TellFocus() const
{
    CFileRowAccess* pRow = RowToTell(View()->currentIndex());
    if (pRow && View()->hasFocus()) {
        Tell(pRow, QAccessible::Focus);
    }
}

void CFileTreeAccess::TellExpanded(const QModelIndex& index) const
{
    if (CFileRowAccess* pRow = RowToTell(index)) {
        QAccessible::State changed;
        changed.expanded = true;
        changed.collapsed = true;
        TellState(pRow, changed);
    }
}

void CFileTreeAccess::TellSelected(const QModelIndex& index, bool bSelected) const
{
    if (CFileRowAccess* pRow = RowToTell(index)) {
        Tell(pRow, bSelected ? QAccessible::SelectionAdd : QAccessible::SelectionRemove);
    }
}

void CFileTreeAccess::TellTicksSoon()
{
    if (!m_bTicksToTell && QAccessible::isActive()) {
        m_bTicksToTell = true;
        QMetaObject::invokeMethod(
            &m_context, [this] { TellTicks(); }, Qt::QueuedConnection);
    }
}

void CFileTreeAccess::TellTicks()
{
    m_bTicksToTell = false;
    const CFileTreeView* pView = View();
    const int nBottom = pView->viewport()->rect().bottom();
    for (QModelIndex index = pView->indexAt(QPoint(pView->columnViewportPosition(0), 0));
         index.isValid() && pView->visualRect(index).top() <= nBottom; index = pView->indexBelow(index)) {
        TellTick(index);
    }
}

// Only of a row that a reader knows, and only what it has not been told of.
void CFileTreeAccess::TellTick(const QModelIndex& index) const
{
    CFileRowAccess* pRow = Known(index);
    if (pRow && pRow->NoteTrouble()) {
        Tell(pRow, QAccessible::DescriptionChanged);
    }
    if (pRow && pRow->NoteTick()) {
        QAccessible::State changed;
        changed.checked = true;
        changed.checkStateMixed = true;
        TellState(pRow, changed);
    }
}

int CFileTreeAccess::childCount() const { return View()->ShownCount(); }

QAccessibleInterface* CFileTreeAccess::child(int nIndex) const { return Row(View()->ShownAt(nIndex)); }

QAccessibleInterface* CFileTreeAccess::childAt(int nX, int nY) const
{
    const QWidget* pViewport = View()->viewport();
    const QPoint pt = pViewport->mapFromGlobal(QPoint(nX, nY));
    return pViewport->rect().contains(pt) ? Row(View()->indexAt(pt)) : nullptr;
}

int CFileTreeAccess::indexOfChild(const QAccessibleInterface* pChild) const
{
    const auto* pRow = dynamic_cast<const CFileRowAccess*>(pChild);
    return pRow && pRow->isValid() ? View()->ShownPlace(pRow->Index()) : -1;
}

QAccessibleInterface* CFileTreeAccess::focusChild() const
{
    QAccessibleInterface* pRow = View()->hasFocus() ? Row(View()->currentIndex()) : nullptr;
    return pRow ? pRow : QAccessibleWidget::focusChild();
}

QAccessible::State CFileTreeAccess::state() const
{
    QAccessible::State state = QAccessibleWidget::state();
    state.busy = !View()->model();
    return state;
}
