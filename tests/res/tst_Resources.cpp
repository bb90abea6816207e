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
enum ENGround
{
    GROUND_SOLID, ///< every pixel is opaque: a strip that is stretched over a widget
    GROUND_CLEAR, ///< the four corners are fully transparent: a shape on any ground
    GROUND_ROUNDED ///< the box fills the image, only the corner pixels let the ground through
};

QString At2x(const QString& path)
{
    return QString(path).replace(QLatin1String(".png"), QLatin1String("@2x.png"));
}

QList<QRgb> Corners(const QImage& image)
{
    const int right = image.width() - 1;
    const int bottom = image.height() - 1;
    return {image.pixel(0, 0), image.pixel(right, 0), image.pixel(0, bottom), image.pixel(right, bottom)};
}

/** Pixels that are covered, an edge pixel counting as the part of it that is. */
double Covered(const QImage& image)
{
    int alpha = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            alpha += qAlpha(image.pixel(x, y));
        }
    }
    return alpha / 255.0;
}

QVector<QImage> Frames(const QString& path)
{
    QImageReader reader(path);
    QVector<QImage> frames;
    for (QImage frame = reader.read(); !frame.isNull(); frame = reader.read()) {
        frames.append(frame.convertToFormat(QImage::Format_ARGB32));
    }
    return frames;
}

/** Mean difference of two pictures of one size per colour channel, 0 to 255. */
double Difference(const QImage& one, const QImage& other)
{
    qint64 sum = 0;
    for (int y = 0; y < one.height(); ++y) {
        for (int x = 0; x < one.width(); ++x) {
            const QRgb a = one.pixel(x, y);
            const QRgb b = other.pixel(x, y);
            sum += qAbs(qRed(a) - qRed(b)) + qAbs(qGreen(a) - qGreen(b)) + qAbs(qBlue(a) - qBlue(b));
        }
    }
    return double(sum) / (3.0 * one.width() * one.height());
}

} // namespace

class tst_Resources : public QObject
{
    Q_OBJECT

private slots:
    void ImageHasItsSize_data();
    void ImageHasItsSize();
    void ImageHasItsDouble_data();
    void ImageHasItsDouble();
    void AnimationLoops_data();
    void AnimationLoops();
    void CheckBoxStatesDiffer_data();
    void CheckBoxStatesDiffer();
    void SelectedAndUnselectedPicturesDiffer_data();
    void SelectedAndUnselectedPicturesDiffer();
    void TextIsCompressedAndImagesAreNot();
    void BundleHoldsNothingElse();
    void CleanupReleasesAndInitRegisters();
};

void tst_Resources::ImageHasItsSize_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QSize>("size");
    QTest::addColumn<int>("ground");

    const auto row = [](const char* name, int width, int height, ENGround ground) {
        QTest::newRow(name) << QStringLiteral(":/res/") + QLatin1String(name) << QSize(width, height)
                            << int(ground);
    };
    row("Button/all_disable.png", 12, 12, GROUND_CLEAR);
    row("Button/exit_normal.png", 12, 12, GROUND_CLEAR);
    row("Button/exit_hover.png", 12, 12, GROUND_CLEAR);
    row("Button/checkbox_normal.png", 14, 14, GROUND_ROUNDED);
    row("Button/checkbox_hover.png", 14, 14, GROUND_ROUNDED);
    row("Button/checkbox_selected.png", 14, 14, GROUND_ROUNDED);
    row("Button/checkbox_selected_hover.png", 14, 14, GROUND_ROUNDED);
    row("Button/checkbox_half_selected.png", 14, 14, GROUND_ROUNDED);
    row("Button/checkbox_half_selected_hover.png", 14, 14, GROUND_ROUNDED);
    row("Button/checkbox_disable.png", 14, 14, GROUND_ROUNDED);
    row("Button/dropdown_open.png", 20, 20, GROUND_CLEAR);
    row("Button/dropdown_collapse.png", 20, 20, GROUND_CLEAR);
    row("Button/filedesc.png", 14, 14, GROUND_CLEAR);
    row("Button/refresh_icon_normal.png", 20, 20, GROUND_CLEAR);
    row("Button/refresh_icon_hover.png", 20, 20, GROUND_CLEAR);
    row("Button/refresh_icon_pressing.png", 20, 20, GROUND_CLEAR);
    row("Label/allow.png", 88, 33, GROUND_CLEAR);
    row("Label/allow_deft.png", 88, 33, GROUND_CLEAR);
    row("Label/usb_select.png", 70, 131, GROUND_CLEAR);
    row("Label/usb_unselect.png", 70, 131, GROUND_CLEAR);
    row("Tip/tips_mark.png", 40, 40, GROUND_CLEAR);
    row("Tip/tips.png", 40, 40, GROUND_CLEAR);
    row("Tip/tips_completed.png", 40, 40, GROUND_CLEAR);
    row("Tip/tips_error40.png", 40, 40, GROUND_CLEAR);
    row("Title/tarnwick_logo_34.png", 34, 34, GROUND_CLEAR);
    row("Title/bg40.png", 30, 40, GROUND_SOLID);
    row("Title/win_title_bg.png", 20, 35, GROUND_SOLID);
}

void tst_Resources::ImageHasItsSize()
{
    QFETCH(QString, path);
    QFETCH(QSize, size);
    QFETCH(int, ground);

    QVERIFY2(QFile::exists(path), qPrintable(path));
    const QImage image(path);
    QCOMPARE(image.size(), size);

    const int all = size.width() * size.height();
    const double covered = Covered(image);
    if (ground == GROUND_SOLID) {
        QCOMPARE(covered, double(all));
        return;
    }
    QVERIFY2(covered > all / 50.0, "there is hardly anything in the picture");
    for (const QRgb corner : Corners(image)) {
        QVERIFY(qAlpha(corner) < 128);
    }
    if (ground == GROUND_CLEAR) {
        QCOMPARE(qAlpha(image.pixel(0, 0)), 0);
    } else {
        QVERIFY2(covered >= all * 0.8, "a box fills its picture");
    }
}

void tst_Resources::ImageHasItsDouble_data() { ImageHasItsSize_data(); }

void tst_Resources::ImageHasItsDouble()
{
    QFETCH(QString, path);
    QFETCH(QSize, size);

    const QImage twice(At2x(path));
    QCOMPARE(twice.size(), size * 2);
    QCOMPARE(QPixmap(At2x(path)).devicePixelRatio(), 2.0);

    // The same drawing, not another picture under the name: scaled down it is the small one.
    const QImage small = QImage(path).convertToFormat(QImage::Format_ARGB32_Premultiplied);
    const QImage shrunk = twice.convertToFormat(QImage::Format_ARGB32_Premultiplied)
                              .scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    QVERIFY2(Difference(small, shrunk) < 4.0, qPrintable(QString::number(Difference(small, shrunk))));
}

void tst_Resources::AnimationLoops_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QSize>("size");
    QTest::addColumn<int>("frameCount");

    QTest::newRow("copy") << QStringLiteral(":/res/Gif/copy.gif") << QSize(247, 146) << 60;
    QTest::newRow("copy, twice the size") << QStringLiteral(":/res/Gif/copy@2x.gif") << QSize(494, 292) << 60;
    QTest::newRow("searching") << QStringLiteral(":/res/Gif/searching.gif") << QSize(40, 40) << 32;
    QTest::newRow("searching, twice the size")
        << QStringLiteral(":/res/Gif/searching@2x.gif") << QSize(80, 80) << 32;
    QTest::newRow("refresh, spelled so") << QStringLiteral(":/res/Gif/refalsh.gif") << QSize(20, 20) << 25;
    QTest::newRow("refresh, twice the size")
        << QStringLiteral(":/res/Gif/refalsh@2x.gif") << QSize(40, 40) << 25;
}

void tst_Resources::AnimationLoops()
{
    QFETCH(QString, path);
    QFETCH(QSize, size);
    QFETCH(int, frameCount);

    QMovie movie(path);
    QVERIFY(movie.isValid());
    QVERIFY(movie.jumpToFrame(0));
    QCOMPARE(movie.loopCount(), -1);

    // The movie's own answer is shortened by the time that it took to decode the frame.
    QImageReader reader(path);
    QVERIFY(reader.canRead());
    QVERIFY(!reader.read().isNull());
    QCOMPARE(reader.nextImageDelay(), 40);

    const QVector<QImage> frames = Frames(path);
    QCOMPARE(frames.size(), frameCount);
    double largestStep = 0.0;
    for (int i = 0; i < frames.size(); ++i) {
        QCOMPARE(frames.at(i).size(), size);
        for (const QRgb corner : Corners(frames.at(i))) {
            QCOMPARE(corner, qRgb(255, 255, 255));
        }
        if (i > 0) {
            const double step = Difference(frames.at(i - 1), frames.at(i));
            QVERIFY2(step > 0.0, "two frames in a row are the same");
            largestStep = qMax(largestStep, step);
        }
    }
    const double jump = Difference(frames.last(), frames.first());
    QVERIFY2(jump > 0.0 && jump <= largestStep * 1.1, "the last frame does not lead to the first");
}

void tst_Resources::CheckBoxStatesDiffer_data()
{
    QTest::addColumn<QString>("one");
    QTest::addColumn<QString>("other");

    const QStringList names = {QStringLiteral("normal"),        QStringLiteral("hover"),
                               QStringLiteral("selected"),      QStringLiteral("selected_hover"),
                               QStringLiteral("half_selected"), QStringLiteral("half_selected_hover"),
                               QStringLiteral("disable")};
    for (int i = 0; i < names.size(); ++i) {
        for (int j = i + 1; j < names.size(); ++j) {
            QTest::newRow(qPrintable(names.at(i) + QStringLiteral(" / ") + names.at(j)))
                << names.at(i) << names.at(j);
        }
    }
}

void tst_Resources::CheckBoxStatesDiffer()
{
    QFETCH(QString, one);
    QFETCH(QString, other);
    const QString path = QStringLiteral(":/res/Button/checkbox_%1.png");
    // At 14 pixels two states that differ by less could not be told apart.
    QVERIFY(Difference(QImage(path.arg(one)), QImage(path.arg(other))) > 4.0);
}

void tst_Resources::SelectedAndUnselectedPicturesDiffer_data()
{
    QTest::addColumn<QString>("coloured");
    QTest::addColumn<QString>("grey");

    QTest::newRow("stick") << QStringLiteral(":/res/Label/usb_select.png")
                           << QStringLiteral(":/res/Label/usb_unselect.png");
    QTest::newRow("arrow") << QStringLiteral(":/res/Label/allow.png")
                           << QStringLiteral(":/res/Label/allow_deft.png");
    QTest::newRow("close") << QStringLiteral(":/res/Button/exit_normal.png")
                           << QStringLiteral(":/res/Button/all_disable.png");
}

void tst_Resources::SelectedAndUnselectedPicturesDiffer()
{
    QFETCH(QString, coloured);
    QFETCH(QString, grey);

    const auto strongest = [](const QImage& image) {
        int saturation = 0;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) {
                const QColor colour = image.pixelColor(x, y);
                saturation = colour.alpha() == 255 ? qMax(saturation, colour.saturation()) : saturation;
            }
        }
        return saturation;
    };
    QVERIFY(strongest(QImage(coloured)) > 150);
    QVERIFY(strongest(QImage(grey)) < 10);
}

void tst_Resources::TextIsCompressedAndImagesAreNot()
{
    const QResource sheet(QStringLiteral(":/res/TarnwickMacPE.qss"));
    QVERIFY(sheet.isValid());
    QCOMPARE(int(sheet.compressionAlgorithm()), int(QResource::ZlibCompression));
    QVERIFY(sheet.size() < sheet.uncompressedSize());

    int images = 0;
    QDirIterator folder(QStringLiteral(":/res"), {QStringLiteral("*.png"), QStringLiteral("*.gif")},
                        QDir::Files, QDirIterator::Subdirectories);
    while (folder.hasNext()) {
        const QResource image(folder.next());
        QVERIFY2(image.compressionAlgorithm() == QResource::NoCompression, qPrintable(image.fileName()));
        ++images;
    }
    QVERIFY(images > 0);
}

void tst_Resources::BundleHoldsNothingElse()
{
    // 27 images and 3 animations, each in two sizes, and the style sheet.
    int files = 0;
    QDirIterator folder(QStringLiteral(":/res"), QDir::Files, QDirIterator::Subdirectories);
    while (folder.hasNext()) {
        const QString path = folder.next();
        QVERIFY2(!path.endsWith(QLatin1String(".qm")),
                 "translations lie beside the executable, not in the bundle");
        ++files;
    }
    QCOMPARE(files, (27 + 3) * 2 + 1);
}

void tst_Resources::CleanupReleasesAndInitRegisters()
{
    const QString path = QStringLiteral(":/res/TarnwickMacPE.qss");
    QVERIFY2(QFile::exists(path), "the bundle registers itself before main runs");

    QCOMPARE(qCleanupResources_tarnwickmacpe(), 1);
    QVERIFY(!QFile::exists(path));
    QVERIFY(QImage(QStringLiteral(":/res/Tip/tips.png")).isNull());

    QCOMPARE(qInitResources_tarnwickmacpe(), 1);
    QVERIFY(QFile::exists(path));
    QCOMPARE(qInitResources_tarnwickmacpe(), 1);
    QVERIFY(QFile::exists(path));
}

QTEST_MAIN(tst_Resources)
#include "tst_Resources.moc"
