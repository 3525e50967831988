#pragma once

#include <QTableView>

/// A table view that reports the keys that mean something to its window, and looks away while its model
/// reloads.
class KeyEventTableView : public QTableView {
    Q_OBJECT

public:
    using QTableView::QTableView;

    /// Nothing is searched, which would read every row; the text is reported instead.
    void keyboardSearch(const QString& search) override;
    void selectAll() override;

signals:
    void enterPressed();
    void homePressed();
    void selectionChangedByKeyboard(const QModelIndex& index);
    void textTyped(const QString& text);

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;
    /// Selects the row that becomes the current one by it.
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    /// Marks the current row where it is not selected, as after Ctrl and an arrow key.
    void paintEvent(QPaintEvent* event) override;
    void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;
    void selectionChanged(const QItemSelection& selected, const QItemSelection& deselected) override;

private:
    bool knowsAccessibleCells(const QItemSelection& selection);

    bool m_enterIsDown = false;
};
