#include "ui/calendar/CalendarPainter.h"

#include "ui/calendar/CalendarEvents.h"
#include "ui/widgets/Contrast.h"
#include "ui/widgets/ControlPainting.h"

#include <QPainter>
#include <QStyle>

#include <algorithm>

using ControlPainting::mixed;

namespace {

constexpr int padding = 6;
constexpr int barWidth = 3;
constexpr float tint = 0.12F;
constexpr float eventTint = 0.2F;
constexpr float secondaryStrength = 0.75F;

} // namespace

CalendarPainter::CalendarPainter(
    QPainter& painter, const QPalette& palette, const QFont& font, Qt::LayoutDirection direction,
    const CalendarLayout& layout)
    : m_painter(painter),
      m_palette(palette),
      m_font(font),
      m_metrics(font),
      m_direction(direction),
      m_layout(layout) {}

QRect CalendarPainter::mirrored(const QRect& rect, const QRect& around) const {
    return QStyle::visualRect(m_direction, around, rect);
}

void CalendarPainter::drawHeader(int column, const QString& name) const {
    const QRect rect = m_layout.header(column);
    m_painter.setPen(Contrast::secondaryText(m_palette, QPalette::Base));
    m_painter.drawText(rect.adjusted(2, 0, -2, 0), Qt::AlignCenter, name);
}

QColor CalendarPainter::groundOf(const Day& day) const {
    const QColor ground = m_palette.color(day.isDimmed ? QPalette::AlternateBase : QPalette::Base);
    const QColor accent = ControlPainting::accentColor(m_palette);
    if (day.isTarget)
        return mixed(ground, accent, 2 * tint);
    return day.isCurrent ? mixed(ground, accent, tint) : ground;
}

void CalendarPainter::drawDay(const Day& day) const {
    const QRect cell = m_layout.cell(day.date);
    const QColor ground = groundOf(day);
    m_painter.fillRect(cell, ground);
    const QColor line = ControlPainting::lineColor(m_palette);
    ControlPainting::drawDivider(&m_painter, QRect(cell.left(), cell.top(), cell.width(), 1), line);
    if (cell.left() >
        m_layout.header(m_direction == Qt::RightToLeft ? CalendarLayout::daysPerWeek - 1 : 0).left())
        ControlPainting::drawDivider(&m_painter, QRect(cell.left(), cell.top(), 1, cell.height()), line);
    if (day.isCurrent || day.isTarget) {
        const QRectF ring = QRectF(cell).adjusted(2, 2, -1, -1);
        if (day.hasFocus || day.isTarget)
            ControlPainting::drawFocusRing(&m_painter, ring, m_palette, ControlPainting::smallRadius);
        else
            ControlPainting::drawBox(
                &m_painter, ring, Qt::transparent, ControlPainting::accentShape(m_palette), 1.0,
                ControlPainting::smallRadius);
    }
    drawNumber(day, ground);
}

void CalendarPainter::drawNumber(const Day& day, const QColor& ground) const {
    const QRect cell = m_layout.cell(day.date);
    const bool isCompact = m_layout.body(day.date).height() < m_metrics.height();
    const int side = std::min(m_metrics.height() + 4, cell.height() - 4);
    const int width = std::max(side, m_metrics.horizontalAdvance(day.number) + padding + 2);
    QRect place(cell.left() + padding, cell.top() + padding, width, side);
    if (isCompact)
        place.moveCenter(cell.center());
    else
        place = mirrored(place, cell);

    const bool isEnabled = m_palette.currentColorGroup() != QPalette::Disabled;
    QColor color = m_palette.color(QPalette::Text);
    QColor below = ground;
    if (day.isToday) {
        below = isEnabled ? ControlPainting::accentColor(m_palette) : ControlPainting::lineColor(m_palette);
        color = m_palette.color(isEnabled ? QPalette::Active : QPalette::Disabled, QPalette::HighlightedText);
        ControlPainting::fillBox(&m_painter, place, below, side / 2.0);
    } else if (day.isDimmed && isEnabled) {
        color = Contrast::secondaryText(m_palette, QPalette::AlternateBase);
    }
    if (isEnabled)
        color = Contrast::readable(color, below, Contrast::text);
    m_painter.setPen(color);
    m_painter.drawText(place, Qt::AlignCenter, day.number);
}

void CalendarPainter::drawEvent(
    const QRect& rect, const QRect& clip, const CalendarEvent& event, bool isCurrent) const {
    m_painter.save();
    m_painter.setClipRect(clip);
    const QColor base = m_palette.color(QPalette::Base);
    const QColor accent = ControlPainting::accentColor(m_palette);
    const QColor line = Contrast::readable(accent, base, Contrast::shapeRatio(m_palette));
    const bool isFirm = event.kind == CalendarEvent::Kind::Firm;
    QColor fill = isFirm ? mixed(base, accent, eventTint) : base;
    QColor wish = m_palette.color(QPalette::Active, QPalette::Text);
    if (isCurrent) {
        fill = accent;
        wish = m_palette.color(QPalette::Active, QPalette::HighlightedText);
    }
    const QColor text = Contrast::readable(wish, fill, Contrast::text);
    ControlPainting::drawBox(
        &m_painter, rect, fill, isFirm && !isCurrent ? fill : line, 1.0, ControlPainting::smallRadius);
    if (isFirm && !isCurrent) {
        const QRect bar = mirrored({rect.left() + 2, rect.top() + 3, barWidth, rect.height() - 6}, rect);
        ControlPainting::fillBox(&m_painter, bar, line, barWidth / 2.0);
    }

    const QRect inside = mirrored(rect.adjusted(barWidth + padding, 0, -padding + 2, 0), rect);
    const int lines = event.details.isEmpty() ? 1 : std::clamp(rect.height() / m_metrics.height(), 1, 2);
    const int top = inside.top() + (inside.height() - lines * m_metrics.height()) / 2;
    const auto drawLine = [&](int number, const QString& what, const QColor& color) {
        const QRect place(
            inside.left(), top + number * m_metrics.height(), inside.width(), m_metrics.height());
        m_painter.setPen(color);
        m_painter.setLayoutDirection(what.isRightToLeft() ? Qt::RightToLeft : Qt::LeftToRight);
        m_painter.drawText(
            place,
            Qt::AlignVCenter | Qt::AlignAbsolute |
                (m_direction == Qt::RightToLeft ? Qt::AlignRight : Qt::AlignLeft),
            m_metrics.elidedText(what, Qt::ElideRight, place.width()));
    };
    drawLine(0, event.title, text);
    if (lines > 1) {
        const QColor secondary = mixed(fill, text, secondaryStrength);
        drawLine(1, event.details, Contrast::readable(secondary, fill, Contrast::text));
    }
    m_painter.restore();
}

void CalendarPainter::drawMore(const QRect& rect, const QString& text, bool isDimmed) const {
    const auto ground = isDimmed ? QPalette::AlternateBase : QPalette::Base;
    // A current day is tinted.
    const QColor below = mixed(m_palette.color(ground), ControlPainting::accentColor(m_palette), tint);
    m_painter.setPen(Contrast::readable(Contrast::secondaryText(m_palette, ground), below, Contrast::text));
    m_painter.drawText(
        rect.adjusted(padding, 0, -padding, 0),
        Qt::AlignVCenter | Qt::AlignAbsolute |
            (m_direction == Qt::RightToLeft ? Qt::AlignRight : Qt::AlignLeft),
        m_metrics.elidedText(text, Qt::ElideRight, rect.width() - 2 * padding));
}
