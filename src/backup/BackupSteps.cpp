#include "backup/BackupSteps.h"

#include "app/errors/DbException.h"

#include <QDebug>

#include <utility>

namespace Stemhaven {

BackupSteps::BackupSteps(int count, BackupObserver observer)
    : m_count(count),
      m_observer(std::move(observer)) {}

void BackupSteps::next(const QString& text) {
    if (!tell(text, true))
        throw BackupCancelled();
}

void BackupSteps::nextWithoutWayBack(const QString& text) {
    tell(text, false);
}

bool BackupSteps::tell(const QString& text, bool canBeCancelled) {
    ++m_step;
    return !m_observer || m_observer({text, m_step, m_count, canBeCancelled});
}

BackupResult backupResult(
    const QString& title, const std::function<BackupResult()>& body,
    const std::function<void(BackupResult&)>& onFailure) {
    BackupResult result;
    result.title = title;
    const auto unforeseen = [&](const QString& reason) {
        qCritical().noquote() << title << reason;
        result.message = title + QLatin1Char('\n') + reason;
    };
    try {
        return body();
    } catch (const BackupCancelled&) {
        result.outcome = BackupResult::Outcome::Cancelled;
        result.title.clear();
    } catch (const BackupError& error) {
        qCritical().noquote() << error;
        result.message = error.message();
        result.advice = error.advice();
        if (!error.headline().isEmpty())
            result.title = error.headline();
    } catch (const DbException& error) {
        qCritical() << error;
        unforeseen(error.message());
    } catch (const Exception& error) {
        unforeseen(error.message());
    } catch (const std::exception& error) {
        unforeseen(QString::fromLocal8Bit(error.what()));
    } catch (...) {
        unforeseen(QStringLiteral("Unknown exception caught..."));
    }
    onFailure(result);
    return result;
}

} // namespace Stemhaven
