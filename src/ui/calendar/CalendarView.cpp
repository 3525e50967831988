#include "ui/calendar/CalendarView.h"

#include "ui/calendar/AccessibleCalendar.h"
#include "ui/calendar/CalendarPainter.h"

#include <QAccessible>
#include <QHelpEvent>
#include <QLocale>
#include <QPainter>
#include <QScrollBar>
#include <QToolTip>

#include <algorithm>
#include <utility>

namespace {

constexpr int weeksOfMonth = 6;
constexpr int cellMargin = 4;

/// The nearest of the days that a field for dates takes.
QDate allowed(QDate day) {
    return std::clamp(day, QDate(1752, 9, 14), QDate(9999, 12, 31));
}

} // namespace

CalendarView::CalendarView(QWidget* parent)
    : QAbstractScrollArea(parent),
      m_day(QDate::currentDate()),
      m_page(m_day) {
    AccessibleCalendar::install();
    setFocusPolicy(Qt::StrongFocus);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setFrameShape(QFrame::NoFrame);
    viewport()->setBackgroundRole(QPalette::Base);
    viewport()->setAutoFillBackground(true);
    arrange();
}

// --- What is shown -----------------------------------------------------------------------------------------

void CalendarView::setSpan(Span span) {
    if (span == m_span)
        return;
    m_span = span;
    cancelDrag();
    // What the user looks at stays: the current day, or else the beginning of the month.
    if (m_places.contains(m_day))
        m_page = m_day;
    verticalScrollBar()->setValue(0);
    arrange();
    emit shownChanged();
}

void CalendarView::setEvents(CalendarEvents events) {
    m_events = std::move(events);
    const CalendarEvent* current = m_events.find(m_project);
    m_project = current && m_places.contains(current->date) ? m_project : 0;
    if (m_project != 0)
        m_day = current->date;
    if (m_drag && !m_events.find(m_drag->project))
        cancelDrag();
    arrange();
}

void CalendarView::setCurrentDate(QDate day) {
    if (!day.isValid())
        return;
    if (day != m_day)
        m_project = 0;
    m_day = day;
    showPage(day);
}

void CalendarView::showPage(QDate day) {
    const QDate first = m_places.first();
    m_page = allowed(day);
    arrange();
    if (m_places.first() != first)
        emit shownChanged();
}

void CalendarView::turnPage(int pages) {
    if (m_span == Span::Month)
        showPage(QDate(m_page.year(), m_page.month(), 1).addMonths(pages));
    else
        showPage(m_page.addDays(pages * CalendarLayout::daysPerWeek));
}

void CalendarView::goToToday() {
    showPage(QDate::currentDate());
    goTo(QDate::currentDate());
}

QDate CalendarView::startOfWeek(QDate day) const {
    constexpr int week = CalendarLayout::daysPerWeek;
    return day.addDays(-((day.dayOfWeek() - locale().firstDayOfWeek() + week) % week));
}

void CalendarView::arrange() {
    const QFontMetrics metrics = fontMetrics();
    const bool isMonth = m_span == Span::Month;
    CalendarLayout::Frame frame;
    frame.area = viewport()->rect();
    frame.first = startOfWeek(isMonth ? QDate(m_page.year(), m_page.month(), 1) : m_page);
    frame.weeks = isMonth ? weeksOfMonth : 1;
    frame.direction = layoutDirection();
    frame.headerHeight = metrics.height() + 8;
    frame.dayLineHeight = metrics.height() + 12;
    frame.sectionHeight = (isMonth ? metrics.height() + 4 : 2 * metrics.height() + 8) + 2;
    frame.margin = cellMargin;
    frame.scrolls = !isMonth;
    frame.scrolled = verticalScrollBar()->value();
    frame.keptDay = m_project != 0 ? m_day : QDate();
    frame.keptIndex = m_events.indexOnDay(m_project);
    m_places = CalendarLayout(frame, [this](QDate day) { return m_events.countOn(day); });

    verticalScrollBar()->setSingleStep(frame.sectionHeight);
    verticalScrollBar()->setPageStep(m_places.body(m_places.first()).height());
    verticalScrollBar()->setRange(0, m_places.scrollRange());
    viewport()->update();
}

bool CalendarView::isDimmed(QDate day) const {
    return m_span == Span::Month && (day.month() != m_page.month() || day.year() != m_page.year());
}

QSize CalendarView::minimumSizeHint() const {
    const QFontMetrics metrics = fontMetrics();
    int column = metrics.horizontalAdvance(QStringLiteral("00")) + 14;
    for (int day = Qt::Monday; day <= Qt::Sunday; ++day) {
        const QString name = locale().standaloneDayName(day, QLocale::ShortFormat);
        column = std::max(column, metrics.horizontalAdvance(name) + 6);
    }
    const int rows = weeksOfMonth * (metrics.height() + 8);
    return {CalendarLayout::daysPerWeek * column, rows + metrics.height() + 8};
}

QSize CalendarView::sizeHint() const {
    return minimumSizeHint().expandedTo({0, weeksOfMonth * (fontMetrics().height() + 12)});
}

// --- Texts -------------------------------------------------------------------------------------------------

QString CalendarView::shownText() const {
    const QLocale names = locale();
    if (m_span == Span::Month) {
        //: A month and its year
        return tr("%1 %2").arg(names.standaloneMonthName(m_page.month()), QString::number(m_page.year()));
    }
    //: A pattern of QLocale::toString() for a day
    const QString pattern = tr("MMM d, yyyy");
    //: The first and the last day of a week
    return tr("%1 – %2").arg(
        names.toString(m_places.first(), pattern), names.toString(m_places.last(), pattern));
}

QString CalendarView::dayName(int column) const {
    const int day = (locale().firstDayOfWeek() - 1 + column) % CalendarLayout::daysPerWeek + 1;
    const int width = m_places.header(column).width() - 6;
    const QString name = locale().standaloneDayName(day, QLocale::LongFormat);
    // All of them in the same form.
    int longest = 0;
    for (int other = Qt::Monday; other <= Qt::Sunday; ++other)
        longest = std::max(longest, fontMetrics().horizontalAdvance(locale().standaloneDayName(other)));
    return longest <= width ? name : locale().standaloneDayName(day, QLocale::ShortFormat);
}

QString CalendarView::moreText(int count) const {
    //: Events of a day that have no place in its cell
    return tr("+%1 more").arg(locale().toString(count));
}

QString CalendarView::description(QDate day) const {
    QStringList parts{locale().toString(day, QLocale::LongFormat)};
    if (day == QDate::currentDate())
        parts.append(tr("today"));
    const int count = m_events.countOn(day);
    if (count > 0)
        parts.append(count == 1 ? tr("1 event") : tr("%1 events").arg(locale().toString(count)));
    return parts.join(QLatin1String(", "));
}

QString CalendarView::description(const CalendarEvent& event) const {
    QStringList parts{event.title};
    if (!event.details.isEmpty())
        parts.append(event.details);
    parts.append(locale().toString(event.date, QLocale::LongFormat));
    if (event.kind == CalendarEvent::Kind::Tentative)
        parts.append(tr("not completed"));
    return parts.join(QLatin1String(", "));
}

// --- Painting ----------------------------------------------------------------------------------------------

void CalendarView::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(viewport());
    painter.setRenderHint(QPainter::Antialiasing);
    const QPalette colors = palette();
    CalendarPainter parts(painter, colors, font(), layoutDirection(), m_places);
    for (int column = 0; column < CalendarLayout::daysPerWeek; ++column)
        parts.drawHeader(column, dayName(column));
    drawDays(parts);
    if (!m_drag || !m_drag->isUnderWay)
        return;
    if (const CalendarEvent* dragged = m_events.find(m_drag->project)) {
        QRect ghost = m_places.body(m_places.first());
        ghost.setHeight(fontMetrics().height() + 6);
        ghost.moveCenter(m_drag->at);
        parts.drawEvent(ghost, viewport()->rect(), *dragged, true);
    }
}

void CalendarView::drawDays(CalendarPainter& painter) const {
    const QDate today = QDate::currentDate();
    const QDate target = m_drag && m_drag->isUnderWay ? m_places.dayAt(m_drag->at) : QDate();
    for (int index = 0; index < m_places.days(); ++index) {
        const QDate day = m_places.first().addDays(index);
        painter.drawDay(
            {day, locale().toString(day.day()), isDimmed(day), day == today, day == m_day,
             hasFocus() && m_project == 0, day == target});
        const auto events = m_events.on(day);
        for (const auto& section : m_places.sections(day)) {
            if (section.index == CalendarLayout::Section::none) {
                painter.drawMore(section.rect, moreText(section.more), isDimmed(day));
                continue;
            }
            const CalendarEvent& event = events[static_cast<std::size_t>(section.index)];
            painter.drawEvent(
                section.rect, m_places.body(day), event, event.project == m_project && hasFocus());
        }
    }
}

void CalendarView::resizeEvent(QResizeEvent* event) {
    QAbstractScrollArea::resizeEvent(event);
    arrange();
}

void CalendarView::changeEvent(QEvent* event) {
    QAbstractScrollArea::changeEvent(event);
    switch (event->type()) {
    case QEvent::FontChange:
    case QEvent::LayoutDirectionChange:
    case QEvent::LocaleChange:
    case QEvent::EnabledChange:
    case QEvent::PaletteChange:
    case QEvent::ActivationChange: // it may be another day by now
        updateGeometry();
        arrange();
        break;
    default:
        break;
    }
}

void CalendarView::scrollContentsBy(int /*dx*/, int /*dy*/) {
    arrange();
}

// --- The current day and event -----------------------------------------------------------------------------

void CalendarView::goTo(QDate day, qint64 project) {
    const QDate target = allowed(day);
    const bool isOtherDay = std::exchange(m_day, target) != target;
    m_project = project;
    if (!m_places.contains(target))
        showPage(target);
    verticalScrollBar()->setValue(m_places.scrolledTo(std::max(0, m_events.indexOnDay(project))));
    arrange();
    announceCurrent();
    if (isOtherDay)
        emit dateChosen(m_day);
}

void CalendarView::makeCurrent(QDate day, qint64 project) {
    goTo(day, project);
}

void CalendarView::activate(qint64 project) {
    emit eventActivated(project);
}

void CalendarView::goToEvent(bool forwards, QDate first, QDate last) {
    if (const CalendarEvent* event = m_events.next(m_project, m_day, forwards, first, last))
        goTo(event->date, event->project);
}

void CalendarView::moveCurrent(int days) {
    if (m_project != 0)
        moveEvent(m_project, allowed(m_day.addDays(days)));
}

void CalendarView::moveEvent(qint64 project, QDate day) {
    const CalendarEvent* event = m_events.find(project);
    if (!event || event->date == day)
        return;
    m_events.move(project, day);
    goTo(day, project);
    emit eventMoved(project, day);
}

void CalendarView::announceCurrent() {
    const auto* accessible = dynamic_cast<AccessibleCalendar*>(QAccessible::queryAccessibleInterface(this));
    if (!accessible || !hasFocus())
        return;
    QAccessibleEvent event(this, QAccessible::Focus);
    event.setChild(accessible->currentChild());
    QAccessible::updateAccessibility(&event);
}

bool CalendarView::viewportEvent(QEvent* event) {
    if (event->type() == QEvent::ToolTip) {
        const auto* help = static_cast<QHelpEvent*>(event);
        const auto section = m_places.sectionAt(help->pos());
        const bool isEvent = section.day.isValid() && section.index != CalendarLayout::Section::none;
        const QString tip = isEvent
            ? description(m_events.on(section.day)[static_cast<std::size_t>(section.index)])
            : QString();
        QToolTip::showText(help->globalPos(), tip, viewport(), section.rect);
        return true;
    }
    return QAbstractScrollArea::viewportEvent(event);
}
