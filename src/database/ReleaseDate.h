#pragma once

#include <QDate>
#include <QtGlobal>

/// The day of a release as the catalogue stores it: a moment on that day in local time. It is read back by
/// the database's own conversion to local time.
namespace Stemhaven {

/// Seconds since the epoch, at the start of the day, which is not midnight where the clocks are changed then.
/// Of a day that the local calendar leaves out, the start of the next one.
qint64 storedReleaseDate(QDate day);

} // namespace Stemhaven
