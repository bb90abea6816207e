#include "disk/platform/macos/DeviceBus.h"

#import <CoreFoundation/CoreFoundation.h>
#import <Foundation/Foundation.h>
#import <IOKit/IOKitLib.h>

static bool IsA(CFTypeRef pValue, Class pClass)
{
    return pValue != nullptr && [(id)pValue isKindOfClass:pClass];
}

static std::optional<bool> SaysUsb(CFDictionaryRef pProperties)
{
    const CFTypeRef pProtocol = CFDictionaryGetValue(pProperties, CFSTR("Protocol Characteristics"));
    if (!IsA(pProtocol, [NSDictionary class])) {
        return std::nullopt;
    }
    const CFTypeRef pBus = CFDictionaryGetValue((CFDictionaryRef)pProtocol, CFSTR("Physical Interconnect"));
    if (!IsA(pBus, [NSString class])) {
        return std::nullopt;
    }
    return CFStringCompare((CFStringRef)pBus, CFSTR("USB"), kCFCompareCaseInsensitive) == kCFCompareEqualTo;
}

std::optional<bool> IsConnectedByUsb(unsigned int nDevice)
{
    CFMutableDictionaryRef pProperties = nullptr;
    if (IORegistryEntryCreateCFProperties(nDevice, &pProperties, kCFAllocatorDefault, 0) != KERN_SUCCESS
        || pProperties == nullptr) {
        return std::nullopt;
    }
    const std::optional<bool> bUsb = SaysUsb(pProperties);
    CFRelease(pProperties);
    return bUsb;
}
