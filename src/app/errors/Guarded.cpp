#include "app/errors/Guarded.h"

#include "app/errors/DbException.h"
#include "app/errors/Exception.h"
#include "app/errors/IOException.h"

#include <QDebug>

#include <exception>

namespace Stemhaven {

namespace {

void log(const Exception& error) {
    qCritical() << error;
}

void log(const DbException& error) {
    qCritical() << error;
}

void log(const std::exception& error) {
    qCritical() << error.what();
}

/// Calls body, and onFailure with what it throws, as the most special kind that the program tells apart.
/// Returns whether body came to its end.
template <typename OnFailure>
bool catching(const QString& headline, const std::function<void()>& body, const OnFailure& onFailure) {
    const auto failed = [&](const auto& error) {
        qCritical().noquote() << headline;
        log(error);
        onFailure(error);
        return false;
    };
    try {
        body();
        return true;
    } catch (const IOException& error) {
        return failed(error);
    } catch (const DbException& error) {
        return failed(error);
    } catch (const Exception& error) {
        return failed(error);
    } catch (const std::exception& error) {
        return failed(error);
    } catch (...) {
        return failed(Exception(QStringLiteral("Unknown exception caught...")));
    }
}

} // namespace

void guarded(const QString& title, const std::function<void()>& body) {
    catching(title, body, [&](const auto& error) {
        ErrorHandler::instance().reportError(title, error, QtCriticalMsg);
    });
}

bool loggingFailures(const QString& context, const std::function<void()>& body) {
    return catching(context, body, [](const auto&) {});
}

} // namespace Stemhaven
