#include "kit/CSkinPicture.h"

#include <QApplication>
#include <QMovie>
#include <QTest>

// Runs once on a plain screen and once on one with two pixels for each unit.
class tst_CSkinPicture : public QObject
{
    Q_OBJECT

private slots:
    void pixmapHasThePixelsOfTheScreen();
    void movieHasThePixelsOfTheScreen();
    void whatIsMissingHasNoPixels();
};

static int Ratio() { return qEnvironmentVariableIntValue("QT_SCALE_FACTOR"); }

void tst_CSkinPicture::pixmapHasThePixelsOfTheScreen()
{
    const QPixmap pixmap = CSkinPicture::Pixmap(":/res/Tip/tips_mark.png");
    QCOMPARE(pixmap.size(), QSize(40, 40) * Ratio());
    QCOMPARE(pixmap.devicePixelRatio(), qreal(Ratio()));
}

void tst_CSkinPicture::movieHasThePixelsOfTheScreen()
{
    QMovie movie(CSkinPicture::MoviePath(":/res/Gif/searching.gif"));
    QVERIFY(movie.jumpToFrame(0));
    QCOMPARE(movie.currentPixmap().size(), QSize(40, 40) * Ratio());
}

void tst_CSkinPicture::whatIsMissingHasNoPixels()
{
    QVERIFY(CSkinPicture::Pixmap(":/res/Tip/none.png").isNull());
    // There is no double to be shown instead.
    QCOMPARE(CSkinPicture::MoviePath(":/res/Gif/none.gif"), QString(":/res/Gif/none.gif"));
}

int main(int argc, char** argv)
{
    QApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    QApplication application(argc, argv);
    tst_CSkinPicture test;
    return QTest::qExec(&test, argc, argv);
}
#include "tst_CSkinPicture.moc"
