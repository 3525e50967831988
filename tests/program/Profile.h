#pragma once

#include <QProcess>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

#include <memory>

/// A private profile and a folder of projects, and the real program started on them.
class Profile {
public:
    Profile();
    /// Ends the program if it is running.
    ~Profile();
    Profile(const Profile&) = delete;
    Profile& operator=(const Profile&) = delete;

    QString projects() const { return m_folder.path() + QStringLiteral("/projects"); }

    QString mainDatabase() const {
        return m_folder.path() + QStringLiteral("/data/Stemhaven/stemhaven-main.db");
    }

    QString rootPathsDatabase() const;

    QString lockFile() const { return m_folder.path() + QStringLiteral("/data/Stemhaven/stemhaven.lock"); }

    QString picture() const { return m_folder.path() + QStringLiteral("/picture.png"); }

    /// Has the next start search the folder of projects, as a run does that was interrupted in a search.
    void oweSearch() const;
    bool searchIsOwed() const;

    /// Has the program find one project, "Song", and gives it four stars.
    void recordRatedSong();

    /// Whether the user has been through the setup. Has been until then.
    void setCompletedWizard(bool completed) const;

    /// What the log says so far.
    QString log() const;

    /// The rows of a select over the main database from outside, columns joined by "|". Any other statement
    /// gives nothing.
    QStringList rows(const QString& sql) const;

    /// The language that the programs are started in from now on, as LANGUAGE names it. English until then,
    /// whatever the language of whoever runs the tests, since tests read what the program says.
    void setLanguage(const QString& language) { m_language = language; }

    /// Starts the program, waits for its window or its wizard and leaves it running.
    void start(const QStringList& arguments = {});
    /// Runs the program, or another one, to its end and gives its exit status, -1 when it crashed or hung.
    int runToEnd(const QStringList& arguments, const QString& program = QStringLiteral(PROGRAM));
    /// Sends SIGTERM and gives the exit status, as runToEnd does.
    int terminate();
    void kill();

    qint64 processId() const { return m_process->processId(); }

    /// In KiB, the most that the running program has had in memory; 0 where the system does not tell.
    qint64 peakMemory() const;

    bool isRunning() const { return m_process && m_process->state() == QProcess::Running; }

    QString output() const { return m_output; }

private:
    std::unique_ptr<QProcess> makeProcess() const;
    int statusAtEnd(QProcess& process);
    QString settingsPath() const;

    QTemporaryDir m_folder;
    QString m_language = QStringLiteral("en");
    std::unique_ptr<QProcess> m_process;
    QString m_output;
};
