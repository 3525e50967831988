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

/// From the first column of the query's current row.
std::optional<long long> projectIdIn(const QSqlQuery& query) {
    bool converted = false;
    const auto id = query.value(0).toULongLong(&converted);
    if (!converted) {
        qCritical() << "Could not convert project_id!";
        return std::nullopt;
    }
    return static_cast<long long>(id);
}

/// There are disks that take a name in other letters for the same.
bool isSameOnSomeDisks(const QString& a, const QString& b) {
    const auto folded = [](const QString& text) {
        return text.normalized(QString::NormalizationForm_C).toCaseFolded();
    };
    return a == b || folded(a) == folded(b);
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
    select(
        {}, ProjectStatements::selectBySufid(m_details.sufid.toString()),
        "Could not select projects matching SUFID!", [this](const TaskPointer& done, QSqlQuery& query) {
            QList<Record> records;
            while (query.next()) {
                if (const auto record = recordIn(query))
                    records.append(*record);
            }
            if (records.isEmpty())
                sufidUnknown(done);
            else
                sufidKnown(done, records);
        });
}

void BundleCheck::sufidKnown(const TaskPointer& task, const QList<Record>& records) {
    std::optional<Note> note;
    bool noteIsRead = false;
    // The file system gives the number of a deleted bundle to the next new one, so the number alone proves
    // nothing.
    const auto isThisBundle = [&](const Record& record) {
        if (record.path() == m_details.bundlePath() || isAlsoAt(record.path()))
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
            update(task, chosen->id, isAlsoAt(chosen->path()) ? ProjectDetails(chosen->path()) : m_details);
            return;
        }
        // A bundle that has moved on by now left no note here to be read. It is checked at its new place.
        if (ProjectDetails(m_details.bundlePath()).sufid != m_details.sufid)
            return;
        if (note)
            takeIdentityFrom(task, records);
        else
            sufidInDoubt(task, records);
    });
}

/// Whether the bundle is found at that path as well, as when one root is a link to another. Its record keeps
/// the path that it has then, or each look at one of the roots would move it there.
bool BundleCheck::isAlsoAt(const QString& path) const {
    return !isSameOnSomeDisks(path, m_details.bundlePath()) && m_callbacks.isSearched(path) &&
        ProjectDetails(path).sufid == m_details.sufid;
}

/// The bundle is not where its record says and has no note, because the disk was full, say, or the bundle
/// cannot be written. Then its name and the time of its last save tell whether the record is its own.
void BundleCheck::sufidInDoubt(const TaskPointer& task, const QList<Record>& records) {
    const auto lastModified = QFileInfo(informationPath(m_details.bundlePath())).lastModified();
    select(
        task, ProjectStatements::selectByTraits(m_details.sufid.toString(), m_details.filename, lastModified),
        "Could not select projects matching SUFID!",
        [this, records](const TaskPointer& done, QSqlQuery& query) {
            if (!query.next())
                takeIdentityFrom(done, records);
            else if (const auto id = projectIdIn(query))
                update(done, *id, m_details);
        });
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
        auto lookUp = std::make_shared<QueryTask>(
            ProjectStatements::selectPossibleDuplicate(chosen.id, record.id), m_tasks.mainDatabase());
        lookUp->setQueryCallback([this, self = shared_from_this(), first = chosen.id,
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
        lookUp->setSqlErrorCallback([](const TaskPointer&, const DbException&) {
            qCritical() << "Could not select from possible_duplicates table!";
        });
        m_tasks.addTask(lookUp, task);
    }
}

void BundleCheck::sufidUnknown(const TaskPointer& task) {
    skippingUnreadable("Skipping... Could not read project data for new project: ", [&] {
        if (const auto note = loadStemhavenPlistDetails(m_details))
            lookUpNote(task, *note);
        else
            insert(task);
    });
}

void BundleCheck::lookUpNote(const TaskPointer& task, const Note& note) {
    select(
        task, ProjectStatements::selectByNotedSufid(QString::fromStdString(note.second)),
        "Could not select matching SUFID matches for Stemhaven.plist!",
        [this, note](const TaskPointer& done, QSqlQuery& query) {
            if (!query.next())
                lookUpPath(done);
            else if (const auto record = recordIn(query))
                noteMatched(done, *record, note);
        });
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
        update(task, record.id, m_details);
    } else if (old.sufid.valid && old.sufid != m_details.sufid) {
        qDebug() << "Previous project found with matching SUFID with project_id: " << record.id;
        qDebug() << "Copy of project will be added as a new record.";
        insert(task);
    } else {
        update(task, record.id, m_details);
    }
}

void BundleCheck::lookUpPath(const TaskPointer& task) {
    select(
        task, ProjectStatements::selectByPath(m_details.filepath, m_details.filename),
        "Could not select matching filepath/filename", [this](const TaskPointer& done, QSqlQuery& query) {
            if (!query.next()) {
                insert(done);
            } else if (const auto id = projectIdIn(query)) {
                qDebug() << "Found project_id match from Stemhaven.plist: " << *id;
                update(done, *id, m_details);
            }
        });
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

void BundleCheck::update(const TaskPointer& task, long long projectId, const ProjectDetails& details) {
    skippingUnreadable("Skipping... Could not read project data for project: ", [&] {
        m_tasks.updateProject(
            details, projectId, task,
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

void BundleCheck::select(
    const TaskPointer& after, const QString& statement, const char* failure, const TakeResult& take) {
    auto task = std::make_shared<QueryTask>(statement, m_tasks.mainDatabase());
    task->setQueryCallback([self = shared_from_this(), take](const TaskPointer& done, int, QSqlQuery* query) {
        take(done, *query);
    });
    task->setSqlErrorCallback(
        [self = shared_from_this(), failure](const TaskPointer&, const DbException& error) {
            self->databaseFailed(error, QLatin1String(failure));
        });
    m_tasks.addTask(task, after);
}

std::optional<BundleCheck::Record> BundleCheck::recordIn(const QSqlQuery& query) {
    const auto id = projectIdIn(query);
    if (!id)
        return std::nullopt;
    return Record{*id, unescape(query.value(1).toString()), unescape(query.value(2).toString())};
}

void BundleCheck::skippingUnreadable(const char* what, const std::function<void()>& body) const {
    if (!m_details.sufid.valid || !QFileInfo::exists(m_details.bundlePath()))
        m_callbacks.vanished(m_details);
    else if (!loggingFailures(QLatin1String(what) + m_details.bundlePath(), body))
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
