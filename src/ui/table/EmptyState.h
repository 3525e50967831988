#pragma once

#include <QScrollArea>
#include <QStringList>

class QLabel;
class QPushButton;
class TracksEmblem;

/// What stands in the place of the table when it shows nothing: why, and the next step.
class EmptyState : public QScrollArea {
    Q_OBJECT

public:
    enum class Reason {
        NoProjects,      ///< nothing has been catalogued yet
        Searching,       ///< as NoProjects, while the folders are being looked through
        AllHidden,       ///< every project is completed or ignored
        MatchesHidden,   ///< only hidden projects match the search and the filter
        NothingFound,    ///< no project matches the search
        NothingInFilter, ///< no project is in the collection, has the tag, and so on
        NoColumns,       ///< there are projects, but every column is hidden
        Unreadable       ///< the catalogue could not be read
    };

    explicit EmptyState(QWidget* parent = nullptr);

    /// name is what was searched, for NothingFound, the filter's, for NothingInFilter, the log file's, for
    /// Unreadable, or the title, for MatchesHidden.
    void present(Reason reason, const QString& name = {});

    /// MatchesHidden, with their number.
    void presentHidden(int projects);

    /// NoProjects, with the folders that are watched, if any.
    void presentNoProjects(const QStringList& folders);

    Reason reason() const { return m_reason; }

signals:
    void addFolderRequested();
    void showHiddenRequested();
    void clearSearchRequested();
    void showAllRequested();
    void showColumnRequested();
    void reloadRequested();

protected:
    /// The texts wrap in what room there is.
    void resizeEvent(QResizeEvent* event) override;

private:
    void performAction();
    void setTexts(const QString& title, const QString& help, const QString& action);

    TracksEmblem* m_emblem;
    QLabel* m_title;
    QLabel* m_help;
    QPushButton* m_action;
    Reason m_reason = Reason::NoProjects;
};
