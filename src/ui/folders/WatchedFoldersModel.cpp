#include "ui/folders/WatchedFoldersModel.h"

#include "app/errors/DbException.h"
#include "database/ProjectStatements.h"
#include "database/QueryTask.h"
#include "database/RootPathStatements.h"
#include "database/TaskManager.h"
#include "ui/widgets/ElidedTip.h"

#include <QDebug>
#include <QDir>
#include <QPointer>
#include <QSqlQuery>
#include <QVariant>

#include <algorithm>
#include <array>
#include <utility>

using Stemhaven::DbException;
using Stemhaven::ProjectMonitor;
using Stemhaven::QueryTask;

namespace {

constexpr std::chrono::seconds countSpacing{1};
/// A folder whose file system stops answering goes missing without a signal.
constexpr std::chrono::seconds stateSpacing{2};

struct Words {
    const char* name;
    const char* explanation;
};

// In the order of the states.
constexpr std::array<Words, 6> words{
    {{QT_TRANSLATE_NOOP("WatchedFoldersModel", "Not watched yet"), ""},
     {QT_TRANSLATE_NOOP("WatchedFoldersModel", "Being searched…"), ""},
     {QT_TRANSLATE_NOOP("WatchedFoldersModel", "Watched"), ""},
     {QT_TRANSLATE_NOOP("WatchedFoldersModel", "Checked every few seconds: network or virtual drive"),
      QT_TRANSLATE_NOOP(
          "WatchedFoldersModel",
          "The file system of this folder, such as a network drive's, does not tell of changes. Stemhaven "
          "looks through the folder every few seconds instead.")},
     {QT_TRANSLATE_NOOP(
          "WatchedFoldersModel", "Checked every few seconds: too many folders for the system to watch"),
      QT_TRANSLATE_NOOP(
          "WatchedFoldersModel",
          "The system watches no more folders for you. Stemhaven looks through this one every few seconds "
          "instead; the log names the setting to raise.")},
     {QT_TRANSLATE_NOOP("WatchedFoldersModel", "Missing"),
      QT_TRANSLATE_NOOP(
          "WatchedFoldersModel",
          "The folder is not there or cannot be read. Stemhaven keeps all it knows of the projects in there, "
          "and follows them again as soon as it can.")}}};

QString prefixOf(const QString& path) {
    return path.endsWith(QLatin1Char('/')) ? path : path + QLatin1Char('/');
}

} // namespace

WatchedFoldersModel::WatchedFoldersModel(
    Stemhaven::TaskManager& tasks, ProjectMonitor& monitor, QObject* parent)
    : QAbstractListModel(parent),
      m_tasks(tasks),
      m_monitor(monitor),
      m_counts(countSpacing, nullptr) {
    connect(&m_counts, &SpacedCall::due, this, &WatchedFoldersModel::count);
    for (const auto signal : {&ProjectMonitor::projectsDbModified, &ProjectMonitor::searchEnded})
        connect(&monitor, signal, &m_counts, &SpacedCall::request);
    connect(&monitor, &ProjectMonitor::searchProgressed, &m_counts, &SpacedCall::request);
    for (const auto signal :
         {&ProjectMonitor::wasStarted, &ProjectMonitor::wasStopped, &ProjectMonitor::searchEnded})
        connect(&monitor, signal, this, &WatchedFoldersModel::updateStates);
    connect(&monitor, &ProjectMonitor::watchedFoldersChanged, this, &WatchedFoldersModel::reload);
    connect(&m_stateTimer, &QTimer::timeout, this, &WatchedFoldersModel::updateStates);
    m_stateTimer.start(stateSpacing);
}

void WatchedFoldersModel::reload() {
    auto task =
        std::make_shared<QueryTask>(Stemhaven::RootPathStatements::selectAll(), m_tasks.rootPathsDatabase());
    task->setQueryCallback([model = QPointer(this)](const auto& /*task*/, int /*rows*/, QSqlQuery* query) {
        QStringList paths;
        while (query->next())
            paths.append(query->value(QStringLiteral("root_search_path")).toString());
        if (model)
            model->take(paths);
    });
    task->setSqlErrorCallback([model = QPointer(this)](const auto& /*task*/, const DbException& error) {
        qCritical() << "Could not load root search paths for settings..." << error;
        if (model)
            emit model->loadingFailed(error);
    });
    m_tasks.addTask(std::move(task));
}

void WatchedFoldersModel::take(const QStringList& paths) {
    if (paths != this->paths()) {
        beginResetModel();
        const auto before = m_folders;
        m_folders.clear();
        for (const QString& path : paths) {
            const auto known = std::find_if(
                before.begin(), before.end(), [&](const Folder& folder) { return folder.path == path; });
            m_folders.append(known == before.end() ? Folder{path} : *known);
        }
        endResetModel();
    }
    updateStates();
    count();
    emit loaded();
}

void WatchedFoldersModel::count() {
    const QStringList paths = this->paths();
    if (paths.isEmpty())
        return;
    QStringList prefixes;
    for (const QString& path : paths)
        prefixes.append(prefixOf(path));
    auto task = std::make_shared<QueryTask>(
        Stemhaven::ProjectStatements::countBelow(prefixes), m_tasks.mainDatabase());
    task->setQueryCallback(
        [model = QPointer(this), paths](const auto& /*task*/, int /*rows*/, QSqlQuery* query) {
            QList<int> counts;
            while (query->next())
                counts.append(query->value(0).toInt());
            if (model)
                model->takeCounts(paths, counts);
        });
    task->setSqlErrorCallback([](const auto& /*task*/, const DbException& error) {
        qCritical() << "Could not count the projects of the watched folders!" << error;
    });
    m_tasks.addTask(std::move(task));
}

void WatchedFoldersModel::takeCounts(const QStringList& paths, const QList<int>& counts) {
    if (paths != this->paths() || counts.size() != m_folders.size())
        return;
    for (int row = 0; row < m_folders.size(); ++row) {
        if (std::exchange(m_folders[row].projects, counts[row]) != counts[row])
            emit dataChanged(index(row), index(row));
    }
}

void WatchedFoldersModel::updateStates() {
    for (int row = 0; row < m_folders.size(); ++row) {
        const State state = m_monitor.stateOfFolder(m_folders[row].path);
        if (std::exchange(m_folders[row].state, state) != state)
            emit dataChanged(index(row), index(row));
    }
}

int WatchedFoldersModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(m_folders.size());
}

QVariant WatchedFoldersModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid() || index.row() >= m_folders.size())
        return {};
    const Folder& folder = m_folders[index.row()];
    const QString shown = QDir::toNativeSeparators(folder.path);
    switch (role) {
    case Qt::DisplayRole:
        return shown;
    case Qt::AccessibleTextRole:
        return QString(shown + QStringLiteral(", ") + details(folder));
    case Qt::ToolTipRole: {
        const char* explanation = words.at(static_cast<std::size_t>(folder.state)).explanation;
        return QString(wrappingTip(shown) + (*explanation == 0 ? QString() : wrappingTip(tr(explanation))));
    }
    case PathRole:
        return folder.path;
    case StateRole:
        return static_cast<int>(folder.state);
    case DetailsRole:
        return details(folder);
    case ProjectsRole:
        return folder.projects;
    default:
        return {};
    }
}

QString WatchedFoldersModel::details(const Folder& folder) const {
    QString text = tr(words.at(static_cast<std::size_t>(folder.state)).name);
    const bool isUnsearched = folder.state == State::Waiting && folder.projects == 0;
    if (folder.projects >= 0 && !isUnsearched) {
        text += QStringLiteral(" · ") +
            (folder.projects == 1 ? tr("1 project")
                                  : tr("%1 projects").arg(QLocale().toString(folder.projects)));
    }
    return text;
}

QStringList WatchedFoldersModel::paths() const {
    QStringList paths;
    for (const Folder& folder : m_folders)
        paths.append(folder.path);
    return paths;
}
