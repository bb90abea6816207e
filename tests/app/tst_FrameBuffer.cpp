#include "app/CFontFallback.h"
#include "app/CScreenGround.h"
#include "app/CStartUp.h"
#include "app/CTarnwickMacPE.h"
#include "kit/CCompositor.h"
#include "kit/KvMessageBox.h"
#include "kit/SkinColor.h"
#include "support/CFakeFrameBuffer.h"
#include "support/TestFiles.h"
#include "support/Widgets.h"

#include <QApplication>
#include <QDir>
#include <QListWidget>
#include <QPushButton>
#include <QScreen>
#include <QTest>
#include <QTimer>

static const QRgb LEFT_OVER = 0xff00ff;

/** The window and its boxes on a screen without a window system, drawn by the toolkit itself. */
class tst_FrameBuffer : public QObject
{
    Q_OBJECT

private slots:
    void nothingIsThereBesideTheWindows();
    void groundCoversWhatWasThere();
    void groundDoesNotKeepTheProgram();
    void windowLiesWithinTheScreen();
    void boxHasNoBlackFrame();
    void listOpensBelowItsButton();
};

/** Leaves a picture of the screen in the build folder. */
static void Keep(const QString& strName)
{
    const QString strFolder = BuildPath("pictures/frame-buffer/");
    QDir().mkpath(strFolder);
    const QImage image = CFakeFrameBuffer::Picture();
    QVERIFY(image.save(QString("%1%2-%3.png").arg(strFolder, strName).arg(image.width())));
}

static QColor PixelAt(const QPoint& pt) { return CFakeFrameBuffer::Picture().pixelColor(pt); }

void tst_FrameBuffer::nothingIsThereBesideTheWindows()
{
    QCOMPARE(QGuiApplication::platformName(), QString("linuxfb"));
    QVERIFY(!CCompositor::IsRunning());
    QVERIFY(!CCompositor::CanClip());
    QVERIFY(!CCompositor::HasDesktop());
}

void tst_FrameBuffer::groundCoversWhatWasThere()
{
    const QSize size = QGuiApplication::primaryScreen()->size();
    const QPoint listCorner[]
        = {{0, 0}, {size.width() - 1, 0}, {0, size.height() - 1}, {size.width() - 1, size.height() - 1}};
    for (const QPoint& pt : listCorner) {
        QCOMPARE(PixelAt(pt), QColor(LEFT_OVER));
    }
    const std::unique_ptr<CScreenGround> pGround = CScreenGround::Lay();
    QVERIFY(pGround);
    for (const QPoint& pt : listCorner) {
        QTRY_COMPARE(PixelAt(pt), QColor(SkinColor::GROUND));
    }
}

void tst_FrameBuffer::groundDoesNotKeepTheProgram()
{
    const std::unique_ptr<CScreenGround> pGround = CScreenGround::Lay();
    QWidget window;
    window.show();
    QTimer::singleShot(0, &window, &QWidget::close);
    // A program that is kept running would never come back.
    QTimer::singleShot(std::chrono::seconds(10), &window, [] { QCoreApplication::exit(1); });
    QCOMPARE(QApplication::exec(), 0);
}

void tst_FrameBuffer::windowLiesWithinTheScreen()
{
    const std::unique_ptr<CScreenGround> pGround = CScreenGround::Lay();
    const QSize sizeScreen = QGuiApplication::primaryScreen()->availableSize();
    CTarnwickMacPE window;
    window.FitScreen(sizeScreen);
    window.move(CStartUp::CentredPosition(sizeScreen, window.size(), window.pos()));
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    QVERIFY(QRect(QPoint(), sizeScreen).contains(window.geometry()));
    const auto* pClose = window.findChild<QPushButton*>("m_pCloseBtn");
    QVERIFY(QRect(QPoint(), sizeScreen).contains(QRect(pClose->mapToGlobal({0, 0}), pClose->size())));
    // What the frame buffer has is what the window shows, where it shows it.
    const QImage imageWindow = window.grab().toImage();
    for (const QPoint& pt : {QPoint(500, 20), QPoint(40, 45), QPoint(60, 120)}) {
        QTRY_COMPARE(PixelAt(window.mapToGlobal(pt)), imageWindow.pixelColor(pt));
    }
    Keep("window");
}

void tst_FrameBuffer::boxHasNoBlackFrame()
{
    const std::unique_ptr<CScreenGround> pGround = CScreenGround::Lay();
    QWidget window(nullptr, Qt::FramelessWindowHint);
    window.setPalette(QPalette(Qt::white));
    window.setGeometry(0, 0, 800, 600);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    KvMessageBox box("Text", Style_Ok, &window);
    box.show();
    QVERIFY(QTest::qWaitForWindowExposed(&box));
    QVERIFY((box.geometry().center() - window.geometry().center()).manhattanLength() <= 2);
    // The shadow's strongest ring is there, on white.
    QTRY_VERIFY(PixelAt(box.mapToGlobal({4, 150})).lightness() < 250);
    const QSize size = box.size();
    const QPoint listEdge[] = {{0, 0},
                               {1, 150},
                               {size.width() - 2, 150},
                               {240, 1},
                               {240, size.height() - 2},
                               {size.width() - 1, size.height() - 1}};
    for (const QPoint& pt : listEdge) {
        QVERIFY2(PixelAt(box.mapToGlobal(pt)).lightness() > 200,
                 qPrintable(PixelAt(box.mapToGlobal(pt)).name()));
    }
    Keep("box");
    // Where it was there is the window again, and the ground where it hung over the window's edge.
    box.move(window.width() - 100, 50);
    QTRY_COMPARE(PixelAt(box.mapToGlobal({200, 150})), QColor(Qt::white));
    const QPoint ptOverWindow = box.mapToGlobal({4, 150});
    const QPoint ptOverGround = box.mapToGlobal({200, 150});
    box.close();
    QTRY_COMPARE(PixelAt(ptOverWindow), QColor(Qt::white));
    QTRY_COMPARE(PixelAt(ptOverGround), QColor(SkinColor::GROUND));
}

void tst_FrameBuffer::listOpensBelowItsButton()
{
    const std::unique_ptr<CScreenGround> pGround = CScreenGround::Lay();
    const QSize sizeScreen = QGuiApplication::primaryScreen()->availableSize();
    CTarnwickMacPE window;
    window.move(CStartUp::CentredPosition(sizeScreen, window.size(), window.pos()));
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    auto* pButton = window.findChild<QPushButton*>("m_pDropBtn");
    const QPoint ptButton = pButton->mapToGlobal({0, pButton->height()});
    QTest::mouseClick(pButton, Qt::LeftButton);
    auto* pList = window.findChild<QListWidget*>();
    QTRY_VERIFY(pList && pList->isVisible());
    const QPoint ptList = pList->mapToGlobal({0, 0});
    QVERIFY(ptList.y() >= ptButton.y() && ptList.y() - ptButton.y() < 40);
    QVERIFY(ptList.x() < ptButton.x() && ptList.x() + pList->width() > ptButton.x());
    QTRY_COMPARE(PixelAt(pList->mapToGlobal(pList->rect().center())).lightness(), 255);
    Keep("list");
}

int main(int argc, char** argv)
{
    const QList<QByteArray> listSize = qgetenv("TARNWICK_FRAME_BUFFER").split('x');
    CFakeFrameBuffer::Make({listSize.value(0).toInt(), listSize.value(1).toInt()}, LEFT_OVER);
    qputenv("QT_QPA_PLATFORM", "linuxfb");
    qputenv("QT_QPA_FB_FORCE_FULLSCREEN", "0");
    qputenv("QT_QPA_FB_DISABLE_INPUT", "1");
    QApplication application(argc, argv);
    CFontFallback::Install();
    application.setStyleSheet(ProgramSheet());
    tst_FrameBuffer test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_FrameBuffer.moc"
