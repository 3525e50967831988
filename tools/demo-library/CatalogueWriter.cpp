#include "CatalogueWriter.h"

#include "UserEdits.h"
#include "app/Paths.h"
#include "app/errors/DbException.h"
#include "database/DatabaseInit.h"
#include "database/MultistatementTask.h"
#include "database/QueryTask.h"
#include "database/RootPathStatements.h"
#include "database/SimpleTask.h"
#include "project/ProjectDetails.h"

#include <QDir>
#include <QFileInfo>
#include <QSettings>

#include <exception>
#include <stdexcept>
#include <utility>

namespace DemoLibrary {

using Stemhaven::DbException;
using Stemhaven::Task;

void CatalogueWriter::checkProfile() {
    const QFileInfo database(Stemhaven::mainDatabasePath());
    if (database.exists())
        throw std::runtime_error(
            "This profile has a catalogue already: " + database.filePath().toStdString());
    const QString folder = database.path();
    if (!QDir().mkpath(folder) || !QFileInfo(folder).isWritable())
        throw std::runtime_error("There can be no catalogue in " + folder.toStdString());
}

CatalogueWriter::CatalogueWriter(QString library, bool userData, QDate today)
    : m_library(std::move(library)),
      m_userData(userData),
      m_today(today),
      m_tasks(Stemhaven::mainDatabasePath(), Stemhaven::rootPathsDatabasePath()) {}

void CatalogueWriter::write(const std::vector<Song>& songs) {
    const auto onReady = [this, &songs] {
        try {
            addLibrary();
            for (const Song& song : songs)
                addSong(song);
            addEnd();
        } catch (const std::exception& error) {
            fail(error.what());
        }
    };
    Stemhaven::initDatabase(m_tasks, onReady, [this] { fail("The databases could not be made"); });
    m_loop.exec();
    if (!m_failure.empty())
        throw std::runtime_error(m_failure);
    QSettings().setValue(QStringLiteral("completedWizard"), true);
}

void CatalogueWriter::addLibrary() {
    auto task = std::make_shared<Stemhaven::QueryTask>(
        Stemhaven::RootPathStatements::insert(m_library), m_tasks.rootPathsDatabase());
    task->setSqlErrorCallback([this](const auto&, const DbException& error) { fail(error.what()); });
    m_tasks.addTask(task);
    if (m_userData)
        addStatements(UserEdits::filters());
}

void CatalogueWriter::addSong(const Song& song) {
    m_tasks.addProject(
        Stemhaven::ProjectDetails(m_library + QLatin1Char('/') + song.bundle()), {},
        [this, &song](const std::shared_ptr<Task>& inserted, long long projectId) {
            if (m_userData)
                addStatements(UserEdits::edits(song, projectId, m_today), inserted);
        },
        [this](const DbException& error) { fail(error.what()); });
}

/// Tasks run in the order in which they were added, so the last one knows that the others are done.
void CatalogueWriter::addEnd() {
    auto task = std::make_shared<Stemhaven::SimpleTask>([] {});
    task->setSuccessCallback([this](const auto&) { m_loop.quit(); });
    m_tasks.addTask(task);
}

void CatalogueWriter::addStatements(const QStringList& statements, const std::shared_ptr<Task>& parent) {
    auto task = std::make_shared<Stemhaven::MultistatementTask>(statements, m_tasks.mainDatabase());
    task->setSqlErrorCallback([this](const auto&, const DbException& error) { fail(error.what()); });
    m_tasks.addTask(task, parent);
}

void CatalogueWriter::fail(const std::string& reason) {
    if (m_failure.empty())
        m_failure = reason;
    m_loop.quit();
}

} // namespace DemoLibrary
