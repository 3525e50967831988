#pragma once

#include "database/Field.h"

#include <QList>
#include <QObject>
#include <QStringList>

class KeyEventTableView;
class ProjectsTableModel;

namespace Stemhaven {
class QueryBuilder;
}

/// Which columns the table shows, and in which order: the user drags their titles, or moves, shows and hides
/// them by a menu. Each change is stored at once.
class TableColumns : public QObject {
    Q_OBJECT

public:
    /// Gives the builder the columns as they were at the last end. All outlive this object; model is the
    /// table's.
    TableColumns(
        KeyEventTableView& table, const ProjectsTableModel& model, Stemhaven::QueryBuilder& builder,
        QObject* parent);

    /// Gives the builder the stored columns again.
    void restore();

    /// After each reload: places the columns in the builder's order, whatever order they have in the rows,
    /// and the current cell stays in its column.
    void arrange();

    /// Moves the column of the current cell by so many places, as far as there are columns.
    void moveCurrent(int step);

    /// All that can be shown, in their order.
    QList<Stemhaven::Field> fields() const;
    /// Whether the field can be hidden; the last column stays.
    bool canHide(const Stemhaven::Field& field) const;
    void show(const QString& field, bool shown);

signals:
    /// The builder has other columns, and the table wants rows with them.
    void changed();

private:
    void takeOrderFromHeader();
    void apply(QList<Stemhaven::Field> fields);

    KeyEventTableView& m_table;
    const ProjectsTableModel& m_model;
    Stemhaven::QueryBuilder& m_builder;
    QStringList m_arranged; ///< the fields of the columns at the last arranging
    bool m_isArranging = false;
};
