#include "ui/calendar/AccessibleCalendar.h"

#include "ui/calendar/CalendarView.h"

#include <QWidget>

#include <optional>

namespace {

/// The section that a child stands for; a day's own has none.
struct Place {
    QDate day;
    const CalendarEvent* event = nullptr;
    QRect rect;
};

std::vector<Place> placesOf(const CalendarView& view) {
    const CalendarLayout& layout = view.places();
    std::vector<Place> places;
    for (int index = 0; index < layout.days(); ++index) {
        const QDate day = layout.first().addDays(index);
        places.push_back({day, nullptr, layout.cell(day)});
    }
    for (int index = 0; index < layout.days(); ++index) {
        const QDate day = layout.first().addDays(index);
        const auto events = view.events().on(day);
        for (const auto& section : layout.sections(day)) {
            if (section.index != CalendarLayout::Section::none)
                places.push_back(
                    {day, &events[static_cast<std::size_t>(section.index)], section.rect & layout.body(day)});
        }
    }
    return places;
}

/// A day or an event, by its place in the order of the moment.
class CalendarItem : public QAccessibleInterface, public QAccessibleActionInterface {
public:
    CalendarItem(AccessibleCalendar& calendar, int index) : m_calendar(calendar), m_index(index) {}

    int index() const { return m_index; }

    bool isValid() const override { return m_calendar.isValid() && place().has_value(); }

    QObject* object() const override { return nullptr; }

    QAccessibleInterface* childAt(int /*x*/, int /*y*/) const override { return nullptr; }

    QAccessibleInterface* parent() const override { return &m_calendar; }

    QAccessibleInterface* child(int /*index*/) const override { return nullptr; }

    int childCount() const override { return 0; }

    int indexOfChild(const QAccessibleInterface* /*child*/) const override { return -1; }

    void setText(QAccessible::Text /*kind*/, const QString& /*text*/) override {}

    QString text(QAccessible::Text kind) const override {
        const auto at = place();
        if (!at || kind != QAccessible::Name)
            return {};
        const CalendarView& view = m_calendar.view();
        return at->event ? view.description(*at->event) : view.description(at->day);
    }

    QRect rect() const override {
        const auto at = place();
        const QWidget* viewport = m_calendar.view().viewport();
        return at ? at->rect.translated(viewport->mapToGlobal(QPoint())) : QRect();
    }

    QAccessible::Role role() const override {
        const auto at = place();
        return at && at->event ? QAccessible::ListItem : QAccessible::Cell;
    }

    QAccessible::State state() const override {
        QAccessible::State state;
        state.focusable = true;
        state.selectable = true;
        const bool isCurrent = m_calendar.currentChild() == m_index;
        state.selected = isCurrent;
        state.focused = isCurrent && m_calendar.view().hasFocus();
        state.disabled = !m_calendar.view().isEnabled();
        return state;
    }

    void* interface_cast(QAccessible::InterfaceType type) override {
        return type == QAccessible::ActionInterface ? static_cast<QAccessibleActionInterface*>(this)
                                                    : nullptr;
    }

    QStringList actionNames() const override { return {setFocusAction(), pressAction()}; }

    void doAction(const QString& action) override {
        const auto at = place();
        if (!at || !m_calendar.view().isEnabled())
            return;
        const qint64 project = at->event ? at->event->project : 0;
        m_calendar.view().makeCurrent(at->day, project);
        if (action == pressAction() && project != 0)
            m_calendar.view().activate(project);
    }

    QStringList keyBindingsForAction(const QString& /*action*/) const override { return {}; }

private:
    std::optional<Place> place() const {
        const auto places = placesOf(m_calendar.view());
        const auto index = static_cast<std::size_t>(m_index);
        return index < places.size() ? std::optional(places[index]) : std::nullopt;
    }

    AccessibleCalendar& m_calendar;
    int m_index;
};

QAccessibleInterface* makeForCalendar(const QString& /*className*/, QObject* object) {
    auto* view = qobject_cast<CalendarView*>(object);
    return view ? new AccessibleCalendar(*view) : nullptr;
}

} // namespace

AccessibleCalendar::AccessibleCalendar(CalendarView& view) : QAccessibleWidget(&view, QAccessible::Table) {}

AccessibleCalendar::~AccessibleCalendar() {
    for (const auto& [index, id] : m_children)
        QAccessible::deleteAccessibleInterface(id);
}

void AccessibleCalendar::install() {
    [[maybe_unused]] static const bool isInstalled = [] {
        QAccessible::installFactory(makeForCalendar);
        return true;
    }();
}

CalendarView& AccessibleCalendar::view() const {
    return *static_cast<CalendarView*>(widget());
}

int AccessibleCalendar::currentChild() const {
    const auto places = placesOf(view());
    for (std::size_t index = 0; index < places.size(); ++index) {
        const qint64 project = places[index].event ? places[index].event->project : 0;
        if (places[index].day == view().currentDate() && project == view().currentProject())
            return static_cast<int>(index);
    }
    return -1;
}

QString AccessibleCalendar::text(QAccessible::Text kind) const {
    const QString own = QAccessibleWidget::text(kind);
    if (kind == QAccessible::Value)
        return view().description(view().currentDate());
    return kind == QAccessible::Description && own.isEmpty() ? view().shownText() : own;
}

int AccessibleCalendar::childCount() const {
    return static_cast<int>(placesOf(view()).size());
}

QAccessibleInterface* AccessibleCalendar::child(int index) const {
    if (index < 0 || index >= childCount())
        return nullptr;
    const auto known = m_children.find(index);
    if (known != m_children.end())
        return QAccessible::accessibleInterface(known->second);
    auto* item = new CalendarItem(const_cast<AccessibleCalendar&>(*this), index);
    m_children.emplace(index, QAccessible::registerAccessibleInterface(item));
    return item;
}

QAccessibleInterface* AccessibleCalendar::childAt(int x, int y) const {
    const auto places = placesOf(view());
    const QPoint position = view().viewport()->mapFromGlobal(QPoint(x, y));
    // Events stand before the days that they are on.
    for (int index = static_cast<int>(places.size()) - 1; index >= 0; --index) {
        if (places[static_cast<std::size_t>(index)].rect.contains(position))
            return child(index);
    }
    return nullptr;
}

QAccessibleInterface* AccessibleCalendar::focusChild() const {
    return view().hasFocus() ? child(currentChild()) : nullptr;
}

int AccessibleCalendar::indexOfChild(const QAccessibleInterface* child) const {
    const auto* item = dynamic_cast<const CalendarItem*>(child);
    return item && item->parent() == this ? item->index() : -1;
}
