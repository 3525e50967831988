#pragma once

#include "ui/details/ProjectRecord.h"

#include <QDeadlineTimer>
#include <QList>
#include <QMetaObject>
#include <QWidget>

class ElidedLabel;
class FolderTreeItemModel;
class ImageView;
class PreviewLoader;
class ProgressSlider;
class ProjectLoader;
class QLabel;
class QPushButton;
class QStackedLayout;
class QTimer;
class StarEditor;
class StatusFields;

namespace Stemhaven {
class TaskManager;
}

/// The selected project: its picture, what its bundle says, and what the user says of it, to be changed here.
/// What is changed is reported; others have it written.
class DetailsPane : public QWidget {
    Q_OBJECT

public:
    /// tasks outlives the pane.
    explicit DetailsPane(Stemhaven::TaskManager& tasks, QWidget* parent = nullptr);

    /// Loads the project and shows it; -1 for none. selectedCount is how many projects changes apply to.
    void selectProject(qint64 projectId, int selectedCount);
    /// Shows what is in the database by now.
    void reload();
    /// As reload(), when the project's bundle may have gone or come back.
    void reloadPicture();
    void setEntries(const FolderTreeItemModel& entries);

    /// While edits are being written, a record that arrives may be older than what the user has set, and is
    /// not shown. The caller reloads after the last of them.
    void setBeingWritten(bool isBeingWritten) { m_isBeingWritten = isBeingWritten; }

    /// Reports a change that the user has not finished yet.
    void commit();

    const ProjectRecord& project() const { return m_project; }

signals:
    /// The selected project's record has come, or there is none.
    void projectShown(const ProjectRecord& record);
    /// The selected project's picture has come too, or it has none.
    void filled();
    void starRatingEdited(int stars);
    void progressEdited(int percent);
    void statusEdited(FilterType type, qint64 statusId);
    void openRequested();

private:
    QWidget* makeNothingSelectedPage();
    QWidget* makeProjectPage();
    void showProject(const ProjectRecord& record);
    void showPreview(const ProjectRecord& record);
    void showNothing();
    void showSelectedCount();
    void showProgress(int percent);
    void progressSliderChanged();
    void connectProjectEvents();
    void disconnectProjectEvents();

    ProjectLoader* m_loader;
    PreviewLoader* m_previews;
    QTimer* m_stalePreview;
    ProjectRecord m_project;
    qint64 m_selectedId = -1;
    int m_selectedCount = 0;
    QDeadlineTimer m_openPause{0}; ///< until it ends, a click is the second of a double click
    bool m_isBeingWritten = false;
    QString m_previewKey; ///< the bundle and the moment of its last change that the picture is of
    QList<QMetaObject::Connection> m_projectEvents;

    ImageView* m_preview;
    ElidedLabel* m_name;
    ElidedLabel* m_details;
    ElidedLabel* m_path;
    QLabel* m_selectedCountLabel;
    StarEditor* m_stars;
    QPushButton* m_open;
    QPushButton* m_release;
    QLabel* m_progressLabel;
    ProgressSlider* m_progress;
    StatusFields* m_statuses;
    QWidget* m_projectPage;
    QStackedLayout* m_pages;
};
