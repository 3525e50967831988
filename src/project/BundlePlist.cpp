#include "project/BundlePlist.h"

#include "platform/DecodingTurn.h"
#include "plist/PropertyList.h"

#include <QFile>
#include <QFileInfo>

#include <cstdint>
#include <string>

namespace Stemhaven {

namespace {

/// In bytes. A bundle's texts are keys, versions and the like; they go into every row that is shown.
constexpr std::size_t maxTextSize = 1024;

Plist::Value smallValue(const Plist::Value& value) {
    if (const auto* text = std::any_cast<std::string>(&value))
        return text->substr(0, maxTextSize + 1);
    if (value.type() == typeid(Plist::Dictionary))
        return Plist::Dictionary();
    if (value.type() == typeid(Plist::Array))
        return Plist::Array();
    if (value.type() == typeid(Plist::Data))
        return Plist::Data();
    return value;
}

} // namespace

void withBundlePlist(const QFileInfo& info, const std::function<void(const Plist::Dictionary& list)>& take) {
    const QString path = info.filePath();
    QFile file(path);
    // Opening a pipe would wait for its other end.
    if (!info.isFile() || !file.open(QIODevice::ReadOnly | QIODevice::Text))
        throw IOException(file, QStringLiteral("Could not open file."));

    const auto bytes = Plist::readListFile(QFile::encodeName(path).constData());
    const DecodingTurn turn;
    Plist::Value root;
    Plist::readPlist(bytes.data(), static_cast<std::int64_t>(bytes.size()), root);
    take(std::any_cast<const Plist::Dictionary&>(root));
}

Plist::Dictionary smallEntries(const QFileInfo& file, std::initializer_list<const char*> keys) {
    Plist::Dictionary entries;
    withBundlePlist(file, [&](const Plist::Dictionary& list) {
        for (const char* key : keys) {
            const auto entry = list.find(key);
            if (entry != list.end())
                entries.emplace(key, smallValue(entry->second));
        }
    });
    return entries;
}

QString typedText(const Plist::Dictionary& dictionary, const char* key, const char* mismatch) {
    const auto& text = typedRead<std::string>(dictionary, key, mismatch);
    if (text.size() > maxTextSize)
        throw IOException(QStringLiteral("Project meta data '%1' is too long").arg(QLatin1String(key)));
    return QString::fromStdString(text);
}

} // namespace Stemhaven
