#pragma once

#include "ui/calendar/CalendarLayout.h"

#include <QFontMetrics>
#include <QPalette>
#include <QString>

class QPainter;
struct CalendarEvent;

/// Paints the parts of a calendar in the colours of a palette, with all texts readable on their grounds.
class CalendarPainter {
public:
    struct Day {
        QDate date;
        QString number;
        bool isDimmed = false; ///< of another month
        bool isToday = false;
        bool isCurrent = false;
        bool hasFocus = false;
        bool isTarget = false; ///< of a drag
    };

    CalendarPainter(
        QPainter& painter, const QPalette& palette, const QFont& font, Qt::LayoutDirection direction,
        const CalendarLayout& layout);

    void drawHeader(int column, const QString& name) const;
    void drawDay(const Day& day) const;
    /// Draws nothing outside of clip.
    void drawEvent(const QRect& rect, const QRect& clip, const CalendarEvent& event, bool isCurrent) const;
    void drawMore(const QRect& rect, const QString& text, bool isDimmed) const;

private:
    void drawNumber(const Day& day, const QColor& ground) const;
    QColor groundOf(const Day& day) const;
    QRect mirrored(const QRect& rect, const QRect& around) const;

    QPainter& m_painter;
    const QPalette& m_palette;
    const QFont& m_font;
    QFontMetrics m_metrics;
    Qt::LayoutDirection m_direction;
    const CalendarLayout& m_layout;
};
