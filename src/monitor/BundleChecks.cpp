#include "monitor/BundleChecks.h"

#include "app/SettingsKeys.h"
#include "app/Shutdown.h"
#include "app/errors/DbException.h"
#include "app/errors/Guarded.h"
#include "database/AwaitedTask.h"
#include "database/GenresByFolder.h"
#include "database/ProjectStatements.h"
#include "database/QueryTask.h"
#include "database/TaskManager.h"
#include "platform/RemoteCalls.h"
#include "project/NoteFile.h"

#include <QDebug>
#include <QSettings>

#include <algorithm>
#include <future>
#include <map>
#include <optional>
#include <utility>

namespace Stemhaven {

namespace {

constexpr std::chrono::seconds untilRemoteAnswers(10);

/// Nothing for a bundle on a remote file system that does not answer. Half of a larger group is read on
/// another thread, since reading takes longer than all else in the first search of a folder. giveUp is asked
/// before each bundle, from both threads; the rest is nothing then.
std::vector<std::optional<FoundBundle>>
readBundles(const QList<CheckRequest>& requests, const std::function<bool()>& giveUp) {
    constexpr qsizetype fewest = 8;
    std::vector<std::optional<FoundBundle>> bundles(static_cast<std::size_t>(requests.size()));
    const auto readRange = [&](qsizetype begin, qsizetype end) {
        for (qsizetype i = begin; i < end && !giveUp(); ++i) {
            const QString& path = requests[i].path;
            const QString folder = path.left(path.lastIndexOf(u'/'));
            bundles[static_cast<std::size_t>(i)] =
                RemoteCalls::run(folder, [path] { return FoundBundle::read(path); });
        }
    };
    const qsizetype half = requests.size() < fewest ? 0 : requests.size() / 2;
    auto first = half == 0 ? std::future<void>() : std::async(readRange, 0, half);
    readRange(half, requests.size());
    if (first.valid())
        first.get();
    return bundles;
}

/// Those on a remote file system are written with patience: where it does not answer, the next search finds
/// that they are missing.
void writeAllNotes(const std::vector<NoteToWrite>& notes) {
    std::map<QString, std::vector<NoteToWrite>> byMount;
    for (const auto& note : notes)
        byMount[RemoteCalls::mountOf(note.details.filepath)].push_back(note);
    for (const auto& [mount, there] : byMount) {
        RemoteCalls::run(there.front().details.filepath, [notes = there] {
            writeNotes(notes);
            return true;
        });
    }
}

} // namespace

BundleChecks::BundleChecks(
    TaskManager& tasks, std::shared_ptr<RecordedBundles> recorded, std::chrono::milliseconds delay,
    Callbacks callbacks)
    : m_tasks(tasks),
      m_recorded(std::move(recorded)),
      m_delay(delay),
      m_callbacks(std::move(callbacks)),
      m_moves(tasks),
      m_databaseDelay(delay),
      m_thread([this] { run(); }) {}

void BundleChecks::stop() {
    {
        const std::lock_guard lock(m_mutex);
        m_stop = true;
    }
    m_changed.notify_all();
    if (m_thread.joinable())
        m_thread.join();
}

void BundleChecks::suspend() {
    {
        const std::lock_guard lock(m_mutex);
        m_isSuspended = true;
        m_queue.abandonAll();
    }
    m_changed.notify_all();
}

void BundleChecks::resume() {
    const std::lock_guard lock(m_mutex);
    m_isSuspended = false;
}

BundleChecks::~BundleChecks() {
    stop();
    m_queue.abandonAll();
}

bool BundleChecks::add(CheckRequest request) {
    const bool isRecorded = !request.priorPaths.isEmpty() || m_recorded->at(request.path).has_value();
    bool isNew = false;
    {
        const std::lock_guard lock(m_mutex);
        isNew = m_queue.add(std::move(request), isRecorded);
    }
    m_changed.notify_all();
    return isNew;
}

void BundleChecks::addMissing(const QSet<QString>& paths) {
    if (!m_hasCopies)
        return;
    {
        const std::lock_guard lock(m_mutex);
        const auto due = Clock::now() + untilSettled();
        for (const auto& path : paths) {
            CheckRequest request;
            request.path = path;
            request.isFromEvent = true;
            request.isVanished = true;
            m_queue.addDelayed(std::move(request), due);
        }
    }
    m_changed.notify_all();
}

void BundleChecks::waitForRoom(qsizetype limit, const std::function<bool()>& giveUp) {
    constexpr std::chrono::milliseconds betweenLooks(50);
    std::unique_lock lock(m_mutex);
    while (m_queue.readySize() >= limit && !giveUp())
        m_changed.wait_for(lock, betweenLooks);
}

void BundleChecks::whenIdle(std::function<void()> callback) {
    {
        const std::lock_guard lock(m_mutex);
        m_whenIdle.push_back(std::move(callback));
    }
    m_changed.notify_all();
}

bool BundleChecks::isIdle() const {
    const std::lock_guard lock(m_mutex);
    return m_queue.size() == 0 && !m_isChecking;
}

bool BundleChecks::isEnding() const {
    return m_stop || Shutdown::hasBegun();
}

void BundleChecks::run() {
    CheckQueue::Group group;
    while (takeNext(group)) {
        loggingFailures(QStringLiteral("Unexpected exception occurred during directory changed event!"), [&] {
            check(group);
        });
        // Its tickets are held no longer.
        group = {};
    }
}

/// Waits for something to check. False when the checks end.
bool BundleChecks::takeNext(CheckQueue::Group& group) {
    // The end of a search, the shut-down and the clock give no notice.
    constexpr std::chrono::milliseconds betweenLooks(100);
    std::unique_lock lock(m_mutex);
    m_isChecking = false;
    m_changed.notify_all();
    while (!isEnding()) {
        if (m_isSuspended) {
            m_queue.abandonAll();
            m_pausedUntil = {};
        }
        m_queue.takeUpDelayed();
        if (m_pausedUntil <= Clock::now()) {
            const bool mayDecideAll = m_queue.readySize() == 0 && !m_callbacks.isSearching();
            group = m_queue.take(mayDecideAll);
            m_isChecking = !group.requests.isEmpty();
            if (m_isChecking)
                return true;
            if (m_queue.size() == 0)
                callBackWhenIdle(lock);
        }
        if (m_queue.size() == 0 && m_whenIdle.empty() && !m_queue.nextDelayed())
            m_changed.wait(lock);
        else
            m_changed.wait_for(lock, betweenLooks);
    }
    return false;
}

void BundleChecks::callBackWhenIdle(std::unique_lock<std::mutex>& lock) {
    const auto callbacks = std::exchange(m_whenIdle, {});
    lock.unlock();
    for (const auto& callback : callbacks)
        callback();
    lock.lock();
}

void BundleChecks::check(const CheckQueue::Group& group) {
    try {
        checkTogether(group);
    } catch (const DbException& error) {
        if (!error.isStatementAtFault()) {
            // Once, not for each bundle and attempt.
            (std::exchange(m_isDatabaseOut, true) ? qDebug() : qCritical()).noquote()
                << QStringLiteral("Could not update project record. %1 bundles wait for the database.")
                       .arg(group.requests.size());
            pauseForDatabase(group);
        } else if (group.requests.size() > 1) {
            // One of them cannot be recorded; the others can.
            for (const auto& request : group.requests)
                check({{request}, group.areUndecided});
        } else {
            qCritical() << "Could not update project record." << group.requests.first().path;
        }
    }
}

void BundleChecks::checkTogether(const CheckQueue::Group& group) {
    const auto abandon = [&] {
        for (const auto& request : group.requests) {
            for (const auto& ticket : request.tickets)
                ticket->abandon();
        }
    };
    const auto checked = read(group);
    if (!findCandidates(checked)) {
        abandon();
        return;
    }
    BundleMatching matching(Places(m_callbacks.roots()), m_callbacks.isSearched);
    match(checked, group.areUndecided, matching);
    if (!write(checked, matching))
        abandon();
    m_isDatabaseOut = false;
    m_databaseDelay = m_delay;
}

BundleChecks::CheckedGroup BundleChecks::read(const CheckQueue::Group& group) {
    auto checked = std::make_shared<std::vector<Checked>>();
    QSet<QString> identities;
    auto answers = readBundles(group.requests, [this] { return isEnding(); });
    for (qsizetype i = 0; i < group.requests.size(); ++i) {
        const auto& request = group.requests[i];
        auto& answer = answers[static_cast<std::size_t>(i)];
        if (!answer) {
            const std::lock_guard lock(m_mutex);
            m_queue.addDelayed(request, Clock::now() + untilRemoteAnswers);
            continue;
        }
        auto& bundle = *answer;
        if (!bundle.isThere()) {
            m_checkedOnceMore.remove(request.path);
            bundleVanished(request, bundle.details);
            continue;
        }
        // The same bundle by another path: to be matched with what is decided for this one.
        const auto identity = bundle.details.sufid.toString();
        if (identities.contains(identity)) {
            const std::lock_guard lock(m_mutex);
            m_queue.add(request, false);
            continue;
        }
        identities.insert(identity);
        checked->push_back({request, std::move(bundle), {}});
    }
    return checked;
}

/// A bundle that was renamed is gone from its path, too, and turns up elsewhere a little later.
void BundleChecks::bundleVanished(const CheckRequest& request, const ProjectDetails& details) {
    if (!request.isVanished)
        m_callbacks.vanished(details);
    if (m_moves.isEmpty() || !request.isFromEvent)
        return;
    if (!request.isVanished) {
        auto again = request;
        again.isVanished = true;
        const std::lock_guard lock(m_mutex);
        m_queue.addDelayed(std::move(again), Clock::now() + untilSettled());
        return;
    }
    const auto written =
        m_moves.originalVanished(request.path, Places(m_callbacks.roots()), [this] { return isEnding(); });
    if (written)
        m_callbacks.written({*written}, true, false);
}

/// False when the program ends meanwhile.
bool BundleChecks::findCandidates(const CheckedGroup& group) {
    return AwaitedTask::run(
        m_tasks,
        [group](QSqlDatabase& database) {
            for (auto& checked : *group) {
                checked.candidates = selectCandidates(
                    database, checked.bundle.details, checked.bundle.note, checked.request.priorPaths);
            }
        },
        [this] { return isEnding(); });
}

void BundleChecks::match(const CheckedGroup& group, bool areUndecided, BundleMatching& matching) {
    using Knowledge = BundleMatching::Knowledge;
    for (auto& checked : *group) {
        const auto& request = checked.request;
        const bool isSettled =
            request.undecidedSince && Clock::now() - *request.undecidedSince >= untilSettled();
        const auto unsettled = areUndecided ? Knowledge::AllSeen : Knowledge::Partial;
        const auto outcome = matching.match(
            checked.bundle, checked.candidates, request.priorPaths,
            areUndecided && isSettled ? Knowledge::Settled : unsettled);
        if (outcome == BundleMatching::Outcome::Unreadable)
            checkOnceMore(checked);
        else if (outcome != BundleMatching::Outcome::Decided)
            leaveUndecided(request, areUndecided, outcome == BundleMatching::Outcome::UndecidedByPath);
        else
            m_checkedOnceMore.remove(request.path);
    }
}

void BundleChecks::leaveUndecided(CheckRequest request, bool isAllSeen, bool isDecidedByPath) {
    const auto now = Clock::now();
    if (!request.undecidedSince)
        request.undecidedSince = now;
    request.isDecidedByPath = isDecidedByPath;
    const auto notBefore = isAllSeen ? *request.undecidedSince + untilSettled() : now;
    const std::lock_guard lock(m_mutex);
    m_queue.addUndecided(std::move(request), notBefore);
}

/// After that time all events of what happened before have come.
BundleChecks::Clock::duration BundleChecks::untilSettled() const {
    constexpr std::chrono::milliseconds slowestDelivery(500);
    return m_delay + m_delay / 4 + slowestDelivery;
}

/// False when the program ends meanwhile.
bool BundleChecks::write(const CheckedGroup& group, const BundleMatching& matching) {
    const auto changes = matching.changes();
    if (changes.isEmpty())
        return true;
    const auto written = std::make_shared<QList<ProjectChanges::Written>>();
    const auto hasFound = std::make_shared<bool>(false);
    const auto work = [group, changes, written, hasFound, vacated = matching.vacatedPaths(),
                       recorded = m_recorded](QSqlDatabase& database) {
        *written = changes.write(database);
        QList<std::pair<QString, RecordedBundle>> put;
        for (const auto& record : std::as_const(*written)) {
            const auto read = std::find_if(group->begin(), group->end(), [&](const Checked& checked) {
                return checked.bundle.details.sufid == record.details.sufid;
            });
            if (!record.isLost && read != group->end()) {
                put.append(
                    {record.details.bundlePath(),
                     {record.details.sufid, read->bundle.savedAt, read->bundle.readAt}});
            }
        }
        // On the worker, as the reading of all records is, so that neither undoes the other.
        *hasFound = recorded->update(vacated, put);
    };
    if (!AwaitedTask::run(m_tasks, work, [this] { return isEnding(); }))
        return false;

    follow(*written);
    const auto& originals = matching.originalsBySufid();
    for (const auto& record : std::as_const(*written)) {
        if (const auto original = originals.constFind(record.details.sufid.toString());
            record.isNew && original != originals.cend())
            m_moves.add(*original, record.projectId);
        m_hasCopies = !m_moves.isEmpty();
    }
    bool isFromEvent = false;
    for (const auto& checked : *group) {
        isFromEvent = isFromEvent || checked.request.isFromEvent;
        const bool isLost = std::any_of(written->begin(), written->end(), [&](const auto& record) {
            return record.isLost && record.details.sufid == checked.bundle.details.sufid;
        });
        if (isLost)
            add(checked.request);
    }
    reportDuplicates(matching);
    m_callbacks.written(*written, isFromEvent, *hasFound);
    return true;
}

void BundleChecks::follow(const QList<ProjectChanges::Written>& written) {
    const bool givesGenres = QSettings().value(SettingsKeys::genreFromDir, false).toBool();
    std::vector<NoteToWrite> notes;
    for (const auto& record : written) {
        if (record.isLost)
            continue;
        notes.push_back({record.details, record.projectId});
        if (!record.isNew) {
            qDebug() << "Found moved/renamed project during search: " << record.details;
            continue;
        }
        qInfo() << "New project successfully added! project_id:" << record.projectId;
        if (givesGenres && !record.isCopy)
            assignGenreToNewProject(m_tasks, nullptr, record.projectId, record.details.filepath);
    }
    writeAllNotes(notes);
}

void BundleChecks::reportDuplicates(const BundleMatching& matching) {
    for (const auto& [name, chosen, other] : matching.duplicates()) {
        qWarning().noquote().nospace() << "Warning. Duplicate entry found for project '" << name
                                       << "'. Only one will be updated with project_id:" << chosen;
        qWarning().noquote().nospace()
            << "\tPossible duplicate found for '" << name << "'. project_id:" << other;
        auto lookUp = std::make_shared<QueryTask>(
            ProjectStatements::selectPossibleDuplicate(chosen, other), m_tasks.mainDatabase());
        lookUp->setQueryCallback([&tasks = m_tasks, first = chosen,
                                  second = other](const std::shared_ptr<Task>& done, int rows, QSqlQuery*) {
            if (rows > 0)
                return;
            auto insert = std::make_shared<QueryTask>(
                ProjectStatements::insertPossibleDuplicate(first, second), tasks.mainDatabase());
            insert->setSqlErrorCallback([](const std::shared_ptr<Task>&, const DbException&) {
                qCritical() << "Possible duplicate insertion failed!";
            });
            tasks.addTask(insert, done);
        });
        lookUp->setSqlErrorCallback([](const std::shared_ptr<Task>&, const DbException&) {
            qCritical() << "Could not select from possible_duplicates table!";
        });
        m_tasks.addTask(lookUp);
    }
}

/// A second failure is left alone until the bundle changes.
void BundleChecks::checkOnceMore(const Checked& checked) {
    if (!checked.request.isFromEvent || m_checkedOnceMore.remove(checked.request.path))
        return;
    m_checkedOnceMore.insert(checked.request.path);
    const std::lock_guard lock(m_mutex);
    m_queue.addDelayed(checked.request, Clock::now() + m_delay);
}

void BundleChecks::pauseForDatabase(const CheckQueue::Group& group) {
    // Often enough that nobody waits long once the database answers, and no more often, as each attempt holds
    // up what else wants to be written.
    constexpr int mostDelays = 8;
    const std::lock_guard lock(m_mutex);
    m_queue.putBack(group);
    m_pausedUntil = Clock::now() + m_databaseDelay;
    m_databaseDelay = std::min(m_databaseDelay * 2, m_delay * mostDelays);
}

} // namespace Stemhaven
