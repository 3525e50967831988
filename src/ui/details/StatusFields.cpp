#include "ui/details/StatusFields.h"

#include "app/errors/Exception.h"
#include "app/errors/Guarded.h"
#include "ui/sidebar/FolderTreeItemModel.h"
#include "ui/widgets/Contrast.h"
#include "ui/widgets/ElidedTip.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QEvent>
#include <QFormLayout>
#include <QLabel>
#include <QMouseEvent>
#include <QSignalBlocker>
#include <QStyleOptionComboBox>

#include <algorithm>
#include <utility>

namespace {

struct Texts {
    const char* objectName;
    const char* label;
    const char* failureTitle;
    const char* noKey;
};

Texts textsOf(FilterType type) {
    switch (type) {
    case FilterType::ARRANGEMENT_STATUS:
        return {
            "arrangementCombo", QT_TRANSLATE_NOOP("StatusFields", "Arrangement"),
            QT_TRANSLATE_NOOP("StatusFields", "Updating arrangement status failed"),
            QT_TRANSLATE_NOOP(
                "StatusFields", "Could not retreive primary key for selected arrangement status!")};
    case FilterType::LYRICS_STATUS:
        return {
            "lyricsCombo", QT_TRANSLATE_NOOP("StatusFields", "Lyrics"),
            QT_TRANSLATE_NOOP("StatusFields", "Updating project lyrics status failed."),
            QT_TRANSLATE_NOOP(
                "StatusFields",
                "Could not retreive primary key for selected lyrics status! Type conversion failed...")};
    case FilterType::RECORDING_STATUS:
        return {
            "recordingCombo", QT_TRANSLATE_NOOP("StatusFields", "Recording"),
            QT_TRANSLATE_NOOP("StatusFields", "Updating project recording status failed."),
            QT_TRANSLATE_NOOP(
                "StatusFields",
                "Could not retreive primary key for selected recording status! Type conversion failed...")};
    default:
        return {
            "mixMasterCombo", QT_TRANSLATE_NOOP("StatusFields", "Mix/Master"),
            QT_TRANSLATE_NOOP("StatusFields", "Updating project mix/master status failed."),
            QT_TRANSLATE_NOOP(
                "StatusFields",
                "Could not retreive primary key for selected mix/master status! Type conversion failed...")};
    }
}

constexpr int widestList = 400;

/// The tool tip is what is chosen, where it is cut short.
void keepTip(QComboBox& combo) {
    QStyleOptionComboBox option;
    option.initFrom(&combo);
    const QRect place =
        combo.style()->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxEditField, &combo);
    const QString text = combo.currentText();
    constexpr int margin = 2; // on both sides of the text
    const bool fits = combo.fontMetrics().horizontalAdvance(text) <= place.width() - 2 * margin;
    combo.setToolTip(fits ? QString() : wrappingTip(text));
}

/// An open list would take any button for the one that chooses.
bool isOfOtherButton(const QEvent& event) {
    const bool isClick = event.type() == QEvent::MouseButtonPress ||
        event.type() == QEvent::MouseButtonRelease || event.type() == QEvent::MouseButtonDblClick;
    return isClick && static_cast<const QMouseEvent&>(event).button() != Qt::LeftButton;
}

} // namespace

StatusFields::StatusFields(QWidget* parent) : QWidget(parent) {
    constexpr int shortestEntry = 8; // in characters; a longer one is cut short rather than widen the pane

    auto* layout = new QFormLayout(this);
    layout->setContentsMargins({});
    layout->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
    for (const FilterType type : statusFilterTypes) {
        const Texts texts = textsOf(type);
        auto* combo = new QComboBox(this);
        combo->setObjectName(QLatin1String(texts.objectName));
        combo->setAccessibleName(tr(texts.label));
        combo->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
        combo->setMinimumContentsLength(shortestEntry);
        combo->installEventFilter(this);
        combo->view()->installEventFilter(this);
        combo->view()->viewport()->installEventFilter(this);
        connect(combo, &QComboBox::currentIndexChanged, this, [this, type] {
            Stemhaven::guarded(tr(textsOf(type).failureTitle), [&] { statusChosen(type); });
        });
        auto* label = new QLabel(tr(texts.label), this);
        Contrast::makeSecondary(*label);
        label->setBuddy(combo);
        // Or the layout puts it a little above the middle of its field.
        label->setMinimumHeight(combo->sizeHint().height());
        layout->addRow(label, combo);
        m_combos.insert(type, combo);
    }
}

void StatusFields::setEntries(const FolderTreeItemModel& entries) {
    for (const FilterType type : statusFilterTypes) {
        // A list that is open stays so.
        if (std::exchange(m_entries[type], entries.getEntries(type)) == m_entries[type])
            continue;
        QComboBox* combo = m_combos[type];
        const QSignalBlocker blocker(combo);
        combo->clear();
        for (const auto& entry : std::as_const(m_entries[type]))
            combo->addItem(entry.name, entry.id);
        // The open list has room for what the field cuts short.
        combo->view()->setMinimumWidth(std::min(combo->view()->sizeHintForColumn(0), widestList));
        choose(type);
    }
}

void StatusFields::setStatuses(const QMap<FilterType, std::optional<qint64>>& statuses) {
    m_statuses = statuses;
    for (const FilterType type : statusFilterTypes)
        choose(type);
}

void StatusFields::choose(FilterType type) {
    QComboBox* combo = m_combos[type];
    const QSignalBlocker blocker(combo);
    const std::optional<qint64> status = m_statuses.value(type, defaultStatusId);
    const QString mixed = status ? QString() : tr("(mixed)");
    combo->setPlaceholderText(mixed);
    combo->setAccessibleDescription(mixed);
    // Nothing is chosen where they differ, so that choosing any of the entries is a change.
    combo->setCurrentIndex(status ? combo->findData(*status) : -1);
}

void StatusFields::statusChosen(FilterType type) {
    bool isNumber = false;
    const qint64 id = m_combos[type]->currentData().toLongLong(&isNumber);
    if (!isNumber)
        throw Stemhaven::Exception(tr(textsOf(type).noKey));
    m_statuses[type] = id;
    emit edited(type, id);
}

bool StatusFields::eventFilter(QObject* watched, QEvent* event) {
    auto* combo = qobject_cast<QComboBox*>(watched);
    if (!combo) {
        // The Return key that chooses from an open list would open the project as well.
        if (event->type() == QEvent::ShortcutOverride)
            event->accept();
        return isOfOtherButton(*event);
    }
    if (event->type() == QEvent::Wheel) {
        // The wheel scrolls the pane; a status changed in passing would not be noticed.
        event->ignore();
        return true;
    }
    if (event->type() == QEvent::ToolTip)
        keepTip(*combo);
    return QWidget::eventFilter(watched, event);
}
