#include "disk/platform/linux/CDeviceBus.h"

std::optional<bool> CDeviceBus::IsUsb(const CSysBlock& sys, const std::string& strNode)
{
    const std::filesystem::path device = sys.Find(strNode);
    if (device.empty()) {
        return std::nullopt;
    }
    const std::string strBus = sys.Bus(device);
    if (strBus == "Disk Image" || strBus == "Unknown") {
        return std::nullopt;
    }
    return strBus == "USB";
}
