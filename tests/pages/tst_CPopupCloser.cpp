#include "pages/CPopupCloser.h"
#include "support/SendMouse.h"

#include <QListWidget>
#include <QTest>

class tst_CPopupCloser : public QObject
{
    Q_OBJECT

private slots:
    void pressClosesIt_data();
    void pressClosesIt();
};

void tst_CPopupCloser::pressClosesIt_data()
{
    QTest::addColumn<QPoint>("pt");
    QTest::addColumn<int>("nType");
    QTest::addColumn<bool>("bCloses");
    QTest::newRow("left of it") << QPoint(-1, 50) << int(QEvent::MouseButtonPress) << true;
    QTest::newRow("above") << QPoint(50, -1) << int(QEvent::MouseButtonPress) << true;
    QTest::newRow("right") << QPoint(200, 50) << int(QEvent::MouseButtonPress) << true;
    QTest::newRow("below") << QPoint(50, 100) << int(QEvent::MouseButtonPress) << true;
    QTest::newRow("second of two quick ones") << QPoint(50, 100) << int(QEvent::MouseButtonDblClick) << true;
    QTest::newRow("on its edge") << QPoint(0, 0) << int(QEvent::MouseButtonPress) << false;
    QTest::newRow("on its last pixel") << QPoint(199, 99) << int(QEvent::MouseButtonPress) << false;
    QTest::newRow("only moving") << QPoint(50, 300) << int(QEvent::MouseMove) << false;
    QTest::newRow("release of the press that has opened it")
        << QPoint(50, -20) << int(QEvent::MouseButtonRelease) << false;
}

void tst_CPopupCloser::pressClosesIt()
{
    QFETCH(QPoint, pt);
    QFETCH(int, nType);
    QFETCH(bool, bCloses);
    QListWidget list;
    list.setWindowFlags(Qt::Popup);
    list.resize(200, 100);
    new CPopupCloser(&list);
    list.show();
    SendMouse(&list, QEvent::Type(nType), pt, list.mapToGlobal(pt), Qt::LeftButton, Qt::LeftButton);
    QCOMPARE(list.isVisible(), !bCloses);
}

QTEST_MAIN(tst_CPopupCloser)
#include "tst_CPopupCloser.moc"
