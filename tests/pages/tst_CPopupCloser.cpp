#include "pages/CPopupCloser.h"
#include "support/SendMouse.h"

#include <QListWidget>
#include <QTest>

Q_DECLARE_METATYPE(QEvent::Type)

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
    QTest::addColumn<QEvent::Type>("enType");
    QTest::addColumn<bool>("bCloses");
    QTest::newRow("left of it") << QPoint(-1, 50) << QEvent::MouseButtonPress << true;
    QTest::newRow("above") << QPoint(50, -1) << QEvent::MouseButtonPress << true;
    QTest::newRow("right") << QPoint(200, 50) << QEvent::MouseButtonPress << true;
    QTest::newRow("below") << QPoint(50, 100) << QEvent::MouseButtonPress << true;
    QTest::newRow("second of two quick ones") << QPoint(50, 100) << QEvent::MouseButtonDblClick << true;
    QTest::newRow("on its edge") << QPoint(0, 0) << QEvent::MouseButtonPress << false;
    QTest::newRow("on its last pixel") << QPoint(199, 99) << QEvent::MouseButtonPress << false;
    QTest::newRow("only moving") << QPoint(50, 300) << QEvent::MouseMove << false;
    QTest::newRow("release of the press that has opened it")
        << QPoint(50, -20) << QEvent::MouseButtonRelease << false;
}

void tst_CPopupCloser::pressClosesIt()
{
    QFETCH(QPoint, pt);
    QFETCH(QEvent::Type, enType);
    QFETCH(bool, bCloses);
    QListWidget list;
    list.setWindowFlags(Qt::Popup);
    list.resize(200, 100);
    new CPopupCloser(&list);
    list.show();
    SendMouse(&list, enType, pt, list.mapToGlobal(pt), Qt::LeftButton, Qt::LeftButton);
    QCOMPARE(list.isVisible(), !bCloses);
}

QTEST_MAIN(tst_CPopupCloser)
#include "tst_CPopupCloser.moc"
