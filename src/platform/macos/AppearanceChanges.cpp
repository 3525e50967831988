#include "platform/AppearanceChanges.h"

namespace Stemhaven {

// Qt changes the application's palette with the system's.
AppearanceChanges::AppearanceChanges(QObject* parent) : QObject(parent) {}

} // namespace Stemhaven
