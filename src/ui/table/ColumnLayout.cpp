#include "ui/table/ColumnLayout.h"

#include "app/SettingsKeys.h"
#include "database/QueryBuilder.h"

#include <QSettings>
#include <QStringList>

#include <algorithm>
#include <utility>

using Stemhaven::Field;

namespace {

/// Before the name of a field that is hidden; no field's name begins with it.
constexpr QLatin1Char hiddenMark('-');

/// Takes the field of that name out of the fields; one without a name where there is none.
Field take(QList<Field>& fields, const QString& name) {
    const auto found =
        std::find_if(fields.begin(), fields.end(), [&](const Field& field) { return field.name == name; });
    return found == fields.end() ? Field() : fields.takeAt(found - fields.begin());
}

} // namespace

void ColumnLayout::save(const QList<Field>& fields) {
    QStringList entries;
    for (const Field& field : fields)
        entries.append(field.visible != 0 ? field.name : hiddenMark + field.name);
    QSettings().setValue(Stemhaven::SettingsKeys::columnLayout, entries);
}

void ColumnLayout::restore(Stemhaven::QueryBuilder& builder) {
    const QStringList entries = QSettings().value(Stemhaven::SettingsKeys::columnLayout).toStringList();
    QList<Field> others = builder.getFields();
    QList<Field> fields;
    for (const QString& entry : entries) {
        const bool isHidden = entry.startsWith(hiddenMark);
        // A name that stands there twice is taken once.
        Field field = take(others, isHidden ? entry.mid(1) : entry);
        if (field.name.isEmpty())
            continue;
        field.visible = isHidden ? 0 : 1;
        fields.append(field);
    }
    const bool anyShown =
        std::any_of(fields.cbegin(), fields.cend(), [](const Field& field) { return field.visible != 0; });
    if (!anyShown)
        return;
    fields += others;
    for (std::uint32_t order = 0; Field & field : fields)
        field.order = order++;
    builder.setFields(fields);
}
