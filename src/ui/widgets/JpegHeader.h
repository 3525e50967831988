#pragma once

#include <QByteArray>

/// Whether a JPEG can be decoded from its top to its bottom in one pass, so that what is decoded need not be
/// held as a whole. False for progressive ones, for those whose colours come one after the other, and where
/// the data does not say.
bool isJpegOfOnePass(const QByteArray& data);
