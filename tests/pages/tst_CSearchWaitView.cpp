#include "pages/CSearchWaitView.h"

#include <QAccessible>
#include <QFrame>
#include <QLabel>
#include <QLayout>
#include <QMovie>
#include <QSignalSpy>
#include <QTest>

#include <memory>

static const int LINE_WIDTH = 250;

/** The dialog with the animation beside a message. */
class tst_CSearchWaitView : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void FixedSizeAndTitle();
    void FormTexts_data();
    void FormTexts();
    void FormSizes_data();
    void FormSizes();
    void FormLayouts_data();
    void FormLayouts();
    void WindowFlags();
    void FontsComeFromTheSkin();
    void TitleIsHidden();
    void SetTextSetsBothLabels();
    void MessageWidth_data();
    void MessageWidth();
    void WrappingStaysOn();
    void NamesAreShownAsText();
    void AnimationWaitsForTheStart();
    void StoppingWhatNeverStartedDoesNothing();
    void EscapeDoesNotCloseIt();
    void ReadersHearTheMessage();
    void ContentIsCentred();
    void CornersAreTransparentAndPanelIsWhite();

private:
    QLabel* Label(const char* pName) const { return m_pView->findChild<QLabel*>(QLatin1String(pName)); }

    std::unique_ptr<CSearchWaitView> m_pView;
};

void tst_CSearchWaitView::init() { m_pView = std::make_unique<CSearchWaitView>(nullptr); }

void tst_CSearchWaitView::FixedSizeAndTitle()
{
    QCOMPARE(m_pView->minimumSize(), QSize(400, 166));
    QCOMPARE(m_pView->maximumSize(), QSize(400, 166));
    QCOMPARE(m_pView->sizeIncrement(), QSize(488, 280));
    QCOMPARE(m_pView->objectName(), QStringLiteral("CSearchWaitView"));
    QCOMPARE(m_pView->windowTitle(), QStringLiteral("NotFoundOrNoItemView"));
    QCOMPARE(m_pView->styleSheet(), QString());
}

void tst_CSearchWaitView::FormTexts_data()
{
    QTest::addColumn<QString>("strText");
    QTest::newRow("label_title") << QStringLiteral("Searching");
    QTest::newRow("label_text") << QStringLiteral("Searching, please wait...");
    // The animation has replaced the form's own text.
    QTest::newRow("label_gif") << QString();
}

void tst_CSearchWaitView::FormTexts()
{
    const QLabel* pLabel = Label(QTest::currentDataTag());
    QVERIFY(pLabel);
    QTEST(pLabel->text(), "strText");
}

void tst_CSearchWaitView::FormSizes_data()
{
    QTest::addColumn<QSize>("sizeMin");
    QTest::addColumn<QSize>("sizeMax");
    QTest::newRow("frame_title") << QSize(0, 35) << QSize(QWIDGETSIZE_MAX, 35);
    QTest::newRow("label_gif") << QSize(40, 40) << QSize(40, 40);
    QTest::newRow("label_text") << QSize(0, 40) << QSize(250, 40);
}

void tst_CSearchWaitView::FormSizes()
{
    const auto* pWidget = m_pView->findChild<QFrame*>(QLatin1String(QTest::currentDataTag()));
    QVERIFY(pWidget);
    QTEST(pWidget->minimumSize(), "sizeMin");
    QTEST(pWidget->maximumSize(), "sizeMax");
}

void tst_CSearchWaitView::FormLayouts_data()
{
    QTest::addColumn<int>("nSpacing");
    QTest::newRow("verticalLayout") << 0;
    QTest::newRow("horizontalLayout") << 6;
    QTest::newRow("horizontalLayout_3") << 6;
    QTest::newRow("horizontalLayout_2") << 20;
}

void tst_CSearchWaitView::FormLayouts()
{
    const auto* pLayout = m_pView->findChild<QLayout*>(QLatin1String(QTest::currentDataTag()));
    QVERIFY(pLayout);
    QTEST(pLayout->spacing(), "nSpacing");
    if (pLayout == m_pView->layout()) {
        QCOMPARE(pLayout->contentsMargins(), QMargins());
    }
}

void tst_CSearchWaitView::WindowFlags()
{
    QCOMPARE(int(m_pView->windowFlags()) & 0xE800, 0xE800);
    QVERIFY(m_pView->testAttribute(Qt::WA_TranslucentBackground));
}

void tst_CSearchWaitView::FontsComeFromTheSkin()
{
    for (const char* pName : {"label_text", "label_title"}) {
        QCOMPARE(Label(pName)->font().family(), QStringLiteral("Avenir"));
        QCOMPARE(Label(pName)->font().pixelSize(), 14);
    }
}

void tst_CSearchWaitView::TitleIsHidden()
{
    m_pView->show();
    QVERIFY(m_pView->findChild<QFrame*>(QStringLiteral("frame_title"))->isHidden());
    QVERIFY(!Label("label_text")->isHidden());
}

void tst_CSearchWaitView::SetTextSetsBothLabels()
{
    m_pView->SetText(QStringLiteral("message"), QStringLiteral("title"));
    QCOMPARE(Label("label_text")->text(), QStringLiteral("message"));
    QCOMPARE(Label("label_title")->text(), QStringLiteral("title"));
}

void tst_CSearchWaitView::MessageWidth_data()
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
    const QList<QChar> listGlyph{QLatin1Char('i'), QLatin1Char('m'), QLatin1Char('o'), QLatin1Char('t')};
    for (const QChar chFirst : listGlyph) {
        for (const QChar chSecond : listGlyph) {
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

void tst_CSearchWaitView::MessageWidth()
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
}

void tst_CSearchWaitView::WrappingStaysOn()
{
    m_pView->SetText(QString(200, QLatin1Char('m')), QString());
    m_pView->SetText(QStringLiteral("short"), QString());
    QVERIFY(Label("label_text")->wordWrap());
    QCOMPARE(Label("label_text")->minimumWidth(), LINE_WIDTH);
}

void tst_CSearchWaitView::NamesAreShownAsText()
{
    QCOMPARE(Label("label_text")->textFormat(), Qt::PlainText);
}

void tst_CSearchWaitView::AnimationWaitsForTheStart()
{
    const QMovie* pMovie = Label("label_gif")->movie();
    QVERIFY(pMovie);
    QVERIFY(pMovie->isValid());
    QCOMPARE(pMovie->fileName(), QStringLiteral(":/res/Gif/searching.gif"));
    QCOMPARE(pMovie->parent(), nullptr);
    QCOMPARE(pMovie->state(), QMovie::NotRunning);

    const QSignalSpy spy(pMovie, &QMovie::frameChanged);
    m_pView->ChangeGifStatus(true);
    QCOMPARE(pMovie->state(), QMovie::Running);
    QTRY_VERIFY(spy.count() > 2);
    m_pView->ChangeGifStatus(false);
    QCOMPARE(pMovie->state(), QMovie::NotRunning);
}

void tst_CSearchWaitView::StoppingWhatNeverStartedDoesNothing()
{
    const QMovie* pMovie = Label("label_gif")->movie();
    const QSignalSpy spy(pMovie, &QMovie::stateChanged);
    m_pView->ChangeGifStatus(false);
    QCOMPARE(pMovie->state(), QMovie::NotRunning);
    QCOMPARE(spy.count(), 0);
}

void tst_CSearchWaitView::EscapeDoesNotCloseIt()
{
    m_pView->show();
    QTest::keyClick(m_pView.get(), Qt::Key_Escape);
    QVERIFY(m_pView->isVisible());
}

void tst_CSearchWaitView::ReadersHearTheMessage()
{
    const QAccessibleInterface* pInterface = QAccessible::queryAccessibleInterface(m_pView.get());
    QCOMPARE(pInterface->role(), QAccessible::Dialog);
    QCOMPARE(pInterface->text(QAccessible::Name), QStringLiteral("Searching, please wait..."));
    m_pView->SetText(QStringLiteral("Counting"), QStringLiteral("Title"));
    QCOMPARE(pInterface->text(QAccessible::Name), QStringLiteral("Counting"));
    m_pView->show();
    QVERIFY(QAccessible::queryAccessibleInterface(Label("label_gif"))->state().invisible);
    QVERIFY(!QAccessible::queryAccessibleInterface(Label("label_text"))->state().invisible);
}

void tst_CSearchWaitView::ContentIsCentred()
{
    m_pView->SetText(QStringLiteral("Calculating files size..."), QString());
    m_pView->show();
    const QRect rectGif(Label("label_gif")->mapTo(m_pView.get(), QPoint()), Label("label_gif")->size());
    const QRect rectText(Label("label_text")->mapTo(m_pView.get(), QPoint()), Label("label_text")->size());
    const QPoint ptOff = (rectGif | rectText).center() - m_pView->rect().center();
    QVERIFY2(qAbs(ptOff.x()) <= 1 && qAbs(ptOff.y()) <= 1,
             qPrintable(QStringLiteral("off by %1, %2").arg(ptOff.x()).arg(ptOff.y())));
    QCOMPARE(rectText.left() - rectGif.right() - 1, 20);
}

void tst_CSearchWaitView::CornersAreTransparentAndPanelIsWhite()
{
    QImage image(m_pView->size(), QImage::Format_ARGB32);
    image.fill(Qt::transparent);
    m_pView->show();
    m_pView->render(&image, QPoint(), QRegion(), QWidget::DrawChildren);
    QCOMPARE(qAlpha(image.pixel(0, 0)), 0);
    QCOMPARE(image.pixel(200, 20), qRgb(255, 255, 255));
}

QTEST_MAIN(tst_CSearchWaitView)
#include "tst_CSearchWaitView.moc"
