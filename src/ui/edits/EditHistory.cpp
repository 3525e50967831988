#include "ui/edits/EditHistory.h"

#include "app/errors/DbException.h"
#include "app/errors/ErrorHandler.h"
#include "database/EditTask.h"
#include "database/TaskManager.h"
#include "ui/edits/Edit.h"

#include <QDebug>
#include <QPointer>

#include <algorithm>
#include <atomic>
#include <utility>

struct EditHistory::Step {
    EditPointer edit;
    Direction direction = Direction::Perform;
    std::vector<EditPointer> replaced; ///< what could have been redone before it
    Ended ended;
    std::vector<EditPointer> earlier;    ///< the edits that had been done when it was made
    std::vector<EditPointer> later;      ///< those that had been undone
    std::atomic<bool> cancelled = false; ///< it rests on a step that was refused
    std::atomic<bool> changesNothing = false;
};

EditHistory::EditHistory(Stemhaven::TaskManager& tasks, QObject* parent) : QObject(parent), m_tasks(tasks) {}

EditHistory::~EditHistory() = default;

void EditHistory::perform(std::unique_ptr<Edit> edit, Ended ended) {
    const EditPointer shared(std::move(edit));
    m_done.push_back(shared);
    auto step = std::make_shared<Step>();
    step->replaced = std::exchange(m_undone, {});
    step->ended = std::move(ended);
    start(shared, Direction::Perform, std::move(step));
}

void EditHistory::undo() {
    if (!canUndo())
        return;
    m_undone.push_back(m_done.back());
    m_done.pop_back();
    start(m_undone.back(), Direction::Undo, std::make_shared<Step>());
}

void EditHistory::redo() {
    if (!canRedo())
        return;
    m_done.push_back(m_undone.back());
    m_undone.pop_back();
    start(m_done.back(), Direction::Redo, std::make_shared<Step>());
}

void EditHistory::clear() {
    m_done.clear();
    m_undone.clear();
    emit undoOffered({});
    emit changed();
}

QString EditHistory::undoText() const {
    return canUndo() ? m_done.back()->texts().name : QString();
}

QString EditHistory::redoText() const {
    return canRedo() ? m_undone.back()->texts().name : QString();
}

void EditHistory::start(const EditPointer& edit, Direction direction, std::shared_ptr<Step> step) {
    step->edit = edit;
    step->direction = direction;
    step->earlier = m_done;
    step->later = m_undone;
    auto select = [step, mutex = m_editMutex] {
        const std::lock_guard lock(*mutex);
        return step->direction == Direction::Undo ? step->edit->undoStateStatement()
                                                  : step->edit->stateStatement();
    };
    auto plan = [step, mutex = m_editMutex](const QList<QStringList>& state) -> QStringList {
        const std::lock_guard lock(*mutex);
        if (step->cancelled)
            return {};
        auto statements =
            step->direction == Direction::Undo ? step->edit->undo(state) : step->edit->redo(state);
        step->changesNothing = statements.isEmpty();
        followNewNumbers(*step);
        return statements;
    };
    auto task =
        std::make_shared<Stemhaven::EditTask>(std::move(select), std::move(plan), m_tasks.mainDatabase());
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
    emit undoOffered({});
    emit changed();
}

/// On the worker, in the order in which the steps are written, so that a step behind this one has the
/// numbers.
void EditHistory::followNewNumbers(const Step& step) {
    const auto renumberings = step.edit->renumberings();
    for (const auto& renumbering : renumberings) {
        const bool areEarlier = renumbering.scope == Edit::Renumbering::Scope::EarlierEdits;
        for (const EditPointer& edit : areEarlier ? step.earlier : step.later) {
            if (edit != step.edit)
                edit->renumber(renumbering);
        }
    }
}

void EditHistory::finish(const std::shared_ptr<Step>& step) {
    std::erase(m_inFlight, step);
    if (step->cancelled) {
        emit changed();
        return;
    }
    const auto& edit = step->edit;
    if (step->direction == Direction::Perform && step->changesNothing) {
        std::erase(m_done, edit);
        giveBack(step->replaced);
    }
    if (!step->changesNothing && !edit->texts().successLog.isEmpty() && step->direction != Direction::Undo)
        qInfo().noquote() << edit->texts().successLog;
    emit changed();
    if (step->ended)
        step->ended(true);
    if (step->direction != Direction::Perform && !step->changesNothing)
        tellOfChange(*edit);
    emit written();
    offerUndo(*step);
}

void EditHistory::offerUndo(const Step& step) {
    const bool isNext = canUndo() && m_done.back() == step.edit;
    const QString& done = step.edit->texts().done;
    if (step.direction == Direction::Perform && !step.changesNothing && isNext && !done.isEmpty())
        emit undoOffered(done);
}

void EditHistory::tellOfChange(const Edit& edit) {
    std::unique_lock lock(*m_editMutex);
    const QList<qint64> projects = edit.changedProjects();
    const auto entry = edit.broughtEntry();
    lock.unlock();
    emit wentBackOrForth(projects);
    if (entry)
        emit entryCameBack(entry->type, entry->id);
}

void EditHistory::fail(const std::shared_ptr<Step>& step, const Stemhaven::DbException& error) {
    if (step->cancelled) {
        // It has been taken back already.
        finish(step);
        return;
    }
    step->edit->logFailure(error);
    Stemhaven::ErrorHandler::instance().reportError(step->edit->texts().failureTitle, error, QtCriticalMsg);

    std::erase(m_inFlight, step);
    // The undone and redone steps after it rest on it, and are taken back first.
    for (auto later = m_inFlight.rbegin(); later != m_inFlight.rend(); ++later) {
        if ((*later)->direction != Direction::Perform && !(*later)->cancelled.exchange(true))
            revert(**later);
    }
    revert(*step);
    giveBack(step->replaced);
    emit changed();
    if (step->ended)
        step->ended(false);
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

/// What an edit that has come to nothing replaced can be redone again, unless another edit stands behind it.
void EditHistory::giveBack(const std::vector<EditPointer>& replaced) {
    const auto next = std::find_if(m_inFlight.begin(), m_inFlight.end(), [](const auto& step) {
        return step->direction == Direction::Perform;
    });
    auto& place = next != m_inFlight.end() ? (*next)->replaced : m_undone;
    place.insert(place.begin(), replaced.begin(), replaced.end());
}
