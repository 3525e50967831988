#pragma once

#include <QStyledItemDelegate>

/// Draws the sidebar's rows, each on one line. The row's ground is the view's affair.
class FilterDelegate : public QStyledItemDelegate {
    Q_OBJECT

public:
    explicit FilterDelegate(QObject* parent);

    QString displayText(const QVariant& value, const QLocale& locale) const override;
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    /// The whole of a name that does not fit.
    bool helpEvent(
        QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
        const QModelIndex& index) override;

protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override;
};
