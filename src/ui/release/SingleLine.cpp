#include "ui/release/SingleLine.h"

#include <QRegularExpression>

#include <algorithm>

QValidator::State SingleLine::validate(QString& input, int& position) const {
    static const QRegularExpression breaks(QStringLiteral("\\R+"));
    static const QRegularExpression breaksAround(QStringLiteral("^\\R+|\\R+$"));
    if (!input.contains(breaks))
        return Acceptable;
    // What stands before the cursor stays before it.
    const auto shortened = [](QString text) {
        return text.replace(breaks, QStringLiteral(" "));
    };
    const auto isAtEnd = position >= input.size();
    QString line = input;
    line = shortened(line.remove(breaksAround));
    position = isAtEnd
        ? static_cast<int>(line.size())
        : std::min(static_cast<int>(shortened(input.left(position)).size()), static_cast<int>(line.size()));
    input = line;
    return Acceptable;
}
