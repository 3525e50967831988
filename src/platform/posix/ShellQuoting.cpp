#include "platform/ShellQuoting.h"

namespace Stemhaven {

QString quotedForShell(const QString& text) {
    // All that has a meaning between double quotes.
    const QLatin1String special("\\$`\"");
    QString quoted = QStringLiteral("\"");
    for (const QChar character : text) {
        if (special.contains(character))
            quoted += QLatin1Char('\\');
        quoted += character;
    }
    return quoted + QLatin1Char('"');
}

QString singleQuotedForShell(const QString& text) {
    QString quoted = text;
    // Nothing has a meaning between single quotes but their end, so each one in the text stands outside of
    // them.
    quoted.replace(QLatin1Char('\''), QLatin1String("'\\''"));
    return QLatin1Char('\'') + quoted + QLatin1Char('\'');
}

} // namespace Stemhaven
