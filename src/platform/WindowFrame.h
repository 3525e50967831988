#pragma once

#include <QWindow>

namespace Stemhaven {

/// Lets the contents of a native window reach into its title bar where the system has windows like that.
/// Returns how much of their upper edge the title bar's buttons then cover, 0 where the window manager's
/// frame stays as it is. Done anew whenever the native window is made anew. GUI thread.
int extendContentsIntoTitleBar(WId window);

} // namespace Stemhaven
