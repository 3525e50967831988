#include "ui/details/NotFoundNotice.h"

#include "ui/NotFound.h"
#include "ui/widgets/ControlPainting.h"

#include <QLabel>
#include <QPainter>
#include <QVBoxLayout>

namespace {

constexpr int margin = 12;
constexpr int gapAbove = 8;

} // namespace

NotFoundNotice::NotFoundNotice(QWidget* parent)
    : QWidget(parent),
      m_title(new QLabel(this)),
      m_remedy(new QLabel(this)) {
    m_title->setObjectName(QStringLiteral("notFoundLabel"));
    m_remedy->setObjectName(QStringLiteral("notFoundRemedyLabel"));
    QFont font = m_title->font();
    font.setWeight(QFont::DemiBold);
    m_title->setFont(font);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(margin, gapAbove + margin, margin, margin);
    layout->setSpacing(4);
    for (QLabel* label : {m_title, m_remedy}) {
        label->setWordWrap(true);
        layout->addWidget(label);
    }
    hide();
}

void NotFoundNotice::present(int missing, int selected) {
    setVisible(missing > 0);
    if (missing == 0)
        return;
    m_title->setText(NotFound::text(missing, selected));
    m_remedy->setText(NotFound::remedy(missing));
    setAccessibleName(m_title->text());
    setAccessibleDescription(m_remedy->text());
}

void NotFoundNotice::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    QColor ground = palette().color(QPalette::WindowText);
    ground.setAlphaF(0.06F);
    ControlPainting::fillBox(&painter, rect().adjusted(0, gapAbove, 0, 0), ground, ControlPainting::radius);
}
