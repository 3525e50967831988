#include "ui/sidebar/FolderTreeItemModel.h"

#include "app/errors/DbException.h"
#include "database/FilterStatements.h"
#include "database/QueryTask.h"
#include "database/SimpleTask.h"
#include "database/TaskManager.h"
#include "ui/widgets/Icons.h"

#include <QDebug>
#include <QIcon>
#include <QPointer>
#include <QSqlQuery>

#include <algorithm>
#include <iterator>
#include <utility>

namespace FilterStatements = Stemhaven::FilterStatements;

namespace {

constexpr quintptr noGroup = 0;

std::size_t groupIndex(FilterType type) {
    return static_cast<std::size_t>(type);
}

/// What an index of an entry carries: its group, counted from one.
quintptr groupId(int groupRow) {
    return static_cast<quintptr>(groupRow) + 1;
}

bool isEntry(const QModelIndex& index) {
    return index.isValid() && index.internalId() != noGroup;
}

QString groupLabel(FilterType type) {
    switch (type) {
    case FilterType::ALL:
        return FolderTreeItemModel::tr("All");
    case FilterType::LAST_SEARCH:
        return FolderTreeItemModel::tr("Last Search");
    case FilterType::SAVED_SEARCH:
        return FolderTreeItemModel::tr("Saved Searches");
    case FilterType::COLLECTIONS:
        return FolderTreeItemModel::tr("Collections");
    case FilterType::GENRES:
        return FolderTreeItemModel::tr("Genres");
    case FilterType::TAGS:
        return FolderTreeItemModel::tr("Tags");
    case FilterType::ARRANGEMENT_STATUS:
        return FolderTreeItemModel::tr("Arrangement Status");
    case FilterType::LYRICS_STATUS:
        return FolderTreeItemModel::tr("Lyrics Status");
    case FilterType::RECORDING_STATUS:
        return FolderTreeItemModel::tr("Recording Status");
    case FilterType::MIX_MASTER_STATUS:
        return FolderTreeItemModel::tr("Mix/Master Status");
    }
    return {};
}

QIcon groupIcon(FilterType type) {
    constexpr std::array<Glyph, allFilterTypes.size()> glyphs{
        Glyph::AllProjects,       Glyph::LastSearch,   Glyph::SavedSearch,
        Glyph::Collection,        Glyph::Genre,        Glyph::Tag,
        Glyph::ArrangementStatus, Glyph::LyricsStatus, Glyph::RecordingStatus,
        Glyph::MixMasterStatus};
    return icon(glyphs.at(groupIndex(type)));
}

QVariant groupData(FilterType type, int role) {
    switch (role) {
    case Qt::DisplayRole:
        return groupLabel(type);
    case Qt::DecorationRole:
        return groupIcon(type);
    case FolderTreeItemModel::FilterTypeRole:
        return static_cast<int>(type);
    default:
        return {};
    }
}

qint64 idOrWarning(const QModelIndex& index, const char* warning) {
    bool ok = false;
    const qint64 id = index.data(FolderTreeItemModel::EntryIdRole).toLongLong(&ok);
    if (ok)
        return id;
    qWarning().noquote() << warning;
    return -1;
}

} // namespace

FolderTreeItemModel::FolderTreeItemModel(Stemhaven::TaskManager& tasks, QObject* parent)
    : QAbstractItemModel(parent),
      m_tasks(tasks) {}

void FolderTreeItemModel::reload() {
    if (m_isReloading) {
        m_reloadAgain = true;
        return;
    }
    m_isReloading = true;
    const auto groups = std::make_shared<Groups>(m_groups);
    for (const FilterType type : allFilterTypes) {
        if (!filterTypeTable(type).isEmpty())
            read(type, groups);
    }
    // The worker comes to it when all groups have been read, well or not.
    auto end = std::make_shared<Stemhaven::SimpleTask>([] {});
    end->setSuccessCallback([model = QPointer(this), groups](const auto& /*task*/) {
        if (model)
            model->finishReload(*groups);
    });
    m_tasks.addTask(std::move(end));
}

void FolderTreeItemModel::read(FilterType type, const std::shared_ptr<Groups>& groups) {
    auto task =
        std::make_shared<Stemhaven::QueryTask>(FilterStatements::selectEntries(type), m_tasks.mainDatabase());
    task->setQueryCallback([type, groups](const auto& /*task*/, int rowCount, QSqlQuery* query) {
        auto& entries = groups->at(groupIndex(type));
        entries.clear();
        entries.reserve(rowCount);
        while (query->next())
            entries.append({query->value(0).toString(), query->value(1).toLongLong()});
    });
    task->setSqlErrorCallback([type](const auto& /*task*/, const Stemhaven::DbException& error) {
        qCritical() << "Could not reload the sidebar's entries of" << type << error;
    });
    m_tasks.addTask(std::move(task));
}

void FolderTreeItemModel::finishReload(const Groups& groups) {
    // Most reloads find what is there, and then the views have nothing to do.
    if (groups != m_groups) {
        beginResetModel();
        m_groups = groups;
        endResetModel();
    }
    m_isReloading = false;
    if (std::exchange(m_reloadAgain, false))
        reload();
    emit changed();
}

QModelIndex FolderTreeItemModel::index(int row, int column, const QModelIndex& parent) const {
    if (row < 0 || row >= rowCount(parent) || column != 0)
        return {};
    return createIndex(row, column, parent.isValid() ? groupId(parent.row()) : noGroup);
}

QModelIndex FolderTreeItemModel::parent(const QModelIndex& child) const {
    return isEntry(child) ? createIndex(static_cast<int>(child.internalId()) - 1, 0, noGroup) : QModelIndex();
}

int FolderTreeItemModel::rowCount(const QModelIndex& parent) const {
    if (!parent.isValid())
        return static_cast<int>(allFilterTypes.size());
    return isEntry(parent) ? 0 : static_cast<int>(getEntries(typeOf(parent)).size());
}

int FolderTreeItemModel::columnCount(const QModelIndex& /*parent*/) const {
    return 1;
}

bool FolderTreeItemModel::hasChildren(const QModelIndex& parent) const {
    return rowCount(parent) > 0;
}

Qt::ItemFlags FolderTreeItemModel::flags(const QModelIndex& index) const {
    if (!index.isValid())
        return Qt::NoItemFlags;
    const Qt::ItemFlags flags = Qt::ItemIsSelectable | Qt::ItemIsEnabled;
    return isEntry(index) ? flags | Qt::ItemNeverHasChildren : flags;
}

QVariant FolderTreeItemModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (section == 0 && orientation == Qt::Horizontal && role == Qt::DisplayRole)
        return tr("Filters");
    return {};
}

QVariant FolderTreeItemModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid())
        return {};
    const FilterType type = typeOf(index);
    if (!isEntry(index))
        return groupData(type, role);
    const auto& group = getEntries(type);
    if (index.row() >= group.size())
        return {};
    const Entry& entry = group.at(index.row());
    switch (role) {
    case Qt::DisplayRole:
        return entry.name;
    case FilterTypeRole:
        return static_cast<int>(type);
    case EntryIdRole:
        return entry.id;
    default:
        return {};
    }
}

qint64 FolderTreeItemModel::getCollectionID(const QModelIndex& index) const {
    return idOrWarning(
        index, "Could not convert Collections model data to long long for collection_id! Ignoring...");
}

qint64 FolderTreeItemModel::getGenreID(const QModelIndex& index) const {
    return idOrWarning(index, "Could not convert Genres model data to long long for genre_id! Ignoring...");
}

qint64 FolderTreeItemModel::getTagID(const QModelIndex& index) const {
    return idOrWarning(index, "Could not convert Tags model data to long long for tag_id! Ignoring...");
}

qint64 FolderTreeItemModel::getSavedSearchID(const QModelIndex& index) const {
    return idOrWarning(
        index, "Could not convert Saved Search model data to long long for saved_search_id! Ignoring...");
}

qint64 FolderTreeItemModel::getArrangementStatusID(const QModelIndex& index) const {
    return statusId(
        FilterType::ARRANGEMENT_STATUS, index, "Arrangement status index is out of range! Received: ");
}

qint64 FolderTreeItemModel::getLyricsStatusID(const QModelIndex& index) const {
    return statusId(FilterType::LYRICS_STATUS, index, "Lyrics status index is out of range! Received: ");
}

qint64 FolderTreeItemModel::getRecordingStatusID(const QModelIndex& index) const {
    return statusId(
        FilterType::RECORDING_STATUS, index, "Recording status index is out of range! Received: ");
}

qint64 FolderTreeItemModel::getMixMasterStatusID(const QModelIndex& index) const {
    return statusId(
        FilterType::MIX_MASTER_STATUS, index, "Mix/Master status index is out of range! Received: ");
}

qint64 FolderTreeItemModel::statusId(FilterType type, const QModelIndex& index, const char* warning) const {
    const auto& statuses = getEntries(type);
    if (index.row() >= 0 && index.row() < statuses.size())
        return statuses.at(index.row()).id;
    qWarning().noquote().nospace() << warning << index.row();
    return -1;
}

const QList<FolderTreeItemModel::Entry>& FolderTreeItemModel::getEntries(FilterType type) const {
    return m_groups.at(groupIndex(type));
}

int FolderTreeItemModel::rowForStatusID(const FilterType& type, const qint64& id) const {
    return filterTypeIsStatus(type) && id >= 0 ? indexOf(type, id).row() : -1;
}

QModelIndex FolderTreeItemModel::indexOf(FilterType type, qint64 id) const {
    const QModelIndex group = index(static_cast<int>(type), 0);
    if (id < 0)
        return group;
    const auto& children = getEntries(type);
    const auto found =
        std::find_if(children.begin(), children.end(), [id](const Entry& entry) { return entry.id == id; });
    return index(
        found == children.end() ? -1 : static_cast<int>(std::distance(children.begin(), found)), 0, group);
}

FilterType FolderTreeItemModel::typeOf(const QModelIndex& index) {
    if (!index.isValid())
        return FilterType::ALL;
    return allFilterTypes.at(isEntry(index) ? index.internalId() - 1 : static_cast<std::size_t>(index.row()));
}

qint64 FolderTreeItemModel::idOf(const QModelIndex& index) {
    bool ok = false;
    const qint64 id = index.data(EntryIdRole).toLongLong(&ok);
    return ok ? id : -1;
}
