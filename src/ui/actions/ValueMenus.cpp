#include "ui/actions/ValueMenus.h"

#include "app/errors/Guarded.h"
#include "ui/actions/MenuText.h"
#include "ui/actions/ValueMenu.h"
#include "ui/details/SelectionSummary.h"
#include "ui/edits/SelectionEditor.h"

#include <array>
#include <utility>

using Stemhaven::guarded;

namespace {

/// By the number of stars.
constexpr std::array ratings{
    QT_TRANSLATE_NOOP("ValueMenus", "&No Stars"), QT_TRANSLATE_NOOP("ValueMenus", "&1 Star"),
    QT_TRANSLATE_NOOP("ValueMenus", "&2 Stars"),  QT_TRANSLATE_NOOP("ValueMenus", "&3 Stars"),
    QT_TRANSLATE_NOOP("ValueMenus", "&4 Stars"),  QT_TRANSLATE_NOOP("ValueMenus", "&5 Stars")};

struct StatusTexts {
    const char* title;
    const char* failureTitle;
};

StatusTexts textsOf(FilterType type) {
    switch (type) {
    case FilterType::ARRANGEMENT_STATUS:
        return {
            QT_TRANSLATE_NOOP("ValueMenus", "&Arrangement"),
            QT_TRANSLATE_NOOP("ValueMenus", "Could not save arrangement status")};
    case FilterType::LYRICS_STATUS:
        return {
            QT_TRANSLATE_NOOP("ValueMenus", "&Lyrics"),
            QT_TRANSLATE_NOOP("ValueMenus", "Could not save lyrics status")};
    case FilterType::RECORDING_STATUS:
        return {
            QT_TRANSLATE_NOOP("ValueMenus", "&Recording"),
            QT_TRANSLATE_NOOP("ValueMenus", "Could not save recording status")};
    default:
        return {
            QT_TRANSLATE_NOOP("ValueMenus", "&Mix/Master"),
            QT_TRANSLATE_NOOP("ValueMenus", "Could not save mix/master status")};
    }
}

} // namespace

ValueMenus::ValueMenus(SelectionEditor& editor, QWidget& window)
    : QObject(&window),
      m_editor(editor),
      m_rating(makeRating(window)),
      m_progress(makeProgress(window)),
      m_menus{m_rating, m_progress, makeStatuses(window)} {
    for (QMenu* menu : std::as_const(m_menus))
        menu->setEnabled(false);
}

ValueMenu* ValueMenus::makeRating(QWidget& window) {
    auto* menu = new ValueMenu(tr("Rati&ng"), &window);
    for (int stars = 0; stars < static_cast<int>(ratings.size()); ++stars) {
        QAction* action = menu->addValue(tr(ratings.at(static_cast<std::size_t>(stars))), stars);
        action->setShortcut(QKeySequence(Qt::CTRL | static_cast<Qt::Key>(Qt::Key_0 + stars)));
        // The key counts also where the menu is off, since the details of what is selected come later.
        window.addAction(action);
    }
    connect(menu, &ValueMenu::chosen, this, [this](qint64 stars) {
        guarded(tr("Could not save star rating"), [&] { emit ratingRequested(static_cast<int>(stars)); });
    });
    return menu;
}

ValueMenu* ValueMenus::makeProgress(QWidget& window) {
    auto* menu = new ValueMenu(tr("Progr&ess"), &window);
    for (const int percent : {0, 25, 50, 75, 100})
        menu->addValue(tr("%1%").arg(percent), percent);
    connect(menu, &ValueMenu::chosen, this, [this](qint64 percent) {
        guarded(tr("Setting project progress failed."), [&] {
            m_editor.setProgressByMenu(static_cast<int>(percent));
        });
    });
    return menu;
}

QMenu* ValueMenus::makeStatuses(QWidget& window) {
    auto* menu = new QMenu(tr("St&atus"), &window);
    for (const FilterType type : statusFilterTypes) {
        auto* status = new ValueMenu(tr(textsOf(type).title), &window);
        connect(status, &ValueMenu::chosen, this, [this, type](qint64 id) {
            guarded(tr(textsOf(type).failureTitle), [&] { m_editor.setStatusByMenu(type, id); });
        });
        menu->addMenu(status);
        m_statuses.insert(type, status);
    }
    return menu;
}

void ValueMenus::setEntries(const FolderTreeItemModel& entries) {
    for (auto status = m_statuses.cbegin(); status != m_statuses.cend(); ++status) {
        const auto present = entries.getEntries(status.key());
        // A menu that is open stays as it is.
        if (std::exchange(m_entries[status.key()], present) == present)
            continue;
        (*status)->removeValues();
        for (const auto& entry : present)
            (*status)->addValue(menuText(entry.name), entry.id);
    }
}

void ValueMenus::setSelection(const SelectionSummary& summary) {
    for (QMenu* menu : std::as_const(m_menus))
        menu->setEnabled(summary.count > 0);
    m_rating->setPresent(summary.presentStars);
    m_progress->setPresent(summary.presentPercents);
    for (auto status = m_statuses.cbegin(); status != m_statuses.cend(); ++status)
        (*status)->setPresent(summary.presentStatuses.value(status.key()));
}
