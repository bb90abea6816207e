#include "support/CTempTree.h"
#include "tree/CDirDelegate.h"
#include "tree/CDirModel.h"
#include "tree/CDirNode.h"

#include <QApplication>
#include <QFile>
#include <QHelpEvent>
#include <QMouseEvent>
#include <QPaintEngine>
#include <QPainter>
#include <QPixmapCache>
#include <QScopeGuard>
#include <QStandardItemModel>
#include <QTest>
#include <QToolTip>
#include <QTreeView>

// Where a row has its left edge in these tests.
static const int LEFT = 40;
static const int TOP = 10;

/** One row with a tick, a red icon and a name; a second column to try what must not work there. */
class COneRow
{
public:
    explicit COneRow(int nState, const QString& strName = QString())
        : m_model(1, 2)
    {
        QPixmap pixmap(64, 64);
        pixmap.fill(Qt::red);
        m_model.setData(Index(), nState, Qt::CheckStateRole);
        m_model.setData(Index(), strName, Qt::DisplayRole);
        m_model.setData(Index(), QIcon(pixmap), Qt::DecorationRole);
    }

    QModelIndex Index(int nColumn = 0) const { return m_model.index(0, nColumn); }
    int State(int nColumn = 0) const { return Index(nColumn).data(Qt::CheckStateRole).toInt(); }

    QStandardItemModel m_model;
};

static QStyleOptionViewItem Option(int nHeight, QStyle::State state = QStyle::State_None, int nWidth = 300)
{
    QStyleOptionViewItem option;
    option.rect = QRect(LEFT, TOP, nWidth, nHeight);
    option.state = state;
    option.palette = QApplication::palette();
    return option;
}

/** Paints the row on white at `rRatio` pixels to the unit. */
static QImage Painted(const CDirDelegate& delegate, const COneRow& row, const QStyleOptionViewItem& option,
                      qreal rRatio = 1)
{
    QImage image(QSize(400, 100) * rRatio, QImage::Format_RGB32);
    image.setDevicePixelRatio(rRatio);
    image.fill(Qt::white);
    QPainter painter(&image);
    delegate.paint(&painter, option, row.Index());
    return image;
}

/** The smallest rectangle round the pixels that `fnIs` holds for. */
template <typename Predicate> static QRect Bounds(const QImage& image, Predicate fnIs)
{
    QRect rect;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (fnIs(image.pixelColor(x, y))) {
                rect |= QRect(x, y, 1, 1);
            }
        }
    }
    return rect;
}

static QRect RedBounds(const QImage& image)
{
    return Bounds(image, [](const QColor& color) { return color == Qt::red; });
}

/** Bounds of what is neither background nor icon, right of the icon. */
static QRect TextBounds(const QImage& image)
{
    const QRect rect
        = Bounds(image, [](const QColor& color) { return color.lightness() < 160 && color != Qt::red; });
    return rect;
}

static QImage Resource(const QString& strName, const QColor& background)
{
    const QImage picture(":/res/Button/" + strName);
    QImage image(picture.size(), QImage::Format_RGB32);
    image.fill(background);
    QPainter(&image).drawImage(0, 0, picture);
    return image;
}

class tst_CDirDelegate : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init() { QPixmapCache::clear(); }

    void clickBounds_data();
    void clickBounds();
    void clickEvents_data();
    void clickEvents();
    void stateAfterClick_data();
    void stateAfterClick();
    void doubleClickEndsWhereItBegan();
    void secondColumnIsNotTicked();
    void boxPicture_data();
    void boxPicture();
    void boxShowsTheRowBehindItself();
    void boxIsCachedByKey_data();
    void boxIsCachedByKey();
    void boxComesFromTheCache();
    void boxIsMadeAnewForAnotherResolution();
    void verticalOffset_data();
    void verticalOffset();
    void iconPlace_data();
    void iconPlace();
    void iconIsSharpAtTwiceTheResolution();
    void iconInOneSizeOnly_data();
    void iconInOneSizeOnly();
    void iconThatIsNone();
    void textPlace();
    void textColourAndFont();
    void background_data();
    void background();
    void longNameIsElidedInTheMiddle();
    void nameIsShownAsText_data();
    void nameIsShownAsText();
    void secondColumnIsPaintedByTheBase();
    void painterIsLeftAsItWas();
    void size();
    void heightOfNamesWithLineBreaks();
    void toolTip_data();
    void toolTip();
};

void tst_CDirDelegate::initTestCase()
{
    QFile file(":/res/TarnwickMacPE.qss");
    QVERIFY(file.open(QIODevice::ReadOnly));
    qApp->setStyleSheet(QString::fromUtf8(file.readAll()));
}

void tst_CDirDelegate::clickBounds_data()
{
    QTest::addColumn<qreal>("x");
    QTest::addColumn<bool>("ticks");
    QTest::newRow("left of the row") << LEFT - 1.0 << false;
    QTest::newRow("on the left edge") << LEFT + 0.0 << false;
    QTest::newRow("less than half a pixel in") << LEFT + 0.49 << false;
    QTest::newRow("half a pixel in") << LEFT + 0.5 << true;
    QTest::newRow("one in") << LEFT + 1.0 << true;
    QTest::newRow("middle of the box") << LEFT + 7.0 << true;
    QTest::newRow("right of the box") << LEFT + 14.0 << true;
    QTest::newRow("fifteen in") << LEFT + 15.0 << true;
    QTest::newRow("less than fifteen and a half in") << LEFT + 15.49 << true;
    QTest::newRow("fifteen and a half in") << LEFT + 15.5 << false;
    QTest::newRow("sixteen in") << LEFT + 16.0 << false;
    QTest::newRow("on the icon") << LEFT + 25.0 << false;
    QTest::newRow("on the name") << LEFT + 100.0 << false;
}

void tst_CDirDelegate::clickBounds()
{
    QFETCH(qreal, x);
    QFETCH(bool, ticks);
    CDirDelegate delegate;
    for (const QEvent::Type enType : {QEvent::MouseButtonPress, QEvent::MouseButtonDblClick}) {
        COneRow row(Qt::Unchecked);
        QMouseEvent event(enType, QPointF(x, TOP + 1), Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
        QCOMPARE(delegate.editorEvent(&event, &row.m_model, Option(30), row.Index()), ticks);
        QCOMPARE(row.State(), ticks ? 2 : 0);
    }
}

void tst_CDirDelegate::clickEvents_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<int>("button");
    QTest::addColumn<bool>("ticks");
    QTest::newRow("press") << int(QEvent::MouseButtonPress) << int(Qt::LeftButton) << true;
    QTest::newRow("double click") << int(QEvent::MouseButtonDblClick) << int(Qt::LeftButton) << true;
    QTest::newRow("press of the right button")
        << int(QEvent::MouseButtonPress) << int(Qt::RightButton) << true;
    QTest::newRow("release") << int(QEvent::MouseButtonRelease) << int(Qt::LeftButton) << false;
    QTest::newRow("move") << int(QEvent::MouseMove) << int(Qt::NoButton) << false;
}

void tst_CDirDelegate::clickEvents()
{
    QFETCH(int, type);
    QFETCH(int, button);
    QFETCH(bool, ticks);
    CDirDelegate delegate;
    COneRow row(Qt::Unchecked);
    const auto enButton = Qt::MouseButton(button);
    QMouseEvent event(QEvent::Type(type), QPointF(LEFT + 7, TOP + 15), enButton, enButton, Qt::NoModifier);
    QCOMPARE(delegate.editorEvent(&event, &row.m_model, Option(30), row.Index()), ticks);
    QCOMPARE(row.State(), ticks ? 2 : 0);
}

void tst_CDirDelegate::stateAfterClick_data()
{
    QTest::addColumn<int>("before");
    QTest::addColumn<int>("after");
    QTest::newRow("unchecked") << 0 << 2;
    QTest::newRow("partially checked") << 1 << 2;
    QTest::newRow("checked") << 2 << 0;
    QTest::newRow("no state at all") << 3 << 0;
    QTest::newRow("negative") << -1 << 0;
}

void tst_CDirDelegate::stateAfterClick()
{
    QFETCH(int, before);
    CDirDelegate delegate;
    COneRow row(before);
    QMouseEvent event(QEvent::MouseButtonPress, QPointF(LEFT + 7, TOP + 15), Qt::LeftButton, Qt::LeftButton,
                      Qt::NoModifier);
    QVERIFY(delegate.editorEvent(&event, &row.m_model, Option(30), row.Index()));
    QTEST(row.State(), "after");
}

void tst_CDirDelegate::doubleClickEndsWhereItBegan()
{
    CDirDelegate delegate;
    COneRow row(Qt::Unchecked);
    QList<int> listState;
    for (const QEvent::Type enType : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease,
                                      QEvent::MouseButtonDblClick, QEvent::MouseButtonRelease}) {
        QMouseEvent event(enType, QPointF(LEFT + 7, TOP + 15), Qt::LeftButton, Qt::LeftButton,
                          Qt::NoModifier);
        delegate.editorEvent(&event, &row.m_model, Option(30), row.Index());
        listState += row.State();
    }
    QCOMPARE(listState, QList<int>({2, 2, 0, 0}));
}

void tst_CDirDelegate::secondColumnIsNotTicked()
{
    CDirDelegate delegate;
    COneRow row(Qt::Unchecked);
    row.m_model.setData(row.Index(1), 0, Qt::CheckStateRole);
    QMouseEvent event(QEvent::MouseButtonPress, QPointF(LEFT + 7, TOP + 15), Qt::LeftButton, Qt::LeftButton,
                      Qt::NoModifier);
    QVERIFY(!delegate.editorEvent(&event, &row.m_model, Option(30), row.Index(1)));
    QCOMPARE(row.State(1), 0);
}

void tst_CDirDelegate::boxPicture_data()
{
    QTest::addColumn<int>("state");
    QTest::addColumn<bool>("selected");
    QTest::addColumn<QString>("picture");
    QTest::newRow("unchecked") << 0 << false << "checkbox_normal.png";
    QTest::newRow("partially checked") << 1 << false << "checkbox_half_selected.png";
    QTest::newRow("checked") << 2 << false << "checkbox_selected.png";
    QTest::newRow("unchecked, selected") << 0 << true << "checkbox_normal.png";
    QTest::newRow("partially checked, selected") << 1 << true << "checkbox_half_selected.png";
    QTest::newRow("checked, selected") << 2 << true << "checkbox_selected.png";
}

void tst_CDirDelegate::boxPicture()
{
    QFETCH(int, state);
    QFETCH(bool, selected);
    QFETCH(QString, picture);
    CDirDelegate delegate;
    const COneRow row(state);
    const QStyle::State enState = selected ? QStyle::State_Selected : QStyle::State_None;
    const QImage image = Painted(delegate, row, Option(30, enState));
    const QImage expected = Resource(picture, selected ? QColor("#fff2e7") : QColor(Qt::white));
    QCOMPARE(expected.size(), QSize(14, 14));
    QCOMPARE(image.copy(LEFT, TOP + 8, 14, 14), expected);
}

void tst_CDirDelegate::boxShowsTheRowBehindItself()
{
    // Without the stylesheet, which sees to it too, the colour of windows would fill the corners.
    const QString strSheet = qApp->styleSheet();
    const QPalette palette = QApplication::palette();
    const auto guard = qScopeGuard([&] {
        QApplication::setPalette(palette);
        qApp->setStyleSheet(strSheet);
    });
    qApp->setStyleSheet(QString());
    QPalette coloured = palette;
    coloured.setColor(QPalette::Window, Qt::magenta);
    QApplication::setPalette(coloured);
    CDirDelegate delegate;
    const QImage image = Painted(delegate, COneRow(Qt::Unchecked), Option(30));
    const QImage box = image.copy(LEFT, TOP + 8, 14, 14);
    QCOMPARE(Bounds(box, [](const QColor& color) { return color.hsvSaturation() > 60; }), QRect());
    QVERIFY(!Bounds(box, [](const QColor& color) { return color != Qt::white; }).isEmpty());
}

void tst_CDirDelegate::boxIsCachedByKey_data()
{
    QTest::addColumn<int>("state");
    QTest::addColumn<int>("style");
    QTest::addColumn<QString>("key");
    QTest::newRow("unchecked") << 0 << int(QStyle::State_None) << "CHECKBOX:0.0";
    QTest::newRow("partially checked") << 1 << int(QStyle::State_None) << "CHECKBOX:0.1";
    QTest::newRow("checked") << 2 << int(QStyle::State_None) << "CHECKBOX:0.2";
    QTest::newRow("selected") << 2 << int(QStyle::State_Selected) << "CHECKBOX:32768.2";
    QTest::newRow("under the pointer") << 1 << int(QStyle::State_MouseOver) << "CHECKBOX:0.1";
    QTest::newRow("selected and more")
        << 0 << int(QStyle::State_Selected | QStyle::State_MouseOver | QStyle::State_Enabled)
        << "CHECKBOX:32768.0";
}

void tst_CDirDelegate::boxIsCachedByKey()
{
    QFETCH(int, state);
    QFETCH(int, style);
    QFETCH(QString, key);
    CDirDelegate delegate;
    const COneRow row(state);
    QPixmap pixmap;
    QVERIFY(!QPixmapCache::find(key, &pixmap));
    Painted(delegate, row, Option(30, QStyle::State(style)));
    QVERIFY(QPixmapCache::find(key, &pixmap));
    QCOMPARE(pixmap.size(), QSize(14, 14));
}

void tst_CDirDelegate::boxComesFromTheCache()
{
    QPixmap pixmap(14, 14);
    pixmap.fill(Qt::green);
    QPixmapCache::insert("CHECKBOX:0.2", pixmap);
    CDirDelegate delegate;
    const COneRow row(Qt::Checked);
    const QImage image = Painted(delegate, row, Option(30));
    QCOMPARE(Bounds(image, [](const QColor& color) { return color == Qt::green; }),
             QRect(LEFT, TOP + 8, 14, 14));
}

void tst_CDirDelegate::boxIsMadeAnewForAnotherResolution()
{
    CDirDelegate delegate;
    const COneRow row(Qt::Checked);
    for (const qreal rRatio : {1.0, 2.0, 1.5, 1.0}) {
        Painted(delegate, row, Option(30), rRatio);
        QPixmap pixmap;
        QVERIFY(QPixmapCache::find("CHECKBOX:0.2", &pixmap));
        QCOMPARE(pixmap.devicePixelRatioF(), rRatio);
        QCOMPARE(pixmap.size(), QSize(14, 14) * rRatio);
    }
}

void tst_CDirDelegate::verticalOffset_data()
{
    QTest::addColumn<int>("height");
    QTest::addColumn<int>("offset");
    QTest::newRow("10") << 10 << 0;
    QTest::newRow("13") << 13 << 0;
    QTest::newRow("14") << 14 << 0;
    QTest::newRow("15") << 15 << 0;
    QTest::newRow("16") << 16 << 1;
    QTest::newRow("17") << 17 << 1;
    QTest::newRow("30") << 30 << 8;
    QTest::newRow("31") << 31 << 8;
}

void tst_CDirDelegate::verticalOffset()
{
    QFETCH(int, height);
    QFETCH(int, offset);
    QPixmap pixmap(14, 14);
    pixmap.fill(Qt::green);
    QPixmapCache::insert("CHECKBOX:0.0", pixmap);
    CDirDelegate delegate;
    const COneRow row(Qt::Unchecked);
    const QImage image = Painted(delegate, row, Option(height));
    const QRect box = Bounds(image, [](const QColor& color) { return color == Qt::green; });
    QCOMPARE(box, QRect(LEFT, TOP + offset, 14, 14));
    QCOMPARE(RedBounds(image).top(), TOP + offset);
}

void tst_CDirDelegate::iconPlace_data()
{
    QTest::addColumn<qreal>("ratio");
    QTest::newRow("1") << 1.0;
    QTest::newRow("2") << 2.0;
}

void tst_CDirDelegate::iconPlace()
{
    QFETCH(qreal, ratio);
    CDirDelegate delegate;
    const COneRow row(Qt::Unchecked);
    const QImage image = Painted(delegate, row, Option(30), ratio);
    // The box's last pixel is 13 right of the edge, the icon begins 6 after it.
    const QRect icon(LEFT + 13 + 6, TOP + 8, 16, 16);
    QCOMPARE(RedBounds(image), QRect(icon.topLeft() * ratio, icon.size() * ratio));
}

void tst_CDirDelegate::iconIsSharpAtTwiceTheResolution()
{
    QImage stripes(32, 32, QImage::Format_RGB32);
    for (int x = 0; x < 32; ++x) {
        for (int y = 0; y < 32; ++y) {
            stripes.setPixelColor(x, y, x % 2 ? Qt::red : Qt::blue);
        }
    }
    COneRow row(Qt::Unchecked);
    row.m_model.setData(row.Index(), QIcon(QPixmap::fromImage(stripes)), Qt::DecorationRole);
    CDirDelegate delegate;
    QImage image = Painted(delegate, row, Option(30), 2).copy(2 * (LEFT + 19), 2 * (TOP + 8), 32, 32);
    image.setDevicePixelRatio(1);
    QCOMPARE(image, stripes);
}

void tst_CDirDelegate::iconInOneSizeOnly_data()
{
    QTest::addColumn<int>("side");
    QTest::addColumn<qreal>("ratio");
    QTest::addColumn<int>("shown");
    QTest::newRow("16 on a plain screen") << 16 << 1.0 << 16;
    QTest::newRow("16 on twice the resolution") << 16 << 2.0 << 32;
    QTest::newRow("16 on one and a half") << 16 << 1.5 << 24;
    QTest::newRow("8 on a plain screen") << 8 << 1.0 << 8;
    QTest::newRow("48 on a plain screen") << 48 << 1.0 << 16;
    QTest::newRow("48 on twice the resolution") << 48 << 2.0 << 32;
}

void tst_CDirDelegate::iconInOneSizeOnly()
{
    QFETCH(int, side);
    QFETCH(qreal, ratio);
    CDirDelegate delegate;
    COneRow row(Qt::Unchecked);
    QPixmap pixmap(side, side);
    pixmap.fill(Qt::red);
    row.m_model.setData(row.Index(), QIcon(pixmap), Qt::DecorationRole);
    const QImage image = Painted(delegate, row, Option(30), ratio);
    // The edge of a picture that is drawn larger may be a little paler.
    const QRect icon
        = Bounds(image, [](const QColor& color) { return color.red() > 250 && color.green() < 130; });
    QFETCH(int, shown);
    QVERIFY2(qAbs(icon.width() - shown) <= 1, qPrintable(QString::number(icon.width())));
    QVERIFY2(qAbs(icon.height() - shown) <= 1, qPrintable(QString::number(icon.height())));
}

void tst_CDirDelegate::iconThatIsNone()
{
    CDirDelegate delegate;
    COneRow row(Qt::Unchecked, "name");
    row.m_model.setData(row.Index(), QStringLiteral("no icon"), Qt::DecorationRole);
    const QImage image = Painted(delegate, row, Option(30));
    QCOMPARE(RedBounds(image), QRect());
    QVERIFY(!TextBounds(image).isEmpty());
}

void tst_CDirDelegate::textPlace()
{
    CDirDelegate delegate;
    const COneRow row(Qt::Unchecked, QString(60, 'H'));
    const QRect text = TextBounds(Painted(delegate, row, Option(30)).copy(LEFT + 36, 0, 324, 100));
    QVERIFY(text.isValid());
    // 13 for the box's last pixel and 31 more, seen from the cut at 36; letters keep a pixel or two to their
    // left.
    QVERIFY2(text.left() >= 13 + 31 - 36, qPrintable(QString::number(text.left())));
    QVERIFY2(text.left() <= 13 + 31 - 36 + 3, qPrintable(QString::number(text.left())));
    QVERIFY2(text.right() < 300 - 36, qPrintable(QString::number(text.right())));
    // In the middle of the row's height.
    QVERIFY2(qAbs(text.center().y() - (TOP + 15)) <= 3, qPrintable(QString::number(text.center().y())));
}

/** Notes the font and the pen of the text that is drawn. */
class CTextWatch : public QPaintEngine
{
public:
    bool begin(QPaintDevice*) override { return true; }
    bool end() override { return true; }
    void drawPixmap(const QRectF&, const QPixmap&, const QRectF&) override { }
    void updateState(const QPaintEngineState& state) override
    {
        if (state.state() & DirtyPen) {
            m_pen = state.pen();
        }
    }
    void drawTextItem(const QPointF&, const QTextItem& item) override
    {
        m_strText += item.text();
        m_font = item.font();
        m_colour = m_pen.color();
    }
    Type type() const override { return User; }

    QString m_strText;
    QFont m_font;
    QColor m_colour;

private:
    QPen m_pen;
};

/** A device that draws nothing. */
class CWatchedDevice : public QPaintDevice
{
public:
    QPaintEngine* paintEngine() const override { return &m_engine; }

    mutable CTextWatch m_engine;

protected:
    int metric(PaintDeviceMetric enMetric) const override
    {
        switch (enMetric) {
        case PdmWidth:
        case PdmHeight:
            return 400;
        case PdmDevicePixelRatio:
            return 1;
        case PdmDevicePixelRatioScaled:
            return int(devicePixelRatioFScale());
        case PdmDpiX:
        case PdmDpiY:
        case PdmPhysicalDpiX:
        case PdmPhysicalDpiY:
            return 96;
        default:
            return 1;
        }
    }
};

static CTextWatch* PaintWatched(CWatchedDevice& device, const COneRow& row, int nWidth)
{
    const CDirDelegate delegate;
    QPainter painter(&device);
    delegate.paint(&painter, Option(30, QStyle::State_None, nWidth), row.Index());
    return &device.m_engine;
}

void tst_CDirDelegate::textColourAndFont()
{
    CWatchedDevice device;
    const COneRow row(Qt::Unchecked, "name");
    const CTextWatch* pWatch = PaintWatched(device, row, 300);
    QCOMPARE(pWatch->m_strText, QString("name"));
    QCOMPARE(pWatch->m_font.family(), QString("Avenir"));
    QCOMPARE(pWatch->m_colour, QColor("#484848"));
}

void tst_CDirDelegate::background_data()
{
    QTest::addColumn<int>("style");
    QTest::addColumn<QColor>("colour");
    QTest::newRow("plain") << int(QStyle::State_Enabled) << QColor(Qt::white);
    QTest::newRow("selected") << int(QStyle::State_Selected) << QColor("#fff2e7");
    QTest::newRow("under the pointer") << int(QStyle::State_MouseOver) << QColor("#fff2e7");
    QTest::newRow("both") << int(QStyle::State_Selected | QStyle::State_MouseOver) << QColor("#fff2e7");
}

void tst_CDirDelegate::background()
{
    QFETCH(int, style);
    QFETCH(QColor, colour);
    CDirDelegate delegate;
    const COneRow row(Qt::Unchecked);
    const QImage image = Painted(delegate, row, Option(30, QStyle::State(style)));
    const QRect filled = Bounds(image, [](const QColor& c) { return c == QColor("#fff2e7"); });
    QCOMPARE(filled, colour == Qt::white ? QRect() : QRect(LEFT, TOP, 300, 30));
    QCOMPARE(image.pixelColor(LEFT + 200, TOP + 2), colour);
}

void tst_CDirDelegate::longNameIsElidedInTheMiddle()
{
    const QString strName = "Beginning " + QString(200, 'x') + " the end.txt";
    CWatchedDevice device;
    const COneRow row(Qt::Unchecked, strName);
    const QString strShown = PaintWatched(device, row, 300)->m_strText;
    QVERIFY2(strShown.startsWith("Beg"), qPrintable(strShown));
    QVERIFY2(strShown.endsWith("end.txt"), qPrintable(strShown));
    QVERIFY2(strShown.contains(QChar(0x2026)), qPrintable(strShown));
    QVERIFY(strShown.size() < strName.size());
}

void tst_CDirDelegate::nameIsShownAsText_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("shown");
    QTest::newRow("html") << "<b>bold</b>"
                          << "<b>bold</b>";
    QTest::newRow("percent") << "%1 %2"
                             << "%1 %2";
    QTest::newRow("ampersand") << "a & &b"
                               << "a & &b";
    QTest::newRow("line break") << "two\nlines"
                                << "two lines";
    QTest::newRow("carriage return") << "two\rlines"
                                     << "two lines";
    QTest::newRow("line separator") << "two" + QString(QChar::LineSeparator) + "lines"
                                    << "two lines";
    QTest::newRow("leading dash") << "-rf"
                                  << "-rf";
}

void tst_CDirDelegate::nameIsShownAsText()
{
    QFETCH(QString, name);
    CWatchedDevice device;
    const COneRow row(Qt::Unchecked, name);
    QTEST(PaintWatched(device, row, 300)->m_strText, "shown");
}

void tst_CDirDelegate::secondColumnIsPaintedByTheBase()
{
    COneRow row(Qt::Unchecked);
    row.m_model.setData(row.Index(1), QBrush(Qt::blue), Qt::BackgroundRole);
    CDirDelegate delegate;
    QImage image(400, 100, QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    QStyleOptionViewItem option = Option(30, QStyle::State_MouseOver);
    delegate.paint(&painter, option, row.Index(1));
    painter.end();
    QPixmap pixmap;
    QVERIFY(!QPixmapCache::find("CHECKBOX:0.0", &pixmap));
    QVERIFY(Bounds(image, [](const QColor& color) { return color == QColor("#fff2e7"); }).isEmpty());
}

void tst_CDirDelegate::painterIsLeftAsItWas()
{
    CDirDelegate delegate;
    const COneRow row(Qt::Checked, "name");
    QImage image(400, 100, QImage::Format_RGB32);
    QPainter painter(&image);
    painter.setPen(Qt::cyan);
    painter.setFont(QFont("Monospace", 33));
    delegate.paint(&painter, Option(30), row.Index());
    QCOMPARE(painter.pen().color(), QColor(Qt::cyan));
    QCOMPARE(painter.font().pointSize(), 33);
}

void tst_CDirDelegate::size()
{
    CDirDelegate delegate;
    QStyledItemDelegate base;
    const COneRow small(Qt::Unchecked, "x");
    const COneRow large(Qt::Unchecked, QString(200, 'W'));
    const QStyleOptionViewItem option = Option(30);
    QCOMPARE(delegate.sizeHint(option, small.Index()).width(), 450);
    QCOMPARE(delegate.sizeHint(option, small.Index()).height(),
             base.sizeHint(option, small.Index()).height());
    QVERIFY(base.sizeHint(option, large.Index()).width() > 450);
    QCOMPARE(delegate.sizeHint(option, large.Index()), base.sizeHint(option, large.Index()));
}

void tst_CDirDelegate::heightOfNamesWithLineBreaks()
{
    CDirDelegate delegate;
    const COneRow plain(Qt::Unchecked, "one two three");
    const COneRow broken(Qt::Unchecked, "one\ntwo\nthree");
    QCOMPARE(delegate.sizeHint(Option(30), broken.Index()), delegate.sizeHint(Option(30), plain.Index()));
}

void tst_CDirDelegate::toolTip_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("inTip");
    QTest::newRow("plain") << "plain name"
                           << "/plain name</p>";
    QTest::newRow("html") << "<b>x<img src=y>"
                          << "/&lt;b&gt;x&lt;img src=y&gt;</p>";
    QTest::newRow("entity") << "a&amp;b"
                            << "/a&amp;amp;b</p>";
    QTest::newRow("line break") << "two\nlines"
                                << "/two\nlines</p>";
}

void tst_CDirDelegate::toolTip()
{
    QFETCH(QString, name);
    QFETCH(QString, inTip);
    CTempTree tree;
    tree.Write(name);
    CDirModel model;
    model.Parse(tree.Path());
    model.LoadGrandChild(QModelIndex());
    const QModelIndex index = model.index(0, 0, model.index(0, 0));
    CDirDelegate delegate;
    QTreeView view;
    view.setModel(&model);
    view.expandAll();
    view.resize(400, 200);
    view.show();
    QVERIFY(QTest::qWaitForWindowExposed(&view));
    const QPoint pos = view.visualRect(index).center();
    QHelpEvent event(QEvent::ToolTip, pos, view.viewport()->mapToGlobal(pos));
    QVERIFY(delegate.helpEvent(&event, &view, Option(30), index));
    QCOMPARE(QToolTip::text(), "<p style='white-space:pre'>" + tree.Path().toHtmlEscaped() + inTip);
    QToolTip::hideText();
}

QTEST_MAIN(tst_CDirDelegate)
#include "tst_CDirDelegate.moc"
