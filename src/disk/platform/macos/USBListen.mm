#include "disk/platform/macos/USBListen.h"

#include "disk/CDiskListener.h"
#include "disk/CMountLook.h"

#import <AppKit/AppKit.h>

/** The notification's mount point as UTF-8, null when it names none. Lives as long as the current pool. */
static const char* MountPoint(NSNotification* pNotification)
{
    return [[[pNotification userInfo] objectForKey:@"NSDevicePath"] UTF8String];
}

static void Report(CDiskListener* pListener, ENDiskEventType enType, const char* pPath)
{
    if (pListener == nullptr || pPath == nullptr) {
        return;
    }
    // A look at the mounts that came first has told it already.
    if (CMountLook::GetInstance().Hear(enType, pPath)) {
        pListener->OnDiskChanged(enType, pPath);
    }
}

@implementation USBListen

+ (USBListen*)share
{
    // The language makes sure that this runs once, whichever thread is first.
    static USBListen* const s_pShared = [[USBListen alloc] init];
    return s_pShared;
}

- (void)listen:(CDiskListener*)pListener
{
    _delegate = pListener;
    // Not the default centre: the workspace posts to one of its own.
    NSNotificationCenter* const pCentre = [[NSWorkspace sharedWorkspace] notificationCenter];
    [pCentre addObserver:self
                selector:@selector(volumeDidUnmount:)
                    name:NSWorkspaceDidUnmountNotification
                  object:nil];
    [pCentre addObserver:self
                selector:@selector(volumeDidMount:)
                    name:NSWorkspaceDidMountNotification
                  object:nil];
}

- (void)volumeDidMount:(NSNotification*)pNotification
{
    NSLog(@"volumeDidMount:%@", pNotification);
    Report(_delegate, DISK_EVENT_APPEARED, MountPoint(pNotification));
}

- (void)volumeDidUnmount:(NSNotification*)pNotification
{
    NSLog(@"volumeDidUnmount:%@", pNotification);
    Report(_delegate, DISK_EVENT_DISAPPEARED, MountPoint(pNotification));
}

@end
