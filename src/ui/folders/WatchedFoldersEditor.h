#pragma once

#include <QString>
#include <QWidget>

class FolderAdder;
class FolderRemover;
class QLabel;
class QListView;
class QPushButton;
class WatchedFoldersModel;

namespace Stemhaven {
class ProjectMonitor;
class TaskManager;
} // namespace Stemhaven

/// The list of the folders in which projects are looked for, with buttons that add and remove one. Folders
/// can be dropped on it as well.
class WatchedFoldersEditor : public QWidget {
    Q_OBJECT

public:
    /// What differs between the places where the list is shown.
    struct Words {
        QString loadingFailure; ///< of the database
        QString readingFailure; ///< of anything else
        QString addingFailure;
        QString selectionFailure;
        QString addButtonName;    ///< of the object
        QString removeButtonName; ///< of the object
    };

    /// Both outlive the widget. Begins to load the folders.
    WatchedFoldersEditor(
        Stemhaven::TaskManager& tasks, Stemhaven::ProjectMonitor& monitor, Words words,
        QWidget* parent = nullptr);

    bool isEmpty() const;

    /// Reads the folders again.
    void reload();

signals:
    /// A folder has been added or removed, and is so in the database. The monitor has not been told.
    void edited();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void layOut();
    void layOutHint();
    void setUpEvents();
    void removeCurrent();
    void updateButtons();
    void keepSelection();

    const Words m_words;
    WatchedFoldersModel* m_model;
    QListView* m_list;
    QLabel* m_hint;
    QPushButton* m_addButton;
    QPushButton* m_removeButton;
    FolderAdder* m_adder;
    FolderRemover* m_remover;
    QString m_selected; ///< the folder to be selected when the list has it
};
