#pragma once

#include "project/picture/PlainPicture.h"

#include <QImage>
#include <QSize>

#include <functional>

namespace Stemhaven {

/// Reads a project's picture, a JPEG or PNG, at most as large as target (in pixels, not points) and in its
/// own proportions; a smaller one keeps its size. Bundles come from strangers: what is no plain file, is
/// larger than 16 MiB or is no PlainPicture gives a null image, without waiting for anything. Any thread.
///
/// isWanted is asked again and again, on this thread. Once it says no, the reading or decoding is given up
/// within a fraction of a second, and what is returned means nothing.
QImage readPreview(
    const QString& file, QSize target, const std::function<bool()>& isWanted = [] { return true; });

/// As readPreview, of what has been read.
QImage previewOf(const PlainPicture& picture, QSize target, const std::function<bool()>& isWanted);

} // namespace Stemhaven
