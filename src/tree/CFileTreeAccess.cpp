#include "tree/CFileTreeAccess.h"

#include "tree/CDirModel.h"
#include "tree/CFileRowAccess.h"
#include "tree/CFileTreeView.h"

static QAccessibleInterface* MakeInterface(const QString& strClass, QObject* pObject)
{
    if (strClass != QLatin1String(CFileTreeView::staticMetaObject.className())) {
        return nullptr;
    }
    return new CFileTreeAccess(static_cast<CFileTreeView*>(pObject));
}

void CFileTreeAccess::Install() { QAccessible::installFactory(MakeInterface); }

CFileTreeAccess* CFileTreeAccess::Of(CFileTreeView* pView)
{
    return dynamic_cast<CFileTreeAccess*>(QAccessible::queryAccessibleInterface(pView));
}

CFileTreeAccess::CFileTreeAccess(CFileTreeView* pView)
    : QAccessibleWidget(pView, QAccessible::Tree)
{
    const auto fnDrop = [this] { DropGoneRows(); };
    const CDirModel* pModel = CDirModel::GetInstence();
    QObject::connect(pModel, &QAbstractItemModel::rowsRemoved, &m_context, fnDrop);
    QObject::connect(pModel, &QAbstractItemModel::modelReset, &m_context, fnDrop);
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

void CFileTreeAccess::TellFocus(const QModelIndex& index) const
{
    if (CFileRowAccess* pRow = Row(index)) {
        QAccessibleEvent event(pRow, QAccessible::Focus);
        QAccessible::updateAccessibility(&event);
    }
}

void CFileTreeAccess::TellExpanded(const QModelIndex& index) const
{
    if (CFileRowAccess* pRow = Row(index)) {
        QAccessible::State changed;
        changed.expanded = true;
        changed.collapsed = true;
        QAccessibleStateChangeEvent event(pRow, changed);
        QAccessible::updateAccessibility(&event);
    }
}

void CFileTreeAccess::TellSelected(const QModelIndex& index, bool bSelected) const
{
    if (CFileRowAccess* pRow = Row(index)) {
        QAccessibleEvent event(pRow, bSelected ? QAccessible::SelectionAdd : QAccessible::SelectionRemove);
        QAccessible::updateAccessibility(&event);
    }
}

void CFileTreeAccess::TellTick(const QModelIndex& index) const
{
    CFileRowAccess* pRow = Known(index);
    if (!pRow || !pRow->NoteTick()) {
        return;
    }
    QAccessible::State changed;
    changed.checked = true;
    changed.checkStateMixed = true;
    QAccessibleStateChangeEvent event(pRow, changed);
    QAccessible::updateAccessibility(&event);
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
