#include "pages/CElidedLabel.h"

#include <QHelpEvent>
#include <QSignalSpy>
#include <QTest>
#include <QToolTip>

#include <memory>

static const int WIDTH = 200;
static const QString LONG_NAME = "start " + QString(300, 'x') + " end";

/** A line of text in a label too narrow for it. */
class tst_CElidedLabel : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void shownText_data();
    void shownText();
    void textNeverChangesTheSize();
    void marksAreDrawnAsTheyAre();
    void toolTipOnlyWhileShortened();
    void clickIsTold();

private:
    std::unique_ptr<CElidedLabel> m_pLabel;
};

void tst_CElidedLabel::init()
{
    m_pLabel = std::make_unique<CElidedLabel>();
    m_pLabel->resize(WIDTH, 30);
}

void tst_CElidedLabel::shownText_data()
{
    QTest::addColumn<QString>("strText");
    QTest::addColumn<QString>("strStart"); // of what is shown, which has strEnd for its end
    QTest::addColumn<QString>("strEnd");
    const auto whole = [](const char* pName, const char* pText, const QString& strShown) {
        QTest::newRow(pName) << QString(pText) << strShown << strShown;
    };
    whole("empty", "", "");
    whole("short", "STICK", "STICK");
    whole("line break", "a\nb", "a b");
    whole("tab and return", "a\tb\rc", "a b c");
    whole("line separator", "a\u2028b", "a b");
    whole("marks", "<b>1&lt;</b>", "<b>1&lt;</b>");
    QTest::newRow("too long") << LONG_NAME << "start"
                              << "end";
}

void tst_CElidedLabel::shownText()
{
    QFETCH(QString, strText);
    QFETCH(QString, strStart);
    QFETCH(QString, strEnd);
    m_pLabel->setText(strText);
    QCOMPARE(m_pLabel->text(), strText);
    const QString strShown = m_pLabel->ShownText();
    QVERIFY(strShown.startsWith(strStart) && strShown.endsWith(strEnd));
    QVERIFY(strText.size() > WIDTH || strShown.size() == strText.size());
    QVERIFY(m_pLabel->fontMetrics().horizontalAdvance(strShown) <= WIDTH);
}

void tst_CElidedLabel::textNeverChangesTheSize()
{
    m_pLabel->setText("a");
    const QSize sizeHint = m_pLabel->sizeHint();
    const QSize sizeLeast = m_pLabel->minimumSizeHint();
    for (const QString& strText : {LONG_NAME, QString("a\nb\nc\nd"), QString()}) {
        m_pLabel->setText(strText);
        QCOMPARE(m_pLabel->sizeHint(), sizeHint);
        QCOMPARE(m_pLabel->minimumSizeHint(), sizeLeast);
    }
    QVERIFY(sizeHint.height() >= m_pLabel->fontMetrics().height());
}

void tst_CElidedLabel::marksAreDrawnAsTheyAre()
{
    m_pLabel->setText("b");
    const QImage imgPlain = m_pLabel->grab().toImage();
    for (const char* pText : {"<i></i>b", ""}) {
        m_pLabel->setText(pText);
        QVERIFY(m_pLabel->grab().toImage() != imgPlain);
    }
}

static void AskForToolTip(QWidget* pWidget)
{
    QHelpEvent event(QEvent::ToolTip, QPoint(1, 1), pWidget->mapToGlobal(QPoint(1, 1)));
    QCoreApplication::sendEvent(pWidget, &event);
}

void tst_CElidedLabel::toolTipOnlyWhileShortened()
{
    m_pLabel->setText(LONG_NAME);
    m_pLabel->show();
    AskForToolTip(m_pLabel.get());
    QVERIFY(QToolTip::text().contains(LONG_NAME));
    m_pLabel->setText("STICK");
    AskForToolTip(m_pLabel.get());
    QVERIFY(!QToolTip::text().contains("STICK"));
    QTRY_VERIFY(QToolTip::text().isEmpty());
    QCOMPARE(CElidedLabel::ToolTipText("<b>%1 & co</b>"), "<p>&lt;b&gt;%1 &amp; co&lt;/b&gt;</p>");
}

void tst_CElidedLabel::clickIsTold()
{
    const QSignalSpy spy(m_pLabel.get(), &CClickableLabel::SignalLabelClicked);
    QTest::mouseClick(m_pLabel.get(), Qt::LeftButton);
    QCOMPARE(spy.count(), 1);
}

QTEST_MAIN(tst_CElidedLabel)
#include "tst_CElidedLabel.moc"
