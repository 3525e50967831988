#pragma once

#include "platform/macos/CFOwner.h"

#include <QString>
#include <QStringList>

#include <cstdint>

namespace Stemhaven {

CFOwner<CFArrayRef> toCFArray(const QStringList& texts);

/// Empty where the dictionary has no such key, which must stand for a string.
QString textIn(CFDictionaryRef dictionary, CFStringRef key);

/// 0 where the dictionary has no such key, which must stand for a number, or 64 bits cannot hold the number.
std::uint64_t numberIn(CFDictionaryRef dictionary, CFStringRef key);

} // namespace Stemhaven
