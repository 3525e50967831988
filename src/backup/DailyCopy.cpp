#include "backup/DailyCopy.h"

#include "app/errors/Guarded.h"
#include "backup/DatabaseCopies.h"

#include <QDateTime>
#include <QtConcurrent/QtConcurrentRun>

#include <utility>

namespace Stemhaven {

DailyCopy::DailyCopy(LiveFiles live, std::function<bool()> isQuiet, std::chrono::milliseconds interval)
    : m_live(std::move(live)),
      m_isQuiet(std::move(isQuiet)) {
    QObject::connect(&m_timer, &QTimer::timeout, [this] { copyIfDue(); });
    m_timer.start(interval);
}

DailyCopy::~DailyCopy() {
    m_isEnding = true;
    m_copying.waitForFinished();
}

void DailyCopy::copyIfDue() {
    if (m_copying.isRunning() || !m_isQuiet())
        return;
    m_copying = QtConcurrent::run([this] {
        loggingFailures(QStringLiteral("Could not copy the databases aside."), [&] {
            const std::unique_lock lock(liveFilesMutex(), std::try_to_lock);
            if (!lock)
                return;
            const DatabaseCopies copies(m_live, [this] { return m_isEnding.load(); });
            const auto now = QDateTime::currentDateTime();
            if (copies.isDue(now))
                copies.copyAside(now);
        });
    });
}

} // namespace Stemhaven
