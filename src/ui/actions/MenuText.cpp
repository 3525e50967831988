#include "ui/actions/MenuText.h"

QString menuText(const QString& name) {
    constexpr int longest = 60;
    QString text = name.size() <= longest ? name : name.left(longest) + QStringLiteral("…");
    text.replace(QLatin1Char('\n'), QLatin1Char(' ')).replace(QLatin1Char('\t'), QLatin1Char(' '));
    return text.replace(QLatin1Char('&'), QLatin1String("&&"));
}
