#include "ui/calendar/CalendarPane.h"
#include "ui/calendar/CalendarView.h"
#include "ui/widgets/Contrast.h"
#include "ui/widgets/Palettes.h"

#include <QAccessible>
#include <QApplication>
#include <QElapsedTimer>
#include <QLabel>
#include <QScrollBar>
#include <QSignalSpy>
#include <QToolButton>
#include <QtTest/QTest>

#include <gtest/gtest.h>

#include <algorithm>

namespace {

using Section = CalendarLayout::Section;

CalendarEvent event(qint64 project, QDate day, const QString& title = "Song") {
    return {project, day, title, {}, CalendarEvent::Kind::Firm};
}

class CalendarTest : public testing::Test {
protected:
    CalendarTest() {
        window.view().setLocale(QLocale(QLocale::English, QLocale::UnitedKingdom));
        window.resize(770, 640);
        view.setCurrentDate({2026, 11, 12});
        view.setEvents(CalendarEvents(
            {event(1, {2026, 11, 12}, "One"), event(2, {2026, 11, 12}, "Two"),
             event(3, {2026, 11, 20}, "Three")}));
        window.show();
        QApplication::setActiveWindow(&window);
        view.setFocus();
    }

    QPoint placeOf(qint64 project) {
        const CalendarEvent* found = view.events().find(project);
        for (const Section& section : view.places().sections(found->date)) {
            if (section.index == view.events().indexOnDay(project))
                return section.rect.center();
        }
        return {-1, -1};
    }

    QDate dayOf(qint64 project) { return view.events().find(project)->date; }

    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) { QTest::keyClick(&view, key, modifiers); }

    void drag(QPoint from, QPoint to) {
        QTest::mousePress(view.viewport(), Qt::LeftButton, {}, from);
        QTest::mouseMove(view.viewport(), (from + to) / 2);
        QTest::mouseMove(view.viewport(), to);
    }

    void drop(QPoint at) { QTest::mouseRelease(view.viewport(), Qt::LeftButton, {}, at); }

    CalendarPane window;
    CalendarView& view = window.view();
    QSignalSpy moved{&view, &CalendarView::eventMoved};
    QSignalSpy chosen{&view, &CalendarView::dateChosen};
    QSignalSpy activated{&view, &CalendarView::eventActivated};
};

} // namespace

TEST_F(CalendarTest, WeeksBeginAsTheLocaleSays) {
    EXPECT_EQ(view.places().first(), QDate(2026, 10, 26)) << "a Monday";
    EXPECT_EQ(view.shownText(), "November 2026");
    view.setLocale(QLocale(QLocale::English, QLocale::UnitedStates));
    EXPECT_EQ(view.places().first(), QDate(2026, 11, 1)) << "a Sunday";
    view.setLocale(QLocale(QLocale::German, QLocale::Germany));
    view.setCurrentDate({2024, 2, 29});
    EXPECT_EQ(view.places().first(), QDate(2024, 1, 29));
    EXPECT_EQ(view.shownText(), "Februar 2024");
    view.setSpan(CalendarView::Span::Week);
    EXPECT_EQ(view.places().first(), QDate(2024, 2, 26));
    EXPECT_EQ(view.places().last(), QDate(2024, 3, 3));
}

TEST_F(CalendarTest, KeysGoThroughDaysAndEventsAndMoveThem) {
    press(Qt::Key_Right);
    press(Qt::Key_Down);
    EXPECT_EQ(view.currentDate(), QDate(2026, 11, 20));
    press(Qt::Key_Return);
    EXPECT_EQ(activated.takeFirst().constFirst(), 3) << "the only one of its day";
    press(Qt::Key_PageDown);
    EXPECT_EQ(view.currentDate(), QDate(2026, 12, 20));
    EXPECT_EQ(view.shownText(), "December 2026");
    press(Qt::Key_PageUp);
    press(Qt::Key_End);
    EXPECT_EQ(view.currentDate(), QDate(2026, 11, 22));
    press(Qt::Key_Home);
    EXPECT_EQ(view.currentDate(), QDate(2026, 11, 16));
    EXPECT_EQ(chosen.count(), 6);

    press(Qt::Key_Left, Qt::ControlModifier);
    EXPECT_EQ(view.currentProject(), 2) << "the event before";
    press(Qt::Key_Right, Qt::ControlModifier);
    EXPECT_EQ(view.currentProject(), 3);
    press(Qt::Key_Right, Qt::AltModifier);
    press(Qt::Key_Down, Qt::AltModifier);
    press(Qt::Key_Down, Qt::AltModifier);
    EXPECT_EQ(dayOf(3), QDate(2026, 12, 5));
    press(Qt::Key_Down, Qt::AltModifier);
    EXPECT_EQ(view.shownText(), "December 2026") << "the page follows the event";
    EXPECT_EQ(view.currentProject(), 3);
    EXPECT_EQ(moved.count(), 4);
    EXPECT_EQ(moved.constLast(), QVariantList({3, QDate(2026, 12, 12)}));
    press(Qt::Key_Left);
    press(Qt::Key_Left, Qt::AltModifier);
    EXPECT_EQ(moved.count(), 4) << "no event is current";

    window.setLayoutDirection(Qt::RightToLeft);
    press(Qt::Key_Left);
    EXPECT_EQ(view.currentDate(), QDate(2026, 12, 12));
}

TEST_F(CalendarTest, TabGoesThroughTheEventsOfADayAndOn) {
    press(Qt::Key_Tab);
    EXPECT_EQ(view.currentProject(), 1);
    press(Qt::Key_Tab);
    EXPECT_EQ(view.currentProject(), 2);
    press(Qt::Key_Backtab);
    EXPECT_EQ(view.currentProject(), 1);
    press(Qt::Key_Backtab);
    EXPECT_EQ(view.currentProject(), 0);
    EXPECT_TRUE(view.hasFocus());
    for (int key = 0; key < 3; ++key)
        press(Qt::Key_Tab);
    EXPECT_FALSE(view.hasFocus());
}

TEST_F(CalendarTest, TheMouseMovesAnEventUnlessTheDragIsCalledOff) {
    const QPoint other = view.places().cell({2026, 11, 24}).center();
    const QPoint from = placeOf(2);

    drag(from, from + QPoint(3, 2));
    drop(from + QPoint(3, 2));
    EXPECT_EQ(view.currentProject(), 2) << "a click that slips";
    drag(from, other);
    press(Qt::Key_Escape);
    drop(other);
    drag(from, {-30, -30});
    drop({-30, -30});
    drag(from, view.places().header(3).center());
    drop(view.places().header(3).center());
    drag(from, view.places().cell({2026, 11, 12}).center());
    drop(view.places().cell({2026, 11, 12}).center());
    drag(from, other);
    view.setEvents(CalendarEvents({event(1, {2026, 11, 12})}));
    drop(other);
    EXPECT_EQ(moved.count(), 0);

    view.setEvents(CalendarEvents({event(2, {2026, 11, 12})}));
    drag(placeOf(2), other);
    drop(other);
    ASSERT_EQ(moved.count(), 1);
    EXPECT_EQ(moved.constFirst(), QVariantList({2, QDate(2026, 11, 24)}));
    EXPECT_EQ(dayOf(2), QDate(2026, 11, 24));
    QTest::mouseDClick(view.viewport(), Qt::LeftButton, {}, placeOf(2));
    EXPECT_EQ(activated.count(), 1);
    QTest::mouseDClick(view.viewport(), Qt::LeftButton, {}, other + QPoint(0, 20));
    EXPECT_EQ(activated.count(), 1) << "an empty part of the day";
}

TEST_F(CalendarTest, PagesTurnWithoutTheCurrentDay) {
    const auto click = [this](const char* name) {
        for (auto* button : window.findChildren<QToolButton*>()) {
            if (button->accessibleName() == name || button->text() == name)
                button->click();
        }
    };
    click("Next Month");
    EXPECT_EQ(window.findChild<QLabel*>("calendarTitle")->text(), "December 2026");
    EXPECT_EQ(view.currentDate(), QDate(2026, 11, 12));
    click("Previous Month");
    click("Previous Month");
    EXPECT_EQ(view.shownText(), "October 2026");
    click("Today");
    EXPECT_EQ(view.currentDate(), QDate::currentDate());
    // Dates end somewhere.
    view.setCurrentDate({9999, 12, 31});
    press(Qt::Key_Right);
    click("Next Month");
    EXPECT_EQ(view.currentDate(), QDate(9999, 12, 31));
    EXPECT_EQ(view.shownText(), "December 9999");
}

TEST_F(CalendarTest, DaysAndEventsHaveRolesAndNames) {
    auto& calendar = *QAccessible::queryAccessibleInterface(&view);
    ASSERT_EQ(calendar.childCount(), 42 + 3);
    const auto& day = *calendar.child(17);
    EXPECT_EQ(day.role(), QAccessible::Cell);
    EXPECT_EQ(day.text(QAccessible::Name), "Thursday, 12 November 2026, 2 events");
    EXPECT_TRUE(day.state().focused);
    const auto& one = *calendar.child(42);
    EXPECT_EQ(one.role(), QAccessible::ListItem);
    EXPECT_EQ(one.text(QAccessible::Name), "One, Thursday, 12 November 2026");
    EXPECT_EQ(one.parent(), &calendar);
    EXPECT_EQ(calendar.indexOfChild(&one), 42);
    const QPoint middle = one.rect().center();
    EXPECT_EQ(calendar.childAt(middle.x(), middle.y()), &one);
    press(Qt::Key_Tab);
    EXPECT_EQ(calendar.focusChild(), &one);
    EXPECT_FALSE(day.state().focused);
    calendar.child(44)->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_EQ(view.currentProject(), 3);
    EXPECT_EQ(activated.count(), 1);
}

TEST_F(CalendarTest, AThousandEventsAreFastAndAllCanBeReachedInAMonthAndInAWeek) {
    std::vector<CalendarEvent> events;
    for (int project = 1; project <= 1000; ++project)
        events.push_back(event(project, QDate(2026, 11, 1 + project % 30), QString("Song %1").arg(project)));
    QElapsedTimer timer;
    timer.start();
    view.setEvents(CalendarEvents(std::move(events)));
    view.grab();
    // Far above what it takes, and far below what anyone would call a stall on any machine.
    EXPECT_LT(timer.elapsed(), 5000);
    const auto sections = view.places().sections({2026, 11, 2});
    const auto rest =
        std::find_if(sections.begin(), sections.end(), [](const auto& section) { return section.more > 0; });
    ASSERT_NE(rest, sections.end());
    EXPECT_EQ(int(sections.size()) - 1 + rest->more, view.events().countOn({2026, 11, 2}));
    for (const auto span : {CalendarView::Span::Month, CalendarView::Span::Week}) {
        view.setSpan(span);
        view.setCurrentDate({2026, 11, 2});
        for (int key = 0; key < 100; ++key) {
            press(Qt::Key_Right, Qt::ControlModifier);
            ASSERT_TRUE(view.viewport()->rect().contains(placeOf(view.currentProject()))) << key;
        }
        EXPECT_EQ(view.events().find(view.currentProject())->date, QDate(2026, 11, 4));
    }
}

TEST_F(CalendarTest, TextIsReadableOnEveryGround) {
    using Stemhaven::ColorScheme;
    QFont large = view.font();
    large.setPixelSize(28);
    large.setBold(true);
    window.setFont(large);
    window.resize(1200, 900);
    for (const QPalette& palette :
         {designedPalette(ColorScheme::Light, {}), designedPalette(ColorScheme::Dark, {}),
          designedPalette(ColorScheme::Light, QColor("#f9f06b")),
          designedPalette(ColorScheme::Dark, QColor("#202020"), true)}) {
        window.setPalette(palette);
        for (const bool isCurrent : {false, true}) {
            view.makeCurrent({2026, 11, 20}, isCurrent ? 3 : 0);
            const QImage picture =
                view.viewport()->grab(QRect(placeOf(3) - QPoint(40, 12), QSize(80, 24))).toImage();
            QHash<QRgb, int> counts;
            for (int y = 0; y < picture.height(); ++y) {
                for (int x = 0; x < picture.width(); ++x)
                    ++counts[picture.pixel(x, y)];
            }
            const QRgb ground = std::max_element(counts.cbegin(), counts.cend()).key();
            double best = 1;
            for (auto color = counts.cbegin(); color != counts.cend(); ++color)
                best = std::max(best, Contrast::between(QColor(color.key()), QColor(ground)));
            EXPECT_GE(best, Contrast::text) << isCurrent;
        }
    }
}
