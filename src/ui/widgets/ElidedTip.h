#pragma once

#include <QString>

class QAbstractItemView;
class QHelpEvent;
class QStyleOptionViewItem;

/// The text as a tool tip that wraps; what looks like markup in it is shown as it is.
QString wrappingTip(const QString& text);

/// Whether the text of an item does not fit into it. item is its option, filled in by its delegate.
bool isElided(const QAbstractItemView& view, const QStyleOptionViewItem& item);

/// Where a tool tip is asked for over an item of a view: shows the whole of its text when that does not fit.
/// item is the item's option, filled in by its delegate. Says whether there was something to show.
bool showElidedTip(const QHelpEvent& event, QAbstractItemView& view, const QStyleOptionViewItem& item);
