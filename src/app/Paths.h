#pragma once

#include <QString>

namespace Stemhaven {

/// The paths of the two database files. Fixed before main runs from what the environment says then, and never computed
/// again.
const QString& mainDatabasePath();
const QString& rootPathsDatabasePath();

} // namespace Stemhaven
