#pragma once

#include <QStyledItemDelegate>

/// Paints the cells of the projects table: stars, bars and dots itself, everything else as text.
class StarDelegate : public QStyledItemDelegate {
    Q_OBJECT

public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void
    paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;

    /// Numbers with at most two decimals.
    QString displayText(const QVariant& value, const QLocale& locale) const override;

    /// The whole of a text that does not fit, the number that a bar stands for, and all decimals of one.
    bool helpEvent(
        QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
        const QModelIndex& index) override;

    QWidget* createEditor(
        QWidget* parent, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    void setEditorData(QWidget* editor, const QModelIndex& index) const override;
    void setModelData(QWidget* editor, QAbstractItemModel* model, const QModelIndex& index) const override;

public slots:
    /// For an editor's signal: the sender is the editor.
    void commitAndCloseEditor();

protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override;
};
