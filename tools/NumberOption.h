#pragma once

#include <QCommandLineParser>
#include <QString>

#include <stdexcept>

/// The value of an option that takes a number. Throws std::runtime_error, with a text for the user, where it
/// is no number or less than least.
inline int numberOption(const QCommandLineParser& parser, const QString& option, int least) {
    bool isNumber = false;
    const int value = parser.value(option).toInt(&isNumber);
    if (!isNumber || value < least)
        throw std::runtime_error(
            QStringLiteral("--%1 takes a number from %2").arg(option).arg(least).toStdString());
    return value;
}
