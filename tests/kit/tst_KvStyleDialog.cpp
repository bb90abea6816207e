#include "kit/KvStyleDialog.h"
#include "support/SendMouse.h"

#include <QApplication>
#include <QImage>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>

namespace {

const QPoint START(120, 130);
const QPoint PRESS(15, 60);

class CDialog : public KvStyleDialog
{
public:
    using KvStyleDialog::keyPressEvent;
    using KvStyleDialog::mouseMoveEvent;
    using KvStyleDialog::mousePressEvent;
    using KvStyleDialog::mouseReleaseEvent;

    CDialog() { setGeometry(QRect(START, QSize(200, 100))); }

    bool Activate()
    {
        show();
        // Showing a dialog centres it; the tests reckon from a known place.
        move(START);
        activateWindow();
        return QTest::qWaitForWindowActive(this);
    }

    // Moves the cursor to where the dialog's corner should come to lie at ptNew.
    void DragTo(const QPoint& ptNew, Qt::MouseButtons held = Qt::LeftButton)
    {
        SendMove(this, ptNew + PRESS, held);
    }

    // The place beyond which the window is put back, as by a window manager.
    int m_nWall = 10000;
    int m_nPaints = 0;

protected:
    void moveEvent(QMoveEvent*) override
    {
        if (x() > m_nWall) {
            move(m_nWall, y());
        }
    }
    void paintEvent(QPaintEvent* pEvent) override
    {
        ++m_nPaints;
        KvStyleDialog::paintEvent(pEvent);
    }
};

}

class tst_KvStyleDialog : public QObject
{
    Q_OBJECT

private slots:
    void comesUpInTheMiddleOfItsParentsWindow();
    void initTestCase();
    void hasNoFrame();
    void takesFocus();
    void swallowedKey_data();
    void swallowedKey();
    void keyIsPassedOn_data();
    void keyIsPassedOn();
    void tabAndSpaceReachAButton();
    void returnPressesNoDefaultButton();
    void returnPressesNoFocusedButton_data();
    void returnPressesNoFocusedButton();
    void drag_data();
    void drag();
    void dragGoesOnFromTheActualPlace();
    void dragRepaints();
    void noDrag_data();
    void noDrag();
    void noDragAfterRelease();
    void pressTakesFocus();
    void eventsAccepted();
    void panelIsPainted();
};

void tst_KvStyleDialog::initTestCase() { QApplication::setStartDragDistance(10); }

void tst_KvStyleDialog::hasNoFrame()
{
    QWidget parent;
    const KvStyleDialog dialog(&parent);
    const Qt::WindowFlags wanted = Qt::FramelessWindowHint | Qt::WindowSystemMenuHint
        | Qt::WindowMinimizeButtonHint | Qt::WindowMaximizeButtonHint;
    QCOMPARE(dialog.windowFlags(), QDialog(&parent).windowFlags() | wanted);
    QVERIFY(dialog.testAttribute(Qt::WA_TranslucentBackground));
    QCOMPARE(dialog.parentWidget(), &parent);
    QVERIFY(dialog.isWindow());
}

void tst_KvStyleDialog::takesFocus()
{
    CDialog dialog;
    new QPushButton(&dialog);
    QVERIFY(dialog.Activate());
    QVERIFY(dialog.hasFocus());
}

void tst_KvStyleDialog::swallowedKey_data()
{
    QTest::addColumn<Qt::Key>("key");
    QTest::newRow("Escape") << Qt::Key_Escape;
    QTest::newRow("Return") << Qt::Key_Return;
    QTest::newRow("Enter") << Qt::Key_Enter;
}

void tst_KvStyleDialog::swallowedKey()
{
    QFETCH(Qt::Key, key);
    CDialog dialog;
    QVERIFY(dialog.Activate());
    QSignalSpy spy(&dialog, &QDialog::finished);
    QTest::keyClick(&dialog, key);
    QVERIFY(dialog.isVisible());
    QCOMPARE(spy.count(), 0);
    // Swallowed also means that nobody behind the dialog gets it.
    QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier);
    dialog.keyPressEvent(&event);
    QVERIFY(event.isAccepted());
}

void tst_KvStyleDialog::keyIsPassedOn_data()
{
    QTest::addColumn<Qt::Key>("key");
    QTest::newRow("letter") << Qt::Key_A;
    QTest::newRow("F1") << Qt::Key_F1;
    QTest::newRow("Space") << Qt::Key_Space;
    QTest::newRow("Delete") << Qt::Key_Delete;
}

void tst_KvStyleDialog::keyIsPassedOn()
{
    QFETCH(Qt::Key, key);
    CDialog dialog;
    QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier);
    dialog.keyPressEvent(&event);
    // QDialog leaves the keys that it has no use for.
    QVERIFY(!event.isAccepted());
}

void tst_KvStyleDialog::tabAndSpaceReachAButton()
{
    CDialog dialog;
    QPushButton button(&dialog);
    QSignalSpy spy(&button, &QPushButton::clicked);
    QVERIFY(dialog.Activate());
    QTest::keyClick(&dialog, Qt::Key_Tab);
    QVERIFY(button.hasFocus());
    QTest::keyClick(&button, Qt::Key_Space);
    QCOMPARE(spy.count(), 1);
}

void tst_KvStyleDialog::returnPressesNoDefaultButton()
{
    CDialog dialog;
    QPushButton button(&dialog);
    button.setDefault(true);
    QSignalSpy spy(&button, &QPushButton::clicked);
    QVERIFY(dialog.Activate());
    dialog.setFocus();
    QTest::keyClick(&dialog, Qt::Key_Return);
    QTest::keyClick(&dialog, Qt::Key_Enter);
    QCOMPARE(spy.count(), 0);
}

void tst_KvStyleDialog::returnPressesNoFocusedButton_data()
{
    QTest::addColumn<Qt::Key>("key");
    QTest::addColumn<bool>("asDefault");
    for (const bool asDefault : {false, true}) {
        const char* pKind = asDefault ? "default button" : "plain button";
        QTest::addRow("Return, %s", pKind) << Qt::Key_Return << asDefault;
        QTest::addRow("Enter, %s", pKind) << Qt::Key_Enter << asDefault;
        QTest::addRow("Escape, %s", pKind) << Qt::Key_Escape << asDefault;
    }
}

void tst_KvStyleDialog::returnPressesNoFocusedButton()
{
    QFETCH(Qt::Key, key);
    QFETCH(bool, asDefault);
    CDialog dialog;
    QWidget panel(&dialog);
    QPushButton button(&panel);
    QVERIFY(button.autoDefault());
    button.setDefault(asDefault);
    QSignalSpy spy(&button, &QPushButton::clicked);
    QVERIFY(dialog.Activate());
    button.setFocus();
    QVERIFY(button.hasFocus());
    QTest::keyClick(&button, key);
    QTest::keyClick(&button, key, Qt::KeypadModifier);
    QCOMPARE(spy.count(), 0);
    QVERIFY(dialog.isVisible());
}

void tst_KvStyleDialog::drag_data()
{
    QTest::addColumn<QPoint>("wanted");
    QTest::addColumn<bool>("moves");
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
    QTest::newRow("corner past the threshold, mixed") << QPoint(-6, 5) << true;
}

void tst_KvStyleDialog::drag()
{
    QFETCH(QPoint, wanted);
    QFETCH(bool, moves);
    CDialog dialog;
    QVERIFY(dialog.Activate());
    SendPress(&dialog, PRESS);
    dialog.DragTo(wanted);
    QCOMPARE(dialog.pos(), moves ? wanted : START);
}

void tst_KvStyleDialog::dragGoesOnFromTheActualPlace()
{
    CDialog dialog;
    QVERIFY(dialog.Activate());
    dialog.m_nWall = 250;
    SendPress(&dialog, PRESS);
    dialog.DragTo({300, 200});
    QCOMPARE(dialog.pos(), QPoint(250, 200));
    // The cursor is now held 50 pixels further right in the dialog, so going
    // left by 10 takes the dialog along at once.
    dialog.DragTo({290, 200});
    QCOMPARE(dialog.pos(), QPoint(240, 200));
}

void tst_KvStyleDialog::dragRepaints()
{
    CDialog dialog;
    QVERIFY(dialog.Activate());
    QTRY_VERIFY(dialog.m_nPaints > 0);
    SendPress(&dialog, PRESS);
    const int nBefore = dialog.m_nPaints;
    dialog.DragTo({0, 0});
    QCOMPARE(dialog.m_nPaints, nBefore);
    dialog.DragTo({300, 200});
    QCOMPARE(dialog.m_nPaints, nBefore + 1);
}

void tst_KvStyleDialog::noDrag_data()
{
    QTest::addColumn<Qt::MouseButton>("pressed");
    QTest::addColumn<Qt::MouseButtons>("held");
    QTest::addColumn<bool>("moves");
    QTest::newRow("left") << Qt::LeftButton << Qt::MouseButtons(Qt::LeftButton) << true;
    QTest::newRow("any button held") << Qt::LeftButton << Qt::MouseButtons(Qt::MiddleButton) << true;
    QTest::newRow("no button held") << Qt::LeftButton << Qt::MouseButtons(Qt::NoButton) << false;
    QTest::newRow("right press") << Qt::RightButton << Qt::MouseButtons(Qt::RightButton) << false;
    QTest::newRow("no press") << Qt::NoButton << Qt::MouseButtons(Qt::LeftButton) << false;
}

void tst_KvStyleDialog::noDrag()
{
    QFETCH(Qt::MouseButton, pressed);
    QFETCH(Qt::MouseButtons, held);
    QFETCH(bool, moves);
    CDialog dialog;
    QVERIFY(dialog.Activate());
    // Without tracking a move with no button held would not get there at all.
    dialog.setMouseTracking(true);
    if (pressed != Qt::NoButton) {
        SendPress(&dialog, PRESS, pressed);
    }
    dialog.DragTo({300, 200}, held);
    QCOMPARE(dialog.pos(), moves ? QPoint(300, 200) : START);
}

void tst_KvStyleDialog::noDragAfterRelease()
{
    CDialog dialog;
    QVERIFY(dialog.Activate());
    SendPress(&dialog, PRESS);
    SendRelease(&dialog, START + PRESS);
    dialog.DragTo({300, 200});
    QCOMPARE(dialog.pos(), START);
}

void tst_KvStyleDialog::pressTakesFocus()
{
    CDialog dialog;
    QLineEdit edit(&dialog);
    QVERIFY(dialog.Activate());
    edit.setFocus();
    QVERIFY(edit.hasFocus());
    SendPress(&dialog, PRESS, Qt::RightButton);
    QVERIFY(edit.hasFocus());
    SendPress(&dialog, PRESS);
    QVERIFY(dialog.hasFocus());
}

void tst_KvStyleDialog::eventsAccepted()
{
    CDialog dialog;
    QMouseEvent press(QEvent::MouseButtonPress, PRESS, START + PRESS, Qt::LeftButton, Qt::LeftButton,
                      Qt::NoModifier);
    QMouseEvent move(QEvent::MouseMove, PRESS, START + PRESS, Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
    QMouseEvent release(QEvent::MouseButtonRelease, PRESS, START + PRESS, Qt::LeftButton, Qt::NoButton,
                        Qt::NoModifier);
    for (QMouseEvent* pEvent : {&press, &move, &release}) {
        pEvent->ignore();
    }
    dialog.mousePressEvent(&press);
    QVERIFY(press.isAccepted());
    dialog.mouseMoveEvent(&move);
    QVERIFY(move.isAccepted());
    dialog.mouseReleaseEvent(&release);
    QVERIFY(release.isAccepted());
}

void tst_KvStyleDialog::panelIsPainted()
{
    CDialog dialog;
    QImage image(dialog.size(), QImage::Format_ARGB32);
    image.fill(Qt::transparent);
    dialog.render(&image, QPoint(), QRegion(), QWidget::RenderFlags());
    QCOMPARE(image.pixelColor(0, 0).alpha(), 0);
    const int nShadow = image.pixelColor(2, 50).alpha();
    QVERIFY2(nShadow > 0 && nShadow < 255, qPrintable(QString::number(nShadow)));
    QCOMPARE(image.pixel(100, 50), qRgba(255, 255, 255, 255));
}

void tst_KvStyleDialog::comesUpInTheMiddleOfItsParentsWindow()
{
    QWidget window;
    window.setGeometry(100, 120, 600, 400);
    QWidget page(&window);
    window.show();
    KvStyleDialog dialog(&page);
    dialog.setFixedSize(200, 100);
    dialog.show();
    QCOMPARE(dialog.geometry().center(), window.geometry().center());
    // Dragged away and asked again, it is in the middle again.
    dialog.hide();
    dialog.move(5, 5);
    window.move(200, 220);
    dialog.show();
    QCOMPARE(dialog.geometry().center(), window.geometry().center());
}

QTEST_MAIN(tst_KvStyleDialog)
#include "tst_KvStyleDialog.moc"
