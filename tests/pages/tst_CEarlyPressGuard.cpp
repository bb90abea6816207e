#include "pages/CEarlyPressGuard.h"
#include "support/Widgets.h"

#include <QApplication>
#include <QMouseEvent>
#include <QPushButton>
#include <QSignalSpy>

/** A button that has come up where another one was. */
class tst_CEarlyPressGuard : public QObject
{
    Q_OBJECT

private slots:
    void pressCounts_data();
    void pressCounts();
    void keyCountsAtOnce();
};

static const int FIRST = 1000; // when the first press was, in ms of the window system's clock

static void Press(QPushButton& button, int nTimestamp, QEvent::Type enType = QEvent::MouseButtonPress)
{
    for (const QEvent::Type enPart : {enType, QEvent::MouseButtonRelease}) {
        const Qt::MouseButtons buttons = enPart == QEvent::MouseButtonRelease ? Qt::NoButton : Qt::LeftButton;
        QMouseEvent event(enPart, QPointF(5, 5), Qt::LeftButton, buttons, Qt::NoModifier);
        event.setTimestamp(ulong(nTimestamp));
        QCoreApplication::sendEvent(&button, &event);
    }
}

void tst_CEarlyPressGuard::pressCounts_data()
{
    QTest::addColumn<bool>("bFirst"); // another button was pressed before
    QTest::addColumn<bool>("bBegun");
    QTest::addColumn<int>("nGap"); // ms beyond the interval
    QTest::addColumn<bool>("bDouble"); // as the window system tells the second press
    QTest::addColumn<bool>("bCounts");
    QTest::newRow("within the interval") << true << true << -1 << false << false;
    QTest::newRow("second press of a double click") << true << true << -1 << true << false;
    QTest::newRow("interval over") << true << true << 0 << false << true;
    QTest::newRow("never came up") << true << false << -1 << false << true;
    QTest::newRow("the first press of all") << false << true << -1 << false << true;
}

void tst_CEarlyPressGuard::pressCounts()
{
    QFETCH(bool, bFirst);
    QFETCH(bool, bBegun);
    QFETCH(int, nGap);
    QFETCH(bool, bDouble);
    QPushButton other("Copy");
    QPushButton button("Cancel");
    CEarlyPressGuard guard(&button);
    const QSignalSpy clicked(&button, &QPushButton::clicked);
    button.show();
    if (bFirst) {
        Press(other, FIRST);
    }
    if (bBegun) {
        guard.Begin();
    }
    Press(button, FIRST + CEarlyPressGuard::IntervalMs() + nGap,
          bDouble ? QEvent::MouseButtonDblClick : QEvent::MouseButtonPress);
    QTEST(clicked.count() == 1, "bCounts");
    QVERIFY(!button.isDown());
}

void tst_CEarlyPressGuard::keyCountsAtOnce()
{
    QPushButton other("Copy");
    QPushButton button("Cancel");
    CEarlyPressGuard guard(&button);
    const QSignalSpy clicked(&button, &QPushButton::clicked);
    QVERIFY(ShowActive(&button));
    Press(other, FIRST);
    guard.Begin();
    QTest::keyClick(&button, Qt::Key_Space);
    QCOMPARE(clicked.count(), 1);
}

QTEST_MAIN(tst_CEarlyPressGuard)
#include "tst_CEarlyPressGuard.moc"
