#pragma once

#include "database/FilterType.h"

#include <QList>
#include <QObject>

#include <memory>

class EditHistory;
class ProjectEdit;
class QMessageBox;

/// Edits the selected projects: asks where the user is to be asked, and hands the edit to the history.
class SelectionEditor : public QObject {
    Q_OBJECT

public:
    /// Questions are put on top of window. Both outlive this object.
    SelectionEditor(EditHistory& history, QWidget& window);

    /// What the edits apply to from now on, the current project first, and whether all of them are ignored. A
    /// question that is open is still about those of its time.
    void setSelection(const QList<qint64>& projects, bool areIgnored);

    const QList<qint64>& selection() const { return m_projects; }

    /// For a window that closes: what would be asked counts as answered with no.
    void stopAsking() { m_mayAsk = false; }

    // In the details.
    void setStarRating(int stars);
    /// Asks at 100 whether that is completed; without an answer nothing changes.
    void setProgress(int percent);
    void setStatus(FilterType type, qint64 statusId);

    // By a menu, a key or in the table.
    void setProgressByMenu(int percent);
    void setStatusByMenu(FilterType type, qint64 statusId);
    /// Of these, whatever the edits apply to.
    void rate(const QList<qint64>& projects, int stars);
    /// As rate(), or takes the rating away where it is that one already.
    void toggleRating(qint64 project, int stars);
    void ignoreSelectedProject();
    void deleteSelectedProjectRecord();

    /// Both throw Exception for an id below 0 and log a type that projects cannot be associated with.
    void associateProjectsWithFilter(FilterType type, qint64 filterId, const QList<qint64>& projects);
    void disassociateProjectsWithFilter(FilterType type, qint64 filterId, const QList<qint64>& projects);

signals:
    /// An edit begins: by a menu, or in the details.
    void editing(bool byMenu);
    /// The user has taken back an edit that the window shows already.
    void cancelled();

private:
    enum class Place { Menu, Details };

    void askForProgress(int percent, Place place);
    void perform(std::unique_ptr<ProjectEdit> edit, Place place = Place::Menu);
    QMessageBox* ask(const QString& text, const QString& details);

    EditHistory& m_history;
    QWidget& m_window;
    QList<qint64> m_projects;
    bool m_areIgnored = false; ///< all of them
    bool m_mayAsk = true;
};
