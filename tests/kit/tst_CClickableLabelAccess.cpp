#include "kit/CClickableLabel.h"
#include "kit/CClickableLabelAccess.h"
#include "support/Widgets.h"

#include <QSignalSpy>

class tst_CClickableLabelAccess : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void role_data();
    void role();
    void pressingIsAClick_data();
    void pressingIsAClick();
};

void tst_CClickableLabelAccess::initTestCase() { CClickableLabelAccess::Install(); }

void tst_CClickableLabelAccess::role_data()
{
    QTest::addColumn<Qt::FocusPolicy>("enPolicy");
    QTest::addColumn<QAccessible::Role>("enRole");
    QTest::addColumn<QString>("strName");
    QTest::newRow("of the keyboard") << Qt::TabFocus << QAccessible::PushButton << "Refresh";
    QTest::newRow("of the mouse") << Qt::NoFocus << QAccessible::StaticText << "STICK";
}

void tst_CClickableLabelAccess::role()
{
    QFETCH(Qt::FocusPolicy, enPolicy);
    CClickableLabel label;
    label.setFocusPolicy(enPolicy);
    if (enPolicy == Qt::NoFocus) {
        label.setText("STICK");
    } else {
        label.setAccessibleName("Refresh");
    }
    QTEST(Heard(&label)->role(), "enRole");
    QTEST(NameHeard(&label), "strName");
    QCOMPARE(bool(Heard(&label)->state().focusable), enPolicy == Qt::TabFocus);
}

void tst_CClickableLabelAccess::pressingIsAClick_data()
{
    QTest::addColumn<bool>("bEnabled");
    QTest::newRow("enabled") << true;
    QTest::newRow("disabled") << false;
}

void tst_CClickableLabelAccess::pressingIsAClick()
{
    QFETCH(bool, bEnabled);
    CClickableLabel label;
    label.setFocusPolicy(Qt::TabFocus);
    label.setEnabled(bEnabled);
    const QSignalSpy spy(&label, &CClickableLabel::SignalLabelClicked);
    QAccessibleActionInterface* pActions = Heard(&label)->actionInterface();
    const QString strPress = QAccessibleActionInterface::pressAction();
    const QString strFocus = QAccessibleActionInterface::setFocusAction();
    QCOMPARE(pActions->actionNames(), bEnabled ? QStringList({strPress, strFocus}) : QStringList());
    pActions->doAction(strPress);
    pActions->doAction(strFocus);
    QCOMPARE(spy.count(), int(bEnabled));
}

QTEST_MAIN(tst_CClickableLabelAccess)
#include "tst_CClickableLabelAccess.moc"
