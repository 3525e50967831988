#include "platform/macos/CFConversion.h"

#include <vector>

namespace Stemhaven {

namespace {

CFOwner<CFStringRef> toCFString(const QString& text) {
    return CFOwner<CFStringRef>(CFStringCreateWithCharacters(nullptr, text.utf16(), text.size()));
}

} // namespace

CFOwner<CFArrayRef> toCFArray(const QStringList& texts) {
    std::vector<CFOwner<CFStringRef>> strings;
    std::vector<const void*> values;
    for (const auto& text : texts) {
        strings.push_back(toCFString(text));
        values.push_back(strings.back().get());
    }
    return CFOwner<CFArrayRef>(
        CFArrayCreate(nullptr, values.data(), static_cast<CFIndex>(values.size()), &kCFTypeArrayCallBacks));
}

QString textIn(CFDictionaryRef dictionary, CFStringRef key) {
    const auto* string = static_cast<CFStringRef>(CFDictionaryGetValue(dictionary, key));
    if (string == nullptr)
        return {};
    const CFIndex length = CFStringGetLength(string);
    std::vector<UniChar> characters(static_cast<std::size_t>(length));
    CFStringGetCharacters(string, CFRangeMake(0, length), characters.data());
    return QString(reinterpret_cast<const QChar*>(characters.data()), length);
}

std::uint64_t numberIn(CFDictionaryRef dictionary, CFStringRef key) {
    const auto* number = static_cast<CFNumberRef>(CFDictionaryGetValue(dictionary, key));
    std::int64_t value = 0;
    if (number == nullptr || !CFNumberGetValue(number, kCFNumberSInt64Type, &value))
        return 0;
    return static_cast<std::uint64_t>(value);
}

} // namespace Stemhaven
