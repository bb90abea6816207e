#include "pages/CSearchWaitView.h"
#include "support/Widgets.h"

#include <QFrame>
#include <QLabel>
#include <QLayout>
#include <QMovie>
#include <QSignalSpy>

#include <memory>

static const int LINE_WIDTH = 250;

/** The dialog with the animation beside a message. */
class tst_CSearchWaitView : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void form();
    void label_data();
    void label();
    void frame_data();
    void frame();
    void layout_data();
    void layout();
    void setTextSetsBothLabels();
    void messageWidth_data();
    void messageWidth();
    void animationWaitsForTheStart();
    void escapeDoesNotCloseIt();
    void readersHearTheMessage();
    void contentIsCentred();
    void cornersAreTransparentAndPanelIsWhite();

private:
    QLabel* Label(const char* pName) const { return m_pView->findChild<QLabel*>(pName); }

    std::unique_ptr<CSearchWaitView> m_pView;
};

void tst_CSearchWaitView::init() { m_pView = std::make_unique<CSearchWaitView>(nullptr); }

void tst_CSearchWaitView::form()
{
    QCOMPARE(m_pView->minimumSize(), QSize(400, 166));
    QCOMPARE(m_pView->maximumSize(), QSize(400, 166));
    QCOMPARE(m_pView->sizeIncrement(), QSize(488, 280));
    QCOMPARE(m_pView->objectName(), QString("CSearchWaitView"));
    QCOMPARE(m_pView->windowTitle(), QString("NotFoundOrNoItemView"));
    QCOMPARE(m_pView->styleSheet(), QString());
    QCOMPARE(m_pView->layout()->contentsMargins(), QMargins());
    QCOMPARE(int(m_pView->windowFlags()) & 0xE800, 0xE800);
    QVERIFY(m_pView->testAttribute(Qt::WA_TranslucentBackground));
    QCOMPARE(Label("label_text")->textFormat(), Qt::PlainText);
    QVERIFY(ShowActive(m_pView.get()));
    QVERIFY(m_pView->hasFocus());
    QVERIFY(m_pView->findChild<QFrame*>("frame_title")->isHidden());
    QVERIFY(Label("label_text")->isVisible());
}

void tst_CSearchWaitView::label_data()
{
    QTest::addColumn<QString>("strText");
    QTest::addColumn<bool>("bSkinned");
    QTest::newRow("label_title") << "Searching" << true;
    QTest::newRow("label_text") << "Searching, please wait..." << true;
    // The animation has replaced the form's own text.
    QTest::newRow("label_gif") << QString() << false;
}

void tst_CSearchWaitView::label()
{
    QFETCH(bool, bSkinned);
    const QLabel* pLabel = Label(QTest::currentDataTag());
    QVERIFY(pLabel);
    QTEST(pLabel->text(), "strText");
    QVERIFY(!bSkinned || (pLabel->font().family() == "Avenir" && pLabel->font().pixelSize() == 14));
}

void tst_CSearchWaitView::frame_data()
{
    QTest::addColumn<QSize>("sizeMin");
    QTest::addColumn<QSize>("sizeMax");
    QTest::newRow("frame_title") << QSize(0, 35) << QSize(QWIDGETSIZE_MAX, 35);
    QTest::newRow("label_gif") << QSize(40, 40) << QSize(40, 40);
    QTest::newRow("label_text") << QSize(0, 40) << QSize(250, 40);
}

void tst_CSearchWaitView::frame()
{
    const auto* pFrame = m_pView->findChild<QFrame*>(QTest::currentDataTag());
    QVERIFY(pFrame);
    QTEST(pFrame->minimumSize(), "sizeMin");
    QTEST(pFrame->maximumSize(), "sizeMax");
}

void tst_CSearchWaitView::layout_data()
{
    QTest::addColumn<int>("nSpacing");
    QTest::newRow("verticalLayout") << 0;
    QTest::newRow("horizontalLayout") << 6;
    QTest::newRow("horizontalLayout_3") << 6;
    QTest::newRow("horizontalLayout_2") << 20;
}

void tst_CSearchWaitView::layout()
{
    const auto* pLayout = m_pView->findChild<QLayout*>(QTest::currentDataTag());
    QVERIFY(pLayout);
    QTEST(pLayout->spacing(), "nSpacing");
}

void tst_CSearchWaitView::setTextSetsBothLabels()
{
    m_pView->SetText("message", "title");
    QCOMPARE(Label("label_text")->text(), QString("message"));
    QCOMPARE(Label("label_title")->text(), QString("title"));
}

void tst_CSearchWaitView::messageWidth_data()
{
    QTest::addColumn<int>("nWidth");
    QTest::addColumn<bool>("bWraps");
    QTest::newRow("short") << 100 << false;
    QTest::newRow("250 stays on one line") << 250 << false;
    QTest::newRow("251 wraps") << 251 << true;
    QTest::newRow("long") << 600 << true;
}

// A message of exactly that width in the label's font, made of glyphs of two widths.
static QString MessageOfWidth(const QFontMetrics& metrics, int nWidth)
{
    for (const QChar chFirst : QString("imot")) {
        for (const QChar chSecond : QString("imot")) {
            for (int nFirst = 0; nFirst <= nWidth / 3; ++nFirst) {
                QString strText(nFirst, chFirst);
                while (metrics.horizontalAdvance(strText) < nWidth) {
                    strText += chSecond;
                }
                if (metrics.horizontalAdvance(strText) == nWidth) {
                    return strText;
                }
            }
        }
    }
    return QString();
}

void tst_CSearchWaitView::messageWidth()
{
    QFETCH(int, nWidth);
    QFETCH(bool, bWraps);
    QLabel* pLabel = Label("label_text");
    const QString strText = MessageOfWidth(pLabel->fontMetrics(), nWidth);
    QCOMPARE(pLabel->fontMetrics().horizontalAdvance(strText), nWidth);

    m_pView->SetText(strText, QString());
    m_pView->show();
    QCOMPARE(pLabel->wordWrap(), bWraps);
    QCOMPARE(pLabel->minimumWidth(), bWraps ? LINE_WIDTH : 0);
    QCOMPARE(pLabel->maximumWidth(), LINE_WIDTH);
    QCOMPARE(pLabel->width(), qMin(LINE_WIDTH, pLabel->sizeHint().width()));
    // What has been turned on stays on.
    m_pView->SetText("short", QString());
    QCOMPARE(pLabel->wordWrap(), bWraps);
    QCOMPARE(pLabel->minimumWidth(), bWraps ? LINE_WIDTH : 0);
}

void tst_CSearchWaitView::animationWaitsForTheStart()
{
    const QMovie* pMovie = Label("label_gif")->movie();
    QVERIFY(pMovie);
    QVERIFY(pMovie->isValid());
    QCOMPARE(pMovie->fileName(), QString(":/res/Gif/searching.gif"));
    QCOMPARE(pMovie->parent(), nullptr);
    const QSignalSpy spyState(pMovie, &QMovie::stateChanged);
    m_pView->ChangeGifStatus(false);
    QCOMPARE(pMovie->state(), QMovie::NotRunning);
    QCOMPARE(spyState.count(), 0);

    const QSignalSpy spy(pMovie, &QMovie::frameChanged);
    m_pView->ChangeGifStatus(true);
    QCOMPARE(pMovie->state(), QMovie::Running);
    QTRY_VERIFY(spy.count() > 2);
    m_pView->ChangeGifStatus(false);
    QCOMPARE(pMovie->state(), QMovie::NotRunning);
}

void tst_CSearchWaitView::escapeDoesNotCloseIt()
{
    m_pView->show();
    QTest::keyClick(m_pView.get(), Qt::Key_Escape);
    QVERIFY(m_pView->isVisible());
}

void tst_CSearchWaitView::readersHearTheMessage()
{
    QCOMPARE(Heard(m_pView.get())->role(), QAccessible::Dialog);
    QCOMPARE(NameHeard(m_pView.get()), QString("Searching, please wait..."));
    m_pView->SetText("Counting", "Title");
    QCOMPARE(NameHeard(m_pView.get()), QString("Counting"));
    m_pView->show();
    QVERIFY(Heard(Label("label_gif"))->state().invisible);
    QVERIFY(!Heard(Label("label_text"))->state().invisible);
}

void tst_CSearchWaitView::contentIsCentred()
{
    m_pView->SetText("Calculating files size...", QString());
    m_pView->show();
    const QRect rectGif = PlaceIn(m_pView.get(), Label("label_gif"));
    const QRect rectText = PlaceIn(m_pView.get(), Label("label_text"));
    const QPoint ptOff = (rectGif | rectText).center() - m_pView->rect().center();
    QVERIFY2(qAbs(ptOff.x()) <= 1 && qAbs(ptOff.y()) <= 1,
             qPrintable(QString("off by %1, %2").arg(ptOff.x()).arg(ptOff.y())));
    QCOMPARE(rectText.left() - rectGif.right() - 1, 20);
}

void tst_CSearchWaitView::cornersAreTransparentAndPanelIsWhite()
{
    m_pView->show();
    const QImage image = Painted(m_pView.get(), Qt::transparent, QWidget::DrawChildren);
    QCOMPARE(qAlpha(image.pixel(0, 0)), 0);
    QCOMPARE(image.pixel(200, 20), qRgb(255, 255, 255));
}

QTEST_MAIN(tst_CSearchWaitView)
#include "tst_CSearchWaitView.moc"
