#include "ui/edits/EditHistory.h"

#include "app/errors/DbException.h"
#include "app/errors/ErrorHandler.h"
#include "database/EditTask.h"
#include "database/TaskManager.h"
#include "ui/edits/ProjectEdit.h"

#include <QDebug>
#include <QPointer>

#include <algorithm>
#include <atomic>
#include <utility>

struct EditHistory::Step {
    Step(EditPointer stepEdit, Direction stepDirection, std::vector<EditPointer> stepReplaced)
        : edit(std::move(stepEdit)),
          direction(stepDirection),
          replaced(std::move(stepReplaced)) {}

    EditPointer edit;
    Direction direction;
    std::vector<EditPointer> replaced;   ///< what could have been redone before it
    std::atomic<bool> cancelled = false; ///< it rests on a step that was refused, or its entry is gone
    std::atomic<bool> changesNothing = false;
};

EditHistory::EditHistory(Stemhaven::TaskManager& tasks, QObject* parent) : QObject(parent), m_tasks(tasks) {}

EditHistory::~EditHistory() = default;

void EditHistory::perform(std::unique_ptr<ProjectEdit> edit) {
    const EditPointer shared(std::move(edit));
    m_done.push_back(shared);
    start(shared, Direction::Perform, std::exchange(m_undone, {}));
}

void EditHistory::undo() {
    if (!canUndo())
        return;
    m_undone.push_back(m_done.back());
    m_done.pop_back();
    start(m_undone.back(), Direction::Undo);
}

void EditHistory::redo() {
    if (!canRedo())
        return;
    m_done.push_back(m_undone.back());
    m_undone.pop_back();
    start(m_done.back(), Direction::Redo);
}

QString EditHistory::undoText() const {
    return canUndo() ? m_done.back()->texts().name : QString();
}

QString EditHistory::redoText() const {
    return canRedo() ? m_undone.back()->texts().name : QString();
}

void EditHistory::forgetEntry(FilterType type, qint64 id) {
    {
        const std::lock_guard lock(*m_editMutex);
        std::vector<EditPointer> forgotten;
        const auto forget = [&](std::vector<EditPointer>& edits) {
            std::erase_if(edits, [&](const EditPointer& edit) {
                const bool isForgotten = !edit->forgetEntry(type, id);
                if (isForgotten)
                    forgotten.push_back(edit);
                return isForgotten;
            });
        };
        forget(m_done);
        forget(m_undone);
        for (const auto& step : m_inFlight)
            forget(step->replaced);
        // These steps come after the removal; those before it have ended.
        for (const auto& step : m_inFlight) {
            if (std::find(forgotten.begin(), forgotten.end(), step->edit) != forgotten.end())
                step->cancelled = true;
        }
    }
    emit changed();
}

void EditHistory::start(const EditPointer& edit, Direction direction, std::vector<EditPointer> replaced) {
    auto step = std::make_shared<Step>(edit, direction, std::move(replaced));
    auto plan = [step, mutex = m_editMutex](const QList<QStringList>& state) -> QStringList {
        const std::lock_guard lock(*mutex);
        if (step->cancelled)
            return {};
        auto statements = step->direction == Direction::Undo ? step->edit->undo() : step->edit->redo(state);
        step->changesNothing = statements.isEmpty();
        return statements;
    };
    auto task = std::make_shared<Stemhaven::EditTask>(
        edit->stateStatement(), std::move(plan), m_tasks.mainDatabase());
    task->setSuccessCallback([history = QPointer(this), step](const auto& /*task*/) {
        if (history)
            history->finish(step);
    });
    task->setSqlErrorCallback(
        [history = QPointer(this), step](const auto& /*task*/, const Stemhaven::DbException& error) {
            if (history)
                history->fail(step, error);
        });
    m_inFlight.push_back(std::move(step));
    m_tasks.addTask(std::move(task));
    emit changed();
}

void EditHistory::finish(const std::shared_ptr<Step>& step) {
    std::erase(m_inFlight, step);
    if (step->cancelled) {
        emit changed();
        return;
    }
    if (step->direction == Direction::Perform && step->changesNothing) {
        std::erase(m_done, step->edit);
        if (m_undone.empty() && m_inFlight.empty())
            m_undone = step->replaced;
    }
    if (!step->changesNothing && !step->edit->texts().successLog.isEmpty() &&
        step->direction != Direction::Undo)
        qInfo().noquote() << step->edit->texts().successLog;
    emit changed();
    emit written();
}

void EditHistory::fail(const std::shared_ptr<Step>& step, const Stemhaven::DbException& error) {
    if (step->cancelled) {
        // It has been taken back already.
        finish(step);
        return;
    }
    const auto& texts = step->edit->texts();
    qCritical().noquote() << texts.failureLog;
    qCritical() << error;
    Stemhaven::ErrorHandler::instance().reportError(texts.failureTitle, error, QtCriticalMsg);

    std::erase(m_inFlight, step);
    // The undone and redone steps after it rest on it, and are taken back first.
    for (auto later = m_inFlight.rbegin(); later != m_inFlight.rend(); ++later) {
        if ((*later)->direction != Direction::Perform && !(*later)->cancelled.exchange(true))
            revert(**later);
    }
    revert(*step);
    emit changed();
    emit refused();
}

void EditHistory::revert(const Step& step) {
    std::erase(m_done, step.edit);
    std::erase(m_undone, step.edit);
    if (step.direction == Direction::Undo)
        m_done.push_back(step.edit);
    else if (step.direction == Direction::Redo)
        m_undone.push_back(step.edit);
}
