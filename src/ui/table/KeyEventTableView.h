#pragma once

#include "ui/table/PinnedNames.h"

#include <QKeyEvent>
#include <QTableView>

#include <memory>
#include <vector>

/// A table view that reports the keys that mean something to its window, and looks away while its model
/// reloads.
class KeyEventTableView : public QTableView {
    Q_OBJECT

public:
    using QTableView::QTableView;

    /// The names stay in sight when the table is scrolled sideways.
    const PinnedNames& pinnedNames() const { return m_pinned; }

    QModelIndex indexAt(const QPoint& position) const override;
    QRect visualRect(const QModelIndex& index) const override;
    /// Not sideways for a name that is pinned; any other cell comes out from below the names.
    void scrollTo(const QModelIndex& index, ScrollHint hint = EnsureVisible) override;

    /// Nothing is searched, which would read every row; the text is reported instead.
    void keyboardSearch(const QString& search) override;
    void selectAll() override;

    /// The current column of a row, which is the names' where there is none: a screen reader begins with it.
    QModelIndex indexInRow(int row) const;
    void selectFirst();

    /// Moves it without telling a screen reader: it stands on what it stood on before.
    void moveCurrentSilently(const QModelIndex& index, QItemSelectionModel::SelectionFlags how);

    /// Keys that move or open wait for releaseKeys(), as they do by themselves while the model has rows that
    /// the user has not seen yet.
    void holdKeys() { m_holdsKeys = true; }

    /// Handles the keys that wait, in their order.
    void releaseKeys();

signals:
    void enterPressed();
    void homePressed();
    void selectionChangedByKeyboard(const QModelIndex& index);
    void textTyped(const QString& text);
    /// Where the window has not taken the key, as behind keys that wait.
    void ratingTyped(int stars);

protected:
    bool event(QEvent* event) override;
    /// Home and End go to the first and the last row.
    QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) override;
    void keyPressEvent(QKeyEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;
    /// Selects the row that becomes the current one by it.
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    /// Marks the current row where it is not selected, as after Ctrl and an arrow key.
    void paintEvent(QPaintEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;
    void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;
    void selectionChanged(const QItemSelection& selected, const QItemSelection& deselected) override;

private:
    bool knowsAccessibleCells(const QItemSelection& selection);
    bool isHoldingKeys() const;

    PinnedNames m_pinned{*this};
    bool m_enterIsDown = false;
    bool m_holdsKeys = false;
    bool m_isSilent = false;
    std::vector<std::unique_ptr<QKeyEvent>> m_heldKeys;
};
