#pragma once

#include "app/SettingsKeys.h"
#include "database/RootPathStatements.h"
#include "monitor/ProjectMonitor.h"
#include "support/LogCapture.h"
#include "support/TestBundle.h"
#include "support/TestDatabase.h"

#include <QDir>
#include <QFile>
#include <QSettings>

#include <gtest/gtest.h>

/// A root folder, a profile and a place for the monitor over them.
class MonitorFixture : public testing::Test {
protected:
    void SetUp() override {
        QSettings().clear();
        ASSERT_TRUE(m_database.initialise());
        ASSERT_TRUE(QDir().mkpath(at("")));
        m_database.rootRows(Stemhaven::RootPathStatements::insert(m_disk.path() + "/root"));
    }

    QString at(const QString& relativePath) const { return m_disk.path() + "/root/" + relativePath; }

    void makeBundle(const QString& relativePath, const TestBundle& bundle = {}) const {
        bundle.write(at(relativePath).toStdString());
    }

    void stop() {
        m_monitor.reset();
        m_database.reopen();
    }

    QTemporaryDir m_disk;
    TestDatabase m_database;
    std::unique_ptr<Stemhaven::ProjectMonitor> m_monitor;
};
