#pragma once

#include "platform/OpenFolder.h"

#include <QByteArray>
#include <QString>

#include <optional>

namespace Stemhaven {

/// The contents of a plain file of at most maxSize bytes. A pipe, a device, a folder, or what cannot be read,
/// gives nothing, at once. Any thread.
std::optional<QByteArray> readPlainFile(const QString& path, qint64 maxSize);

/// As above, for a file in a folder. A link is no plain file here.
std::optional<QByteArray> readPlainFile(const OpenFolder& folder, const char* name, qint64 maxSize);

} // namespace Stemhaven
