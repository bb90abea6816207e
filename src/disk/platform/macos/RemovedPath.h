#pragma once

/** The path that a removal is reported with where the system cannot say any more which volume it was. */
inline constexpr char REMOVED_PATH[] = "USB";
