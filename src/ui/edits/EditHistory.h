#pragma once

#include "database/FilterType.h"

#include <QList>
#include <QObject>

#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <vector>

class Edit;

namespace Stemhaven {
class DbException;
class TaskManager;
} // namespace Stemhaven

/// Has the user's edits written, and takes them back and does them again in the order in which they were
/// made. Nothing waits: each step is queued at once, so that none is lost when the program ends. GUI thread.
class EditHistory : public QObject {
    Q_OBJECT

public:
    /// tasks outlives this object.
    explicit EditHistory(Stemhaven::TaskManager& tasks, QObject* parent = nullptr);
    ~EditHistory() override;
    Q_DISABLE_COPY(EditHistory)

    using Ended = std::function<void(bool succeeded)>;

    /// ended is called when the edit is in the database, or was refused.
    void perform(std::unique_ptr<Edit> edit, Ended ended = {});
    /// Nothing where there is nothing to undo.
    void undo();
    void redo();

    /// Forgets all that could be undone and redone: the catalogue is another one. Nothing is being written.
    void clear();

    bool canUndo() const { return !m_done.empty(); }

    bool canRedo() const { return !m_undone.empty(); }

    /// Whether steps are under way, so that the database may still hold what they are about to change.
    bool isWriting() const { return !m_inFlight.empty(); }

    /// What the next step is called; empty when there is none.
    QString undoText() const;
    QString redoText() const;

signals:
    /// There may be other edits to undo or redo, and other steps under way.
    void changed();
    /// What the next step to undo has just done, where that is worth saying. Empty: it is not the next one
    /// any more.
    void undoOffered(const QString& done);
    /// An edit was undone or redone, which changed these projects, or brought them back. Before written().
    void wentBackOrForth(const QList<qint64>& projects);
    /// An entry of the sidebar came back by it. Before written().
    void entryCameBack(FilterType type, qint64 id);
    /// A step is in the database.
    void written();
    /// The database refused a step, which the user has been told, and holds what it held before.
    void refused();

private:
    enum class Direction { Perform, Undo, Redo };
    struct Step;
    using EditPointer = std::shared_ptr<Edit>;

    void start(const EditPointer& edit, Direction direction, std::shared_ptr<Step> step);
    static void followNewNumbers(const Step& step);
    void tellOfChange(const Edit& edit);
    void offerUndo(const Step& step);
    void finish(const std::shared_ptr<Step>& step);
    void fail(const std::shared_ptr<Step>& step, const Stemhaven::DbException& error);
    void revert(const Step& step);
    void giveBack(const std::vector<EditPointer>& replaced);

    Stemhaven::TaskManager& m_tasks;
    std::vector<EditPointer> m_done;   // the next to undo is the last
    std::vector<EditPointer> m_undone; // the next to redo is the last
    std::deque<std::shared_ptr<Step>> m_inFlight;
    /// Held while an edit makes its statements on the worker, which may outlive this object.
    std::shared_ptr<std::mutex> m_editMutex = std::make_shared<std::mutex>();
};
