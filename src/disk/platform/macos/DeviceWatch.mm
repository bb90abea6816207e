#include "disk/platform/macos/DeviceWatch.h"

#include "disk/CDiskListener.h"
#include "disk/platform/macos/DeviceBus.h"
#include "disk/platform/macos/RemovedPath.h"

#import <CoreFoundation/CoreFoundation.h>
#import <Foundation/Foundation.h>
#import <IOKit/IOKitLib.h>

static const char* const SERVICE_CLASS = "IOBlockStorageDevice";
static const char* const ARRIVAL = "IOServiceFirstMatch";
static const char* const REMOVAL = "IOServiceTerminate";
static const char* const USB_PLANE = "IOUSB";

// The system's default main port. The two names it has had are bound to one
// version of the system each; their value never changed.
static const mach_port_t MAIN_PORT = 0;

static const unsigned int NAME_SIZE = 128;
static const unsigned int PATH_SIZE = 512;

static void Drain(io_iterator_t nIterator)
{
    while (const io_object_t nDevice = IOIteratorNext(nIterator)) {
        IOObjectRelease(nDevice);
    }
}

static bool Watch(const char* pKind, IOServiceMatchingCallback pfnHandler, CDiskListener* pListener)
{
    const IONotificationPortRef pPort = IONotificationPortCreate(MAIN_PORT);
    if (pPort == nullptr) {
        return false;
    }
    const CFMutableDictionaryRef pMatching = IOServiceMatching(SERVICE_CLASS);
    // In the common modes the events also come while a menu or a window is dragged.
    CFRunLoopAddSource(CFRunLoopGetCurrent(), IONotificationPortGetRunLoopSource(pPort),
                       kCFRunLoopCommonModes);
    io_iterator_t nIterator = 0;
    // The call takes the dictionary over, also when it fails.
    if (IOServiceAddMatchingNotification(pPort, pKind, pMatching, pfnHandler, pListener, &nIterator)
        != KERN_SUCCESS) {
        return false;
    }
    // Nothing is reported of what is there already. Only an iterator that was
    // read to its end gives notice of the next device, so this also arms it.
    // Port and iterator are kept until the process ends: there is no stop.
    Drain(nIterator);
    return true;
}

bool WatchDeviceArrivals(CDiskListener* pListener) { return Watch(ARRIVAL, &iAttached, pListener); }

bool WatchDeviceRemovals(CDiskListener* pListener) { return Watch(REMOVAL, &iDetached, pListener); }

static void LogDevice(io_object_t nDevice)
{
    char name[NAME_SIZE] = "";
    IORegistryEntryGetName(nDevice, name);
    // Arrivals are worded alike: what reads this system log goes by the one line.
    NSLog(@"Device detached:%s", name);
}

void iAttached(void* pContext, unsigned int nIterator)
{
    if (pContext == nullptr) {
        return;
    }
    while (const io_object_t nDevice = IOIteratorNext(nIterator)) {
        @autoreleasepool {
            // Stays empty for a device that is not in the plane.
            char path[PATH_SIZE] = {};
            IORegistryEntryGetPath(nDevice, USB_PLANE, path);
            LogDevice(nDevice);
            if (IsConnectedByUsb(nDevice).value_or(false)) {
                static_cast<CDiskListener*>(pContext)->OnDiskChanged(DISK_EVENT_APPEARED, path);
            }
            IOObjectRelease(nDevice);
        }
    }
}

void iDetached(void* pContext, unsigned int nIterator)
{
    if (pContext == nullptr) {
        return;
    }
    while (const io_object_t nDevice = IOIteratorNext(nIterator)) {
        @autoreleasepool {
            LogDevice(nDevice);
            if (IsConnectedByUsb(nDevice).value_or(false)) {
                // A device that is gone has no path any more.
                static_cast<CDiskListener*>(pContext)->OnDiskChanged(DISK_EVENT_DISAPPEARED, REMOVED_PATH);
            }
            IOObjectRelease(nDevice);
        }
    }
}
