#pragma once

class QPainter;
class QStyleOption;
class QStyleOptionViewItem;
class QTreeView;
class QWidget;

/// The rows of lists and trees: the one under the mouse and the selected ones are rounded. Tables, whose rows
/// go from edge to edge, are left to the style below.
namespace ItemViewPainting {

/// A row of a tree from edge to edge, where option is its part before the item.
void drawTreeRow(const QStyleOptionViewItem& option, const QTreeView& tree, QPainter* painter);
/// The chevron of a row that can be opened. No lines lead to it.
void drawBranch(const QStyleOption& option, QPainter* painter);
void drawListItem(const QStyleOptionViewItem& option, QPainter* painter);
/// The current row, where it is not selected.
void drawRowFocus(const QStyleOption& option, const QWidget* view, QPainter* painter);

} // namespace ItemViewPainting
