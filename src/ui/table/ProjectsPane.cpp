#include "ui/table/ProjectsPane.h"

#include "app/errors/Guarded.h"
#include "app/logging/Log.h"
#include "ui/CurrentFilter.h"
#include "ui/table/ColumnWidths.h"
#include "ui/table/EmptyState.h"
#include "ui/table/HeaderSorting.h"
#include "ui/table/HiddenCount.h"
#include "ui/table/KeyEventTableView.h"
#include "ui/table/ProjectsTableModel.h"
#include "ui/table/SearchField.h"
#include "ui/table/SelectionKeeper.h"
#include "ui/table/StarClicks.h"
#include "ui/table/StarDelegate.h"
#include "ui/table/StatusLine.h"
#include "ui/table/TableColumns.h"
#include "ui/table/TableHeader.h"
#include "ui/table/TableSearch.h"

#include <QDir>
#include <QHBoxLayout>
#include <QScrollBar>
#include <QStackedLayout>
#include <QVBoxLayout>

#include <algorithm>
#include <utility>

namespace {

constexpr int margin = 16;
constexpr int rowHeight = 32;
constexpr int widestSearch = 400;

/// Between two looks at what a search has found, which become rarer the longer it takes: reading more and
/// more rows must not slow it down.
constexpr std::chrono::seconds firstFillTime{2};
constexpr std::chrono::seconds longestFillTime{16};

KeyEventTableView* makeTable(ProjectsTableModel* model, QWidget* parent) {
    auto* table = new KeyEventTableView(parent);
    table->setHorizontalHeader(new TableHeader(table));
    table->setModel(model);
    table->setItemDelegate(new StarDelegate(table));
    table->setAccessibleName(ProjectsPane::tr("Projects"));
    table->setSelectionBehavior(QAbstractItemView::SelectRows);
    table->setSelectionMode(QAbstractItemView::ExtendedSelection);
    table->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    table->setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    table->setAlternatingRowColors(true);
    table->setShowGrid(false);
    table->setWordWrap(false);
    table->setTabKeyNavigation(false);
    table->setFrameShape(QFrame::NoFrame);
    table->setContextMenuPolicy(Qt::CustomContextMenu);
    // Rows of one fixed height keep the cost of a reload apart from the number of rows.
    table->verticalHeader()->hide();
    table->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    table->verticalHeader()->setMinimumSectionSize(0);
    table->verticalHeader()->setDefaultSectionSize(std::max(rowHeight, table->fontMetrics().height() + 12));
    return table;
}

} // namespace

ProjectsPane::ProjectsPane(
    Stemhaven::TaskManager& tasks, Stemhaven::QueryBuilder& builder, const CurrentFilter& filter,
    QWidget* parent)
    : QWidget(parent),
      m_filter(filter),
      m_model(new ProjectsTableModel(tasks, &builder, this)),
      m_searchEdit(new SearchField(this)),
      m_table(makeTable(m_model, this)),
      m_emptyState(new EmptyState(this)),
      m_statusLine(new StatusLine(this)),
      m_reloads(new ReloadScheduler(*m_model, this)),
      m_hidden(new HiddenCount(tasks, builder, this)),
      m_search(new TableSearch(*m_searchEdit, builder, this)),
      m_columns(new TableColumns(*m_table, *m_model, builder, this)),
      m_sorting(new HeaderSorting(*m_table, *m_model, builder, this)),
      m_widths(new ColumnWidths(*m_table, *m_model, this)),
      m_selection(new SelectionKeeper(*m_table, *m_model, this)) {
    layOut();
    setUpEvents();
}

void ProjectsPane::layOut() {
    m_searchEdit->setObjectName(QStringLiteral("searchEdit"));
    m_table->setObjectName(QStringLiteral("projectsTableView"));

    m_top = new QHBoxLayout;
    m_top->setContentsMargins(margin, 12, margin, 12);
    m_top->setSpacing(8);
    m_searchEdit->setMaximumWidth(widestSearch);
    m_top->addWidget(m_searchEdit, 1);
    m_top->addStretch();

    auto* rows = new QWidget(this);
    rows->setBackgroundRole(QPalette::Base);
    rows->setAutoFillBackground(true);
    m_pages = new QStackedLayout(rows);
    m_tablePage = new QWidget(rows);
    auto* tableLayout = new QHBoxLayout(m_tablePage);
    tableLayout->setContentsMargins(margin, 0, 4, 0);
    tableLayout->addWidget(m_table);
    m_pages->addWidget(m_tablePage);
    m_pages->addWidget(m_emptyState);

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins({});
    layout->setSpacing(0);
    layout->addLayout(m_top);
    layout->addWidget(rows, 1);
    layout->addWidget(m_statusLine);
}

void ProjectsPane::setUpEvents() {
    using Reason = ReloadScheduler::Reason;
    connect(m_search, &TableSearch::changed, this, [this] {
        request(Reason::NewQuery);
        emit searchTermChanged();
    });
    connect(m_sorting, &HeaderSorting::changed, this, [this] { request(Reason::NewOrder); });
    connect(m_columns, &TableColumns::changed, this, [this] {
        m_sorting->followFields();
        request(Reason::Refresh);
    });
    connect(m_reloads, &ReloadScheduler::reloaded, this, &ProjectsPane::showReloaded);
    connect(m_reloads, &ReloadScheduler::failed, this, &ProjectsPane::showUnreadable);
    connect(m_hidden, &HiddenCount::counted, this, &ProjectsPane::showHidden);

    connect(m_table, &KeyEventTableView::homePressed, m_table, &QTableView::scrollToTop);
    connect(m_table, &KeyEventTableView::textTyped, this, &ProjectsPane::searchFor);
    connect(m_searchEdit, &SearchField::downPressed, this, &ProjectsPane::goToTable);
    connect(m_table, &KeyEventTableView::enterPressed, this, &ProjectsPane::openRequested);
    connect(m_table, &KeyEventTableView::ratingTyped, this, &ProjectsPane::ratingTyped);
    connect(
        new StarClicks(*m_table, *m_selection, this), &StarClicks::clicked, this, &ProjectsPane::starClicked);
    connect(m_statusLine, &StatusLine::undoRequested, this, &ProjectsPane::undoRequested);
    connect(
        m_statusLine, &StatusLine::keyboardReleased, this, [this] { focusPage(*m_pages->currentWidget()); });
    connect(m_table, &QTableView::pressed, this, &ProjectsPane::projectPressed);
    connect(m_table, &QTableView::doubleClicked, this, &ProjectsPane::openRequested);
    connect(m_table, &KeyEventTableView::selectionChangedByKeyboard, m_selection, [this] {
        m_selection->update();
    });
    connect(m_selection, &SelectionKeeper::chosen, m_search, &TableSearch::keep);
    connect(m_selection, &SelectionKeeper::changed, this, &ProjectsPane::selectionChanged);
    connect(m_selection, &SelectionKeeper::changed, this, [this] {
        m_statusLine->showSelectedCount(static_cast<int>(m_selection->selectedProjects().size()));
    });
    connect(m_table, &QWidget::customContextMenuRequested, this, [this](const QPoint& position) {
        emit contextMenuRequested(m_table->viewport()->mapToGlobal(position));
    });

    connect(m_emptyState, &EmptyState::addFolderRequested, this, &ProjectsPane::addFolderRequested);
    connect(m_emptyState, &EmptyState::showHiddenRequested, this, &ProjectsPane::showHiddenRequested);
    connect(m_emptyState, &EmptyState::showAllRequested, this, &ProjectsPane::showAllRequested);
    connect(m_emptyState, &EmptyState::showColumnRequested, m_columns, [this] {
        m_columns->show(QStringLiteral("name"), true);
    });
    connect(m_emptyState, &EmptyState::clearSearchRequested, m_search, &TableSearch::clear);
    connect(m_emptyState, &EmptyState::reloadRequested, this, &ProjectsPane::reloadRequested);
}

void ProjectsPane::setTopButtons(QWidget* first, QWidget* last) {
    m_top->insertWidget(0, first);
    m_top->addWidget(last);
}

void ProjectsPane::reloadProjects(bool lookingForProjects) {
    m_lookingForProjects = lookingForProjects;
    request(ReloadScheduler::Reason::Refresh);
}

void ProjectsPane::reloadProjectsSpaced(bool lookingForProjects) {
    m_lookingForProjects = lookingForProjects;
    Stemhaven::guarded(tr("Reload projects failed."), [this] { m_reloads->requestSpaced(); });
}

void ProjectsPane::queryChanged() {
    request(ReloadScheduler::Reason::NewQuery);
}

void ProjectsPane::columnsChanged() {
    m_sorting->followColumns();
    request(ReloadScheduler::Reason::NewOrder);
}

QString ProjectsPane::searchTerm() const {
    return m_search->term();
}

QString ProjectsPane::lastSearchTerm() const {
    return m_search->lastTerm();
}

void ProjectsPane::setSearchTerm(const QString& term) {
    m_search->setTerm(term);
}

qint64 ProjectsPane::currentProject() const {
    return m_selection->currentProject();
}

QList<qint64> ProjectsPane::selectedProjects() const {
    return m_selection->selectedProjects();
}

void ProjectsPane::selectAfterReload(const QList<qint64>& projects) {
    m_selection->selectAfterReload(projects);
}

void ProjectsPane::setEditor(const QWidget& editor) {
    m_selection->setEditor(editor);
}

void ProjectsPane::noteEdit(bool byMenu) {
    m_selection->noteEdit(byMenu);
}

void ProjectsPane::clearSelection() {
    m_selection->clear();
}

bool ProjectsPane::selectFirst() {
    m_table->selectFirst();
    return m_selection->currentProject() >= 0;
}

void ProjectsPane::scrollToTop() {
    m_table->scrollToTop();
}

void ProjectsPane::showTip(const QString& tip) {
    m_statusLine->showTip(tip);
}

void ProjectsPane::offerUndo(const QString& done) {
    m_statusLine->offerUndo(done);
}

void ProjectsPane::showSearching(int projectsFound) {
    m_statusLine->showSearching(projectsFound);
    if (m_fillTime == std::chrono::seconds(0)) {
        m_fillTime = firstFillTime;
        m_nextFill.setRemainingTime(m_fillTime);
    }
    if (!m_nextFill.hasExpired())
        return;
    m_fillTime = std::min(2 * m_fillTime, longestFillTime);
    m_nextFill.setRemainingTime(m_fillTime);
    request(ReloadScheduler::Reason::Refresh);
}

void ProjectsPane::endSearching() {
    m_fillTime = std::chrono::seconds(0);
    m_statusLine->endSearching();
    m_lookingForProjects = false;
    if (m_pages->currentWidget() == m_emptyState && m_emptyState->reason() == EmptyState::Reason::Searching)
        m_hidden->start();
}

void ProjectsPane::setWatchedFolders(const QStringList& folders) {
    m_watchedFolders = folders;
    if (m_emptyState->reason() == EmptyState::Reason::NoProjects)
        m_emptyState->presentNoProjects(folders);
}

void ProjectsPane::showMissingFolders(const QStringList& folders) {
    m_statusLine->showMissingFolders(folders);
}

void ProjectsPane::setMissingProjects(const QSet<qint64>& projects) {
    m_model->setMissingProjects(projects);
}

void ProjectsPane::request(ReloadScheduler::Reason reason) {
    Stemhaven::guarded(tr("Reload projects failed."), [&] { m_reloads->request(reason); });
}

void ProjectsPane::showReloaded(ReloadScheduler::Reason reason) {
    Stemhaven::guarded(tr("Table restoration has failed"), [&] {
        auto* horizontal = m_table->horizontalScrollBar();
        const int position = horizontal->value();
        m_columns->arrange();
        m_sorting->followColumns();
        m_widths->fit();
        m_selection->restore(reason);
        horizontal->setValue(position);
        // The rows of a reload that began before may lack what was brought back.
        if (!m_reloads->isWaiting())
            m_selection->selectAfterReload({});
        if (m_model->rowCount() > 0)
            showRows();
        m_hidden->start();
        if (std::exchange(m_isWayToTable, false))
            goToTable();
        m_table->releaseKeys();
    });
}

void ProjectsPane::showStatus() {
    // Both at once: the term may look like a placeholder.
    QString status = tr("%1 (%3 found)")
                         .arg(m_filter.description(m_search->term()), locale().toString(m_model->rowCount()));
    if (m_hiddenProjects > 0)
        status += StatusLine::separator + tr("%1 hidden").arg(locale().toString(m_hiddenProjects));
    m_statusLine->setStatus(status);
}

void ProjectsPane::showHidden(int projects) {
    m_hiddenProjects = projects;
    showStatus();
    // The answer may be to a question that the user has left behind; then another one comes.
    if (m_model->rowCount() == 0 && !m_model->isReloading())
        showReason();
}

void ProjectsPane::showRows() {
    const bool hasColumns = m_model->columnCount() > 0;
    if (!hasColumns)
        m_emptyState->present(EmptyState::Reason::NoColumns);
    showPage(hasColumns ? m_tablePage : m_emptyState);
}

/// Why there are no rows.
void ProjectsPane::showReason() {
    using Reason = EmptyState::Reason;
    const QString term = m_search->term();
    const bool isNarrowed = !term.isEmpty() || m_filter.type() != FilterType::ALL;
    if (isNarrowed && m_hiddenProjects > 0)
        m_emptyState->presentHidden(m_hiddenProjects);
    else if (!term.isEmpty())
        m_emptyState->present(Reason::NothingFound, term);
    else if (isNarrowed)
        m_emptyState->present(Reason::NothingInFilter, m_filter.name());
    else if (m_lookingForProjects)
        // During a search the catalogue has projects that the table has not been told of.
        m_emptyState->present(Reason::Searching);
    else if (m_hiddenProjects > 0)
        m_emptyState->present(Reason::AllHidden);
    else
        m_emptyState->presentNoProjects(m_watchedFolders);
    showPage(m_emptyState);
}

void ProjectsPane::showUnreadable() {
    m_isWayToTable = false;
    m_table->releaseKeys();
    m_statusLine->setStatus(tr("The projects could not be loaded. If this stays, start Stemhaven again."));
    if (m_model->rowCount() > 0)
        return;
    m_emptyState->present(EmptyState::Reason::Unreadable, QDir::toNativeSeparators(Logging::Log::filepath()));
    showPage(m_emptyState);
}

void ProjectsPane::showPage(QWidget* page) {
    QWidget* before = m_pages->currentWidget();
    if (page != before && before->isAncestorOf(window()->focusWidget())) {
        // Or a hidden page leaves the keyboard to whatever comes after it, which a screen reader then names.
        page->show();
        focusPage(*page);
    }
    m_pages->setCurrentWidget(page);
    if (m_hasLoaded)
        return;
    m_hasLoaded = true;
    emit firstLoaded();
}

void ProjectsPane::focusPage(const QWidget& page) {
    (&page == m_tablePage ? static_cast<QWidget*>(m_table) : m_emptyState)->setFocus(Qt::OtherFocusReason);
}

void ProjectsPane::focusProjects() {
    m_table->setFocus();
}

void ProjectsPane::focusSearch() {
    m_searchEdit->setFocus(Qt::ShortcutFocusReason);
    m_searchEdit->selectAll();
}

void ProjectsPane::searchFor(const QString& text) {
    m_searchEdit->setFocus(Qt::OtherFocusReason);
    m_searchEdit->setText(text);
}

void ProjectsPane::goToTable() {
    if (m_model->isReloading()) {
        // What the field has found comes soon; the keys that follow are meant for it.
        m_isWayToTable = true;
        m_table->holdKeys();
        if (m_table->isVisible())
            m_table->setFocus(Qt::OtherFocusReason);
        return;
    }
    if (!m_table->isVisible())
        return;
    m_table->setFocus(Qt::OtherFocusReason);
    if (!m_table->selectionModel()->hasSelection())
        m_table->selectFirst();
}

void ProjectsPane::showActivity(const QString& activity) {
    m_statusLine->showActivity(activity);
}

void ProjectsPane::storeState() {
    m_search->storeTerm();
}

void ProjectsPane::storeAtOnce() {
    m_search->keep();
    storeState();
}

void ProjectsPane::restoreState() {
    m_columns->restore();
    m_sorting->restoreAnew();
    m_widths->restore();
    m_search->restore();
    request(ReloadScheduler::Reason::NewQuery);
}
