#include "kit/CCompositor.h"

#include <QApplication>
#include <QTest>

/** A Mac's windows may be translucent; the test runs where nothing composes those of this system. */
class tst_MacCompositor : public QObject
{
    Q_OBJECT

private slots:
    void isThereAlways() { QVERIFY(CCompositor::IsRunning()); }
    void shapesAndADesktopAreThereToo() { QVERIFY(CCompositor::CanClip() && CCompositor::HasDesktop()); }
};

QTEST_MAIN(tst_MacCompositor)
#include "tst_MacCompositor.moc"
