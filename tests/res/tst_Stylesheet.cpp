#include "support/CLogCapture.h"

#include <QApplication>
#include <QCheckBox>
#include <QFile>
#include <QFrame>
#include <QHash>
#include <QPainter>
#include <QPushButton>
#include <QRegularExpression>
#include <QStyleOption>
#include <QTest>
#include <QTreeWidget>

/** The title strip's class name as the sheet uses it; the strip itself lives in another library. */
class KvStyleWidget : public QWidget
{
    Q_OBJECT

public:
    using QWidget::QWidget;
};

/** Has no meta-object of its own, so no type selector can tell it from a plain widget. */
class CNamelessStrip : public QWidget
{
public:
    using QWidget::QWidget;
};

namespace {

/** selector -> property -> value; blanks outside of words are gone, a later rule wins. */
using Rules = QHash<QString, QHash<QString, QString>>;

QString Squeezed(const QString& text)
{
    return text.simplified().replace(QRegularExpression(QStringLiteral("\\s*([,:(){}])\\s*")),
                                     QStringLiteral("\\1"));
}

Rules Parse(const QString& sheet)
{
    Rules rules;
    const QString text = QString(sheet).remove(
        QRegularExpression(QStringLiteral("/\\*.*?\\*/"), QRegularExpression::DotMatchesEverythingOption));
    const QStringList blocks = text.split(QLatin1Char('}'), Qt::SkipEmptyParts);
    for (const QString& block : blocks) {
        const QStringList declarations
            = block.section(QLatin1Char('{'), 1).split(QLatin1Char(';'), Qt::SkipEmptyParts);
        const QStringList selectors
            = block.section(QLatin1Char('{'), 0, 0).split(QLatin1Char(','), Qt::SkipEmptyParts);
        for (const QString& selector : selectors) {
            for (const QString& declaration : declarations) {
                const QString property = declaration.section(QLatin1Char(':'), 0, 0).trimmed();
                if (!property.isEmpty()) {
                    rules[selector.simplified()][property]
                        = Squeezed(declaration.section(QLatin1Char(':'), 1));
                }
            }
        }
    }
    return rules;
}

QByteArray SheetBytes()
{
    QFile file(QStringLiteral(":/res/TarnwickMacPE.qss"));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QString Sheet() { return QString::fromLatin1(SheetBytes()); }

QImage Canvas(const QSize& size)
{
    QImage canvas(size, QImage::Format_ARGB32_Premultiplied);
    canvas.fill(Qt::transparent);
    return canvas;
}

QImage Resource(const char* path)
{
    return QImage(QLatin1String(path)).convertToFormat(QImage::Format_ARGB32_Premultiplied);
}

/** The widget's own painting by the style, on nothing, with the state forced. */
QImage Indicator(QStyle::State state)
{
    QCheckBox box;
    box.ensurePolished();
    QStyleOptionButton option;
    option.initFrom(&box);
    option.rect = QRect(0, 0, 14, 14);
    option.state = state;
    QImage canvas = Canvas(option.rect.size());
    QPainter painter(&canvas);
    box.style()->drawPrimitive(QStyle::PE_IndicatorCheckBox, &option, &painter, &box);
    return canvas;
}

QImage Button(const QString& name, QStyle::State state, const QSize& size)
{
    QPushButton button;
    button.setObjectName(name);
    button.setEnabled(state.testFlag(QStyle::State_Enabled));
    button.resize(size);
    button.ensurePolished();
    QStyleOptionButton option;
    option.initFrom(&button);
    option.rect = QRect(QPoint(0, 0), size);
    option.state = state;
    QImage canvas = Canvas(size);
    QPainter painter(&canvas);
    button.style()->drawControl(QStyle::CE_PushButton, &option, &painter, &button);
    return canvas;
}

bool Near(const QColor& one, const QColor& other)
{
    // A gradient's first and last rows lie half a step inside its end colours.
    return qAbs(one.red() - other.red()) <= 3 && qAbs(one.green() - other.green()) <= 3
        && qAbs(one.blue() - other.blue()) <= 3;
}

const QStyle::State s_rest = QStyle::State_Enabled | QStyle::State_Raised;
const QStyle::State s_hover = s_rest | QStyle::State_MouseOver;
const QStyle::State s_pressed = QStyle::State_Enabled | QStyle::State_MouseOver | QStyle::State_Sunken;
const QStyle::State s_disabled = QStyle::State_Raised;

} // namespace

class tst_Stylesheet : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void SelectorHasProperty_data();
    void SelectorHasProperty();
    void EveryImageIsInTheBundle();
    void SheetIsPlainAscii();
    void SheetIsUnderstoodWhole();
    void IndicatorShowsItsImage_data();
    void IndicatorShowsItsImage();
    void CheckBoxStampIsItsImage_data();
    void CheckBoxStampIsItsImage();
    void ButtonShowsItsColours_data();
    void ButtonShowsItsColours();
    void ButtonShowsItsImage_data();
    void ButtonShowsItsImage();
    void KeyboardFocusIsVisible_data();
    void KeyboardFocusIsVisible();
    void TreeRowIsThirtyPixelsHigh();
    void StripIsMatchedByItsClassName();
    void DialogTitleKeepsRoundCorners();
    void MissingImageDrawsNothing();
    void MissingImageOfAButtonDrawsNothing();

private:
    Rules m_rules;
};

void tst_Stylesheet::initTestCase()
{
    m_rules = Parse(Sheet());
    QVERIFY(!m_rules.isEmpty());
}

void tst_Stylesheet::init() { qApp->setStyleSheet(Sheet()); }

void tst_Stylesheet::SelectorHasProperty_data()
{
    QTest::addColumn<QString>("selector");
    QTest::addColumn<QString>("property");
    QTest::addColumn<QString>("value");

    const auto row = [](const QString& selector, const char* property, const QString& value) {
        QTest::newRow(qPrintable(selector + QLatin1Char(' ') + QLatin1String(property)))
            << selector << QString::fromLatin1(property) << value;
    };
    const auto button = [](const char* name) {
        return QStringLiteral("url(:/res/Button/") + QLatin1String(name) + QStringLiteral(".png)");
    };
    const auto gradient = [](const char* top, const char* bottom) {
        return QStringLiteral("qlineargradient(x1:0,y1:0,x2:0,y2:1,stop:0 rgb(%1),stop:1 rgb(%2))")
            .arg(QLatin1String(top), QLatin1String(bottom));
    };

    for (const QString& name : {QStringLiteral("m_pMinBtn"), QStringLiteral("m_pMaxBtn"),
                                QStringLiteral("btnMin"), QStringLiteral("btnZoom")}) {
        row(QStringLiteral("QPushButton#") + name + QStringLiteral(":disabled"), "border-image",
            button("all_disable"));
    }
    for (const QString& name : {QStringLiteral("m_pCloseBtn"), QStringLiteral("btnClose")}) {
        const QString selector = QStringLiteral("QPushButton#") + name;
        row(selector, "border-image", button("exit_normal"));
        row(selector + QStringLiteral(":hover"), "border-image", button("exit_hover"));
        row(selector + QStringLiteral(":pressed"), "border-image", button("exit_hover"));
    }

    const QString hover = gradient("255,202,20", "255,155,25");
    const QString pressed = gradient("255,172,25", "255,122,27");
    const QString tool = QStringLiteral("QPushButton#toolBtn");
    row(tool, "background-color", gradient("255,183,25", "255,135,20"));
    row(tool, "color", QStringLiteral("white"));
    const QString toolEx = QStringLiteral("QPushButton#toolBtnEx");
    row(toolEx, "border", QStringLiteral("1px solid rgb(255,126,23)"));
    row(toolEx, "background-color", QStringLiteral("white"));
    row(toolEx, "color", QStringLiteral("rgb(255,126,23)"));
    for (const QString& selector : {tool, toolEx}) {
        row(selector + QStringLiteral(":hover"), "background-color", hover);
        row(selector + QStringLiteral(":pressed"), "background-color", pressed);
        row(selector + QStringLiteral(":disabled"), "background-color", QStringLiteral("rgb(198,198,198)"));
        for (const char* state : {":hover", ":pressed", ":disabled"}) {
            row(selector + QLatin1String(state), "color", QStringLiteral("white"));
        }
    }
    for (const char* state : {":hover", ":pressed", ":disabled"}) {
        row(toolEx + QLatin1String(state), "border", QStringLiteral("0px"));
    }

    row(QStringLiteral("QPushButton#m_pDropBtn"), "border-image", button("filedesc"));

    const QString round = QStringLiteral("4px");
    row(QStringLiteral("QStackedWidget"), "border-bottom-left-radius", round);
    row(QStringLiteral("QStackedWidget"), "border-bottom-right-radius", round);
    row(QStringLiteral("KvStyleWidget"), "border-top-left-radius", round);
    row(QStringLiteral("KvStyleWidget"), "border-top-right-radius", round);
    const QString drive = QStringLiteral("QWidget#driveWidget");
    row(drive, "border", QStringLiteral("1px solid rgb(224,224,224)"));
    row(drive, "border-radius", QStringLiteral("2px"));
    row(drive, "background-color", QStringLiteral("white"));
    row(QStringLiteral("QLabel#m_pLineLab"), "background-color", QStringLiteral("rgb(224,224,224)"));
    row(QStringLiteral("QLabel#label_text"), "color", QStringLiteral("rgb(72,72,72)"));
    row(QStringLiteral("QLabel#label_title"), "color", QStringLiteral("rgb(72,72,72)"));

    const QString none = QStringLiteral("0px");
    const QString clear = QStringLiteral("transparent");
    for (const QString& way : {QStringLiteral(":horizontal"), QStringLiteral(":vertical")}) {
        row(QStringLiteral("QScrollBar") + way, "margin", none);
        row(QStringLiteral("QScrollBar::handle") + way, "background-color", QStringLiteral("#c6c6c6"));
        row(QStringLiteral("QScrollBar::handle") + way, "border-radius", QStringLiteral("3px"));
        row(QStringLiteral("QScrollBar::handle") + way + QStringLiteral(":hover"), "background-color",
            QStringLiteral("#d3d3d3"));
        for (const char* line : {"add-line", "sub-line"}) {
            const QString selector = QStringLiteral("QScrollBar::") + QLatin1String(line) + way;
            row(selector, "width", none);
            row(selector, "height", none);
            row(selector, "background-color", clear);
        }
    }
    row(QStringLiteral("QScrollBar:horizontal"), "background-color", clear);
    row(QStringLiteral("QScrollBar:horizontal"), "height", QStringLiteral("6px"));
    row(QStringLiteral("QScrollBar:vertical"), "background-color", QStringLiteral("#ffffff"));
    row(QStringLiteral("QScrollBar:vertical"), "width", QStringLiteral("6px"));
    row(QStringLiteral("QScrollBar:vertical"), "min-height", QStringLiteral("100px"));
    row(QStringLiteral("QScrollBar::handle:vertical"), "height", QStringLiteral("40px"));
    row(QStringLiteral("QScrollBar::handle:vertical"), "min-height", QStringLiteral("40px"));

    const QString tree = QStringLiteral("QTreeView");
    row(tree, "border", none);
    row(tree, "outline", none);
    row(tree, "show-decoration-selected", QStringLiteral("1"));
    row(tree + QStringLiteral("::item"), "height", QStringLiteral("30px"));
    row(tree + QStringLiteral("::item"), "border", none);
    row(tree + QStringLiteral("::item"), "background-color", clear);
    row(tree + QStringLiteral("::item"), "color", QStringLiteral("#484848"));
    row(tree + QStringLiteral("::branch:open:has-children"), "image", button("dropdown_open"));
    row(tree + QStringLiteral("::branch:closed:has-children"), "image", button("dropdown_collapse"));
    for (const char* part : {"::item:selected", "::branch:selected", "::item:hover", "::branch:hover",
                             "::item:selected:hover", "::branch:selected:hover"}) {
        row(tree + QLatin1String(part), "background-color", QStringLiteral("#fff2e7"));
    }

    const QString box = QStringLiteral("QCheckBox::indicator:");
    row(box + QStringLiteral("unchecked"), "image", button("checkbox_normal"));
    row(box + QStringLiteral("unchecked:hover"), "image", button("checkbox_hover"));
    row(box + QStringLiteral("checked"), "image", button("checkbox_selected"));
    row(box + QStringLiteral("checked:hover"), "image", button("checkbox_selected_hover"));
    row(box + QStringLiteral("indeterminate"), "image", button("checkbox_half_selected"));
    row(box + QStringLiteral("indeterminate:hover"), "image", button("checkbox_half_selected_hover"));
    row(box + QStringLiteral("unchecked:disabled"), "image", button("checkbox_disable"));

    row(QStringLiteral("QListWidget"), "border", QStringLiteral("0px solid #e0e0e0"));
    row(QStringLiteral("QListWidget::item"), "min-height", QStringLiteral("30px"));
    row(QStringLiteral("QListWidget::item"), "color", QStringLiteral("rgb(0,0,0)"));
    row(QStringLiteral("QListWidget::item:selected"), "background-color", QStringLiteral("#f0f0ee"));
    row(QStringLiteral("QListWidget::item:hover"), "background-color", QStringLiteral("#f0f0ee"));

    const QString title = QStringLiteral("QFrame#frame_title");
    row(title, "border-top-left-radius", round);
    row(title, "border-top-right-radius", round);
    row(title, "border-image", QStringLiteral("url(:/res/Title/win_title_bg.png)"));
}

void tst_Stylesheet::SelectorHasProperty()
{
    QFETCH(QString, selector);
    QFETCH(QString, property);
    QFETCH(QString, value);

    QVERIFY2(m_rules.contains(selector), qPrintable(selector));
    QCOMPARE(m_rules.value(selector).value(property), value);
}

void tst_Stylesheet::EveryImageIsInTheBundle()
{
    int images = 0;
    QRegularExpressionMatchIterator urls
        = QRegularExpression(QStringLiteral("url\\(([^)]*)\\)")).globalMatch(Sheet());
    while (urls.hasNext()) {
        const QString path = urls.next().captured(1);
        QVERIFY2(path.startsWith(QLatin1String(":/res/")), qPrintable(path));
        QVERIFY2(!QImage(path).isNull(), qPrintable(path));
        ++images;
    }
    QVERIFY(images >= 15);
}

void tst_Stylesheet::SheetIsPlainAscii()
{
    // Start-up reads the sheet as Latin-1 up to the first zero byte.
    const QByteArray bytes = SheetBytes();
    QVERIFY(!bytes.isEmpty());
    for (const char byte : bytes) {
        QVERIFY(byte > 0);
    }
}

void tst_Stylesheet::SheetIsUnderstoodWhole()
{
    // Qt says by a warning that it could not parse a sheet, or that it does not know a property.
    CLogCapture capture;
    qApp->setStyleSheet(QString());
    qApp->setStyleSheet(Sheet());
    QWidget widget;
    widget.ensurePolished();
    QCOMPARE(capture.Lines(), QStringList());

    qApp->setStyleSheet(QStringLiteral("QWidget { color: "));
    widget.ensurePolished();
    QVERIFY2(!capture.Lines().isEmpty(), "the warning for a broken sheet would not be seen");
}

void tst_Stylesheet::IndicatorShowsItsImage_data()
{
    QTest::addColumn<int>("state");
    QTest::addColumn<QByteArray>("path");

    const auto row = [](const char* name, QStyle::State state, const char* image) {
        QTest::newRow(name) << int(state) << QByteArray(image);
    };
    const QStyle::State hover = QStyle::State_Enabled | QStyle::State_MouseOver;
    row("unchecked", QStyle::State_Enabled | QStyle::State_Off, ":/res/Button/checkbox_normal.png");
    row("unchecked, hover", hover | QStyle::State_Off, ":/res/Button/checkbox_hover.png");
    row("checked", QStyle::State_Enabled | QStyle::State_On, ":/res/Button/checkbox_selected.png");
    row("checked, hover", hover | QStyle::State_On, ":/res/Button/checkbox_selected_hover.png");
    row("indeterminate", QStyle::State_Enabled | QStyle::State_NoChange,
        ":/res/Button/checkbox_half_selected.png");
    row("indeterminate, hover", hover | QStyle::State_NoChange,
        ":/res/Button/checkbox_half_selected_hover.png");
    row("unchecked, disabled", QStyle::State_Off, ":/res/Button/checkbox_disable.png");
}

void tst_Stylesheet::IndicatorShowsItsImage()
{
    QFETCH(int, state);
    QFETCH(QByteArray, path);
    QCOMPARE(Indicator(QStyle::State(state)), Resource(path.constData()));
}

void tst_Stylesheet::CheckBoxStampIsItsImage_data()
{
    QTest::addColumn<int>("state");
    QTest::addColumn<QByteArray>("path");

    QTest::newRow("unchecked") << int(Qt::Unchecked) << QByteArray(":/res/Button/checkbox_normal.png");
    QTest::newRow("half") << int(Qt::PartiallyChecked)
                          << QByteArray(":/res/Button/checkbox_half_selected.png");
    QTest::newRow("checked") << int(Qt::Checked) << QByteArray(":/res/Button/checkbox_selected.png");
}

void tst_Stylesheet::CheckBoxStampIsItsImage()
{
    QFETCH(int, state);
    QFETCH(QByteArray, path);

    // The tree draws a hidden check box as a stamp: nothing but the image may be in it, whatever row is
    // below.
    QCheckBox box;
    box.setFixedSize(14, 14);
    box.setCheckState(Qt::CheckState(state));
    QImage canvas = Canvas(box.size());
    box.render(&canvas, QPoint(), QRegion(), QWidget::DrawWindowBackground | QWidget::DrawChildren);
    QCOMPARE(canvas, Resource(path.constData()));
}

void tst_Stylesheet::ButtonShowsItsColours_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("state");
    QTest::addColumn<QColor>("top");
    QTest::addColumn<QColor>("bottom");

    const QString tool = QStringLiteral("toolBtn");
    const QString toolEx = QStringLiteral("toolBtnEx");
    const QColor grey(198, 198, 198);
    QTest::newRow("filled, rest") << tool << int(s_rest) << QColor(255, 183, 25) << QColor(255, 135, 20);
    QTest::newRow("outlined, rest") << toolEx << int(s_rest) << QColor(255, 126, 23) << QColor(255, 126, 23);
    for (const QString& name : {tool, toolEx}) {
        const auto row = [&name](const char* state) -> QTestData& {
            return QTest::newRow(qPrintable(name + QLatin1String(state)));
        };
        row(", hover") << name << int(s_hover) << QColor(255, 202, 20) << QColor(255, 155, 25);
        row(", pressed") << name << int(s_pressed) << QColor(255, 172, 25) << QColor(255, 122, 27);
        row(", disabled") << name << int(s_disabled) << grey << grey;
    }
}

void tst_Stylesheet::ButtonShowsItsColours()
{
    QFETCH(QString, name);
    QFETCH(int, state);
    QFETCH(QColor, top);
    QFETCH(QColor, bottom);

    const QImage image = Button(name, QStyle::State(state), QSize(100, 32));
    const QColor first = image.pixelColor(50, 0);
    const QColor last = image.pixelColor(50, 31);
    QVERIFY2(Near(first, top), qPrintable(first.name()));
    QVERIFY2(Near(last, bottom), qPrintable(last.name()));
    QVERIFY2(image.pixelColor(0, 0).alpha() < 255, "the corners are round");
}

void tst_Stylesheet::ButtonShowsItsImage_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("state");
    QTest::addColumn<int>("extent");
    QTest::addColumn<QByteArray>("path");

    for (const QString& name : {QStringLiteral("m_pMinBtn"), QStringLiteral("m_pMaxBtn"),
                                QStringLiteral("btnMin"), QStringLiteral("btnZoom")}) {
        QTest::newRow(qPrintable(name))
            << name << int(s_disabled) << 12 << QByteArray(":/res/Button/all_disable.png");
    }
    const QByteArray hover(":/res/Button/exit_hover.png");
    for (const QString& name : {QStringLiteral("m_pCloseBtn"), QStringLiteral("btnClose")}) {
        const auto row = [&name](const char* state) -> QTestData& {
            return QTest::newRow(qPrintable(name + QLatin1String(state)));
        };
        row(", rest") << name << int(s_rest) << 12 << QByteArray(":/res/Button/exit_normal.png");
        row(", hover") << name << int(s_hover) << 12 << hover;
        row(", pressed") << name << int(s_pressed) << 12 << hover;
    }
    QTest::newRow("m_pDropBtn") << QStringLiteral("m_pDropBtn") << int(s_rest) << 14
                                << QByteArray(":/res/Button/filedesc.png");
}

void tst_Stylesheet::ButtonShowsItsImage()
{
    QFETCH(QString, name);
    QFETCH(int, state);
    QFETCH(int, extent);
    QFETCH(QByteArray, path);
    QCOMPARE(Button(name, QStyle::State(state), QSize(extent, extent)), Resource(path.constData()));
}

void tst_Stylesheet::KeyboardFocusIsVisible_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QSize>("size");

    QTest::newRow("filled button") << QStringLiteral("toolBtn") << QSize(100, 32);
    QTest::newRow("outlined button") << QStringLiteral("toolBtnEx") << QSize(100, 32);
    QTest::newRow("window's close button") << QStringLiteral("m_pCloseBtn") << QSize(12, 12);
    QTest::newRow("dialog's close button") << QStringLiteral("btnClose") << QSize(12, 12);
    QTest::newRow("drop-down button") << QStringLiteral("m_pDropBtn") << QSize(14, 14);
}

void tst_Stylesheet::KeyboardFocusIsVisible()
{
    QFETCH(QString, name);
    QFETCH(QSize, size);
    QVERIFY(Button(name, s_rest, size) != Button(name, s_rest | QStyle::State_HasFocus, size));
}

void tst_Stylesheet::TreeRowIsThirtyPixelsHigh()
{
    QTreeWidget tree;
    auto* item = new QTreeWidgetItem(&tree, {QStringLiteral("Documents")});
    tree.resize(200, 200);
    tree.ensurePolished();
    QCOMPARE(tree.visualItemRect(item).height(), 30);
    QCOMPARE(tree.frameWidth(), 0);
}

void tst_Stylesheet::StripIsMatchedByItsClassName()
{
    // The rule for the strip rounds its upper corners, which shows once it has a colour to be cut off.
    const auto corner = [](QWidget& strip) {
        strip.setAttribute(Qt::WA_StyledBackground);
        strip.setStyleSheet(QStringLiteral("background-color: #102030;"));
        strip.resize(60, 40);
        QImage canvas = Canvas(strip.size());
        strip.render(&canvas, QPoint(), QRegion(), QWidget::DrawChildren);
        return canvas.pixelColor(0, 0).alpha() + (255 - canvas.pixelColor(30, 20).alpha());
    };
    KvStyleWidget strip;
    CNamelessStrip nameless;
    QCOMPARE(QString::fromLatin1(strip.metaObject()->className()), QStringLiteral("KvStyleWidget"));
    QVERIFY(corner(strip) < 128);
    QCOMPARE(corner(nameless), 255);
}

void tst_Stylesheet::DialogTitleKeepsRoundCorners()
{
    QFrame title;
    title.setObjectName(QStringLiteral("frame_title"));
    title.resize(200, 35);
    QImage canvas = Canvas(title.size());
    title.render(&canvas, QPoint(), QRegion(), QWidget::DrawChildren);

    const QImage source = Resource(":/res/Title/win_title_bg.png");
    QCOMPARE(canvas.pixelColor(0, 0).alpha(), 0);
    QCOMPARE(canvas.pixelColor(199, 0).alpha(), 0);
    for (const int y : {0, 17, 34}) {
        QVERIFY(Near(canvas.pixelColor(100, y), source.pixelColor(10, y)));
    }
}

void tst_Stylesheet::MissingImageDrawsNothing()
{
    CLogCapture capture;
    qApp->setStyleSheet(
        Sheet().replace(QLatin1String("checkbox_selected.png"), QLatin1String("no_such_image.png")));
    QCOMPARE(Indicator(QStyle::State_Enabled | QStyle::State_On), Canvas(QSize(14, 14)));
    QCOMPARE(Indicator(QStyle::State_Enabled | QStyle::State_Off),
             Resource(":/res/Button/checkbox_normal.png"));
    QCOMPARE(capture.Lines(), QStringList());
}

void tst_Stylesheet::MissingImageOfAButtonDrawsNothing()
{
    CLogCapture capture;
    qApp->setStyleSheet(
        Sheet().replace(QLatin1String("exit_normal.png"), QLatin1String("no_such_image.png")));
    QCOMPARE(Button(QStringLiteral("btnClose"), s_rest, QSize(12, 12)), Canvas(QSize(12, 12)));
    QCOMPARE(Button(QStringLiteral("btnClose"), s_hover, QSize(12, 12)),
             Resource(":/res/Button/exit_hover.png"));
    QCOMPARE(capture.Lines(), QStringList());
}

QTEST_MAIN(tst_Stylesheet)
#include "tst_Stylesheet.moc"
