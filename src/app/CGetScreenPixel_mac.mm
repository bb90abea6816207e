#include "app/CGetScreenPixel.h"

#import <AppKit/AppKit.h>

/** Asks the window system for the main screen. GUI thread. */
@interface ScreenPixelClass : NSObject

/** The main screen's width in whole points; 0 when there is none. */
- (int)GetScreenResolution;

@end

@implementation ScreenPixelClass

- (int)GetScreenResolution
{
    NSScreen* const pScreen = [NSScreen mainScreen];
    return pScreen == nil ? 0 : CGetScreenPixel::WholePoints([pScreen frame].size.width);
}

@end

int CGetScreenPixel::GetScreen()
{
    // Asked before there is an application object, so there is no pool yet.
    @autoreleasepool {
        // Not released: it is asked once, and lives as long as the program.
        return [[[ScreenPixelClass alloc] init] GetScreenResolution];
    }
}

void CGetScreenPixel::SetFourKFunciton(unsigned long long nWindowId)
{
    // A native window id is the address of the widget's view.
    (void)[reinterpret_cast<NSView*>(nWindowId) window];
}

void CGetScreenPixel::OpenSysSecurity()
{
    @autoreleasepool {
// Later systems would rather be given an address than a path; the earliest one
// that the program runs on knows only this call for a pane.
#pragma clang diagnostic push
#pragma clang diagnostic ignored "-Wdeprecated-declarations"
        [[NSWorkspace sharedWorkspace] openFile:@"/System/Library/PreferencePanes/Security.prefPane"];
#pragma clang diagnostic pop
    }
}
