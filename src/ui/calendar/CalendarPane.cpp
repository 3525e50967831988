#include "ui/calendar/CalendarPane.h"

#include "ui/calendar/CalendarView.h"
#include "ui/widgets/ToolButton.h"

#include <QEvent>
#include <QLabel>
#include <QVBoxLayout>

CalendarPane::CalendarPane(QWidget* parent)
    : QWidget(parent),
      m_line(new QHBoxLayout),
      m_title(new QLabel(this)),
      m_previous(new ToolButton(Glyph::Previous, tr("Previous"), this)),
      m_next(new ToolButton(Glyph::Next, tr("Next"), this)),
      m_view(new CalendarView(this)) {
    QFont bold = m_title->font();
    bold.setWeight(QFont::DemiBold);
    m_title->setFont(bold);
    m_title->setObjectName(QStringLiteral("calendarTitle"));
    auto* today = new QToolButton(this);
    today->setText(tr("Today"));
    today->setToolTip(tr("Today (T)"));
    today->setAutoRaise(true);
    today->setFocusPolicy(Qt::TabFocus);

    // The keyboard comes to the days first: Page Up and Page Down turn the pages there.
    setTabOrder(m_view, m_previous);
    setTabOrder(m_previous, today);
    setTabOrder(today, m_next);
    m_line->setSpacing(4);
    m_line->addWidget(m_title, 1);
    m_line->addWidget(m_previous);
    m_line->addWidget(today);
    m_line->addWidget(m_next);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(8);
    layout->addLayout(m_line);
    layout->addWidget(m_view, 1);
    setFocusProxy(m_view);

    connect(m_previous, &QAbstractButton::clicked, this, [this] { m_view->turnPage(-1); });
    connect(m_next, &QAbstractButton::clicked, this, [this] { m_view->turnPage(1); });
    connect(today, &QAbstractButton::clicked, m_view, &CalendarView::goToToday);
    connect(m_view, &CalendarView::shownChanged, this, &CalendarPane::showTexts);
    showTexts();
    showArrows();
}

void CalendarPane::addControl(QWidget* control) {
    m_line->insertWidget(1, control);
}

void CalendarPane::showTexts() {
    m_title->setText(m_view->shownText());
    m_view->setAccessibleDescription(m_view->shownText());
    const bool isMonth = m_view->span() == CalendarView::Span::Month;
    for (const auto& [button, tip] :
         {std::pair(m_previous, isMonth ? tr("Previous Month") : tr("Previous Week")),
          std::pair(m_next, isMonth ? tr("Next Month") : tr("Next Week"))}) {
        button->setAccessibleName(tip);
        button->setToolTip(tip);
    }
}

void CalendarPane::showArrows() {
    m_previous->setIcon(icon(isRightToLeft() ? Glyph::Next : Glyph::Previous));
    m_next->setIcon(icon(isRightToLeft() ? Glyph::Previous : Glyph::Next));
}

void CalendarPane::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::LayoutDirectionChange)
        showArrows();
}
