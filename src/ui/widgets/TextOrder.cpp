#include "ui/widgets/TextOrder.h"

QString isolated(const QString& text, Qt::LayoutDirection window, TextOrder order) {
    constexpr QChar leftToRightIsolate(0x2066);
    constexpr QChar firstStrongIsolate(0x2068);
    constexpr QChar endOfIsolate(0x2069);
    if (window != Qt::RightToLeft || order == TextOrder::OfTheWindow || text.isEmpty())
        return text;
    return (order == TextOrder::LeftToRight ? leftToRightIsolate : firstStrongIsolate) + text + endOfIsolate;
}
