#pragma once

#include "database/ReleaseStatements.h"
#include "ui/sidebar/WritingDialog.h"

class CalendarPane;
class EditHistory;
class ErrorLabel;
class QCheckBox;
class QDateEdit;
class QLineEdit;
class QPushButton;

namespace Stemhaven {
class TaskManager;
}

/// The release details of one project, which it reads when it is made, and writes as one edit that can be
/// undone. It stays open until they are written. Shown by open().
class ReleaseDialog : public WritingDialog {
    Q_OBJECT

public:
    /// tasks and history outlive the dialog. It does nothing for an id of 0 or less.
    ReleaseDialog(
        Stemhaven::TaskManager& tasks, EditHistory& history, qint64 projectId, QWidget* parent = nullptr);

    qint64 projectId() const { return m_projectId; }

    /// "Save"; the dialog closes when the details have been written.
    void accept() override;
    /// Does nothing while they are being written.
    void reject() override;

signals:
    /// The fields show what is stored.
    void filled();

private:
    void layOut();
    QLineEdit* makeEdit(const char* name, const QString& placeholder, const QString& toolTip);
    QWidget* makeFields();
    QWidget* makeDateFields();
    void setupEvents();
    void load();
    void takeDetails(const Stemhaven::ReleaseDetails& details);
    void showUnreadable();
    void showDate(QDate day);
    Stemhaven::ReleaseDetails details() const;
    void save();
    void showWriting(bool writing) override;

    Stemhaven::TaskManager& m_tasks;
    EditHistory& m_history;
    const qint64 m_projectId;
    bool m_isFilled = false;

    QLineEdit* m_releaseName;
    QLineEdit* m_artist;
    QLineEdit* m_album;
    QLineEdit* m_isrc;
    QLineEdit* m_upc;
    QCheckBox* m_isCompleted;
    QCheckBox* m_isReleased;
    QDateEdit* m_date;
    CalendarPane* m_calendar;
    ErrorLabel* m_error;
    QPushButton* m_done = nullptr;
    QPushButton* m_cancel = nullptr;
    QWidget* m_fields = nullptr;
};
