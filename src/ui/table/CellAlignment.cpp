#include "ui/table/CellAlignment.h"

#include "ui/table/BoolDot.h"

#include <QVariant>

Qt::Alignment cellAlignment(const QVariant& value) {
    switch (value.typeId()) {
    case QMetaType::Int:
    case QMetaType::LongLong:
    case QMetaType::Double:
        return Qt::AlignRight | Qt::AlignVCenter;
    default:
        break;
    }
    if (value.canConvert<BoolDot>())
        return Qt::AlignCenter;
    return Qt::AlignLeft | Qt::AlignVCenter;
}
