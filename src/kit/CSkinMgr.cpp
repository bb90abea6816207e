#include "kit/CSkinMgr.h"

#include "kit/SkinColor.h"

#include <iterator>

namespace {

// A size in points or in pixels, the other one being -1, and one of Qt's weights.
struct STFontStyle
{
    int nPoints = -1;
    int nPixels = -1;
    int nWeight = 0;
};

}

static const int WEIGHT_NORMAL = 50;
// Between medium and demi-bold: used as the number that it is.
static const int WEIGHT_MEDIUM = 62;
static const int WEIGHT_BOLD = 75;

// The first styles follow no rule.
static const STFontStyle FIRST_FONTS[]
    = {{9, -1, WEIGHT_NORMAL}, {9, -1, WEIGHT_NORMAL}, {11, -1, WEIGHT_MEDIUM}, {10, -1, WEIGHT_BOLD},
       {-1, 8, WEIGHT_NORMAL}, {-1, 9, WEIGHT_NORMAL}, {-1, 9, WEIGHT_BOLD}};
static_assert(std::size(FIRST_FONTS) == CSkinMgr::FONT_STYLE_PX_10);

static const QRgb WHITE = 0xffffff;

// By style number, five in a row; 0, 4 and 10 have no colour of their own.
static const QRgb COLORS[] = {WHITE,    0x616c72, 0x787878, 0xfafafa,         WHITE,
                              0x15a0f5, 0x585858, 0x55b368, 0xa9a9a9,         0x377dff,
                              WHITE,    0xc6c6c6, 0xbbbbbb, SkinColor::TEXT,  0xe6e6e6,
                              0xf0f0f0, 0x999999, 0x39acfd, SkinColor::ACCENT};
static_assert(std::size(COLORS) == CSkinMgr::COLOR_STYLE_ORANGE + 1);

static STFontStyle FontOf(int nStyle)
{
    if (nStyle < 0 || nStyle > CSkinMgr::FONT_STYLE_PX_27) {
        return {11, -1, WEIGHT_NORMAL};
    }
    if (nStyle < CSkinMgr::FONT_STYLE_PX_10) {
        return FIRST_FONTS[nStyle];
    }
    // From here on each size has two numbers, odd for normal and even for bold.
    return {-1, (nStyle + 13) / 2, nStyle % 2 == 0 ? WEIGHT_BOLD : WEIGHT_NORMAL};
}

CSkinMgr::CSkinMgr(QObject* parent)
    : QObject(parent)
{
}

QFont CSkinMgr::GetFontStyle(FontStyle enStyle, QString strFamily)
{
    const STFontStyle style = FontOf(enStyle);
    QFont font(strFamily, style.nPoints, style.nWeight);
    if (style.nPixels > 0) {
        font.setPixelSize(style.nPixels);
    }
    return font;
}

QString CSkinMgr::GetColorStyle(ColorStyle enStyle)
{
    const int nStyle = enStyle;
    const QRgb rgb = nStyle >= 0 && nStyle <= COLOR_STYLE_ORANGE ? COLORS[nStyle] : WHITE;
    return QString::asprintf("color:rgb(%d, %d, %d);", qRed(rgb), qGreen(rgb), qBlue(rgb));
}
