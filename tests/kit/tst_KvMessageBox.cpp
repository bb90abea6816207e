#include "kit/KvMessageBox.h"
#include "support/CModalAnswerer.h"
#include "support/SendMouse.h"

#include <QAccessible>
#include <QApplication>
#include <QDesktopServices>
#include <QFile>
#include <QFrame>
#include <QImage>
#include <QLabel>
#include <QLayout>
#include <QMap>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>

#include <algorithm>

namespace {

const QPoint START(120, 130);

// The box with its handlers in reach, to see what becomes of an event that nobody had accepted yet.
class CBox : public KvMessageBox
{
public:
    using KvMessageBox::KvMessageBox;
    using KvMessageBox::mouseMoveEvent;
    using KvMessageBox::mousePressEvent;
    using KvMessageBox::mouseReleaseEvent;

    bool Activate()
    {
        show();
        move(START);
        activateWindow();
        return QTest::qWaitForWindowActive(this);
    }

    // The four buttons carry the names of their looks, so they are known by their texts.
    QPushButton* Button(const QString& strText) const
    {
        for (QPushButton* pButton : findChildren<QPushButton*>()) {
            if (pButton->text() == strText) {
                return pButton;
            }
        }
        return nullptr;
    }

    QLabel* Message() const { return findChild<QLabel*>(QStringLiteral("label_text")); }
    QLabel* Icon() const { return findChild<QLabel*>(QStringLiteral("label_icon")); }
    QPushButton* Close() const { return findChild<QPushButton*>(QStringLiteral("btnClose")); }

    QRect PlaceOf(const QWidget* pChild) const { return {pChild->mapTo(this, QPoint(0, 0)), pChild->size()}; }

    QList<QPushButton*> VisibleButtons() const
    {
        QList<QPushButton*> list;
        for (QPushButton* pButton : findChildren<QPushButton*>()) {
            if (pButton->isVisible() && !pButton->text().isEmpty()) {
                list.append(pButton);
            }
        }
        std::sort(list.begin(), list.end(), [this](const QPushButton* pLeft, const QPushButton* pRight) {
            return PlaceOf(pLeft).x() < PlaceOf(pRight).x();
        });
        return list;
    }
};

// Opens links for the desktop while it lives.
class CLinkCatcher : public QObject
{
    Q_OBJECT

public:
    CLinkCatcher() { QDesktopServices::setUrlHandler(QStringLiteral("test"), this, "Open"); }
    ~CLinkCatcher() override { QDesktopServices::unsetUrlHandler(QStringLiteral("test")); }

    QList<QUrl> m_listUrl;

public slots:
    void Open(const QUrl& url) { m_listUrl.append(url); }
};

}

class tst_KvMessageBox : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void formTexts();
    void formSizes();
    void buttonSizes_data();
    void buttonSizes();
    void buttonsTakeTheirLook_data();
    void buttonsTakeTheirLook();
    void titleButtons();
    void fonts();
    void windowIsFramelessAndFixed();
    void linesAreOfNearlyOneLength_data();
    void linesAreOfNearlyOneLength();
    void messageIsWrappedInHtml_data();
    void messageIsWrappedInHtml();
    void messageLabel();
    void mask_data();
    void mask();
    void styleZeroClosesByTitleOnly();
    void result_data();
    void result();
    void resultOfSlots();
    void resultIsZeroAtFirst();
    void keptBoxForgetsItsAnswer();
    void setBtnText_data();
    void setBtnText();
    void setButtonText();
    void icon_data();
    void icon();
    void iconDefault();
    void iconHidden();
    void contentIsReplacedAsItIs();
    void readersHearTheMessage();
    void readersHearTheButtons();
    void setBoxSize();
    void setBoxContentSize();
    void linkOpensAndBoxStays();
    void peekPasswordDoesNothing();
    void keyEndsNothing_data();
    void keyEndsNothing();
    void spaceOnAButtonAnswers();
    void tabGoesFromLeftToRight_data();
    void tabGoesFromLeftToRight();
    void dragFrom_data();
    void dragFrom();
    void noDrag_data();
    void noDrag();
    void noDragAfterReleaseOnTheMessage();
    void dragGoesOnAfterTheOrigin();
    void pressTakesFocus();
    void eventsAccepted();
    void panelIsPainted();
    void nothingInTheShadow();
    void rowsAreCentred_data();
    void rowsAreCentred();
    void longMessageFits_data();
    void longMessageFits();
};

void tst_KvMessageBox::initTestCase()
{
    QApplication::setStartDragDistance(10);
    QFile sheet(QStringLiteral(":/res/TarnwickMacPE.qss"));
    QVERIFY(sheet.open(QIODevice::ReadOnly));
    qApp->setStyleSheet(QString::fromLatin1(sheet.readAll()));
}

void tst_KvMessageBox::formTexts()
{
    const CBox box(QStringLiteral("Question?"), 15);
    QCOMPARE(box.objectName(), QStringLiteral("KvMessageBox"));
    QCOMPARE(box.windowTitle(), QStringLiteral("Form"));
    for (const QString& strText :
         {QStringLiteral("Cancel"), QStringLiteral("Yes"), QStringLiteral("No"), QStringLiteral("OK")}) {
        QVERIFY2(box.Button(strText), qPrintable(strText));
    }
}

void tst_KvMessageBox::formSizes()
{
    CBox box(QStringLiteral("Question?"), 15);
    QVERIFY(box.Activate());
    const auto* pTitle = box.findChild<QFrame*>(QStringLiteral("frame_title"));
    QCOMPARE(pTitle->minimumSize(), QSize(460, 35));
    QCOMPARE(pTitle->maximumSize(), QSize(480, 35));
    QCOMPARE(pTitle->frameShape(), QFrame::StyledPanel);
    QCOMPARE(pTitle->frameShadow(), QFrame::Raised);
    QCOMPARE(pTitle->layout()->spacing(), 8);
    QCOMPARE(pTitle->layout()->contentsMargins().left(), 10);
    const auto* pContent = box.findChild<QWidget*>(QStringLiteral("widget"));
    QCOMPARE(pContent->minimumSize(), QSize(460, 240));
    QCOMPARE(pContent->maximumWidth(), 485);
    QCOMPARE(pContent->layout()->spacing(), 15);
    QCOMPARE(pContent->layout()->contentsMargins(), QMargins(0, 0, 0, 0));
    QCOMPARE(box.layout()->spacing(), 0);
    QCOMPARE(box.Icon()->size(), QSize(40, 40));
}

void tst_KvMessageBox::buttonSizes_data()
{
    QTest::addColumn<int>("style");
    QTest::addColumn<int>("gap");
    QTest::newRow("one") << 4 << 0;
    QTest::newRow("two") << 9 << 32;
    QTest::newRow("three") << 11 << 32;
    QTest::newRow("four, closer so that they fit") << 15 << 20;
}

void tst_KvMessageBox::buttonSizes()
{
    QFETCH(int, style);
    QFETCH(int, gap);
    CBox box(QStringLiteral("Question?"), style);
    QVERIFY(box.Activate());
    const QList<QPushButton*> listButton = box.VisibleButtons();
    for (int i = 0; i < listButton.size(); ++i) {
        QCOMPARE(listButton.at(i)->size(), QSize(100, 32));
        QCOMPARE(box.PlaceOf(listButton.at(i)).x() - box.PlaceOf(listButton.first()).x(), i * (100 + gap));
    }
}

void tst_KvMessageBox::buttonsTakeTheirLook_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("name");
    QTest::newRow("yes") << "Yes"
                         << "toolBtn";
    QTest::newRow("no") << "No"
                        << "toolBtnEx";
    QTest::newRow("ok") << "OK"
                        << "toolBtn";
    QTest::newRow("cancel") << "Cancel"
                            << "toolBtnEx";
}

void tst_KvMessageBox::buttonsTakeTheirLook()
{
    QFETCH(QString, text);
    const CBox box(QStringLiteral("Question?"), 15);
    QTEST(box.Button(text)->objectName(), "name");
}

void tst_KvMessageBox::titleButtons()
{
    CBox box(QStringLiteral("Question?"), 9);
    QVERIFY(box.Activate());
    int nX = 0;
    for (const QString& strName :
         {QStringLiteral("btnClose"), QStringLiteral("btnMin"), QStringLiteral("btnZoom")}) {
        const auto* pButton = box.findChild<QPushButton*>(strName);
        QVERIFY2(pButton, qPrintable(strName));
        QCOMPARE(pButton->size(), QSize(12, 12));
        QCOMPARE(pButton->text(), QString());
        QVERIFY(pButton->isVisible());
        QVERIFY(box.PlaceOf(pButton).x() > nX);
        nX = box.PlaceOf(pButton).x();
        // The style sheet draws the two that have no use as grey dots when they are disabled.
        QCOMPARE(pButton->isEnabled(), strName == QLatin1String("btnClose"));
    }
}

void tst_KvMessageBox::fonts()
{
    const CBox box(QStringLiteral("Question?"), 15);
    QCOMPARE(box.Message()->font().pixelSize(), 14);
    QCOMPARE(box.Message()->font().family(), QStringLiteral("Avenir"));
    for (const QString& strText :
         {QStringLiteral("Cancel"), QStringLiteral("Yes"), QStringLiteral("No"), QStringLiteral("OK")}) {
        QCOMPARE(box.Button(strText)->font().pixelSize(), 13);
        QCOMPARE(box.Button(strText)->font().weight(), 50);
        QCOMPARE(box.Button(strText)->font().family(), QStringLiteral("Avenir"));
    }
}

void tst_KvMessageBox::windowIsFramelessAndFixed()
{
    QWidget parent;
    const CBox box(QStringLiteral("Question?"), 9, &parent);
    const Qt::WindowFlags wanted = Qt::FramelessWindowHint | Qt::WindowSystemMenuHint
        | Qt::WindowMinimizeButtonHint | Qt::WindowMaximizeButtonHint;
    QCOMPARE(box.windowFlags() & wanted, wanted);
    QVERIFY(box.testAttribute(Qt::WA_TranslucentBackground));
    QCOMPARE(box.minimumSize(), QSize(490, 300));
    QCOMPARE(box.maximumSize(), QSize(490, 300));
    QCOMPARE(box.parentWidget(), &parent);
}

void tst_KvMessageBox::linesAreOfNearlyOneLength_data()
{
    QTest::addColumn<QString>("strText");
    QTest::addColumn<int>("nLines");
    QTest::newRow("one line") << QStringLiteral("Copy file completed!") << 1;
    QTest::newRow("one word too much")
        << QStringLiteral("No enough space, please select other Hard Disk or USB flash drive.") << 2;
    QTest::newRow("three lines") << QStringLiteral(
        "Your drive may be damaged and Tarnwick can not write to this drive, please change "
        "another one and retry. Your files are as they were.")
                                 << 3;
    QTest::newRow("one long word") << QString(30, QLatin1Char('W')) << 1;
}

/** The first and last dark column of each line of text in the picture. */
static QList<QPair<int, int>> InkOfLines(const QImage& image)
{
    QList<QPair<int, int>> listLine;
    bool bInLine = false;
    for (int y = 0; y < image.height(); ++y) {
        int nFirst = image.width();
        int nLast = -1;
        for (int x = 0; x < image.width(); ++x) {
            if (qGray(image.pixel(x, y)) < 160) {
                nFirst = qMin(nFirst, x);
                nLast = x;
            }
        }
        if (nLast >= 0 && !bInLine) {
            listLine.append({nFirst, nLast});
        } else if (nLast >= 0) {
            listLine.last() = {qMin(listLine.last().first, nFirst), qMax(listLine.last().second, nLast)};
        }
        bInLine = nLast >= 0;
    }
    return listLine;
}

void tst_KvMessageBox::linesAreOfNearlyOneLength()
{
    QFETCH(QString, strText);
    QFETCH(int, nLines);
    CBox box(strText, Style_Ok);
    QVERIFY(box.Activate());
    const QRect place = box.PlaceOf(box.Message());
    // The dots of letters such as "i" stand apart from the letters, the lines stand further apart.
    const QList<QPair<int, int>> listLine
        = InkOfLines(box.grab(place).toImage().scaled(place.width(), place.height() / 5));
    QCOMPARE(listLine.size(), nLines);
    int nShortest = place.width();
    int nLongest = 0;
    for (const QPair<int, int>& line : listLine) {
        nShortest = qMin(nShortest, line.second - line.first);
        nLongest = qMax(nLongest, line.second - line.first);
        // In the middle, but for the blank at which the line was broken.
        QVERIFY2(
            qAbs(line.first + line.second - place.width()) <= 10,
            qPrintable(
                QStringLiteral("%1 to %2").arg(QString::number(line.first), QString::number(line.second))));
        QVERIFY(line.first > 0 && line.second < place.width() - 1); // whole
    }
    QVERIFY2(
        nShortest * 10 >= nLongest * 7,
        qPrintable(QStringLiteral("%1 of %2").arg(QString::number(nShortest), QString::number(nLongest))));
    // Balanced anew when it is shown again with another text.
    box.hide();
    box.SetTitle(QStringLiteral("short"));
    box.show();
    QCOMPARE(box.Message()->contentsMargins(), QMargins());
}

void tst_KvMessageBox::messageIsWrappedInHtml_data()
{
    QTest::addColumn<QString>("content");
    QTest::newRow("plain") << "Are you sure?";
    QTest::newRow("empty") << "";
    QTest::newRow("markup") << "See <a href='test:help'>help</a> &amp; more";
    QTest::newRow("place holder") << "100%1 and %2";
}

void tst_KvMessageBox::messageIsWrappedInHtml()
{
    QFETCH(QString, content);
    const CBox box(content, 9);
    QCOMPARE(box.Message()->text(),
             QStringLiteral("<html><head/><body><p style='line-height:25px'>") + content
                 + QStringLiteral("</p></body></html>"));
}

void tst_KvMessageBox::messageLabel()
{
    const CBox box(QStringLiteral("Question?"), 9);
    QVERIFY(!box.Message()->openExternalLinks());
    QVERIFY(box.Message()->wordWrap());
    QCOMPARE(box.Message()->alignment(), Qt::Alignment(Qt::AlignCenter));
}

void tst_KvMessageBox::mask_data()
{
    QTest::addColumn<int>("style");
    QTest::addColumn<QStringList>("buttons");
    const QString strCancel = QStringLiteral("Cancel");
    const QString strYes = QStringLiteral("Yes");
    const QString strNo = QStringLiteral("No");
    const QString strOk = QStringLiteral("OK");
    QTest::newRow("0") << 0 << QStringList();
    QTest::newRow("1") << 1 << QStringList{strYes};
    QTest::newRow("2") << 2 << QStringList{strNo};
    QTest::newRow("3") << 3 << QStringList{strYes, strNo};
    QTest::newRow("4") << 4 << QStringList{strOk};
    QTest::newRow("5") << 5 << QStringList{strYes, strOk};
    QTest::newRow("6") << 6 << QStringList{strNo, strOk};
    QTest::newRow("7") << 7 << QStringList{strYes, strNo, strOk};
    QTest::newRow("8") << 8 << QStringList{strCancel};
    QTest::newRow("9") << 9 << QStringList{strCancel, strYes};
    QTest::newRow("10") << 10 << QStringList{strCancel, strNo};
    QTest::newRow("11") << 11 << QStringList{strCancel, strYes, strNo};
    QTest::newRow("12") << 12 << QStringList{strCancel, strOk};
    QTest::newRow("13") << 13 << QStringList{strCancel, strYes, strOk};
    QTest::newRow("14") << 14 << QStringList{strCancel, strNo, strOk};
    QTest::newRow("15") << 15 << QStringList{strCancel, strYes, strNo, strOk};
    QTest::newRow("16, a bit of no button") << 16 << QStringList();
    QTest::newRow("25, with a bit of no button") << 25 << QStringList{strCancel, strYes};
}

void tst_KvMessageBox::mask()
{
    QFETCH(int, style);
    CBox box(QStringLiteral("Question?"), style);
    QVERIFY(box.Activate());
    QStringList listText;
    for (const QPushButton* pButton : box.VisibleButtons()) {
        listText.append(pButton->text());
    }
    QTEST(listText, "buttons");
}

void tst_KvMessageBox::styleZeroClosesByTitleOnly()
{
    CBox box(QStringLiteral("Question?"), 0);
    CModalAnswerer answerer(CModalAnswerer::TitleButton());
    box.exec();
    QVERIFY(answerer.Answered());
    QCOMPARE(answerer.Buttons(), QStringList());
    QCOMPARE(box.GetClickedBtn(), 0);
}

void tst_KvMessageBox::result_data()
{
    QTest::addColumn<QString>("button");
    QTest::addColumn<int>("code");
    QTest::newRow("yes") << "Yes" << 1;
    QTest::newRow("no") << "No" << 2;
    QTest::newRow("ok") << "OK" << 4;
    QTest::newRow("cancel") << "Cancel" << 8;
    QTest::newRow("title") << CModalAnswerer::TitleButton() << 0;
}

void tst_KvMessageBox::result()
{
    QFETCH(QString, button);
    CBox box(QStringLiteral("Question?"), 15);
    CModalAnswerer answerer(button);
    bool bModal = false;
    answerer.Meanwhile([&] { bModal = QApplication::activeModalWidget() == &box; });
    box.exec();
    QVERIFY(answerer.Answered());
    QVERIFY(bModal);
    QVERIFY(!box.isVisible());
    QTEST(box.GetClickedBtn(), "code");
}

void tst_KvMessageBox::resultOfSlots()
{
    CBox box(QStringLiteral("Question?"), 15);
    const auto answer = [&box](auto pfnSlot) {
        box.show();
        (box.*pfnSlot)();
        return box.isVisible() ? -1 : box.GetClickedBtn();
    };
    QCOMPARE(answer(&KvMessageBox::slotClose_yes), int(Style_Yes));
    QCOMPARE(answer(&KvMessageBox::slotClose_no), int(Style_No));
    QCOMPARE(answer(&KvMessageBox::slotClose_ok), int(Style_Ok));
    QCOMPARE(answer(&KvMessageBox::slotClose_cancel), int(Style_Cancel));
    QCOMPARE(answer(&KvMessageBox::SlotCloseWindow), 0);
}

void tst_KvMessageBox::resultIsZeroAtFirst()
{
    CBox box(QStringLiteral("Question?"), 9);
    QCOMPARE(box.GetClickedBtn(), 0);
    box.show();
    box.close();
    QCOMPARE(box.GetClickedBtn(), 0);
}

void tst_KvMessageBox::keptBoxForgetsItsAnswer()
{
    CBox box(QStringLiteral("Done"), 4);
    CModalAnswerer first(QStringLiteral("OK"));
    box.exec();
    QCOMPARE(box.GetClickedBtn(), 4);
    // The second time the window manager closes it, without any button.
    QMetaObject::invokeMethod(
        &box, [&box] { box.close(); }, Qt::QueuedConnection);
    box.exec();
    QCOMPARE(box.GetClickedBtn(), 0);
}

void tst_KvMessageBox::setBtnText_data()
{
    QTest::addColumn<int>("which");
    QTest::addColumn<QString>("changed");
    QTest::newRow("0, none") << 0 << QString();
    QTest::newRow("1, yes") << 1 << "Yes";
    QTest::newRow("2, no") << 2 << "No";
    QTest::newRow("3, a combination") << 3 << QString();
    QTest::newRow("4, ok") << 4 << "OK";
    QTest::newRow("5, a combination") << 5 << QString();
    QTest::newRow("8, cancel") << 8 << "Cancel";
    QTest::newRow("9, a combination") << 9 << QString();
    QTest::newRow("15, a combination") << 15 << QString();
}

void tst_KvMessageBox::setBtnText()
{
    QFETCH(int, which);
    QFETCH(QString, changed);
    CBox box(QStringLiteral("Question?"), 15);
    QMap<QString, const QPushButton*> mapButton;
    for (const QString& strText :
         {QStringLiteral("Cancel"), QStringLiteral("Yes"), QStringLiteral("No"), QStringLiteral("OK")}) {
        mapButton.insert(strText, box.Button(strText));
    }
    box.SetBtnText(static_cast<KvMessageBox_Style>(which), QStringLiteral("New"));
    for (auto it = mapButton.cbegin(); it != mapButton.cend(); ++it) {
        QCOMPARE(it.value()->text(), it.key() == changed ? QStringLiteral("New") : it.key());
    }
}

void tst_KvMessageBox::setButtonText()
{
    CBox box(QStringLiteral("Question?"), 15);
    QPushButton* pYes = box.Button(QStringLiteral("Yes"));
    QPushButton* pNo = box.Button(QStringLiteral("No"));
    QPushButton* pOk = box.Button(QStringLiteral("OK"));
    QPushButton* pCancel = box.Button(QStringLiteral("Cancel"));
    box.SetButtonText(QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("c"), QStringLiteral("d"));
    QCOMPARE(pYes->text(), QStringLiteral("a"));
    QCOMPARE(pNo->text(), QStringLiteral("b"));
    QCOMPARE(pOk->text(), QStringLiteral("c"));
    QCOMPARE(pCancel->text(), QStringLiteral("d"));
}

void tst_KvMessageBox::icon_data()
{
    QTest::addColumn<QString>("path");
    QTest::newRow("question") << ":/res/Tip/tips_mark.png";
    QTest::newRow("warning") << ":/res/Tip/tips.png";
    QTest::newRow("completed") << ":/res/Tip/tips_completed.png";
}

void tst_KvMessageBox::icon()
{
    QFETCH(QString, path);
    CBox box(QStringLiteral("Question?"), 9);
    box.setIcon(QStringLiteral(":/no/such.png"));
    QVERIFY(box.Icon()->pixmap(Qt::ReturnByValue).isNull());
    box.setIcon(path);
    const QPixmap shown = box.Icon()->pixmap(Qt::ReturnByValue);
    QVERIFY(!shown.isNull());
    QCOMPARE(shown.toImage(), QPixmap(path).toImage());
}

void tst_KvMessageBox::iconDefault()
{
    const CBox box(QStringLiteral("Question?"), 9);
    const QImage image = box.Icon()->pixmap(Qt::ReturnByValue).toImage();
    QVERIFY(!image.isNull());
    QCOMPARE(image, QPixmap(QStringLiteral(":/res/Tip/tips_mark.png")).toImage());
}

void tst_KvMessageBox::iconHidden()
{
    CBox box(QStringLiteral("Question?"), 9);
    QVERIFY(box.Activate());
    QVERIFY(box.Icon()->isVisible());
    box.hideIcon();
    QVERIFY(!box.Icon()->isVisible());
}

void tst_KvMessageBox::contentIsReplacedAsItIs()
{
    CBox box(QStringLiteral("Question?"), 9);
    box.SetDialogInfomationContent(QStringLiteral("plain %1 text"));
    QCOMPARE(box.Message()->text(), QStringLiteral("plain %1 text"));
    box.SetTitle(QStringLiteral("other text"));
    QCOMPARE(box.Message()->text(), QStringLiteral("other text"));
    QCOMPARE(box.windowTitle(), QStringLiteral("Form"));
}

void tst_KvMessageBox::readersHearTheMessage()
{
    CBox box(QStringLiteral("Is <b>this</b> read &amp; heard?"), 9);
    const QAccessibleInterface* pInterface = QAccessible::queryAccessibleInterface(&box);
    QCOMPARE(pInterface->role(), QAccessible::Dialog);
    QCOMPARE(pInterface->text(QAccessible::Name), QStringLiteral("Is this read & heard?"));
    QCOMPARE(QAccessible::queryAccessibleInterface(box.Message())->text(QAccessible::Name),
             QStringLiteral("Is this read & heard?"));
    box.SetTitle(QStringLiteral("Other"));
    QCOMPARE(pInterface->text(QAccessible::Name), QStringLiteral("Other"));
    QCOMPARE(box.windowTitle(), QStringLiteral("Form"));
}

void tst_KvMessageBox::readersHearTheButtons()
{
    CBox box(QStringLiteral("Question?"), 9);
    box.SetBtnText(Style_Yes, QStringLiteral("Stop"));
    box.show();
    const auto heard = [&box](const char* pName) {
        QObject* pObject = box.findChild<QWidget*>(QLatin1String(pName));
        return QAccessible::queryAccessibleInterface(pObject);
    };
    QCOMPARE(heard("btnClose")->text(QAccessible::Name), QStringLiteral("Close"));
    QCOMPARE(heard("btnMin")->text(QAccessible::Name), QStringLiteral("Minimize"));
    QCOMPARE(heard("btnZoom")->text(QAccessible::Name), QStringLiteral("Zoom"));
    QCOMPARE(
        QAccessible::queryAccessibleInterface(box.Button(QStringLiteral("Stop")))->text(QAccessible::Name),
        QStringLiteral("Stop"));
    QVERIFY(heard("label_icon")->state().invisible);
}

void tst_KvMessageBox::setBoxSize()
{
    CBox box(QStringLiteral("Question?"), 9);
    box.setBoxSize(500, 310, 600, 400);
    QCOMPARE(box.minimumSize(), QSize(500, 310));
    QCOMPARE(box.maximumSize(), QSize(600, 400));
    box.show();
    box.resize(600, 400);
    QCOMPARE(box.size(), QSize(600, 400));
}

void tst_KvMessageBox::setBoxContentSize()
{
    CBox box(QStringLiteral("Question?"), 9);
    box.setBoxContentSize(461, 241, 470, 250);
    const auto* pContent = box.findChild<QWidget*>(QStringLiteral("widget"));
    QCOMPARE(pContent->minimumSize(), QSize(461, 241));
    QCOMPARE(pContent->maximumSize(), QSize(470, 250));
    QCOMPARE(box.size(), QSize(490, 300));
}

void tst_KvMessageBox::linkOpensAndBoxStays()
{
    CLinkCatcher catcher;
    CBox box(QStringLiteral("<a href='test:help?a=1'>How to rescue files</a>"), 9);
    QVERIFY(box.Activate());
    QTest::mouseClick(box.Message(), Qt::LeftButton, {}, box.Message()->rect().center());
    QCOMPARE(catcher.m_listUrl, QList<QUrl>{QUrl(QStringLiteral("test:help?a=1"))});
    QVERIFY(box.isVisible());
    QCOMPARE(box.GetClickedBtn(), 0);
}

void tst_KvMessageBox::peekPasswordDoesNothing()
{
    CBox box(QStringLiteral("Question?"), 9);
    box.show();
    box.slot_peekPassword();
    QVERIFY(box.isVisible());
    QCOMPARE(box.GetClickedBtn(), 0);
}

void tst_KvMessageBox::keyEndsNothing_data()
{
    QTest::addColumn<Qt::Key>("key");
    QTest::addColumn<QString>("focus");
    const QList<QPair<QByteArray, Qt::Key>> listKey{
        {"Escape", Qt::Key_Escape}, {"Return", Qt::Key_Return}, {"Enter", Qt::Key_Enter}};
    for (const auto& key : listKey) {
        QTest::addRow("%s on the box", key.first.constData()) << key.second << QString();
        QTest::addRow("%s on Yes", key.first.constData()) << key.second << "Yes";
        QTest::addRow("%s on Cancel", key.first.constData()) << key.second << "Cancel";
        QTest::addRow("%s on the title's button", key.first.constData()) << key.second << "btnClose";
    }
}

void tst_KvMessageBox::keyEndsNothing()
{
    QFETCH(Qt::Key, key);
    QFETCH(QString, focus);
    CBox box(QStringLiteral("Question?"), 9);
    QVERIFY(box.Activate());
    QWidget* pFocus = &box;
    if (!focus.isEmpty()) {
        pFocus = focus == QLatin1String("btnClose") ? box.Close() : box.Button(focus);
        pFocus->setFocus();
    }
    QVERIFY(pFocus->hasFocus());
    QTest::keyClick(pFocus, key);
    QVERIFY(box.isVisible());
    QCOMPARE(box.GetClickedBtn(), 0);
}

void tst_KvMessageBox::spaceOnAButtonAnswers()
{
    CBox box(QStringLiteral("Question?"), 9);
    QVERIFY(box.Activate());
    QPushButton* pYes = box.Button(QStringLiteral("Yes"));
    pYes->setFocus();
    QTest::keyClick(pYes, Qt::Key_Space);
    QVERIFY(!box.isVisible());
    QCOMPARE(box.GetClickedBtn(), 1);
}

void tst_KvMessageBox::tabGoesFromLeftToRight_data()
{
    QTest::addColumn<int>("style");
    QTest::addColumn<QStringList>("texts");
    QTest::newRow("OK alone") << 4 << QStringList{"OK"};
    QTest::newRow("Cancel alone") << 8 << QStringList{"Cancel"};
    QTest::newRow("Yes and Cancel") << 9 << QStringList{"Cancel", "Yes"};
    QTest::newRow("all four") << 15 << QStringList{"Cancel", "Yes", "No", "OK"};
}

// The two title buttons without a use are passed over, the third comes last.
void tst_KvMessageBox::tabGoesFromLeftToRight()
{
    QFETCH(int, style);
    QFETCH(QStringList, texts);
    CBox box(QStringLiteral("Question?"), style);
    QVERIFY(box.Activate());
    QVERIFY(box.hasFocus());
    QList<QPushButton*> listStop = box.VisibleButtons();
    QCOMPARE(listStop.size(), texts.size());
    for (int n = 0; n < texts.size(); ++n) {
        QCOMPARE(listStop.at(n)->text(), texts.at(n));
    }
    listStop.append(box.Close());
    for (int n = 0; n < 2 * listStop.size(); ++n) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        QCOMPARE(QApplication::focusWidget(), listStop.at(n % listStop.size()));
    }
    box.setFocus();
    for (int n = 2 * listStop.size() - 1; n >= 0; --n) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Backtab);
        QCOMPARE(QApplication::focusWidget(), listStop.at(n % listStop.size()));
    }
    QVERIFY(box.isVisible());
    listStop.first()->setFocus();
    QTest::keyClick(listStop.first(), Qt::Key_Space);
    QVERIFY(!box.isVisible());
    QVERIFY(box.GetClickedBtn() != 0);
}

void tst_KvMessageBox::dragFrom_data()
{
    QTest::addColumn<QString>("child");
    QTest::newRow("the box") << "";
    QTest::newRow("the title") << "frame_title";
    QTest::newRow("the message") << "label_text";
    QTest::newRow("the icon") << "label_icon";
    QTest::newRow("the content") << "widget";
}

// Events go to the child under the press until its release, as in a real window.
void tst_KvMessageBox::dragFrom()
{
    QFETCH(QString, child);
    CBox box(QStringLiteral("Are you sure?"), 9);
    QVERIFY(box.Activate());
    QWidget* pChild = child.isEmpty() ? &box : box.findChild<QWidget*>(child);
    const QPoint ptLocal(2, 2);
    const QPoint ptGlobal = pChild->mapToGlobal(ptLocal);

    SendPress(pChild, ptLocal);
    SendMove(pChild, ptGlobal + QPoint(30, 20));
    QCOMPARE(box.pos(), START + QPoint(30, 20));
    SendMove(pChild, ptGlobal + QPoint(-40, 50));
    QCOMPARE(box.pos(), START + QPoint(-40, 50));

    SendRelease(pChild, ptGlobal + QPoint(-40, 50));
    SendMove(pChild, ptGlobal + QPoint(100, 100));
    QCOMPARE(box.pos(), START + QPoint(-40, 50));
}

void tst_KvMessageBox::noDrag_data()
{
    QTest::addColumn<Qt::MouseButton>("pressed");
    QTest::addColumn<Qt::MouseButtons>("held");
    QTest::addColumn<QPoint>("wanted");
    QTest::addColumn<bool>("moves");
    const Qt::MouseButtons none = Qt::NoButton;
    const Qt::MouseButtons left = Qt::LeftButton;
    const Qt::MouseButtons right = Qt::RightButton;
    QTest::newRow("left") << Qt::LeftButton << left << QPoint(300, 200) << true;
    QTest::newRow("any button held") << Qt::LeftButton << right << QPoint(300, 200) << true;
    QTest::newRow("no button held") << Qt::LeftButton << none << QPoint(300, 200) << false;
    QTest::newRow("right press") << Qt::RightButton << right << QPoint(300, 200) << false;
    QTest::newRow("no press") << Qt::NoButton << left << QPoint(300, 200) << false;
    QTest::newRow("corner at the threshold") << Qt::LeftButton << left << QPoint(6, -4) << false;
    QTest::newRow("corner past the threshold") << Qt::LeftButton << left << QPoint(6, -5) << true;
}

void tst_KvMessageBox::noDrag()
{
    QFETCH(Qt::MouseButton, pressed);
    QFETCH(Qt::MouseButtons, held);
    QFETCH(QPoint, wanted);
    QFETCH(bool, moves);
    CBox box(QStringLiteral("Are you sure?"), 9);
    QVERIFY(box.Activate());
    const QPoint ptPress(20, 60);
    // Without tracking a move with no button held would not get there at all.
    box.setMouseTracking(true);
    if (pressed != Qt::NoButton) {
        SendPress(&box, ptPress, pressed);
    }
    SendMove(&box, wanted + ptPress, held);
    QCOMPARE(box.pos(), moves ? wanted : START);
}

// The label keeps the release for its links; the drag must end all the same.
void tst_KvMessageBox::noDragAfterReleaseOnTheMessage()
{
    CBox box(QStringLiteral("Are you sure?"), 9);
    QVERIFY(box.Activate());
    QLabel* pLabel = box.Message();
    const QPoint ptGlobal = pLabel->mapToGlobal({2, 2});
    SendPress(pLabel, {2, 2});
    SendRelease(pLabel, ptGlobal);
    SendMove(&box, ptGlobal + QPoint(50, 50), Qt::RightButton);
    QCOMPARE(box.pos(), START);
}

void tst_KvMessageBox::dragGoesOnAfterTheOrigin()
{
    CBox box(QStringLiteral("Are you sure?"), 9);
    QVERIFY(box.Activate());
    const QPoint ptPress(20, 60);
    SendPress(&box, ptPress);
    SendMove(&box, QPoint(200, 100) + ptPress);
    SendMove(&box, QPoint(0, 0) + ptPress);
    QCOMPARE(box.pos(), QPoint(200, 100));
    SendMove(&box, QPoint(50, 40) + ptPress);
    QCOMPARE(box.pos(), QPoint(50, 40));
}

void tst_KvMessageBox::pressTakesFocus()
{
    CBox box(QStringLiteral("Are you sure?"), 9);
    QVERIFY(box.Activate());
    QPushButton* pYes = box.Button(QStringLiteral("Yes"));
    pYes->setFocus();
    SendPress(&box, {20, 60}, Qt::RightButton);
    QVERIFY(pYes->hasFocus());
    SendPress(&box, {20, 60});
    QVERIFY(box.hasFocus());
}

void tst_KvMessageBox::eventsAccepted()
{
    CBox box(QStringLiteral("Are you sure?"), 9);
    for (const Qt::MouseButton button : {Qt::LeftButton, Qt::RightButton}) {
        QMouseEvent press(QEvent::MouseButtonPress, QPoint(9, 9), START, button, button, Qt::NoModifier);
        QMouseEvent move(QEvent::MouseMove, QPoint(9, 9), START, Qt::NoButton, button, Qt::NoModifier);
        QMouseEvent release(QEvent::MouseButtonRelease, QPoint(9, 9), START, button, Qt::NoButton,
                            Qt::NoModifier);
        for (QMouseEvent* pEvent : {&press, &move, &release}) {
            pEvent->ignore();
        }
        box.mousePressEvent(&press);
        QVERIFY(press.isAccepted());
        box.mouseMoveEvent(&move);
        QVERIFY(move.isAccepted());
        box.mouseReleaseEvent(&release);
        QVERIFY(release.isAccepted());
    }
}

void tst_KvMessageBox::panelIsPainted()
{
    CBox box(QStringLiteral("Are you sure?"), 9);
    QVERIFY(box.Activate());
    QImage image(box.size(), QImage::Format_ARGB32);
    image.fill(Qt::transparent);
    box.render(&image, QPoint(), QRegion(), QWidget::DrawChildren);
    QCOMPARE(image.pixelColor(0, 0).alpha(), 0);
    const int nShadow = image.pixelColor(2, 150).alpha();
    QVERIFY2(nShadow > 0 && nShadow < 255, qPrintable(QString::number(nShadow)));
    QCOMPARE(image.pixel(20, 150), qRgba(255, 255, 255, 255));
}

void tst_KvMessageBox::nothingInTheShadow()
{
    CBox box(QStringLiteral("Are you sure?"), 15);
    QVERIFY(box.Activate());
    const QRect panel = box.rect().adjusted(4, 4, -4, -4);
    for (const QWidget* pChild : box.findChildren<QWidget*>()) {
        QVERIFY2(panel.contains(box.PlaceOf(pChild)), qPrintable(pChild->objectName()));
    }
    // The title is the topmost thing of the panel.
    QCOMPARE(box.PlaceOf(box.findChild<QFrame*>(QStringLiteral("frame_title"))).topLeft(), QPoint(5, 5));
}

void tst_KvMessageBox::rowsAreCentred_data()
{
    QTest::addColumn<int>("style");
    for (const int nStyle : {4, 8, 9, 11, 15}) {
        QTest::addRow("style %d", nStyle) << nStyle;
    }
}

// Twice the middle of a place, so that a half pixel needs no fraction.
static int DoubleMiddle(const QRect& place) { return 2 * place.x() + place.width(); }

void tst_KvMessageBox::rowsAreCentred()
{
    QFETCH(int, style);
    CBox box(QStringLiteral("Are you sure?"), style);
    QVERIFY(box.Activate());
    QRect row;
    for (const QPushButton* pButton : box.VisibleButtons()) {
        row |= box.PlaceOf(pButton);
    }
    QVERIFY(qAbs(DoubleMiddle(row) - box.width()) <= 1);
    QVERIFY(qAbs(DoubleMiddle(box.PlaceOf(box.Icon())) - box.width()) <= 1);
    QVERIFY(qAbs(DoubleMiddle(box.PlaceOf(box.Message())) - box.width()) <= 1);
}

void tst_KvMessageBox::longMessageFits_data()
{
    QTest::addColumn<QString>("message");
    QTest::newRow("English, removal")
        << "The destination storage device has been removed! Please check and connect the storage device "
           "then try again.";
    QTest::newRow("English, read-only")
        << "Your drive may be damaged and Tarnwick can not write to this drive, please change another one "
           "and retry.";
    QTest::newRow("German") << QString::fromUtf8(
        "Das Zielspeichergerät wurde entfernt! Bitte überprüfen Sie das Speichergerät, schließen Sie es "
        "wieder an und versuchen Sie es anschließend noch einmal. Bereits kopierte Dateien bleiben "
        "erhalten.");
    QTest::newRow("Russian") << QString::fromUtf8(
        "Целевое устройство хранения данных было извлечено! Проверьте устройство, подключите его снова и "
        "повторите попытку. Уже скопированные файлы останутся на месте.");
    QTest::newRow("Japanese, without blanks") << QString::fromUtf8(
        "保存先のストレージデバイスが取り外されました。デバイスの接続を確認してもう一度接続してから、"
        "やり直してください。すでにコピーされたファイルはそのまま残ります。");
    QTest::newRow("long compound words") << QString::fromUtf8(
        "Zielspeichergeräteverbindungsüberprüfungsfehlermeldung Zielspeichergeräteverbindungsüberprüfung");
}

void tst_KvMessageBox::longMessageFits()
{
    QFETCH(QString, message);
    CBox box(message, 9);
    QVERIFY(box.Activate());
    const QLabel* pLabel = box.Message();
    const QRect place = box.PlaceOf(pLabel);
    QCOMPARE(place.width(), 400);
    QVERIFY2(pLabel->heightForWidth(place.width()) <= place.height(),
             qPrintable(QStringLiteral("needs %1 of %2 pixels")
                            .arg(pLabel->heightForWidth(place.width()))
                            .arg(place.height())));
    QVERIFY(place.top() >= box.PlaceOf(box.Icon()).bottom());
    for (const QPushButton* pButton : box.VisibleButtons()) {
        QVERIFY(place.bottom() < box.PlaceOf(pButton).top());
        QVERIFY(pButton->sizeHint().width() <= pButton->width());
    }
}

QTEST_MAIN(tst_KvMessageBox)
#include "tst_KvMessageBox.moc"
