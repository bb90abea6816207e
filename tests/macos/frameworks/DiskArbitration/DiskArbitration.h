#pragma once

// What the program uses of DiskArbitration, declared as its documentation does.

#import <CoreFoundation/CoreFoundation.h>

typedef struct __DADisk* DADiskRef;
typedef struct __DASession* DASessionRef;
typedef void (*DADiskDisappearedCallback)(DADiskRef pDisk, void* pContext);

extern "C" {
DASessionRef DASessionCreate(CFAllocatorRef pAllocator);
void DARegisterDiskDisappearedCallback(DASessionRef pSession, CFDictionaryRef pMatch,
                                       DADiskDisappearedCallback pfnCallback, void* pContext);
void DASessionScheduleWithRunLoop(DASessionRef pSession, CFRunLoopRef pLoop, CFStringRef mode);
const char* DADiskGetBSDName(DADiskRef pDisk);
}
