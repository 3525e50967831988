#include "ui/table/ProjectsTableModel.h"

#include "app/errors/DbException.h"
#include "database/QueryBuilder.h"
#include "database/SimpleTask.h"
#include "database/SqlQueryModelTask.h"
#include "database/TaskManager.h"
#include "ui/NotFound.h"
#include "ui/table/CellValue.h"

#include <QAccessible>
#include <QDebug>
#include <QPointer>
#include <QSqlQueryModel>

#include <algorithm>
#include <utility>

std::recursive_mutex projectsModelMutex; // NOLINT(cppcoreguidelines-avoid-non-const-global-variables)

namespace {

/// Of a header in the query's model: the column's Format.
constexpr int FormatRole = Qt::UserRole;

/// Of the query's model: the names of its fields.
constexpr const char* fieldsProperty = "fields";

constexpr Qt::ItemFlags rowFlags = Qt::ItemIsSelectable | Qt::ItemIsEnabled | Qt::ItemNeverHasChildren;

/// Frees a slot together with the model in it.
void freeSlot(QSqlQueryModel** slot) {
    delete *slot;
    delete slot;
}

/// What a failed reload says of itself, by kind.
void logFailure(const Stemhaven::Exception& error) {
    const char* const headline = "Could not reload projects table!";
    if (const auto* databaseError = dynamic_cast<const Stemhaven::DbException*>(&error))
        qCritical() << headline << *databaseError;
    else
        qCritical() << headline << error;
}

} // namespace

ProjectsTableModel::ProjectsTableModel(
    Stemhaven::TaskManager& tasks, Stemhaven::QueryBuilder* builder, QObject* parent)
    : QAbstractItemModel(parent),
      m_tasks(tasks),
      m_builder(builder),
      m_queryModel(new QSqlQueryModel*(new QSqlQueryModel), freeSlot),
      m_announcedModel(*m_queryModel) {
    registerCellTexts();
}

ProjectsTableModel::~ProjectsTableModel() {
    // Behind the reloads that are under way, so that the worker frees what they leave. Where the task is
    // never run, its end releases the slot.
    m_tasks.addTask(std::make_shared<Stemhaven::SimpleTask>(
        [slot = std::move(m_queryModel)] { delete std::exchange(*slot, nullptr); }));
}

void ProjectsTableModel::reload() {
    {
        const std::lock_guard lock(projectsModelMutex);
        ++m_pendingReloads;
    }
    auto task = std::make_shared<Stemhaven::SqlQueryModelTask>(
        m_builder->select(), projectsModelMutex, m_queryModel, m_tasks.mainDatabase());
    // Rows are shown with the columns that they were read with, whatever the builder's are by then.
    const QList<Stemhaven::Format> formats = m_builder->visibleFieldFormats();
    QStringList fields;
    for (int column = 0; column < formats.size(); ++column)
        fields.append(m_builder->visibleFieldAt(static_cast<unsigned short>(column)).name);
    task->setPreparation([formats, fields](QSqlQueryModel& rows) {
        rows.setProperty(fieldsProperty, fields);
        for (int column = 0; column < formats.size(); ++column)
            rows.setHeaderData(
                column, Qt::Horizontal, QVariant::fromValue(static_cast<uint>(formats[column])), FormatRole);
    });
    // The callbacks may outlive this model.
    task->setSuccessCallback([model = QPointer(this)](const auto& /*task*/) {
        if (model)
            model->finishReload();
    });
    task->setErrorCallback([model = QPointer(this)](const auto& /*task*/, const auto& error) {
        if (model)
            model->forgetReload();
        logFailure(error);
        if (model)
            emit model->reloadFailed();
    });
    m_tasks.addTask(std::move(task));
}

void ProjectsTableModel::finishReload() {
    QAccessibleTableModelChangeEvent event(this, QAccessibleTableModelChangeEvent::ModelReset);
    QAccessible::updateAccessibility(&event);
    {
        const std::lock_guard lock(projectsModelMutex);
        m_announcedModel = *m_queryModel;
        m_fields = (*m_queryModel)->property(fieldsProperty).toStringList();
        m_columnCount = (*m_queryModel)->columnCount() - 1;
    }
    emit layoutChanged();
    forgetReload();
    emit reloaded();
}

void ProjectsTableModel::forgetReload() {
    const std::lock_guard lock(projectsModelMutex);
    --m_pendingReloads;
}

bool ProjectsTableModel::isReloading() const {
    const std::lock_guard lock(projectsModelMutex);
    return m_pendingReloads > 0;
}

bool ProjectsTableModel::hasUnannouncedRows() const {
    const std::lock_guard lock(projectsModelMutex);
    return *m_queryModel != m_announcedModel;
}

QModelIndex ProjectsTableModel::index(int row, int column, const QModelIndex& parent) const {
    const std::lock_guard lock(projectsModelMutex);
    // The hidden column of the ids has indexes too.
    if (parent.isValid() || row < 0 || row >= rowCount() || column < 0 || column > columnCount())
        return {};
    return createIndex(row, column);
}

QModelIndex ProjectsTableModel::parent(const QModelIndex& /*child*/) const {
    return {};
}

int ProjectsTableModel::rowCount(const QModelIndex& parent) const {
    const std::lock_guard lock(projectsModelMutex);
    return parent.isValid() ? 0 : (*m_queryModel)->rowCount();
}

int ProjectsTableModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : m_columnCount;
}

/// Where the rows have what the views take for this column, who learn later of rows with other columns. -1
/// where they do not have it.
int ProjectsTableModel::columnInRows(int column) const {
    const QSqlQueryModel& rows = **m_queryModel;
    if (&rows == m_announcedModel)
        return column;
    if (column == m_columnCount)
        return rows.columnCount() - 1;
    return static_cast<int>(rows.property(fieldsProperty).toStringList().indexOf(fieldAt(column)));
}

bool ProjectsTableModel::hasChildren(const QModelIndex& /*parent*/) const {
    return false;
}

Qt::ItemFlags ProjectsTableModel::flags(const QModelIndex& /*index*/) const {
    return rowFlags;
}

QVariant ProjectsTableModel::headerData(int section, Qt::Orientation orientation, int role) const {
    const std::lock_guard lock(projectsModelMutex);
    // A screen reader calls a row by its project, not by its number.
    if (orientation == Qt::Vertical && role == Qt::AccessibleTextRole)
        return data(index(section, nameColumn()), role);
    const int place = orientation == Qt::Horizontal ? columnInRows(section) : section;
    return (*m_queryModel)->headerData(place, orientation, role);
}

int ProjectsTableModel::nameColumn() const {
    return std::max(0, columnOf(QStringLiteral("name")));
}

QVariant ProjectsTableModel::data(const QModelIndex& index, int role) const {
    const std::lock_guard lock(projectsModelMutex);
    const QSqlQueryModel& rows = **m_queryModel;
    const int column = columnInRows(index.column());
    if (index.row() < 0 || index.row() >= rows.rowCount() || column < 0 || column >= rows.columnCount())
        return {};
    // For what a screen reader asks the query's model has nothing, which would be read as no stars, or "No".
    switch (role) {
    case NotFoundRole:
        return isMissing(index.row());
    case Qt::AccessibleTextRole:
        return accessibleText(index);
    case Qt::AccessibleDescriptionRole:
        return isMissing(index.row()) ? NotFound::text() : QString();
    default:
        break;
    }
    const auto format =
        static_cast<Stemhaven::Format>(rows.headerData(column, Qt::Horizontal, FormatRole).toUInt());
    return cellValue(rows.data(rows.index(index.row(), column), role), format, index);
}

/// The name says it, too, as few listen to descriptions.
QVariant ProjectsTableModel::accessibleText(const QModelIndex& index) const {
    const QString text = data(index).toString();
    return index.column() == nameColumn() && isMissing(index.row())
        ? text + QStringLiteral(", ") + NotFound::text()
        : text;
}

void ProjectsTableModel::setMissingProjects(const QSet<qint64>& projects) {
    m_missing = projects;
    const QModelIndex first = index(0, 0);
    if (first.isValid())
        emit dataChanged(first, index(rowCount() - 1, columnCount() - 1));
}

bool ProjectsTableModel::isMissing(int row) const {
    return !m_missing.isEmpty() && m_missing.contains(projectIDForRow(row));
}

int ProjectsTableModel::rowForProjectID(qint64 id) const {
    return id < 0 ? -1 : static_cast<int>(projectIDs().indexOf(id));
}

QList<qint64> ProjectsTableModel::projectIDs() const {
    const std::lock_guard lock(projectsModelMutex);
    // Past data(): every row is looked at after each reload, and the ids need no conversion.
    const QSqlQueryModel& rows = **m_queryModel;
    const int count = rows.rowCount();
    const int idColumn = rows.columnCount() - 1;
    QList<qint64> ids;
    ids.reserve(count);
    for (int row = 0; row < count; ++row) {
        bool ok = false;
        const qint64 id = rows.data(rows.index(row, idColumn)).toLongLong(&ok);
        ids.append(ok ? id : -1);
    }
    return ids;
}

qint64 ProjectsTableModel::projectIDForRow(int row) const {
    const QVariant value = data(index(row, columnCount()));
    bool ok = false;
    const qint64 id = value.toLongLong(&ok);
    return ok && !value.isNull() && id >= 0 ? id : -1;
}
