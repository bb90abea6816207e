#include "kit/CCompositor.h"
#include "kit/KvMessageBox.h"

#include <QApplication>
#include <QScreen>
#include <QTest>

/** The edge of a dialog on a real X server, with and without a compositor. */
class tst_Compositor : public QObject
{
    Q_OBJECT

private slots:
    void edgeIsNeverBlack();
};

static QColor PixelOf(const QImage& screen, const QWidget& dialog, const QPoint& pt)
{
    return screen.pixelColor(dialog.mapToGlobal(pt));
}

void tst_Compositor::edgeIsNeverBlack()
{
    const bool bExpected = qgetenv("TARNWICK_COMPOSITOR") != "none";
    QTRY_COMPARE(CCompositor::IsRunning(), bExpected);

    // Without the window manager both stand where they are put.
    QWidget ground(nullptr, Qt::X11BypassWindowManagerHint);
    ground.setPalette(QPalette(Qt::white, Qt::white));
    ground.setGeometry(100, 100, 900, 600);
    ground.show();
    QVERIFY(QTest::qWaitForWindowExposed(&ground));
    KvMessageBox box("Text", Style_Ok, &ground);
    box.setWindowFlag(Qt::X11BypassWindowManagerHint);
    box.show();
    QVERIFY(QTest::qWaitForWindowExposed(&box));
    QCOMPARE(box.mask().isEmpty(), bExpected);

    // When the compositor has drawn it is up to the compositor.
    const QPoint ptInside(40, 200);
    const auto fnScreen = [] { return QGuiApplication::primaryScreen()->grabWindow(0).toImage(); };
    QTRY_COMPARE(PixelOf(fnScreen(), box, ptInside), QColor(Qt::white));
    const QImage screen = fnScreen();
    const QPoint listEdge[] = {QPoint(1, 150), QPoint(box.width() - 2, 150), QPoint(240, 1),
                               QPoint(240, box.height() - 2), QPoint(1, 1)};
    for (const QPoint& pt : listEdge) {
        QVERIFY2(PixelOf(screen, box, pt).lightness() > 150, qPrintable(PixelOf(screen, box, pt).name()));
    }

    // A box of another size is cut by its new panel.
    box.setBoxSize(600, 400, 600, 400);
    QTRY_COMPARE(box.size(), QSize(600, 400));
    QCOMPARE(box.mask().isEmpty(), bExpected);
    if (!bExpected) {
        QCOMPARE(box.mask().boundingRect(), QRect(4, 4, 592, 392));
    }
}

QTEST_MAIN(tst_Compositor)
#include "tst_Compositor.moc"
