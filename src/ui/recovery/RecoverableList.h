#pragma once

#include "project/RecoverableProject.h"

#include <QListWidget>

class QLabel;

/// The damaged projects that a search has found, to be checked for their repair, and what became of that.
class RecoverableList : public QListWidget {
    Q_OBJECT

public:
    explicit RecoverableList(QWidget* parent = nullptr);

    /// One line, whatever characters the names of a stranger's folders have.
    static QString shownPath(const QString& path);

    /// None of them is checked.
    void setProjects(const QList<Stemhaven::RecoverableProject>& projects);

    const Stemhaven::RecoverableProject& project(int row) const { return m_projects[row]; }

    /// Rows, from above.
    QList<int> checked() const;
    /// How many can be checked.
    int checkable() const;
    void setAllChecked(bool isChecked);
    /// While they are being repaired, nothing is checked.
    void lock(bool isLocked);

    void markRecovered(int row);
    void markFailed(int row, const QString& reason);
    /// The first that is marked so, or -1.
    int firstFailed() const;

    /// What the repair of the current one does, or why it has failed.
    QString currentDetails() const;

    /// Stands in the place of the entries while there are none.
    void setHint(const QString& hint);

signals:
    void checksChanged();
    void currentDetailsChanged();

private:
    enum class State { Damaged, Recovered, Failed };

    State stateOf(int row) const;
    void setState(int row, State state, const QString& text, const QString& details);

    QList<Stemhaven::RecoverableProject> m_projects;
    QLabel* m_hint;
    bool m_isLocked = false;
};
