#include "ui/Backups.h"

#include "app/SettingsKeys.h"
#include "app/logging/Log.h"
#include "backup/BackupDialog.h"
#include "database/TaskManager.h"
#include "monitor/ProjectMonitor.h"
#include "ui/edits/EditHistory.h"

#include <QCoreApplication>
#include <QDialog>
#include <QSettings>

#include <chrono>
#include <utility>

namespace {

constexpr std::chrono::milliseconds betweenLooks{20};

} // namespace

Backups::Backups(
    Stemhaven::TaskManager& tasks, Stemhaven::ProjectMonitor& monitor, EditHistory* history, QWidget& window,
    Monitoring monitoring)
    : QObject(&window),
      m_tasks(tasks),
      m_monitor(monitor),
      m_history(history),
      m_window(window),
      m_monitoring(monitoring) {
    m_untilRest.setInterval(betweenLooks);
}

void Backups::exportBackup() {
    BackupDialog dialog(BackupDialog::Type::Export, m_tasks, &m_window);
    connect(&dialog, &BackupDialog::begun, this, [this] { emit begun(tr("A backup is being made…")); });
    connect(&dialog, &BackupDialog::ended, this, &Backups::ended);
    run(dialog);
}

void Backups::importBackup() {
    BackupDialog dialog(BackupDialog::Type::Import, m_tasks, &m_window);
    dialog.setPreparation(
        [this, &dialog](const std::function<void()>& done) { prepareImport(dialog.path(), done); });
    connect(&dialog, &BackupDialog::begun, this, [this] { emit begun(tr("A backup is being imported…")); });
    connect(&dialog, &BackupDialog::ended, this, &Backups::endImport);
    run(dialog);
}

void Backups::run(BackupDialog& dialog) {
    m_dialog = &dialog;
    dialog.exec();
    // Whoever has asked the windows to close, at the end of the session say, was refused meanwhile.
    if (dialog.wasToBeClosed())
        QCoreApplication::quit();
}

/// Whatever is queued when the databases are closed would be done to the imported ones.
void Backups::prepareImport(const QString& file, const std::function<void()>& whenAtRest) {
    emit aboutToImport(file);
    hideDialogs();
    m_monitor.suspend();
    m_untilRest.disconnect(this);
    connect(&m_untilRest, &QTimer::timeout, this, [this, whenAtRest] {
        const bool isWriting = m_history && m_history->isWriting();
        if (isWriting || !m_monitor.isAtRest() || !m_tasks.isIdle())
            return;
        m_untilRest.stop();
        whenAtRest();
    });
    m_untilRest.start();
}

/// What is being typed in them is an edit once they have lost the keyboard.
void Backups::hideDialogs() {
    m_hidden.clear();
    const auto dialogs = m_window.findChildren<QDialog*>();
    for (auto* dialog : dialogs) {
        if (dialog == m_dialog || !dialog->isVisible())
            continue;
        dialog->hide();
        m_hidden.append(dialog);
    }
}

void Backups::endImport(bool succeeded) {
    m_untilRest.stop();
    for (const auto& dialog : std::exchange(m_hidden, {})) {
        // After an import they hold what belongs to the catalogue of before.
        if (dialog && succeeded)
            dialog->reject();
        else if (dialog)
            dialog->show();
    }
    if (!succeeded) {
        m_monitor.resume();
        emit ended();
        return;
    }
    if (m_history)
        m_history->clear();
    Logging::Log::setLevel(Logging::Log::levelOf(QSettings().value(Stemhaven::SettingsKeys::logLevel)));
    emit imported();
    m_monitor.resumeWithOthers(m_monitoring == Monitoring::Begins);
    emit ended();
}
