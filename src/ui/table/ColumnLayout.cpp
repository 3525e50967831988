#include "ui/table/ColumnLayout.h"

#include "app/SettingsKeys.h"
#include "database/DerivedFields.h"
#include "database/QueryBuilder.h"

#include <QSettings>
#include <QStringList>

#include <algorithm>
#include <utility>

using Stemhaven::Field;
namespace SettingsKeys = Stemhaven::SettingsKeys;

namespace {

/// Before the name of a field that is hidden; no field's name begins with it.
constexpr QLatin1Char hiddenMark('-');

/// Of what is shown only as much as fits into a window of usual width.
QStringList firstByDefault() {
    return {"progress",    "name", "-release_name", "-artist",        "-album",
            "star_rating", "bpm",  "song_key",      "song_signature", "last_modified"};
}

/// Takes the field of that name out of the fields; one without a name where there is none.
Field take(QList<Field>& fields, const QString& name) {
    const auto found =
        std::find_if(fields.begin(), fields.end(), [&](const Field& field) { return field.name == name; });
    return found == fields.end() ? Field() : fields.takeAt(found - fields.begin());
}

/// The fields in the order of the entries, the others behind them. Empty where none would be shown.
QList<Field> arranged(QList<Field> others, const QStringList& entries) {
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
    return anyShown ? fields + others : QList<Field>();
}

} // namespace

void ColumnLayout::save(const QList<Field>& fields) {
    QStringList entries;
    for (const Field& field : fields)
        entries.append(field.visible != 0 ? field.name : hiddenMark + field.name);
    QSettings().setValue(SettingsKeys::columnLayout, entries);
}

void ColumnLayout::restore(Stemhaven::QueryBuilder& builder) {
    const QSettings settings;
    const QList<Field> all = builder.getFields() + Stemhaven::derivedFields();
    QList<Field> fields = arranged(all, settings.value(SettingsKeys::columnLayout).toStringList());
    if (fields.isEmpty() && !settings.childGroups().contains(SettingsKeys::fields))
        fields = arranged(all, firstByDefault());
    if (fields.isEmpty())
        fields = all;
    for (std::uint32_t order = 0; Field & field : fields)
        field.order = order++;
    builder.setFields(fields);
}
