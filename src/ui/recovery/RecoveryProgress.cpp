#include "ui/recovery/RecoveryProgress.h"

#include "ui/recovery/RecoverableList.h"
#include "ui/widgets/AccessibleRole.h"
#include "ui/widgets/Contrast.h"
#include "ui/widgets/ElidedTip.h"

#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QTimerEvent>
#include <QVBoxLayout>

namespace {

constexpr int betweenFrames = 40; // ms
constexpr int whole = 100;

/// Names the first of them; the rest is in a tool tip.
QString unreadableText(const QStringList& paths) {
    const QString first = RecoverableList::shownPath(paths.front());
    if (paths.size() == 1)
        return RecoveryProgress::tr("Could not be looked at: %1").arg(first);
    return RecoveryProgress::tr("Could not be looked at: %1 and %2 more").arg(first).arg(paths.size() - 1);
}

QString unreadableTip(const QStringList& paths) {
    constexpr qsizetype mostShown = 20;
    QString tip;
    for (const auto& path : paths.size() > 1 ? paths.mid(0, mostShown) : QStringList())
        tip += wrappingTip(RecoverableList::shownPath(path));
    return tip;
}

} // namespace

RecoveryProgress::RecoveryProgress(QWidget* parent)
    : QWidget(parent),
      m_status(new QLabel(this)),
      m_bar(new QProgressBar(this)),
      m_note(new QLabel(this)),
      m_stop(new QPushButton(tr("&Cancel"), this)) {
    m_status->setObjectName(QStringLiteral("statusLabel"));
    m_bar->setObjectName(QStringLiteral("progressBar"));
    m_note->setObjectName(QStringLiteral("noteLabel"));
    m_stop->setObjectName(QStringLiteral("stopButton"));
    layOut();
    setStatus(tr("Ready to Find Recoverable Projects..."));
}

void RecoveryProgress::layOut() {
    for (QLabel* label : {m_status, m_note}) {
        label->setTextFormat(Qt::PlainText);
        label->setWordWrap(true);
        setAccessibleRole(*label, QAccessible::StatusBar);
        label->setMinimumHeight(label->fontMetrics().lineSpacing());
    }
    Contrast::makeSecondary(*m_note);
    m_bar->setAccessibleName(tr("Progress"));
    m_bar->setTextVisible(false);
    m_bar->setRange(0, whole);
    m_bar->setValue(0);
    m_stop->hide();

    auto* line = new QHBoxLayout;
    line->setSpacing(12);
    // The line keeps its height while the button is hidden.
    line->addStrut(m_stop->sizeHint().height());
    line->addWidget(m_bar, 1);
    line->addWidget(m_stop);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins({});
    layout->setSpacing(4);
    layout->addWidget(m_status);
    layout->addLayout(line);
    layout->addWidget(m_note);
}

void RecoveryProgress::beginSearch() {
    showStopButton(tr("&Cancel"));
    m_bar->setRange(0, 0);
    m_frames.start(betweenFrames, this);
    setNote({});
    setStatus(tr("Searching for recoverable projects..."));
    setSearched(0, 0);
}

void RecoveryProgress::beginRepair(int projects) {
    showStopButton(tr("&Stop"));
    setNote({});
    setRecovered(0, projects);
}

void RecoveryProgress::showStopButton(const QString& text) {
    m_stop->setText(text);
    m_stop->setEnabled(true);
    m_stop->show();
}

void RecoveryProgress::end() {
    if (m_frames.isActive()) {
        m_frames.stop();
        m_bar->setRange(0, whole);
        m_bar->setValue(0);
    }
    m_stop->hide();
    m_isStopping = false;
}

void RecoveryProgress::showStopping() {
    m_isStopping = true;
    m_stop->setEnabled(false);
    setStatus(m_frames.isActive() ? tr("Cancelling the search...") : tr("Stopping after this project..."));
}

/// A screen reader would have no end of it.
void RecoveryProgress::setSearched(int lookedAt, int found) {
    m_note->setText(tr("Projects looked at: %1. Damaged: %2.").arg(lookedAt).arg(found));
}

void RecoveryProgress::setRecovered(int recovered, int projects) {
    m_bar->setValue(recovered * whole / projects);
    if (!m_isStopping)
        setStatus(tr("Recovered %1/%2 projects").arg(recovered).arg(projects));
}

void RecoveryProgress::setStatus(const QString& status) {
    m_status->setText(status);
    announce(*m_status, status);
}

void RecoveryProgress::setNote(const QString& note) {
    m_note->setText(note);
    m_note->setToolTip({});
    announce(*m_note, note);
}

void RecoveryProgress::setSearchNote(int lookedAt, bool isCancelled, const QStringList& unreadable) {
    QStringList notes{tr("Projects looked at: %1.").arg(lookedAt)};
    if (isCancelled)
        notes += tr("The search was cancelled, so there may be more.");
    if (!unreadable.isEmpty())
        notes += unreadableText(unreadable);
    setNote(notes.join(u' '));
    m_note->setToolTip(unreadableTip(unreadable));
}

void RecoveryProgress::timerEvent(QTimerEvent* event) {
    if (event->timerId() == m_frames.timerId())
        m_bar->update();
    else
        QWidget::timerEvent(event);
}
