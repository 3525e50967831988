#include "ui/table/StarDelegate.h"

#include "ui/NotFound.h"
#include "ui/table/BoolDot.h"
#include "ui/table/CellAlignment.h"
#include "ui/table/ProgressBar.h"
#include "ui/table/ProjectsTableModel.h"
#include "ui/table/StarEditor.h"
#include "ui/table/StarRating.h"
#include "ui/widgets/Contrast.h"
#include "ui/widgets/ElidedTip.h"
#include "ui/widgets/TextOrder.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QHelpEvent>
#include <QPainter>
#include <QToolTip>

#include <cmath>

namespace {

/// The part of a cell that the base class paints below its text.
void paintBackground(QPainter* painter, const QStyleOptionViewItem& option) {
    const QStyle* style = option.widget ? option.widget->style() : QApplication::style();
    style->drawPrimitive(QStyle::PE_PanelItemViewItem, &option, painter, option.widget);
}

bool isDimmed(const QModelIndex& index) {
    return index.data(ProjectsTableModel::NotFoundRole).toBool();
}

/// The view leaves the palette of an inactive window's cells at the active colours.
QPalette cellPalette(const QStyleOptionViewItem& option) {
    QPalette palette = option.palette;
    if (palette.currentColorGroup() == QPalette::Active && !option.state.testFlag(QStyle::State_Active))
        palette.setCurrentColorGroup(QPalette::Inactive);
    return palette;
}

/// A dimmed row has one colour for its texts and its marks.
QPalette rowPalette(const QStyleOptionViewItem& option, const QModelIndex& index) {
    QPalette palette = cellPalette(option);
    if (!isDimmed(index))
        return palette;
    auto ground = QPalette::Base;
    if (option.state.testFlag(QStyle::State_Selected))
        ground = QPalette::Highlight;
    else if (option.features.testFlag(QStyleOptionViewItem::Alternate))
        ground = QPalette::AlternateBase;
    const QColor color = Contrast::dimmedText(palette, ground);
    palette.setColor(QPalette::Text, color);
    palette.setColor(QPalette::HighlightedText, color);
    return palette;
}

/// Where the keyboard is in a selected row; another one is marked as a whole.
void paintCurrentMark(QPainter* painter, const QStyleOptionViewItem& option) {
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(QPen(cellPalette(option).color(QPalette::HighlightedText), 1.0));
    painter->setBrush(Qt::NoBrush);
    painter->drawRoundedRect(QRectF(option.rect).adjusted(1.5, 3.5, -1.5, -3.5), 4.0, 4.0);
    painter->restore();
}

double rounded(double number) {
    constexpr double hundredths = 100;
    return std::round(number * hundredths) / hundredths;
}

/// The number that a cell stands for, where it does not show all of it.
QString hiddenNumber(const QVariant& value, const QLocale& locale) {
    if (value.canConvert<ProgressBar>())
        return value.toString();
    if (value.typeId() != QMetaType::Double || rounded(value.toDouble()) == value.toDouble())
        return {};
    return locale.toString(value.toDouble(), 'g', QLocale::FloatingPointShortest);
}

} // namespace

void StarDelegate::paint(
    QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const {
    const QVariant value = index.data(Qt::DisplayRole);
    const bool selected = option.state.testFlag(QStyle::State_Selected);
    const QPalette palette = rowPalette(option, index);
    const bool inTextColor = selected || isDimmed(index);
    painter->setLayoutDirection(option.direction);
    if (value.canConvert<StarRating>()) {
        paintBackground(painter, option);
        value.value<StarRating>().paint(
            painter, option.rect, palette, StarRating::EditMode::ReadOnly, inTextColor);
    } else if (value.canConvert<ProgressBar>()) {
        paintBackground(painter, option);
        value.value<ProgressBar>().paint(painter, palette, option.rect, inTextColor);
    } else if (value.canConvert<BoolDot>()) {
        paintBackground(painter, option);
        value.value<BoolDot>().paint(painter, palette, option.rect, inTextColor);
    } else {
        QStyledItemDelegate::paint(painter, option, index);
    }
    if (selected && option.state.testFlag(QStyle::State_HasFocus))
        paintCurrentMark(painter, option);
}

QSize StarDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const {
    const QVariant value = index.data(Qt::DisplayRole);
    if (value.canConvert<StarRating>())
        return value.value<StarRating>().sizeHint();
    if (value.canConvert<ProgressBar>())
        return value.value<ProgressBar>().sizeHint();
    if (value.canConvert<BoolDot>())
        return value.value<BoolDot>().sizeHint();
    return QStyledItemDelegate::sizeHint(option, index);
}

void StarDelegate::initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const {
    QStyledItemDelegate::initStyleOption(option, index);
    option->text = isolated(option->text, option->direction, TextOrder::OfItsOwn);
    option->displayAlignment = cellAlignment(index.data(Qt::DisplayRole));
    option->palette = rowPalette(*option, index);
    // The base class would mark the cell in rows that are not selected, too.
    option->state &= ~QStyle::State_HasFocus;
}

QString StarDelegate::displayText(const QVariant& value, const QLocale& locale) const {
    if (value.typeId() != QMetaType::Double)
        return QStyledItemDelegate::displayText(value, locale);
    return locale.toString(rounded(value.toDouble()), 'g', QLocale::FloatingPointShortest);
}

bool StarDelegate::helpEvent(
    QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
    const QModelIndex& index) {
    if (event->type() != QEvent::ToolTip)
        return false;
    const QVariant value = index.data(Qt::DisplayRole);
    QString tip = hiddenNumber(value, option.locale);
    QStyleOptionViewItem item(option);
    initStyleOption(&item, index);
    const bool isText = !value.canConvert<StarRating>() && !value.canConvert<BoolDot>();
    if (tip.isEmpty() && isText && isElided(*view, item))
        tip = wrappingTip(item.text);
    if (isDimmed(index))
        tip = tip.isEmpty() ? NotFound::text() : tip + wrappingTip(NotFound::text());
    if (tip.isEmpty())
        return false;
    QToolTip::showText(event->globalPos(), tip, view->viewport(), option.rect);
    return true;
}

QWidget* StarDelegate::createEditor(
    QWidget* parent, const QStyleOptionViewItem& option, const QModelIndex& index) const {
    if (!index.data(Qt::DisplayRole).canConvert<StarRating>())
        return QStyledItemDelegate::createEditor(parent, option, index);
    auto* editor = new StarEditor(parent);
    connect(editor, &StarEditor::editingFinished, this, &StarDelegate::commitAndCloseEditor);
    return editor;
}

void StarDelegate::setEditorData(QWidget* editor, const QModelIndex& index) const {
    const QVariant value = index.data(Qt::DisplayRole);
    auto* starEditor = qobject_cast<StarEditor*>(editor);
    if (starEditor && value.canConvert<StarRating>())
        starEditor->setStarRating(value.value<StarRating>());
    else
        QStyledItemDelegate::setEditorData(editor, index);
}

void StarDelegate::setModelData(QWidget* editor, QAbstractItemModel* model, const QModelIndex& index) const {
    auto* starEditor = qobject_cast<StarEditor*>(editor);
    if (starEditor && index.data(Qt::DisplayRole).canConvert<StarRating>())
        model->setData(index, QVariant::fromValue(starEditor->starRating()), Qt::EditRole);
    else
        QStyledItemDelegate::setModelData(editor, model, index);
}

void StarDelegate::commitAndCloseEditor() {
    auto* editor = qobject_cast<StarEditor*>(sender());
    emit commitData(editor);
    emit closeEditor(editor, QAbstractItemDelegate::NoHint);
}
