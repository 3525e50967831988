#pragma once

#include <QWidget>

class FieldsList;

namespace Stemhaven {
class QueryBuilder;
}

/// Which columns the table shows, and in which order.
class ColumnsPage : public QWidget {
    Q_OBJECT

public:
    /// builder outlives the page.
    explicit ColumnsPage(Stemhaven::QueryBuilder& builder, QWidget* parent = nullptr);

    /// The columns have been changed elsewhere.
    void showFields();

signals:
    /// The builder and the settings have other columns, and no sort.
    void columnsChanged();

private:
    void store();

    Stemhaven::QueryBuilder& m_builder;
    FieldsList* m_list;
};
