#include "ui/table/CellValue.h"

#include "ui/table/BoolDot.h"
#include "ui/table/ProgressBar.h"
#include "ui/table/StarRating.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QDebug>
#include <QLocale>
#include <QModelIndex>
#include <QVariant>

using Stemhaven::Format;

namespace {

//: A pattern of QLocale::toString() for a day
constexpr const char* dateFormat = QT_TRANSLATE_NOOP("CellValue", "MMM d, yyyy");
//: A pattern of QLocale::toString() for a day and a time of day
constexpr const char* dateTimeFormat = QT_TRANSLATE_NOOP("CellValue", "MMM d, yyyy h:mm A");
constexpr int maxStars = 5;

QVariant dateText(const QVariant& raw, const char* format, const char* failure, const QModelIndex& index) {
    if (raw.isNull())
        return {};
    bool ok = false;
    const auto seconds = static_cast<qint64>(raw.toULongLong(&ok));
    const auto date = QDateTime::fromSecsSinceEpoch(seconds);
    if (!ok || !date.isValid()) {
        qWarning() << failure << index.row() << "column:" << index.column();
        return {};
    }
    return QLocale().toString(date, QCoreApplication::translate("CellValue", format));
}

void warn(const char* failure, const QModelIndex& index) {
    qWarning() << failure << index.row() << " column:" << index.column();
}

QVariant dot(const QVariant& raw, const QModelIndex& index) {
    bool ok = raw.isNull();
    const int value = ok ? 0 : raw.toInt(&ok);
    if (ok)
        return QVariant::fromValue(BoolDot(value != 0));
    warn("Could not convert column to checkbox at index row:", index);
    return raw;
}

QVariant bar(const QVariant& raw, const QModelIndex& index) {
    bool ok = raw.isNull();
    const float value = ok ? 0.0F : raw.toFloat(&ok);
    if (ok)
        return QVariant::fromValue(ProgressBar(value));
    warn("Could not convert column to progress bar at index row:", index);
    return raw;
}

QVariant stars(const QVariant& raw, const QModelIndex& index) {
    bool ok = raw.isNull();
    const int value = ok ? 0 : raw.toInt(&ok);
    if (ok)
        return QVariant::fromValue(StarRating(value, maxStars));
    warn("Could not convert column to star rating at index row:", index);
    return raw;
}

template <typename Value>
void registerCellText() {
    if (!QMetaType::hasRegisteredConverterFunction<Value, QString>())
        QMetaType::registerConverter(&Value::accessibleText);
}

} // namespace

QVariant cellValue(const QVariant& raw, Format format, const QModelIndex& index) {
    switch (format) {
    case Format::DateTime:
        return dateText(raw, dateTimeFormat, "Could not convert column to datetime at index row:", index);
    case Format::Date:
        return dateText(raw, dateFormat, "Could not convert column to date at index row:", index);
    case Format::Boolean:
        return dot(raw, index);
    case Format::Progress:
        return bar(raw, index);
    case Format::StarRating:
        return stars(raw, index);
    case Format::Text:
        break;
    }
    return raw;
}

void registerCellTexts() {
    registerCellText<BoolDot>();
    registerCellText<ProgressBar>();
    registerCellText<StarRating>();
}
