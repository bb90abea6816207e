#include "support/CLogCapture.h"
#include "support/Widgets.h"

#include <QApplication>
#include <QCheckBox>
#include <QFrame>
#include <QMap>
#include <QPainter>
#include <QPushButton>
#include <QRegularExpression>
#include <QStyleOption>
#include <QTreeWidget>

/** The title strip's class name as the sheet uses it; the strip itself lives in another library. */
class KvStyleWidget : public QWidget
{
    Q_OBJECT
};

/** Has no meta-object of its own, so no type selector can tell it from a plain widget. */
class CNamelessStrip : public QWidget
{
};

namespace {

/** selector -> property -> value; blanks outside of words are gone, a later rule wins. */
using Rules = QMap<QString, QMap<QString, QString>>;

Rules Parse(QString strSheet)
{
    strSheet.remove(QRegularExpression("/\\*.*?\\*/", QRegularExpression::DotMatchesEverythingOption));
    strSheet = strSheet.simplified().replace(QRegularExpression("\\s*([,:;(){}])\\s*"), "\\1");
    Rules rules;
    const auto listBlock = strSheet.split('}', Qt::SkipEmptyParts);
    for (const QString& strBlock : listBlock) {
        const auto listSelector = strBlock.section('{', 0, 0).split(',');
        const auto listDeclaration = strBlock.section('{', 1).split(';', Qt::SkipEmptyParts);
        for (const QString& strSelector : listSelector) {
            for (const QString& strDeclaration : listDeclaration) {
                rules[strSelector][strDeclaration.section(':', 0, 0)] = strDeclaration.section(':', 1);
            }
        }
    }
    return rules;
}

// What the sheet is to say. It may say more.
const char EXPECTED[] = R"(
    QPushButton#m_pMinBtn:disabled, QPushButton#m_pMaxBtn:disabled, QPushButton#btnMin:disabled,
    QPushButton#btnZoom:disabled { border-image: url(:/res/Button/all_disable.png) }
    QPushButton#m_pCloseBtn, QPushButton#btnClose { border-image: url(:/res/Button/exit_normal.png) }
    QPushButton#m_pCloseBtn:hover, QPushButton#m_pCloseBtn:pressed, QPushButton#btnClose:hover,
    QPushButton#btnClose:pressed { border-image: url(:/res/Button/exit_hover.png) }
    QPushButton#toolBtn { color: white;
        background-color: qlineargradient(x1:0, y1:0, x2:0, y2:1, stop:0 rgb(255,183,25), stop:1 rgb(255,135,20)) }
    QPushButton#toolBtn:hover, QPushButton#toolBtnEx:hover { color: white;
        background-color: qlineargradient(x1:0, y1:0, x2:0, y2:1, stop:0 rgb(255,202,20), stop:1 rgb(255,155,25)) }
    QPushButton#toolBtn:pressed, QPushButton#toolBtnEx:pressed { color: white;
        background-color: qlineargradient(x1:0, y1:0, x2:0, y2:1, stop:0 rgb(255,172,25), stop:1 rgb(255,122,27)) }
    QPushButton#toolBtn:disabled, QPushButton#toolBtnEx:disabled {
        color: white; background-color: rgb(198,198,198) }
    QPushButton#toolBtnEx { border: 1px solid rgb(255,126,23); background-color: white; color: rgb(255,126,23) }
    QPushButton#toolBtnEx:hover, QPushButton#toolBtnEx:pressed, QPushButton#toolBtnEx:disabled { border: 0px }
    QPushButton#m_pDropBtn { border-image: url(:/res/Button/filedesc.png) }

    QStackedWidget { border-bottom-left-radius: 4px; border-bottom-right-radius: 4px }
    KvStyleWidget { border-top-left-radius: 4px; border-top-right-radius: 4px }
    QWidget#driveWidget { border: 1px solid rgb(224,224,224); border-radius: 2px; background-color: white }
    QLabel#m_pLineLab { background-color: rgb(224,224,224) }
    QLabel#label_text, QLabel#label_title { color: rgb(72,72,72) }

    QScrollBar:horizontal { margin: 0px; background-color: transparent; height: 6px }
    QScrollBar:vertical { margin: 0px; background-color: #ffffff; width: 6px; min-height: 100px }
    QScrollBar::handle:horizontal, QScrollBar::handle:vertical { background-color: #c6c6c6; border-radius: 3px }
    QScrollBar::handle:horizontal:hover, QScrollBar::handle:vertical:hover { background-color: #d3d3d3 }
    QScrollBar::handle:vertical { height: 40px; min-height: 40px }
    QScrollBar::add-line:horizontal, QScrollBar::sub-line:horizontal, QScrollBar::add-line:vertical,
    QScrollBar::sub-line:vertical { width: 0px; height: 0px; background-color: transparent }

    QTreeView { border: 0px; outline: 0px; show-decoration-selected: 1 }
    QTreeView::item { height: 30px; border: 0px; background-color: transparent; color: #484848 }
    QTreeView::branch:open:has-children { image: url(:/res/Button/dropdown_open.png) }
    QTreeView::branch:closed:has-children { image: url(:/res/Button/dropdown_collapse.png) }
    QTreeView::item:selected, QTreeView::item:hover, QTreeView::item:selected:hover, QTreeView::branch:selected,
    QTreeView::branch:hover, QTreeView::branch:selected:hover { background-color: #fff2e7 }

    QCheckBox::indicator:unchecked { image: url(:/res/Button/checkbox_normal.png) }
    QCheckBox::indicator:unchecked:hover { image: url(:/res/Button/checkbox_hover.png) }
    QCheckBox::indicator:checked { image: url(:/res/Button/checkbox_selected.png) }
    QCheckBox::indicator:checked:hover { image: url(:/res/Button/checkbox_selected_hover.png) }
    QCheckBox::indicator:indeterminate { image: url(:/res/Button/checkbox_half_selected.png) }
    QCheckBox::indicator:indeterminate:hover { image: url(:/res/Button/checkbox_half_selected_hover.png) }
    QCheckBox::indicator:unchecked:disabled { image: url(:/res/Button/checkbox_disable.png) }

    QListWidget { border: 0px solid #e0e0e0 }
    QListWidget::item { min-height: 30px; color: rgb(0,0,0) }
    QListWidget::item:selected, QListWidget::item:hover { background-color: #f0f0ee }
    QFrame#frame_title { border-top-left-radius: 4px; border-top-right-radius: 4px;
        border-image: url(:/res/Title/win_title_bg.png) }
)";

QImage Canvas(const QSize& size)
{
    QImage canvas(size, QImage::Format_ARGB32_Premultiplied);
    canvas.fill(Qt::transparent);
    return canvas;
}

// A file of the bundle's folder of buttons.
QImage Picture(const QString& strName)
{
    return QImage(":/res/Button/" + strName).convertToFormat(QImage::Format_ARGB32_Premultiplied);
}

// A widget's own painting by the style, on nothing, with the state forced.
template <class Widget, class Draw> QImage Drawn(Widget& widget, QStyle::State state, const Draw& fnDraw)
{
    widget.setEnabled(state.testFlag(QStyle::State_Enabled));
    widget.ensurePolished();
    QStyleOptionButton option;
    option.initFrom(&widget);
    option.state = state;
    QImage canvas = Canvas(widget.size());
    QPainter painter(&canvas);
    fnDraw(option, painter);
    return canvas;
}

QImage Indicator(QStyle::State state)
{
    QCheckBox box;
    box.resize(14, 14);
    return Drawn(box, state, [&box](const QStyleOptionButton& option, QPainter& painter) {
        box.style()->drawPrimitive(QStyle::PE_IndicatorCheckBox, &option, &painter, &box);
    });
}

QImage Button(const QString& strName, QStyle::State state, const QSize& size)
{
    QPushButton button;
    button.setObjectName(strName);
    button.resize(size);
    return Drawn(button, state, [&button](const QStyleOptionButton& option, QPainter& painter) {
        button.style()->drawControl(QStyle::CE_PushButton, &option, &painter, &button);
    });
}

bool Near(const QColor& one, const QColor& other)
{
    // A gradient's first and last rows lie half a step inside its end colours.
    return qAbs(one.red() - other.red()) <= 3 && qAbs(one.green() - other.green()) <= 3
        && qAbs(one.blue() - other.blue()) <= 3;
}

const QStyle::State REST = QStyle::State_Enabled | QStyle::State_Raised;
const QStyle::State HOVER = REST | QStyle::State_MouseOver;
const QStyle::State PRESSED = QStyle::State_Enabled | QStyle::State_MouseOver | QStyle::State_Sunken;
const QStyle::State DISABLED = QStyle::State_Raised;

}

Q_DECLARE_METATYPE(QStyle::State)

class tst_Stylesheet : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void selectorHasProperty_data();
    void selectorHasProperty();
    void everyImageIsInTheBundle();
    void sheetIsPlainAscii();
    void sheetIsUnderstoodWhole();
    void indicatorShowsItsImage_data();
    void indicatorShowsItsImage();
    void checkBoxStampIsItsImage_data();
    void checkBoxStampIsItsImage();
    void buttonShowsItsColours_data();
    void buttonShowsItsColours();
    void buttonShowsItsImage_data();
    void buttonShowsItsImage();
    void keyboardFocusIsVisible_data();
    void keyboardFocusIsVisible();
    void treeRowIsThirtyPixelsHigh();
    void stripIsMatchedByItsClassName();
    void dialogTitleKeepsRoundCorners();
    void missingImageDrawsNothing();
};

// A table that was read as empty would prove nothing.
void tst_Stylesheet::initTestCase() { QCOMPARE(Parse(EXPECTED).size(), 57); }

void tst_Stylesheet::init() { qApp->setStyleSheet(ProgramSheet()); }

void tst_Stylesheet::selectorHasProperty_data()
{
    QTest::addColumn<QString>("strSelector");
    QTest::addColumn<QString>("strProperty");
    QTest::addColumn<QString>("strValue");
    const Rules expected = Parse(EXPECTED);
    for (auto itRule = expected.cbegin(); itRule != expected.cend(); ++itRule) {
        for (auto it = itRule->cbegin(); it != itRule->cend(); ++it) {
            QTest::newRow(qPrintable(itRule.key() + ' ' + it.key()))
                << itRule.key() << it.key() << it.value();
        }
    }
}

void tst_Stylesheet::selectorHasProperty()
{
    QFETCH(QString, strSelector);
    QFETCH(QString, strProperty);
    static const Rules s_rules = Parse(ProgramSheet());
    QTEST(s_rules.value(strSelector).value(strProperty), "strValue");
}

void tst_Stylesheet::everyImageIsInTheBundle()
{
    int nImages = 0;
    auto itUrl = QRegularExpression("url\\(([^)]*)\\)").globalMatch(ProgramSheet());
    for (; itUrl.hasNext(); ++nImages) {
        const QString strPath = itUrl.next().captured(1);
        QVERIFY2(strPath.startsWith(":/res/"), qPrintable(strPath));
        QVERIFY2(!QImage(strPath).isNull(), qPrintable(strPath));
    }
    QVERIFY(nImages >= 15);
}

// Start-up reads the sheet as Latin-1 up to the first zero byte.
void tst_Stylesheet::sheetIsPlainAscii()
{
    QFile sheet(":/res/TarnwickMacPE.qss");
    QVERIFY(sheet.open(QIODevice::ReadOnly));
    const QByteArray baSheet = sheet.readAll();
    QVERIFY(!baSheet.isEmpty());
    for (const char ch : baSheet) {
        QVERIFY(ch > 0);
    }
}

void tst_Stylesheet::sheetIsUnderstoodWhole()
{
    // Qt says by a warning that it could not parse a sheet, or that it does not know a property.
    const CLogCapture capture;
    qApp->setStyleSheet(QString());
    qApp->setStyleSheet(ProgramSheet());
    QWidget widget;
    widget.ensurePolished();
    QCOMPARE(capture.Lines(), QStringList());

    qApp->setStyleSheet("QWidget { color: ");
    widget.ensurePolished();
    QVERIFY2(!capture.Lines().isEmpty(), "the warning for a broken sheet would not be seen");
}

void tst_Stylesheet::indicatorShowsItsImage_data()
{
    QTest::addColumn<QStyle::State>("state");
    QTest::addColumn<QString>("strImage");
    const QStyle::State rest = QStyle::State_Enabled;
    const QStyle::State hover = rest | QStyle::State_MouseOver;
    QTest::newRow("unchecked") << (rest | QStyle::State_Off) << "checkbox_normal.png";
    QTest::newRow("unchecked, hover") << (hover | QStyle::State_Off) << "checkbox_hover.png";
    QTest::newRow("checked") << (rest | QStyle::State_On) << "checkbox_selected.png";
    QTest::newRow("checked, hover") << (hover | QStyle::State_On) << "checkbox_selected_hover.png";
    QTest::newRow("half") << (rest | QStyle::State_NoChange) << "checkbox_half_selected.png";
    QTest::newRow("half, hover") << (hover | QStyle::State_NoChange) << "checkbox_half_selected_hover.png";
    QTest::newRow("unchecked, disabled") << QStyle::State(QStyle::State_Off) << "checkbox_disable.png";
}

void tst_Stylesheet::indicatorShowsItsImage()
{
    QFETCH(QStyle::State, state);
    QFETCH(QString, strImage);
    QCOMPARE(Indicator(state), Picture(strImage));
}

void tst_Stylesheet::checkBoxStampIsItsImage_data()
{
    QTest::addColumn<Qt::CheckState>("enState");
    QTest::addColumn<QString>("strImage");
    QTest::newRow("unchecked") << Qt::Unchecked << "checkbox_normal.png";
    QTest::newRow("half") << Qt::PartiallyChecked << "checkbox_half_selected.png";
    QTest::newRow("checked") << Qt::Checked << "checkbox_selected.png";
}

// The tree draws a hidden check box as a stamp: nothing but the image may be in it, whatever row is below.
void tst_Stylesheet::checkBoxStampIsItsImage()
{
    QFETCH(Qt::CheckState, enState);
    QFETCH(QString, strImage);
    QCheckBox box;
    box.setFixedSize(14, 14);
    box.setCheckState(enState);
    QImage canvas = Canvas(box.size());
    box.render(&canvas, QPoint(), QRegion(), QWidget::DrawWindowBackground | QWidget::DrawChildren);
    QCOMPARE(canvas, Picture(strImage));
}

void tst_Stylesheet::buttonShowsItsColours_data()
{
    QTest::addColumn<QString>("strName");
    QTest::addColumn<QStyle::State>("state");
    QTest::addColumn<QColor>("top");
    QTest::addColumn<QColor>("bottom");
    const QColor accent(255, 126, 23);
    const QColor grey(198, 198, 198);
    QTest::newRow("filled, rest") << "toolBtn" << REST << QColor(255, 183, 25) << QColor(255, 135, 20);
    QTest::newRow("outlined, rest") << "toolBtnEx" << REST << accent << accent;
    for (const char* pName : {"toolBtn", "toolBtnEx"}) {
        QTest::addRow("%s, hover", pName) << pName << HOVER << QColor(255, 202, 20) << QColor(255, 155, 25);
        QTest::addRow("%s, pressed", pName)
            << pName << PRESSED << QColor(255, 172, 25) << QColor(255, 122, 27);
        QTest::addRow("%s, disabled", pName) << pName << DISABLED << grey << grey;
    }
}

void tst_Stylesheet::buttonShowsItsColours()
{
    QFETCH(QString, strName);
    QFETCH(QStyle::State, state);
    QFETCH(QColor, top);
    QFETCH(QColor, bottom);
    const QImage image = Button(strName, state, QSize(100, 32));
    const QColor first = image.pixelColor(50, 0);
    const QColor last = image.pixelColor(50, 31);
    QVERIFY2(Near(first, top), qPrintable(first.name()));
    QVERIFY2(Near(last, bottom), qPrintable(last.name()));
    QVERIFY2(image.pixelColor(0, 0).alpha() < 255, "the corners are round");
}

void tst_Stylesheet::buttonShowsItsImage_data()
{
    QTest::addColumn<QString>("strName");
    QTest::addColumn<QStyle::State>("state");
    QTest::addColumn<QString>("strImage");
    for (const char* pName : {"m_pMinBtn", "m_pMaxBtn", "btnMin", "btnZoom"}) {
        QTest::newRow(pName) << pName << DISABLED << "all_disable.png";
    }
    for (const char* pName : {"m_pCloseBtn", "btnClose"}) {
        QTest::addRow("%s, rest", pName) << pName << REST << "exit_normal.png";
        QTest::addRow("%s, hover", pName) << pName << HOVER << "exit_hover.png";
        QTest::addRow("%s, pressed", pName) << pName << PRESSED << "exit_hover.png";
    }
    QTest::newRow("m_pDropBtn") << "m_pDropBtn" << REST << "filedesc.png";
}

void tst_Stylesheet::buttonShowsItsImage()
{
    QFETCH(QString, strName);
    QFETCH(QStyle::State, state);
    QFETCH(QString, strImage);
    const QImage picture = Picture(strImage);
    QCOMPARE(Button(strName, state, picture.size()), picture);
}

void tst_Stylesheet::keyboardFocusIsVisible_data()
{
    QTest::addColumn<QSize>("size");
    QTest::newRow("toolBtn") << QSize(100, 32);
    QTest::newRow("toolBtnEx") << QSize(100, 32);
    QTest::newRow("m_pCloseBtn") << QSize(12, 12);
    QTest::newRow("btnClose") << QSize(12, 12);
    QTest::newRow("m_pDropBtn") << QSize(14, 14);
}

void tst_Stylesheet::keyboardFocusIsVisible()
{
    QFETCH(QSize, size);
    const char* pName = QTest::currentDataTag();
    QVERIFY(Button(pName, REST, size) != Button(pName, REST | QStyle::State_HasFocus, size));
}

void tst_Stylesheet::treeRowIsThirtyPixelsHigh()
{
    QTreeWidget tree;
    const auto* pItem = new QTreeWidgetItem(&tree, {"Documents"});
    tree.resize(200, 200);
    tree.ensurePolished();
    QCOMPARE(tree.visualItemRect(pItem).height(), 30);
    QCOMPARE(tree.frameWidth(), 0);
}

// The rule for the strip rounds its upper corners, which shows once it has a colour to be cut off.
void tst_Stylesheet::stripIsMatchedByItsClassName()
{
    const auto fnCorner = [](QWidget& strip) {
        strip.setAttribute(Qt::WA_StyledBackground);
        strip.setStyleSheet("background-color: #102030;");
        strip.resize(60, 40);
        const QImage image = Painted(&strip);
        return image.pixelColor(0, 0).alpha() + (255 - image.pixelColor(30, 20).alpha());
    };
    KvStyleWidget strip;
    CNamelessStrip nameless;
    QVERIFY(fnCorner(strip) < 128);
    QCOMPARE(fnCorner(nameless), 255);
}

void tst_Stylesheet::dialogTitleKeepsRoundCorners()
{
    QFrame title;
    title.setObjectName("frame_title");
    title.resize(200, 35);
    const QImage image = Painted(&title);
    const QImage source(":/res/Title/win_title_bg.png");
    QCOMPARE(image.pixelColor(0, 0).alpha(), 0);
    QCOMPARE(image.pixelColor(199, 0).alpha(), 0);
    for (const int y : {0, 17, 34}) {
        QVERIFY(Near(image.pixelColor(100, y), source.pixelColor(10, y)));
    }
}

void tst_Stylesheet::missingImageDrawsNothing()
{
    const CLogCapture capture;
    qApp->setStyleSheet(
        ProgramSheet().replace("checkbox_selected.png", "none.png").replace("exit_normal.png", "none.png"));
    QCOMPARE(Indicator(QStyle::State_Enabled | QStyle::State_On), Canvas(QSize(14, 14)));
    QCOMPARE(Indicator(QStyle::State_Enabled | QStyle::State_Off), Picture("checkbox_normal.png"));
    QCOMPARE(Button("btnClose", REST, QSize(12, 12)), Canvas(QSize(12, 12)));
    QCOMPARE(Button("btnClose", HOVER, QSize(12, 12)), Picture("exit_hover.png"));
    QCOMPARE(capture.Lines(), QStringList());
}

QTEST_MAIN(tst_Stylesheet)
#include "tst_Stylesheet.moc"
