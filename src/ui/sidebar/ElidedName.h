#pragma once

#include <QString>

class QFontMetrics;

/// A name as part of a sentence: on one line, and without its middle where it is too long for that.
QString elidedName(const QString& name, const QFontMetrics& metrics);
