#pragma once

#include "database/FilterType.h"
#include "ui/sidebar/WritingDialog.h"

#include <QSet>
#include <QString>

class EditHistory;
class ErrorLabel;
class QLabel;
class QLineEdit;
class QPushButton;

namespace Stemhaven {
class TaskManager;
} // namespace Stemhaven

/// Asks for the name of a new entry of the sidebar, or for another name of an old one, and has it written, as
/// an edit that can be undone. Shown by open(). Statuses can be edited too.
class AddFilterForm : public WritingDialog {
    Q_OBJECT

public:
    enum class EditType { Add, Rename };

    /// tasks and history outlive the dialog. name is what the line starts with, id the entry that is renamed,
    /// -1 for a new one.
    AddFilterForm(
        Stemhaven::TaskManager& tasks, EditHistory& history, FilterType type, const QString& name,
        EditType editType, qint64 id, QWidget* parent);

    /// Writes the name; the dialog closes when that has succeeded.
    void accept() override;
    void reject() override;

signals:
    void onFilterAdded(FilterType type, QString name, qint64 id);
    void onFilterRenamed(FilterType type, QString name, qint64 id);

private:
    void layOut();
    void setTexts();
    void loadNames();
    void takeNames(QSet<QString> names);
    void checkName();
    QString problemWith(const QString& name) const;
    bool isAcceptable() const;
    void add(const QString& name);
    void rename(const QString& name);
    void showWriting(bool writing) override;

    Stemhaven::TaskManager& m_tasks;
    EditHistory& m_history;
    const FilterType m_type;
    const EditType m_editType;
    const qint64 m_id;
    const QString m_oldName;
    QSet<QString> m_names;
    bool m_namesAreKnown = false;
    bool m_acceptWhenNamesAreKnown = false;

    QLabel* m_promptLabel;
    QLineEdit* m_nameEdit;
    ErrorLabel* m_errorLabel;
    QPushButton* m_acceptButton = nullptr;
};
