#pragma once

#include <QStringList>

/** The faces that stand in for "Avenir", the family that the program asks for everywhere. */
class CFontFallback
{
public:
    /**
     * Tells Qt what to draw with where "Avenir" is not installed, and how large
     * where no size is set. GUI thread, after the application object and before
     * the first font is used.
     */
    static void Install();

    /**
     * The stand-ins in the order in which a letter is looked for, for a list of
     * preferred languages such as {"en", "zh-Hant-TW"}; empty where the system
     * has the family itself. The first Chinese, Japanese or Korean language
     * decides which forms the characters get that these languages share. Any thread.
     */
    static QStringList Families(const QStringList& listLanguage);
};
