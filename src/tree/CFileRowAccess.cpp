#include "tree/CFileRowAccess.h"

#include "tree/CDirModel.h"
#include "tree/CDirNode.h"
#include "tree/CFileTreeView.h"
#include "tree/CFolderTrouble.h"

#include <QLocale>
#include <QStyledItemDelegate>
#include <QWindow>

CFileRowAccess::CFileRowAccess(CFileTreeView* pView, const QModelIndex& index)
    : m_pView(pView)
    , m_index(index)
    , m_nTick(Tick())
    , m_enTrouble(Trouble())
{
}

QModelIndex CFileRowAccess::Index() const { return m_index; }

int CFileRowAccess::Tick() const { return m_index.data(Qt::CheckStateRole).toInt(); }

ENFolderTrouble CFileRowAccess::Trouble() const
{
    return CFolderTrouble::Of(*CDirModel::GetInstence()->nodeFromIndex(m_index));
}

bool CFileRowAccess::NoteTrouble()
{
    const ENFolderTrouble enBefore = m_enTrouble;
    m_enTrouble = Trouble();
    return m_enTrouble != enBefore;
}

bool CFileRowAccess::NoteTick()
{
    const int nBefore = m_nTick;
    m_nTick = Tick();
    return m_nTick != nBefore;
}

bool CFileRowAccess::isValid() const
{
    // The view is asked first: while it has lent the nodes none of them may be read.
    return m_pView && m_pView->model() && m_pView->ShownPlace(m_index) >= 0;
}

QObject* CFileRowAccess::object() const { return nullptr; }

QWindow* CFileRowAccess::window() const { return m_pView ? m_pView->window()->windowHandle() : nullptr; }

QAccessibleInterface* CFileRowAccess::parent() const
{
    return m_pView ? QAccessible::queryAccessibleInterface(m_pView) : nullptr;
}

QAccessibleInterface* CFileRowAccess::child(int) const { return nullptr; }

QAccessibleInterface* CFileRowAccess::childAt(int, int) const { return nullptr; }

int CFileRowAccess::childCount() const { return 0; }

int CFileRowAccess::indexOfChild(const QAccessibleInterface*) const { return -1; }

QString CFileRowAccess::text(QAccessible::Text enText) const
{
    if (!isValid()) {
        return QString();
    }
    if (enText == QAccessible::Description) {
        const CDirNode* pNode = CDirModel::GetInstence()->nodeFromIndex(m_index);
        const QString strPath = pNode->m_fileInfo.absoluteFilePath();
        const QString strTrouble = CFolderTrouble::Text(*pNode);
        return strTrouble.isEmpty() ? strPath : strTrouble + QLatin1Char('\n') + strPath;
    }
    const auto* pDelegate = qobject_cast<const QStyledItemDelegate*>(m_pView->itemDelegate());
    if (enText != QAccessible::Name || !pDelegate) {
        return QString();
    }
    return pDelegate->displayText(m_index.data(), m_pView->locale());
}

void CFileRowAccess::setText(QAccessible::Text, const QString&) { }

QRect CFileRowAccess::rect() const
{
    if (!isValid()) {
        return QRect();
    }
    const QRect rect = m_pView->visualRect(m_index);
    return QRect(m_pView->viewport()->mapToGlobal(rect.topLeft()), rect.size());
}

QAccessible::Role CFileRowAccess::role() const { return QAccessible::TreeItem; }

QAccessible::State CFileRowAccess::state() const
{
    QAccessible::State state;
    if (!isValid()) {
        state.invalid = true;
        return state;
    }
    const int nTick = Tick();
    state.checkable = true;
    state.checked = nTick == Qt::Checked;
    state.checkStateMixed = nTick == Qt::PartiallyChecked;
    state.expandable = m_pView->model()->hasChildren(m_index);
    state.expanded = state.expandable && m_pView->isExpanded(m_index);
    state.collapsed = state.expandable && !state.expanded;
    state.selectable = true;
    state.selected = m_pView->selectionModel()->isSelected(m_index);
    state.focusable = true;
    state.focused = m_pView->hasFocus() && m_pView->currentIndex() == m_index;
    state.disabled = !m_pView->isEnabled();
    const bool bInSight = m_pView->viewport()->rect().intersects(m_pView->visualRect(m_index));
    state.offscreen = !bInSight;
    state.invisible = !bInSight || !m_pView->isVisible();
    return state;
}

void* CFileRowAccess::interface_cast(QAccessible::InterfaceType enType)
{
    return enType == QAccessible::ActionInterface ? static_cast<QAccessibleActionInterface*>(this) : nullptr;
}

QStringList CFileRowAccess::actionNames() const
{
    // While the tree is out of sight the copy worker may be reading the nodes.
    if (!isValid() || !m_pView->isVisible()) {
        return {};
    }
    QStringList listName{toggleAction(), setFocusAction()};
    if (m_pView->model()->hasChildren(m_index)) {
        listName.append(pressAction());
    }
    return listName;
}

void CFileRowAccess::doAction(const QString& strAction)
{
    if (!actionNames().contains(strAction)) {
        return;
    }
    if (strAction == toggleAction()) {
        m_pView->ToggleTick(m_index);
    } else if (strAction == pressAction()) {
        m_pView->setExpanded(m_index, !m_pView->isExpanded(m_index));
    } else if (strAction == setFocusAction()) {
        m_pView->setFocus();
        m_pView->setCurrentIndex(m_index);
    }
}

QStringList CFileRowAccess::keyBindingsForAction(const QString&) const { return {}; }
