#include "support/CTempTree.h"
#include "support/Widgets.h"
#include "tree/CDirDelegate.h"
#include "tree/CDirModel.h"

#include <QApplication>
#include <QHelpEvent>
#include <QMouseEvent>
#include <QPaintEngine>
#include <QPainter>
#include <QPixmapCache>
#include <QScopeGuard>
#include <QStandardItemModel>
#include <QToolTip>
#include <QTreeView>

#include <memory>

// Where a row has its left edge in these tests.
static const int LEFT = 40;
static const int TOP = 10;

static QPixmap Filled(const QSize& size, const QColor& color)
{
    QPixmap pixmap(size);
    pixmap.fill(color);
    return pixmap;
}

/** One row with a tick, a red icon and a name; a second column to try what must not work there. */
class COneRow
{
public:
    explicit COneRow(int nState, const QString& strName = QString())
        : m_model(1, 2)
    {
        m_model.setData(Index(), nState, Qt::CheckStateRole);
        m_model.setData(Index(), strName, Qt::DisplayRole);
        SetIcon(Filled(QSize(64, 64), Qt::red));
    }

    void SetIcon(const QPixmap& pixmap) { m_model.setData(Index(), QIcon(pixmap), Qt::DecorationRole); }
    QModelIndex Index(int nColumn = 0) const { return m_model.index(0, nColumn); }
    int State(int nColumn = 0) const { return Index(nColumn).data(Qt::CheckStateRole).toInt(); }

    QStandardItemModel m_model;
};

static QStyleOptionViewItem Option(int nHeight = 30, QStyle::State state = QStyle::State_None)
{
    QStyleOptionViewItem option;
    option.rect = QRect(LEFT, TOP, 300, nHeight);
    option.state = state;
    option.palette = QApplication::palette();
    return option;
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

static QRect BoundsOf(const QImage& image, const QColor& color)
{
    return Bounds(image, [&color](const QColor& pixel) { return pixel == color; });
}

/** Bounds of what is neither background nor icon. */
static QRect TextBounds(const QImage& image)
{
    return Bounds(image, [](const QColor& color) { return color.lightness() < 160 && color != Qt::red; });
}

static QImage Resource(const QString& strName, const QColor& background)
{
    const QImage picture(":/res/Button/" + strName);
    QImage image(picture.size(), QImage::Format_RGB32);
    image.fill(background);
    QPainter(&image).drawImage(0, 0, picture);
    return image;
}

/** Notes the text that is drawn, with its font and colour. */
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
class CWatchedDevice : public QImage
{
public:
    CWatchedDevice()
        : QImage(400, 100, QImage::Format_RGB32)
    {
    }
    QPaintEngine* paintEngine() const override { return &m_engine; }

    mutable CTextWatch m_engine;
};

class tst_CDirDelegate : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { qApp->setStyleSheet(ProgramSheet()); }
    void init();

    void clickBounds_data();
    void clickBounds();
    void stateAfterClicks_data();
    void stateAfterClicks();
    void boxAndGround_data();
    void boxAndGround();
    void boxShowsTheRowBehindItself();
    void boxIsMadeAnewForAnotherResolution();
    void verticalOffset_data();
    void verticalOffset();
    void iconPlaceAndSize_data();
    void iconPlaceAndSize();
    void iconIsSharpAtTwiceTheResolution();
    void iconThatIsNone();
    void textPlace();
    void nameIsShownAsText_data();
    void nameIsShownAsText();
    void longNameIsElidedInTheMiddle();
    void secondColumnIsTheBases();
    void painterIsLeftAsItWas();
    void size();
    void toolTip_data();
    void toolTip();

private:
    bool Send(COneRow& row, QEvent::Type enType, qreal rX, Qt::MouseButton enButton = Qt::LeftButton,
              int nColumn = 0);
    QImage Painted(const COneRow& row, const QStyleOptionViewItem& option = Option(), qreal rRatio = 1,
                   int nColumn = 0);
    /** What the row draws of its name. */
    std::unique_ptr<CWatchedDevice> Watched(const QString& strName);

    std::unique_ptr<CDirDelegate> m_pDelegate;
};

void tst_CDirDelegate::init()
{
    QPixmapCache::clear();
    m_pDelegate = std::make_unique<CDirDelegate>();
}

bool tst_CDirDelegate::Send(COneRow& row, QEvent::Type enType, qreal rX, Qt::MouseButton enButton,
                            int nColumn)
{
    QMouseEvent event(enType, QPointF(rX, TOP + 1), enButton, enButton, Qt::NoModifier);
    return m_pDelegate->editorEvent(&event, &row.m_model, Option(), row.Index(nColumn));
}

/** Paints the row on white at `rRatio` pixels to the unit. */
QImage tst_CDirDelegate::Painted(const COneRow& row, const QStyleOptionViewItem& option, qreal rRatio,
                                 int nColumn)
{
    QImage image(QSize(400, 100) * rRatio, QImage::Format_RGB32);
    image.setDevicePixelRatio(rRatio);
    image.fill(Qt::white);
    QPainter painter(&image);
    m_pDelegate->paint(&painter, option, row.Index(nColumn));
    return image;
}

std::unique_ptr<CWatchedDevice> tst_CDirDelegate::Watched(const QString& strName)
{
    auto pDevice = std::make_unique<CWatchedDevice>();
    const COneRow row(Qt::Unchecked, strName);
    QPainter painter(pDevice.get());
    m_pDelegate->paint(&painter, Option(), row.Index());
    return pDevice;
}

void tst_CDirDelegate::clickBounds_data()
{
    QTest::addColumn<qreal>("rX");
    QTest::addColumn<bool>("bTicks");
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
    QFETCH(qreal, rX);
    QFETCH(bool, bTicks);
    for (const QEvent::Type enType : {QEvent::MouseButtonPress, QEvent::MouseButtonDblClick}) {
        for (const Qt::MouseButton enButton : {Qt::LeftButton, Qt::RightButton}) {
            COneRow row(Qt::Unchecked);
            QCOMPARE(Send(row, enType, rX, enButton), bTicks);
            QCOMPARE(row.State(), bTicks ? 2 : 0);
        }
    }
    COneRow row(Qt::Unchecked);
    QVERIFY(!Send(row, QEvent::MouseButtonRelease, rX));
    QVERIFY(!Send(row, QEvent::MouseMove, rX, Qt::NoButton));
    QCOMPARE(row.State(), 0);
}

void tst_CDirDelegate::stateAfterClicks_data()
{
    QTest::addColumn<int>("nBefore");
    QTest::addColumn<int>("nAfter");
    QTest::newRow("unchecked") << 0 << 2;
    QTest::newRow("partially checked") << 1 << 2;
    QTest::newRow("checked") << 2 << 0;
    QTest::newRow("no state at all") << 3 << 0;
    QTest::newRow("negative") << -1 << 0;
}

void tst_CDirDelegate::stateAfterClicks()
{
    QFETCH(int, nBefore);
    QFETCH(int, nAfter);
    COneRow row(nBefore);
    QVERIFY(Send(row, QEvent::MouseButtonPress, LEFT + 7));
    QCOMPARE(row.State(), nAfter);
    // A double click sends both and so ends where it began.
    QVERIFY(Send(row, QEvent::MouseButtonDblClick, LEFT + 7));
    QCOMPARE(row.State(), 2 - nAfter);
}

void tst_CDirDelegate::boxAndGround_data()
{
    QTest::addColumn<int>("nState");
    QTest::addColumn<int>("nStyle");
    QTest::addColumn<QString>("strPicture");
    QTest::addColumn<QString>("strKey");
    const char* const pszPicture[] = {"normal", "half_selected", "selected"};
    const auto fnRows = [&](const char* pszName, QStyle::State state, const char* pszSelected) {
        for (int nState = 0; nState <= 2; ++nState) {
            QTest::addRow("%s, %d", pszName, nState)
                << nState << int(state) << QString("checkbox_%1.png").arg(pszPicture[nState])
                << QString("CHECKBOX:%1.%2").arg(pszSelected).arg(nState);
        }
    };
    fnRows("plain", QStyle::State_Enabled, "0");
    fnRows("selected", QStyle::State_Selected, "32768");
    fnRows("under the pointer", QStyle::State_MouseOver, "0");
    fnRows("both", QStyle::State_Selected | QStyle::State_MouseOver | QStyle::State_Enabled, "32768");
}

void tst_CDirDelegate::boxAndGround()
{
    QFETCH(int, nState);
    QFETCH(int, nStyle);
    QFETCH(QString, strPicture);
    QFETCH(QString, strKey);
    const bool bPlain = nStyle == QStyle::State_Enabled;
    QPixmap pixmap;
    QVERIFY(!QPixmapCache::find(strKey, &pixmap));
    const QImage image = Painted(COneRow(nState), Option(30, QStyle::State(nStyle)));
    QCOMPARE(BoundsOf(image, "#fff2e7"), bPlain ? QRect() : QRect(LEFT, TOP, 300, 30));
    QCOMPARE(image.pixelColor(LEFT + 200, TOP + 2), QColor(bPlain ? "#ffffff" : "#fff2e7"));
    QCOMPARE(image.copy(LEFT, TOP + 8, 14, 14), Resource(strPicture, bPlain ? "#ffffff" : "#fff2e7"));
    QVERIFY(QPixmapCache::find(strKey, &pixmap));
    QCOMPARE(pixmap.size(), QSize(14, 14));
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
    m_pDelegate = std::make_unique<CDirDelegate>();
    const QImage box = Painted(COneRow(Qt::Unchecked)).copy(LEFT, TOP + 8, 14, 14);
    QCOMPARE(Bounds(box, [](const QColor& color) { return color.hsvSaturation() > 60; }), QRect());
    QVERIFY(!Bounds(box, [](const QColor& color) { return color != Qt::white; }).isEmpty());
}

void tst_CDirDelegate::boxIsMadeAnewForAnotherResolution()
{
    for (const qreal rRatio : {1.0, 2.0, 1.5, 1.0}) {
        Painted(COneRow(Qt::Checked), Option(), rRatio);
        QPixmap pixmap;
        QVERIFY(QPixmapCache::find("CHECKBOX:0.2", &pixmap));
        QCOMPARE(pixmap.devicePixelRatioF(), rRatio);
        QCOMPARE(pixmap.size(), QSize(14, 14) * rRatio);
    }
}

void tst_CDirDelegate::verticalOffset_data()
{
    QTest::addColumn<int>("nHeight");
    QTest::addColumn<int>("nOffset");
    using STPlace = std::pair<int, int>;
    for (const auto& [nHeight, nOffset] : {STPlace(10, 0), STPlace(13, 0), STPlace(14, 0), STPlace(15, 0),
                                           STPlace(16, 1), STPlace(17, 1), STPlace(30, 8), STPlace(31, 8)}) {
        QTest::addRow("%d", nHeight) << nHeight << nOffset;
    }
}

void tst_CDirDelegate::verticalOffset()
{
    QFETCH(int, nHeight);
    QFETCH(int, nOffset);
    // What is in the cache is drawn, not the box anew.
    QPixmapCache::insert("CHECKBOX:0.0", Filled(QSize(14, 14), Qt::green));
    const QImage image = Painted(COneRow(Qt::Unchecked), Option(nHeight));
    QCOMPARE(BoundsOf(image, Qt::green), QRect(LEFT, TOP + nOffset, 14, 14));
    QCOMPARE(BoundsOf(image, Qt::red).top(), TOP + nOffset);
}

void tst_CDirDelegate::iconPlaceAndSize_data()
{
    QTest::addColumn<int>("nSide");
    QTest::addColumn<qreal>("rRatio");
    QTest::addColumn<int>("nShown");
    QTest::newRow("16 on a plain screen") << 16 << 1.0 << 16;
    QTest::newRow("16 on twice the resolution") << 16 << 2.0 << 32;
    QTest::newRow("16 on one and a half") << 16 << 1.5 << 24;
    QTest::newRow("8 on a plain screen") << 8 << 1.0 << 8;
    QTest::newRow("48 on a plain screen") << 48 << 1.0 << 16;
    QTest::newRow("48 on twice the resolution") << 48 << 2.0 << 32;
    QTest::newRow("64 on a plain screen") << 64 << 1.0 << 16;
    QTest::newRow("64 on twice the resolution") << 64 << 2.0 << 32;
}

void tst_CDirDelegate::iconPlaceAndSize()
{
    QFETCH(int, nSide);
    QFETCH(qreal, rRatio);
    QFETCH(int, nShown);
    COneRow row(Qt::Unchecked);
    row.SetIcon(Filled(QSize(nSide, nSide), Qt::red));
    const QRect icon = BoundsOf(Painted(row, Option(), rRatio), Qt::red);
    // The box's last pixel is 13 right of the edge, the icon begins 6 after it.
    const QRect expected(QPoint(LEFT + 13 + 6, TOP + 8) * rRatio, QSize(nShown, nShown));
    // The edge of a picture that is drawn larger may be a little paler.
    const int nPale = nShown > nSide ? 1 : 0;
    const std::unique_ptr<char[]> pszIcon(QTest::toString(icon));
    QVERIFY2(expected.adjusted(0, 0, nPale, nPale).contains(icon), pszIcon.get());
    QVERIFY2(icon.contains(expected.adjusted(nPale, nPale, -nPale, -nPale)), pszIcon.get());
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
    row.SetIcon(QPixmap::fromImage(stripes));
    QImage image = Painted(row, Option(), 2).copy(2 * (LEFT + 19), 2 * (TOP + 8), 32, 32);
    image.setDevicePixelRatio(1);
    QCOMPARE(image, stripes);
}

void tst_CDirDelegate::iconThatIsNone()
{
    COneRow row(Qt::Unchecked, "name");
    row.m_model.setData(row.Index(), "no icon", Qt::DecorationRole);
    const QImage image = Painted(row);
    QCOMPARE(BoundsOf(image, Qt::red), QRect());
    QVERIFY(!TextBounds(image).isEmpty());
}

void tst_CDirDelegate::textPlace()
{
    const COneRow row(Qt::Unchecked, QString(60, 'H'));
    const QRect text = TextBounds(Painted(row).copy(LEFT + 36, 0, 324, 100)).translated(LEFT + 36, 0);
    // 13 for the box's last pixel and 31 more; letters keep a pixel or two to their left.
    const int nLeft = LEFT + 13 + 31;
    QVERIFY2(text.left() >= nLeft && text.left() <= nLeft + 3, qPrintable(QString::number(text.left())));
    QVERIFY2(text.right() < LEFT + 300, qPrintable(QString::number(text.right())));
    // In the middle of the row's height.
    QVERIFY2(qAbs(text.center().y() - (TOP + 15)) <= 3, qPrintable(QString::number(text.center().y())));
}

void tst_CDirDelegate::nameIsShownAsText_data()
{
    QTest::addColumn<QString>("strName");
    QTest::addColumn<QString>("strShown");
    for (const char* pszName : {"name", "<b>bold</b>", "%1 %2", "a & &b", "-rf"}) {
        QTest::newRow(pszName) << QString(pszName) << QString(pszName);
    }
    for (const QChar cBreak : {QChar('\n'), QChar('\r'), QChar(QChar::LineSeparator)}) {
        QTest::addRow("line break %d", cBreak.unicode())
            << QString("two") + cBreak + "lines" << QString("two lines");
    }
}

void tst_CDirDelegate::nameIsShownAsText()
{
    QFETCH(QString, strName);
    const auto pDevice = Watched(strName);
    QTEST(pDevice->m_engine.m_strText, "strShown");
    QCOMPARE(pDevice->m_engine.m_font.family(), QString("Avenir"));
    QCOMPARE(pDevice->m_engine.m_colour, QColor("#484848"));
}

void tst_CDirDelegate::longNameIsElidedInTheMiddle()
{
    const QString strName = "Beginning " + QString(200, 'x') + " the end.txt";
    const QString strShown = Watched(strName)->m_engine.m_strText;
    QVERIFY2(strShown.startsWith("Beg"), qPrintable(strShown));
    QVERIFY2(strShown.endsWith("end.txt"), qPrintable(strShown));
    QVERIFY2(strShown.contains(QChar(0x2026)), qPrintable(strShown));
    QVERIFY(strShown.size() < strName.size());
}

void tst_CDirDelegate::secondColumnIsTheBases()
{
    COneRow row(Qt::Unchecked);
    row.m_model.setData(row.Index(1), QBrush(Qt::blue), Qt::BackgroundRole);
    const QImage image = Painted(row, Option(30, QStyle::State_MouseOver), 1, 1);
    QPixmap pixmap;
    QVERIFY(!QPixmapCache::find("CHECKBOX:0.0", &pixmap));
    QCOMPARE(BoundsOf(image, "#fff2e7"), QRect());
    row.m_model.setData(row.Index(1), 0, Qt::CheckStateRole);
    QVERIFY(!Send(row, QEvent::MouseButtonPress, LEFT + 7, Qt::LeftButton, 1));
    QCOMPARE(row.State(1), 0);
}

void tst_CDirDelegate::painterIsLeftAsItWas()
{
    const COneRow row(Qt::Checked, "name");
    QImage image(400, 100, QImage::Format_RGB32);
    QPainter painter(&image);
    painter.setPen(Qt::cyan);
    painter.setFont(QFont("Monospace", 33));
    m_pDelegate->paint(&painter, Option(), row.Index());
    QCOMPARE(painter.pen().color(), QColor(Qt::cyan));
    QCOMPARE(painter.font().pointSize(), 33);
}

void tst_CDirDelegate::size()
{
    const auto fnSize = [](const QStyledItemDelegate& delegate, const QString& strName) {
        return delegate.sizeHint(Option(), COneRow(Qt::Unchecked, strName).Index());
    };
    const QStyledItemDelegate base;
    const QString strLarge(200, 'W');
    QCOMPARE(fnSize(*m_pDelegate, "x"), QSize(450, fnSize(base, "x").height()));
    QVERIFY(fnSize(base, strLarge).width() > 450);
    QCOMPARE(fnSize(*m_pDelegate, strLarge), fnSize(base, strLarge));
    // A name is one line high, whatever is in it.
    QCOMPARE(fnSize(*m_pDelegate, "one\ntwo\nthree"), fnSize(*m_pDelegate, "one two three"));
}

void tst_CDirDelegate::toolTip_data()
{
    QTest::addColumn<QString>("strName");
    QTest::addColumn<QString>("strInTip");
    const auto fnRow = [](const char* pszName, const QString& strName, const QString& strInTip) {
        QTest::newRow(pszName) << strName << strInTip;
    };
    fnRow("plain", "plain name", "/plain name</p>");
    fnRow("html", "<b>x<img src=y>", "/&lt;b&gt;x&lt;img src=y&gt;</p>");
    fnRow("entity", "a&amp;b", "/a&amp;amp;b</p>");
    fnRow("line break", "two\nlines", "/two\nlines</p>");
}

void tst_CDirDelegate::toolTip()
{
    QFETCH(QString, strName);
    QFETCH(QString, strInTip);
    CTempTree tree;
    tree.Write(strName);
    CDirModel model;
    model.Parse(tree.Path());
    model.LoadGrandChild(QModelIndex());
    const QModelIndex index = model.index(0, 0, model.index(0, 0));
    QTreeView view;
    view.setModel(&model);
    view.expandAll();
    view.resize(400, 200);
    view.show();
    QVERIFY(QTest::qWaitForWindowExposed(&view));
    const QPoint pos = view.visualRect(index).center();
    QHelpEvent event(QEvent::ToolTip, pos, view.viewport()->mapToGlobal(pos));
    QVERIFY(m_pDelegate->helpEvent(&event, &view, Option(), index));
    QCOMPARE(QToolTip::text(), "<p style='white-space:pre'>" + tree.Path().toHtmlEscaped() + strInTip);
    QToolTip::hideText();
}

QTEST_MAIN(tst_CDirDelegate)
#include "tst_CDirDelegate.moc"
