#include "ui/table/TableColumns.h"

#include "app/errors/Guarded.h"
#include "database/QueryBuilder.h"
#include "ui/table/ColumnLayout.h"
#include "ui/table/KeyEventTableView.h"
#include "ui/table/ProjectsTableModel.h"

#include <QHeaderView>
#include <QScopedValueRollback>

#include <algorithm>

using Stemhaven::Field;

TableColumns::TableColumns(
    KeyEventTableView& table, const ProjectsTableModel& model, Stemhaven::QueryBuilder& builder,
    QObject* parent)
    : QObject(parent),
      m_table(table),
      m_model(model),
      m_builder(builder) {
    ColumnLayout::restore(builder);
    auto* header = table.horizontalHeader();
    header->setSectionsMovable(true);
    connect(header, &QHeaderView::sectionMoved, this, [this] {
        if (!m_isArranging)
            takeOrderFromHeader();
    });
}

void TableColumns::restore() {
    m_builder.loadSettings();
    ColumnLayout::restore(m_builder);
}

void TableColumns::arrange() {
    const QScopedValueRollback arranging(m_isArranging, true);
    auto* header = m_table.horizontalHeader();
    const QList<Field> all = fields();
    for (int next = 0; const Field& field : all) {
        const int column = field.visible != 0 ? m_model.columnOf(field.name) : -1;
        if (column >= 0)
            header->moveSection(header->visualIndex(column), next++);
    }

    const QModelIndex current = m_table.currentIndex();
    const QString field = m_arranged.value(current.column());
    m_arranged.clear();
    for (int column = 0; column < header->count(); ++column)
        m_arranged.append(m_model.fieldAt(column));
    const auto column = static_cast<int>(m_arranged.indexOf(field));
    if (!current.isValid() || column == current.column())
        return;
    // A row that is gone is looked for elsewhere.
    const QModelIndex place = m_model.index(current.row(), column >= 0 ? column : m_model.nameColumn());
    if (place.isValid())
        m_table.moveCurrentSilently(place, QItemSelectionModel::NoUpdate);
}

void TableColumns::moveCurrent(int step) {
    auto* header = m_table.horizontalHeader();
    const QModelIndex current = m_table.currentIndex();
    if (!current.isValid())
        return;
    const int from = header->visualIndex(current.column());
    const int to = std::clamp(from + step, 0, header->count() - 1);
    if (from == to)
        return;
    header->moveSection(from, to);
    m_table.scrollTo(current);
}

QList<Field> TableColumns::fields() const {
    return m_builder.getFields();
}

bool TableColumns::canHide(const Field& field) const {
    return field.visible != 0 && m_builder.visibleFieldFormats().size() > 1;
}

void TableColumns::show(const QString& field, bool shown) {
    QList<Field> all = fields();
    const auto found =
        std::find_if(all.begin(), all.end(), [&](const Field& candidate) { return candidate.name == field; });
    if (found == all.end() || (found->visible != 0) == shown || (!shown && !canHide(*found)))
        return;
    found->visible = shown ? 1 : 0;
    apply(all);
}

/// The fields that are shown change places among themselves; hidden ones stay where they are.
void TableColumns::takeOrderFromHeader() {
    const auto* header = m_table.horizontalHeader();
    QList<Field> all = fields();
    QList<Field*> places;
    for (Field& field : all) {
        if (field.visible != 0)
            places.append(&field);
    }
    QList<Field> shown;
    for (const Field* place : std::as_const(places))
        shown.append(*place);
    // Rows that are on their way may have more columns than the header; these stay behind the others.
    const auto placeOf = [&](const Field& field) {
        const int column = m_model.columnOf(field.name);
        return column >= 0 ? header->visualIndex(column) : header->count();
    };
    std::stable_sort(
        shown.begin(), shown.end(), [&](const Field& a, const Field& b) { return placeOf(a) < placeOf(b); });
    for (qsizetype place = 0; place < shown.size(); ++place)
        *places[place] = shown[place];
    apply(all);
}

void TableColumns::apply(QList<Field> fields) {
    for (std::uint32_t order = 0; Field & field : fields)
        field.order = order++;
    Stemhaven::guarded(tr("Could not save column settings"), [&] {
        m_builder.setFields(fields);
        ColumnLayout::save(fields);
        m_builder.saveSettings();
        emit changed();
    });
}
