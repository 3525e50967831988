#pragma once

#include "platform/OpenFolder.h"

#include <QByteArray>
#include <QString>

#include <functional>
#include <optional>

namespace Stemhaven {

/// The contents of a plain file of at most maxSize bytes. A pipe, a device, a folder, or what cannot be read,
/// gives nothing, at once. Any thread.
std::optional<QByteArray> readPlainFile(const QString& path, qint64 maxSize);

/// As above. isWanted is asked again and again while the file is read; once it says no, the rest is left and
/// nothing is given.
std::optional<QByteArray>
readPlainFile(const QString& path, qint64 maxSize, const std::function<bool()>& isWanted);

/// As the first, for a file in a folder. A link is no plain file here.
std::optional<QByteArray> readPlainFile(const OpenFolder& folder, const char* name, qint64 maxSize);

} // namespace Stemhaven
