#pragma once

#include <QHash>
#include <QObject>
#include <QSettings>

class ProjectsTableModel;
class QTableView;

/// Makes the table's columns as wide as what they show, judged by a sample of the rows, and gives the room
/// that is left to the names. A column that the user has made wider or narrower stays so, at the next start
/// too, until a double click on its edge.
class ColumnWidths : public QObject {
    Q_OBJECT

public:
    /// Both outlive this object.
    ColumnWidths(QTableView& table, const ProjectsTableModel& model, QObject* parent);

    void fit();
    /// Takes the stored widths again, for the next fit().
    void restore();

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void fitContents(int column);
    void stretchNames();
    void remember(int column, int width);
    void forget(int column);

    QTableView& m_table;
    const ProjectsTableModel& m_model;
    QSettings m_settings;
    QHash<QString, int> m_chosen; ///< the widths that the user gave, by the field's name
    int m_nameColumn = -1;
    bool m_isFitting = false;
};
