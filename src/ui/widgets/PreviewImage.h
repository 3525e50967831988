#pragma once

#include <QImage>
#include <QSize>

/// Reads a project's picture, a JPEG or PNG, at most as large as target (in pixels, not points) and in its
/// own proportions; a smaller one keeps its size. Bundles come from strangers: what is no picture or no plain
/// file, is larger than 64 MiB, or would cost too much memory or time to decode gives a null image, without
/// waiting for anything. Any thread.
QImage readPreview(const QString& file, QSize target);
