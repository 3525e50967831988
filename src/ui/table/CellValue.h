#pragma once

#include "database/Field.h"

class QModelIndex;
class QVariant;

/// A value of the database as the table shows it. What does not convert is logged with the place of index;
/// then a date is nothing and every other value stays as it is.
QVariant cellValue(const QVariant& raw, Stemhaven::Format format, const QModelIndex& index);

/// Lets the painted values be read as text, which is what a screen reader asks for.
void registerCellTexts();
