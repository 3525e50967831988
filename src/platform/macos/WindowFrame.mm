#include "platform/WindowFrame.h"

#import <AppKit/AppKit.h>

#include <cmath>

namespace Stemhaven {

int extendContentsIntoTitleBar(WId window) {
    NSWindow* frame = reinterpret_cast<NSView*>(window).window;
    if (frame == nil)
        return 0;
    frame.styleMask |= NSWindowStyleMaskFullSizeContentView;
    frame.titlebarAppearsTransparent = YES;
    frame.titleVisibility = NSWindowTitleHidden;
    return static_cast<int>(std::ceil(NSHeight(frame.frame) - NSHeight(frame.contentLayoutRect)));
}

} // namespace Stemhaven
