#include "kit/KvStyleWidget.h"
#include "support/SendMouse.h"

#include <QCloseEvent>
#include <QGuiApplication>
#include <QImage>
#include <QLineEdit>
#include <QScreen>
#include <QTemporaryDir>
#include <QTest>

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

// The strip with its handlers in reach, to see what becomes of an event that nobody had accepted yet.
class CStrip : public KvStyleWidget
{
public:
    using KvStyleWidget::KvStyleWidget;
    using KvStyleWidget::mouseMoveEvent;
    using KvStyleWidget::mousePressEvent;
    using KvStyleWidget::mouseReleaseEvent;
};

struct STScene
{
    CTarget m_target;
    CStrip m_strip{&m_target};

    STScene()
    {
        m_target.setWindowFlag(Qt::FramelessWindowHint);
        m_target.setGeometry(QRect(START, QSize(300, 200)));
        m_strip.setGeometry(0, 0, 300, 40);
        m_strip.setEnabledMouseDrag(&m_target, QPoint(0, 0), true);
    }

    bool Activate()
    {
        m_target.show();
        m_target.activateWindow();
        return QTest::qWaitForWindowActive(&m_target);
    }

    // Moves the cursor to where the target's corner should come to lie at ptNew.
    void DragTo(const QPoint& ptNew, Qt::MouseButtons held = Qt::LeftButton)
    {
        SendMove(&m_strip, ptNew + PRESS, held);
    }
};

}

static QSize ScreenSize() { return QGuiApplication::primaryScreen()->availableGeometry().size(); }

class tst_KvStyleWidget : public QObject
{
    Q_OBJECT

private slots:
    void bounds_data();
    void bounds();
    void boundsStandAfterInitData();
    void outOfBoundsWaitsThenFollows();
    void offsetIsTakenOff();
    void anyHeldButtonDrags();
    void movedTargetIsRepainted();
    void noMoveWithoutAPress();
    void noMoveWithoutAButtonHeld();
    void noMoveAfterRelease();
    void noMoveWhenDragIsDisabled();
    void noMoveAfterARightPress();
    void noMoveWithoutFocus();
    void noTargetIsHarmless();
    void pressGivesTheTargetFocus();
    void pressThatIsNotOursIsLeft_data();
    void pressThatIsNotOursIsLeft();
    void ownEventsAreAccepted();
    void dragSetsMouseTracking();
    void closeClosesTheTarget();
    void closeMayBeRefused();
    void closeWithoutTargetIsHarmless();
    void backgroundIsStretched();
    void backgroundCanChange();
    void noBackground_data();
    void noBackground();
    void keepsPlainWindowFlags();
    void classNameIsTheStyleSheetSelector();
};

void tst_KvStyleWidget::bounds_data()
{
    QTest::addColumn<QPoint>("wanted");
    QTest::addColumn<bool>("moves");
    const int nWidth = ScreenSize().width();
    const int nHeight = ScreenSize().height();
    QTest::newRow("inside") << QPoint(200, 150) << true;
    QTest::newRow("left, last inside") << QPoint(-799, 150) << true;
    QTest::newRow("left, first outside") << QPoint(-800, 150) << false;
    QTest::newRow("top, last inside") << QPoint(200, 23) << true;
    QTest::newRow("top, first outside") << QPoint(200, 22) << false;
    QTest::newRow("right, last inside") << QPoint(nWidth - 200, 150) << true;
    QTest::newRow("right, first outside") << QPoint(nWidth - 199, 150) << false;
    QTest::newRow("bottom, last inside") << QPoint(200, nHeight - 100) << true;
    QTest::newRow("bottom, first outside") << QPoint(200, nHeight - 99) << false;
}

void tst_KvStyleWidget::bounds()
{
    QFETCH(QPoint, wanted);
    QFETCH(bool, moves);
    STScene scene;
    QVERIFY(scene.Activate());
    SendPress(&scene.m_strip, PRESS);
    scene.DragTo(wanted);
    QCOMPARE(scene.m_target.pos(), moves ? wanted : START);
}

void tst_KvStyleWidget::boundsStandAfterInitData()
{
    STScene scene;
    QVERIFY(scene.Activate());
    scene.m_strip.initData();
    SendPress(&scene.m_strip, PRESS);
    const QPoint ptLast(ScreenSize().width() - 200, ScreenSize().height() - 100);
    scene.DragTo(ptLast);
    QCOMPARE(scene.m_target.pos(), ptLast);
    scene.DragTo(ptLast + QPoint(1, 0));
    QCOMPARE(scene.m_target.pos(), ptLast);
}

void tst_KvStyleWidget::outOfBoundsWaitsThenFollows()
{
    STScene scene;
    QVERIFY(scene.Activate());
    SendPress(&scene.m_strip, PRESS);
    scene.DragTo({200, 60});
    scene.DragTo({210, 10});
    QCOMPARE(scene.m_target.pos(), QPoint(200, 60));
    scene.DragTo({220, 23});
    QCOMPARE(scene.m_target.pos(), QPoint(220, 23));
}

void tst_KvStyleWidget::offsetIsTakenOff()
{
    STScene scene;
    QVERIFY(scene.Activate());
    scene.m_strip.setEnabledMouseDrag(&scene.m_target, QPoint(30, 20), true);
    SendPress(&scene.m_strip, PRESS);
    scene.DragTo({230, 170});
    QCOMPARE(scene.m_target.pos(), QPoint(200, 150));
}

// The button that started the drag need not be the one still held.
void tst_KvStyleWidget::anyHeldButtonDrags()
{
    STScene scene;
    QVERIFY(scene.Activate());
    SendPress(&scene.m_strip, PRESS);
    scene.DragTo({200, 150}, Qt::RightButton);
    QCOMPARE(scene.m_target.pos(), QPoint(200, 150));
}

void tst_KvStyleWidget::movedTargetIsRepainted()
{
    STScene scene;
    QVERIFY(scene.Activate());
    QVERIFY(QTest::qWaitForWindowExposed(&scene.m_target));
    QTRY_VERIFY(scene.m_target.m_nPaints > 0);
    SendPress(&scene.m_strip, PRESS);
    const int nBefore = scene.m_target.m_nPaints;
    scene.DragTo({200, 10});
    QCOMPARE(scene.m_target.m_nPaints, nBefore);
    scene.DragTo({200, 150});
    QCOMPARE(scene.m_target.m_nPaints, nBefore + 1);
}

void tst_KvStyleWidget::noMoveWithoutAPress()
{
    STScene scene;
    QVERIFY(scene.Activate());
    scene.m_target.setFocus();
    scene.DragTo({200, 150});
    QCOMPARE(scene.m_target.pos(), START);
}

void tst_KvStyleWidget::noMoveWithoutAButtonHeld()
{
    STScene scene;
    QVERIFY(scene.Activate());
    SendPress(&scene.m_strip, PRESS);
    scene.DragTo({200, 150}, Qt::NoButton);
    QCOMPARE(scene.m_target.pos(), START);
}

void tst_KvStyleWidget::noMoveAfterRelease()
{
    STScene scene;
    QVERIFY(scene.Activate());
    SendPress(&scene.m_strip, PRESS);
    SendRelease(&scene.m_strip, START + PRESS);
    scene.DragTo({200, 150});
    QCOMPARE(scene.m_target.pos(), START);
}

void tst_KvStyleWidget::noMoveWhenDragIsDisabled()
{
    STScene scene;
    QVERIFY(scene.Activate());
    scene.m_target.setFocus();
    scene.m_strip.setEnabledMouseDrag(&scene.m_target, QPoint(0, 0), false);
    SendPress(&scene.m_strip, PRESS);
    scene.DragTo({200, 150});
    QCOMPARE(scene.m_target.pos(), START);
}

void tst_KvStyleWidget::noMoveAfterARightPress()
{
    STScene scene;
    QVERIFY(scene.Activate());
    scene.m_target.setFocus();
    SendPress(&scene.m_strip, PRESS, Qt::RightButton);
    scene.DragTo({200, 150}, Qt::RightButton);
    QCOMPARE(scene.m_target.pos(), START);
}

void tst_KvStyleWidget::noMoveWithoutFocus()
{
    STScene scene;
    QLineEdit edit(&scene.m_target);
    QVERIFY(scene.Activate());
    SendPress(&scene.m_strip, PRESS);
    edit.setFocus();
    QVERIFY(!scene.m_target.hasFocus());
    scene.DragTo({200, 150});
    QCOMPARE(scene.m_target.pos(), START);
    scene.m_target.setFocus();
    scene.DragTo({200, 150});
    QCOMPARE(scene.m_target.pos(), QPoint(200, 150));
}

void tst_KvStyleWidget::noTargetIsHarmless()
{
    STScene scene;
    QVERIFY(scene.Activate());
    scene.m_strip.setEnabledMouseDrag(nullptr, QPoint(0, 0), true);
    QVERIFY(SendPress(&scene.m_strip, PRESS));
    scene.DragTo({200, 150});
    QCOMPARE(scene.m_target.pos(), START);
}

void tst_KvStyleWidget::pressGivesTheTargetFocus()
{
    STScene scene;
    QLineEdit edit(&scene.m_target);
    QVERIFY(scene.Activate());
    edit.setFocus();
    QVERIFY(edit.hasFocus());
    SendPress(&scene.m_strip, PRESS);
    QVERIFY(scene.m_target.hasFocus());
}

void tst_KvStyleWidget::pressThatIsNotOursIsLeft_data()
{
    QTest::addColumn<bool>("enabled");
    QTest::addColumn<Qt::MouseButton>("button");
    QTest::addColumn<bool>("accepted");
    QTest::newRow("left, enabled") << true << Qt::LeftButton << true;
    QTest::newRow("right, enabled") << true << Qt::RightButton << false;
    QTest::newRow("left, disabled") << false << Qt::LeftButton << false;
}

static QMouseEvent IgnoredEvent(QEvent::Type type, Qt::MouseButton button)
{
    QMouseEvent event(type, PRESS, START + PRESS, button, button, Qt::NoModifier);
    event.ignore();
    return event;
}

void tst_KvStyleWidget::pressThatIsNotOursIsLeft()
{
    QFETCH(bool, enabled);
    QFETCH(Qt::MouseButton, button);
    STScene scene;
    scene.m_strip.setEnabledMouseDrag(&scene.m_target, QPoint(0, 0), enabled);
    QMouseEvent event = IgnoredEvent(QEvent::MouseButtonPress, button);
    scene.m_strip.mousePressEvent(&event);
    QTEST(event.isAccepted(), "accepted");
}

void tst_KvStyleWidget::ownEventsAreAccepted()
{
    STScene scene;
    QMouseEvent move = IgnoredEvent(QEvent::MouseMove, Qt::LeftButton);
    scene.m_strip.mouseMoveEvent(&move);
    QVERIFY(move.isAccepted());
    QMouseEvent release = IgnoredEvent(QEvent::MouseButtonRelease, Qt::LeftButton);
    scene.m_strip.mouseReleaseEvent(&release);
    QVERIFY(release.isAccepted());
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
    STScene scene;
    scene.m_target.show();
    scene.m_strip.slotClosePWidget();
    QVERIFY(!scene.m_target.isVisible());
}

void tst_KvStyleWidget::closeMayBeRefused()
{
    STScene scene;
    scene.m_target.m_bRefuseClose = true;
    scene.m_target.show();
    scene.m_strip.slotClosePWidget();
    QVERIFY(scene.m_target.isVisible());
}

void tst_KvStyleWidget::closeWithoutTargetIsHarmless()
{
    KvStyleWidget strip;
    strip.show();
    strip.slotClosePWidget();
    QVERIFY(strip.isVisible());
}

// Two pixels side by side, so that a stretch shows as two halves.
static QString WriteImage(const QTemporaryDir& dir, const QString& strName, const QColor& left,
                          const QColor& right)
{
    QImage image(2, 1, QImage::Format_ARGB32);
    image.setPixelColor(0, 0, left);
    image.setPixelColor(1, 0, right);
    const QString strPath = dir.filePath(strName);
    return image.save(strPath) ? strPath : QString();
}

// Paints the strip onto green, which stays wherever the strip paints nothing.
static QImage Picture(KvStyleWidget& strip)
{
    QImage image(strip.size(), QImage::Format_ARGB32);
    image.fill(Qt::green);
    strip.render(&image, QPoint(), QRegion(), QWidget::RenderFlags());
    return image;
}

void tst_KvStyleWidget::backgroundIsStretched()
{
    const QTemporaryDir dir;
    KvStyleWidget strip;
    strip.resize(40, 10);
    strip.setBackgroundImage(WriteImage(dir, QStringLiteral("a.png"), Qt::red, Qt::blue));
    const QImage image = Picture(strip);
    for (int y = 0; y < 10; ++y) {
        for (int x = 0; x < 40; ++x) {
            QCOMPARE(image.pixelColor(x, y), QColor(x < 20 ? Qt::red : Qt::blue));
        }
    }
}

void tst_KvStyleWidget::backgroundCanChange()
{
    const QTemporaryDir dir;
    KvStyleWidget strip;
    strip.resize(40, 10);
    strip.setBackgroundImage(WriteImage(dir, QStringLiteral("a.png"), Qt::red, Qt::red));
    QCOMPARE(Picture(strip).pixelColor(5, 5), QColor(Qt::red));
    strip.setBackgroundImage(WriteImage(dir, QStringLiteral("b.png"), Qt::blue, Qt::blue));
    QCOMPARE(Picture(strip).pixelColor(5, 5), QColor(Qt::blue));
    strip.setBackgroundImage(QString());
    QCOMPARE(Picture(strip).pixelColor(5, 5), QColor(Qt::green));
}

void tst_KvStyleWidget::noBackground_data()
{
    QTest::addColumn<QString>("path");
    QTest::newRow("never set") << QString();
    QTest::newRow("empty") << QStringLiteral("");
    QTest::newRow("missing file") << QStringLiteral("/no/such/file.png");
    QTest::newRow("missing resource") << QStringLiteral(":/no/such/file.png");
}

void tst_KvStyleWidget::noBackground()
{
    QFETCH(QString, path);
    KvStyleWidget strip;
    strip.resize(40, 10);
    if (!path.isNull()) {
        strip.setBackgroundImage(path);
    }
    QImage untouched(strip.size(), QImage::Format_ARGB32);
    untouched.fill(Qt::green);
    QCOMPARE(Picture(strip), untouched);
}

void tst_KvStyleWidget::keepsPlainWindowFlags()
{
    QWidget plainParent;
    QCOMPARE(KvStyleWidget(&plainParent).windowFlags(), QWidget(&plainParent).windowFlags());
    QCOMPARE(KvStyleWidget().windowFlags(), QWidget().windowFlags());
}

void tst_KvStyleWidget::classNameIsTheStyleSheetSelector()
{
    QCOMPARE(QByteArray(KvStyleWidget().metaObject()->className()), QByteArray("KvStyleWidget"));
}

QTEST_MAIN(tst_KvStyleWidget)
#include "tst_KvStyleWidget.moc"
