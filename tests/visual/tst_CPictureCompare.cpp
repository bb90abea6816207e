#include "app/CFontFallback.h"
#include "visual/CPictureCompare.h"

#include <QApplication>
#include <QPainter>
#include <QtTest>

#include <functional>

// A piece of a window, in pixels of the window.
static const QSize SCENE_SIZE(300, 200);

// How much larger a picture is painted that is then averaged down, to move it by parts of a pixel.
static const int FINE = 8;

/** What a scene shows and how; the values that stand here are those of the reference. */
struct STScene
{
    QPointF ptShift; ///< of everything
    QPointF ptShiftText;
    QPointF ptShiftButton;
    QPointF ptShiftIcon;
    QPointF ptShiftBox;
    QPointF ptShiftLine;
    bool bCloseButton = true;
    bool bLine = true;
    bool bFaintLine = true;
    bool bIcon = true;
    bool bFocusFrame = false;
    bool bButtonEnabled = true;
    bool bHover = false; ///< of a row
    bool bFine = false; ///< painted larger and averaged down, which smooths otherwise and hints nothing
    QString strBox = "checkbox_selected";
    QString strCloseButton = "exit_normal";
    QString strName = "Photos of the summer 2019.jpg";
    QString strButton = "Copy";
    QColor colorFigure{0xff, 0x7e, 0x17};
    QColor colorText{0x48, 0x48, 0x48};
    QFont::HintingPreference enHinting = QFont::PreferDefaultHinting;
};

Q_DECLARE_METATYPE(STScene)

static QFont Font(const STScene& scene, int nSize)
{
    QFont font("Avenir");
    font.setPixelSize(nSize);
    font.setHintingPreference(scene.enHinting);
    return font;
}

static QImage Picture(const QString& strPath, bool bLarge)
{
    return QImage(strPath + (bLarge ? "@2x.png" : ".png"));
}

static void PaintTexts(QPainter& painter, const STScene& scene)
{
    painter.translate(scene.ptShiftText);
    painter.setPen(scene.colorText);
    painter.setFont(Font(scene, 14));
    painter.drawText(QPointF(70, 65), scene.strName);
    painter.setFont(Font(scene, 13));
    painter.drawText(QPointF(20, 125), "Available, 64.00GB in total");
    painter.setPen(scene.colorFigure);
    painter.drawText(QPointF(220, 125), "63.97GB");
    painter.translate(-scene.ptShiftText);
}

static void PaintButton(QPainter& painter, const STScene& scene)
{
    painter.translate(scene.ptShiftButton);
    const QRectF rect(160, 150, 120, 32);
    QLinearGradient gradient(rect.topLeft(), rect.bottomLeft());
    gradient.setColorAt(0, QColor(255, 183, 25));
    gradient.setColorAt(1, QColor(255, 135, 20));
    painter.setBrush(scene.bButtonEnabled ? QBrush(gradient) : QBrush(QColor(198, 198, 198)));
    painter.setPen(scene.bFocusFrame ? QPen(QColor(217, 95, 0), 2) : QPen(Qt::NoPen));
    painter.drawRoundedRect(rect, 4, 4);
    painter.setPen(Qt::white);
    painter.setFont(Font(scene, 13));
    painter.drawText(rect, Qt::AlignCenter, scene.strButton);
    painter.translate(-scene.ptShiftButton);
}

static void PaintParts(QPainter& painter, const STScene& scene, bool bLarge)
{
    painter.fillRect(QRect(QPoint(), SCENE_SIZE), Qt::white);
    if (scene.bHover) {
        painter.fillRect(QRect(20, 45, 260, 30), QColor(0xff, 0xf2, 0xe7));
    }
    if (scene.bLine) {
        painter.fillRect(QRectF(20, 30, 260, 1).translated(scene.ptShiftLine), QColor(224, 224, 224));
    }
    if (scene.bFaintLine) {
        painter.fillRect(QRect(20, 95, 260, 1), QColor(238, 238, 238));
    }
    if (scene.bCloseButton) {
        painter.drawImage(QRectF(12, 10, 12, 12),
                          Picture(QString(":/res/Button/%1").arg(scene.strCloseButton), bLarge));
    }
    painter.drawImage(QRectF(QPointF(20, 53) + scene.ptShiftBox, QSizeF(14, 14)),
                      Picture(QString(":/res/Button/%1").arg(scene.strBox), bLarge));
    if (scene.bIcon) {
        painter.drawImage(QRectF(QPointF(44, 52) + scene.ptShiftIcon, QSizeF(16, 16)),
                          Picture(":/res/Button/filedesc", bLarge));
    }
    PaintTexts(painter, scene);
    PaintButton(painter, scene);
}

static QImage Painted(const STScene& scene, double dScale)
{
    const double dPaintScale = scene.bFine ? dScale * FINE : dScale;
    QImage img(SCENE_SIZE * dPaintScale, QImage::Format_RGB32);
    img.fill(Qt::white);
    QPainter painter(&img);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform
                           | QPainter::TextAntialiasing);
    painter.scale(dPaintScale, dPaintScale);
    painter.translate(scene.ptShift);
    PaintParts(painter, scene, dScale > 1);
    painter.end();
    return scene.bFine ? img.scaled(SCENE_SIZE * dScale, Qt::IgnoreAspectRatio, Qt::SmoothTransformation)
                       : img;
}

/** What is told apart and what is not, in pictures of a painted piece of a window, at each scale. */
class tst_CPictureCompare : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();

    void sameThingIsTheSame_data();
    void sameThingIsTheSame();
    void otherThingDiffers_data();
    void otherThingDiffers();
    void otherSizeIsSaid();
    void cellsLieWhereTheDifferenceIs();
    void differencesAtTheEdgesAreFound_data();
    void differencesAtTheEdgesAreFound();
    void markedPictureShowsTheCells();
};

static STScene Changed(const std::function<void(STScene&)>& fnChange)
{
    STScene scene;
    fnChange(scene);
    return scene;
}

static void EachScale(const QByteArray& baName, const std::function<void(STScene&)>& fnChange)
{
    for (const double dScale : {1.0, 1.5, 2.0}) {
        QTest::newRow((baName + " at " + QByteArray::number(dScale)).constData())
            << Changed(fnChange) << dScale;
    }
}

void tst_CPictureCompare::initTestCase() { CFontFallback::Install(); }

void tst_CPictureCompare::sameThingIsTheSame_data()
{
    QTest::addColumn<STScene>("scene");
    QTest::addColumn<double>("dScale");
    EachScale("unchanged", [](STScene&) {});
    EachScale("letters without hints", [](STScene& s) { s.enHinting = QFont::PreferNoHinting; });
    EachScale("letters with hints upwards", [](STScene& s) { s.enHinting = QFont::PreferVerticalHinting; });
    EachScale("text painted larger and averaged", [](STScene& s) { s.bFine = true; });
    EachScale("text a little paler", [](STScene& s) { s.colorText = QColor(0x54, 0x54, 0x54); });
    for (const double dX : {-0.45, -0.25, 0.0, 0.25, 0.45}) {
        for (const double dY : {-0.45, 0.0, 0.45}) {
            EachScale("text aside by " + QByteArray::number(dX) + ' ' + QByteArray::number(dY),
                      [&](STScene& s) {
                          s.bFine = true;
                          s.ptShiftText = QPointF(dX, dY);
                      });
        }
    }
}

void tst_CPictureCompare::sameThingIsTheSame()
{
    QFETCH(STScene, scene);
    QFETCH(double, dScale);
    const CPictureCompare compare(Painted(STScene(), dScale), Painted(scene, dScale), dScale);
    QCOMPARE(compare.Message(), QString());
    QVERIFY(compare.IsSame());
}

void tst_CPictureCompare::otherThingDiffers_data()
{
    QTest::addColumn<STScene>("scene");
    QTest::addColumn<double>("dScale");
    const struct
    {
        const char* pName;
        QPointF STScene::*pShift;
    } listPart[] = {{"text", &STScene::ptShiftText},
                    {"button", &STScene::ptShiftButton},
                    {"icon", &STScene::ptShiftIcon},
                    {"check box", &STScene::ptShiftBox},
                    {"everything", &STScene::ptShift}};
    for (const auto& part : listPart) {
        for (const QPointF& pt : {QPointF(2, 0), QPointF(-2, 0), QPointF(0, 2), QPointF(0, -2), QPointF(3, 1),
                                  QPointF(5, 0), QPointF(0, 9)}) {
            const QByteArray baWay = QByteArray::number(pt.x()) + ' ' + QByteArray::number(pt.y());
            EachScale(QByteArray(part.pName) + " moved by " + baWay,
                      [&](STScene& s) { s.*part.pShift = pt; });
        }
    }
    EachScale("line moved by two", [](STScene& s) { s.ptShiftLine = QPointF(0, 2); });
    EachScale("line missing", [](STScene& s) { s.bLine = false; });
    EachScale("faint line missing", [](STScene& s) { s.bFaintLine = false; });
    EachScale("close button missing", [](STScene& s) { s.bCloseButton = false; });
    EachScale("close button hovered", [](STScene& s) { s.strCloseButton = "exit_hover"; });
    EachScale("icon missing", [](STScene& s) { s.bIcon = false; });
    EachScale("button disabled", [](STScene& s) { s.bButtonEnabled = false; });
    EachScale("button with a focus frame", [](STScene& s) { s.bFocusFrame = true; });
    EachScale("button with another text", [](STScene& s) { s.strButton = "Stop"; });
    EachScale("row lit", [](STScene& s) { s.bHover = true; });
    EachScale("figure grey", [](STScene& s) { s.colorFigure = s.colorText; });
    // Hints in both directions change the places of the letters, too, by pixels at the end of a line.
    EachScale("letters set wider", [](STScene& s) { s.enHinting = QFont::PreferFullHinting; });
    EachScale("one digit", [](STScene& s) { s.strName.replace("2019", "2016"); });
    EachScale("check box empty", [](STScene& s) { s.strBox = "checkbox_normal"; });
    EachScale("check box half", [](STScene& s) { s.strBox = "checkbox_half_selected"; });
    EachScale("check box hovered", [](STScene& s) { s.strBox = "checkbox_selected_hover"; });
}

void tst_CPictureCompare::otherThingDiffers()
{
    QFETCH(STScene, scene);
    QFETCH(double, dScale);
    const CPictureCompare compare(Painted(STScene(), dScale), Painted(scene, dScale), dScale);
    QVERIFY(!compare.IsSame());
}

void tst_CPictureCompare::otherSizeIsSaid()
{
    const CPictureCompare compare(QImage(100, 80, QImage::Format_RGB32),
                                  QImage(101, 80, QImage::Format_RGB32), 1);
    QVERIFY(!compare.IsSame());
    QCOMPARE(compare.Message(), QString("the picture is 101 x 80 pixels, the reference 100 x 80"));
    QVERIFY(compare.Cells().isEmpty());
}

void tst_CPictureCompare::cellsLieWhereTheDifferenceIs()
{
    const double dScale = 1.5;
    const STScene scene = Changed([](STScene& s) { s.bCloseButton = false; });
    const CPictureCompare compare(Painted(STScene(), dScale), Painted(scene, dScale), dScale);
    // The button's place, and a cell around it.
    const QRect rectAround(int((12 - 8) * dScale), int((10 - 8) * dScale), int(28 * dScale),
                           int(28 * dScale));
    QVERIFY(!compare.Cells().isEmpty());
    for (const STDifferentCell& cell : compare.Cells()) {
        QVERIFY(rectAround.contains(cell.rect));
        QVERIFY(cell.dTimes > 1);
    }
    QVERIFY2(compare.Message().contains("cells differ, all between ("), qPrintable(compare.Message()));
}

void tst_CPictureCompare::differencesAtTheEdgesAreFound_data()
{
    QTest::addColumn<QRect>("rectDot");
    QTest::newRow("top left") << QRect(0, 0, 2, 2);
    QTest::newRow("top right") << QRect(101, 0, 2, 2);
    QTest::newRow("bottom left") << QRect(0, 85, 2, 2);
    QTest::newRow("bottom right") << QRect(101, 85, 2, 2);
}

// No side of the picture is a multiple of a cell's.
void tst_CPictureCompare::differencesAtTheEdgesAreFound()
{
    QFETCH(QRect, rectDot);
    QImage img(103, 87, QImage::Format_RGB32);
    img.fill(Qt::white);
    QImage imgDot = img;
    QPainter(&imgDot).fillRect(rectDot, QColor(0x48, 0x48, 0x48));
    const CPictureCompare compare(img, imgDot, 1);
    QVERIFY(!compare.IsSame());
    for (const STDifferentCell& cell : compare.Cells()) {
        QVERIFY(img.rect().contains(cell.rect));
    }
}

void tst_CPictureCompare::markedPictureShowsTheCells()
{
    const STScene scene = Changed([](STScene& s) { s.bIcon = false; });
    const CPictureCompare compare(Painted(STScene(), 1), Painted(scene, 1), 1);
    const QImage imgMarked = compare.Marked();
    QCOMPARE(imgMarked.size(), SCENE_SIZE);
    int nFrame = 0;
    for (int nY = 40; nY < 80; ++nY) {
        for (int nX = 30; nX < 70; ++nX) {
            nFrame += imgMarked.pixelColor(nX, nY) == CPictureCompare::FRAME_COLOR ? 1 : 0;
        }
    }
    QVERIFY(nFrame > 40);
    // What is the same is paler than it was.
    const QPoint ptButton(170, 165);
    QVERIFY(imgMarked.pixelColor(ptButton).blue() > Painted(scene, 1).pixelColor(ptButton).blue() + 100);
}

QTEST_MAIN(tst_CPictureCompare)
#include "tst_CPictureCompare.moc"
