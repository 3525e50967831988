#pragma once

#include <QHeaderView>

/// The projects table's header: every title stands as the values below it do.
class TableHeader : public QHeaderView {
    Q_OBJECT

public:
    explicit TableHeader(QWidget* parent = nullptr);

protected:
    void paintSection(QPainter* painter, const QRect& rect, int logicalIndex) const override;
    void initStyleOptionForIndex(QStyleOptionHeader* option, int logicalIndex) const override;
};
