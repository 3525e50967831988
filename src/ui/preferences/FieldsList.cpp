#include "ui/preferences/FieldsList.h"

#include <QKeyEvent>
#include <QScopedValueRollback>

#include <algorithm>

namespace {

constexpr int NameRole = Qt::UserRole;

} // namespace

FieldsList::FieldsList(QWidget* parent) : QListWidget(parent) {
    setDragDropMode(QAbstractItemView::InternalMove);
    setDefaultDropAction(Qt::MoveAction);
    setUniformItemSizes(true);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    connect(this, &QListWidget::itemChanged, this, &FieldsList::request);
    for (const auto signal : {&QAbstractItemModel::rowsInserted, &QAbstractItemModel::rowsRemoved})
        connect(model(), signal, this, &FieldsList::request);
    connect(model(), &QAbstractItemModel::rowsMoved, this, &FieldsList::request);
}

void FieldsList::setFields(const QList<Stemhaven::Field>& fields) {
    const QScopedValueRollback filling(m_isFilling, true);
    const int current = std::max(0, currentRow());
    clear();
    for (const auto& field : fields) {
        // The blanks at the end are the table's.
        auto* item = new QListWidgetItem(field.displayName.trimmed(), this);
        item->setData(NameRole, field.name);
        item->setFlags(
            Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsUserCheckable | Qt::ItemIsDragEnabled);
        item->setCheckState(field.visible != 0 ? Qt::Checked : Qt::Unchecked);
    }
    setCurrentRow(current);
}

QList<FieldsList::Row> FieldsList::fieldRows() const {
    QList<Row> rows;
    for (int row = 0; row < count(); ++row)
        rows.append({item(row)->data(NameRole).toString(), item(row)->checkState() == Qt::Checked});
    return rows;
}

/// A drag comes as a move, or as an insertion and a removal, with a change of the new row in between.
void FieldsList::request() {
    if (m_isFilling || m_isRequested)
        return;
    m_isRequested = true;
    QMetaObject::invokeMethod(
        this,
        [this] {
            m_isRequested = false;
            emit edited();
        },
        Qt::QueuedConnection);
}

void FieldsList::keyPressEvent(QKeyEvent* event) {
    const bool isArrow = event->key() == Qt::Key_Up || event->key() == Qt::Key_Down;
    if (isArrow && event->modifiers().testFlag(Qt::ControlModifier))
        moveCurrent(event->key() == Qt::Key_Up ? -1 : 1);
    else
        QListWidget::keyPressEvent(event);
}

void FieldsList::moveCurrent(int step) {
    const int from = currentRow();
    const int to = from + step;
    if (from < 0 || to < 0 || to >= count())
        return;
    insertItem(to, takeItem(from));
    setCurrentRow(to);
}
