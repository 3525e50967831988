#pragma once

#include <QString>

namespace Stemhaven {

/// The versions that a main database may say it is of.
enum class DatabaseVersion { Unknown = 0, V1_0 = 1, V1_1 = 2, V1_2 = 3, V1_3 = 4 };

/// The version that this program writes; not the highest that it knows by name.
inline constexpr DatabaseVersion currentDatabaseVersion = DatabaseVersion::V1_2;

/// Unknown for any text that is not exactly a version's.
DatabaseVersion DatabaseVersionFromString(const QString& text);
QString DatabaseVersionToString(DatabaseVersion version);

} // namespace Stemhaven
