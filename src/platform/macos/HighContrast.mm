#include "platform/HighContrast.h"

#import <AppKit/AppKit.h>

namespace Stemhaven {

bool systemWantsContrast() {
    return NSWorkspace.sharedWorkspace.accessibilityDisplayShouldIncreaseContrast;
}

} // namespace Stemhaven
