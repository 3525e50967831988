#pragma once

class QAbstractItemView;
class QHelpEvent;
class QStyleOptionViewItem;

/// Where a tool tip is asked for over an item of a view: shows the whole of its text when that does not fit.
/// item is the item's option, filled in by its delegate. Says whether there was something to show.
bool showElidedTip(const QHelpEvent& event, QAbstractItemView& view, const QStyleOptionViewItem& item);
