#include "ui/table/ColumnWidths.h"

#include "app/SettingsKeys.h"
#include "ui/table/ProjectsTableModel.h"
#include "ui/table/StarRating.h"

#include <QEvent>
#include <QHeaderView>
#include <QScopedValueRollback>
#include <QTableView>

#include <algorithm>

namespace {

constexpr int sampledRows = 48;
// Rows outside the sample may be a little wider.
constexpr int slack = 8;
constexpr int widestContents = 320;
constexpr int narrowestNames = 184;
constexpr int widestChosen = 4000;

} // namespace

ColumnWidths::ColumnWidths(QTableView& table, const ProjectsTableModel& model, QObject* parent)
    : QObject(parent),
      m_table(table),
      m_model(model) {
    m_settings.beginGroup(Stemhaven::SettingsKeys::columnWidths);
    restore();
    auto* header = table.horizontalHeader();
    header->setResizeContentsPrecision(sampledRows);
    connect(header, &QHeaderView::sectionResized, this, [this](int column, int, int width) {
        remember(column, width);
    });
    connect(header, &QHeaderView::sectionHandleDoubleClicked, this, &ColumnWidths::forget);
    table.viewport()->installEventFilter(this);
}

void ColumnWidths::restore() {
    m_chosen.clear();
    const QStringList names = m_settings.childKeys();
    for (const QString& name : names) {
        if (const int width = m_settings.value(name).toInt(); width > 0)
            m_chosen[name] = std::min(width, widestChosen);
    }
}

void ColumnWidths::fit() {
    const QScopedValueRollback fitting(m_isFitting, true);
    m_table.resizeColumnsToContents();
    auto* header = m_table.horizontalHeader();
    m_nameColumn = m_model.columnOf(QStringLiteral("name"));
    if (m_chosen.contains(m_model.fieldAt(m_nameColumn)))
        m_nameColumn = -1;
    for (int column = 0; column < header->count(); ++column) {
        const auto chosen = m_chosen.constFind(m_model.fieldAt(column));
        if (chosen != m_chosen.constEnd())
            header->resizeSection(column, *chosen);
        else
            fitContents(column);
    }
    stretchNames();
}

void ColumnWidths::fitContents(int column) {
    auto* header = m_table.horizontalHeader();
    // Stars are as wide in every row, and would leave the line of their title.
    const bool isStars = m_table.model()->index(0, column).data().canConvert<StarRating>();
    const int width = header->sectionSize(column) + (isStars ? 0 : slack);
    header->resizeSection(column, std::min(width, widestContents));
}

void ColumnWidths::stretchNames() {
    if (m_nameColumn < 0)
        return;
    const QScopedValueRollback fitting(m_isFitting, true);
    auto* header = m_table.horizontalHeader();
    const int others = header->length() - header->sectionSize(m_nameColumn);
    header->resizeSection(m_nameColumn, std::max(narrowestNames, m_table.viewport()->width() - others));
}

void ColumnWidths::remember(int column, int width) {
    const QString name = m_model.fieldAt(column);
    if (m_isFitting || name.isEmpty() || width <= 0)
        return;
    m_chosen[name] = width;
    m_settings.setValue(name, width);
    if (column == m_nameColumn)
        m_nameColumn = -1;
}

void ColumnWidths::forget(int column) {
    const QString name = m_model.fieldAt(column);
    if (name.isEmpty())
        return;
    m_chosen.remove(name);
    m_settings.remove(name);
    fit();
}

bool ColumnWidths::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Resize)
        stretchNames();
    return QObject::eventFilter(watched, event);
}
