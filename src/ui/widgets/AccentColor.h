#pragma once

#include <QColor>

/// The one colour that marks what matters: the desktop's accent colour or, where it has none, the palette's
/// highlight. Opaque. Asked for anew when the application's palette has changed. GUI thread.
QColor getAccentColor();
