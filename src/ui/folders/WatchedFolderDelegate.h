#pragma once

#include <QStyledItemDelegate>

/// Paints a watched folder in two lines: its path, and below it how it is looked after and how many projects
/// it has.
class WatchedFolderDelegate : public QStyledItemDelegate {
    Q_OBJECT

public:
    explicit WatchedFolderDelegate(QObject* parent);

    void
    paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
};
