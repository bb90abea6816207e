#include "kit/KvMessageBox.h"
#include "support/CModalAnswerer.h"
#include "support/SendMouse.h"
#include "support/Texts.h"
#include "support/Widgets.h"

#include <QApplication>
#include <QDesktopServices>
#include <QFrame>
#include <QLabel>
#include <QLayout>
#include <QPushButton>
#include <QSignalSpy>

namespace {

const QPoint START(120, 130);

class CBox : public KvMessageBox
{
public:
    explicit CBox(int nStyle, const QString& strContent = "Are you sure?")
        : KvMessageBox(strContent, nStyle)
    {
    }

    bool Activate()
    {
        show();
        move(START);
        return ShowActive(this);
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

    QLabel* Message() const { return findChild<QLabel*>("label_text"); }
    QLabel* Icon() const { return findChild<QLabel*>("label_icon"); }
    QImage IconImage() const { return Icon()->pixmap(Qt::ReturnByValue).toImage(); }
    QLabel* Detail() const { return findChild<QLabel*>("label_detail"); }
    QPushButton* Link() const { return findChild<QPushButton*>("m_pDetailLink"); }
    QPushButton* Close() const { return findChild<QPushButton*>("btnClose"); }
    QWidget* Content() const { return findChild<QWidget*>("widget"); }
    QFrame* Title() const { return findChild<QFrame*>("frame_title"); }

    QList<QPushButton*> VisibleButtons() const { return CModalAnswerer::VisibleButtons(this); }
    QString VisibleTexts() const
    {
        QStringList listText;
        for (const QPushButton* pButton : VisibleButtons()) {
            listText.append(pButton->text());
        }
        return listText.join(' ');
    }
};

// Opens links for the desktop while it lives.
class CLinkCatcher : public QObject
{
    Q_OBJECT

public:
    CLinkCatcher() { QDesktopServices::setUrlHandler("test", this, "Open"); }
    ~CLinkCatcher() override { QDesktopServices::unsetUrlHandler("test"); }

    QList<QUrl> m_listUrl;

public slots:
    void Open(const QUrl& url) { m_listUrl.append(url); }
};

}

// What every dialog does, the box included, is tested by tst_KvStyleDialog.
class tst_KvMessageBox : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void form();
    void button_data();
    void button();
    void titleButtons();
    void buttonsInARow_data();
    void buttonsInARow();
    void nothingInTheShadow();
    void messageIsWrappedInHtml_data();
    void messageIsWrappedInHtml();
    void messageIsReplacedAsItIs();
    void linesAreOfNearlyOneLength_data();
    void linesAreOfNearlyOneLength();
    void longMessageFits_data();
    void longMessageFits();
    void icon_data();
    void icon();
    void emptyDetailIsNotThere();
    void detail_data();
    void detail();
    void detailHasNothingOfTheOneBefore();
    void detailIsPlainText();
    void longDetailFits_data();
    void longDetailFits();
    void detailLinkByKey_data();
    void detailLinkByKey();
    void readersHearTheDetail();
    void setBtnText_data();
    void setBtnText();
    void setButtonText();
    void sizesCanBeSet();
    void readersHearTheButtons();
    void answer_data();
    void answer();
    void slotAnswers_data();
    void slotAnswers();
    void keptBoxForgetsItsAnswer();
    void linkOpensAndBoxStays();
    void keyEndsNothing_data();
    void keyEndsNothing();
    void tabGoesFromLeftToRight_data();
    void tabGoesFromLeftToRight();
    void dragFrom_data();
    void dragFrom();
};

void tst_KvMessageBox::initTestCase()
{
    QVERIFY(!ProgramSheet().isEmpty());
    qApp->setStyleSheet(ProgramSheet());
}

void tst_KvMessageBox::form()
{
    QWidget parent;
    KvMessageBox plain("Question?", 9, &parent);
    QCOMPARE(plain.parentWidget(), &parent);
    CBox box(15);
    QVERIFY(box.Activate());
    QCOMPARE(box.objectName(), QString("KvMessageBox"));
    QCOMPARE(box.windowTitle(), QString("Form"));
    QCOMPARE(box.minimumSize(), QSize(490, 300));
    QCOMPARE(box.maximumSize(), QSize(490, 300));
    QCOMPARE(box.layout()->spacing(), 0);
    QCOMPARE(box.Title()->minimumSize(), QSize(460, 35));
    QCOMPARE(box.Title()->maximumSize(), QSize(480, 35));
    QCOMPARE(box.Title()->frameShape(), QFrame::StyledPanel);
    QCOMPARE(box.Title()->frameShadow(), QFrame::Raised);
    QCOMPARE(box.Title()->layout()->spacing(), 8);
    QCOMPARE(box.Title()->layout()->contentsMargins().left(), 10);
    QCOMPARE(box.Content()->minimumSize(), QSize(460, 240));
    QCOMPARE(box.Content()->maximumWidth(), 485);
    QCOMPARE(box.Content()->layout()->spacing(), 15);
    QCOMPARE(box.Content()->layout()->contentsMargins(), QMargins());
    QCOMPARE(box.Icon()->size(), QSize(40, 40));
    QVERIFY(!box.Message()->openExternalLinks());
    QVERIFY(box.Message()->wordWrap());
    QCOMPARE(box.Message()->alignment(), Qt::Alignment(Qt::AlignCenter));
    QCOMPARE(box.Message()->font().pixelSize(), 14);
    QCOMPARE(box.Message()->font().family(), QString("Avenir"));
}

void tst_KvMessageBox::button_data()
{
    QTest::addColumn<QString>("strName");
    QTest::newRow("Yes") << "toolBtn";
    QTest::newRow("No") << "toolBtnEx";
    QTest::newRow("OK") << "toolBtn";
    QTest::newRow("Cancel") << "toolBtnEx";
}

void tst_KvMessageBox::button()
{
    const CBox box(15);
    const QPushButton* pButton = box.Button(QTest::currentDataTag());
    QVERIFY(pButton);
    QTEST(pButton->objectName(), "strName");
    QCOMPARE(pButton->font().pixelSize(), 13);
    QCOMPARE(pButton->font().weight(), 50);
    QCOMPARE(pButton->font().family(), QString("Avenir"));
}

void tst_KvMessageBox::titleButtons()
{
    CBox box(9);
    QVERIFY(box.Activate());
    int nX = 0;
    for (const char* pName : {"btnClose", "btnMin", "btnZoom"}) {
        const auto* pButton = box.findChild<QPushButton*>(pName);
        QVERIFY2(pButton, pName);
        QCOMPARE(pButton->size(), QSize(12, 12));
        QCOMPARE(pButton->text(), QString());
        QVERIFY(pButton->isVisible());
        QVERIFY(PlaceIn(&box, pButton).x() > nX);
        nX = PlaceIn(&box, pButton).x();
        // The style sheet draws the two that have no use as grey dots when they are disabled.
        QCOMPARE(pButton->isEnabled(), pButton == box.Close());
    }
}

void tst_KvMessageBox::buttonsInARow_data()
{
    QTest::addColumn<int>("nStyle");
    QTest::addColumn<QString>("strTexts");
    QTest::addColumn<int>("nGap");
    QTest::newRow("none") << 0 << "" << 0;
    QTest::newRow("yes") << 1 << "Yes" << 0;
    QTest::newRow("no") << 2 << "No" << 0;
    QTest::newRow("yes, no") << 3 << "Yes No" << 32;
    QTest::newRow("ok") << 4 << "OK" << 0;
    QTest::newRow("yes, ok") << 5 << "Yes OK" << 32;
    QTest::newRow("no, ok") << 6 << "No OK" << 32;
    QTest::newRow("yes, no, ok") << 7 << "Yes No OK" << 32;
    QTest::newRow("cancel") << 8 << "Cancel" << 0;
    QTest::newRow("yes, cancel") << 9 << "Cancel Yes" << 32;
    QTest::newRow("no, cancel") << 10 << "Cancel No" << 32;
    QTest::newRow("yes, no, cancel") << 11 << "Cancel Yes No" << 32;
    QTest::newRow("ok, cancel") << 12 << "Cancel OK" << 32;
    QTest::newRow("yes, ok, cancel") << 13 << "Cancel Yes OK" << 32;
    QTest::newRow("no, ok, cancel") << 14 << "Cancel No OK" << 32;
    QTest::newRow("all four, closer so that they fit") << 15 << "Cancel Yes No OK" << 20;
    QTest::newRow("a bit of no button") << 16 << "" << 0;
    QTest::newRow("with a bit of no button") << 25 << "Cancel Yes" << 32;
}

// Twice the middle of a place, so that a half pixel needs no fraction.
static int DoubleMiddle(const QRect& place) { return 2 * place.x() + place.width(); }

void tst_KvMessageBox::buttonsInARow()
{
    QFETCH(int, nStyle);
    QFETCH(QString, strTexts);
    QFETCH(int, nGap);
    CBox box(nStyle);
    QVERIFY(box.Activate());
    QCOMPARE(box.VisibleTexts(), strTexts);
    QRect row;
    for (const QPushButton* pButton : box.VisibleButtons()) {
        const QRect place = PlaceIn(&box, pButton);
        QCOMPARE(place.size(), QSize(100, 32));
        QVERIFY(row.isNull() || place.x() == row.right() + 1 + nGap);
        row |= place;
    }
    QVERIFY(row.isNull() || qAbs(DoubleMiddle(row) - box.width()) <= 1);
    QVERIFY(qAbs(DoubleMiddle(PlaceIn(&box, box.Icon())) - box.width()) <= 1);
    QVERIFY(qAbs(DoubleMiddle(PlaceIn(&box, box.Message())) - box.width()) <= 1);
}

void tst_KvMessageBox::nothingInTheShadow()
{
    CBox box(15);
    QVERIFY(box.Activate());
    const QRect panel = box.rect().adjusted(4, 4, -4, -4);
    for (const QWidget* pChild : box.findChildren<QWidget*>()) {
        QVERIFY2(panel.contains(PlaceIn(&box, pChild)), qPrintable(pChild->objectName()));
    }
    // The title is the topmost thing of the panel.
    QCOMPARE(PlaceIn(&box, box.Title()).topLeft(), QPoint(5, 5));
}

void tst_KvMessageBox::messageIsWrappedInHtml_data()
{
    QTest::addColumn<QString>("strContent");
    QTest::newRow("plain") << "Are you sure?";
    QTest::newRow("empty") << "";
    QTest::newRow("markup") << "See <a href='test:help'>help</a> &amp; more";
    QTest::newRow("place holder") << "100%1 and %2";
}

void tst_KvMessageBox::messageIsWrappedInHtml()
{
    QFETCH(QString, strContent);
    const CBox box(9, strContent);
    QCOMPARE(box.Message()->text(),
             "<html><head/><body><p style='line-height:25px'>" + strContent + "</p></body></html>");
}

void tst_KvMessageBox::messageIsReplacedAsItIs()
{
    CBox box(9, "Is <b>this</b> read &amp; heard?");
    QCOMPARE(Heard(&box)->role(), QAccessible::Dialog);
    QCOMPARE(NameHeard(&box), QString("Is this read & heard?"));
    QCOMPARE(NameHeard(box.Message()), QString("Is this read & heard?"));
    box.SetDialogInfomationContent("plain %1 text");
    QCOMPARE(box.Message()->text(), QString("plain %1 text"));
    box.SetTitle("other text");
    QCOMPARE(box.Message()->text(), QString("other text"));
    QCOMPARE(NameHeard(&box), QString("other text"));
    QCOMPARE(box.windowTitle(), QString("Form"));
}

void tst_KvMessageBox::linesAreOfNearlyOneLength_data()
{
    QTest::addColumn<int>("nLines");
    QTest::addColumn<QString>("strText");
    QTest::newRow("one line") << 1 << TEXT_COMPLETED;
    QTest::newRow("one word too much") << 2 << TEXT_NO_SPACE;
    QTest::newRow("three lines") << 3 << TEXT_READ_ONLY + " Your files are as they were.";
    QTest::newRow("one long word") << 1 << QString(30, 'W');
}

// The first and last dark column of each line of text in the picture.
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
    QFETCH(int, nLines);
    QFETCH(QString, strText);
    CBox box(Style_Ok, strText);
    QVERIFY(box.Activate());
    const QRect place = PlaceIn(&box, box.Message());
    // The dots of letters such as "i" stand apart from the letters, the lines stand further apart.
    const QList<QPair<int, int>> listLine
        = InkOfLines(box.grab(place).toImage().scaled(place.width(), place.height() / 5));
    QCOMPARE(listLine.size(), nLines);
    int nShortest = place.width();
    int nLongest = 0;
    for (const auto& [nFirst, nLast] : listLine) {
        nShortest = qMin(nShortest, nLast - nFirst);
        nLongest = qMax(nLongest, nLast - nFirst);
        // In the middle, but for the blank at which the line was broken.
        QVERIFY2(qAbs(nFirst + nLast - place.width()) <= 10,
                 qPrintable(QString("%1 to %2").arg(nFirst).arg(nLast)));
        QVERIFY(nFirst > 0 && nLast < place.width() - 1); // whole
    }
    QVERIFY2(nShortest * 10 >= nLongest * 7, qPrintable(QString("%1 of %2").arg(nShortest).arg(nLongest)));
    // Balanced anew when it is shown again with another text.
    box.hide();
    box.SetTitle("short");
    box.show();
    QCOMPARE(box.Message()->contentsMargins(), QMargins());
}

void tst_KvMessageBox::longMessageFits_data()
{
    QTest::addColumn<QString>("strMessage");
    QTest::newRow("English, removal") << TEXT_REMOVED;
    QTest::newRow("English, read-only") << TEXT_READ_ONLY;
    QTest::newRow("German")
        << "Das Zielspeichergerät wurde entfernt! Bitte überprüfen Sie das Speichergerät, schließen Sie es "
           "wieder an und versuchen Sie es anschließend noch einmal. Bereits kopierte Dateien bleiben "
           "erhalten.";
    QTest::newRow("Russian")
        << "Целевое устройство хранения данных было извлечено! Проверьте устройство, подключите его снова и "
           "повторите попытку. Уже скопированные файлы останутся на месте.";
    QTest::newRow("Japanese, without blanks")
        << "保存先のストレージデバイスが取り外されました。デバイスの接続を確認してもう一度接続してから、"
           "やり直してください。すでにコピーされたファイルはそのまま残ります。";
    QTest::newRow("long compound words") << "Zielspeichergeräteverbindungsüberprüfungsfehlermeldung "
                                            "Zielspeichergeräteverbindungsüberprüfung";
}

void tst_KvMessageBox::longMessageFits()
{
    QFETCH(QString, strMessage);
    CBox box(9, strMessage);
    QVERIFY(box.Activate());
    const QRect place = PlaceIn(&box, box.Message());
    QCOMPARE(place.width(), 400);
    const int nNeeded = box.Message()->heightForWidth(place.width());
    QVERIFY2(nNeeded <= place.height(),
             qPrintable(QString("needs %1 of %2 pixels").arg(nNeeded).arg(place.height())));
    QVERIFY(place.top() >= PlaceIn(&box, box.Icon()).bottom());
    for (const QPushButton* pButton : box.VisibleButtons()) {
        QVERIFY(place.bottom() < PlaceIn(&box, pButton).top());
        QVERIFY(pButton->sizeHint().width() <= pButton->width());
    }
}

void tst_KvMessageBox::icon_data()
{
    QTest::addColumn<QString>("strPath");
    QTest::newRow("question") << ":/res/Tip/tips_mark.png";
    QTest::newRow("warning") << ":/res/Tip/tips.png";
    QTest::newRow("completed") << ":/res/Tip/tips_completed.png";
}

void tst_KvMessageBox::icon()
{
    QFETCH(QString, strPath);
    CBox box(9);
    QVERIFY(!box.IconImage().isNull());
    QCOMPARE(box.IconImage(), QPixmap(":/res/Tip/tips_mark.png").toImage());
    box.setIcon(":/no/such.png");
    QVERIFY(box.IconImage().isNull());
    box.setIcon(strPath);
    QVERIFY(!box.IconImage().isNull());
    QCOMPARE(box.IconImage(), QPixmap(strPath).toImage());
    QVERIFY(box.Icon()->isVisibleTo(&box));
    box.hideIcon();
    QVERIFY(!box.Icon()->isVisibleTo(&box));
}

// Before it is set, and after it was taken away again.
void tst_KvMessageBox::emptyDetailIsNotThere()
{
    CBox before(9);
    QVERIFY(before.Activate());
    const QImage imgBefore = before.grab().toImage();
    before.close();
    CBox after(9);
    after.SetDetail("38 of 1,242 items were not copied whole.", ENDetail::WARNING);
    after.SetDetailLink("Show the list");
    QVERIFY(after.Activate());
    QVERIFY(after.grab().toImage() != imgBefore);
    after.SetDetail(QString(), ENDetail::PLAIN);
    after.SetDetailLink(QString());
    QVERIFY(!after.Detail()->isVisible());
    QCOMPARE(after.grab().toImage(), imgBefore);
    QCOMPARE(after.Content()->layout()->spacing(), 15);
}

void tst_KvMessageBox::detail_data()
{
    QTest::addColumn<int>("nKind");
    QTest::addColumn<QRgb>("nInk");
    QTest::addColumn<bool>("bShownBefore");
    for (const bool bShownBefore : {false, true}) {
        const auto row = [bShownBefore](const char* pName, ENDetail enKind, QRgb nInk) {
            QTest::addRow("%s%s", pName, bShownBefore ? ", shown before" : "")
                << int(enKind) << nInk << bShownBefore;
        };
        row("plain", ENDetail::PLAIN, qRgb(0x58, 0x58, 0x58));
        row("good", ENDetail::GOOD, qRgb(0x48, 0x48, 0x48));
        row("warning", ENDetail::WARNING, qRgb(0xa6, 0x3c, 0x00));
    }
}

void tst_KvMessageBox::detail()
{
    QFETCH(int, nKind);
    QFETCH(bool, bShownBefore);
    CBox box(Style_Ok, TEXT_COMPLETED);
    QVERIFY(!bShownBefore || box.Activate());
    box.SetDetailLink(QString());
    box.SetDetail("38 of 1,242 items were not copied whole.", ENDetail(nKind));
    QVERIFY(box.Activate());
    const QRect place = PlaceIn(&box, box.Detail());
    QVERIFY(box.Detail()->isVisible());
    QVERIFY(!box.Link()->isVisible());
    QVERIFY(place.top() > PlaceIn(&box, box.Message()).bottom());
    QVERIFY(place.bottom() < PlaceIn(&box, box.Button("OK")).top());
    QTEST(box.Detail()->palette().color(box.Detail()->foregroundRole()).rgb(), "nInk");
    // Beside its text stands a sign, but for the plain one; the warning has a ground of its own.
    const QImage image = box.grab().toImage();
    const QRgb nGround = image.pixel(place.left() + 1, place.top());
    const bool bWarning = ENDetail(nKind) == ENDetail::WARNING;
    QCOMPARE(nGround, bWarning ? qRgb(0xff, 0xf2, 0xe7) : qRgb(255, 255, 255));
    bool bSign = false;
    for (int x = place.left(); x < place.left() + 16; ++x) {
        const QColor color = image.pixelColor(x, place.center().y());
        bSign = bSign || color.saturation() > 100;
    }
    QCOMPARE(bSign, ENDetail(nKind) != ENDetail::PLAIN);
}

// A box that is kept tells one thing after another.
void tst_KvMessageBox::detailHasNothingOfTheOneBefore()
{
    const QString strShort = "Nothing was copied.";
    CBox box(Style_Ok, TEXT_COMPLETED);
    box.SetDetail(strShort, ENDetail::WARNING);
    const QSize size = box.Detail()->size();
    box.SetDetail(QString("word ").repeated(60), ENDetail::WARNING);
    QVERIFY(box.Detail()->height() > size.height());
    QVERIFY(box.Detail()->font().pixelSize() < 13); // else it would not fit
    box.SetDetail(strShort, ENDetail::WARNING);
    QCOMPARE(box.Detail()->size(), size);
    QCOMPARE(box.Detail()->font().pixelSize(), 13);
}

void tst_KvMessageBox::detailIsPlainText()
{
    CBox box(Style_Ok);
    box.SetDetail("<b>STICK</b> &amp; more", ENDetail::PLAIN);
    QCOMPARE(box.Detail()->textFormat(), Qt::PlainText);
    QCOMPARE(box.Detail()->text(), QString("<b>STICK</b> &amp; more"));
}

void tst_KvMessageBox::longDetailFits_data()
{
    QTest::addColumn<QString>("strMessage");
    QTest::addColumn<QString>("strDetail");
    QTest::addColumn<bool>("bShownBefore");
    const QString strUnsure = "The disk did not confirm that everything is on it. Do not rely on this copy.\n"
                              "The list could not be saved on the disk.";
    for (const bool bShownBefore : {false, true}) {
        const auto row
            = [bShownBefore](const char* pName, const QString& strMessage, const QString& strDetail) {
                  QTest::addRow("%s%s", pName, bShownBefore ? ", shown before" : "")
                      << strMessage << strDetail << bShownBefore;
              };
        row("completion", TEXT_COMPLETED, strUnsure);
        row("removal", TEXT_REMOVED, "Everything was on the disk before it was removed.");
        row("no space", TEXT_NO_SPACE, "5.20 GB are needed, 3.10 GB are free.");
        row("German", "Kopieren der Dateien abgeschlossen!",
            "Das Laufwerk hat nicht bestätigt, dass alles darauf gesichert ist. Verlassen Sie sich nicht auf "
            "diese Kopie.\nDie Liste konnte nicht auf dem Laufwerk gesichert werden.");
    }
}

void tst_KvMessageBox::longDetailFits()
{
    QFETCH(QString, strMessage);
    QFETCH(QString, strDetail);
    QFETCH(bool, bShownBefore);
    CBox box(Style_Ok, strMessage);
    QVERIFY(!bShownBefore || box.Activate());
    box.SetDetail(strDetail, ENDetail::WARNING);
    box.SetDetailLink("Show the list");
    QVERIFY(box.Activate());
    QCOMPARE(box.size(), QSize(490, 300));
    const QRect placeMessage = PlaceIn(&box, box.Message());
    const QRect placeDetail = PlaceIn(&box, box.Detail());
    const QRect placeLink = PlaceIn(&box, box.Link());
    QVERIFY(box.Message()->heightForWidth(placeMessage.width()) <= placeMessage.height());
    QVERIFY(box.Detail()->heightForWidth(placeDetail.width()) <= placeDetail.height());
    QVERIFY(placeMessage.top() > PlaceIn(&box, box.Icon()).bottom());
    QVERIFY(placeMessage.bottom() < placeDetail.top());
    QVERIFY(placeDetail.bottom() < placeLink.top());
    QVERIFY(placeLink.bottom() < PlaceIn(&box, box.Button("OK")).top());
    QVERIFY(placeDetail.left() > 4 && placeDetail.right() < box.width() - 5);
}

void tst_KvMessageBox::detailLinkByKey_data()
{
    QTest::addColumn<Qt::Key>("enKey");
    QTest::newRow("space") << Qt::Key_Space;
    QTest::newRow("return") << Qt::Key_Return;
    QTest::newRow("enter") << Qt::Key_Enter;
}

// Tab comes to it behind the buttons and before the title's.
void tst_KvMessageBox::detailLinkByKey()
{
    QFETCH(Qt::Key, enKey);
    CBox box(9);
    box.SetDetail("38 of 1,242 items were not copied whole.", ENDetail::WARNING);
    box.SetDetailLink("Show the list");
    const QSignalSpy spy(&box, &KvMessageBox::SignalDetailLink);
    QVERIFY(box.Activate());
    for (QWidget* pStop : {box.Button("Cancel"), box.Button("Yes"), box.Link(), box.Close()}) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        QCOMPARE(QApplication::focusWidget(), pStop);
    }
    QTest::keyClick(box.Close(), Qt::Key_Backtab);
    QCOMPARE(QApplication::focusWidget(), box.Link());
    QTest::keyClick(box.Link(), enKey);
    QCOMPARE(spy.count(), 1);
    QVERIFY(box.isVisible());
    QTest::mouseClick(box.Link(), Qt::LeftButton);
    QCOMPARE(spy.count(), 2);
}

void tst_KvMessageBox::readersHearTheDetail()
{
    CBox box(9, "Done");
    box.SetDetail("38 items are missing.", ENDetail::WARNING);
    box.SetDetailLink("Show the list");
    box.show();
    QCOMPARE(NameHeard(&box), QString("Done"));
    QCOMPARE(Heard(&box)->text(QAccessible::Description), QString("38 items are missing."));
    QCOMPARE(NameHeard(box.Detail()), QString("38 items are missing."));
    QCOMPARE(Heard(box.Link())->role(), QAccessible::PushButton);
    QCOMPARE(NameHeard(box.Link()), QString("Show the list"));
    box.SetDetail(QString(), ENDetail::PLAIN);
    QCOMPARE(NameHeard(&box), QString("Done"));
    QCOMPARE(Heard(&box)->text(QAccessible::Description), QString());
}

void tst_KvMessageBox::setBtnText_data()
{
    QTest::addColumn<int>("nWhich");
    QTest::addColumn<QString>("strTexts");
    QTest::newRow("none") << 0 << "Cancel Yes No OK";
    QTest::newRow("yes") << 1 << "Cancel New No OK";
    QTest::newRow("no") << 2 << "Cancel Yes New OK";
    QTest::newRow("yes and no") << 3 << "Cancel Yes No OK";
    QTest::newRow("ok") << 4 << "Cancel Yes No New";
    QTest::newRow("yes and ok") << 5 << "Cancel Yes No OK";
    QTest::newRow("cancel") << 8 << "New Yes No OK";
    QTest::newRow("yes and cancel") << 9 << "Cancel Yes No OK";
    QTest::newRow("all four") << 15 << "Cancel Yes No OK";
}

void tst_KvMessageBox::setBtnText()
{
    QFETCH(int, nWhich);
    CBox box(15);
    QVERIFY(box.Activate());
    box.SetBtnText(static_cast<KvMessageBox_Style>(nWhich), "New");
    QTEST(box.VisibleTexts(), "strTexts");
}

void tst_KvMessageBox::setButtonText()
{
    CBox box(15);
    QVERIFY(box.Activate());
    box.SetButtonText("yes", "no", "ok", "cancel");
    QCOMPARE(box.VisibleTexts(), QString("cancel yes no ok"));
}

void tst_KvMessageBox::sizesCanBeSet()
{
    CBox box(9);
    box.setBoxContentSize(461, 241, 470, 250);
    QCOMPARE(box.Content()->minimumSize(), QSize(461, 241));
    QCOMPARE(box.Content()->maximumSize(), QSize(470, 250));
    QCOMPARE(box.size(), QSize(490, 300));
    box.setBoxSize(500, 310, 600, 400);
    QCOMPARE(box.minimumSize(), QSize(500, 310));
    QCOMPARE(box.maximumSize(), QSize(600, 400));
    box.show();
    box.resize(600, 400);
    QCOMPARE(box.size(), QSize(600, 400));
}

void tst_KvMessageBox::readersHearTheButtons()
{
    CBox box(9);
    box.SetBtnText(Style_Yes, "Stop");
    box.show();
    QCOMPARE(NameHeard(box.Close()), QString("Close"));
    QCOMPARE(NameHeard(box.findChild<QWidget*>("btnMin")), QString("Minimize"));
    QCOMPARE(NameHeard(box.findChild<QWidget*>("btnZoom")), QString("Zoom"));
    QCOMPARE(NameHeard(box.Button("Stop")), QString("Stop"));
    QVERIFY(Heard(box.Icon())->state().invisible);
}

void tst_KvMessageBox::answer_data()
{
    QTest::addColumn<int>("nStyle");
    QTest::addColumn<QString>("strButton");
    QTest::addColumn<int>("nCode");
    QTest::newRow("yes") << 15 << "Yes" << 1;
    QTest::newRow("no") << 15 << "No" << 2;
    QTest::newRow("ok") << 15 << "OK" << 4;
    QTest::newRow("cancel") << 15 << "Cancel" << 8;
    QTest::newRow("title") << 15 << CModalAnswerer::TitleButton() << 0;
    QTest::newRow("title, no other button") << 0 << CModalAnswerer::TitleButton() << 0;
}

void tst_KvMessageBox::answer()
{
    QFETCH(int, nStyle);
    QFETCH(QString, strButton);
    CBox box(nStyle);
    CModalAnswerer answerer(strButton);
    bool bModal = false;
    answerer.Meanwhile([&] { bModal = QApplication::activeModalWidget() == &box; });
    box.exec();
    QVERIFY(answerer.Answered());
    QVERIFY(bModal);
    QVERIFY(!box.isVisible());
    QTEST(box.GetClickedBtn(), "nCode");
}

void tst_KvMessageBox::slotAnswers_data()
{
    QTest::addColumn<int>("nCode");
    QTest::addColumn<bool>("bStays");
    QTest::newRow("slotClose_yes") << int(Style_Yes) << false;
    QTest::newRow("slotClose_no") << int(Style_No) << false;
    QTest::newRow("slotClose_ok") << int(Style_Ok) << false;
    QTest::newRow("slotClose_cancel") << int(Style_Cancel) << false;
    QTest::newRow("SlotCloseWindow") << 0 << false;
    QTest::newRow("close") << 0 << false;
    QTest::newRow("slot_peekPassword") << 0 << true;
}

void tst_KvMessageBox::slotAnswers()
{
    CBox box(15);
    QCOMPARE(box.GetClickedBtn(), 0);
    box.show();
    QVERIFY(QMetaObject::invokeMethod(&box, QTest::currentDataTag()));
    QTEST(box.isVisible(), "bStays");
    QTEST(box.GetClickedBtn(), "nCode");
}

void tst_KvMessageBox::keptBoxForgetsItsAnswer()
{
    CBox box(4);
    CModalAnswerer first("OK");
    box.exec();
    QCOMPARE(box.GetClickedBtn(), 4);
    // The second time the window manager closes it, without any button.
    QMetaObject::invokeMethod(
        &box, [&box] { box.close(); }, Qt::QueuedConnection);
    box.exec();
    QCOMPARE(box.GetClickedBtn(), 0);
}

void tst_KvMessageBox::linkOpensAndBoxStays()
{
    CLinkCatcher catcher;
    CBox box(9, "<a href='test:help?a=1'>How to rescue files</a>");
    QVERIFY(box.Activate());
    QTest::mouseClick(box.Message(), Qt::LeftButton, {}, box.Message()->rect().center());
    QCOMPARE(catcher.m_listUrl, QList<QUrl>{QUrl("test:help?a=1")});
    QVERIFY(box.isVisible());
    QCOMPARE(box.GetClickedBtn(), 0);
}

void tst_KvMessageBox::keyEndsNothing_data()
{
    QTest::addColumn<Qt::Key>("enKey");
    QTest::addColumn<QString>("strFocus");
    for (const Qt::Key enKey : {Qt::Key_Escape, Qt::Key_Return, Qt::Key_Enter}) {
        for (const char* pFocus : {"Yes", "Cancel", "the title's button", "the box"}) {
            const QString strKey = QKeySequence(enKey).toString();
            QTest::addRow("%s on %s", qPrintable(strKey), pFocus) << enKey << pFocus;
        }
    }
}

void tst_KvMessageBox::keyEndsNothing()
{
    QFETCH(Qt::Key, enKey);
    QFETCH(QString, strFocus);
    CBox box(9);
    QVERIFY(box.Activate());
    if (strFocus != "the box") {
        QPushButton* pButton = box.Button(strFocus);
        (pButton ? pButton : box.Close())->setFocus();
    }
    QCOMPARE(box.hasFocus(), strFocus == "the box");
    QTest::keyClick(QApplication::focusWidget(), enKey);
    QVERIFY(box.isVisible());
    QCOMPARE(box.GetClickedBtn(), 0);
}

void tst_KvMessageBox::tabGoesFromLeftToRight_data()
{
    QTest::addColumn<int>("nStyle");
    QTest::addColumn<QString>("strTexts");
    QTest::addColumn<int>("nFirst");
    QTest::newRow("OK alone") << 4 << "OK" << 4;
    QTest::newRow("Cancel alone") << 8 << "Cancel" << 8;
    QTest::newRow("Yes alone") << 1 << "Yes" << 1;
    QTest::newRow("Yes and Cancel") << 9 << "Cancel Yes" << 8;
    QTest::newRow("all four") << 15 << "Cancel Yes No OK" << 8;
}

// The two title buttons without a use are passed over, the third comes last.
void tst_KvMessageBox::tabGoesFromLeftToRight()
{
    QFETCH(int, nStyle);
    CBox box(nStyle);
    QVERIFY(box.Activate());
    QVERIFY(box.hasFocus());
    QTEST(box.VisibleTexts(), "strTexts");
    QList<QPushButton*> listStop = box.VisibleButtons();
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
    QTEST(box.GetClickedBtn(), "nFirst");
}

void tst_KvMessageBox::dragFrom_data()
{
    QTest::addColumn<QString>("strChild");
    QTest::newRow("the box") << "";
    QTest::newRow("the title") << "frame_title";
    QTest::newRow("the message") << "label_text";
    QTest::newRow("the icon") << "label_icon";
    QTest::newRow("the content") << "widget";
}

// Events go to the child under the press until its release, as in a real window.
void tst_KvMessageBox::dragFrom()
{
    QFETCH(QString, strChild);
    CBox box(9);
    QVERIFY(box.Activate());
    QWidget* pChild = strChild.isEmpty() ? &box : box.findChild<QWidget*>(strChild);
    const QPoint ptLocal(2, 2);
    const QPoint ptGlobal = pChild->mapToGlobal(ptLocal);

    SendPress(pChild, ptLocal);
    SendMove(pChild, ptGlobal + QPoint(30, 20));
    QCOMPARE(box.pos(), START + QPoint(30, 20));
    SendMove(pChild, ptGlobal + QPoint(-40, 50));
    QCOMPARE(box.pos(), START + QPoint(-40, 50));

    // A child that keeps the release, as the message does for its links, ends the drag all the same.
    SendRelease(pChild, ptGlobal + QPoint(-40, 50));
    SendMove(pChild, ptGlobal + QPoint(100, 100));
    SendMove(&box, ptGlobal + QPoint(100, 100), Qt::RightButton);
    QCOMPARE(box.pos(), START + QPoint(-40, 50));
}

QTEST_MAIN(tst_KvMessageBox)
#include "tst_KvMessageBox.moc"
