#include "kit/CSkinMgr.h"

// Qt's weights for the styles; the middle one lies between medium and
// demi-bold and is used as the number that it is.
static const int WEIGHT_NORMAL = 50;
static const int WEIGHT_MEDIUM = 62;
static const int WEIGHT_BOLD = 75;

static QFont PixelFont(const QString& strFamily, int nPixels, int nWeight)
{
    QFont font(strFamily, -1, nWeight);
    font.setPixelSize(nPixels);
    return font;
}

CSkinMgr::CSkinMgr(QObject* parent)
    : QObject(parent)
{
}

QFont CSkinMgr::GetFontStyle(FontStyle enStyle, QString strFamily)
{
    const int nStyle = enStyle;
    switch (nStyle) {
    case FONT_STYLE_PT_9:
    case FONT_STYLE_PT_9_ALIAS:
        return QFont(strFamily, 9, WEIGHT_NORMAL);
    case FONT_STYLE_PT_11_MEDIUM:
        return QFont(strFamily, 11, WEIGHT_MEDIUM);
    case FONT_STYLE_PT_10_BOLD:
        return QFont(strFamily, 10, WEIGHT_BOLD);
    case FONT_STYLE_PX_8:
        return PixelFont(strFamily, 8, WEIGHT_NORMAL);
    case FONT_STYLE_PX_9:
        return PixelFont(strFamily, 9, WEIGHT_NORMAL);
    case FONT_STYLE_PX_9_BOLD:
        return PixelFont(strFamily, 9, WEIGHT_BOLD);
    default:
        break;
    }
    if (nStyle < FONT_STYLE_PX_10 || nStyle > FONT_STYLE_PX_27) {
        return QFont(strFamily, 11, WEIGHT_NORMAL);
    }
    // From here on each size has two numbers, odd for normal and even for bold.
    const bool bBold = nStyle % 2 == 0;
    return bBold ? PixelFont(strFamily, (nStyle + 12) / 2, WEIGHT_BOLD)
                 : PixelFont(strFamily, (nStyle + 13) / 2, WEIGHT_NORMAL);
}

QString CSkinMgr::GetColorStyle(ColorStyle enStyle)
{
    switch (enStyle) {
    case COLOR_STYLE_SLATE:
        return QStringLiteral("color:rgb(97, 108, 114);");
    case COLOR_STYLE_GREY_120:
        return QStringLiteral("color:rgb(120, 120, 120);");
    case COLOR_STYLE_GREY_250:
        return QStringLiteral("color:rgb(250, 250, 250);");
    case COLOR_STYLE_AZURE:
        return QStringLiteral("color:rgb(21, 160, 245);");
    case COLOR_STYLE_GREY_88:
        return QStringLiteral("color:rgb(88, 88, 88);");
    case COLOR_STYLE_GREEN:
        return QStringLiteral("color:rgb(85, 179, 104);");
    case COLOR_STYLE_GREY_169:
        return QStringLiteral("color:rgb(169, 169, 169);");
    case COLOR_STYLE_BLUE:
        return QStringLiteral("color:rgb(55, 125, 255);");
    case COLOR_STYLE_GREY_198:
        return QStringLiteral("color:rgb(198, 198, 198);");
    case COLOR_STYLE_GREY_187:
        return QStringLiteral("color:rgb(187, 187, 187);");
    case COLOR_STYLE_GREY_72:
        return QStringLiteral("color:rgb(72, 72, 72);");
    case COLOR_STYLE_GREY_230:
        return QStringLiteral("color:rgb(230, 230, 230);");
    case COLOR_STYLE_GREY_240:
        return QStringLiteral("color:rgb(240, 240, 240);");
    case COLOR_STYLE_GREY_153:
        return QStringLiteral("color:rgb(153, 153, 153);");
    case COLOR_STYLE_SKY:
        return QStringLiteral("color:rgb(57, 172, 253);");
    case COLOR_STYLE_ORANGE:
        return QStringLiteral("color:rgb(255, 126, 23);");
    default:
        return QStringLiteral("color:rgb(255, 255, 255);");
    }
}
