#include "kit/CClickableLabelAccess.h"

#include "kit/CClickableLabel.h"

static QAccessibleInterface* MakeLabelAccess(const QString& strClass, QObject* pObject)
{
    if (strClass != QLatin1String(CClickableLabel::staticMetaObject.className())) {
        return nullptr;
    }
    auto* pLabel = static_cast<CClickableLabel*>(pObject);
    return pLabel->focusPolicy() == Qt::NoFocus ? nullptr : new CClickableLabelAccess(pLabel);
}

void CClickableLabelAccess::Install() { QAccessible::installFactory(MakeLabelAccess); }

CClickableLabelAccess::CClickableLabelAccess(CClickableLabel* pLabel)
    : QAccessibleWidget(pLabel, QAccessible::PushButton)
{
}

QStringList CClickableLabelAccess::actionNames() const
{
    QStringList listName = QAccessibleWidget::actionNames();
    if (widget()->isEnabled()) {
        listName.prepend(pressAction());
    }
    return listName;
}

void CClickableLabelAccess::doAction(const QString& strAction)
{
    if (strAction == pressAction() && widget()->isEnabled()) {
        emit static_cast<CClickableLabel*>(widget())->SignalLabelClicked();
        return;
    }
    QAccessibleWidget::doAction(strAction);
}
