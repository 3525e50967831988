#pragma once

#include <QDate>
#include <QRect>

#include <functional>
#include <vector>

/// Where the days of one or several weeks stand, and in each day its sections, one for each event. It knows
/// numbers only. All lengths are in points.
class CalendarLayout {
public:
    static constexpr int daysPerWeek = 7;

    struct Frame {
        QRect area;
        QDate first; ///< the day at the beginning of the first week
        int weeks = 0;
        Qt::LayoutDirection direction = Qt::LeftToRight;
        int headerHeight = 0;  ///< of the names of the days, above the first week
        int dayLineHeight = 0; ///< of the number of a day, at the top of its cell
        int sectionHeight = 0; ///< with the distance to the next one
        int margin = 0;        ///< beside the sections
        bool scrolls = false;  ///< sections that do not fit are reached by scrolling, else counted in one
        int scrolled = 0;
        /// A section that is seen whatever else its day has, where not all fit.
        QDate keptDay;
        int keptIndex = 0;
    };

    using CountOn = std::function<int(QDate)>;

    struct Section {
        static constexpr int none = -1;

        QRect rect;
        QDate day;
        int index = none; ///< of the event in its day; none: stands for those that do not fit
        int more = 0;     ///< how many do not fit
    };

    CalendarLayout() = default;
    CalendarLayout(const Frame& frame, CountOn countOn);

    QDate first() const { return m_frame.first; }

    QDate last() const { return m_frame.first.addDays(days() - 1); }

    int days() const { return m_frame.weeks * daysPerWeek; }

    bool contains(QDate day) const { return day.isValid() && day >= first() && day <= last(); }

    /// Of the name of the day that column, counted from the beginning of the week, has.
    QRect header(int column) const;
    /// Empty for a day that is not shown.
    QRect cell(QDate day) const;
    QRect dayLine(QDate day) const;
    /// What sections are seen in. Those of a day that scrolls may stand out of it.
    QRect body(QDate day) const;
    /// The sections that are seen, at least in part.
    std::vector<Section> sections(QDate day) const;

    /// Not valid where there is none.
    QDate dayAt(QPoint position) const;
    /// Without a day where there is none.
    Section sectionAt(QPoint position) const;

    /// By how much can be scrolled.
    int scrollRange() const;
    /// How far has to be scrolled for the section to be seen as a whole.
    int scrolledTo(int index) const;

private:
    int columnLeft(int visualColumn) const;
    int rowTop(int row) const;
    QRect sectionRect(const QRect& body, int index) const;

    Frame m_frame;
    CountOn m_countOn;
};
