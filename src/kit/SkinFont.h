#pragma once

#include "kit/CSkinMgr.h"

/** The font of a style in "Avenir", the one family that every screen uses. GUI thread; never fails. */
inline QFont SkinFont(CSkinMgr::FontStyle enStyle)
{
    return CSkinMgr::GetFontStyle(enStyle, QStringLiteral("Avenir"));
}
