#include "monitor/BundleCheck.h"

#include "app/errors/DbException.h"
#include "app/errors/Guarded.h"
#include "database/ProjectStatements.h"
#include "database/QueryTask.h"
#include "database/SqlText.h"
#include "database/TaskManager.h"
#include "project/NoteFile.h"
#include "project/ProjectInformation.h"

#include <QDateTime>
#include <QDebug>
#include <QFileInfo>
#include <QSqlQuery>
#include <QVariant>

#include <algorithm>
#include <optional>

namespace Stemhaven {

namespace {

/// From the first column of the row that query is on.
std::optional<long long> projectIdIn(const QSqlQuery& query) {
    bool converted = false;
    const auto id = query.value(0).toULongLong(&converted);
    if (!converted) {
        qCritical() << "Could not convert project_id!";
        return std::nullopt;
    }
    return static_cast<long long>(id);
}

} // namespace

BundleCheck::BundleCheck(
    TaskManager& tasks, std::shared_ptr<ChecksInProgress> checks, ProjectDetails details, Callbacks callbacks)
    : m_tasks(tasks),
      m_checks(std::move(checks)),
      m_details(std::move(details)),
      m_callbacks(std::move(callbacks)) {}

std::shared_ptr<BundleCheck> BundleCheck::begin(
    TaskManager& tasks, std::shared_ptr<ChecksInProgress> checks, const ProjectDetails& details,
    Callbacks callbacks) {
    if (!checks->begin(details))
        return nullptr;
    return std::shared_ptr<BundleCheck>(
        new BundleCheck(tasks, std::move(checks), details, std::move(callbacks)));
}

BundleCheck::~BundleCheck() {
    m_checks->finish(m_details);
    if (!m_hasDatabaseFailed)
        m_callbacks.ended();
}

void BundleCheck::start() {
    auto task = std::make_shared<QueryTask>(
        ProjectStatements::selectBySufid(m_details.sufid.toString()), m_tasks.mainDatabase());
    task->setQueryCallback([this, self = shared_from_this()](const TaskPointer& done, int, QSqlQuery* query) {
        QList<Record> records;
        while (query->next()) {
            if (const auto id = projectIdIn(*query))
                records.append(
                    {*id, unescape(query->value(1).toString()), unescape(query->value(2).toString())});
        }
        if (records.isEmpty())
            sufidUnknown(done);
        else
            sufidKnown(done, records);
    });
    task->setSqlErrorCallback(
        [this, self = shared_from_this()](const TaskPointer&, const DbException& error) {
            databaseFailed(error, QStringLiteral("Could not select projects matching SUFID!"));
        });
    m_tasks.addTask(task);
}

void BundleCheck::sufidKnown(const TaskPointer& task, const QList<Record>& records) {
    std::optional<Note> note;
    bool noteIsRead = false;
    // The file system gives the number of a deleted bundle to the next new one, so the number alone proves
    // nothing.
    const auto isThisBundle = [&](const Record& record) {
        if (record.path() == m_details.bundlePath())
            return true;
        if (!noteIsRead)
            note = loadStemhavenPlistDetails(m_details);
        noteIsRead = true;
        return note && (note->first == record.id || note->second == m_details.sufid.toString().toStdString());
    };

    skippingUnreadable("Skipping... Could not read project data for project: ", [&] {
        const auto chosen = std::find_if(records.begin(), records.end(), isThisBundle);
        if (chosen != records.end()) {
            qDebug() << "Project modified. project id:" << chosen->id << " SUFID:" << m_details;
            logDuplicates(task, *chosen, records);
            update(task, chosen->id);
            return;
        }
        // A bundle that has moved on by now had no note here to be read; it is checked at its new place.
        if (ProjectDetails(m_details.bundlePath()).sufid != m_details.sufid)
            return;
        if (note)
            takeIdentityFrom(task, records);
        else
            sufidInDoubt(task, records);
    });
}

/// The bundle has come from somewhere else, and a full disk or a folder that is closed to writing has left it
/// without a note. What remains of its identity is its name and when it was last saved.
void BundleCheck::sufidInDoubt(const TaskPointer& task, const QList<Record>& records) {
    const auto lastModified = QFileInfo(informationPath(m_details.bundlePath())).lastModified();
    auto select = std::make_shared<QueryTask>(
        ProjectStatements::selectByTraits(m_details.sufid.toString(), m_details.filename, lastModified),
        m_tasks.mainDatabase());
    select->setQueryCallback(
        [this, self = shared_from_this(), records](const TaskPointer& done, int, QSqlQuery* query) {
            if (!query->next())
                takeIdentityFrom(done, records);
            else if (const auto id = projectIdIn(*query))
                update(done, *id);
        });
    select->setSqlErrorCallback(
        [this, self = shared_from_this()](const TaskPointer&, const DbException& error) {
            databaseFailed(error, QStringLiteral("Could not select projects matching SUFID!"));
        });
    m_tasks.addTask(select, task);
}

void BundleCheck::takeIdentityFrom(const TaskPointer& task, const QList<Record>& records) {
    for (const auto& record : records) {
        qInfo() << "Another bundle has the identity of a recorded project now. project_id:" << record.id;
        m_tasks.addTask(
            std::make_shared<QueryTask>(ProjectStatements::giveUpIdentity(record.id), m_tasks.mainDatabase()),
            task);
    }
    sufidUnknown(task);
}

void BundleCheck::logDuplicates(const TaskPointer& task, const Record& chosen, const QList<Record>& records) {
    if (records.size() < 2)
        return;
    qWarning().noquote().nospace() << "Warning. Duplicate entry found for project '" << m_details.name
                                   << "'. Only one will be updated with project_id:" << chosen.id;
    for (const auto& record : records) {
        if (record.id == chosen.id)
            continue;
        qWarning().noquote().nospace()
            << "\tPossible duplicate found for '" << m_details.name << "'. project_id:" << record.id;
        auto select = std::make_shared<QueryTask>(
            ProjectStatements::selectPossibleDuplicate(chosen.id, record.id), m_tasks.mainDatabase());
        select->setQueryCallback([this, self = shared_from_this(), first = chosen.id,
                                  second = record.id](const TaskPointer& done, int rows, QSqlQuery*) {
            if (rows > 0)
                return;
            auto insert = std::make_shared<QueryTask>(
                ProjectStatements::insertPossibleDuplicate(first, second), m_tasks.mainDatabase());
            insert->setSqlErrorCallback([](const TaskPointer&, const DbException&) {
                qCritical() << "Possible duplicate insertion failed!";
            });
            m_tasks.addTask(insert, done);
        });
        select->setSqlErrorCallback([](const TaskPointer&, const DbException&) {
            qCritical() << "Could not select from possible_duplicates table!";
        });
        m_tasks.addTask(select, task);
    }
}

void BundleCheck::sufidUnknown(const TaskPointer& task) {
    if (!m_details.sufid.valid || !QFileInfo::exists(m_details.bundlePath())) {
        m_callbacks.vanished(m_details);
        return;
    }
    skippingUnreadable("Skipping... Could not read project data for new project: ", [&] {
        if (const auto note = loadStemhavenPlistDetails(m_details))
            lookUpNote(task, *note);
        else
            insert(task);
    });
}

void BundleCheck::lookUpNote(const TaskPointer& task, const Note& note) {
    auto select = std::make_shared<QueryTask>(
        ProjectStatements::selectByNotedSufid(QString::fromStdString(note.second)), m_tasks.mainDatabase());
    select->setQueryCallback(
        [this, self = shared_from_this(), note](const TaskPointer& done, int, QSqlQuery* query) {
            if (!query->next()) {
                lookUpPath(done);
                return;
            }
            if (const auto id = projectIdIn(*query)) {
                noteMatched(
                    done, {*id, unescape(query->value(1).toString()), unescape(query->value(2).toString())},
                    note);
            }
        });
    select->setSqlErrorCallback([this,
                                 self = shared_from_this()](const TaskPointer&, const DbException& error) {
        databaseFailed(error, QStringLiteral("Could not select matching SUFID matches for Stemhaven.plist!"));
    });
    m_tasks.addTask(select, task);
}

void BundleCheck::noteMatched(const TaskPointer& task, const Record& record, const Note& note) {
    if (record.id == note.first)
        qDebug() << "Found project_id match from Stemhaven.plist: " << record.id;
    const ProjectDetails old(record.path());
    if (!old.isValid) {
        qWarning() << "Old project details are invalid! Possibly corrupt or incorrect path information.";
        qDebug() << "\tOld project_id: " << record.id << " oldFilepath: " << record.filepath
                 << " oldFilename: " << record.filename;
        qWarning()
            << "Since it is corrupted it is unusable. Replacing with newly found project with matching SFUID";
        qDebug() << "\t" << m_details;
        update(task, record.id);
    } else if (old.sufid.valid && old.sufid != m_details.sufid) {
        qDebug() << "Previous project found with matching SUFID with project_id: " << record.id;
        qDebug() << "Copy of project will be added as a new record.";
        insert(task);
    } else {
        update(task, record.id);
    }
}

void BundleCheck::lookUpPath(const TaskPointer& task) {
    auto select = std::make_shared<QueryTask>(
        ProjectStatements::selectByPath(m_details.filepath, m_details.filename), m_tasks.mainDatabase());
    select->setQueryCallback(
        [this, self = shared_from_this()](const TaskPointer& done, int, QSqlQuery* query) {
            if (!query->next()) {
                insert(done);
                return;
            }
            if (const auto id = projectIdIn(*query)) {
                qDebug() << "Found project_id match from Stemhaven.plist: " << *id;
                update(done, *id);
            }
        });
    select->setSqlErrorCallback(
        [this, self = shared_from_this()](const TaskPointer&, const DbException& error) {
            databaseFailed(error, QStringLiteral("Could not select matching filepath/filename"));
        });
    m_tasks.addTask(select, task);
}

void BundleCheck::insert(const TaskPointer& task) {
    skippingUnreadable("Skipping... Could not read project data for new project: ", [&] {
        m_tasks.addProject(
            m_details, task,
            [this, self = shared_from_this()](const TaskPointer&, long long) {
                m_callbacks.written(m_details);
            },
            [this, self = shared_from_this()](const DbException& error) {
                databaseFailed(error, QStringLiteral("Could not insert new project record!"));
            });
    });
}

void BundleCheck::update(const TaskPointer& task, long long projectId) {
    skippingUnreadable("Skipping... Could not read project data for project: ", [&] {
        m_tasks.updateProject(
            m_details, projectId, task,
            [this, self = shared_from_this()](const TaskPointer&, long long) {
                qDebug() << "Found moved/renamed project during search: " << m_details;
                m_callbacks.written(m_details);
            },
            [this, self = shared_from_this(), projectId](const DbException& error) {
                databaseFailed(
                    error, QStringLiteral("Could not update project record. project_id:%1").arg(projectId));
            });
    });
}

void BundleCheck::skippingUnreadable(const char* what, const std::function<void()>& body) const {
    const bool isGone = !QFileInfo::exists(m_details.bundlePath());
    if (isGone)
        m_callbacks.vanished(m_details);
    if (isGone || !loggingFailures(QLatin1String(what) + m_details.bundlePath(), body))
        m_callbacks.unreadable(m_details);
}

void BundleCheck::databaseFailed(const DbException& error, const QString& what) {
    logFailure(error).noquote() << what;
    if (error.isStatementAtFault())
        return;
    m_hasDatabaseFailed = true;
    m_callbacks.databaseFailed(m_details);
}

} // namespace Stemhaven
