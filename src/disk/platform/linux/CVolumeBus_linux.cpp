#include "disk/platform/CVolumeBus.h"

// A volume is unlocked by hand here, and who mounts it in the folder of volumes wants it there.
std::optional<bool> CVolumeBus::IsOnUsb(const QString& /*strPath*/) { return std::nullopt; }
