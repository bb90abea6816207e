#include "kit/CSkinMgr.h"
#include "kit/SkinColor.h"
#include "support/Widgets.h"

#include <QColor>

class tst_CSkinMgr : public QObject
{
    Q_OBJECT

private slots:
    void font_data();
    void font();
    void color_data();
    void color();
    void sharedColorIsTheSheets_data();
    void sharedColorIsTheSheets();
    void isAnOrdinaryObject();
};

static void FontRow(int nStyle, int nPoints, int nPixels, int nWeight)
{
    QTest::addRow("style %d", nStyle) << nStyle << nPoints << nPixels << nWeight;
}

void tst_CSkinMgr::font_data()
{
    QTest::addColumn<int>("nStyle");
    QTest::addColumn<int>("nPoints");
    QTest::addColumn<int>("nPixels");
    QTest::addColumn<int>("nWeight");
    FontRow(0, 9, -1, 50);
    FontRow(1, 9, -1, 50);
    FontRow(2, 11, -1, 62);
    FontRow(3, 10, -1, 75);
    FontRow(4, -1, 8, 50);
    FontRow(5, -1, 9, 50);
    FontRow(6, -1, 9, 75);
    int nStyle = 7;
    for (int nPixels = 10; nPixels <= 26; ++nPixels) {
        FontRow(nStyle++, -1, nPixels, 50);
        FontRow(nStyle++, -1, nPixels, 75);
    }
    FontRow(41, -1, 27, 50);
    for (const int nOther : {-1000, -1, 42, 43, 1000}) {
        FontRow(nOther, 11, -1, 50);
    }
}

void tst_CSkinMgr::font()
{
    QFETCH(int, nStyle);
    for (const char* pFamily : {"Avenir", "Some Family"}) {
        const QFont font = CSkinMgr::GetFontStyle(static_cast<CSkinMgr::FontStyle>(nStyle), pFamily);
        QTEST(font.pointSize(), "nPoints");
        QTEST(font.pixelSize(), "nPixels");
        QTEST(font.weight(), "nWeight");
        QCOMPARE(font.family(), QString(pFamily));
    }
}

static void ColorRow(int nStyle, const char* pRule) { QTest::addRow("style %d", nStyle) << nStyle << pRule; }

void tst_CSkinMgr::color_data()
{
    QTest::addColumn<int>("nStyle");
    QTest::addColumn<QString>("strRule");
    ColorRow(-1, "color:rgb(255, 255, 255);");
    ColorRow(0, "color:rgb(255, 255, 255);");
    ColorRow(1, "color:rgb(97, 108, 114);");
    ColorRow(2, "color:rgb(120, 120, 120);");
    ColorRow(3, "color:rgb(250, 250, 250);");
    ColorRow(4, "color:rgb(255, 255, 255);");
    ColorRow(5, "color:rgb(21, 160, 245);");
    ColorRow(6, "color:rgb(88, 88, 88);");
    ColorRow(7, "color:rgb(85, 179, 104);");
    ColorRow(8, "color:rgb(169, 169, 169);");
    ColorRow(9, "color:rgb(55, 125, 255);");
    ColorRow(10, "color:rgb(255, 255, 255);");
    ColorRow(11, "color:rgb(198, 198, 198);");
    ColorRow(12, "color:rgb(187, 187, 187);");
    ColorRow(13, "color:rgb(72, 72, 72);");
    ColorRow(14, "color:rgb(230, 230, 230);");
    ColorRow(15, "color:rgb(240, 240, 240);");
    ColorRow(16, "color:rgb(153, 153, 153);");
    ColorRow(17, "color:rgb(57, 172, 253);");
    ColorRow(18, "color:rgb(255, 126, 23);");
    ColorRow(19, "color:rgb(255, 255, 255);");
    ColorRow(20, "color:rgb(255, 255, 255);");
    ColorRow(1000, "color:rgb(255, 255, 255);");
}

void tst_CSkinMgr::color()
{
    QFETCH(int, nStyle);
    QTEST(CSkinMgr::GetColorStyle(static_cast<CSkinMgr::ColorStyle>(nStyle)), "strRule");
}

void tst_CSkinMgr::sharedColorIsTheSheets_data()
{
    QTest::addColumn<QRgb>("nColor");
    QTest::addColumn<QString>("strRule");
    QTest::newRow("accent") << SkinColor::ACCENT << "border: 1px solid rgb(255, 126, 23);";
    QTest::newRow("text") << SkinColor::TEXT << "color: #484848;";
    QTest::newRow("tint") << SkinColor::TINT << "background-color: #fff2e7;";
    QTest::newRow("focus ring") << SkinColor::FOCUS_RING << "border: 2px solid rgb(217, 95, 0);";
    QTest::newRow("line") << SkinColor::LINE << "border: 0px solid #e0e0e0;";
}

void tst_CSkinMgr::sharedColorIsTheSheets()
{
    QFETCH(QRgb, nColor);
    QFETCH(QString, strRule);
    QVERIFY(ProgramSheet().contains(strRule));
    const QString strDecimal
        = QString::asprintf("rgb(%d, %d, %d)", qRed(nColor), qGreen(nColor), qBlue(nColor));
    QVERIFY(strRule.contains(QColor(nColor).name()) || strRule.contains(strDecimal));
}

void tst_CSkinMgr::isAnOrdinaryObject()
{
    QObject owner;
    auto* pSkin = new CSkinMgr(&owner);
    QCOMPARE(pSkin->parent(), &owner);
    QCOMPARE(QByteArray(pSkin->metaObject()->className()), QByteArray("CSkinMgr"));
}

QTEST_GUILESS_MAIN(tst_CSkinMgr)
#include "tst_CSkinMgr.moc"
