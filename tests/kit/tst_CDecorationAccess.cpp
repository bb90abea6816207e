#include "kit/CDecorationAccess.h"
#include "support/Widgets.h"

#include <QLabel>

class tst_CDecorationAccess : public QObject
{
    Q_OBJECT

private slots:
    void markedIsPassedOver_data();
    void markedIsPassedOver();
};

static bool IsOnScreen(QWidget* pWidget) { return !Heard(pWidget)->state().invisible; }

void tst_CDecorationAccess::markedIsPassedOver_data()
{
    QTest::addColumn<bool>("bRead");
    QTest::newRow("before a reader comes") << false;
    QTest::newRow("after a reader has come") << true;
}

void tst_CDecorationAccess::markedIsPassedOver()
{
    QFETCH(bool, bRead);
    QWidget window;
    QLabel line(&window);
    QLabel picture("picture", &window);
    QLabel text("text", &window);
    window.show();
    if (bRead) {
        QVERIFY(IsOnScreen(&line));
        QVERIFY(IsOnScreen(&picture));
    }
    CDecorationAccess::Mark({&line, &picture});
    QVERIFY(!IsOnScreen(&line));
    QVERIFY(!IsOnScreen(&picture));
    QVERIFY(picture.isVisible());
    QVERIFY(Heard(&line)->isValid());
    // The others are read as before.
    QVERIFY(IsOnScreen(&window));
    QVERIFY(IsOnScreen(&text));
    QCOMPARE(Heard(&text)->role(), QAccessible::StaticText);
    QCOMPARE(NameHeard(&text), QString("text"));
}

QTEST_MAIN(tst_CDecorationAccess)
#include "tst_CDecorationAccess.moc"
