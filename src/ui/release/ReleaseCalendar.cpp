#include "ui/release/ReleaseCalendar.h"

#include "app/SettingsKeys.h"
#include "app/errors/DbException.h"
#include "app/errors/Guarded.h"
#include "database/QueryTask.h"
#include "database/ReleaseStatements.h"
#include "database/TaskManager.h"
#include "ui/calendar/CalendarPane.h"
#include "ui/calendar/CalendarView.h"
#include "ui/edits/EditHistory.h"
#include "ui/edits/ProjectEdit.h"
#include "ui/edits/ProjectEdits.h"
#include "ui/widgets/Contrast.h"
#include "ui/widgets/ScreenFitting.h"

#include <QButtonGroup>
#include <QDebug>
#include <QLabel>
#include <QLocale>
#include <QPointer>
#include <QSettings>
#include <QShortcut>
#include <QSqlQuery>
#include <QToolButton>
#include <QVBoxLayout>

#include <utility>

using Span = CalendarView::Span;
using Stemhaven::DbException;
using Stemhaven::guarded;
namespace SettingsKeys = Stemhaven::SettingsKeys;

namespace {

constexpr QSize initialSize{1040, 720};

CalendarEvent readEvent(const QSqlQuery& row) {
    CalendarEvent event;
    event.project = row.value(0).toLongLong();
    event.title = row.value(1).toString();
    event.details = row.value(2).toString();
    event.kind = row.value(3).toInt() != 0 ? CalendarEvent::Kind::Firm : CalendarEvent::Kind::Tentative;
    event.date = QDate::fromString(row.value(4).toString(), Qt::ISODate);
    return event;
}

} // namespace

ReleaseCalendar::ReleaseCalendar(Stemhaven::TaskManager& tasks, EditHistory& history, QWidget* parent)
    : QWidget(parent, Qt::Window),
      m_tasks(tasks),
      m_history(history),
      m_pane(new CalendarPane(this)),
      m_view(m_pane->view()),
      m_month(makeSpanButton(tr("Month"), Qt::CTRL | Qt::Key_1)),
      m_week(makeSpanButton(tr("Week"), Qt::CTRL | Qt::Key_2)),
      m_count(new QLabel(this)) {
    setWindowTitle(tr("Release Calendar"));
    layOut();
    auto* closing = new QShortcut(QKeySequence::Close, this);
    connect(closing, &QShortcut::activated, this, &QWidget::close);
    connect(m_week, &QAbstractButton::toggled, this, &ReleaseCalendar::showWeek);
    connect(&m_view, &CalendarView::shownChanged, this, &ReleaseCalendar::reload);
    connect(&m_view, &CalendarView::eventActivated, this, &ReleaseCalendar::openRequested);
    connect(&m_view, &CalendarView::eventMoved, this, &ReleaseCalendar::moveRelease);
    connect(&m_view, &CalendarView::moreRequested, m_week, [this] { m_week->setChecked(true); });
    connect(&history, &EditHistory::written, this, &ReleaseCalendar::reload);
    connect(&history, &EditHistory::refused, this, &ReleaseCalendar::reload);
    restoreState();
    m_view.setFocus();
}

QToolButton* ReleaseCalendar::makeSpanButton(const QString& text, const QKeySequence& shortcut) {
    auto* button = new QToolButton(this);
    button->setText(text);
    button->setToolTip(QStringLiteral("%1 (%2)").arg(text, shortcut.toString(QKeySequence::NativeText)));
    button->setShortcut(shortcut);
    button->setCheckable(true);
    button->setAutoRaise(true);
    button->setFocusPolicy(Qt::TabFocus);
    return button;
}

void ReleaseCalendar::layOut() {
    auto* spans = new QButtonGroup(this);
    auto* both = new QWidget(this);
    auto* line = new QHBoxLayout(both);
    line->setContentsMargins(0, 0, 16, 0);
    line->setSpacing(4);
    for (QToolButton* button : {m_month, m_week}) {
        spans->addButton(button);
        line->addWidget(button);
    }
    m_month->setChecked(true);
    m_pane->addControl(both);
    m_view.setAccessibleName(windowTitle());

    m_count->setObjectName(QStringLiteral("releaseCountLabel"));
    m_count->setWordWrap(true);
    Contrast::makeSecondary(*m_count);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_pane, 1);
    layout->addWidget(m_count);
}

void ReleaseCalendar::restoreState() {
    const QSettings settings;
    if (!restoreGeometry(settings.value(SettingsKeys::releaseCalendarGeo).toByteArray()))
        resize(initialSize);
    fitToScreen(*this);
    m_week->setChecked(settings.value(SettingsKeys::releaseCalendarShowsWeek).toBool());
}

void ReleaseCalendar::storeState() const {
    QSettings settings;
    settings.setValue(SettingsKeys::releaseCalendarGeo, saveGeometry());
    settings.setValue(SettingsKeys::releaseCalendarShowsWeek, m_week->isChecked());
}

void ReleaseCalendar::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    reload();
}

void ReleaseCalendar::closeEvent(QCloseEvent* event) {
    storeState();
    QWidget::closeEvent(event);
}

void ReleaseCalendar::showWeek(bool isWeek) {
    guarded(tr("Showing the calendar failed."), [&] { m_view.setSpan(isWeek ? Span::Week : Span::Month); });
}

// --- Reading -----------------------------------------------------------------------------------------------

void ReleaseCalendar::reload() {
    m_again = m_isLoading;
    if (!m_isLoading && isVisible())
        load();
}

void ReleaseCalendar::load() {
    m_isLoading = true;
    m_again = false;
    auto task = std::make_shared<Stemhaven::QueryTask>(
        Stemhaven::ReleaseStatements::selectReleased(m_view.places().first(), m_view.places().last()),
        m_tasks.mainDatabase());
    task->setQueryCallback([window = QPointer(this)](const auto& /*task*/, int /*rows*/, QSqlQuery* query) {
        if (window)
            window->takeReleases(*query);
    });
    task->setSuccessCallback([window = QPointer(this)](const auto& /*task*/) {
        if (window)
            window->endLoad();
    });
    task->setSqlErrorCallback([window = QPointer(this)](const auto& /*task*/, const DbException& error) {
        qCritical() << "Could not read the releases!" << error;
        if (!window)
            return;
        window->m_count->setText(tr("The releases could not be read."));
        window->endLoad();
    });
    m_tasks.addTask(std::move(task));
}

void ReleaseCalendar::takeReleases(QSqlQuery& query) {
    // They may be older than what the user has just moved; the end of the edit brings the newer ones.
    if (m_history.isWriting())
        return;
    std::vector<CalendarEvent> events;
    while (query.next())
        events.push_back(readEvent(query));
    const int count = static_cast<int>(events.size());
    m_view.setEvents(CalendarEvents(std::move(events)));
    showCount(count);
}

void ReleaseCalendar::endLoad() {
    m_isLoading = false;
    if (m_again)
        reload();
    else
        emit loaded();
}

void ReleaseCalendar::showCount(int releases) {
    if (releases == 0)
        m_count->setText(tr("No release on these days. A project comes here once it is marked as publicly "
                            "released, with a date, in its release details."));
    else if (releases == 1)
        m_count->setText(tr("1 release on these days"));
    else
        m_count->setText(tr("%1 releases on these days").arg(locale().toString(releases)));
}

// --- Edits -------------------------------------------------------------------------------------------------

void ReleaseCalendar::moveRelease(qint64 project, QDate day) {
    guarded(tr("Could not update project release details"), [&] {
        m_history.perform(ProjectEdits::releaseDate(project, day));
    });
}
