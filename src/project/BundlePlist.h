#pragma once

#include "app/errors/IOException.h"
#include "plist/Value.h"

#include <QString>

#include <any>
#include <functional>
#include <initializer_list>
#include <typeinfo>

class QFileInfo;

/// Reading of the property lists in a bundle.
namespace Stemhaven {

/// Calls take with the list in file, which can be large: it is gone when this returns, and no other thread
/// decodes anything meanwhile, so take looks at no file. Throws IOException where the file is missing, no
/// plain file or closed to us, Plist::Error where it is no property list and std::bad_cast where its root is
/// no dictionary.
void withBundlePlist(const QFileInfo& file, const std::function<void(const Plist::Dictionary& list)>& take);

/// Of the list in file, the values under keys, with nothing that could be large: a container or data is kept
/// empty, and a text up to where typedText() refuses it. Throws as withBundlePlist().
Plist::Dictionary smallEntries(const QFileInfo& file, std::initializer_list<const char*> keys);

/// The value of type T under key, which lives as long as the dictionary. Throws IOException where the key is
/// missing, and with the text mismatch where the value has another type: %1 is the key, %2 the type wanted,
/// %3 the type held.
template <typename T>
const T& typedRead(const Plist::Dictionary& dictionary, const char* key, const char* mismatch) {
    const auto entry = dictionary.find(key);
    if (entry == dictionary.end()) {
        throw IOException(
            QStringLiteral("Could not find project meta data field named '%1'").arg(QLatin1String(key)));
    }
    const T* value = std::any_cast<T>(&entry->second);
    if (value == nullptr) {
        throw IOException(QString::fromLatin1(mismatch).arg(
            QLatin1String(key), QLatin1String(typeid(T).name()), QLatin1String(entry->second.type().name())));
    }
    return *value;
}

/// As typedRead, for a text. Throws IOException also where it has more than 1 KiB.
QString typedText(const Plist::Dictionary& dictionary, const char* key, const char* mismatch);

} // namespace Stemhaven
