#pragma once

#include <QRgb>

/** The colours that code paints with and the style sheet has, too; it is text and spells them by itself. */
namespace SkinColor {

inline constexpr QRgb ACCENT = 0xff7e17; ///< what the user is to look at
inline constexpr QRgb TEXT = 0x484848; ///< what the user is to read
inline constexpr QRgb TINT = 0xfff2e7; ///< behind what is selected, or has the mouse or the focus
inline constexpr QRgb FOCUS_RING = 0xd95f00; ///< around what has the keyboard's focus
inline constexpr QRgb WARNING = 0xa63c00; ///< text of what is missing; dark enough to be read on TINT
inline constexpr QRgb GOOD = 0x55b368; ///< sign of what is well
inline constexpr QRgb QUIET_TEXT = 0x585858; ///< what stands beside the text
inline constexpr QRgb LINE = 0xe0e0e0; ///< between two parts
inline constexpr QRgb GROUND = 0x2e2e30; ///< behind the window where there is no desktop

}
