#include "kit/KvMessageBox.h"
#include "support/SendMouse.h"
#include "support/Widgets.h"

#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>

#include <memory>

namespace {

const QPoint START(120, 130);
const QPoint PRESS(15, 60);

// What a window manager does to a dialog, and what comes of it.
struct STScreen
{
    int nWall = 10000; // the place beyond which the dialog is put back
    int nPaints = 0;
};

template <class Base> class CWatched : public Base
{
public:
    template <class... Args>
    explicit CWatched(STScreen& screen, Args... args)
        : Base(args...)
        , m_screen(screen)
    {
    }

protected:
    void moveEvent(QMoveEvent*) override
    {
        if (Base::x() > m_screen.nWall) {
            Base::move(m_screen.nWall, Base::y());
        }
    }
    void paintEvent(QPaintEvent* pEvent) override
    {
        ++m_screen.nPaints;
        Base::paintEvent(pEvent);
    }

private:
    STScreen& m_screen;
};

// A widget that wears the panel once and paints nothing else.
class CPanel : public QWidget
{
protected:
    void paintEvent(QPaintEvent*) override { KvStyleShadow().Paint(this); }
};

}

// What every dialog does, once as a plain one and once as the message box, which
// hears of the mouse before its base does.
class tst_KvStyleDialog : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase_data();
    void initTestCase();
    void init();

    void hasNoFrame();
    void takesFocus();
    void comesUpInTheMiddleOfItsParentsWindow();
    void swallowedKey_data();
    void swallowedKey();
    void keyIsPassedOn_data();
    void keyIsPassedOn();
    void tabAndSpaceReachAButton();
    void noButtonAnswersReturn_data();
    void noButtonAnswersReturn();
    void drag_data();
    void drag();
    void dragGoesOnFromTheActualPlace();
    void dragRepaints();
    void noDrag_data();
    void noDrag();
    void pressTakesFocus();
    void eventsAccepted();
    void panelIsPaintedOnce();

private:
    static bool IsBox()
    {
        QFETCH_GLOBAL(bool, bBox);
        return bBox;
    }

    bool Activate()
    {
        m_pDialog->show();
        // Showing a dialog centres it; the tests reckon from a known place.
        m_pDialog->move(START);
        return ShowActive(m_pDialog.get());
    }

    // Moves the cursor to where the dialog's corner should come to lie at ptNew.
    void DragTo(const QPoint& ptNew, Qt::MouseButtons held = Qt::LeftButton)
    {
        SendMove(m_pDialog.get(), ptNew + PRESS, held);
    }

    STScreen m_screen;
    std::unique_ptr<QDialog> m_pDialog;
};

// Whether anyone takes a key that goes to the widget.
static bool TakesKey(QWidget* pWidget, Qt::Key enKey)
{
    QKeyEvent event(QEvent::KeyPress, enKey, Qt::NoModifier);
    QCoreApplication::sendEvent(pWidget, &event);
    return event.isAccepted();
}

static std::unique_ptr<QDialog> MakeDialog(bool bBox, STScreen& screen, QWidget* pParent = nullptr)
{
    if (bBox) {
        return std::make_unique<CWatched<KvMessageBox>>(screen, "Question?", 0, pParent);
    }
    auto pDialog = std::make_unique<CWatched<KvStyleDialog>>(screen, pParent);
    pDialog->resize(200, 100);
    return pDialog;
}

void tst_KvStyleDialog::initTestCase_data()
{
    QTest::addColumn<bool>("bBox");
    QTest::newRow("dialog") << false;
    QTest::newRow("box") << true;
}

void tst_KvStyleDialog::initTestCase() { QApplication::setStartDragDistance(10); }

void tst_KvStyleDialog::init()
{
    m_screen = STScreen();
    m_pDialog = MakeDialog(IsBox(), m_screen);
}

void tst_KvStyleDialog::hasNoFrame()
{
    QWidget parent;
    const auto pDialog = MakeDialog(IsBox(), m_screen, &parent);
    const Qt::WindowFlags wanted = Qt::FramelessWindowHint | Qt::WindowSystemMenuHint
        | Qt::WindowMinimizeButtonHint | Qt::WindowMaximizeButtonHint;
    QCOMPARE(pDialog->windowFlags(), QDialog(&parent).windowFlags() | wanted);
    QVERIFY(pDialog->testAttribute(Qt::WA_TranslucentBackground));
    QCOMPARE(pDialog->parentWidget(), &parent);
    QVERIFY(pDialog->isWindow());
}

void tst_KvStyleDialog::takesFocus()
{
    new QPushButton(m_pDialog.get());
    QVERIFY(Activate());
    QVERIFY(m_pDialog->hasFocus());
}

void tst_KvStyleDialog::comesUpInTheMiddleOfItsParentsWindow()
{
    QWidget window;
    window.setGeometry(100, 120, 600, 400);
    QWidget page(&window);
    window.show();
    const auto pDialog = MakeDialog(IsBox(), m_screen, &page);
    pDialog->show();
    QCOMPARE(pDialog->geometry().center(), window.geometry().center());
    // Dragged away and asked again, it is in the middle again.
    pDialog->hide();
    pDialog->move(5, 5);
    window.move(200, 220);
    pDialog->show();
    QCOMPARE(pDialog->geometry().center(), window.geometry().center());
}

void tst_KvStyleDialog::swallowedKey_data()
{
    QTest::addColumn<Qt::Key>("enKey");
    QTest::newRow("Escape") << Qt::Key_Escape;
    QTest::newRow("Return") << Qt::Key_Return;
    QTest::newRow("Enter") << Qt::Key_Enter;
}

void tst_KvStyleDialog::swallowedKey()
{
    QFETCH(Qt::Key, enKey);
    QVERIFY(Activate());
    const QSignalSpy spy(m_pDialog.get(), &QDialog::finished);
    // Swallowed also means that nobody behind the dialog gets it.
    QVERIFY(TakesKey(m_pDialog.get(), enKey));
    QTest::keyClick(m_pDialog.get(), enKey);
    QVERIFY(m_pDialog->isVisible());
    QCOMPARE(spy.count(), 0);
}

void tst_KvStyleDialog::keyIsPassedOn_data()
{
    QTest::addColumn<Qt::Key>("enKey");
    QTest::newRow("letter") << Qt::Key_A;
    QTest::newRow("F1") << Qt::Key_F1;
    QTest::newRow("Space") << Qt::Key_Space;
    QTest::newRow("Delete") << Qt::Key_Delete;
}

void tst_KvStyleDialog::keyIsPassedOn()
{
    QFETCH(Qt::Key, enKey);
    // QDialog leaves the keys that it has no use for.
    QVERIFY(!TakesKey(m_pDialog.get(), enKey));
}

void tst_KvStyleDialog::tabAndSpaceReachAButton()
{
    QPushButton button(m_pDialog.get());
    const QSignalSpy spy(&button, &QPushButton::clicked);
    QVERIFY(Activate());
    // The box has a button of its own before this one.
    for (int n = 0; n < 1 + int(IsBox()); ++n) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    }
    QVERIFY(button.hasFocus());
    QTest::keyClick(&button, Qt::Key_Space);
    QCOMPARE(spy.count(), 1);
}

void tst_KvStyleDialog::noButtonAnswersReturn_data()
{
    QTest::addColumn<Qt::Key>("enKey");
    QTest::addColumn<bool>("bDefault");
    QTest::addColumn<bool>("bFocused");
    for (const Qt::Key enKey : {Qt::Key_Return, Qt::Key_Enter, Qt::Key_Escape}) {
        const QByteArray baKey = QKeySequence(enKey).toString().toLatin1();
        QTest::addRow("%s, plain button", baKey.constData()) << enKey << false << true;
        QTest::addRow("%s, default button", baKey.constData()) << enKey << true << true;
        QTest::addRow("%s, default button without focus", baKey.constData()) << enKey << true << false;
    }
}

void tst_KvStyleDialog::noButtonAnswersReturn()
{
    QFETCH(Qt::Key, enKey);
    QFETCH(bool, bDefault);
    QFETCH(bool, bFocused);
    QWidget panel(m_pDialog.get());
    QPushButton button(&panel);
    QVERIFY(button.autoDefault());
    button.setDefault(bDefault);
    const QSignalSpy spy(&button, &QPushButton::clicked);
    QVERIFY(Activate());
    if (!bFocused) {
        button.setDefault(true); // the dialog has taken that from it when it came up
    }
    QWidget* pFocus = bFocused ? &button : static_cast<QWidget*>(m_pDialog.get());
    pFocus->setFocus();
    QVERIFY(pFocus->hasFocus());
    QTest::keyClick(pFocus, enKey);
    QTest::keyClick(pFocus, enKey, Qt::KeypadModifier);
    QCOMPARE(spy.count(), 0);
    QVERIFY(m_pDialog->isVisible());
}

void tst_KvStyleDialog::drag_data()
{
    QTest::addColumn<QPoint>("ptWanted");
    QTest::addColumn<bool>("bMoves");
    QTest::newRow("far") << QPoint(300, 200) << true;
    QTest::newRow("one pixel") << START + QPoint(1, 0) << true;
    QTest::newRow("off the screen to the left and top") << QPoint(-5000, -5000) << true;
    QTest::newRow("off the screen to the right and bottom") << QPoint(9000, 9000) << true;
    // The threshold is held against the corner's place, not against the way there.
    QTest::newRow("corner at the origin") << QPoint(0, 0) << false;
    QTest::newRow("corner at the threshold") << QPoint(6, 4) << false;
    QTest::newRow("corner past the threshold") << QPoint(6, 5) << true;
    QTest::newRow("corner at the threshold, negative") << QPoint(-6, -4) << false;
    QTest::newRow("corner past the threshold, negative") << QPoint(-6, -5) << true;
    QTest::newRow("corner at the threshold, mixed") << QPoint(6, -4) << false;
    QTest::newRow("corner past the threshold, mixed") << QPoint(-6, 5) << true;
}

void tst_KvStyleDialog::drag()
{
    QFETCH(QPoint, ptWanted);
    QFETCH(bool, bMoves);
    QVERIFY(Activate());
    SendPress(m_pDialog.get(), PRESS);
    DragTo(ptWanted);
    QCOMPARE(m_pDialog->pos(), bMoves ? ptWanted : START);
    DragTo({300, 200});
    QCOMPARE(m_pDialog->pos(), QPoint(300, 200));
    SendRelease(m_pDialog.get(), QPoint(300, 200) + PRESS);
    DragTo({400, 300});
    QCOMPARE(m_pDialog->pos(), QPoint(300, 200));
}

void tst_KvStyleDialog::dragGoesOnFromTheActualPlace()
{
    QVERIFY(Activate());
    m_screen.nWall = 250;
    SendPress(m_pDialog.get(), PRESS);
    DragTo({300, 200});
    QCOMPARE(m_pDialog->pos(), QPoint(250, 200));
    // The cursor is now held 50 pixels further right in the dialog, so going
    // left by 10 takes the dialog along at once.
    DragTo({290, 200});
    QCOMPARE(m_pDialog->pos(), QPoint(240, 200));
}

void tst_KvStyleDialog::dragRepaints()
{
    QVERIFY(Activate());
    QTRY_VERIFY(m_screen.nPaints > 0);
    SendPress(m_pDialog.get(), PRESS);
    const int nBefore = m_screen.nPaints;
    DragTo({0, 0});
    QCOMPARE(m_screen.nPaints, nBefore);
    DragTo({300, 200});
    QCOMPARE(m_screen.nPaints, nBefore + 1);
}

void tst_KvStyleDialog::noDrag_data()
{
    QTest::addColumn<Qt::MouseButton>("enPressed");
    QTest::addColumn<Qt::MouseButtons>("held");
    QTest::addColumn<bool>("bMoves");
    QTest::newRow("left") << Qt::LeftButton << Qt::MouseButtons(Qt::LeftButton) << true;
    QTest::newRow("any button held") << Qt::LeftButton << Qt::MouseButtons(Qt::MiddleButton) << true;
    QTest::newRow("no button held") << Qt::LeftButton << Qt::MouseButtons(Qt::NoButton) << false;
    QTest::newRow("right press") << Qt::RightButton << Qt::MouseButtons(Qt::RightButton) << false;
    QTest::newRow("no press") << Qt::NoButton << Qt::MouseButtons(Qt::LeftButton) << false;
}

void tst_KvStyleDialog::noDrag()
{
    QFETCH(Qt::MouseButton, enPressed);
    QFETCH(Qt::MouseButtons, held);
    QFETCH(bool, bMoves);
    QVERIFY(Activate());
    // Without tracking a move with no button held would not get there at all.
    m_pDialog->setMouseTracking(true);
    if (enPressed != Qt::NoButton) {
        SendPress(m_pDialog.get(), PRESS, enPressed);
    }
    DragTo({300, 200}, held);
    QCOMPARE(m_pDialog->pos(), bMoves ? QPoint(300, 200) : START);
}

void tst_KvStyleDialog::pressTakesFocus()
{
    QLineEdit edit(m_pDialog.get());
    QVERIFY(Activate());
    edit.setFocus();
    QVERIFY(edit.hasFocus());
    SendPress(m_pDialog.get(), PRESS, Qt::RightButton);
    QVERIFY(edit.hasFocus());
    SendPress(m_pDialog.get(), PRESS);
    QVERIFY(m_pDialog->hasFocus());
}

// The dialog accepts the events of a drag and each release, the box everything.
void tst_KvStyleDialog::eventsAccepted()
{
    QVERIFY(Accepts(m_pDialog.get(), QEvent::MouseButtonPress, Qt::LeftButton));
    QVERIFY(Accepts(m_pDialog.get(), QEvent::MouseMove, Qt::LeftButton));
    QVERIFY(Accepts(m_pDialog.get(), QEvent::MouseButtonRelease, Qt::LeftButton));
    QCOMPARE(Accepts(m_pDialog.get(), QEvent::MouseButtonPress, Qt::RightButton), IsBox());
    QCOMPARE(Accepts(m_pDialog.get(), QEvent::MouseMove, Qt::RightButton), IsBox());
    QVERIFY(Accepts(m_pDialog.get(), QEvent::MouseButtonRelease, Qt::RightButton));
}

void tst_KvStyleDialog::panelIsPaintedOnce()
{
    CPanel panel;
    panel.resize(m_pDialog->size());
    QCOMPARE(Painted(m_pDialog.get()), Painted(&panel));
}

QTEST_MAIN(tst_KvStyleDialog)
#include "tst_KvStyleDialog.moc"
