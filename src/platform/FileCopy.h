#pragma once

#include <QByteArray>
#include <QString>

/// Files that are on the disk, whole, once a function has returned true. Any thread.
namespace Stemhaven {

/// Copies a plain file to a path where nothing is, for its user alone to read. False, with nothing left at
/// that path but what was there before, where that cannot be done.
bool copyToNewFile(const QString& from, const QString& to);

/// Puts a file with these contents in the place of what is at path, in one step: a reader sees the old file
/// or the whole new one.
bool replaceFile(const QString& path, const QByteArray& contents);

/// Waits until the disk has a file, or the names in a folder, as they are now.
bool flushToDisk(const QString& path);

} // namespace Stemhaven
