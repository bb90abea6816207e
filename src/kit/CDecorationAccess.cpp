#include "kit/CDecorationAccess.h"

#include <QVariant>
#include <QWidget>

static const char MARK[] = "decoration";

static QAccessibleInterface* MakeDecorationAccess(const QString&, QObject* pObject)
{
    const bool bMarked = pObject->isWidgetType() && pObject->property(MARK).toBool();
    return bMarked ? new CDecorationAccess(static_cast<QWidget*>(pObject)) : nullptr;
}

void CDecorationAccess::Mark(std::initializer_list<QWidget*> listWidget)
{
    QAccessible::installFactory(MakeDecorationAccess);
    for (QWidget* pWidget : listWidget) {
        // A reader that is at work already may have made Qt think of it otherwise.
        QAccessibleInterface* pEarlier = QAccessible::queryAccessibleInterface(pWidget);
        QAccessible::deleteAccessibleInterface(QAccessible::uniqueId(pEarlier));
        pWidget->setProperty(MARK, true);
    }
}

CDecorationAccess::CDecorationAccess(QWidget* pWidget)
    : QAccessibleWidget(pWidget, QAccessible::Graphic)
{
}

QAccessible::State CDecorationAccess::state() const
{
    QAccessible::State state = QAccessibleWidget::state();
    state.invisible = true;
    return state;
}
