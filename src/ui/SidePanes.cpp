#include "ui/SidePanes.h"

#include "app/SettingsKeys.h"
#include "app/errors/Guarded.h"

#include <QDebug>
#include <QSettings>
#include <QSplitter>

#include <algorithm>

namespace SettingsKeys = Stemhaven::SettingsKeys;

namespace {

/// Gives the pane its width at the cost of what stands beside it; 0 hides it.
void setPaneWidth(QSplitter& splitter, int pane, int width) {
    const int other = 1 - pane;
    // A hidden pane cannot be reached with the Tab key, as one without a width could.
    splitter.widget(pane)->setVisible(width > 0);
    QList<int> sizes = splitter.sizes();
    const int all = std::max(splitter.width(), sizes[0] + sizes[1]);
    sizes[pane] = std::min(width, all);
    sizes[other] = std::max(0, all - width);
    splitter.setSizes(sizes);
}

} // namespace

SidePanes::SidePanes(QSplitter& sidebarSplitter, QSplitter& detailsSplitter, QObject* parent)
    : QObject(parent),
      m_sidebarSplitter(sidebarSplitter),
      m_detailsSplitter(detailsSplitter) {
    connect(&sidebarSplitter, &QSplitter::splitterMoved, this, [this] {
        Stemhaven::guarded(tr("Splitter move failed."), [this] { sidebarSplitterMoved(); });
    });
    connect(&detailsSplitter, &QSplitter::splitterMoved, this, [this] {
        Stemhaven::guarded(tr("Project splitter move failed."), [this] { detailsSplitterMoved(); });
    });
}

bool SidePanes::isSidebarShown() const {
    return !m_sidebarSplitter.widget(0)->isHidden();
}

bool SidePanes::areDetailsShown() const {
    return !m_detailsSplitter.widget(1)->isHidden();
}

void SidePanes::showFilterSidebar(bool show, int defaultWidth) {
    if (show)
        setPaneWidth(m_sidebarSplitter, 0, m_sidebarWidth > 0 ? m_sidebarWidth : defaultWidth);
    else
        setPaneWidth(m_sidebarSplitter, 0, m_sidebarWidth = 0);
    emit changed();
}

void SidePanes::showProjectDetails(bool show) {
    if (show)
        setPaneWidth(m_detailsSplitter, 1, m_detailsWidth > 0 ? m_detailsWidth : defaultDetailsWidth);
    else
        setPaneWidth(m_detailsSplitter, 1, 0);
    emit changed();
}

void SidePanes::widenSidebar(int step) {
    if (!isSidebarShown())
        return;
    setPaneWidth(m_sidebarSplitter, 0, std::max(1, m_sidebarSplitter.sizes().constFirst() + step));
    m_sidebarWidth = m_sidebarSplitter.sizes().constFirst();
}

void SidePanes::widenDetails(int step) {
    if (!areDetailsShown())
        return;
    setPaneWidth(m_detailsSplitter, 1, std::max(1, m_detailsSplitter.sizes().constLast() + step));
    m_detailsWidth = m_detailsSplitter.sizes().constLast();
}

void SidePanes::sidebarSplitterMoved() {
    m_sidebarWidth = m_sidebarSplitter.sizes().constFirst();
    if (m_sidebarWidth == 0)
        showFilterSidebar(false);
}

void SidePanes::detailsSplitterMoved() {
    const int width = m_detailsSplitter.sizes().constLast();
    if (width > 0)
        m_detailsWidth = width;
    else
        showProjectDetails(false);
}

void SidePanes::restore() {
    const QSettings settings;
    const QVariant width = settings.value(SettingsKeys::filterSliderPos);
    bool isNumber = false;
    m_sidebarWidth = std::max(0, width.toInt(&isNumber));
    if (width.isValid() && !isNumber)
        qWarning() << "Could not load int value of setting 'filterSliderPos'";

    const bool sidebarRestored = width.isValid() &&
        m_sidebarSplitter.restoreState(settings.value(SettingsKeys::sidebarSplitterState).toByteArray());
    const bool detailsRestored = m_detailsSplitter.restoreState(
        settings.value(SettingsKeys::projectDetailsSplitterState).toByteArray());
    const int shownWidth = detailsRestored ? m_detailsSplitter.sizes().constLast() : 0;
    m_detailsWidth = shownWidth > 0 ? shownWidth : settings.value(SettingsKeys::detailsWidth).toInt();
    showFilterSidebar(!sidebarRestored || !isNumber || m_sidebarWidth > 0);
    showProjectDetails(!detailsRestored || shownWidth > 0);
}

void SidePanes::store() const {
    QSettings settings;
    settings.setValue(SettingsKeys::sidebarSplitterState, m_sidebarSplitter.saveState());
    settings.setValue(SettingsKeys::projectDetailsSplitterState, m_detailsSplitter.saveState());
    // The splitter knows nothing of a hidden pane's width.
    if (m_detailsWidth > 0)
        settings.setValue(SettingsKeys::detailsWidth, m_detailsWidth);
    settings.setValue(
        SettingsKeys::filterSliderPos, isSidebarShown() ? m_sidebarSplitter.sizes().constFirst() : 0);
}
