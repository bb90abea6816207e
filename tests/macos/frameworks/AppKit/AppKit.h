#pragma once

// What the program uses of AppKit, declared as its documentation does.

#import <Foundation/Foundation.h>

extern "C" {
extern NSString* const NSWorkspaceDidMountNotification;
extern NSString* const NSWorkspaceDidUnmountNotification;
}

@interface NSWorkspace : NSObject
+ (NSWorkspace*)sharedWorkspace;
- (NSNotificationCenter*)notificationCenter;
- (BOOL)openFile:(NSString*)pPath;
@end

@interface NSScreen : NSObject
+ (NSScreen*)mainScreen;
- (NSRect)frame;
@end

@class NSWindow;

@interface NSView : NSObject
- (NSWindow*)window;
@end
