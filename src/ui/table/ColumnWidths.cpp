#include "ui/table/ColumnWidths.h"

#include "database/QueryBuilder.h"

#include <QEvent>
#include <QHeaderView>
#include <QTableView>

#include <algorithm>

namespace {

constexpr int sampledRows = 48;
// Rows outside the sample may be a little wider.
constexpr int slack = 8;
constexpr int widestContents = 320;
constexpr int narrowestNames = 240;

} // namespace

ColumnWidths::ColumnWidths(QTableView& table, const Stemhaven::QueryBuilder& builder, QObject* parent)
    : QObject(parent),
      m_table(table),
      m_builder(builder) {
    table.horizontalHeader()->setResizeContentsPrecision(sampledRows);
    table.viewport()->installEventFilter(this);
}

void ColumnWidths::fit() {
    m_table.resizeColumnsToContents();
    auto* header = m_table.horizontalHeader();
    for (int column = 0; column < header->count(); ++column)
        header->resizeSection(column, std::min(header->sectionSize(column) + slack, widestContents));

    m_nameColumn = m_builder.fieldIndexByName(QStringLiteral("name"));
    if (m_nameColumn >= header->count())
        m_nameColumn = -1;
    stretchNames();
}

void ColumnWidths::stretchNames() {
    if (m_nameColumn < 0)
        return;
    auto* header = m_table.horizontalHeader();
    const int others = header->length() - header->sectionSize(m_nameColumn);
    header->resizeSection(m_nameColumn, std::max(narrowestNames, m_table.viewport()->width() - others));
}

bool ColumnWidths::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Resize)
        stretchNames();
    return QObject::eventFilter(watched, event);
}
