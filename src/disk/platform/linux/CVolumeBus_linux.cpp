#include "disk/platform/CVolumeBus.h"
#include "disk/platform/CVolumeInfo.h"
#include "disk/platform/linux/CDeviceBus.h"

std::optional<bool> CVolumeBus::IsOnUsb(const QString& strPath)
{
    return CDeviceBus::IsUsb(CSysBlock(), CVolumeInfo::DeviceOf(strPath).toStdString());
}
