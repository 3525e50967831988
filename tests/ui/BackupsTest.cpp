// Backups through the main window's menu and the dialog's buttons.

#include "WindowFixture.h"
#include "backup/BackupDialog.h"
#include "database/RootPathStatements.h"
#include "database/SimpleTask.h"
#include "support/OutsideRows.h"
#include "support/TestBundle.h"
#include "ui/edits/EditHistory.h"
#include "ui/edits/SelectionEditor.h"
#include "ui/preferences/PreferencesDialog.h"
#include "ui/recovery/RecoverDialog.h"
#include "ui/table/TableColumns.h"
#include "ui/wizard/Wizard.h"

#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QLineEdit>
#include <QListView>
#include <QPointer>
#include <QProgressBar>
#include <QTimer>

#include <algorithm>
#include <atomic>
#include <functional>

namespace {

using Step = std::function<bool()>;

/// A "tar" that does nothing while this lives.
class HeldTar {
public:
    HeldTar() : m_path(qgetenv("PATH")) {
        QFile script(m_folder.filePath("tar"));
        script.open(QIODevice::WriteOnly);
        script.write(
            "#!/bin/sh\nwhile test -e '" + QFile::encodeName(m_folder.path()) +
            "/tar'; do sleep 0.02; done\nPATH='" + m_path + "' exec tar \"$@\"\n");
        script.setPermissions(script.permissions() | QFileDevice::ExeOwner);
        script.close();
        qputenv("PATH", m_folder.path().toUtf8() + ':' + m_path);
    }

    ~HeldTar() {
        qputenv("PATH", m_path);
        letGo();
    }

    Q_DISABLE_COPY_MOVE(HeldTar)

    void letGo() { QFile::remove(m_folder.filePath("tar")); }

private:
    QTemporaryDir m_folder;
    QByteArray m_path;
};

template <typename T>
T* shown() {
    auto* modal = qobject_cast<T*>(QApplication::activeModalWidget());
    return modal && modal->isVisible() ? modal : nullptr;
}

Step choose(const QString& path) {
    return [path] {
        auto* dialog = shown<QFileDialog>();
        if (!dialog)
            return false;
        dialog->findChild<QLineEdit*>("fileNameEdit")->setText(path);
        QMetaObject::invokeMethod(dialog, "accept");
        return true;
    };
}

Step answerBox(QMessageBox::StandardButton button) {
    return [button] {
        auto* box = shown<QMessageBox>();
        if (box)
            box->button(button)->click();
        return box != nullptr;
    };
}

template <typename T>
T& part(const char* name) {
    return *shown<BackupDialog>()->findChild<T*>(name);
}

Step whenDone(const std::function<void()>& look = {}) {
    return [look] {
        if (!shown<BackupDialog>() || !part<QPushButton>("doneButton").isEnabled())
            return false;
        if (look)
            look();
        part<QPushButton>("doneButton").click();
        return true;
    };
}

Step whenDoneSaying(const QString& status) {
    return whenDone([status] { EXPECT_EQ(part<QLabel>("statusLabel").text(), status); });
}

/// Does what opens a dialog, and takes the steps meanwhile, each as soon as it can be.
void perform(const std::function<void()>& action, const QList<Step>& steps) {
    QTimer timer;
    qsizetype next = 0;
    const QDeadlineTimer deadline(60'000);
    QObject::connect(&timer, &QTimer::timeout, [&] {
        if (next < steps.size() && steps[next]())
            ++next;
        else if (deadline.hasExpired() && QApplication::activeModalWidget()) {
            ADD_FAILURE() << "step " << next << " never came in " << QApplication::activeModalWidget();
            QApplication::activeModalWidget()->close();
        }
    });
    timer.start(5);
    action();
    EXPECT_EQ(next, steps.size());
}

class BackupsTest : public WindowFixture {
protected:
    void SetUp() override {
        WindowFixture::SetUp();
        insert("Amber", "star_rating=2");
        insert({"Birch"});
        ASSERT_TRUE(QDir().mkpath(there));
        makeRoot("first", "Cedar");
    }

    QString makeRoot(const QString& name, const QString& song) {
        const QString root = database.folder.filePath(name);
        TestBundle().write((root + '/' + song + ".logicx").toStdString());
        database.rootRows("DELETE FROM root_project_search_paths");
        database.rootRows(Stemhaven::RootPathStatements::insert(root));
        return root + '/';
    }

    void searchFolders() {
        monitor.updateWatchedDirs(false);
        ASSERT_TRUE(waitUntil([&] { return monitor.isWatching() && !monitor.isSearching(); }));
    }

    void exportBackup(const QList<Step>& steps) {
        perform([this] { actions().backup->trigger(); }, steps);
    }

    void importBackup(const QList<Step>& steps) {
        perform([this] { actions().importBackup->trigger(); }, steps);
    }

    QString makeBackup() {
        exportBackup({choose(there), whenDoneSaying("Finished exporting backup!")});
        const auto archives = QDir(there).entryInfoList({"*.hvbk"});
        return archives.isEmpty() ? QString() : archives.constFirst().absoluteFilePath();
    }

    QStringList columns() {
        QStringList titles;
        for (int column = 0; column < model().columnCount(); ++column)
            titles.append(model().headerData(column, Qt::Horizontal, Qt::DisplayRole).toString().trimmed());
        return titles;
    }

    /// What a user would notice.
    QStringList state() {
        return {
            columns().join(','),
            names().join(','),
            status(),
            database.rows("SELECT name, star_rating FROM projects WHERE filepath='/music/'").join(','),
            database.rows("SELECT name FROM collections").join(','),
            database.rootRows("SELECT * FROM root_project_search_paths").join(','),
            QString::number(actions().hideSidebar->isEnabled()),
            QString::number(actions().hideIgnored->isChecked()),
            searchEdit().text(),
            selectedName()};
    }

    bool showsEntry(const QString& name) {
        auto& filters = child<FolderTreeItemModel>();
        const auto& entries = filters.getEntries(FilterType::COLLECTIONS);
        return std::any_of(
            entries.begin(), entries.end(), [&](const auto& entry) { return entry.name == name; });
    }

    void rate(int row, int stars) {
        select({row});
        child<SelectionEditor>().setStarRating(stars);
    }

    const QString there = database.folder.path() + "/th'ere tar";
};

} // namespace

TEST_F(BackupsTest, AnImportBringsBackWhatTheWindowShowedWithoutARestart) {
    database.rows("INSERT INTO collections(name) VALUES('Album')");
    open();
    child<TableColumns>().show("bpm", false);
    actions().hideSidebar->trigger();
    actions().hideIgnored->setChecked(false);
    search("m");
    database.rows(
        "UPDATE projects SET publicly_released=1, release_date=strftime('%s','now') WHERE name='Amber'");
    settle();
    const QStringList before = state();
    const auto shownColumns = columns();
    window->close();
    open();
    const QString archive = makeBackup();
    ASSERT_FALSE(archive.isEmpty());

    search("");
    child<TableColumns>().show("bpm", true);
    child<TableColumns>().show("song_key", false);
    actions().showSidebar->trigger();
    actions().hideIgnored->setChecked(true);
    database.rows("DELETE FROM collections");
    insert("Dogwood", "star_rating=4");
    const QString second = makeRoot("second", "Elder");
    searchFolders();
    EXPECT_EQ(monitor.rootSearchPaths(), QStringList(second));
    settle();
    actions().settings->trigger();
    actions().recoverProjects->trigger();
    database.rows("UPDATE projects SET publicly_released=0");
    actions().releaseCalendar->trigger();
    const auto& releases = child<QLabel>("releaseCountLabel");
    EXPECT_TRUE(waitUntil([&] { return releases.text().startsWith("No release"); }));
    // An edit that may be still queued when the import begins.
    rate(0, 5);
    EXPECT_TRUE(actions().undo->isEnabled());

    importBackup({choose(archive), answerBox(QMessageBox::Yes), whenDone([&] {
                      EXPECT_EQ(part<QLabel>("statusLabel").text(), "Finished importing backup!");
                      EXPECT_EQ(part<QProgressBar>("progressBar").value(), 100);
                  })});
    EXPECT_FALSE(actions().undo->isEnabled());
    // What was found and shown is of another catalogue.
    EXPECT_TRUE(waitUntil(
        [&] { return !window->findChild<PreferencesDialog*>() && !window->findChild<RecoverDialog*>(); }));
    EXPECT_TRUE(waitUntil([&] { return releases.text().startsWith("1 release"); }));
    ASSERT_TRUE(waitUntil([&] { return monitor.isWatching() && !monitor.isSearching(); }));
    EXPECT_EQ(monitor.rootSearchPaths(), QStringList(database.folder.filePath("first") + '/'));
    settle();
    EXPECT_EQ(columns(), shownColumns);
    EXPECT_EQ(state(), before);
    EXPECT_TRUE(showsEntry("Album"));
    // What has come into the folder since.
    search("Cedar");
    EXPECT_EQ(names(), QStringList("Cedar"));
    const auto copies =
        QDir(database.folder.filePath("data/Backups")).entryInfoList(QDir::Dirs | QDir::NoDotAndDotDot);
    ASSERT_EQ(copies.size(), 1);
    EXPECT_EQ(
        outsideRows(
            copies[0].filePath() + "/stemhaven-main.db",
            {"SELECT star_rating FROM projects ORDER BY name LIMIT 1"}),
        QStringList("5"));
    // The imported catalogue takes edits, and the settings are in use.
    rate(0, 3);
    settle();
    EXPECT_EQ(database.rows("SELECT star_rating FROM projects WHERE name='Cedar'"), QStringList("3"));
    EXPECT_TRUE(actions().undo->isEnabled());
    window->close();
    EXPECT_FALSE(QSettings().value(Stemhaven::SettingsKeys::hideIgnored).toBool());
}

TEST_F(BackupsTest, WhatFailsOrIsNotWantedChangesNothing) {
    searchFolders();
    open();
    const QString archive = makeBackup();
    rate(0, 5);
    settle();
    const QStringList before = state();
    const auto expectUntouched = [&] {
        settle();
        EXPECT_EQ(state(), before);
        EXPECT_TRUE(actions().undo->isEnabled());
        EXPECT_FALSE(child<QLabel>("noticeLabel").text().contains("backup"));
    };
    const auto files = [&] {
        return QDir(there).entryList(QDir::AllEntries | QDir::NoDotAndDotDot);
    };
    const auto filesBefore = files();

    actions().settings->trigger();
    const QPointer preferences = window->findChild<PreferencesDialog*>();
    importBackup({choose(archive), [&] {
                      EXPECT_FALSE(shown<QMessageBox>() && preferences->isVisible());
                      return answerBox(QMessageBox::No)();
                  }});
    expectUntouched();
    ASSERT_TRUE(preferences && preferences->isVisible()) << "nothing of it is of another catalogue";
    preferences->close();

    // The program ends while the import waits: nobody is to be asked any more.
    std::atomic<bool> isHeld = true;
    tasks().addTask(std::make_shared<Stemhaven::SimpleTask>([&] {
        while (isHeld)
            QThread::usleep(200);
    }));
    importBackup({choose(archive), [&] {
                      if (!shown<BackupDialog>())
                          return false;
                      EXPECT_FALSE(shown<BackupDialog>()->close());
                      isHeld = false;
                      return true;
                  }});
    expectUntouched();

    const QString wrongName = there + "/backup.zip";
    ASSERT_TRUE(QFile::copy(archive, wrongName));
    importBackup({choose(wrongName), [] {
                      auto* box = shown<QMessageBox>();
                      if (!box)
                          return false;
                      EXPECT_EQ(box->text(), "Not a valid Stemhaven backup!");
                      box->button(QMessageBox::Ok)->click();
                      return true;
                  }});
    expectUntouched();
    QFile::remove(wrongName);

    QFile broken(there + "/broken.hvbk");
    ASSERT_TRUE(broken.open(QIODevice::WriteOnly));
    broken.write("no archive");
    broken.close();
    importBackup({choose(broken.fileName()), answerBox(QMessageBox::Yes), whenDone([] {
                      const auto& label = part<QLabel>("statusLabel");
                      EXPECT_EQ(label.text(), "Decompression failed! Verify backup integrity.");
                      EXPECT_TRUE(label.styleSheet().startsWith("color: #"));
                      EXPECT_EQ(part<QProgressBar>("progressBar").value(), 0);
                  })});
    expectUntouched();
    broken.remove();

    // Cancelled while what is to be done before is still under way.
    std::atomic<bool> goesOn = false;
    tasks().addTask(std::make_shared<Stemhaven::SimpleTask>([&] {
        while (!goesOn)
            QThread::usleep(200);
    }));
    importBackup({choose(archive), [] {
                      if (!shown<BackupDialog>())
                          return false;
                      part<QPushButton>("cancelButton").click();
                      return true;
                  }});
    goesOn = true;
    expectUntouched();

    // The folder of that name is in the way.
    ASSERT_TRUE(QDir().mkdir(archive.chopped(5)));
    importBackup({choose(archive), answerBox(QMessageBox::Yes), answerBox(QMessageBox::Ok), whenDone()});
    expectUntouched();
    QDir().rmdir(archive.chopped(5));
    EXPECT_EQ(files(), filesBefore);
    actions().undo->trigger();
    settle();
    EXPECT_EQ(database.rows("SELECT star_rating FROM projects WHERE name='Amber'"), QStringList("2"));
}

TEST_F(BackupsTest, TheDialogStaysUntilItsWorkHasEndedAndTheTableReadableMeanwhile) {
    open();
    for (const bool cancels : {false, true}) {
        SCOPED_TRACE(cancels);
        HeldTar tar;
        const auto isWorking = [] {
            return shown<BackupDialog>() &&
                part<QLabel>("statusLabel").text().startsWith("Exporting backup to") &&
                part<QPushButton>("cancelButton").isEnabled() &&
                part<QProgressBar>("progressBar").value() > 3;
        };
        const auto useWindow = [&] {
            if (!isWorking())
                return false;
            auto* dialog = shown<BackupDialog>();
            QTest::keyClick(dialog, Qt::Key_Escape);
            EXPECT_FALSE(part<QPushButton>("doneButton").isEnabled());
            // As after it was minimised.
            QShowEvent shownAgain;
            QCoreApplication::sendEvent(dialog, &shownAgain);
            EXPECT_TRUE(dialog->isVisible());
            EXPECT_EQ(names(), QStringList({"Amber", "Birch"}));
            EXPECT_FALSE(window->grab().isNull());
            EXPECT_EQ(child<QLabel>("noticeLabel").text(), "A backup is being made…");
            actions().hideCompleted->toggle();
            if (cancels)
                part<QPushButton>("cancelButton").click();
            tar.letGo();
            return true;
        };
        // An export of the same second would have the same name.
        const QString folder = there + (cancels ? "/cancelled" : "/finished");
        ASSERT_TRUE(QDir().mkdir(folder));
        exportBackup(
            {choose(folder), useWindow,
             whenDoneSaying(cancels ? "Cancelled. Everything is as it was." : "Finished exporting backup!")});
        settle();
        EXPECT_EQ(QDir(folder).isEmpty(), cancels);
    }
    // Who asks the program to end is heard afterwards: there is nothing to be clicked any more.
    HeldTar tar;
    exportBackup({choose(there), [&] {
                      if (!shown<BackupDialog>() || part<QProgressBar>("progressBar").maximum() == 0)
                          return false;
                      auto* dialog = shown<BackupDialog>();
                      EXPECT_FALSE(dialog->close());
                      EXPECT_TRUE(dialog->isVisible());
                      tar.letGo();
                      return true;
                  }});
    settle();
    EXPECT_EQ(names(), QStringList({"Amber", "Birch"}));
}

TEST_F(BackupsTest, TheSetupTakesABackupAndItsFolders) {
    open();
    const QString archive = makeBackup();
    window.reset();
    database.rows("DELETE FROM projects");
    database.rootRows("DELETE FROM root_project_search_paths");
    const QString agreement = database.folder.filePath("eula.txt");
    QFile file(agreement);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    Wizard wizard(tasks(), monitor, agreement);
    wizard.show();
    wizard.next();
    auto* list = wizard.findChild<QListView*>();
    EXPECT_EQ(list->model()->rowCount(), 0);
    perform(
        [&] { wizard.findChild<QPushButton*>("importBackupButton")->click(); },
        {choose(archive), answerBox(QMessageBox::Yes), whenDoneSaying("Finished importing backup!")});
    EXPECT_EQ(wizard.findChild<QLineEdit*>("backupFileEdit")->text(), archive);
    EXPECT_TRUE(waitUntil([&] { return list->model()->rowCount() == 1; }));
    EXPECT_TRUE(wizard.isVisible());
    EXPECT_FALSE(monitor.isWatching());
    wizard.next();
    EXPECT_EQ(wizard.result(), QDialog::Accepted);
    EXPECT_TRUE(waitUntil([&] { return monitor.isWatching() && !monitor.isSearching(); }));
    EXPECT_EQ(
        database.rows("SELECT name FROM projects ORDER BY name"), QStringList({"Amber", "Birch", "Cedar"}));
}
