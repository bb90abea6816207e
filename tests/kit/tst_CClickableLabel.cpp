#include "kit/CClickableLabel.h"
#include "support/SendMouse.h"
#include "support/Widgets.h"

#include <QPainter>
#include <QSignalSpy>

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
    void isAChildThatTracksTheMouse();
    void key_data();
    void key();
    void heldKeyClicksOnce();
    void focusIsVisible();
};

void tst_CClickableLabel::click_data()
{
    QTest::addColumn<Qt::MouseButton>("enButton");
    QTest::addColumn<QPointF>("ptPress");
    QTest::addColumn<QPointF>("ptRelease");
    QTest::addColumn<int>("nClicks");
    const QPointF ptPress(20, 10);
    QTest::newRow("same point") << Qt::LeftButton << ptPress << ptPress << 1;
    QTest::newRow("right button") << Qt::RightButton << ptPress << ptPress << 1;
    QTest::newRow("middle button") << Qt::MiddleButton << ptPress << ptPress << 1;
    QTest::newRow("one pixel right") << Qt::LeftButton << ptPress << QPointF(21, 10) << 0;
    QTest::newRow("one pixel left") << Qt::LeftButton << ptPress << QPointF(19, 10) << 0;
    QTest::newRow("one pixel down") << Qt::LeftButton << ptPress << QPointF(20, 11) << 0;
    QTest::newRow("one pixel up") << Qt::LeftButton << ptPress << QPointF(20, 9) << 0;
    QTest::newRow("both axes") << Qt::LeftButton << ptPress << QPointF(21, 11) << 0;
    QTest::newRow("outside") << Qt::LeftButton << ptPress << QPointF(-5, 200) << 0;
    QTest::newRow("rounded to one pixel") << Qt::LeftButton << QPointF(20.4, 9.6) << QPointF(19.6, 10.4) << 1;
    QTest::newRow("rounded to two pixels") << Qt::LeftButton << QPointF(20.4, 10) << QPointF(20.6, 10) << 0;
}

void tst_CClickableLabel::click()
{
    QFETCH(Qt::MouseButton, enButton);
    QFETCH(QPointF, ptPress);
    QFETCH(QPointF, ptRelease);
    CClickableLabel label;
    label.resize(100, 30);
    const QSignalSpy spy(&label, &CClickableLabel::SignalLabelClicked);

    SendMouse(&label, QEvent::MouseButtonPress, ptPress, ptPress, enButton, enButton);
    QCOMPARE(spy.count(), 0);
    SendMouse(&label, QEvent::MouseButtonRelease, ptRelease, ptRelease, enButton, Qt::NoButton);
    QTEST(spy.count(), "nClicks");
}

void tst_CClickableLabel::movingAwayAndBackIsAClick()
{
    CClickableLabel label;
    const QSignalSpy spy(&label, &CClickableLabel::SignalLabelClicked);
    SendPress(&label, {20, 10});
    SendMove(&label, {50, 20});
    SendRelease(&label, {20, 10});
    QCOMPARE(spy.count(), 1);
}

void tst_CClickableLabel::eachClickCountsOnce()
{
    CClickableLabel label;
    label.resize(100, 30);
    const QSignalSpy spy(&label, &CClickableLabel::SignalLabelClicked);
    QTest::mouseClick(&label, Qt::LeftButton, {}, {10, 10});
    QTest::mouseClick(&label, Qt::LeftButton, {}, {60, 20});
    QCOMPARE(spy.count(), 2);
}

// A press that went on to the parent would take the release with it.
void tst_CClickableLabel::pressIsKept()
{
    CCountingParent parent;
    CClickableLabel label(&parent);
    label.resize(100, 30);
    QVERIFY(SendPress(&label, {20, 10}));
    QCOMPARE(parent.m_nPresses, 0);
}

void tst_CClickableLabel::isAChildThatTracksTheMouse()
{
    QWidget parent;
    const CClickableLabel label(&parent, Qt::Window);
    QCOMPARE(label.parentWidget(), &parent);
    QVERIFY(!label.isWindow());
    QVERIFY(label.testAttribute(Qt::WA_MouseTracking));
}

void tst_CClickableLabel::key_data()
{
    QTest::addColumn<Qt::Key>("enKey");
    QTest::addColumn<int>("nClicks");
    QTest::newRow("Space") << Qt::Key_Space << 1;
    QTest::newRow("Return") << Qt::Key_Return << 1;
    QTest::newRow("Enter") << Qt::Key_Enter << 1;
    QTest::newRow("Escape") << Qt::Key_Escape << 0;
    QTest::newRow("letter") << Qt::Key_A << 0;
}

void tst_CClickableLabel::key()
{
    QFETCH(Qt::Key, enKey);
    QFETCH(int, nClicks);
    CClickableLabel label;
    const QSignalSpy spy(&label, &CClickableLabel::SignalLabelClicked);
    QKeyEvent event(QEvent::KeyPress, enKey, Qt::NoModifier);
    QCoreApplication::sendEvent(&label, &event);
    QCOMPARE(spy.count(), nClicks);
    QCOMPARE(event.isAccepted(), nClicks == 1);
}

void tst_CClickableLabel::heldKeyClicksOnce()
{
    CClickableLabel label;
    const QSignalSpy spy(&label, &CClickableLabel::SignalLabelClicked);
    for (const bool bRepeated : {false, true, true}) {
        QKeyEvent event(QEvent::KeyPress, Qt::Key_Space, Qt::NoModifier, " ", bRepeated);
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
    QVERIFY(ShowActive(&window));
    label.clearFocus();
    QCOMPARE(label.grab().toImage().pixelColor(4, 10), QColor(Qt::white));
    label.setFocus();
    const QImage focused = label.grab().toImage();
    QCOMPARE(focused.pixelColor(0, 10), QColor("#d95a00")); // the ring, multiplied by the tint below it
    QCOMPARE(focused.pixelColor(4, 10), QColor("#fff2e7"));
    QCOMPARE(focused.pixelColor(9, 9), QColor(Qt::black));
}

QTEST_MAIN(tst_CClickableLabel)
#include "tst_CClickableLabel.moc"
