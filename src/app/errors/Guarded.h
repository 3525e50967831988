#pragma once

#include "app/errors/ErrorHandler.h"

#include <QString>

#include <functional>

/// The one place where failures of a user's action, a task's callback or an event's handler are caught by
/// kind.
namespace Stemhaven {

/// Runs the body of a user's action. What it throws is logged and shown to the user under title.
void guarded(const QString& title, const std::function<void()>& body);

/// Runs the body of a callback. What it throws is logged, each failure after the line context, and goes no
/// further. Returns whether body came to its end.
bool loggingFailures(const QString& context, const std::function<void()>& body);

} // namespace Stemhaven
