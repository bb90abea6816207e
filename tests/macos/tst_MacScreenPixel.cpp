#include "app/CGetScreenPixel.h"
#include "macos/CFakeMac.h"

#include <QTest>

/** What start-up asks of AppKit. */
class tst_MacScreenPixel : public QObject
{
    Q_OBJECT

private slots:
    void cleanup();
    void width_data();
    void width();
    void noScreen();
    void theAskedObjectStays();
    void theWindowOfAViewIsAskedFor();
    void theTitleHookDoesNothing();
    void theSecurityPaneIsOpened();
};

/** There is no pool around. */
void tst_MacScreenPixel::cleanup() { QCOMPARE(CFakeMac::LeftToPools(), 0); }

void tst_MacScreenPixel::width_data()
{
    QTest::addColumn<double>("fWidth");
    QTest::addColumn<int>("nPoints");
    QTest::newRow("whole") << 1440.0 << 1440;
    QTest::newRow("fraction is cut") << 2560.9 << 2560;
    QTest::newRow("single precision rounds up first") << 2560.99999 << 2561;
    QTest::newRow("zero") << 0.0 << 0;
    QTest::newRow("upper end of a scale") << 3499.5 << 3499;
}

void tst_MacScreenPixel::width()
{
    QFETCH(double, fWidth);
    CFakeMac::SetScreen(fWidth);
    QTEST(CGetScreenPixel().GetScreen(), "nPoints");
}

void tst_MacScreenPixel::noScreen()
{
    CFakeMac::SetScreen(2560);
    CFakeMac::RemoveScreen();
    QCOMPARE(CGetScreenPixel().GetScreen(), 0);
}

/** A fresh object each time, never released. */
void tst_MacScreenPixel::theAskedObjectStays()
{
    CFakeMac::SetScreen(2560);
    const int nBefore = CFakeMac::Alive("ScreenPixelClass");
    CGetScreenPixel screenPixel;
    screenPixel.GetScreen();
    screenPixel.GetScreen();
    QCOMPARE(CFakeMac::Alive("ScreenPixelClass"), nBefore + 2);
}

void tst_MacScreenPixel::theWindowOfAViewIsAskedFor()
{
    const int nBefore = CFakeMac::WindowQuestions();
    CGetScreenPixel().SetFourKFunciton(CFakeMac::View());
    QCOMPARE(CFakeMac::WindowQuestions(), nBefore + 1);
    CGetScreenPixel().SetFourKFunciton(0);
    QCOMPARE(CFakeMac::WindowQuestions(), nBefore + 1);
}

void tst_MacScreenPixel::theTitleHookDoesNothing()
{
    const int nBefore = CFakeMac::WindowQuestions();
    CGetScreenPixel().HideWindowTitle(CFakeMac::View());
    QCOMPARE(CFakeMac::WindowQuestions(), nBefore);
    QCOMPARE(CFakeMac::OpenedFiles(), QStringList());
}

void tst_MacScreenPixel::theSecurityPaneIsOpened()
{
    CGetScreenPixel().OpenSysSecurity();
    QCOMPARE(CFakeMac::OpenedFiles(), QStringList{"/System/Library/PreferencePanes/Security.prefPane"});
}

QTEST_GUILESS_MAIN(tst_MacScreenPixel)
#include "tst_MacScreenPixel.moc"
