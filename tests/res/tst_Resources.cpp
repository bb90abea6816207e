#include <QDirIterator>
#include <QFile>
#include <QImage>
#include <QImageReader>
#include <QMovie>
#include <QPixmap>
#include <QResource>
#include <QTest>

extern int qInitResources_tarnwickmacpe();
extern int qCleanupResources_tarnwickmacpe();

namespace {

/** How much of an image lets its ground through. */
enum class ENGround
{
    SOLID, ///< every pixel is opaque: a strip that is stretched over a widget
    CLEAR, ///< the four corners are fully transparent: a shape on any ground
    ROUNDED ///< the box fills the image, only the corner pixels let the ground through
};

}

Q_DECLARE_METATYPE(ENGround)

static QString At2x(const QString& strPath) { return QString(strPath).replace('.', "@2x."); }

// Calls fnPixel with each pixel of an image.
template <class Function> static void ForEachPixel(const QImage& image, const Function& fnPixel)
{
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            fnPixel(x, y, image.pixel(x, y));
        }
    }
}

static QList<QRgb> Corners(const QImage& image)
{
    const int nRight = image.width() - 1;
    const int nBottom = image.height() - 1;
    return {image.pixel(0, 0), image.pixel(nRight, 0), image.pixel(0, nBottom), image.pixel(nRight, nBottom)};
}

// Pixels that are covered, an edge pixel counting as the part of it that is.
static double Covered(const QImage& image)
{
    int nAlpha = 0;
    ForEachPixel(image, [&nAlpha](int, int, QRgb rgb) { nAlpha += qAlpha(rgb); });
    return nAlpha / 255.0;
}

static QVector<QImage> Frames(const QString& strPath)
{
    QImageReader reader(strPath);
    QVector<QImage> listFrame;
    for (QImage frame = reader.read(); !frame.isNull(); frame = reader.read()) {
        listFrame.append(frame.convertToFormat(QImage::Format_ARGB32));
    }
    return listFrame;
}

// Mean difference of two pictures of one size per colour channel, 0 to 255.
static double Difference(const QImage& one, const QImage& other)
{
    qint64 nSum = 0;
    ForEachPixel(one, [&nSum, &other](int x, int y, QRgb a) {
        const QRgb b = other.pixel(x, y);
        nSum += qAbs(qRed(a) - qRed(b)) + qAbs(qGreen(a) - qGreen(b)) + qAbs(qBlue(a) - qBlue(b));
    });
    return double(nSum) / (3.0 * one.width() * one.height());
}

class tst_Resources : public QObject
{
    Q_OBJECT

private slots:
    void imageHasItsSize_data();
    void imageHasItsSize();
    void animationLoops_data();
    void animationLoops();
    void checkBoxStatesDiffer_data();
    void checkBoxStatesDiffer();
    void selectedAndUnselectedPicturesDiffer_data();
    void selectedAndUnselectedPicturesDiffer();
    void textIsCompressedAndImagesAreNot();
    void cleanupReleasesAndInitRegisters();
};

void tst_Resources::imageHasItsSize_data()
{
    QTest::addColumn<QSize>("size");
    QTest::addColumn<ENGround>("enGround");
    QTest::newRow("Button/all_disable.png") << QSize(12, 12) << ENGround::CLEAR;
    QTest::newRow("Button/exit_normal.png") << QSize(12, 12) << ENGround::CLEAR;
    QTest::newRow("Button/exit_hover.png") << QSize(12, 12) << ENGround::CLEAR;
    QTest::newRow("Button/checkbox_normal.png") << QSize(14, 14) << ENGround::ROUNDED;
    QTest::newRow("Button/checkbox_hover.png") << QSize(14, 14) << ENGround::ROUNDED;
    QTest::newRow("Button/checkbox_selected.png") << QSize(14, 14) << ENGround::ROUNDED;
    QTest::newRow("Button/checkbox_selected_hover.png") << QSize(14, 14) << ENGround::ROUNDED;
    QTest::newRow("Button/checkbox_half_selected.png") << QSize(14, 14) << ENGround::ROUNDED;
    QTest::newRow("Button/checkbox_half_selected_hover.png") << QSize(14, 14) << ENGround::ROUNDED;
    QTest::newRow("Button/checkbox_disable.png") << QSize(14, 14) << ENGround::ROUNDED;
    QTest::newRow("Button/dropdown_open.png") << QSize(20, 20) << ENGround::CLEAR;
    QTest::newRow("Button/dropdown_collapse.png") << QSize(20, 20) << ENGround::CLEAR;
    QTest::newRow("Button/filedesc.png") << QSize(14, 14) << ENGround::CLEAR;
    QTest::newRow("Button/refresh_icon_normal.png") << QSize(20, 20) << ENGround::CLEAR;
    QTest::newRow("Button/refresh_icon_hover.png") << QSize(20, 20) << ENGround::CLEAR;
    QTest::newRow("Button/refresh_icon_pressing.png") << QSize(20, 20) << ENGround::CLEAR;
    QTest::newRow("Label/allow.png") << QSize(88, 33) << ENGround::CLEAR;
    QTest::newRow("Label/allow_deft.png") << QSize(88, 33) << ENGround::CLEAR;
    QTest::newRow("Label/usb_select.png") << QSize(70, 131) << ENGround::CLEAR;
    QTest::newRow("Label/usb_unselect.png") << QSize(70, 131) << ENGround::CLEAR;
    QTest::newRow("Tip/tips_mark.png") << QSize(40, 40) << ENGround::CLEAR;
    QTest::newRow("Tip/tips.png") << QSize(40, 40) << ENGround::CLEAR;
    QTest::newRow("Tip/tips_completed.png") << QSize(40, 40) << ENGround::CLEAR;
    QTest::newRow("Tip/tips_error40.png") << QSize(40, 40) << ENGround::CLEAR;
    QTest::newRow("Title/tarnwick_logo_34.png") << QSize(34, 34) << ENGround::CLEAR;
    QTest::newRow("Title/bg40.png") << QSize(30, 40) << ENGround::SOLID;
    QTest::newRow("Title/win_title_bg.png") << QSize(20, 35) << ENGround::SOLID;
}

void tst_Resources::imageHasItsSize()
{
    QFETCH(QSize, size);
    QFETCH(ENGround, enGround);
    const QString strPath = QString(":/res/") + QTest::currentDataTag();
    const QImage image(strPath);
    QCOMPARE(image.size(), size);

    // Beside it lies the same drawing, not another picture: scaled down it is the small one.
    const QImage twice(At2x(strPath));
    QCOMPARE(twice.size(), size * 2);
    QCOMPARE(QPixmap(At2x(strPath)).devicePixelRatio(), 2.0);
    const QImage shrunk = twice.convertToFormat(QImage::Format_ARGB32_Premultiplied)
                              .scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    const double lfApart = Difference(image.convertToFormat(QImage::Format_ARGB32_Premultiplied), shrunk);
    QVERIFY2(lfApart < 4.0, qPrintable(QString::number(lfApart)));

    const int nAll = size.width() * size.height();
    const double lfCovered = Covered(image);
    if (enGround == ENGround::SOLID) {
        QCOMPARE(lfCovered, double(nAll));
        return;
    }
    QVERIFY2(lfCovered > nAll / 50.0, "there is hardly anything in the picture");
    for (const QRgb rgb : Corners(image)) {
        QVERIFY(qAlpha(rgb) < 128);
    }
    if (enGround == ENGround::CLEAR) {
        QCOMPARE(qAlpha(image.pixel(0, 0)), 0);
    } else {
        QVERIFY2(lfCovered >= nAll * 0.8, "a box fills its picture");
    }
}

void tst_Resources::animationLoops_data()
{
    QTest::addColumn<QSize>("size");
    QTest::addColumn<int>("nFrames");
    QTest::newRow("copy.gif") << QSize(247, 146) << 60;
    QTest::newRow("copy@2x.gif") << QSize(494, 292) << 60;
    QTest::newRow("searching.gif") << QSize(40, 40) << 32;
    QTest::newRow("searching@2x.gif") << QSize(80, 80) << 32;
    QTest::newRow("refalsh.gif") << QSize(20, 20) << 25;
    QTest::newRow("refalsh@2x.gif") << QSize(40, 40) << 25;
}

void tst_Resources::animationLoops()
{
    QFETCH(QSize, size);
    QFETCH(int, nFrames);
    const QString strPath = QString(":/res/Gif/") + QTest::currentDataTag();
    QMovie movie(strPath);
    QVERIFY(movie.isValid());
    QVERIFY(movie.jumpToFrame(0));
    QCOMPARE(movie.loopCount(), -1);

    // The movie's own answer is shortened by the time that it took to decode the frame.
    QImageReader reader(strPath);
    QVERIFY(reader.canRead());
    QVERIFY(!reader.read().isNull());
    QCOMPARE(reader.nextImageDelay(), 40);

    const QVector<QImage> listFrame = Frames(strPath);
    QCOMPARE(listFrame.size(), nFrames);
    double lfLargest = 0.0;
    for (int n = 0; n < nFrames; ++n) {
        QCOMPARE(listFrame.at(n).size(), size);
        for (const QRgb rgb : Corners(listFrame.at(n))) {
            QCOMPARE(rgb, qRgb(255, 255, 255));
        }
        if (n > 0) {
            const double lfStep = Difference(listFrame.at(n - 1), listFrame.at(n));
            QVERIFY2(lfStep > 0.0, "two frames in a row are the same");
            lfLargest = qMax(lfLargest, lfStep);
        }
    }
    const double lfJump = Difference(listFrame.last(), listFrame.first());
    QVERIFY2(lfJump > 0.0 && lfJump <= lfLargest * 1.1, "the last frame does not lead to the first");
}

void tst_Resources::checkBoxStatesDiffer_data()
{
    QTest::addColumn<QString>("strOne");
    QTest::addColumn<QString>("strOther");
    const QStringList listState{
        "normal", "hover", "selected", "selected_hover", "half_selected", "half_selected_hover", "disable"};
    for (int i = 0; i < listState.size(); ++i) {
        for (int j = i + 1; j < listState.size(); ++j) {
            QTest::newRow(qPrintable(listState.at(i) + " / " + listState.at(j)))
                << listState.at(i) << listState.at(j);
        }
    }
}

void tst_Resources::checkBoxStatesDiffer()
{
    QFETCH(QString, strOne);
    QFETCH(QString, strOther);
    const QString strPath = ":/res/Button/checkbox_%1.png";
    // At 14 pixels two states that differ by less could not be told apart.
    QVERIFY(Difference(QImage(strPath.arg(strOne)), QImage(strPath.arg(strOther))) > 4.0);
}

void tst_Resources::selectedAndUnselectedPicturesDiffer_data()
{
    QTest::addColumn<QString>("strGrey");
    QTest::newRow("Label/usb_select.png") << "Label/usb_unselect.png";
    QTest::newRow("Label/allow.png") << "Label/allow_deft.png";
    QTest::newRow("Button/exit_normal.png") << "Button/all_disable.png";
}

// The saturation of the strongest colour.
static int Saturation(const QString& strName)
{
    int nStrongest = 0;
    ForEachPixel(QImage(":/res/" + strName), [&nStrongest](int, int, QRgb rgb) {
        nStrongest = qAlpha(rgb) == 255 ? qMax(nStrongest, QColor(rgb).saturation()) : nStrongest;
    });
    return nStrongest;
}

void tst_Resources::selectedAndUnselectedPicturesDiffer()
{
    QFETCH(QString, strGrey);
    QVERIFY(Saturation(QTest::currentDataTag()) > 150);
    QVERIFY(!QImage(":/res/" + strGrey).isNull());
    QVERIFY(Saturation(strGrey) < 10);
}

// 27 images and 3 animations, each in two sizes, and the style sheet. Translations
// lie beside the executable, not in the bundle.
void tst_Resources::textIsCompressedAndImagesAreNot()
{
    int nFiles = 0;
    for (QDirIterator it(":/res", QDir::Files, QDirIterator::Subdirectories); it.hasNext(); ++nFiles) {
        const QResource file(it.next());
        if (it.fileName() == "TarnwickMacPE.qss") {
            QCOMPARE(file.compressionAlgorithm(), QResource::ZlibCompression);
            QVERIFY(file.size() < file.uncompressedSize());
        } else {
            QVERIFY2(it.fileName().endsWith(".png") || it.fileName().endsWith(".gif"),
                     qPrintable(it.fileName()));
            QVERIFY2(file.compressionAlgorithm() == QResource::NoCompression, qPrintable(it.fileName()));
        }
    }
    QCOMPARE(nFiles, (27 + 3) * 2 + 1);
}

void tst_Resources::cleanupReleasesAndInitRegisters()
{
    const QString strPath = ":/res/TarnwickMacPE.qss";
    QVERIFY2(QFile::exists(strPath), "the bundle registers itself before main runs");

    QCOMPARE(qCleanupResources_tarnwickmacpe(), 1);
    QVERIFY(!QFile::exists(strPath));
    QVERIFY(QImage(":/res/Tip/tips.png").isNull());

    for (int n = 0; n < 2; ++n) {
        QCOMPARE(qInitResources_tarnwickmacpe(), 1);
        QVERIFY(QFile::exists(strPath));
    }
}

QTEST_MAIN(tst_Resources)
#include "tst_Resources.moc"
