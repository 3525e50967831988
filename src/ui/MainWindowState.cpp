// What the window shows, and how, from one start to the next.

#include "app/SettingsKeys.h"
#include "ui/CurrentFilter.h"
#include "ui/MainWindow.h"
#include "ui/SidePanes.h"
#include "ui/actions/WindowActions.h"
#include "ui/release/Releases.h"
#include "ui/sidebar/FilterSidebar.h"
#include "ui/table/ProjectsPane.h"
#include "ui/widgets/ScreenFitting.h"

#include <QAction>
#include <QDebug>
#include <QLayout>
#include <QSettings>

namespace SettingsKeys = Stemhaven::SettingsKeys;

namespace {

constexpr QSize initialSize{1440, 860};

} // namespace

void MainWindow::restoreState() {
    qInfo() << "Restoring window state...";
    const QSettings settings;
    if (!restoreGeometry(settings.value(SettingsKeys::windowGeo).toByteArray()))
        resize(initialSize);
    fitToScreen(*this);
    m_actions->hideCompleted->setChecked(settings.value(SettingsKeys::hideCompleted, true).toBool());
    m_actions->hideIgnored->setChecked(settings.value(SettingsKeys::hideIgnored, true).toBool());
    // A hidden window lays out late, and the panes would be squeezed into the size that it had before.
    layout()->activate();
    m_sidePanes->restore();
    restoreShown();
}

/// The settings, and the catalogue with them, are others.
void MainWindow::restoreAnew() {
    m_whenSelectedIsShown.reset();
    m_projects->clearSelection();
    m_filter->clear();
    m_sidebar->setCurrent(FilterType::ALL);
    m_projects->restoreState();
    restoreState();
    m_markedTerm = m_projects->searchTerm();
}

void MainWindow::restoreShown() {
    const QSettings settings;
    if (settings.contains(SettingsKeys::foldedGroups)) {
        QList<FilterType> folded;
        const QVariantList stored = settings.value(SettingsKeys::foldedGroups).toList();
        for (const QVariant& group : stored)
            folded.append(static_cast<FilterType>(group.toInt()));
        m_sidebar->foldGroups(folded);
    }
    m_projects->selectAfterReload({settings.value(SettingsKeys::selectedProject, -1).toLongLong()});
    const int type = settings.value(SettingsKeys::sidebarEntryType, 0).toInt();
    if (type <= 0 || type >= static_cast<int>(allFilterTypes.size()))
        return;
    const auto filter = static_cast<FilterType>(type);
    const qint64 id = settings.value(SettingsKeys::sidebarEntryId, -1).toLongLong();
    // Whether it is still there is known when the sidebar's entries come.
    m_filter->set(filter, id, settings.value(SettingsKeys::sidebarEntryName).toString());
    m_sidebar->setCurrent(filter, id);
    m_markedTerm = m_projects->searchTerm();
    m_projects->queryChanged();
}

void MainWindow::storeShown() const {
    QVariantList folded;
    const auto groups = m_sidebar->foldedGroups();
    for (const FilterType group : groups)
        folded.append(static_cast<int>(group));
    QSettings settings;
    settings.setValue(SettingsKeys::foldedGroups, folded);
    settings.setValue(SettingsKeys::selectedProject, m_projects->currentProject());
    settings.setValue(SettingsKeys::sidebarEntryType, static_cast<int>(m_sidebar->shownType()));
    settings.setValue(SettingsKeys::sidebarEntryId, m_sidebar->shownEntryId());
    settings.setValue(SettingsKeys::sidebarEntryName, m_filter->name());
}

void MainWindow::storeState() {
    QSettings().setValue(SettingsKeys::windowGeo, saveGeometry());
    m_projects->storeState();
    m_sidePanes->store();
    m_releases->storeState();
    storeShown();
}
