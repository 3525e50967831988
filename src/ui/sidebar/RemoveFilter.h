#pragma once

#include "database/FilterType.h"
#include "ui/sidebar/WritingDialog.h"

class EditHistory;
class QLabel;
class QListView;
class QPushButton;
class QStringListModel;

namespace Stemhaven {
class TaskManager;
} // namespace Stemhaven

/// Asks whether an entry of the sidebar is to be removed, tells which projects use it, and removes it
/// together with what refers to it, as an edit that can be undone. Shown by open(). Default statuses cannot
/// be removed.
class RemoveFilter : public WritingDialog {
    Q_OBJECT

public:
    /// tasks and history outlive the dialog.
    RemoveFilter(
        Stemhaven::TaskManager& tasks, EditHistory& history, FilterType type, qint64 id, const QString& name,
        QWidget* parent);

    /// Removes; the dialog closes when that has succeeded.
    void accept() override;
    void reject() override;

signals:
    /// The entry and all that referred to it are gone.
    void removed(FilterType type, qint64 id);

private:
    void layOut();
    void loadProjects();
    void takeProjects(const QStringList& names);
    void showNoProjects();
    void removeEntry();
    void finish();
    void showWriting(bool writing) override;

    Stemhaven::TaskManager& m_tasks;
    EditHistory& m_history;
    const FilterType m_type;
    const qint64 m_id;
    const QString m_name;

    QLabel* m_promptLabel;
    QLabel* m_questionLabel;
    QListView* m_projectsView;
    QStringListModel* m_projects;
    QPushButton* m_removeButton = nullptr;
};
