#pragma once

#include <QStyle>

#include <optional>

/// The sizes and distances of the program's style that are the same for every widget; nothing for those that
/// it leaves as they are.
std::optional<int> styleMetric(QStyle::PixelMetric metric);
