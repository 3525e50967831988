#pragma once

#include "database/FilterType.h"

#include <QList>
#include <QTreeView>

class FolderTreeItemModel;

/// The sidebar's tree. Keeps what is expanded, current and in sight over the model's reloads. Keys and
/// clicks become wishes; only moving and expanding are done here. Nothing is ever selected by the user: what
/// is selected is set from outside.
class FilterTreeView : public QTreeView {
    Q_OBJECT

public:
    /// model outlives the view.
    explicit FilterTreeView(FolderTreeItemModel& model, QWidget* parent = nullptr);

signals:
    /// By a click or Return on an entry, or on a group that has none.
    void chosen(const QModelIndex& index);
    void removalWished();
    void renamingWished();
    void menuWished(const QPoint& globalPosition);
    /// After a reload of the model, with everything in its place.
    void restored();

protected:
    bool event(QEvent* event) override;
    void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;
    void changeEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void
    drawRow(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    void drawBranches(QPainter* painter, const QRect& rect, const QModelIndex& index) const override;

private:
    struct Place {
        FilterType type = FilterType::ALL;
        qint64 id = -1;
    };

    static Place placeOf(const QModelIndex& index);
    QModelIndex indexOf(const Place& place) const;
    QModelIndex restoredCurrent() const;
    void choose(const QModelIndex& index);
    void save();
    void restore();
    void leaveCollapsed(const QModelIndex& group);
    void applyColors();

    FolderTreeItemModel& m_model;
    bool m_isDoubleClick = false;
    bool m_isSilent = false; ///< the current item is the one that it was

    QList<FilterType> m_expanded;
    Place m_current;
    int m_currentRow = 0;
    Place m_topmost;
    int m_topmostY = 0;
    int m_scrollPosition = 0;
};
