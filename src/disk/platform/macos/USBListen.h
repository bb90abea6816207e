#pragma once

#import <Foundation/Foundation.h>

class CDiskListener;

/**
 * Receives the workspace's notices of volumes that are mounted and unmounted,
 * and reports each with its mount point. GUI thread, where the workspace
 * delivers them.
 */
@interface USBListen : NSObject {
    CDiskListener* _delegate;
}

/** The one instance, made on first use; safe to call on any thread. */
+ (USBListen*)share;

/** Reports to this listener from now on, which must outlive the process's last event. Once per process. */
- (void)listen:(CDiskListener*)pListener;

/** What the notification centre calls. */
- (void)volumeDidMount:(NSNotification*)pNotification;
- (void)volumeDidUnmount:(NSNotification*)pNotification;

@end
