#pragma once

#include <QObject>

namespace Stemhaven {
class TaskManager;
}

/// Finds out whether there is any project at all, those that are hidden included.
class CatalogueCheck : public QObject {
    Q_OBJECT

public:
    /// tasks outlives this object.
    CatalogueCheck(Stemhaven::TaskManager& tasks, QObject* parent);

    /// Answers once by finished(), unless the database fails.
    void start();

signals:
    void finished(bool isEmpty);

private:
    Stemhaven::TaskManager& m_tasks;
};
