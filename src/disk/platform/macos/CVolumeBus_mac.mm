#include "disk/platform/CVolumeBus.h"
#include "disk/platform/CVolumeFolder.h"
#include "disk/platform/macos/DeviceBus.h"
#include "disk/platform/macos/MountList.h"
#include "files/CFileName.h"

#import <CoreFoundation/CoreFoundation.h>
#import <Foundation/Foundation.h>
#import <IOKit/IOKitLib.h>
#include <algorithm>

static const char* const DEVICE_CLASS = "IOBlockStorageDevice";
static const char* const SERVICE_PLANE = "IOService";
static const mach_port_t DEFAULT_MAIN_PORT = 0;

/** The name that the kernel has for what is mounted there, "disk2s1"; empty when it is no disk. */
static QByteArray MediaName(const QString& strPath)
{
    static const QByteArray s_baFolder = "/dev/";
    const QVector<STMountedVolume> listVolume = MountList().value_or(QVector<STMountedVolume>());
    const auto it = std::find_if(listVolume.begin(), listVolume.end(), [&](const STMountedVolume& volume) {
        return CVolumeFolder::IsSameName(CFileName::Decode(volume.baPoint), strPath);
    });
    const bool bDisk = it != listVolume.end() && it->baDevice.startsWith(s_baFolder);
    return bDisk ? it->baDevice.mid(s_baFolder.size()) : QByteArray();
}

/** The entry above this one, which is given back. */
static io_registry_entry_t Above(io_registry_entry_t nEntry)
{
    io_registry_entry_t nParent = 0;
    const bool bTold = IORegistryEntryGetParentEntry(nEntry, SERVICE_PLANE, &nParent) == KERN_SUCCESS;
    IOObjectRelease(nEntry);
    return bTold ? nParent : 0;
}

// A volume in a container, and an encrypted one, lies on a disk that the system has made up:
// what it is made of stands above it, and at last the device.
std::optional<bool> CVolumeBus::IsOnUsb(const QString& strPath)
{
    const QByteArray baMedia = MediaName(strPath);
    if (baMedia.isEmpty()) {
        return std::nullopt;
    }
    @autoreleasepool {
        // The call takes the dictionary over.
        io_registry_entry_t nEntry = IOServiceGetMatchingService(
            DEFAULT_MAIN_PORT, IOBSDNameMatching(DEFAULT_MAIN_PORT, 0, baMedia.constData()));
        while (nEntry != 0 && !IOObjectConformsTo(nEntry, DEVICE_CLASS)) {
            nEntry = Above(nEntry);
        }
        if (nEntry == 0) {
            return std::nullopt;
        }
        const std::optional<bool> bUsb = IsConnectedByUsb(nEntry);
        IOObjectRelease(nEntry);
        return bUsb;
    }
}
