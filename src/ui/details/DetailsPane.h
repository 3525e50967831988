#pragma once

#include "ui/details/ProjectRecord.h"
#include "ui/details/SelectionSummary.h"

#include <QDeadlineTimer>
#include <QList>
#include <QMetaObject>
#include <QSet>
#include <QWidget>

class ElidedLabel;
class FolderTreeItemModel;
class ImageView;
class NotFoundNotice;
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
/// Of several projects it shows what they have in common. What is changed is reported; others have it
/// written.
class DetailsPane : public QWidget {
    Q_OBJECT

public:
    /// tasks outlives the pane.
    explicit DetailsPane(Stemhaven::TaskManager& tasks, QWidget* parent = nullptr);

    /// Loads the projects, the current one first, and shows them; an empty list for none.
    void selectProjects(const QList<qint64>& projects);
    /// Shows what is in the database by now.
    void reload();
    /// Tries again to read what could not be read; else nothing.
    void retry();
    /// By the ids of their records: of these the bundle is not there.
    void setMissingProjects(const QSet<qint64>& projects);
    void setEntries(const FolderTreeItemModel& entries);

    /// While edits are being written, a record that arrives may be older than what the user has set, and is
    /// not shown. The caller reloads after the last of them.
    void setBeingWritten(bool isBeingWritten) { m_isBeingWritten = isBeingWritten; }

    /// Reports a change that the user has not finished yet.
    void commit();

    /// The current one of those that are shown; not valid where there is none.
    const ProjectRecord& project() const { return m_project; }

    /// The projects that are shown, which are those that changes apply to, the current one first.
    const QList<qint64>& projects() const { return m_shown; }

    const SelectionSummary& summary() const { return m_summary; }

    /// Whether the bundle of project() is not there.
    bool isMissing() const { return m_missing.contains(m_project.id); }

    /// Whether the details of the selected projects have come.
    bool showsSelection() const;

signals:
    /// The details of the selected projects have come, or there are none; or a bundle has gone or come back.
    void projectShown(const ProjectRecord& record);
    /// The selected projects are not in the database, or cannot be read; none are shown now.
    void notAvailable();
    /// The selected project's picture has come too, or there is none.
    void filled();
    void starRatingEdited(int stars);
    void progressEdited(int percent);
    void statusEdited(FilterType type, qint64 statusId);
    void openRequested();
    /// Of the one project that is shown.
    void releaseRequested();

private:
    QWidget* makeNothingSelectedPage();
    QWidget* makeProjectPage();
    void showLoaded(const ProjectRecord& record, const SelectionSummary& summary);
    void showNameAndPlace();
    void showUserData();
    void showMissing();
    void showPreview(const ProjectRecord& record);
    void clearPreview();
    void showNothing();
    void showUnreadable();
    void showProgress(int percent);
    void showProgressText(const QString& progress);
    void progressEditedTo(int percent);
    void connectProjectEvents();
    void disconnectProjectEvents();

    ProjectLoader* m_loader;
    PreviewLoader* m_previews;
    QTimer* m_stalePreview;
    ProjectRecord m_project;
    SelectionSummary m_summary;
    QList<qint64> m_selected;
    QList<qint64> m_shown;
    QSet<qint64> m_missing;
    QDeadlineTimer m_openPause{0}; ///< until it ends, a click is the second of a double click
    bool m_isBeingWritten = false;
    bool m_isUnreadable = false;
    QString m_previewKey; ///< the bundle and the moment of its last change that the picture is of
    QList<QMetaObject::Connection> m_projectEvents;

    ImageView* m_preview;
    ElidedLabel* m_name;
    ElidedLabel* m_details;
    ElidedLabel* m_path;
    NotFoundNotice* m_notFound;
    QLabel* m_selectedCountLabel;
    StarEditor* m_stars;
    QLabel* m_mixedStarsLabel;
    QPushButton* m_open;
    QPushButton* m_release;
    QLabel* m_progressLabel;
    ProgressSlider* m_progress;
    StatusFields* m_statuses;
    QLabel* m_nothingText = nullptr;
    QWidget* m_projectPage;
    QStackedLayout* m_pages;
};
