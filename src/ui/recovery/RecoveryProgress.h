#pragma once

#include <QBasicTimer>
#include <QWidget>

class QLabel;
class QProgressBar;
class QPushButton;

/// How far a search or a repair of damaged projects is, and the button that ends it.
class RecoveryProgress : public QWidget {
    Q_OBJECT

public:
    explicit RecoveryProgress(QWidget* parent);

    /// The button that is shown while something goes on.
    QPushButton& stopButton() const { return *m_stop; }

    /// A search does not know how much lies before it.
    void beginSearch();
    void beginRepair(int projects);
    /// Hides the button.
    void end();
    /// The user has asked for the end.
    void showStopping();

    void setSearched(int lookedAt, int found);
    void setRecovered(int recovered, int projects);
    void setStatus(const QString& status);
    void setNote(const QString& note);
    /// What a search looked at, and what it could not look at.
    void setSearchNote(int lookedAt, bool isCancelled, const QStringList& unreadable);

protected:
    /// Moves the bar of a search.
    void timerEvent(QTimerEvent* event) override;

private:
    void layOut();
    void showStopButton(const QString& text);

    QLabel* m_status;
    QProgressBar* m_bar;
    QLabel* m_note;
    QPushButton* m_stop;
    QBasicTimer m_frames; ///< runs during a search
    bool m_isStopping = false;
};
