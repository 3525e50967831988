#include "ui/table/KeyEventTableView.h"

#include "ui/table/ProjectsTableModel.h"

#include <QAccessible>
#include <QDebug>
#include <QHeaderView>
#include <QItemSelection>
#include <QKeyEvent>
#include <QPaintEvent>
#include <QPainter>
#include <QScopedValueRollback>
#include <QScrollBar>
#include <QStyleOptionFocusRect>

#include <algorithm>
#include <optional>
#include <utility>

namespace {

bool isEnter(const QKeyEvent* event) {
    return event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
}

/// The stars that a key of the window gives.
std::optional<int> ratingOf(const QKeyEvent* event) {
    constexpr int most = 5;
    const int stars = event->key() - Qt::Key_0;
    const bool isRating = event->modifiers() == Qt::ControlModifier && stars >= 0 && stars <= most;
    return isRating ? std::optional(stars) : std::nullopt;
}

/// Keys such as Delete come with a text, too, and the space bar selects.
bool beginsSearch(const QString& text) {
    return !text.isEmpty() && text.front().isPrint() && !text.front().isSpace();
}

} // namespace

void KeyEventTableView::keyboardSearch(const QString& search) {
    if (beginsSearch(search))
        emit textTyped(search);
}

void KeyEventTableView::selectAll() {
    // The base class selects nothing where the model says that it has no children.
    const QModelIndex last = model()->index(model()->rowCount() - 1, model()->columnCount() - 1);
    if (last.isValid())
        selectionModel()->select(
            {model()->index(0, 0), last}, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
}

bool KeyEventTableView::isHoldingKeys() const {
    const auto* projects = qobject_cast<ProjectsTableModel*>(model());
    return m_holdsKeys || !m_heldKeys.empty() || (projects && projects->hasUnannouncedRows());
}

void KeyEventTableView::releaseKeys() {
    m_holdsKeys = false;
    const auto keys = std::exchange(m_heldKeys, {});
    for (const auto& key : keys) {
        if (key->type() == QEvent::KeyPress)
            keyPressEvent(key.get());
        else
            keyReleaseEvent(key.get());
    }
}

bool KeyEventTableView::event(QEvent* event) {
    // Behind keys that wait, Return opens what they lead to, and not what is current now. So it is with those
    // that rate.
    if (event->type() == QEvent::ShortcutOverride && isHoldingKeys()) {
        const auto* key = static_cast<QKeyEvent*>(event);
        if (isEnter(key) || ratingOf(key)) {
            event->accept();
            return true;
        }
    }
    return QTableView::event(event);
}

QModelIndex KeyEventTableView::moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) {
    if (action == MoveHome || (action != MoveEnd && !currentIndex().isValid()))
        return indexInRow(0);
    if (action == MoveEnd)
        return indexInRow(model()->rowCount() - 1);
    return QTableView::moveCursor(action, modifiers);
}

void KeyEventTableView::keyPressEvent(QKeyEvent* event) {
    const auto rating = ratingOf(event);
    if (isHoldingKeys() && (rating || !beginsSearch(event->text()))) {
        m_heldKeys.emplace_back(event->clone());
        return;
    }
    if (rating) {
        emit ratingTyped(*rating);
        return;
    }
    if (isEnter(event) && !event->isAutoRepeat())
        m_enterIsDown = true;
    const QModelIndex current = currentIndex();
    QTableView::keyPressEvent(event);
    // The base class leaves the selection alone where the current row is the first or the last one already.
    const bool isAtEnd =
        event->modifiers() == Qt::NoModifier && (event->key() == Qt::Key_Home || event->key() == Qt::Key_End);
    if (isAtEnd && current.isValid() && current == currentIndex())
        selectionModel()->select(current, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
}

void KeyEventTableView::keyReleaseEvent(QKeyEvent* event) {
    if (!m_heldKeys.empty()) {
        m_heldKeys.emplace_back(event->clone());
        return;
    }
    switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        // The release of a key that closed a dialog, or was a shortcut, comes here too.
        if (!event->isAutoRepeat() && std::exchange(m_enterIsDown, false))
            emit enterPressed();
        break;
    case Qt::Key_Home:
        emit homePressed();
        break;
    case Qt::Key_Up:
    case Qt::Key_Down:
        emit selectionChangedByKeyboard(currentIndex());
        break;
    default:
        QTableView::keyReleaseEvent(event);
    }
}

void KeyEventTableView::focusInEvent(QFocusEvent* event) {
    const bool hadCurrent = currentIndex().isValid();
    QTableView::focusInEvent(event);
    // Otherwise the details would show a project that is not marked in the table.
    if (!hadCurrent && currentIndex().isValid())
        selectFirst();
}

void KeyEventTableView::focusOutEvent(QFocusEvent* event) {
    m_enterIsDown = false;
    QTableView::focusOutEvent(event);
}

QModelIndex KeyEventTableView::indexAt(const QPoint& position) const {
    return m_pinned.rect().contains(position) ? m_pinned.indexAt(position) : QTableView::indexAt(position);
}

QRect KeyEventTableView::visualRect(const QModelIndex& index) const {
    const bool isPinned = index.isValid() && index.column() == m_pinned.column() && !m_pinned.rect().isNull();
    return isPinned ? m_pinned.rect(index) : QTableView::visualRect(index);
}

void KeyEventTableView::scrollTo(const QModelIndex& index, ScrollHint hint) {
    const int position = horizontalScrollBar()->value();
    const bool isPinned = index.column() == m_pinned.column() && !m_pinned.rect().isNull();
    QTableView::scrollTo(index, hint);
    if (isPinned)
        horizontalScrollBar()->setValue(position);
    else if (index.isValid() && index.column() != m_pinned.column())
        horizontalScrollBar()->setValue(horizontalScrollBar()->value() - m_pinned.overlap(index.column()));
}

void KeyEventTableView::scrollContentsBy(int dx, int dy) {
    const bool wasPinned = !m_pinned.rect().isNull();
    QTableView::scrollContentsBy(dx, dy);
    if (dx == 0 || (!wasPinned && m_pinned.rect().isNull()))
        return;
    // The pixels of the names have moved with the others.
    viewport()->update();
    horizontalHeader()->viewport()->update();
}

void KeyEventTableView::paintEvent(QPaintEvent* event) {
    QTableView::paintEvent(event);
    if (!m_pinned.rect().isNull()) {
        QStyleOptionViewItem option;
        initViewItemOption(&option);
        QPainter painter(viewport());
        m_pinned.paint(painter, event->rect(), option);
    }
    const QModelIndex current = currentIndex();
    if (!hasFocus() || !current.isValid() || selectionModel()->isSelected(current))
        return;
    QStyleOptionFocusRect option;
    option.initFrom(this);
    option.rect = QRect(0, rowViewportPosition(current.row()), viewport()->width(), rowHeight(current.row()));
    QPainter painter(viewport());
    style()->drawPrimitive(QStyle::PE_FrameFocusRect, &option, &painter, this);
}

QModelIndex KeyEventTableView::indexInRow(int row) const {
    const auto* projects = qobject_cast<ProjectsTableModel*>(model());
    const QModelIndex current = currentIndex();
    const int first = projects ? projects->nameColumn() : 0;
    const bool hasColumn = current.isValid() && current.column() < model()->columnCount();
    return model()->index(row, hasColumn ? current.column() : first);
}

void KeyEventTableView::selectFirst() {
    clearSelection();
    selectionModel()->clearCurrentIndex();
    selectionModel()->setCurrentIndex(
        indexInRow(0), QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
}

void KeyEventTableView::moveCurrentSilently(
    const QModelIndex& index, QItemSelectionModel::SelectionFlags how) {
    const QScopedValueRollback silent(m_isSilent, true);
    selectionModel()->setCurrentIndex(index, how);
}

void KeyEventTableView::currentChanged(const QModelIndex& current, const QModelIndex& previous) {
    // To a screen reader the base class reports the focus at the cell, wherever the keyboard is.
    if (hasFocus() && !m_isSilent)
        QTableView::currentChanged(current, previous);
    else
        QAbstractItemView::currentChanged(current, previous); // NOLINT(bugprone-parent-virtual-call)
    // The base class paints two cells anew, the mark goes over whole rows.
    if (!selectionModel()->isSelected(current) || !selectionModel()->isSelected(previous))
        viewport()->update();
}

void KeyEventTableView::selectionChanged(const QItemSelection& selected, const QItemSelection& deselected) {
    try {
        const auto* projects = qobject_cast<ProjectsTableModel*>(model());
        if (!projects) {
            QTableView::selectionChanged(selected, deselected);
            return;
        }
        if (projects->isReloading())
            return;
        const std::lock_guard lock(*projects);
        if (knowsAccessibleCells(selected) && knowsAccessibleCells(deselected))
            QTableView::selectionChanged(selected, deselected);
        else
            qDebug() << "Expected row out of bounds for accesssibility table element!";
    } catch (const std::exception& error) {
        qCritical() << "Project selection exception: " << error.what();
        qCritical() << "Could not perform selectionChanged!";
    } catch (...) {
        qCritical() << "Project selection exception: Unknown";
        qCritical() << "Could not perform selectionChanged!";
    }
}

/// A screen reader's bridge numbers the cells through, headers first, and must not be asked for a cell beyond
/// the last.
bool KeyEventTableView::knowsAccessibleCells(const QItemSelection& selection) {
    if (!QAccessible::isActive() || selection.isEmpty())
        return true;
    const auto* table = QAccessible::queryAccessibleInterface(this);
    if (!table)
        return true;

    // The bridge counts a header whether it is hidden or not.
    const int headerRows = horizontalHeader() ? 1 : 0;
    const int headerColumns = verticalHeader() ? 1 : 0;
    const int columns = model()->columnCount() + headerColumns;
    const int cells = table->childCount();
    return std::all_of(selection.begin(), selection.end(), [&](const QItemSelectionRange& range) {
        // The last cell of a range has the highest number.
        return (range.bottom() + headerRows) * columns + range.right() + headerColumns < cells;
    });
}
