#include "monitor/ReplayPosition.h"

#include "app/SettingsKeys.h"
#include "platform/FileEventStream.h"

#include <QDebug>
#include <QSettings>

#include <mutex>

namespace Stemhaven::ReplayPosition {

namespace {

/// Held from the look at a setting to its change.
std::mutex& settingsMutex() {
    static std::mutex mutex;
    return mutex;
}

} // namespace

unsigned long long stored() {
    const std::lock_guard lock(settingsMutex());
    bool converted = false;
    const auto id = QSettings().value(SettingsKeys::lastEventId).toULongLong(&converted);
    return converted ? id : FileWatchRequest::sinceNow;
}

void advanceTo(unsigned long long id) {
    const std::lock_guard lock(settingsMutex());
    QSettings settings;
    if (!settings.contains(SettingsKeys::lastEventId) ||
        settings.value(SettingsKeys::lastEventId).toULongLong() < id)
        settings.setValue(SettingsKeys::lastEventId, static_cast<qulonglong>(id));
}

void adopt(unsigned long long present) {
    const auto id = stored();
    const std::lock_guard lock(settingsMutex());
    if (id > present)
        QSettings().setValue(SettingsKeys::lastEventId, 0ULL);
}

void settle(long long oldestUnresolved) {
    constexpr unsigned mostAttempts = 2;
    const std::lock_guard lock(settingsMutex());
    QSettings settings;
    if (oldestUnresolved < 0) {
        settings.setValue(SettingsKeys::eventCatchupAttempts, 0U);
        return;
    }
    bool converted = false;
    unsigned attempts = settings.value(SettingsKeys::eventCatchupAttempts, 0U).toUInt(&converted);
    if (!converted) {
        qCritical() << "Failed to read and convert 'eventCatchupAttempts' settings! Defaultinig to 0";
        attempts = 0;
    }
    if (attempts > mostAttempts)
        return;
    qDebug() << "ProjectMonitor: Found unhandled moved/renamed paths. Rolling back lastEventID to replay on "
                "startup...";
    settings.setValue(SettingsKeys::lastEventId, static_cast<qulonglong>(oldestUnresolved));
    settings.setValue(SettingsKeys::eventCatchupAttempts, attempts + 1);
}

bool searchWasInProgress() {
    const std::lock_guard lock(settingsMutex());
    return QSettings().value(SettingsKeys::searchWasInProgress, false).toBool();
}

void rememberSearch(bool isInProgress) {
    const std::lock_guard lock(settingsMutex());
    QSettings().setValue(SettingsKeys::searchWasInProgress, isInProgress);
}

} // namespace Stemhaven::ReplayPosition
