#pragma once

#include "database/Field.h"

#include <QList>

namespace Stemhaven {

/// Fields that the projects table can show beside those of the builder's own list: their values stand in
/// other tables, or are a part of another column. Hidden, without an order.
QList<Field> derivedFields();

} // namespace Stemhaven
