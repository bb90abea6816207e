#include "kit/KvStyleShadow.h"
#include "support/CLogCapture.h"
#include "support/Widgets.h"

namespace {

const int WIDTH = 60;
const int HEIGHT = 40;

class CPanel : public QWidget
{
public:
    explicit CPanel(const QSize& size = {WIDTH, HEIGHT}) { resize(size); }

protected:
    void paintEvent(QPaintEvent*) override { KvStyleShadow().Paint(this); }
};

}

class tst_KvStyleShadow : public QObject
{
    Q_OBJECT

private slots:
    void edge_data();
    void edge();
    void panelIsWhite();
    void cornersAreRound();
    void smallWidget_data();
    void smallWidget();
    void nullWidget();
};

// The lines are one pixel wide and run between two pixels, so each ring gives
// half of its alpha to the pixel outside and half to the one inside. From the
// rings' alphas 100, 50, 29 and 13 (of 255, inside out) this makes, going
// inwards from the edge of the widget:
//   0: 6.5    1: 6.5 under 14.5    2: 14.5 under 25    3: 25 under 50
//   4: 50 over the white panel    5: white
void tst_KvStyleShadow::edge_data()
{
    QTest::addColumn<int>("nDepth");
    QTest::addColumn<QColor>("color");
    QTest::newRow("outermost") << 0 << QColor(10, 10, 10, 7);
    QTest::newRow("second") << 1 << QColor(10, 10, 10, 21);
    QTest::newRow("third") << 2 << QColor(10, 10, 10, 38);
    QTest::newRow("innermost of the margin") << 3 << QColor(10, 10, 10, 70);
    QTest::newRow("first of the panel") << 4 << QColor(207, 207, 207, 255);
    QTest::newRow("second of the panel") << 5 << QColor(255, 255, 255, 255);
}

static bool IsNear(const QColor& color, const QColor& expected)
{
    // A faint colour loses bits when it is stored multiplied by its alpha.
    const int nColorSlack = expected.alpha() < 255 ? 300 / expected.alpha() : 2;
    return qAbs(color.alpha() - expected.alpha()) <= 2 && qAbs(color.red() - expected.red()) <= nColorSlack
        && qAbs(color.green() - expected.green()) <= nColorSlack
        && qAbs(color.blue() - expected.blue()) <= nColorSlack;
}

void tst_KvStyleShadow::edge()
{
    QFETCH(int, nDepth);
    QFETCH(QColor, color);
    CPanel panel;
    const QImage image = Painted(&panel);
    const QPoint listPoint[] = {{nDepth, HEIGHT / 2},
                                {WIDTH - 1 - nDepth, HEIGHT / 2},
                                {WIDTH / 2, nDepth},
                                {WIDTH / 2, HEIGHT - 1 - nDepth}};
    for (const QPoint& pt : listPoint) {
        const QColor actual = image.pixelColor(pt);
        QVERIFY2(IsNear(actual, color), qPrintable(actual.name(QColor::HexArgb)));
    }
}

void tst_KvStyleShadow::panelIsWhite()
{
    CPanel panel;
    const QImage image = Painted(&panel);
    for (int y = 8; y < HEIGHT - 8; ++y) {
        for (int x = 5; x < WIDTH - 5; ++x) {
            QCOMPARE(image.pixel(x, y), qRgba(255, 255, 255, 255));
        }
    }
}

// A radius of 4 leaves the outermost pixel of the diagonal free, shows the
// shadow through the panel's first pixel, and fills the third one.
void tst_KvStyleShadow::cornersAreRound()
{
    CPanel panel;
    const QImage image = Painted(&panel);
    for (const QImage& turned :
         {image, image.mirrored(true, false), image.mirrored(false, true), image.mirrored(true, true)}) {
        QCOMPARE(turned.pixelColor(0, 0).alpha(), 0);
        QVERIFY(turned.pixelColor(4, 4).alpha() > 0);
        QVERIFY(turned.pixelColor(4, 4).alpha() < 200);
        QCOMPARE(turned.pixelColor(6, 6).alpha(), 255);
    }
}

void tst_KvStyleShadow::smallWidget_data()
{
    QTest::addColumn<QSize>("size");
    QTest::newRow("0 x 0") << QSize(0, 0);
    QTest::newRow("0 x 50") << QSize(0, 50);
    QTest::newRow("1 x 1") << QSize(1, 1);
    QTest::newRow("7 x 7") << QSize(7, 7);
    QTest::newRow("8 x 8") << QSize(8, 8);
}

void tst_KvStyleShadow::smallWidget()
{
    QFETCH(QSize, size);
    const CLogCapture capture;
    CPanel panel(size);
    // A widget without any pixel gets no paint event; paint it all the same.
    if (size.isEmpty()) {
        KvStyleShadow().Paint(&panel);
    } else {
        QCOMPARE(Painted(&panel).size(), size);
    }
    QCOMPARE(capture.Lines(), QStringList());
}

void tst_KvStyleShadow::nullWidget()
{
    const CLogCapture capture;
    KvStyleShadow().Paint(nullptr);
    QCOMPARE(capture.Lines(), QStringList());
}

QTEST_MAIN(tst_KvStyleShadow)
#include "tst_KvStyleShadow.moc"
