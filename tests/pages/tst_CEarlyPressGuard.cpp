#include "pages/CEarlyPressGuard.h"
#include "support/Widgets.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QMouseEvent>
#include <QPushButton>
#include <QSignalSpy>

/** A button that has just come up under the pointer of a double click. */
class tst_CEarlyPressGuard : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { QApplication::setDoubleClickInterval(3600000); }
    void pressCounts_data();
    void pressCounts();
    void keyCountsAtOnce();
};

void tst_CEarlyPressGuard::pressCounts_data()
{
    QTest::addColumn<bool>("bBegun");
    QTest::addColumn<int>("nInterval");
    QTest::addColumn<bool>("bDouble"); // as the window system tells the second press
    QTest::addColumn<bool>("bCounts");
    QTest::newRow("never came up") << false << 3600000 << false << true;
    QTest::newRow("within the interval") << true << 3600000 << false << false;
    QTest::newRow("second press of a double click") << true << 3600000 << true << false;
    QTest::newRow("interval over") << true << 0 << false << true;
}

void tst_CEarlyPressGuard::pressCounts()
{
    QFETCH(bool, bBegun);
    QFETCH(int, nInterval);
    QFETCH(bool, bDouble);
    QPushButton button("Cancel");
    CEarlyPressGuard guard(&button);
    const QSignalSpy clicked(&button, &QPushButton::clicked);
    button.show();
    if (bBegun) {
        guard.Begin();
    }
    QElapsedTimer timer;
    timer.start();
    QApplication::setDoubleClickInterval(nInterval);
    QTRY_VERIFY(timer.hasExpired(qMin(nInterval, 1)));
    QMouseEvent press(bDouble ? QEvent::MouseButtonDblClick : QEvent::MouseButtonPress, QPointF(5, 5),
                      Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(&button, &press);
    QMouseEvent release(QEvent::MouseButtonRelease, QPointF(5, 5), Qt::LeftButton, Qt::NoButton,
                        Qt::NoModifier);
    QCoreApplication::sendEvent(&button, &release);
    QTEST(clicked.count() == 1, "bCounts");
    QVERIFY(!button.isDown());
    QApplication::setDoubleClickInterval(3600000);
}

void tst_CEarlyPressGuard::keyCountsAtOnce()
{
    QPushButton button("Cancel");
    CEarlyPressGuard guard(&button);
    const QSignalSpy clicked(&button, &QPushButton::clicked);
    QVERIFY(ShowActive(&button));
    guard.Begin();
    QTest::keyClick(&button, Qt::Key_Space);
    QCOMPARE(clicked.count(), 1);
}

QTEST_MAIN(tst_CEarlyPressGuard)
#include "tst_CEarlyPressGuard.moc"
