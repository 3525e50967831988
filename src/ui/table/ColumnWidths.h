#pragma once

#include <QObject>

class QTableView;

namespace Stemhaven {
class QueryBuilder;
}

/// Makes the table's columns as wide as what they show, judged by a sample of the rows, and gives the room
/// that is left to the names.
class ColumnWidths : public QObject {
    Q_OBJECT

public:
    /// Both outlive this object.
    ColumnWidths(QTableView& table, const Stemhaven::QueryBuilder& builder, QObject* parent);

    void fit();

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void stretchNames();

    QTableView& m_table;
    const Stemhaven::QueryBuilder& m_builder;
    int m_nameColumn = -1;
};
