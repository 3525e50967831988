#pragma once

#include <QObject>

namespace Stemhaven {
class QueryBuilder;
class TaskManager;
} // namespace Stemhaven

/// Counts the projects that the table would show too if it hid none.
class HiddenCount : public QObject {
    Q_OBJECT

public:
    /// Both outlive this object.
    HiddenCount(Stemhaven::TaskManager& tasks, const Stemhaven::QueryBuilder& builder, QObject* parent);

    /// For the builder's settings of this moment. Answers once by counted().
    void start();

signals:
    /// 0 also where the database fails.
    void counted(int projects);

private:
    Stemhaven::TaskManager& m_tasks;
    const Stemhaven::QueryBuilder& m_builder;
};
