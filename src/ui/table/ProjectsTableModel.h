#pragma once

#include <QAbstractItemModel>
#include <QList>
#include <QSet>
#include <QStringList>

#include <memory>
#include <mutex>

class QSqlQueryModel;

namespace Stemhaven {
class QueryBuilder;
class TaskManager;
} // namespace Stemhaven

/// Held for every look at the rows and for their exchange on the worker. One for all models.
// NOLINTNEXTLINE(cppcoreguidelines-avoid-non-const-global-variables)
extern std::recursive_mutex projectsModelMutex;

/// The projects as the table shows them.
///
/// The rows are a query's result, made on the worker and exchanged there as a whole; until layoutChanged() is
/// emitted a view may ask for rows that are gone, and gets nothing. Used on the GUI thread. Column i is the
/// i-th of the fields that the builder showed when the rows that the views know of were asked for; the last
/// column of the query, the project's id, comes after them and is hidden.
class ProjectsTableModel : public QAbstractItemModel {
    Q_OBJECT

public:
    /// Of every cell: whether the project's bundle is not there.
    static constexpr int NotFoundRole = Qt::UserRole + 1;

    /// tasks and builder outlive the model. Loads nothing yet: until the first reload there are -1 columns.
    ProjectsTableModel(
        Stemhaven::TaskManager& tasks, Stemhaven::QueryBuilder* builder, QObject* parent = nullptr);
    /// Reloads that are under way come to nothing; the rows are freed on the worker.
    ~ProjectsTableModel() override;
    Q_DISABLE_COPY(ProjectsTableModel)

    /// Asks for the builder's statement of this moment to be run. Several may be under way.
    void reload();
    bool isReloading() const;
    /// Whether the rows have been exchanged and the views not been told yet.
    bool hasUnannouncedRows() const;

    /// Hold the rows as they are for several reads in a row.
    void lock() const { projectsModelMutex.lock(); }

    void unlock() const { projectsModelMutex.unlock(); }

    QModelIndex index(int row, int column, const QModelIndex& parent = {}) const override;
    QModelIndex parent(const QModelIndex& child) const override;
    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    bool hasChildren(const QModelIndex& parent = {}) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    /// The value as the format of its column wants it, whatever the role, but for NotFoundRole and what a
    /// screen reader asks for.
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;

    /// The name of the field in a column; empty where there is none.
    QString fieldAt(int column) const { return m_fields.value(column); }

    /// -1 where the field is not shown.
    int columnOf(const QString& field) const { return static_cast<int>(m_fields.indexOf(field)); }

    /// By the ids of their records, whether they have rows or not.
    void setMissingProjects(const QSet<qint64>& projects);

    /// 0 where the names are not shown.
    int nameColumn() const;

    /// The first row of the project, -1 when it is not in the result.
    int rowForProjectID(qint64 id) const;
    /// -1 for a row that has none.
    qint64 projectIDForRow(int row) const;
    /// Of all rows, in their order; -1 for a row that has none.
    QList<qint64> projectIDs() const;

signals:
    /// After layoutChanged(), when the reload is no longer counted as under way.
    void reloaded();
    void reloadFailed();

private:
    bool isMissing(int row) const;
    QVariant accessibleText(const QModelIndex& index) const;
    void finishReload();
    void forgetReload();
    int columnInRows(int column) const;

    Stemhaven::TaskManager& m_tasks;
    Stemhaven::QueryBuilder* m_builder;
    std::shared_ptr<QSqlQueryModel*> m_queryModel;
    const QSqlQueryModel* m_announcedModel;
    QStringList m_fields; ///< of the columns, as the views know them
    int m_columnCount = -1;

    QSet<qint64> m_missing;
    int m_pendingReloads = 0;
};
