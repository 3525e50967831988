#pragma once

#include <Qt>

class QVariant;

/// Where a column's header and cells stand, judged by a value of it: numbers to the right, dots in the
/// middle, everything else to the left.
Qt::Alignment cellAlignment(const QVariant& value);
