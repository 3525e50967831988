#pragma once

#include "Song.h"

#include <QDate>
#include <QStringList>

namespace DemoLibrary::UserEdits {

/// Statements that fill the genres, tags and collections of a new catalogue.
QStringList filters();

/// Statements for what the owner of the library has noted about a song: how good it is, how far it is, what
/// it lacks. Some songs have been left alone. Most releases are near today.
QStringList edits(const Song& song, long long projectId, QDate today);

} // namespace DemoLibrary::UserEdits
