#include "kit/CClickableLabel.h"
#include "support/SendMouse.h"

#include <QPainter>
#include <QSignalSpy>
#include <QTest>

namespace {

// A parent that counts the presses left over by its child.
class CCountingParent : public QWidget
{
public:
    int m_nPresses = 0;

protected:
    void mousePressEvent(QMouseEvent*) override { ++m_nPresses; }
};

}

class tst_CClickableLabel : public QObject
{
    Q_OBJECT

private slots:
    void click_data();
    void click();
    void movingAwayAndBackIsAClick();
    void eachClickCountsOnce();
    void pressIsKept();
    void tracksTheMouse();
    void flagsMakeNoWindow();
    void key_data();
    void key();
    void heldKeyClicksOnce();
    void focusIsVisible();
};

void tst_CClickableLabel::click_data()
{
    QTest::addColumn<QPointF>("press");
    QTest::addColumn<QPointF>("release");
    QTest::addColumn<Qt::MouseButton>("button");
    QTest::addColumn<int>("clicks");
    QTest::newRow("same point") << QPointF(20, 10) << QPointF(20, 10) << Qt::LeftButton << 1;
    QTest::newRow("right button") << QPointF(20, 10) << QPointF(20, 10) << Qt::RightButton << 1;
    QTest::newRow("middle button") << QPointF(20, 10) << QPointF(20, 10) << Qt::MiddleButton << 1;
    QTest::newRow("one pixel right") << QPointF(20, 10) << QPointF(21, 10) << Qt::LeftButton << 0;
    QTest::newRow("one pixel left") << QPointF(20, 10) << QPointF(19, 10) << Qt::LeftButton << 0;
    QTest::newRow("one pixel down") << QPointF(20, 10) << QPointF(20, 11) << Qt::LeftButton << 0;
    QTest::newRow("one pixel up") << QPointF(20, 10) << QPointF(20, 9) << Qt::LeftButton << 0;
    QTest::newRow("both axes") << QPointF(20, 10) << QPointF(21, 11) << Qt::LeftButton << 0;
    QTest::newRow("outside") << QPointF(20, 10) << QPointF(-5, 200) << Qt::LeftButton << 0;
    QTest::newRow("rounded to the same pixel")
        << QPointF(20.4, 9.6) << QPointF(19.6, 10.4) << Qt::LeftButton << 1;
    QTest::newRow("rounded to two pixels") << QPointF(20.4, 10) << QPointF(20.6, 10) << Qt::LeftButton << 0;
}

void tst_CClickableLabel::click()
{
    QFETCH(QPointF, press);
    QFETCH(QPointF, release);
    QFETCH(Qt::MouseButton, button);
    CClickableLabel label;
    label.resize(100, 30);
    QSignalSpy spy(&label, &CClickableLabel::SignalLabelClicked);

    SendMouse(&label, QEvent::MouseButtonPress, press, press, button, button);
    QCOMPARE(spy.count(), 0);
    SendMouse(&label, QEvent::MouseButtonRelease, release, release, button, Qt::NoButton);
    QTEST(spy.count(), "clicks");
}

void tst_CClickableLabel::movingAwayAndBackIsAClick()
{
    CClickableLabel label;
    QSignalSpy spy(&label, &CClickableLabel::SignalLabelClicked);
    SendMouse(&label, QEvent::MouseButtonPress, {20, 10}, {20, 10}, Qt::LeftButton, Qt::LeftButton);
    SendMouse(&label, QEvent::MouseMove, {50, 20}, {50, 20}, Qt::NoButton, Qt::LeftButton);
    SendMouse(&label, QEvent::MouseButtonRelease, {20, 10}, {20, 10}, Qt::LeftButton, Qt::NoButton);
    QCOMPARE(spy.count(), 1);
}

void tst_CClickableLabel::eachClickCountsOnce()
{
    CClickableLabel label;
    label.resize(100, 30);
    QSignalSpy spy(&label, &CClickableLabel::SignalLabelClicked);
    QTest::mouseClick(&label, Qt::LeftButton, {}, {10, 10});
    QTest::mouseClick(&label, Qt::LeftButton, {}, {60, 20});
    QCOMPARE(spy.count(), 2);
}

// A press that went on to the parent would take the release with it.
void tst_CClickableLabel::pressIsKept()
{
    CCountingParent parent;
    auto* pLabel = new CClickableLabel(&parent);
    pLabel->resize(100, 30);
    QVERIFY(SendPress(pLabel, {20, 10}));
    QCOMPARE(parent.m_nPresses, 0);
}

void tst_CClickableLabel::tracksTheMouse() { QVERIFY(CClickableLabel().testAttribute(Qt::WA_MouseTracking)); }

void tst_CClickableLabel::flagsMakeNoWindow()
{
    QWidget parent;
    const auto* pLabel = new CClickableLabel(&parent, Qt::Window);
    QCOMPARE(pLabel->parentWidget(), &parent);
    QVERIFY(!pLabel->isWindow());
}

void tst_CClickableLabel::key_data()
{
    QTest::addColumn<Qt::Key>("key");
    QTest::addColumn<int>("clicks");
    QTest::newRow("Space") << Qt::Key_Space << 1;
    QTest::newRow("Return") << Qt::Key_Return << 1;
    QTest::newRow("Enter") << Qt::Key_Enter << 1;
    QTest::newRow("Escape") << Qt::Key_Escape << 0;
    QTest::newRow("letter") << Qt::Key_A << 0;
}

void tst_CClickableLabel::key()
{
    QFETCH(Qt::Key, key);
    QFETCH(int, clicks);
    CClickableLabel label;
    QSignalSpy spy(&label, &CClickableLabel::SignalLabelClicked);
    QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier);
    QCoreApplication::sendEvent(&label, &event);
    QCOMPARE(spy.count(), clicks);
    QCOMPARE(event.isAccepted(), clicks == 1);
}

void tst_CClickableLabel::heldKeyClicksOnce()
{
    CClickableLabel label;
    QSignalSpy spy(&label, &CClickableLabel::SignalLabelClicked);
    for (const bool repeated : {false, true, true}) {
        QKeyEvent event(QEvent::KeyPress, Qt::Key_Space, Qt::NoModifier, QStringLiteral(" "), repeated);
        QCoreApplication::sendEvent(&label, &event);
    }
    QCOMPARE(spy.count(), 1);
}

void tst_CClickableLabel::focusIsVisible()
{
    QWidget window;
    CClickableLabel label(&window);
    label.setFocusPolicy(Qt::TabFocus);
    QPixmap picture(20, 20);
    picture.fill(Qt::white);
    QPainter(&picture).fillRect(8, 8, 4, 4, Qt::black);
    label.setPixmap(picture);
    label.resize(20, 20);
    window.show();
    window.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    label.clearFocus();
    QCOMPARE(label.grab().toImage().pixelColor(4, 10), QColor(Qt::white));
    label.setFocus();
    const QImage focused = label.grab().toImage();
    QCOMPARE(focused.pixelColor(4, 10), QColor(QStringLiteral("#fff2e7")));
    QCOMPARE(focused.pixelColor(9, 9), QColor(Qt::black));
}

QTEST_MAIN(tst_CClickableLabel)
#include "tst_CClickableLabel.moc"
