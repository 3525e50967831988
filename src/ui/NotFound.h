#pragma once

#include <QString>

/// What is said, wherever it is said, of projects whose bundles are not there.
namespace NotFound {

QString text();
/// Of several selected projects; text() where all of them are missing.
QString text(int missing, int selected);
/// What the user can do.
QString remedy(int missing);
/// Why nothing can be done with the bundle.
QString reason();

} // namespace NotFound
