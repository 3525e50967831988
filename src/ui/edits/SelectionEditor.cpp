#include "ui/edits/SelectionEditor.h"

#include "app/errors/Exception.h"
#include "ui/edits/EditHistory.h"
#include "ui/edits/ProjectEdit.h"
#include "ui/edits/ProjectEdits.h"

#include <QDebug>
#include <QMessageBox>
#include <QPushButton>

#include <algorithm>
#include <utility>

namespace {

bool canBeAssociated(FilterType type) {
    return type == FilterType::COLLECTIONS || type == FilterType::GENRES || type == FilterType::TAGS;
}

/// The first id below 0, if there is one, else the first.
qint64 offending(const QList<qint64>& projects) {
    const auto negative = std::find_if(projects.begin(), projects.end(), [](qint64 id) { return id < 0; });
    return negative != projects.end() ? *negative : projects.value(0, -1);
}

} // namespace

SelectionEditor::SelectionEditor(EditHistory& history, QWidget& window)
    : QObject(&window),
      m_history(history),
      m_window(window) {}

void SelectionEditor::setSelection(const QList<qint64>& projects, bool areIgnored) {
    m_projects = projects;
    m_areIgnored = areIgnored;
}

void SelectionEditor::setStarRating(int stars) {
    if (!m_projects.isEmpty())
        perform(ProjectEdits::starRating(m_projects, stars), Place::Details);
}

void SelectionEditor::rate(const QList<qint64>& projects, int stars) {
    if (!projects.isEmpty())
        perform(ProjectEdits::starRating(projects, stars));
}

void SelectionEditor::toggleRating(qint64 project, int stars) {
    perform(ProjectEdits::toggledStarRating(project, stars));
}

void SelectionEditor::setProgress(int percent) {
    askForProgress(percent, Place::Details);
}

void SelectionEditor::setProgressByMenu(int percent) {
    askForProgress(percent, Place::Menu);
}

void SelectionEditor::askForProgress(int percent, Place place) {
    constexpr int done = 100;
    if (m_projects.isEmpty())
        return;
    if (percent < done || !m_mayAsk) {
        perform(ProjectEdits::progress(m_projects, percent, false), place);
        return;
    }
    QMessageBox* question =
        ask(m_projects.size() == 1
                ? tr("Do you want to mark this project as completed?")
                : tr("Do you want to mark these %1 projects as completed?").arg(m_projects.size()),
            tr("Completed projects are hidden by default but you can always change this in the View menu."));
    question->setStandardButtons(QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel);
    // Escape would count as No otherwise, being the only other way out.
    question->setEscapeButton(QMessageBox::Cancel);
    question->button(QMessageBox::Cancel)->hide();
    connect(question, &QMessageBox::finished, this, [this, place, projects = m_projects](int answer) {
        if (answer == QMessageBox::Yes || answer == QMessageBox::No)
            perform(ProjectEdits::progress(projects, done, answer == QMessageBox::Yes), place);
        else
            emit cancelled();
    });
    question->open();
}

void SelectionEditor::setStatus(FilterType type, qint64 statusId) {
    if (!m_projects.isEmpty())
        perform(ProjectEdits::status(m_projects, type, statusId), Place::Details);
}

void SelectionEditor::setStatusByMenu(FilterType type, qint64 statusId) {
    if (!m_projects.isEmpty())
        perform(ProjectEdits::status(m_projects, type, statusId));
}

void SelectionEditor::ignoreSelectedProject() {
    if (m_projects.isEmpty())
        return;
    if (m_areIgnored) {
        perform(ProjectEdits::ignored(m_projects, false));
        return;
    }
    QMessageBox* question =
        ask(m_projects.size() == 1
                ? tr("Are you sure you want to ignore this project?")
                : tr("Are you sure you want to ignore these %1 projects?").arg(m_projects.size()),
            tr("This will not remove its project record or stop monitoring but it won't show by default "
               "anymore in Stemhaven."));
    const auto* ignore = question->addButton(tr("&Ignore"), QMessageBox::AcceptRole);
    question->addButton(QMessageBox::Cancel);
    connect(question, &QMessageBox::finished, this, [this, question, ignore, projects = m_projects] {
        if (question->clickedButton() == ignore)
            perform(ProjectEdits::ignored(projects, true));
    });
    question->open();
}

void SelectionEditor::deleteSelectedProjectRecord() {
    if (m_projects.isEmpty())
        return;
    QMessageBox* question = ask(
        m_projects.size() == 1
            ? tr("Are you sure you want to delete the record for this project?")
            : tr("Are you sure you want to delete the records for these %1 projects?").arg(m_projects.size()),
        tr("This will not delete the project files but it will delete all progress, rating, and status "
           "in Stemhaven. Stemhaven's Project Monitor will add a new record if this project is found "
           "again. If you don't want that to happen, Ignore the project instead."));
    const auto* deletion = question->addButton(tr("&Delete record"), QMessageBox::AcceptRole);
    question->setDefaultButton(question->addButton(tr("&Cancel"), QMessageBox::RejectRole));
    connect(question, &QMessageBox::finished, this, [this, question, deletion, projects = m_projects] {
        if (question->clickedButton() == deletion)
            perform(ProjectEdits::deletion(projects));
    });
    question->open();
}

void SelectionEditor::perform(std::unique_ptr<ProjectEdit> edit, Place place) {
    emit editing(place == Place::Menu);
    m_history.perform(std::move(edit));
}

QMessageBox* SelectionEditor::ask(const QString& text, const QString& details) {
    auto* question = new QMessageBox(&m_window);
    question->setAttribute(Qt::WA_DeleteOnClose);
    question->setIcon(QMessageBox::Question);
    question->setText(text);
    question->setInformativeText(details);
    return question;
}

void SelectionEditor::associateProjectsWithFilter(
    FilterType type, qint64 filterId, const QList<qint64>& projects) {
    const qint64 project = offending(projects);
    if (filterId < 0 || project < 0) {
        throw Stemhaven::Exception(
            QStringLiteral("Attempted to associate a project with invalid IDs! %1-ID:%2 projectID:%3")
                .arg(filterTypeDebugText(type), QString::number(filterId), QString::number(project)));
    }
    if (canBeAssociated(type))
        perform(ProjectEdits::association(projects, type, filterId));
    else
        qCritical().nospace() << "Attempted to associate project_id:" << project
                              << " with unsupported filter: " << type;
}

void SelectionEditor::disassociateProjectsWithFilter(
    FilterType type, qint64 filterId, const QList<qint64>& projects) {
    const qint64 project = offending(projects);
    if (filterId < 0 || project < 0) {
        throw Stemhaven::Exception(
            QStringLiteral("Attempted to disassociate a project with invalid IDs! filterID:%1 projectID:%2")
                .arg(filterId)
                .arg(project));
    }
    if (canBeAssociated(type))
        perform(ProjectEdits::disassociation(projects, type, filterId));
    else
        qCritical().nospace() << "Attempted to disassociate project_id:" << project
                              << " with unsupported filter: " << type;
}
