#include "kit/CClickableLabel.h"

#include <QAccessible>
#include <QSignalSpy>
#include <QTest>

class tst_CClickableLabelAccess : public QObject
{
    Q_OBJECT

private slots:
    void labelOfTheKeyboardIsAButton();
    void labelOfTheMouseIsAText();
    void pressingIsAClick();
    void disabledIsNotPressed();
};

void tst_CClickableLabelAccess::labelOfTheKeyboardIsAButton()
{
    CClickableLabel label;
    label.setFocusPolicy(Qt::TabFocus);
    label.setAccessibleName(QStringLiteral("Refresh"));
    const QAccessibleInterface* pInterface = QAccessible::queryAccessibleInterface(&label);
    QCOMPARE(pInterface->role(), QAccessible::PushButton);
    QCOMPARE(pInterface->text(QAccessible::Name), QStringLiteral("Refresh"));
    QVERIFY(pInterface->state().focusable);
}

void tst_CClickableLabelAccess::labelOfTheMouseIsAText()
{
    CClickableLabel label;
    label.setText(QStringLiteral("STICK"));
    const QAccessibleInterface* pInterface = QAccessible::queryAccessibleInterface(&label);
    QCOMPARE(pInterface->role(), QAccessible::StaticText);
    QCOMPARE(pInterface->text(QAccessible::Name), QStringLiteral("STICK"));
    QVERIFY(!pInterface->state().focusable);
}

void tst_CClickableLabelAccess::pressingIsAClick()
{
    CClickableLabel label;
    label.setFocusPolicy(Qt::TabFocus);
    QSignalSpy spy(&label, &CClickableLabel::SignalLabelClicked);
    QAccessibleActionInterface* pActions = QAccessible::queryAccessibleInterface(&label)->actionInterface();
    QCOMPARE(pActions->actionNames(),
             QStringList(
                 {QAccessibleActionInterface::pressAction(), QAccessibleActionInterface::setFocusAction()}));
    pActions->doAction(QAccessibleActionInterface::pressAction());
    QCOMPARE(spy.count(), 1);
    pActions->doAction(QAccessibleActionInterface::setFocusAction());
    QCOMPARE(spy.count(), 1);
}

void tst_CClickableLabelAccess::disabledIsNotPressed()
{
    CClickableLabel label;
    label.setFocusPolicy(Qt::TabFocus);
    label.setEnabled(false);
    QSignalSpy spy(&label, &CClickableLabel::SignalLabelClicked);
    QAccessibleActionInterface* pActions = QAccessible::queryAccessibleInterface(&label)->actionInterface();
    QVERIFY(!pActions->actionNames().contains(QAccessibleActionInterface::pressAction()));
    pActions->doAction(QAccessibleActionInterface::pressAction());
    QVERIFY(spy.isEmpty());
}

QTEST_MAIN(tst_CClickableLabelAccess)
#include "tst_CClickableLabelAccess.moc"
