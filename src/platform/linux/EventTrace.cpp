#include "platform/linux/EventTrace.h"

#include "platform/FileEventStream.h"

#include <QDebug>
#include <QFile>
#include <QLoggingCategory>
#include <QStringList>

#include <sys/inotify.h>

#include <algorithm>
#include <array>
#include <utility>

namespace Stemhaven {

namespace {

Q_LOGGING_CATEGORY(eventLog, "stemhaven.events", QtInfoMsg)

using Word = std::pair<std::uint32_t, const char*>;

constexpr std::array<Word, 16> maskWords{
    {{IN_ACCESS, "ACCESS"},
     {IN_MODIFY, "MODIFY"},
     {IN_ATTRIB, "ATTRIB"},
     {IN_CLOSE_WRITE, "CLOSE_WRITE"},
     {IN_CLOSE_NOWRITE, "CLOSE_NOWRITE"},
     {IN_OPEN, "OPEN"},
     {IN_MOVED_FROM, "MOVED_FROM"},
     {IN_MOVED_TO, "MOVED_TO"},
     {IN_CREATE, "CREATE"},
     {IN_DELETE, "DELETE"},
     {IN_DELETE_SELF, "DELETE_SELF"},
     {IN_MOVE_SELF, "MOVE_SELF"},
     {IN_UNMOUNT, "UNMOUNT"},
     {IN_Q_OVERFLOW, "Q_OVERFLOW"},
     {IN_IGNORED, "IGNORED"},
     {IN_ISDIR, "ISDIR"}}};

constexpr std::array<Word, 5> flagWords{
    {{FileEvent::MustScanSubDirs, "scan"},
     {FileEvent::ItemCreated, "created"},
     {FileEvent::ItemRemoved, "removed"},
     {FileEvent::ItemRenamed, "renamed"},
     {FileEvent::ItemModified, "modified"}}};

/// The names of the bits that are set, and the rest as a number.
template <std::size_t Size>
QString inWords(std::uint32_t bits, const std::array<Word, Size>& words) {
    QStringList names;
    for (const auto& [bit, name] : words) {
        if ((bits & bit) != 0)
            names.append(QLatin1String(name));
        bits &= ~bit;
    }
    if (bits != 0)
        names.append(QStringLiteral("0x%1").arg(bits, 0, 16));
    return names.join(QLatin1Char('|'));
}

QString decoded(const std::string& path) {
    return QFile::decodeName(path.c_str());
}

} // namespace

void EventTrace::noteSystemEvent(const RawEvent& event, const std::string& folder) {
    Step& step = next();
    step.isFromSystem = true;
    step.event = event;
    step.path = folder;
    logLive(step);
}

void EventTrace::noteFileEvent(
    const std::string& path, std::uint64_t fileID, std::uint32_t flags, std::uint64_t eventID) {
    Step& step = next();
    step.isFromSystem = false;
    step.path = path;
    step.fileID = fileID;
    step.flags = flags;
    step.eventID = eventID;
    logLive(step);
}

EventTrace::Step& EventTrace::next() {
    if (m_steps.size() < capacity) {
        m_steps.emplace_back();
        m_steps.back().time = Clock::now();
        return m_steps.back();
    }
    // The texts of the oldest step keep their memory for those of the new one.
    Step& step = m_steps[m_oldest];
    m_oldest = (m_oldest + 1) % capacity;
    step.time = Clock::now();
    return step;
}

void EventTrace::logLive(const Step& step) const {
    if (eventLog().isDebugEnabled())
        qCDebug(eventLog).noquote() << "File events:" << described(step);
}

void EventTrace::write(const QString& reason) {
    if (m_steps.empty())
        return;
    std::rotate(m_steps.begin(), m_steps.begin() + static_cast<std::ptrdiff_t>(m_oldest), m_steps.end());
    const auto now = Clock::now();
    qInfo().noquote() << reason << "The last" << m_steps.size()
                      << "steps of the file events, with the seconds since then:";
    for (const auto& step : m_steps) {
        const std::chrono::duration<double> age = now - step.time;
        qInfo().noquote() << QString::number(age.count(), 'f', 3) << described(step);
    }
    m_steps.clear();
    m_oldest = 0;
}

QString EventTrace::described(const Step& step) {
    QString text;
    QDebug line(&text);
    if (step.isFromSystem) {
        line.noquote() << "system:" << inWords(step.event.mask, maskWords) << "watch" << step.event.watch
                       << "cookie" << step.event.cookie;
        line.quote() << decoded(step.path) << decoded(step.event.name);
    } else {
        line.noquote() << "told:" << inWords(step.flags, flagWords) << "fileID" << step.fileID << "eventID"
                       << step.eventID;
        line.quote() << decoded(step.path);
    }
    // A blank follows each part.
    return text.trimmed();
}

} // namespace Stemhaven
