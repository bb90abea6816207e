#pragma once

#include <QFont>
#include <QObject>
#include <QString>

/**
 * The one table of text styles: turns style numbers into fonts and colours.
 *
 * Used wherever a font or a text colour is set in code; everything else comes
 * from the application stylesheet. The static members keep no state and may be
 * called on any thread.
 */
class CSkinMgr : public QObject
{
    Q_OBJECT

public:
    /** Font styles by size and weight; a number outside the list is taken as well and gives 11 pt, normal. */
    enum FontStyle : int
    {
        FONT_STYLE_PT_9 = 0,
        FONT_STYLE_PT_9_ALIAS = 1,
        FONT_STYLE_PT_11_MEDIUM = 2,
        FONT_STYLE_PT_10_BOLD = 3,
        FONT_STYLE_PX_8 = 4,
        FONT_STYLE_PX_9 = 5,
        FONT_STYLE_PX_9_BOLD = 6,
        FONT_STYLE_PX_10 = 7,
        FONT_STYLE_PX_10_BOLD = 8,
        FONT_STYLE_PX_11 = 9,
        FONT_STYLE_PX_11_BOLD = 10,
        FONT_STYLE_PX_12 = 11,
        FONT_STYLE_PX_12_BOLD = 12,
        FONT_STYLE_PX_13 = 13,
        FONT_STYLE_PX_13_BOLD = 14,
        FONT_STYLE_PX_14 = 15,
        FONT_STYLE_PX_14_BOLD = 16,
        FONT_STYLE_PX_15 = 17,
        FONT_STYLE_PX_15_BOLD = 18,
        FONT_STYLE_PX_16 = 19,
        FONT_STYLE_PX_16_BOLD = 20,
        FONT_STYLE_PX_17 = 21,
        FONT_STYLE_PX_17_BOLD = 22,
        FONT_STYLE_PX_18 = 23,
        FONT_STYLE_PX_18_BOLD = 24,
        FONT_STYLE_PX_19 = 25,
        FONT_STYLE_PX_19_BOLD = 26,
        FONT_STYLE_PX_20 = 27,
        FONT_STYLE_PX_20_BOLD = 28,
        FONT_STYLE_PX_21 = 29,
        FONT_STYLE_PX_21_BOLD = 30,
        FONT_STYLE_PX_22 = 31,
        FONT_STYLE_PX_22_BOLD = 32,
        FONT_STYLE_PX_23 = 33,
        FONT_STYLE_PX_23_BOLD = 34,
        FONT_STYLE_PX_24 = 35,
        FONT_STYLE_PX_24_BOLD = 36,
        FONT_STYLE_PX_25 = 37,
        FONT_STYLE_PX_25_BOLD = 38,
        FONT_STYLE_PX_26 = 39,
        FONT_STYLE_PX_26_BOLD = 40,
        FONT_STYLE_PX_27 = 41
    };

    /** Text colours; a number outside the list is taken as well and gives white. */
    enum ColorStyle : int
    {
        COLOR_STYLE_WHITE = 0,
        COLOR_STYLE_SLATE = 1,
        COLOR_STYLE_GREY_120 = 2,
        COLOR_STYLE_GREY_250 = 3,
        COLOR_STYLE_AZURE = 5,
        COLOR_STYLE_GREY_88 = 6,
        COLOR_STYLE_GREEN = 7,
        COLOR_STYLE_GREY_169 = 8,
        COLOR_STYLE_BLUE = 9,
        COLOR_STYLE_GREY_198 = 11,
        COLOR_STYLE_GREY_187 = 12,
        COLOR_STYLE_GREY_72 = 13,
        COLOR_STYLE_GREY_230 = 14,
        COLOR_STYLE_GREY_240 = 15,
        COLOR_STYLE_GREY_153 = 16,
        COLOR_STYLE_SKY = 17,
        COLOR_STYLE_ORANGE = 18
    };

    /** An object of this class holds nothing; the members that count are static. */
    explicit CSkinMgr(QObject* parent = nullptr);

    /** Gives the font of a style in a family ("Avenir" throughout the program); never fails. */
    static QFont GetFontStyle(FontStyle enStyle, QString strFamily);

    /** Gives the rule "color:rgb(r, g, b);" for setStyleSheet, alone or joined with others; never fails. */
    static QString GetColorStyle(ColorStyle enStyle);
};
