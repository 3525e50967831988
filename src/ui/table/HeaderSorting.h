#pragma once

#include <QObject>
#include <QSettings>

class ProjectsTableModel;
class QTableView;

namespace Stemhaven {
class QueryBuilder;
}

/// Sorts the projects by the column whose header is clicked, and remembers it. A third click takes the sort
/// away.
class HeaderSorting : public QObject {
    Q_OBJECT

public:
    /// Starts with the remembered sort. All outlive this object; model is the table's.
    HeaderSorting(
        QTableView& table, const ProjectsTableModel& model, Stemhaven::QueryBuilder& builder,
        QObject* parent);

    /// The builder shows other columns, or in another order, from now on. A column that is hidden sorts
    /// nothing any more.
    void followFields();
    /// The table has the columns of the moment: marks the one that the builder sorts by.
    void followColumns();
    /// Takes the remembered sort again, and none where there is none. The builder shows the columns already;
    /// the table need not.
    void restoreAnew();

signals:
    void changed();

private:
    void restore();
    void projectsHeaderSortChanged(int column, Qt::SortOrder order);
    void store(int column, Qt::SortOrder order);

    QTableView& m_table;
    const ProjectsTableModel& m_model;
    Stemhaven::QueryBuilder& m_builder;
    QSettings m_settings;
};
