#include "backup/BackupDialog.h"

#include "app/errors/Guarded.h"
#include "backup/BackupExport.h"
#include "backup/BackupImport.h"
#include "backup/BackupRun.h"
#include "backup/LiveFiles.h"
#include "database/TaskManager.h"

#include <QCloseEvent>
#include <QDateTime>
#include <QDir>
#include <QEventLoop>
#include <QFileDialog>
#include <QFileInfo>
#include <QFrame>
#include <QLabel>
#include <QMessageBox>
#include <QProgressBar>
#include <QPushButton>
#include <QSettings>
#include <QStandardPaths>
#include <QVBoxLayout>

#include <algorithm>
#include <utility>

using namespace Stemhaven;

namespace {

constexpr int initialWidth = 480;
constexpr QRgb redOnLight = 0xFFB3202C;
constexpr QRgb redOnDark = 0xFFFF8A80;

LiveFiles liveFilesOf(const TaskManager& tasks) {
    return {tasks.mainPath(), tasks.rootPathsPath(), QSettings().fileName()};
}

/// Paths may look like markup.
QMessageBox* makeBox(
    QWidget* parent, QMessageBox::Icon icon, const QString& text, const QString& details,
    QMessageBox::StandardButtons buttons) {
    auto* box = new QMessageBox(icon, QCoreApplication::applicationName(), text, buttons, parent);
    box->setInformativeText(details);
    for (auto* label : box->findChildren<QLabel*>())
        label->setTextFormat(Qt::PlainText);
    box->setAttribute(Qt::WA_DeleteOnClose);
    return box;
}

} // namespace

BackupDialog::BackupDialog(Type type, QWidget* parent)
    : BackupDialog(type, TaskManager::instance(), parent) {}

BackupDialog::BackupDialog(Type type, TaskManager& tasks, QWidget* parent)
    : QDialog(parent),
      m_type(type),
      m_tasks(tasks),
      m_status(new QLabel(this)),
      m_step(new QLabel(this)),
      m_progress(new QProgressBar),
      m_cancelButton(new QPushButton(tr("&Cancel"), this)),
      m_doneButton(new QPushButton(tr("Done"), this)) {
    setObjectName(QStringLiteral("backup"));
    setWindowTitle(tr("Backup"));
    layOut();
    connect(m_doneButton, &QPushButton::clicked, this, &QDialog::accept);
    connect(m_cancelButton, &QPushButton::clicked, this, &BackupDialog::cancel);
}

BackupDialog::~BackupDialog() = default;

void BackupDialog::layOut() {
    m_status->setObjectName(QStringLiteral("statusLabel"));
    m_progress->setObjectName(QStringLiteral("progressBar"));
    m_doneButton->setObjectName(QStringLiteral("doneButton"));
    m_cancelButton->setObjectName(QStringLiteral("cancelButton"));
    m_step->setObjectName(QStringLiteral("stepLabel"));
    for (auto* label : {m_status, m_step}) {
        label->setTextFormat(Qt::PlainText);
        label->setWordWrap(true);
    }
    m_status->setMinimumHeight(2 * fontMetrics().lineSpacing());
    m_status->setAlignment(Qt::AlignLeft | Qt::AlignBottom);
    m_step->setMinimumHeight(fontMetrics().lineSpacing());
    m_progress->setTextVisible(false);
    m_progress->setAccessibleName(tr("Progress"));
    m_cancelButton->setAutoDefault(false);
    m_doneButton->setDefault(true);

    auto* frame = new QFrame;
    frame->setObjectName(QStringLiteral("progressBarFrame"));
    auto* bar = new QHBoxLayout(frame);
    bar->setObjectName(QStringLiteral("horizontalLayout"));
    bar->setContentsMargins({});
    bar->addWidget(m_progress);

    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(m_cancelButton);
    buttons->addWidget(m_doneButton);
    auto* layout = new QVBoxLayout(this);
    layout->setObjectName(QStringLiteral("verticalLayout"));
    layout->setContentsMargins(24, 20, 24, 20);
    layout->setSpacing(8);
    layout->addWidget(m_status, 1);
    layout->addWidget(frame);
    layout->addWidget(m_step);
    layout->addSpacing(8);
    layout->addLayout(buttons);
    resize(initialWidth, sizeHint().height());
}

int BackupDialog::exec() {
    m_path = m_type == Type::Import ? chooseBackup() : chooseFolder();
    if (m_path.isEmpty())
        return 0;
    m_isPrepared = false;
    m_hasFailed = false;
    m_wasToBeClosed = false;
    setupEvents();
    colorError();
    say(tr("Waiting for what is being saved..."));
    m_progress->setRange(0, 0);
    m_cancelButton->setVisible(true);
    m_cancelButton->setEnabled(true);
    m_doneButton->setEnabled(false);
    emit begun();
    const int result = QDialog::exec();
    // The end of the program ends the loop, too.
    while (isWorking())
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    return result;
}

QString BackupDialog::chooseBackup() {
    QFileDialog dialog(
        parentWidget(), tr("Import Backup"),
        QStandardPaths::writableLocation(QStandardPaths::AppDataLocation) + QStringLiteral("/Stemhaven/"));
    dialog.setFileMode(QFileDialog::ExistingFile);
    dialog.setNameFilters({tr("Backups (*.hvbk)"), tr("All files (*)")});
    dialog.setDefaultSuffix(QStringLiteral("hvbk"));
    if (dialog.exec() == 0 || dialog.selectedFiles().isEmpty())
        return {};
    const QString file = dialog.selectedFiles().constFirst();
    if (BackupImport::hasNameOfBackup(file))
        return file;
    makeBox(
        parentWidget(), QMessageBox::Warning, BackupImport::notABackupText(),
        BackupImport::notABackupAdvice(), QMessageBox::Ok)
        ->exec();
    return {};
}

QString BackupDialog::chooseFolder() {
    QFileDialog dialog(
        parentWidget(), tr("Folder for the Backup"),
        QStandardPaths::writableLocation(QStandardPaths::HomeLocation));
    dialog.setFileMode(QFileDialog::Directory);
    dialog.setOption(QFileDialog::ShowDirsOnly);
    if (dialog.exec() == 0 || dialog.selectedFiles().isEmpty())
        return {};
    return dialog.selectedFiles().constFirst();
}

void BackupDialog::setupEvents() {
    m_run = std::make_unique<BackupRun>(m_tasks);
    connect(m_run.get(), &BackupRun::tasksStopped, this, &BackupDialog::taskManagerStopped);
    connect(m_run.get(), &BackupRun::progressed, this, &BackupDialog::showProgress);
    connect(m_run.get(), &BackupRun::finished, this, &BackupDialog::takeResult);
}

/// May come again, as after the window was minimised.
void BackupDialog::showEvent(QShowEvent* event) {
    QDialog::showEvent(event);
    if (!m_run || std::exchange(m_isPrepared, true))
        return;
    attempt([this] {
        const auto stopTasks = [this] {
            // Cancelled meanwhile.
            if (!m_run)
                return;
            m_cancelButton->setEnabled(false);
            m_run->stopTasks();
        };
        if (m_preparation)
            m_preparation(stopTasks);
        else
            stopTasks();
    });
}

void BackupDialog::cancel() {
    m_cancelButton->setEnabled(false);
    if (m_run->isUnderWay()) {
        m_run->cancel();
        return;
    }
    end(false);
    reject();
}

/// What fails here leaves no work that could end the dialog's.
void BackupDialog::attempt(const std::function<void()>& body) {
    const QString title =
        m_type == Type::Export ? BackupExport::failureTitle() : BackupImport::failureTitle();
    bool isDone = false;
    guarded(title, [&] {
        body();
        isDone = true;
    });
    if (isDone || !m_run)
        return;
    m_run->giveUp();
    backupError(title);
    end(false);
}

void BackupDialog::taskManagerStopped() {
    attempt([this] {
        if (m_type == Type::Export) {
            say(BackupExport::beginningText());
            exportBackup();
        } else {
            say(BackupImport::beginningText());
            importBackup();
        }
    });
}

void BackupDialog::exportBackup() {
    const auto command =
        std::make_shared<BackupExport>(liveFilesOf(m_tasks), m_path, QDateTime::currentDateTime());
    say(command->workingText());
    m_run->start([command](const auto& observer, const auto&) { return command->run(observer); });
}

void BackupDialog::importBackup() {
    // Nobody is to be asked when the program ends.
    if (m_wasToBeClosed) {
        giveUpImport();
        return;
    }
    auto* question = makeBox(
        this, QMessageBox::Question, BackupImport::questionText(), BackupImport::questionAdvice(),
        QMessageBox::Yes | QMessageBox::No);
    question->setDefaultButton(QMessageBox::No);
    connect(question, &QMessageBox::finished, this, [this](int answer) {
        attempt([&] {
            if (answer == QMessageBox::Yes)
                runImport();
            else
                giveUpImport();
        });
    });
    question->open();
}

void BackupDialog::giveUpImport() {
    m_run->giveUp();
    end(false);
    reject();
}

void BackupDialog::runImport() {
    const auto command =
        std::make_shared<BackupImport>(liveFilesOf(m_tasks), m_path, QDateTime::currentDateTime());
    say(command->workingText());
    m_run->start([command](const auto& observer, const auto& initialise) {
        return command->run(observer, initialise);
    });
}

/// Grows where the texts want more lines, and never shrinks, which would move the buttons.
void BackupDialog::say(const QString& status, const QString& step) {
    m_status->setText(status);
    m_step->setText(step);
    resize(width(), std::max(height(), layout()->totalHeightForWidth(width())));
}

void BackupDialog::showProgress(const BackupProgress& progress) {
    m_progress->setRange(0, progress.steps);
    m_progress->setValue(progress.step - 1);
    say(m_status->text(), progress.text);
    // The first step is announced before a click could have been heard.
    const bool isFirst = progress.step == 1;
    m_cancelButton->setEnabled(progress.canBeCancelled && (isFirst || m_cancelButton->isEnabled()));
}

void BackupDialog::takeResult(const BackupResult& result) {
    using Outcome = BackupResult::Outcome;
    switch (result.outcome) {
    case Outcome::Finished:
        say(result.message, QDir::toNativeSeparators(result.archive));
        m_progress->setRange(0, 100);
        m_progress->setValue(m_progress->maximum());
        break;
    case Outcome::Cancelled:
        say(tr("Cancelled. Everything is as it was."));
        m_progress->setRange(0, 100);
        m_progress->reset();
        break;
    case Outcome::Failed:
        backupError(result.message);
        if (!result.advice.isEmpty())
            makeBox(this, QMessageBox::Warning, result.message, result.advice, QMessageBox::Ok)->open();
        break;
    }
    end(result.isFinished());
}

void BackupDialog::backupError(const QString& text) {
    m_hasFailed = true;
    say(text);
    colorError();
    m_progress->setRange(0, 100);
    m_progress->setValue(0);
}

void BackupDialog::end(bool succeeded) {
    // Not here and now: this may be one of its signals.
    m_run.release()->deleteLater();
    m_cancelButton->hide();
    m_doneButton->setEnabled(true);
    m_doneButton->setFocus();
    emit ended(succeeded);
    if (m_wasToBeClosed)
        accept();
}

void BackupDialog::reject() {
    if (!isWorking())
        QDialog::reject();
}

void BackupDialog::closeEvent(QCloseEvent* event) {
    if (!isWorking()) {
        QDialog::closeEvent(event);
        return;
    }
    event->ignore();
    m_wasToBeClosed = m_wasToBeClosed || !event->spontaneous();
}

void BackupDialog::changeEvent(QEvent* event) {
    QDialog::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        colorError();
}

void BackupDialog::colorError() {
    const QColor red(palette().color(QPalette::Window).lightness() < 128 ? redOnDark : redOnLight);
    const QString sheet = m_hasFailed ? QStringLiteral("color: %1;").arg(red.name()) : QString();
    if (m_status->styleSheet() != sheet)
        m_status->setStyleSheet(sheet);
}
