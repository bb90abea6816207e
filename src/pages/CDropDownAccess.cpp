#include "pages/CDropDownAccess.h"

#include <QListWidget>
#include <QPushButton>

static QListWidget* ListOf(const QObject* pButton)
{
    return pButton->findChild<QListWidget*>(QString(), Qt::FindDirectChildrenOnly);
}

static QAccessibleInterface* MakeInterface(const QString& strClass, QObject* pObject)
{
    const bool bDropDown
        = strClass == QLatin1String(QPushButton::staticMetaObject.className()) && ListOf(pObject);
    return bDropDown ? new CDropDownAccess(static_cast<QPushButton*>(pObject)) : nullptr;
}

void CDropDownAccess::Install(QPushButton* pButton)
{
    QAccessible::installFactory(MakeInterface);
    // A reader that is at work already may have made Qt think of it as a plain button.
    QAccessible::deleteAccessibleInterface(
        QAccessible::uniqueId(QAccessible::queryAccessibleInterface(pButton)));
}

CDropDownAccess::CDropDownAccess(QPushButton* pButton)
    : QAccessibleWidget(pButton, QAccessible::ComboBox)
{
}

QListWidget* CDropDownAccess::OpenList() const
{
    QListWidget* pList = ListOf(widget());
    return pList && pList->isVisible() ? pList : nullptr;
}

int CDropDownAccess::childCount() const { return OpenList() ? 1 : 0; }

QAccessibleInterface* CDropDownAccess::child(int nIndex) const
{
    QListWidget* pList = OpenList();
    return pList && nIndex == 0 ? QAccessible::queryAccessibleInterface(pList) : nullptr;
}

QAccessibleInterface* CDropDownAccess::childAt(int nX, int nY) const
{
    const QListWidget* pList = OpenList();
    return pList && pList->geometry().contains(nX, nY) ? child(0) : nullptr;
}

int CDropDownAccess::indexOfChild(const QAccessibleInterface* pChild) const
{
    return pChild && pChild->object() && pChild->object() == OpenList() ? 0 : -1;
}

QString CDropDownAccess::text(QAccessible::Text enText) const
{
    return QAccessibleWidget::text(enText == QAccessible::Value ? QAccessible::Description : enText);
}

QAccessible::State CDropDownAccess::state() const
{
    QAccessible::State state = QAccessibleWidget::state();
    state.hasPopup = true;
    state.expandable = true;
    state.expanded = OpenList() != nullptr;
    state.collapsed = !state.expanded;
    return state;
}

QStringList CDropDownAccess::actionNames() const
{
    QStringList listName = QAccessibleWidget::actionNames();
    if (widget()->isEnabled()) {
        listName.prepend(pressAction());
    }
    return listName;
}

void CDropDownAccess::doAction(const QString& strAction)
{
    if (strAction == pressAction()) {
        static_cast<QPushButton*>(widget())->click();
        return;
    }
    QAccessibleWidget::doAction(strAction);
}
