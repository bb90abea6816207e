#pragma once

// What the program uses of IOKit, declared as its documentation does.

#import <CoreFoundation/CoreFoundation.h>
#include <cstdint>

typedef int kern_return_t;
typedef unsigned int mach_port_t;
typedef mach_port_t io_object_t;
typedef io_object_t io_iterator_t;
typedef io_object_t io_service_t;
typedef io_object_t io_registry_entry_t;
typedef unsigned int IOOptionBits;
typedef int boolean_t;
typedef char io_name_t[128];
typedef char io_string_t[512];
typedef struct IONotificationPort* IONotificationPortRef;
typedef void (*IOServiceMatchingCallback)(void* pReference, io_iterator_t nIterator);

#define KERN_SUCCESS 0

extern "C" {
IONotificationPortRef IONotificationPortCreate(mach_port_t nMainPort);
CFRunLoopSourceRef IONotificationPortGetRunLoopSource(IONotificationPortRef pPort);
CFMutableDictionaryRef IOServiceMatching(const char* pClassName);
CFMutableDictionaryRef IOBSDNameMatching(mach_port_t nMainPort, uint32_t nOptions, const char* pBsdName);
io_service_t IOServiceGetMatchingService(mach_port_t nMainPort, CFDictionaryRef pMatching);
kern_return_t IOServiceAddMatchingNotification(IONotificationPortRef pPort, const io_name_t pKind,
                                               CFDictionaryRef pMatching,
                                               IOServiceMatchingCallback pfnCallback, void* pReference,
                                               io_iterator_t* pIterator);
io_object_t IOIteratorNext(io_iterator_t nIterator);
kern_return_t IOObjectRelease(io_object_t nObject);
boolean_t IOObjectConformsTo(io_object_t nObject, const io_name_t pClassName);
kern_return_t IORegistryEntryGetName(io_registry_entry_t nEntry, io_name_t pName);
kern_return_t IORegistryEntryGetPath(io_registry_entry_t nEntry, const io_name_t pPlane, io_string_t pPath);
kern_return_t IORegistryEntryGetParentEntry(io_registry_entry_t nEntry, const io_name_t pPlane,
                                            io_registry_entry_t* pParent);
kern_return_t IORegistryEntryCreateCFProperties(io_registry_entry_t nEntry,
                                                CFMutableDictionaryRef* pProperties,
                                                CFAllocatorRef pAllocator, IOOptionBits nOptions);
}
