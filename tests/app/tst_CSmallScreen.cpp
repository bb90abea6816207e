#include "app/CSmallScreen.h"

#include <QMainWindow>
#include <QPushButton>
#include <QScrollArea>
#include <QStackedWidget>
#include <QTest>
#include <QVBoxLayout>

class tst_CSmallScreen : public QObject
{
    Q_OBJECT

private slots:
    void factors_data();
    void factors();
    void windowOnAScreen_data();
    void windowOnAScreen();
};

void tst_CSmallScreen::factors_data()
{
    QTest::addColumn<QByteArray>("baFactors");
    QTest::addColumn<bool>("bBelow");
    const auto row = [](const char* pFactors, bool bBelow) {
        QTest::newRow(*pFactors == '\0' ? "none" : pFactors) << QByteArray(pFactors) << bBelow;
    };
    row("", false);
    row("1", false);
    row("1.5", false);
    row("0.99", true);
    row("0.5", true);
    row(" 0.5 ", true);
    row("0", false); // the toolkit takes it for none
    row("-1", false);
    row("junk", false);
    row("2;1.5", false);
    row("2;0.75", true);
    row("eDP-1=0.75;HDMI-1=2", true);
    row("eDP-1=1;HDMI-1=2", false);
}

void tst_CSmallScreen::factors()
{
    QFETCH(QByteArray, baFactors);
    QTEST(CSmallScreen::IsBelowOne(baFactors), "bBelow");
}

void tst_CSmallScreen::windowOnAScreen_data()
{
    QTest::addColumn<QSize>("sizeScreen");
    QTest::addColumn<QSize>("sizeWindow");
    QTest::addColumn<bool>("bScrolls");
    QTest::newRow("large") << QSize(1440, 900) << QSize(1120, 690) << false;
    QTest::newRow("just large enough") << QSize(1120, 690) << QSize(1120, 690) << false;
    QTest::newRow("a little too low") << QSize(1280, 689) << QSize(1130, 689) << true;
    QTest::newRow("a little too narrow") << QSize(1119, 900) << QSize(1119, 700) << true;
    QTest::newRow("small") << QSize(800, 600) << QSize(800, 600) << true;
    QTest::newRow("no screen") << QSize() << QSize(1120, 690) << false;
}

void tst_CSmallScreen::windowOnAScreen()
{
    QFETCH(QSize, sizeScreen);
    QFETCH(bool, bScrolls);
    QMainWindow window;
    window.setFixedSize(1120, 690);
    window.setCentralWidget(new QWidget);
    auto* pLayout = new QVBoxLayout(window.centralWidget());
    auto* pPages = new QStackedWidget;
    pLayout->addWidget(new QPushButton);
    pLayout->addWidget(pPages);
    auto* pFirst = new QPushButton;
    pPages->addWidget(pFirst);
    pFirst->setFocus();
    const QWidget* pParent = window.centralWidget();
    CSmallScreen::Fit(window, pPages, sizeScreen);
    QTEST(window.maximumSize(), "sizeWindow");
    QTEST(window.minimumSize(), "sizeWindow");
    QCOMPARE(pPages->parentWidget() != pParent, bScrolls);
    const auto* pArea = window.findChild<QScrollArea*>("m_pPagesArea");
    QCOMPARE(pArea != nullptr, bScrolls);
    QVERIFY(!bScrolls || pArea->widget() == pPages);
    QVERIFY(!bScrolls || pPages->size() == QSize(1120, 649));
    QCOMPARE(window.focusWidget(), pFirst);
}

QTEST_MAIN(tst_CSmallScreen)
#include "tst_CSmallScreen.moc"
