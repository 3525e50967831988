#include "ui/table/UndoOffer.h"

#include "ui/widgets/AccessibleRole.h"
#include "ui/widgets/Contrast.h"
#include "ui/widgets/ElidedLabel.h"
#include "ui/widgets/LinkButton.h"

#include <QHBoxLayout>
#include <QTimer>

#include <chrono>

namespace {

constexpr std::chrono::seconds duration{8};
constexpr int gap = 8;

} // namespace

UndoOffer::UndoOffer(QWidget* parent)
    : QWidget(parent),
      m_text(new ElidedLabel(this)),
      m_link(new LinkButton(tr("Undo"), this)),
      m_time(new QTimer(this)) {
    m_text->setObjectName(QStringLiteral("doneLabel"));
    m_link->setObjectName(QStringLiteral("undoLink"));
    Contrast::makeSecondary(*m_text);
    setAccessibleRole(*m_text, QAccessible::StatusBar);
    m_time->setSingleShot(true);
    m_time->setInterval(duration);
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins({});
    layout->setSpacing(gap);
    layout->addWidget(m_text);
    layout->addWidget(m_link);
    layout->addStretch(1);
    hide();
    connect(m_link, &QAbstractButton::clicked, this, &UndoOffer::undoRequested);
    connect(m_time, &QTimer::timeout, this, &UndoOffer::endUnlessUsed);
}

void UndoOffer::offer(const QString& done) {
    if (done.isEmpty()) {
        end();
        return;
    }
    m_text->setText(done);
    m_link->setAccessibleDescription(done);
    m_time->start();
    show();
    emit shown(true);
    announce(*m_text, done);
}

void UndoOffer::endUnlessUsed() {
    if (m_link->hasFocus() || m_link->underMouse())
        m_time->start();
    else
        end();
}

void UndoOffer::end() {
    m_time->stop();
    if (isHidden())
        return;
    if (m_link->hasFocus())
        emit keyboardReleased();
    hide();
    // The same words are news the next time.
    m_text->setAccessibleName({});
    emit shown(false);
}
