#pragma once

#include "Song.h"
#include "database/TaskManager.h"

#include <QDate>
#include <QEventLoop>
#include <QString>
#include <QStringList>

#include <memory>
#include <string>
#include <vector>

namespace DemoLibrary {

/// Records a written library in the current profile, as if Stemhaven had watched it for years: set up, the
/// library as the folder to watch, a record a project and what the user entered.
class CatalogueWriter {
public:
    /// Throws std::runtime_error where the profile has a catalogue already (it might be a real one) or cannot
    /// have one.
    static void checkProfile();

    /// library is absolute, without a trailing "/". today is what the releases are made up for.
    CatalogueWriter(QString library, bool userData, QDate today);

    /// Returns when everything is in the databases. Throws std::runtime_error for the first failure. Needs
    /// the application object and runs its events.
    void write(const std::vector<Song>& songs);

    QString databasePath() const { return m_tasks.mainPath(); }

private:
    void addLibrary();
    void addSong(const Song& song);
    void addEnd();
    void addStatements(const QStringList& statements, const std::shared_ptr<Stemhaven::Task>& parent = {});
    void fail(const std::string& reason);

    QString m_library;
    bool m_userData;
    QDate m_today;
    Stemhaven::TaskManager m_tasks;
    QEventLoop m_loop;
    std::string m_failure;
};

} // namespace DemoLibrary
