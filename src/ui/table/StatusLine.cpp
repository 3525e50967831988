#include "ui/table/StatusLine.h"

#include "ui/table/UndoOffer.h"
#include "ui/widgets/AccessibleRole.h"
#include "ui/widgets/Contrast.h"
#include "ui/widgets/ElidedLabel.h"
#include "ui/widgets/ElidedTip.h"

#include <QHBoxLayout>
#include <QLocale>

namespace {

constexpr int sideMargin = 16;
constexpr int lineMargin = 8;
constexpr int linkMargin = 2; // what a link adds to the height of its text, on both sides

} // namespace

const QString StatusLine::separator = QStringLiteral(" · ");

StatusLine::StatusLine(QWidget* parent)
    : QWidget(parent),
      m_statusLabel(new ElidedLabel(this)),
      m_noticeLabel(new ElidedLabel(this)),
      m_undo(new UndoOffer(this)) {
    m_statusLabel->setObjectName(QStringLiteral("statusLabel"));
    m_noticeLabel->setObjectName(QStringLiteral("noticeLabel"));
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins({});
    layout->setSpacing(0);
    layout->addWidget(m_undo, 1);
    // As high as the status, so that the table does not move.
    m_undo->setContentsMargins(sideMargin, lineMargin - linkMargin, 0, lineMargin - linkMargin);
    connect(m_undo, &UndoOffer::undoRequested, this, &StatusLine::undoRequested);
    connect(m_undo, &UndoOffer::keyboardReleased, this, &StatusLine::keyboardReleased);
    connect(m_undo, &UndoOffer::shown, m_statusLabel, &QWidget::setHidden);
    for (auto* label : {m_statusLabel, m_noticeLabel}) {
        Contrast::makeSecondary(*label);
        label->setContentsMargins(sideMargin, lineMargin, sideMargin, lineMargin);
        layout->addWidget(label, 1);
    }
    setAccessibleRole(*m_statusLabel, QAccessible::StatusBar);
    m_noticeLabel->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    m_noticeLabel->hide();
    setStatus(tr("Status: "));
}

void StatusLine::setStatus(const QString& status) {
    m_status = status;
    // Not with the number of selected projects, which a screen reader says itself.
    announce(*m_statusLabel, status);
    showStatus();
}

void StatusLine::showSelectedCount(int projects) {
    m_selectedCount = projects;
    showStatus();
}

void StatusLine::showTip(const QString& tip) {
    if (tip.isEmpty())
        showStatus();
    else
        m_statusLabel->setText(tip);
}

void StatusLine::offerUndo(const QString& done) {
    m_undo->offer(done);
}

void StatusLine::showStatus() {
    const QString selected = m_selectedCount < 2
        ? QString()
        : separator + tr("%1 selected").arg(locale().toString(m_selectedCount));
    m_statusLabel->setText(m_status + selected);
}

void StatusLine::showActivity(const QString& activity) {
    m_activity = activity;
    showNotice();
}

void StatusLine::showSearching(int projectsFound) {
    m_projectsFound = projectsFound;
    showNotice();
}

void StatusLine::endSearching() {
    m_projectsFound.reset();
    showNotice();
}

void StatusLine::showMissingFolders(const QStringList& folders) {
    m_missingFolders = folders;
    showNotice();
}

void StatusLine::showNotice() {
    QString notice;
    QString tip;
    if (!m_activity.isEmpty()) {
        notice = m_activity;
    } else if (m_projectsFound) {
        notice = tr("Looking for projects… %1 found").arg(locale().toString(*m_projectsFound));
    } else if (!m_missingFolders.isEmpty()) {
        const QString folders = m_missingFolders.join(QStringLiteral(", "));
        notice = m_missingFolders.size() == 1 ? tr("Folder not available: %1").arg(folders)
                                              : tr("Folders not available: %1").arg(folders);
        tip = wrappingTip(notice) +
            wrappingTip(tr("Stemhaven keeps all it knows of the projects in there, and follows them again as "
                           "soon as it can read the folder."));
    }
    m_noticeLabel->setText(notice);
    m_noticeLabel->setToolTip(tip);
    m_noticeLabel->setVisible(!notice.isEmpty());
}
