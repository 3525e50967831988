#pragma once

#include "database/FilterType.h"

#include <QAbstractItemModel>
#include <QList>

#include <array>
#include <memory>

namespace Stemhaven {
class TaskManager;
}

/// Everything that a list of projects can be narrowed by: a group for each FilterType, in their order, with
/// its entries below it. Used on the GUI thread.
class FolderTreeItemModel : public QAbstractItemModel {
    Q_OBJECT

public:
    struct Entry {
        QString name;
        qint64 id = -1;

        bool operator==(const Entry&) const = default;
    };

    enum Role : int {
        FilterTypeRole = Qt::UserRole, ///< int; of a group, and of an entry that of its group
        EntryIdRole                    ///< qint64, of an entry; a group has none
    };

    /// tasks outlives the model. The groups are empty before the first reload.
    explicit FolderTreeItemModel(Stemhaven::TaskManager& tasks, QObject* parent = nullptr);

    /// Reads the entries of all groups anew and exchanges them at once. Does not wait; what is asked for
    /// while a reload runs becomes one more after it.
    void reload();

    bool isReloading() const { return m_isReloading; }

    QModelIndex index(int row, int column, const QModelIndex& parent = {}) const override;
    QModelIndex parent(const QModelIndex& child) const override;
    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    bool hasChildren(const QModelIndex& parent = {}) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;

    /// The entry's id; -1, with a warning, for an index that has none, such as a group.
    qint64 getCollectionID(const QModelIndex& index) const;
    qint64 getGenreID(const QModelIndex& index) const;
    qint64 getTagID(const QModelIndex& index) const;
    qint64 getSavedSearchID(const QModelIndex& index) const;

    /// The id of the status in the index's row of that group; -1, with a warning, when there is no such row.
    qint64 getArrangementStatusID(const QModelIndex& index) const;
    qint64 getLyricsStatusID(const QModelIndex& index) const;
    qint64 getRecordingStatusID(const QModelIndex& index) const;
    qint64 getMixMasterStatusID(const QModelIndex& index) const;

    /// In the order of the sidebar. None for a type without entries.
    const QList<Entry>& getEntries(FilterType type) const;
    /// -1 when the group has no such status.
    int rowForStatusID(const FilterType& type, const qint64& id) const;

    /// The group's index without an id, the entry's with one; invalid when there is no such entry.
    QModelIndex indexOf(FilterType type, qint64 id = -1) const;
    /// Of a group or an entry; ALL for an invalid index.
    static FilterType typeOf(const QModelIndex& index);
    /// -1 for whatever is no entry.
    static qint64 idOf(const QModelIndex& index);

signals:
    /// After each reload, also one that found the same entries. A group that could not be read has kept its
    /// own.
    void changed();

private:
    using Groups = std::array<QList<Entry>, allFilterTypes.size()>;

    void read(FilterType type, const std::shared_ptr<Groups>& groups);
    void finishReload(const Groups& groups);
    qint64 statusId(FilterType type, const QModelIndex& index, const char* warning) const;

    Stemhaven::TaskManager& m_tasks;
    Groups m_groups;
    bool m_isReloading = false;
    bool m_reloadAgain = false;
};
