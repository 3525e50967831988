#include "ui/preferences/ColumnsPage.h"

#include "app/SettingsKeys.h"
#include "app/errors/Exception.h"
#include "app/errors/Guarded.h"
#include "database/QueryBuilder.h"
#include "ui/preferences/FieldsList.h"
#include "ui/table/ColumnLayout.h"
#include "ui/widgets/Contrast.h"
#include "ui/widgets/PageHeading.h"

#include <QKeySequence>
#include <QLabel>
#include <QSettings>
#include <QVBoxLayout>

#include <algorithm>

using Stemhaven::Field;
namespace SettingsKeys = Stemhaven::SettingsKeys;

ColumnsPage::ColumnsPage(Stemhaven::QueryBuilder& builder, QWidget* parent)
    : QWidget(parent),
      m_builder(builder),
      m_list(new FieldsList(this)) {
    m_list->setObjectName(QStringLiteral("fieldsListWidget"));
    m_list->setAccessibleName(tr("Columns"));
    const auto native = [](Qt::Key key) {
        return QKeySequence(Qt::CTRL | key).toString(QKeySequence::NativeText);
    };
    auto* keys = new QLabel(tr("The space bar shows or hides the selected column, %1 and %2 move it.")
                                .arg(native(Qt::Key_Up), native(Qt::Key_Down)));
    keys->setWordWrap(true);
    m_list->setAccessibleDescription(keys->text());
    Contrast::makeSecondary(*keys);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(new PageHeading(
        tr("Table"),
        tr("Select which columns are visible. Invisible columns are not used for search results. Dragging a "
           "row will rearrange the column order.")));
    layout->addWidget(m_list, 1);
    layout->addWidget(keys);
    setFocusProxy(m_list);
    showFields();
    connect(m_list, &FieldsList::edited, this, [this] {
        Stemhaven::guarded(tr("Could not save column settings"), [this] { store(); });
    });
}

void ColumnsPage::showFields() {
    m_list->setFields(m_builder.getFields());
}

void ColumnsPage::store() {
    const auto before = m_builder.getFields();
    QList<Field> fields;
    const auto rows = m_list->fieldRows();
    for (const auto& row : rows) {
        const auto known = std::find_if(
            before.begin(), before.end(), [&](const Field& field) { return field.name == row.name; });
        if (known == before.end())
            throw Stemhaven::Exception(tr("Column index could not be retreived from list!"));
        fields.append(*known);
        fields.last().order = static_cast<unsigned int>(fields.size() - 1);
        fields.last().visible = row.isChecked ? 1 : 0;
    }
    m_builder.setFields(fields);
    m_builder.clearSorting();
    QSettings settings;
    for (const auto& key :
         {SettingsKeys::lastSortOrderName, SettingsKeys::lastSortOrderIndex, SettingsKeys::lastSortOrder})
        settings.setValue(key, QString());
    m_builder.saveSettings();
    ColumnLayout::save(fields);
    emit columnsChanged();
}
