#include "kit/CSkinPicture.h"

#include <QApplication>
#include <QMovie>
#include <QTest>

// Runs once on a plain screen and once on one with two pixels for each unit.
class tst_CSkinPicture : public QObject
{
    Q_OBJECT

private slots:
    void PixmapHasThePixelsOfTheScreen();
    void MissingPictureIsNull();
    void MovieHasThePixelsOfTheScreen();
    void MovieWithoutDoubleStays();
};

static int Ratio() { return qEnvironmentVariableIntValue("QT_SCALE_FACTOR"); }

void tst_CSkinPicture::PixmapHasThePixelsOfTheScreen()
{
    const QPixmap pixmap = CSkinPicture::Pixmap(QStringLiteral(":/res/Tip/tips_mark.png"));
    QCOMPARE(pixmap.size(), QSize(40, 40) * Ratio());
    QCOMPARE(pixmap.devicePixelRatio(), qreal(Ratio()));
}

void tst_CSkinPicture::MissingPictureIsNull()
{
    QVERIFY(CSkinPicture::Pixmap(QStringLiteral(":/res/Tip/none.png")).isNull());
}

void tst_CSkinPicture::MovieHasThePixelsOfTheScreen()
{
    QMovie movie(CSkinPicture::MoviePath(QStringLiteral(":/res/Gif/searching.gif")));
    QVERIFY(movie.jumpToFrame(0));
    QCOMPARE(movie.currentPixmap().size(), QSize(40, 40) * Ratio());
}

void tst_CSkinPicture::MovieWithoutDoubleStays()
{
    const QString strPath = QStringLiteral(":/res/Gif/none.gif");
    QCOMPARE(CSkinPicture::MoviePath(strPath), strPath);
}

int main(int argc, char** argv)
{
    QApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    QApplication application(argc, argv);
    tst_CSkinPicture test;
    return QTest::qExec(&test, argc, argv);
}
#include "tst_CSkinPicture.moc"
