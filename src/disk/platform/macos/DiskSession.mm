#include "disk/platform/macos/DiskSession.h"

#include "disk/CDiskListener.h"
#include "disk/platform/macos/RemovedPath.h"

#import <CoreFoundation/CoreFoundation.h>
#import <DiskArbitration/DiskArbitration.h>

bool WatchDisks(CDiskListener* pListener)
{
    const DASessionRef pSession = DASessionCreate(kCFAllocatorDefault);
    if (pSession == nullptr) {
        return false;
    }
    DARegisterDiskDisappearedCallback(pSession, nullptr, &DiskDisappearedCallback, pListener);
    DASessionScheduleWithRunLoop(pSession, CFRunLoopGetCurrent(), kCFRunLoopDefaultMode);
    // The run loop keeps the session alive; nobody here asks for it again.
    CFRelease(pSession);
    return true;
}

void DiskDisappearedCallback(__DADisk*, void* pContext)
{
    if (pContext == nullptr) {
        return;
    }
    static_cast<CDiskListener*>(pContext)->OnDiskChanged(DISK_EVENT_DISAPPEARED, REMOVED_PATH);
}

void DiskAppearedCallback(__DADisk* pDisk, void* pContext)
{
    if (pContext == nullptr) {
        return;
    }
    static_cast<CDiskListener*>(pContext)->OnDiskChanged(DISK_EVENT_APPEARED, DADiskGetBSDName(pDisk));
}
