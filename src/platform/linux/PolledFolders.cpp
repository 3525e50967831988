#include "platform/linux/PolledFolders.h"

#include "platform/linux/LoggedFolders.h"

#include <QDebug>
#include <QFile>

#include <algorithm>
#include <utility>

namespace Stemhaven {

namespace {

void logPolled(const std::string& folder) {
    if (LoggedFolders::polled().add(folder))
        qWarning() << "No file system events for folder. It is looked through every few seconds: "
                   << QFile::decodeName(folder.c_str());
}

} // namespace

PolledFolders::PolledFolders(
    Settings settings, EventCoalescer& events, const std::atomic<bool>& stop, std::function<void()> onAnswer)
    : m_settings(std::move(settings)),
      m_events(events),
      m_stop(stop),
      m_onAnswer(std::move(onAnswer)) {}

void PolledFolders::beginLocal(const TreeSnapshot::Subject& subject, const WasMissed& wasMissed) {
    logPolled(subject.top);
    Folder folder;
    folder.last = m_settings.take(subject, [this] { return m_stop.load(); }).value_or(TreeSnapshot{});
    folder.hasAnswered = true;
    folder.wasMissed = wasMissed;
    reportMissed(folder);
    folder.poller = std::make_unique<TreePoller>(
        subject, m_settings.take, m_settings.interval, m_settings.interval, m_onAnswer);
    m_folders.insert_or_assign(subject.top, std::move(folder));
}

void PolledFolders::beginRemote(
    const TreeSnapshot::Subject& subject, const WasMissed& wasMissed, bool needsSearch) {
    logPolled(subject.top);
    Folder folder;
    folder.wasMissed = wasMissed;
    folder.needsSearch = needsSearch;
    folder.poller = std::make_unique<TreePoller>(
        subject, m_settings.take, m_settings.interval, std::chrono::milliseconds::zero(), m_onAnswer);
    m_folders.insert_or_assign(subject.top, std::move(folder));
}

void PolledFolders::reportMissed(const Folder& folder) {
    if (!folder.wasMissed || !folder.last)
        return;
    for (const auto& [path, bundle] : folder.last->bundles) {
        if (folder.wasMissed(path, bundle.stamp))
            m_events.add(path, bundle.fileID, FileEvent::ItemModified);
    }
}

void PolledFolders::takeAnswers(const OnChange& onChange) {
    for (auto& [path, folder] : m_folders) {
        if (auto answer = folder.poller->takeAnswer())
            take(path, folder, std::move(*answer), onChange);
        else
            checkOverdue(path, folder, onChange);
    }
}

void PolledFolders::take(
    const std::string& path, Folder& folder, TreePoller::Answer answer, const OnChange& onChange) {
    if (!answer.failure.empty()) {
        qWarning() << "Could not look through folder: " << QFile::decodeName(path.c_str())
                   << QString::fromStdString(answer.failure);
        return;
    }
    folder.isOverdue = false;
    LoggedFolders::unanswering().remove(path);
    Change change{path, answer.snapshot.has_value(), 0, false};
    if (change.isThere) {
        change.fileID = answer.snapshot->identity.inode;
        change.needsSearch = std::exchange(folder.needsSearch, false) || !folder.isThere;
        const auto earlier = std::exchange(folder.last, std::move(answer.snapshot));
        if (!earlier)
            reportMissed(folder);
        else if (earlier->identity.device == folder.last->identity.device)
            folder.last->reportChanges(*earlier, m_events);
        else // A volume came or went at this place: what was on the other one is not deleted.
            change.needsSearch = true;
    } else {
        change.needsSearch = folder.isThere && folder.hasAnswered;
    }
    folder.hasAnswered = true;
    if (std::exchange(folder.isThere, change.isThere) != change.isThere || change.needsSearch)
        onChange(change);
}

void PolledFolders::checkOverdue(const std::string& path, Folder& folder, const OnChange& onChange) const {
    const auto since = folder.poller->waitsSince();
    if (folder.isOverdue || !since || Clock::now() < *since + m_settings.patience)
        return;
    folder.isOverdue = true;
    if (LoggedFolders::unanswering().add(path))
        qWarning() << "Folder does not answer. The others are watched on: "
                   << QFile::decodeName(path.c_str());
    // No search: it would wait for this folder as well.
    if (std::exchange(folder.isThere, false))
        onChange({path, false, 0, false});
}

std::optional<PolledFolders::Clock::time_point> PolledFolders::deadline() const {
    std::optional<Clock::time_point> next;
    for (const auto& [path, folder] : m_folders) {
        if (folder.isOverdue)
            continue;
        // The next look may begin at any time, and nobody says so.
        const auto moment = folder.poller->waitsSince().value_or(Clock::now()) + m_settings.patience;
        next = next ? std::min(*next, moment) : moment;
    }
    return next;
}

} // namespace Stemhaven
