#pragma once

#include "database/Field.h"

#include <QList>

namespace Stemhaven {
class QueryBuilder;
}

/// The order of the table's columns and which of them are shown, as the user chose them, in a setting of
/// their own: the builder does not take back all that it stores.
namespace ColumnLayout {

/// Every choice of the user goes here, beside QueryBuilder::saveSettings(). The fields are in their order.
void save(const QList<Stemhaven::Field>& fields);

/// Adds the derived fields to those of the builder, gives them the stored order, and shows and hides them.
/// Fields that the setting does not name stay as they are, behind the others. Where nothing is stored, or it
/// would leave no column to see, those that are looked at most come first, unless the builder has taken an
/// order from its own settings.
void restore(Stemhaven::QueryBuilder& builder);

} // namespace ColumnLayout
