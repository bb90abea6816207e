#include "pages/CElidedLabel.h"

#include <QHelpEvent>
#include <QSignalSpy>
#include <QTest>
#include <QToolTip>

static const int WIDTH = 200;

static QString LongName()
{
    return QStringLiteral("start ") + QString(300, QLatin1Char('x')) + QStringLiteral(" end");
}

/** A line of text in a label too narrow for it. */
class tst_CElidedLabel : public QObject
{
    Q_OBJECT

private slots:
    void ShownText_data();
    void ShownText();
    void LongTextStaysWholeButIsDrawnShort();
    void TextNeverChangesTheSize();
    void MarksAreDrawnAsTheyAre();
    void ToolTipOnlyWhileShortened();
    void ToolTipShowsMarks();
    void ClickIsTold();
};

void tst_CElidedLabel::ShownText_data()
{
    QTest::addColumn<QString>("strText");
    QTest::addColumn<QString>("strShown");
    QTest::newRow("empty") << QString() << QString();
    QTest::newRow("short") << QStringLiteral("STICK") << QStringLiteral("STICK");
    QTest::newRow("line break") << QStringLiteral("a\nb") << QStringLiteral("a b");
    QTest::newRow("tab and return") << QStringLiteral("a\tb\rc") << QStringLiteral("a b c");
    QTest::newRow("line separator") << QString(QStringLiteral("a") + QChar(QChar::LineSeparator)
                                               + QStringLiteral("b"))
                                    << QStringLiteral("a b");
    QTest::newRow("marks") << QStringLiteral("<b>1&lt;</b>") << QStringLiteral("<b>1&lt;</b>");
}

void tst_CElidedLabel::ShownText()
{
    QFETCH(QString, strText);
    CElidedLabel label;
    label.resize(WIDTH, 30);
    label.setText(strText);
    QTEST(label.ShownText(), "strShown");
    QCOMPARE(label.text(), strText);
}

void tst_CElidedLabel::LongTextStaysWholeButIsDrawnShort()
{
    CElidedLabel label;
    label.resize(WIDTH, 30);
    label.setText(LongName());
    QCOMPARE(label.text(), LongName());
    const QString strShown = label.ShownText();
    QVERIFY(strShown.startsWith(QStringLiteral("start")));
    QVERIFY(strShown.endsWith(QStringLiteral("end")));
    QVERIFY(label.fontMetrics().horizontalAdvance(strShown) <= WIDTH);
}

void tst_CElidedLabel::TextNeverChangesTheSize()
{
    CElidedLabel label;
    label.setText(QStringLiteral("a"));
    const QSize sizeHint = label.sizeHint();
    const QSize sizeLeast = label.minimumSizeHint();
    for (const QString& strText : {LongName(), QStringLiteral("a\nb\nc\nd"), QString()}) {
        label.setText(strText);
        QCOMPARE(label.sizeHint(), sizeHint);
        QCOMPARE(label.minimumSizeHint(), sizeLeast);
    }
    QVERIFY(sizeHint.height() >= label.fontMetrics().height());
}

void tst_CElidedLabel::MarksAreDrawnAsTheyAre()
{
    CElidedLabel label;
    label.resize(WIDTH, 30);
    label.setText(QStringLiteral("b"));
    const QImage imgPlain = label.grab().toImage();
    label.setText(QStringLiteral("<i></i>b"));
    QVERIFY(label.grab().toImage() != imgPlain);
    label.setText(QString());
    QVERIFY(label.grab().toImage() != imgPlain);
}

static void AskForToolTip(QWidget* pWidget)
{
    QHelpEvent event(QEvent::ToolTip, QPoint(1, 1), pWidget->mapToGlobal(QPoint(1, 1)));
    QCoreApplication::sendEvent(pWidget, &event);
}

void tst_CElidedLabel::ToolTipOnlyWhileShortened()
{
    CElidedLabel label;
    label.resize(WIDTH, 30);
    label.setText(LongName());
    label.show();
    AskForToolTip(&label);
    QVERIFY(QToolTip::text().contains(LongName()));
    label.setText(QStringLiteral("STICK"));
    AskForToolTip(&label);
    QVERIFY(!QToolTip::text().contains(QStringLiteral("STICK")));
    QTRY_VERIFY(QToolTip::text().isEmpty());
}

void tst_CElidedLabel::ToolTipShowsMarks()
{
    QCOMPARE(CElidedLabel::ToolTipText(QStringLiteral("<b>%1 & co</b>")),
             QStringLiteral("<p>&lt;b&gt;%1 &amp; co&lt;/b&gt;</p>"));
}

void tst_CElidedLabel::ClickIsTold()
{
    CElidedLabel label;
    label.resize(WIDTH, 30);
    const QSignalSpy spy(&label, &CClickableLabel::SignalLabelClicked);
    QTest::mouseClick(&label, Qt::LeftButton);
    QCOMPARE(spy.count(), 1);
}

QTEST_MAIN(tst_CElidedLabel)
#include "tst_CElidedLabel.moc"
