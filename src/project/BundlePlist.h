#pragma once

#include "app/errors/IOException.h"
#include "plist/Value.h"

#include <QString>

#include <any>
#include <initializer_list>
#include <typeinfo>

class QFileInfo;

/// Reading of the property lists in a bundle.
namespace Stemhaven {

/// Throws IOException where the file is missing, no plain file or closed to us, Plist::Error where it is no
/// property list and std::bad_cast where its root is no dictionary.
Plist::Dictionary readBundlePlist(const QFileInfo& file);

/// The values of list under keys, with nothing that could be large: a container or data that is not asked for
/// by its contents is kept empty, and a text up to where typedText() refuses it.
Plist::Dictionary smallEntries(Plist::Dictionary list, std::initializer_list<const char*> keys);

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
