#include "journeys/CJourneyBed.h"

#include <QGuiApplication>
#include <QScreen>

/** The whole program on a screen that is smaller than its window, by mouse alone. */
class tst_SmallScreen : public CJourneyBed
{
    Q_OBJECT

private slots:
    void init();
    void cleanup() { Clear(); }

    void everyControlIsReached_data();
    void everyControlIsReached();

private:
    bool Reaches(const QString& strName, const QString& strIn = QString());
    bool Scroll(const QString& strBar);
    void ScrollTo(const QString& strName, const QString& strIn = QString());
};

void tst_SmallScreen::init() { Make(); }

/** Whether a part stands on the screen with all of it. */
bool tst_SmallScreen::Reaches(const QString& strName, const QString& strIn)
{
    const QJsonObject obj = m_pJourney->Widget(strName, strIn);
    const QRect rect(obj.value("x").toInt(), obj.value("y").toInt(), obj.value("w").toInt(),
                     obj.value("h").toInt());
    return !rect.isEmpty() && QGuiApplication::primaryScreen()->geometry().contains(rect);
}

/** Clicks beside a bar's handle, towards its end; false when it is there. */
bool tst_SmallScreen::Scroll(const QString& strBar)
{
    QJsonObject objBar = m_pJourney->Widget(strBar);
    const int nBefore = objBar.value("value").toInt();
    const bool bWide = objBar.value("w").toInt() > objBar.value("h").toInt();
    const char* const pStart = bWide ? "x" : "y";
    const char* const pLength = bWide ? "w" : "h";
    objBar[pStart] = objBar.value(pStart).toInt() + objBar.value(pLength).toInt() - 10;
    objBar[pLength] = 8;
    m_pJourney->Click(objBar);
    return CJourney::WaitFor([&] { return m_pJourney->Widget(strBar).value("value").toInt() != nBefore; },
                             1000);
}

void tst_SmallScreen::ScrollTo(const QString& strName, const QString& strIn)
{
    for (const char* pBar : {"m_pPagesHorizontalBar", "m_pPagesVerticalBar"}) {
        while (!Reaches(strName, strIn) && m_pJourney->Shows(pBar) && Scroll(pBar)) { }
    }
    QVERIFY2(Reaches(strName, strIn), qPrintable(strName));
}

void tst_SmallScreen::everyControlIsReached_data()
{
    QTest::addColumn<QString>("strFactor");
    QTest::newRow("no factor") << QString();
    QTest::newRow("a factor below 1") << "0.7";
}

void tst_SmallScreen::everyControlIsReached()
{
    QFETCH(QString, strFactor);
    m_pJourney->SetVariable("QT_SCALE_FACTOR", strFactor);
    Start();
    const QRect rectScreen = QGuiApplication::primaryScreen()->geometry();
    QVERIFY(rectScreen.width() < 1120);
    QVERIFY(Reaches("CTarnwickMacPE"));
    // Smaller than it is the toolkit cannot draw it.
    QCOMPARE(m_pJourney->Widget("CTarnwickMacPE").value("ratio").toDouble(), 1.0);
    m_pJourney->Picture("window");
    QVERIFY(Reaches("m_pCloseBtn"));
    QVERIFY(m_pJourney->Open(m_listVolume));
    QVERIFY(m_pJourney->TickWhole(m_listUsers));

    ScrollTo("RefreshLab");
    ScrollTo("m_pDropBtn");
    QVERIFY(m_pJourney->OpenList("m_pDropBtn"));
    m_pJourney->Picture("drop-down");
    QVERIFY(m_pJourney->ChooseDisk("LARGE"));
    m_pJourney->SlowWrites(5 * SLOW_MS);
    ScrollTo("toolBtn", "m_pSelFilePage");
    m_pJourney->Picture("copy-button");
    m_pJourney->Click("toolBtn", "m_pSelFilePage");

    QVERIFY(CJourney::WaitFor([&] { return m_pJourney->Progress() > 5; }));
    m_pJourney->Picture("copying");
    ScrollTo("toolBtn", "m_pCopyFilePage");
    m_pJourney->Picture("cancel-button");
    // The first moments after Copy belong to its second click.
    QVERIFY(CJourney::WaitFor([&] {
        m_pJourney->Click("toolBtn", "m_pCopyFilePage");
        return m_pJourney->WaitForBox(TEXT_STOP, 500);
    }));
    m_pJourney->Picture("question");
    m_pJourney->SlowWrites(0);
    QVERIFY(m_pJourney->AnswerBox(TEXT_STOP, "Yes"));
    QVERIFY(m_pJourney->AnswerBox(TEXT_COMPLETED, "OK"));
    QVERIFY(CJourney::WaitFor([&] { return m_pJourney->Page() == 0; }));
    m_pJourney->Click("m_pCloseBtn");
    Exit();
}

QTEST_MAIN(tst_SmallScreen)
#include "tst_SmallScreen.moc"
