#include "database/SimpleTask.h"

#include "app/errors/Exception.h"

#include <QDebug>

#include <utility>

namespace Stemhaven {

SimpleTask::SimpleTask(std::function<void()> function) : Task(nullptr), m_function(std::move(function)) {}

unsigned short SimpleTask::exec() {
    try {
        m_function();
    } catch (const Exception& error) {
        return postOrLogError(QStringLiteral("Exception caught in SimpleTask::exec()!"), error);
    } catch (const std::exception& error) {
        qCritical() << "std::exception caught in SimpleTask::exec()!" << error.what();
        return postError(Exception(QString::fromUtf8(error.what())));
    } catch (...) {
        qCritical() << "Unknown exception caught in SimpleTask::exec()!";
        return postError(Exception(QStringLiteral("Unknown exception caught...")));
    }
    return postSuccess();
}

} // namespace Stemhaven
