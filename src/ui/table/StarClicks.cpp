#include "ui/table/StarClicks.h"

#include "ui/table/SelectionKeeper.h"
#include "ui/table/StarRating.h"

#include <QMouseEvent>
#include <QTableView>

#include <utility>

StarClicks::StarClicks(QTableView& table, const SelectionKeeper& projects, QObject* parent)
    : QObject(parent),
      m_table(table),
      m_projects(projects) {
    table.viewport()->installEventFilter(this);
}

bool StarClicks::eventFilter(QObject* watched, QEvent* event) {
    switch (event->type()) {
    case QEvent::MouseButtonPress:
        return press(*static_cast<QMouseEvent*>(event));
    case QEvent::MouseMove:
        // The table would begin to select rows from where it was pressed before.
        return m_isTaken;
    case QEvent::MouseButtonRelease:
        return release(*static_cast<QMouseEvent*>(event));
    case QEvent::MouseButtonDblClick: {
        const auto* mouse = static_cast<QMouseEvent*>(event);
        return mouse->button() == Qt::LeftButton && starAt(mouse->position().toPoint());
    }
    default:
        return QObject::eventFilter(watched, event);
    }
}

bool StarClicks::press(const QMouseEvent& event) {
    m_pressed.reset();
    m_isTaken = false;
    // With a key held it selects.
    if (event.button() != Qt::LeftButton || event.modifiers() != Qt::NoModifier)
        return false;
    const QPoint position = event.position().toPoint();
    m_pressed = starAt(position);
    m_isTaken = m_pressed && m_table.selectionModel()->isSelected(m_table.indexAt(position));
    return m_isTaken;
}

bool StarClicks::release(const QMouseEvent& event) {
    if (event.button() != Qt::LeftButton)
        return m_isTaken;
    const auto pressed = std::exchange(m_pressed, std::nullopt);
    const bool isTaken = std::exchange(m_isTaken, false);
    if (pressed && starAt(event.position().toPoint()) == pressed)
        emit clicked(pressed->project, pressed->stars);
    return isTaken;
}

std::optional<StarClicks::Star> StarClicks::starAt(const QPoint& position) const {
    const QModelIndex index = m_table.indexAt(position);
    const QVariant value = index.data();
    if (!value.canConvert<StarRating>())
        return std::nullopt;
    const int stars =
        value.value<StarRating>().starAt(position.x(), m_table.visualRect(index), m_table.layoutDirection());
    const qint64 project = m_projects.projectInRow(index.row());
    return stars > 0 && project >= 0 ? std::optional(Star{project, stars}) : std::nullopt;
}
