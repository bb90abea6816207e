#include "kit/CSkinMgr.h"
#include "kit/SkinColor.h"

#include <QColor>
#include <QFile>
#include <QTest>

class tst_CSkinMgr : public QObject
{
    Q_OBJECT

private slots:
    void font_data();
    void font();
    void fontKeepsFamily();
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
    QTest::addColumn<int>("style");
    QTest::addColumn<int>("points");
    QTest::addColumn<int>("pixels");
    QTest::addColumn<int>("weight");
    FontRow(-1000, 11, -1, 50);
    FontRow(-1, 11, -1, 50);
    FontRow(0, 9, -1, 50);
    FontRow(1, 9, -1, 50);
    FontRow(2, 11, -1, 62);
    FontRow(3, 10, -1, 75);
    FontRow(4, -1, 8, 50);
    FontRow(5, -1, 9, 50);
    FontRow(6, -1, 9, 75);
    FontRow(7, -1, 10, 50);
    FontRow(8, -1, 10, 75);
    FontRow(9, -1, 11, 50);
    FontRow(10, -1, 11, 75);
    FontRow(11, -1, 12, 50);
    FontRow(12, -1, 12, 75);
    FontRow(13, -1, 13, 50);
    FontRow(14, -1, 13, 75);
    FontRow(15, -1, 14, 50);
    FontRow(16, -1, 14, 75);
    FontRow(17, -1, 15, 50);
    FontRow(18, -1, 15, 75);
    FontRow(19, -1, 16, 50);
    FontRow(20, -1, 16, 75);
    FontRow(21, -1, 17, 50);
    FontRow(22, -1, 17, 75);
    FontRow(23, -1, 18, 50);
    FontRow(24, -1, 18, 75);
    FontRow(25, -1, 19, 50);
    FontRow(26, -1, 19, 75);
    FontRow(27, -1, 20, 50);
    FontRow(28, -1, 20, 75);
    FontRow(29, -1, 21, 50);
    FontRow(30, -1, 21, 75);
    FontRow(31, -1, 22, 50);
    FontRow(32, -1, 22, 75);
    FontRow(33, -1, 23, 50);
    FontRow(34, -1, 23, 75);
    FontRow(35, -1, 24, 50);
    FontRow(36, -1, 24, 75);
    FontRow(37, -1, 25, 50);
    FontRow(38, -1, 25, 75);
    FontRow(39, -1, 26, 50);
    FontRow(40, -1, 26, 75);
    FontRow(41, -1, 27, 50);
    FontRow(42, 11, -1, 50);
    FontRow(43, 11, -1, 50);
    FontRow(1000, 11, -1, 50);
}

void tst_CSkinMgr::font()
{
    QFETCH(int, style);
    const QFont font
        = CSkinMgr::GetFontStyle(static_cast<CSkinMgr::FontStyle>(style), QStringLiteral("Avenir"));
    QTEST(font.pointSize(), "points");
    QTEST(font.pixelSize(), "pixels");
    QTEST(font.weight(), "weight");
    QCOMPARE(font.family(), QStringLiteral("Avenir"));
}

void tst_CSkinMgr::fontKeepsFamily()
{
    for (const int nStyle : {0, 2, 3, 4, 6, 15, 16, 42}) {
        const auto enStyle = static_cast<CSkinMgr::FontStyle>(nStyle);
        QCOMPARE(CSkinMgr::GetFontStyle(enStyle, QStringLiteral("Some Family")).family(),
                 QStringLiteral("Some Family"));
    }
}

static void ColorRow(int nStyle, const char* pszRule)
{
    QTest::addRow("style %d", nStyle) << nStyle << QString::fromLatin1(pszRule);
}

void tst_CSkinMgr::color_data()
{
    QTest::addColumn<int>("style");
    QTest::addColumn<QString>("rule");
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
    QFETCH(int, style);
    QTEST(CSkinMgr::GetColorStyle(static_cast<CSkinMgr::ColorStyle>(style)), "rule");
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
    QFile sheet(":/res/TarnwickMacPE.qss");
    QVERIFY(sheet.open(QIODevice::ReadOnly));
    QVERIFY(QString(sheet.readAll()).contains(strRule));
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
