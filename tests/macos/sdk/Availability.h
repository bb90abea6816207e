#pragma once

// The versions that Qt's headers compare with; the earliest that the program runs on.

#define __MAC_10_13 101300
#define __MAC_10_14 101400
#define __MAC_10_15 101500
#define __MAC_OS_X_VERSION_MIN_REQUIRED __MAC_10_13
#define __MAC_OS_X_VERSION_MAX_ALLOWED __MAC_10_15
