#pragma once

#include <QObject>
#include <QSettings>

class QTableView;

namespace Stemhaven {
class QueryBuilder;
}

/// Sorts the projects by the column whose header is clicked, and remembers it. A third click takes the sort
/// away.
class HeaderSorting : public QObject {
    Q_OBJECT

public:
    /// Starts with the remembered sort. Both outlive this object.
    HeaderSorting(QTableView& table, Stemhaven::QueryBuilder& builder, QObject* parent);

    /// The builder has no sort any more. Emits and stores nothing.
    void showUnsorted();

signals:
    void changed();

private:
    void restore();
    void projectsHeaderSortChanged(int column, Qt::SortOrder order);
    void store(const QString& name, int column, Qt::SortOrder order);

    QTableView& m_table;
    Stemhaven::QueryBuilder& m_builder;
    QSettings m_settings;
};
