#pragma once

#include "app/SettingsKeys.h"
#include "database/QueryBuilder.h"
#include "support/LogCapture.h"
#include "support/TestDatabase.h"
#include "ui/table/ProjectsTableModel.h"

#include <QApplication>
#include <QSettings>
#include <QSignalSpy>
#include <QtTest/QTest>

#include <gtest/gtest.h>

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
        const QString row = "VALUES('/music/', '%1.logicx', '%1', 120, 8, 44100)";
        database.rows(insertion + row.arg(name));
        if (!values.isEmpty())
            database.rows(QString("UPDATE projects SET %1 WHERE name='%2'").arg(values, name));
    }

    /// Makes such a write fail after what it has done so far: "UPDATE ON projects", say.
    void refuse(const QString& write) {
        database.rows(
            QString("CREATE TRIGGER refuse BEFORE %1 BEGIN SELECT RAISE(FAIL, 'refused'); END").arg(write));
    }

    void refuseNoMore() { database.rows("DROP TRIGGER refuse"); }

    void insertNumbered(int count) {
        const QString numbers = "WITH RECURSIVE n(i) AS (SELECT 1 UNION SELECT i + 1 FROM n WHERE i < %1) ";
        const QString rows = "SELECT '/music/', i || '.logicx', printf('Song %06d', i), 120, 8, 44100 FROM n";
        database.rows(numbers.arg(count) + insertion + rows);
    }

    static bool waitForReloads(const ProjectsTableModel& model) {
        return waitUntil([&] { return !model.isReloading(); });
    }

    /// Waits, with the event loop standing still, until the worker has exchanged the rows.
    static bool waitForUnseenRows(const ProjectsTableModel& model) {
        const QDeadlineTimer deadline(60'000);
        while (!model.hasUnannouncedRows() && !deadline.hasExpired())
            QThread::usleep(200);
        return model.hasUnannouncedRows();
    }

    /// Whether the worker has stopped; tasks stay queued from then on.
    bool stopWorker() {
        // The signal comes from another thread, to this object in our own.
        const QObject receiver;
        bool stopped = false;
        QObject::connect(&tasks(), &Stemhaven::TaskManager::wasStopped, &receiver, [&] { stopped = true; });
        tasks().stop();
        return waitUntil([&] { return stopped; });
    }

    const QString insertion =
        "INSERT INTO projects(filepath, filename, name, bpm, number_of_tracks, sample_rate) ";
    LogCapture log;
    TestDatabase database;
};
