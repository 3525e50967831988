#include "ui/MainWindow.h"

#include "ProjectsFixture.h"
#include "monitor/ProjectMonitor.h"
#include "support/TestBundle.h"
#include "ui/dialogs/FolderAdder.h"
#include "ui/table/EmptyState.h"

#include <QApplication>
#include <QDir>
#include <QDropEvent>
#include <QFileDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QMimeData>
#include <QPushButton>
#include <QSignalSpy>
#include <QtTest/QTest>

namespace {

const QString allRoots = QStringLiteral("SELECT * FROM root_project_search_paths");

class FolderAdderTest : public ProjectsFixture {
protected:
    QStringList roots() { return database.rootRows(allRoots); }

    QWidget window;
};

class MainWindowTest : public ProjectsFixture {
protected:
    /// What a drag of these paths to the window and a drop there does; whether it was welcome.
    bool drop(const QStringList& paths) {
        QMimeData data;
        QList<QUrl> urls;
        for (const QString& path : paths)
            urls.append(QUrl::fromLocalFile(path));
        data.setUrls(urls);
        QDragEnterEvent enter({10, 10}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        enter.ignore();
        QApplication::sendEvent(&*window, &enter);
        if (!enter.isAccepted())
            return false;
        QDropEvent dropped({10, 10}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(&*window, &dropped);
        return true;
    }

    void open() {
        window.emplace(tasks(), monitor);
        QSignalSpy loaded(&*window, &MainWindow::firstLoaded);
        window->show();
        QApplication::setActiveWindow(&*window);
        ASSERT_TRUE(waitUntil([&] { return loaded.count() == 1; }));
    }

    Stemhaven::ProjectMonitor monitor{tasks()};
    std::optional<MainWindow> window;
};

} // namespace

TEST_F(FolderAdderTest, WritesEachFolderOnce) {
    FolderAdder adder(tasks(), window);
    QSignalSpy added(&adder, &FolderAdder::folderAdded);
    adder.add(QStringLiteral("/music/It's mine/"));
    ASSERT_TRUE(waitUntil([&] { return added.count() == 1; }));
    adder.add(QStringLiteral("/music/It's mine"));
    adder.add(QStringLiteral("/music/other"));
    ASSERT_TRUE(waitUntil([&] { return added.count() == 2; }));
    EXPECT_EQ(roots(), (QStringList{QStringLiteral("/music/It's mine"), QStringLiteral("/music/other")}));
    EXPECT_EQ(log.count(QStringLiteral("Root search path '/music/It's mine is already being monitored.")), 1);
}

TEST_F(FolderAdderTest, RefusesTheRoot) {
    FolderAdder adder(tasks(), window);
    for (const char* root : {"/", "//", "/music/.."}) {
        adder.add(QString::fromLatin1(root));
        auto* alert = window.findChild<QMessageBox*>();
        ASSERT_NE(alert, nullptr) << root;
        EXPECT_EQ(alert->text(), QStringLiteral("Root monitoring is not allowed."));
        EXPECT_EQ(
            alert->informativeText(),
            QStringLiteral("Please choose a folder that contains your project files."));
        delete alert;
    }
    EXPECT_EQ(roots(), QStringList());
}

TEST_F(FolderAdderTest, TakesTheFolderThatIsChosen) {
    FolderAdder adder(tasks(), window);
    QSignalSpy added(&adder, &FolderAdder::folderAdded);
    adder.choose();
    auto* dialog = window.findChild<QFileDialog*>();
    ASSERT_NE(dialog, nullptr);
    EXPECT_EQ(dialog->fileMode(), QFileDialog::Directory);
    emit dialog->fileSelected(QStringLiteral("/music"));
    ASSERT_TRUE(waitUntil([&] { return added.count() == 1; }));
    EXPECT_EQ(added.constFirst().constFirst(), QStringLiteral("/music"));
}

TEST_F(MainWindowTest, DroppedFolderFillsTheTable) {
    open();
    auto& emptyState = *window->findChild<EmptyState*>();
    EXPECT_TRUE(waitUntil([&] { return emptyState.reason() == EmptyState::Reason::NoProjects; }));

    const QString music = database.folder.path() + QStringLiteral("/music");
    const QString bundle = music + QStringLiteral("/Song.logicx");
    TestBundle().write(bundle.toStdString());
    EXPECT_FALSE(drop({bundle, music + QStringLiteral("/none"), QStringLiteral("relative")}));
    ASSERT_TRUE(drop({music}));

    auto& model = *window->findChild<ProjectsTableModel*>();
    EXPECT_TRUE(waitUntil([&] { return model.rowCount() == 1; }));
    EXPECT_TRUE(waitUntil([&] { return !emptyState.isVisible(); }));
    EXPECT_EQ(database.rootRows(allRoots), QStringList(music));
    ASSERT_TRUE(waitUntil([&] { return !monitor.isSearching() && !model.isReloading(); }));
}

TEST_F(MainWindowTest, KeepsItsPlaceAndTerm) {
    insertNumbered(20);
    open();
    window->resize(911, 613);
    QTest::keyClick(&*window, Qt::Key_F, Qt::ControlModifier);
    auto* searchEdit = window->findChild<QLineEdit*>(QStringLiteral("searchEdit"));
    EXPECT_TRUE(searchEdit->hasFocus());
    QTest::keyClicks(searchEdit, QStringLiteral("11"));
    window->close();
    open();
    EXPECT_EQ(window->size(), QSize(911, 613));
    EXPECT_TRUE(waitUntil([&] { return window->findChild<ProjectsTableModel*>()->rowCount() == 1; }));
}
