#pragma once

#include "app/SettingsKeys.h"
#include "database/QueryBuilder.h"
#include "support/LogCapture.h"
#include "support/TestDatabase.h"
#include "ui/table/ProjectsTableModel.h"

#include <QSettings>

#include <gtest/gtest.h>

#include <atomic>

/// Databases of their own with the schema, no settings, and words to fill them with.
class ProjectsFixture : public testing::Test {
protected:
    void SetUp() override {
        QSettings().clear();
        ASSERT_TRUE(database.initialise());
    }

    Stemhaven::TaskManager& tasks() { return *database.tasks; }

    void insert(const QStringList& names) {
        for (const QString& name : names)
            insert(name, {});
    }

    /// values is a list of assignments, such as "bpm=90, completed=1".
    void insert(const QString& name, const QString& values) {
        const QString row = QStringLiteral("INSERT INTO projects(filepath, filename, name, bpm, "
                                           "number_of_tracks, sample_rate) "
                                           "VALUES('/music/', '%1.logicx', '%1', 120, 8, 44100)");
        database.rows(row.arg(name));
        if (!values.isEmpty())
            database.rows(QStringLiteral("UPDATE projects SET %1 WHERE name='%2'").arg(values, name));
    }

    void insertNumbered(int count) {
        database.rows(
            QStringLiteral(
                "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < %1) "
                "INSERT INTO projects(filepath, filename, name, bpm, number_of_tracks, sample_rate) "
                "SELECT '/music/', i || '.logicx', printf('Song %06d', i), 120, 8, 44100 FROM n")
                .arg(count));
    }

    static bool waitForReloads(const ProjectsTableModel& model) {
        return waitUntil([&] { return !model.isReloading(); });
    }

    /// Whether the worker has stopped; tasks stay queued from then on.
    bool stopWorker() {
        // The signal comes from another thread.
        std::atomic<bool> stopped = false;
        const auto connection =
            QObject::connect(&tasks(), &Stemhaven::TaskManager::wasStopped, [&stopped] { stopped = true; });
        tasks().stop();
        const bool inTime = waitUntil([&stopped] { return stopped.load(); });
        QObject::disconnect(connection);
        return inTime;
    }

    LogCapture log;
    TestDatabase database;
};
