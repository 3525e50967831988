#include "ui/actions/ProjectMenus.h"

#include "app/errors/Guarded.h"
#include "ui/CurrentFilter.h"
#include "ui/actions/AssociationMenu.h"
#include "ui/actions/ValueMenus.h"
#include "ui/actions/WindowActions.h"
#include "ui/details/SelectionSummary.h"
#include "ui/edits/SelectionEditor.h"

#include <QAction>
#include <QCoreApplication>
#include <QStatusTipEvent>

using Stemhaven::guarded;

ProjectMenus::ProjectMenus(
    WindowActions& actions, SelectionEditor& editor, const CurrentFilter& filter, QWidget& window)
    : QObject(&window),
      m_actions(actions),
      m_editor(editor),
      m_filter(filter),
      m_window(window),
      m_values(new ValueMenus(editor, window)) {
    connect(m_values, &ValueMenus::ratingRequested, this, &ProjectMenus::ratingRequested);
    for (const FilterType type : {FilterType::COLLECTIONS, FilterType::GENRES, FilterType::TAGS}) {
        auto* menu = new AssociationMenu(type, &window);
        menu->setEnabled(false);
        connect(menu, &AssociationMenu::associateRequested, this, [this](FilterType kind, qint64 id) {
            m_editor.associateProjectsWithFilter(kind, id, m_editor.selection());
        });
        connect(menu, &AssociationMenu::disassociateRequested, this, [this](FilterType kind, qint64 id) {
            m_editor.disassociateProjectsWithFilter(kind, id, m_editor.selection());
        });
        connect(menu, &AssociationMenu::newRequested, this, &ProjectMenus::newRequested);
        m_menus.append(menu);
    }
}

QList<QMenu*> ProjectMenus::associationMenus() const {
    return {m_menus.begin(), m_menus.end()};
}

QList<QMenu*> ProjectMenus::valueMenus() const {
    return m_values->menus();
}

void ProjectMenus::setEntries(const FolderTreeItemModel& entries) {
    m_values->setEntries(entries);
    for (AssociationMenu* menu : m_menus)
        menu->setEntries(entries.getEntries(menu->type()));
}

void ProjectMenus::setSelection(const SelectionSummary& summary, bool isMissing) {
    m_hasSelection = summary.count > 0;
    m_actions.enableForSelection(m_hasSelection, isMissing);
    // The details of a release are of one project.
    m_actions.release->setEnabled(summary.count == 1);
    m_actions.ignore->setChecked(summary.areAllIgnored());
    m_values->setSelection(summary);
    for (AssociationMenu* menu : std::as_const(m_menus)) {
        menu->setEnabled(m_hasSelection);
        menu->setCounts(summary.entryCounts.value(menu->type()), summary.count);
    }
}

void ProjectMenus::popUp(const QPoint& globalPosition) {
    if (!m_hasSelection)
        return;
    auto* menu = new QMenu(&m_window);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    // The tip of an entry in a sub-menu goes to the menu above it. The window would keep the tip before.
    connect(menu, &QMenu::hovered, this, [this](const QAction* action) {
        QStatusTipEvent tip(action->statusTip());
        QCoreApplication::sendEvent(&m_window, &tip);
    });
    menu->addActions({m_actions.open, m_actions.showInFinder, m_actions.showPackageContents});
    menu->addSeparator();
    for (AssociationMenu* association : std::as_const(m_menus))
        menu->addMenu(association);
    addRemovalFromFilter(*menu);
    menu->addSeparator();
    const QList<QMenu*> values = m_values->menus();
    for (QMenu* value : values)
        menu->addMenu(value);
    menu->addSeparator();
    menu->addActions({m_actions.release, m_actions.ignore, m_actions.deleteRecord});
    menu->popup(globalPosition);
}

void ProjectMenus::addRemovalFromFilter(QMenu& menu) {
    const FilterType type = m_filter.type();
    QString text;
    if (type == FilterType::COLLECTIONS)
        text = tr("Re&move from Collection");
    else if (type == FilterType::GENRES)
        text = tr("Re&move from Genre");
    else if (type == FilterType::TAGS)
        text = tr("Re&move from Tag");
    else
        return;
    connect(menu.addAction(text), &QAction::triggered, this, [this, type, id = m_filter.id()] {
        guarded(tr("Disassociating project with filter failed."), [&] {
            m_editor.disassociateProjectsWithFilter(type, id, m_editor.selection());
        });
    });
}
