#include "kit/CDecorationAccess.h"

#include <QAccessible>
#include <QLabel>
#include <QTest>

class tst_CDecorationAccess : public QObject
{
    Q_OBJECT

private slots:
    void markedIsPassedOver_data();
    void markedIsPassedOver();
    void othersAreRead();
};

static bool IsOnScreen(QWidget* pWidget)
{
    return !QAccessible::queryAccessibleInterface(pWidget)->state().invisible;
}

void tst_CDecorationAccess::markedIsPassedOver_data()
{
    QTest::addColumn<bool>("read");
    QTest::newRow("before a reader comes") << false;
    QTest::newRow("after a reader has come") << true;
}

void tst_CDecorationAccess::markedIsPassedOver()
{
    QFETCH(bool, read);
    QWidget window;
    QLabel line(&window);
    QLabel picture(QStringLiteral("text"), &window);
    window.show();
    if (read) {
        QVERIFY(IsOnScreen(&line));
        QVERIFY(IsOnScreen(&picture));
    }
    CDecorationAccess::Mark({&line, &picture});
    QVERIFY(!IsOnScreen(&line));
    QVERIFY(!IsOnScreen(&picture));
    QVERIFY(picture.isVisible());
    QVERIFY(QAccessible::queryAccessibleInterface(&line)->isValid());
}

void tst_CDecorationAccess::othersAreRead()
{
    QWidget window;
    QLabel line(&window);
    QLabel text(QStringLiteral("text"), &window);
    CDecorationAccess::Mark({&line});
    window.show();
    QVERIFY(IsOnScreen(&text));
    QCOMPARE(QAccessible::queryAccessibleInterface(&text)->role(), QAccessible::StaticText);
    QCOMPARE(QAccessible::queryAccessibleInterface(&text)->text(QAccessible::Name), QStringLiteral("text"));
    QVERIFY(IsOnScreen(&window));
}

QTEST_MAIN(tst_CDecorationAccess)
#include "tst_CDecorationAccess.moc"
