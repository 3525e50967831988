#pragma once

#include "database/FilterType.h"

#include <QWidget>

class EditHistory;
class QComboBox;
class QListWidget;
class QPushButton;
class QSqlQuery;

namespace Stemhaven {
class TaskManager;
}

/// The labels of the four kinds of status. What is done to them are edits that can be undone.
class StatusPage : public QWidget {
    Q_OBJECT

public:
    /// Both outlive the page.
    StatusPage(Stemhaven::TaskManager& tasks, EditHistory& history, QWidget* parent = nullptr);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void layOut();
    void setUpEvents();
    FilterType kind() const;
    void reload();
    void take(FilterType type, QSqlQuery& labels);
    void addLabel();
    void renameLabel();
    void removeLabel();
    void updateButtons();

    Stemhaven::TaskManager& m_tasks;
    EditHistory& m_history;
    QComboBox* m_kinds;
    QListWidget* m_labels;
    QPushButton* m_addButton;
    QPushButton* m_removeButton;
    QPushButton* m_renameButton;
    qint64 m_selected = defaultStatusId;
};
