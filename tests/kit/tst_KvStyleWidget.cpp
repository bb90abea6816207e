#include "kit/KvStyleWidget.h"
#include "support/SendMouse.h"
#include "support/Widgets.h"

#include <QCloseEvent>
#include <QGuiApplication>
#include <QLineEdit>
#include <QScreen>
#include <QTemporaryDir>

#include <memory>

namespace {

const QPoint START(120, 130);
const QPoint PRESS(15, 6);

// The window that the strip drags.
class CTarget : public QWidget
{
public:
    bool m_bRefuseClose = false;
    int m_nPaints = 0;

protected:
    void paintEvent(QPaintEvent*) override { ++m_nPaints; }
    void closeEvent(QCloseEvent* pEvent) override { pEvent->setAccepted(!m_bRefuseClose); }
};

}

class tst_KvStyleWidget : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void bounds_data();
    void bounds();
    void outOfBoundsWaitsThenFollows();
    void offsetIsTakenOff();
    void movedTargetIsRepainted();
    void drag_data();
    void drag();
    void dragNeedsTheTargetsFocus();
    void eventsAccepted();
    void dragSetsMouseTracking();
    void closeClosesTheTarget();
    void withoutTargetNothingHappens();
    void backgroundIsStretched();
    void backgroundCanChange();
    void noBackground_data();
    void noBackground();
    void isAPlainWidgetOfItsName();

private:
    bool Activate() { return ShowActive(m_pTarget.get()); }

    void Press(Qt::MouseButton enButton = Qt::LeftButton) { SendPress(m_pStrip, PRESS, enButton); }

    // Moves the cursor to where the target's corner should come to lie at ptNew.
    void DragTo(const QPoint& ptNew, Qt::MouseButtons held = Qt::LeftButton)
    {
        SendMove(m_pStrip, ptNew + PRESS, held);
    }

    std::unique_ptr<CTarget> m_pTarget;
    KvStyleWidget* m_pStrip = nullptr;
};

void tst_KvStyleWidget::init()
{
    m_pTarget = std::make_unique<CTarget>();
    m_pTarget->setWindowFlag(Qt::FramelessWindowHint);
    m_pTarget->setGeometry(QRect(START, QSize(300, 200)));
    m_pStrip = new KvStyleWidget(m_pTarget.get());
    m_pStrip->setGeometry(0, 0, 300, 40);
    m_pStrip->setEnabledMouseDrag(m_pTarget.get(), QPoint(0, 0), true);
}

void tst_KvStyleWidget::bounds_data()
{
    QTest::addColumn<QPoint>("ptWanted");
    QTest::addColumn<bool>("bMoves");
    const QSize screen = QGuiApplication::primaryScreen()->availableGeometry().size();
    const int nRight = screen.width() - 200;
    const int nBottom = screen.height() - 100;
    QTest::newRow("inside") << QPoint(200, 150) << true;
    QTest::newRow("left, last inside") << QPoint(-799, 150) << true;
    QTest::newRow("left, first outside") << QPoint(-800, 150) << false;
    QTest::newRow("top, last inside") << QPoint(200, 23) << true;
    QTest::newRow("top, first outside") << QPoint(200, 22) << false;
    QTest::newRow("right, last inside") << QPoint(nRight, 150) << true;
    QTest::newRow("right, first outside") << QPoint(nRight + 1, 150) << false;
    QTest::newRow("bottom, last inside") << QPoint(200, nBottom) << true;
    QTest::newRow("bottom, first outside") << QPoint(200, nBottom + 1) << false;
}

void tst_KvStyleWidget::bounds()
{
    QFETCH(QPoint, ptWanted);
    QFETCH(bool, bMoves);
    QVERIFY(Activate());
    Press();
    DragTo(ptWanted);
    QCOMPARE(m_pTarget->pos(), bMoves ? ptWanted : START);
    // They are the same when they are taken again.
    m_pTarget->move(START);
    m_pStrip->initData();
    DragTo(ptWanted);
    QCOMPARE(m_pTarget->pos(), bMoves ? ptWanted : START);
}

void tst_KvStyleWidget::outOfBoundsWaitsThenFollows()
{
    QVERIFY(Activate());
    Press();
    DragTo({200, 60});
    DragTo({210, 10});
    QCOMPARE(m_pTarget->pos(), QPoint(200, 60));
    DragTo({220, 23});
    QCOMPARE(m_pTarget->pos(), QPoint(220, 23));
}

void tst_KvStyleWidget::offsetIsTakenOff()
{
    QVERIFY(Activate());
    m_pStrip->setEnabledMouseDrag(m_pTarget.get(), QPoint(30, 20), true);
    Press();
    DragTo({230, 170});
    QCOMPARE(m_pTarget->pos(), QPoint(200, 150));
}

void tst_KvStyleWidget::movedTargetIsRepainted()
{
    QVERIFY(Activate());
    QVERIFY(QTest::qWaitForWindowExposed(m_pTarget.get()));
    QTRY_VERIFY(m_pTarget->m_nPaints > 0);
    Press();
    const int nBefore = m_pTarget->m_nPaints;
    DragTo({200, 10});
    QCOMPARE(m_pTarget->m_nPaints, nBefore);
    DragTo({200, 150});
    QCOMPARE(m_pTarget->m_nPaints, nBefore + 1);
}

void tst_KvStyleWidget::drag_data()
{
    QTest::addColumn<bool>("bEnabled");
    QTest::addColumn<Qt::MouseButton>("enPressed");
    QTest::addColumn<Qt::MouseButtons>("held");
    QTest::addColumn<bool>("bMoves");
    const Qt::MouseButtons left = Qt::LeftButton;
    const Qt::MouseButtons right = Qt::RightButton;
    QTest::newRow("left") << true << Qt::LeftButton << left << true;
    QTest::newRow("another button held") << true << Qt::LeftButton << right << true;
    QTest::newRow("no button held") << true << Qt::LeftButton << Qt::MouseButtons() << false;
    QTest::newRow("right press") << true << Qt::RightButton << right << false;
    QTest::newRow("no press") << true << Qt::NoButton << left << false;
    QTest::newRow("disabled") << false << Qt::LeftButton << left << false;
}

void tst_KvStyleWidget::drag()
{
    QFETCH(bool, bEnabled);
    QFETCH(Qt::MouseButton, enPressed);
    QFETCH(Qt::MouseButtons, held);
    QFETCH(bool, bMoves);
    m_pStrip->setEnabledMouseDrag(m_pTarget.get(), QPoint(0, 0), bEnabled);
    QVERIFY(Activate());
    m_pTarget->setFocus();
    // Without tracking a move with no button held would not get there at all.
    m_pStrip->setMouseTracking(true);
    if (enPressed != Qt::NoButton) {
        Press(enPressed);
    }
    DragTo({200, 150}, held);
    QCOMPARE(m_pTarget->pos(), bMoves ? QPoint(200, 150) : START);
    SendRelease(m_pStrip, m_pTarget->pos() + PRESS);
    DragTo({300, 250}, held);
    QCOMPARE(m_pTarget->pos(), bMoves ? QPoint(200, 150) : START);
}

void tst_KvStyleWidget::dragNeedsTheTargetsFocus()
{
    QLineEdit edit(m_pTarget.get());
    QVERIFY(Activate());
    edit.setFocus();
    QVERIFY(edit.hasFocus());
    Press();
    QVERIFY(m_pTarget->hasFocus());
    edit.setFocus();
    QVERIFY(!m_pTarget->hasFocus());
    DragTo({200, 150});
    QCOMPARE(m_pTarget->pos(), START);
    m_pTarget->setFocus();
    DragTo({200, 150});
    QCOMPARE(m_pTarget->pos(), QPoint(200, 150));
}

// A press that starts no drag is left to the window, everything else is taken.
void tst_KvStyleWidget::eventsAccepted()
{
    QVERIFY(Accepts(m_pStrip, QEvent::MouseButtonPress, Qt::LeftButton));
    QVERIFY(!Accepts(m_pStrip, QEvent::MouseButtonPress, Qt::RightButton));
    QVERIFY(Accepts(m_pStrip, QEvent::MouseMove, Qt::LeftButton));
    QVERIFY(Accepts(m_pStrip, QEvent::MouseButtonRelease, Qt::LeftButton));
    QVERIFY(Accepts(m_pStrip, QEvent::MouseMove, Qt::LeftButton));
    m_pStrip->setEnabledMouseDrag(m_pTarget.get(), QPoint(0, 0), false);
    QVERIFY(!Accepts(m_pStrip, QEvent::MouseButtonPress, Qt::LeftButton));
}

void tst_KvStyleWidget::dragSetsMouseTracking()
{
    KvStyleWidget strip;
    QVERIFY(!strip.testAttribute(Qt::WA_MouseTracking));
    strip.setEnabledMouseDrag(nullptr, QPoint(0, 0), true);
    QVERIFY(strip.testAttribute(Qt::WA_MouseTracking));
    strip.setEnabledMouseDrag(nullptr, QPoint(0, 0), false);
    QVERIFY(!strip.testAttribute(Qt::WA_MouseTracking));
}

void tst_KvStyleWidget::closeClosesTheTarget()
{
    m_pTarget->show();
    m_pTarget->m_bRefuseClose = true;
    m_pStrip->slotClosePWidget();
    QVERIFY(m_pTarget->isVisible());
    m_pTarget->m_bRefuseClose = false;
    m_pStrip->slotClosePWidget();
    QVERIFY(!m_pTarget->isVisible());
}

void tst_KvStyleWidget::withoutTargetNothingHappens()
{
    QVERIFY(Activate());
    m_pStrip->setEnabledMouseDrag(nullptr, QPoint(0, 0), true);
    QVERIFY(SendPress(m_pStrip, PRESS));
    DragTo({200, 150});
    QCOMPARE(m_pTarget->pos(), START);
    m_pStrip->slotClosePWidget();
    QVERIFY(m_pStrip->isVisible());
}

// Two pixels side by side, so that a stretch shows as two halves.
static QString WriteImage(const QTemporaryDir& dir, const QColor& left, const QColor& right)
{
    QImage image(2, 1, QImage::Format_ARGB32);
    image.setPixelColor(0, 0, left);
    image.setPixelColor(1, 0, right);
    const QString strPath = dir.filePath(left.name() + right.name() + ".png");
    return image.save(strPath) ? strPath : QString();
}

// On green, which stays wherever the strip paints nothing.
void tst_KvStyleWidget::backgroundIsStretched()
{
    const QTemporaryDir dir;
    m_pStrip->resize(40, 10);
    m_pStrip->setBackgroundImage(WriteImage(dir, Qt::red, Qt::blue));
    const QImage image = Painted(m_pStrip, Qt::green);
    for (int y = 0; y < 10; ++y) {
        for (int x = 0; x < 40; ++x) {
            QCOMPARE(image.pixelColor(x, y), QColor(x < 20 ? Qt::red : Qt::blue));
        }
    }
}

void tst_KvStyleWidget::backgroundCanChange()
{
    const QTemporaryDir dir;
    m_pStrip->setBackgroundImage(WriteImage(dir, Qt::red, Qt::red));
    QCOMPARE(Painted(m_pStrip, Qt::green).pixelColor(5, 5), QColor(Qt::red));
    m_pStrip->setBackgroundImage(WriteImage(dir, Qt::blue, Qt::blue));
    QCOMPARE(Painted(m_pStrip, Qt::green).pixelColor(5, 5), QColor(Qt::blue));
    m_pStrip->setBackgroundImage(QString());
    QCOMPARE(Painted(m_pStrip, Qt::green).pixelColor(5, 5), QColor(Qt::green));
}

void tst_KvStyleWidget::noBackground_data()
{
    QTest::addColumn<QString>("strPath");
    QTest::newRow("never set") << QString();
    QTest::newRow("empty") << "";
    QTest::newRow("missing file") << "/no/such/file.png";
    QTest::newRow("missing resource") << ":/no/such/file.png";
}

void tst_KvStyleWidget::noBackground()
{
    QFETCH(QString, strPath);
    if (!strPath.isNull()) {
        m_pStrip->setBackgroundImage(strPath);
    }
    QImage untouched(m_pStrip->size(), QImage::Format_ARGB32);
    untouched.fill(Qt::green);
    QCOMPARE(Painted(m_pStrip, Qt::green), untouched);
}

// The name is the strip's selector in the style sheet.
void tst_KvStyleWidget::isAPlainWidgetOfItsName()
{
    QWidget parent;
    QCOMPARE(KvStyleWidget(&parent).windowFlags(), QWidget(&parent).windowFlags());
    QCOMPARE(KvStyleWidget().windowFlags(), QWidget().windowFlags());
    QCOMPARE(QByteArray(m_pStrip->metaObject()->className()), QByteArray("KvStyleWidget"));
}

QTEST_MAIN(tst_KvStyleWidget)
#include "tst_KvStyleWidget.moc"
