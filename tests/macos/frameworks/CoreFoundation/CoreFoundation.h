#pragma once

// What the program uses of Core Foundation, declared as its documentation does.
// Strings and dictionaries are the Objective-C ones underneath, as on macOS.

#import <Foundation/Foundation.h>

typedef const void* CFTypeRef;
typedef const struct __CFAllocator* CFAllocatorRef;
typedef const struct __CFString* CFStringRef;
typedef const struct __CFDictionary* CFDictionaryRef;
typedef struct __CFDictionary* CFMutableDictionaryRef;
typedef struct __CFRunLoop* CFRunLoopRef;
typedef struct __CFRunLoopSource* CFRunLoopSourceRef;
typedef CFStringRef CFRunLoopMode;
typedef long CFIndex;

enum CFComparisonResult : CFIndex
{
    kCFCompareLessThan = -1,
    kCFCompareEqualTo = 0,
    kCFCompareGreaterThan = 1
};

enum CFStringCompareFlags : unsigned long
{
    kCFCompareCaseInsensitive = 1
};

#define CFSTR(text) ((CFStringRef) @"" text)

extern "C" {
extern const CFAllocatorRef kCFAllocatorDefault;
extern const CFRunLoopMode kCFRunLoopDefaultMode;
extern const CFRunLoopMode kCFRunLoopCommonModes;

void CFRelease(CFTypeRef pObject);
const void* CFDictionaryGetValue(CFDictionaryRef pDictionary, const void* pKey);
CFComparisonResult CFStringCompare(CFStringRef pFirst, CFStringRef pSecond, CFStringCompareFlags enFlags);
CFRunLoopRef CFRunLoopGetCurrent(void);
void CFRunLoopAddSource(CFRunLoopRef pLoop, CFRunLoopSourceRef pSource, CFRunLoopMode mode);
}
