#include "ui/recovery/RecoverDialog.h"

#include "app/errors/Exception.h"
#include "app/errors/Guarded.h"
#include "monitor/ProjectMonitor.h"
#include "ui/dialogs/Alert.h"
#include "ui/recovery/RecoverableList.h"
#include "ui/recovery/RecoveryProgress.h"
#include "ui/recovery/RecoveryWork.h"
#include "ui/widgets/Contrast.h"
#include "ui/widgets/ScreenFitting.h"

#include <QCheckBox>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include <algorithm>
#include <initializer_list>

using Stemhaven::guarded;
using Stemhaven::ProjectMonitor;
using Stemhaven::RecoverableProject;
using Stemhaven::RecoveryOutcome;
using Stemhaven::RecoverySearch;

namespace {

constexpr QSize initialSize(680, 600);
constexpr int smallestListHeight = 140;

QLabel* makeText(const char* name, QWidget* parent) {
    auto* label = new QLabel(parent);
    label->setObjectName(QLatin1String(name));
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    return label;
}

} // namespace

RecoverDialog::RecoverDialog(QWidget* parent) : RecoverDialog(ProjectMonitor::instance(), parent) {}

RecoverDialog::RecoverDialog(ProjectMonitor& monitor, QWidget* parent)
    : QDialog(parent),
      m_monitor(monitor),
      m_work(new RecoveryWork(this)),
      m_list(new RecoverableList(this)),
      m_selectAll(new QCheckBox(tr("Select &All"), this)),
      m_details(makeText("detailsLabel", this)),
      m_progress(new RecoveryProgress(this)),
      m_find(new QPushButton(tr("&Find Recoverable Projects"), this)),
      m_recover(new QPushButton(tr("&Recover"), this)),
      m_close(new QPushButton(tr("Close"), this)) {
    setWindowTitle(tr("Project Recovery"));
    layOut();
    setUpEvents();
    setUpWork();
    m_list->setHint(
        m_monitor.rootSearchPaths().isEmpty()
            ? tr("No folders are watched. Add one to the main window first.")
            : tr("What is found in your watched folders is listed here. Nothing is changed by looking."));
    updateChoice();
    resize(initialSize);
    fitToScreen(*this);
}

RecoverDialog::~RecoverDialog() = default;

RecoverDialog& RecoverDialog::showOver(ProjectMonitor& monitor, QWidget& window) {
    RecoverDialog* dialog = nullptr;
    for (auto* candidate : window.findChildren<RecoverDialog*>(QString(), Qt::FindDirectChildrenOnly)) {
        if (candidate->isVisible() || candidate->isWorking())
            dialog = candidate;
    }
    if (!dialog) {
        dialog = new RecoverDialog(monitor, &window);
        dialog->m_freesItself = true;
    }
    dialog->show();
    dialog->raise();
    dialog->activateWindow();
    return *dialog;
}

// --- Layout ------------------------------------------------------------------------------------------------

void RecoverDialog::layOut() {
    auto* description = makeText("descriptionLabel", this);
    description->setText(
        tr("Sometimes Logic Pro projects can be corrupted and are missing important files needed to open "
           "them. This results in the error \"The file couldn't be opened because it isn't in the correct "
           "format.\" when trying to open them. Stemhaven can find these projects and restore the missing "
           "files for you so they can be opened again."));
    m_list->setObjectName(QStringLiteral("recoverableList"));
    m_list->setMinimumHeight(smallestListHeight);
    m_details->setMinimumHeight(2 * m_details->fontMetrics().lineSpacing());
    m_details->setAlignment(Qt::AlignTop | Qt::AlignLeading);
    Contrast::makeSecondary(*m_details);

    auto* results = new QVBoxLayout;
    results->setSpacing(8);
    results->addLayout(makeListHeading());
    results->addWidget(m_list, 1);
    results->addWidget(m_details);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(24, 20, 24, 20);
    layout->setSpacing(16);
    layout->addWidget(description);
    layout->addLayout(results, 1);
    layout->addWidget(m_progress);
    layout->addLayout(makeButtons());
}

QLayout* RecoverDialog::makeListHeading() {
    auto* label = new QLabel(tr("Recoverable Projects:"));
    label->setBuddy(m_list);
    m_list->setAccessibleName(tr("Recoverable Projects"));
    m_selectAll->setObjectName(QStringLiteral("selectAllCheckbox"));
    auto* line = new QHBoxLayout;
    line->addWidget(label, 1);
    line->addWidget(m_selectAll);
    return line;
}

QLayout* RecoverDialog::makeButtons() {
    m_find->setObjectName(QStringLiteral("findRecoverableButton"));
    m_recover->setObjectName(QStringLiteral("recoverButton"));
    m_close->setObjectName(QStringLiteral("cancelButton"));
    auto* line = new QHBoxLayout;
    line->addWidget(m_find);
    line->addStretch();
    line->addWidget(m_recover);
    line->addWidget(m_close);
    QWidget* before = m_find;
    for (QWidget* next : std::initializer_list<QWidget*>{
             m_selectAll, m_list, &m_progress->stopButton(), m_recover, m_close}) {
        setTabOrder(before, next);
        before = next;
    }
    m_find->setFocus();
    return line;
}

// --- Events ------------------------------------------------------------------------------------------------

void RecoverDialog::setUpEvents() {
    connect(m_find, &QPushButton::clicked, this, &RecoverDialog::findRecoverable);
    connect(m_recover, &QPushButton::clicked, this, &RecoverDialog::recover);
    connect(m_close, &QPushButton::clicked, this, &RecoverDialog::cancel);
    connect(&m_progress->stopButton(), &QPushButton::clicked, this, &RecoverDialog::stopWork);
    connect(m_selectAll, &QCheckBox::clicked, this, &RecoverDialog::setAllChecked);
    connect(m_list, &RecoverableList::checksChanged, this, &RecoverDialog::updateChoice);
    connect(m_list, &RecoverableList::currentDetailsChanged, this, [this] {
        m_details->setText(m_list->currentDetails());
    });
}

void RecoverDialog::setUpWork() {
    const QString failure = tr("Could not finish project recovery");
    connect(m_work, &RecoveryWork::searched, this, [this](const RecoverySearch::Progress& progress) {
        m_progress->setSearched(progress.bundlesLookedAt, progress.projectsFound);
    });
    connect(m_work, &RecoveryWork::searchEnded, this, [this](const RecoverySearch::Result& result) {
        guarded(tr("Could not find recoverable projects!"), [&] { takeResult(result); });
    });
    connect(m_work, &RecoveryWork::searchFailed, this, [this] {
        endWork();
        m_progress->setStatus(tr("Could not find recoverable projects!"));
        Stemhaven::ErrorHandler::instance().reportError(
            tr("Could not find recoverable projects!"),
            Stemhaven::Exception(tr("Error occurred while searching for recoverable projects!")),
            QtCriticalMsg);
        emit workEnded();
    });
    connect(m_work, &RecoveryWork::repaired, this, [this, failure](int position, const auto& outcome) {
        guarded(failure, [&] { takeOutcome(position, outcome); });
    });
    connect(m_work, &RecoveryWork::repairEnded, this, [this, failure] {
        guarded(failure, [this] { endRepair(); });
    });
}

bool RecoverDialog::isWorking() const {
    return m_work->isWorking();
}

void RecoverDialog::done(int result) {
    m_work->stop();
    QDialog::done(result);
    if (m_freesItself && !isWorking())
        deleteLater();
}

void RecoverDialog::cancel() {
    Stemhaven::loggingFailures(QStringLiteral("Closing recovery dialog failed."), [this] { reject(); });
}

/// After the progress has begun to show it.
void RecoverDialog::beginWork() {
    const QWidget* focused = focusWidget();
    if (!focused || focused == m_find || focused == m_recover || focused == m_selectAll)
        m_progress->stopButton().setFocus();
    for (QPushButton* button : {m_find, m_recover, m_close})
        button->setEnabled(false);
    m_list->lock(true);
    updateChoice();
}

/// Leaves the keyboard where the next step is.
void RecoverDialog::endWork() {
    const QWidget* focused = focusWidget();
    m_find->setEnabled(true);
    m_close->setEnabled(true);
    m_list->lock(false);
    updateChoice();
    if (!focused || focused == &m_progress->stopButton() || !focused->isEnabled())
        (m_list->count() > 0 ? static_cast<QWidget*>(m_list) : m_find)->setFocus();
    m_progress->end();
    if (m_freesItself && isHidden())
        deleteLater();
}

void RecoverDialog::stopWork() {
    m_work->stop();
    m_progress->showStopping();
}

// --- Search ------------------------------------------------------------------------------------------------

void RecoverDialog::findRecoverable() {
    if (isWorking())
        return;
    guarded(tr("Could not find recoverable projects!"), [this] {
        const auto folders = m_monitor.rootSearchPaths();
        m_work->search(folders);
        m_list->setHint({});
        m_list->setProjects({});
        m_progress->beginSearch();
        beginWork();
    });
}

void RecoverDialog::takeResult(const RecoverySearch::Result& result) {
    const int lookedAt = result.progress.bundlesLookedAt;
    if (result.isStopped)
        m_list->setHint(tr("The search was cancelled before it had found anything."));
    else if (lookedAt == 0)
        m_list->setHint(tr("There are no projects in your watched folders."));
    else
        m_list->setHint(tr("None of your projects lacks a file that Stemhaven could restore."));
    auto projects = result.projects;
    std::sort(projects.begin(), projects.end(), [](const auto& one, const auto& other) {
        return QString::localeAwareCompare(one.path, other.path) < 0;
    });
    setRecoverableProjects(projects);
    m_progress->setSearchNote(lookedAt, result.isStopped, result.unreadable);
    emit workEnded();
}

void RecoverDialog::setRecoverableProjects(const QList<RecoverableProject>& projects) {
    if (isWorking())
        return;
    m_list->setProjects(projects);
    endWork();
    m_progress->setStatus(tr("Found %1 recoverable projects!").arg(projects.size()));
}

// --- Repair ------------------------------------------------------------------------------------------------

void RecoverDialog::recover() {
    guarded(tr("Could not finish project recovery"), [this] {
        const auto rows = m_list->checked();
        if (isWorking() || rows.isEmpty())
            return;
        auto* question = makeQuestion(
            this, tr("Do you want Stemhaven to recover %1 project(s)?").arg(rows.size()),
            tr("Stemhaven will create missing files to allow the projects to be opened again. Warning: this "
               "modifies the .logicx contents! Backup first to be safe."));
        question->setDefaultButton(QMessageBox::No);
        connect(question, &QMessageBox::finished, this, [this, rows](int answer) {
            if (answer == QMessageBox::Yes)
                guarded(tr("Could not finish project recovery"), [&] { repair(rows); });
        });
        question->open();
    });
}

void RecoverDialog::repair(const QList<int>& rows) {
    if (isWorking())
        return;
    QList<RecoverableProject> projects;
    for (const int row : rows)
        projects += m_list->project(row);
    m_work->repair(projects);
    m_chosen = rows;
    m_recovered = 0;
    m_failed = 0;
    m_progress->beginRepair(static_cast<int>(rows.size()));
    beginWork();
}

void RecoverDialog::takeOutcome(int position, const RecoveryOutcome& outcome) {
    const int row = m_chosen[position];
    if (!outcome.isRecovered) {
        ++m_failed;
        m_list->markFailed(row, outcome.failure);
        return;
    }
    ++m_recovered;
    m_list->markRecovered(row);
    m_progress->setRecovered(m_recovered, static_cast<int>(m_chosen.size()));
}

void RecoverDialog::endRepair() {
    const auto untried = m_chosen.size() - m_recovered - m_failed;
    QStringList notes;
    if (m_failed > 0)
        notes += tr("%1 project(s) could not be recovered. The list says why.").arg(m_failed);
    if (untried > 0)
        notes += tr("%1 project(s) were left as they were.").arg(untried);
    endWork();
    m_progress->setRecovered(m_recovered, static_cast<int>(m_chosen.size()));
    m_progress->setNote(notes.join(u' '));
    if (m_failed > 0)
        m_list->setCurrentRow(m_list->firstFailed());
    // The user may have closed the dialog meanwhile, and the whole program.
    QWidget* shown = isVisible() ? this : parentWidget();
    if (shown && shown->isVisible()) {
        makeAlert(
            shown, m_failed > 0 ? QMessageBox::Warning : QMessageBox::Information,
            tr("Stemhaven recovered %1 project(s)!").arg(m_recovered), notes.join(u' '))
            ->open();
    }
    emit workEnded();
}

// --- What is shown -----------------------------------------------------------------------------------------

void RecoverDialog::setAllChecked() {
    m_list->setAllChecked(m_list->checked().size() < m_list->checkable());
}

void RecoverDialog::updateChoice() {
    const auto checked = m_list->checked().size();
    const int checkable = m_list->checkable();
    m_recover->setEnabled(!isWorking() && checked > 0);
    (checked > 0 ? m_recover : m_find)->setDefault(true);
    m_selectAll->setEnabled(!isWorking() && checkable > 0);
    if (checked > 0 && checked < checkable)
        m_selectAll->setCheckState(Qt::PartiallyChecked);
    else
        m_selectAll->setCheckState(checked > 0 ? Qt::Checked : Qt::Unchecked);
}
