#pragma once

#include "backup/BackupSteps.h"
#include "backup/LiveFiles.h"
#include "database/DatabaseInitStatements.h"
#include "support/OutsideRows.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <functional>

/// Runs body in a process of its own, which ends there and then, at the latest with body, without cleaning
/// up.
inline void inKilledProcess(const std::function<void()>& body) {
    const pid_t child = fork();
    if (child == 0) {
        body();
        _exit(0);
    }
    waitpid(child, nullptr, 0);
}

/// Ends the process before that step.
inline Stemhaven::BackupObserver killedAt(int step) {
    return [step](const Stemhaven::BackupProgress& progress) {
        if (progress.step == step)
            _exit(0);
        return true;
    };
}

/// A folder with the live files of a program that does not run: two databases and settings.
class BackupProfile {
public:
    using State = std::array<QByteArray, 3>;

    BackupProfile() {
        QDir(m_folder.path()).mkpath("profile");
        QDir(m_folder.path()).mkpath("config");
        QDir(m_folder.path()).mkpath("there");
    }

    QString folder() const { return m_folder.path(); }

    /// An empty one, for backups.
    QString there() const { return m_folder.filePath("there"); }

    Stemhaven::LiveFiles live() const {
        return {
            m_folder.filePath("profile/stemhaven-main.db"),
            m_folder.filePath("profile/stemhaven-root-paths.db"), m_folder.filePath("config/Stemhaven.conf")};
    }

    /// Makes all three, with contents of that name.
    void fill(const QString& name) const { fill(live(), name); }

    static void fill(const Stemhaven::LiveFiles& files, const QString& name) {
        const Stemhaven::DatabaseInitStatements statements(Stemhaven::currentDatabaseVersion);
        for (const auto& file : files.all())
            QFile::remove(file);
        run(files.mainDatabase,
            QStringList{"PRAGMA journal_mode=WAL"} + statements.initMainSQL() +
                QStringList{statements.insertVersion(), project(name)});
        run(files.rootPathsDatabase,
            {statements.initRootPathsSQL(),
             QString("INSERT INTO root_project_search_paths VALUES('/%1')").arg(name)});
        write(files.settings, "[General]\nname=" + name.toUtf8() + "\n");
    }

    static QString project(const QString& name) {
        return QString("INSERT INTO projects(filepath, filename, name, bpm, number_of_tracks, sample_rate, "
                       "notes) "
                       "VALUES('/', '%1.logicx', '%1', 120, 1, 44100, randomblob(20000))")
            .arg(name);
    }

    static QStringList run(const QString& path, const QStringList& statements) {
        return outsideRows(path, statements);
    }

    static QStringList projects(const QString& mainDatabase) {
        return run(mainDatabase, {"SELECT name FROM projects"});
    }

    /// Adds a project as a program does that is killed before that is moved into the database file.
    void leaveInLog(const QString& name) const {
        const QString path = live().mainDatabase;
        inKilledProcess([&] {
            auto database = QSqlDatabase::addDatabase("QSQLITE", "killed");
            database.setDatabaseName(path);
            database.open();
            QSqlQuery(database).exec(project(name));
            _exit(0);
        });
    }

    static void write(const QString& path, const QByteArray& contents) {
        QFile file(path);
        if (file.open(QIODevice::WriteOnly))
            file.write(contents);
    }

    static QByteArray read(const QString& path) {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("-");
    }

    State state() const { return state(live()); }

    static State state(const Stemhaven::LiveFiles& live) {
        const auto files = live.all();
        return {read(files[0]), read(files[1]), read(files[2])};
    }

    /// All that is in the folders of the live files and of the backups, but copies of databases.
    std::string names() const {
        std::string names;
        for (const char* sub : {"profile", "config", "there"}) {
            for (const auto& name : QDir(m_folder.filePath(sub)).entryList(everything, QDir::Name)) {
                if (name != "Backups")
                    names += std::string(sub) + '/' + name.toStdString() + ' ';
            }
        }
        return names;
    }

    static constexpr auto everything = QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot;

private:
    QTemporaryDir m_folder;
};
