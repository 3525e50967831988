#include "WindowFixture.h"
#include "app/errors/ErrorHandler.h"
#include "support/TestBundle.h"
#include "ui/dialogs/FolderAdder.h"
#include "ui/sidebar/FilterSidebar.h"
#include "ui/widgets/ImageView.h"

#include <QDir>
#include <QDropEvent>
#include <QFileDialog>
#include <QMessageBox>
#include <QMimeData>
#include <QSplitter>
#include <QTreeView>

#include <limits>

namespace {

const QString allRoots = "SELECT * FROM root_project_search_paths";

class MainWindowTest : public WindowFixture {
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
};

} // namespace

TEST_F(MainWindowTest, AddsEachFolderOnceAndNeverTheRoot) {
    QWidget parent;
    FolderAdder adder(tasks(), parent);
    QSignalSpy added(&adder, &FolderAdder::folderAdded);
    adder.choose();
    auto* dialog = parent.findChild<QFileDialog*>();
    ASSERT_NE(dialog, nullptr);
    EXPECT_EQ(dialog->fileMode(), QFileDialog::Directory);
    emit dialog->fileSelected("/music/It's mine/");
    ASSERT_TRUE(waitUntil([&] { return added.count() == 1; }));
    adder.add("/music/It's mine");
    ASSERT_TRUE(waitUntil([&] { return parent.findChild<QMessageBox*>() != nullptr; }));
    auto* known = parent.findChild<QMessageBox*>();
    EXPECT_EQ(known->text(), "This folder is watched already.");
    EXPECT_EQ(known->informativeText(), "/music/It's mine");
    delete known;
    adder.add("/music/other");
    ASSERT_TRUE(waitUntil([&] { return added.count() == 2; }));
    for (const char* root : {"/", "//", "/music/.."}) {
        adder.add(root);
        auto* alert = parent.findChild<QMessageBox*>();
        ASSERT_NE(alert, nullptr) << root;
        EXPECT_EQ(alert->text(), "Root monitoring is not allowed.");
        EXPECT_EQ(alert->informativeText(), "Please choose a folder that contains your project files.");
        delete alert;
    }
    EXPECT_EQ(database.rootRows(allRoots), (QStringList{"/music/It's mine", "/music/other"}));
    EXPECT_EQ(log.count("Root search path '/music/It's mine is already being monitored."), 1);
}

TEST_F(MainWindowTest, DroppedFolderFillsTheTableAndIsNamedWhileItIsMissing) {
    const QString music = database.folder.path() + "/music";
    const QString bundle = music + "/Song.logicx";
    TestBundle().write(bundle.toStdString());
    open();
    auto& notice = child<QLabel>("noticeLabel");
    const auto& picture = child<ImageView>();
    EXPECT_FALSE(drop({bundle, music + "/none", "relative"}));
    ASSERT_TRUE(drop({music}));
    ASSERT_TRUE(waitUntil([&] { return model().rowCount() == 1 && monitor.isWatching(); }));
    EXPECT_EQ(database.rootRows(allRoots), QStringList(music));
    EXPECT_TRUE(waitUntil([&] { return !emptyState().isVisible(); }));
    table().selectRow(0);
    ASSERT_TRUE(waitUntil([&] { return details().project().isValid(); }));
    EXPECT_FALSE(notice.isVisible());

    ASSERT_TRUE(QDir().rename(music, music + " elsewhere"));
    ASSERT_TRUE(waitUntil([&] { return notice.isVisible(); }));
    EXPECT_EQ(notice.text(), "Folder not available: " + music);
    EXPECT_TRUE(waitUntil([&] { return picture.accessibleDescription() == "Project wasn't found"; }));
    ASSERT_TRUE(QDir().rename(music + " elsewhere", music));
    EXPECT_TRUE(
        waitUntil([&] { return !notice.isVisible() && picture.accessibleDescription() == "No picture"; }));
    EXPECT_EQ(model().rowCount(), 1);
    ASSERT_TRUE(waitUntil([&] { return !monitor.isSearching() && !model().isReloading(); }));
}

TEST_F(MainWindowTest, WatchedFoldersAreNamedWhereTheyHaveNoProjectsAndWhereOneWasMoved) {
    const QString music = database.folder.path() + "/My Music";
    ASSERT_TRUE(QDir().mkpath(music));
    open();
    auto* title = emptyState().findChildren<QLabel*>().constFirst();
    EXPECT_EQ(title->text(), "No projects yet");
    ASSERT_TRUE(drop({music}));
    EXPECT_TRUE(waitUntil([&] { return title->text() == "No projects in My Music yet"; }));
    auto* help = emptyState().findChildren<QLabel*>().at(1);
    EXPECT_TRUE(help->text().remove(QChar(0x200b)).endsWith(music)) << qPrintable(help->text());

    ASSERT_TRUE(waitUntil([&] { return !monitor.isSearching(); }));
    const auto told = std::make_shared<QString>();
    Stemhaven::ErrorHandler::instance().setPresenter(
        [told](const auto& details) { *told += details.message; });
    emit monitor.rootSearchPathChanged(music);
    EXPECT_TRUE(waitUntil([&] { return told->contains(music); }));
    Stemhaven::ErrorHandler::instance().setPresenter([](const auto& /*details*/) {});
    ASSERT_TRUE(waitUntil([&] { return !monitor.isSearching() && !model().isReloading(); }));
}

TEST_F(MainWindowTest, ARestartGivesBackWhatWasShownAndSelected) {
    insert({"Alpha", "Beta", "Gamma", "Delta"});
    database.rows("INSERT INTO tags VALUES(1, '#one'), (2, '#two')");
    database.rows("INSERT INTO project_tag_map VALUES(2, 2), (3, 2)");
    open();
    auto* tree = &child<QTreeView>();
    const auto group = [&](FilterType type) {
        return child<FolderTreeItemModel>().indexOf(type);
    };
    tree->collapse(group(FilterType::GENRES));
    tree->expand(group(FilterType::LYRICS_STATUS));
    emit child<FilterSidebar>().activated(FilterType::TAGS, 2, "#two");
    settle();
    table().selectRow(1);
    window->close();

    open();
    tree = &child<QTreeView>();
    EXPECT_EQ(status(), "Tag '#two' (2 found)");
    EXPECT_EQ(child<FilterSidebar>().shownType(), FilterType::TAGS);
    EXPECT_EQ(selectedName(), "Gamma");
    EXPECT_TRUE(waitUntil([&] { return details().project().name == "Gamma"; }));
    EXPECT_FALSE(tree->isExpanded(group(FilterType::GENRES)));
    EXPECT_TRUE(tree->isExpanded(group(FilterType::LYRICS_STATUS)));
    EXPECT_TRUE(tree->isExpanded(group(FilterType::TAGS)));
    window->close();

    // What is not there any more, and what never was.
    database.rows("DELETE FROM tags WHERE tag_id=2");
    database.rows("DELETE FROM projects WHERE name='Gamma'");
    open();
    ASSERT_TRUE(waitUntil([&] { return status() == "All projects (3 found)"; }));
    EXPECT_EQ(child<FilterSidebar>().shownType(), FilterType::ALL);
    window->close();
    QSettings().setValue("sidebarEntryType", 77);
    QSettings().setValue("foldedGroups", "all");
    open();
    EXPECT_EQ(status(), "All projects (3 found)");
}

TEST_F(MainWindowTest, TheWindowComesBackAsItWasLeft) {
    open();
    window->resize(1111, 613);
    EXPECT_TRUE(actions().hideCompleted->isChecked());
    EXPECT_TRUE(actions().hideIgnored->isChecked());
    EXPECT_TRUE(actions().hideSidebar->isEnabled());
    EXPECT_FALSE(actions().showSidebar->isEnabled());
    child<QSplitter>("sidebarSplitter").setSizes({300, 1000});
    emit child<QSplitter>("sidebarSplitter").splitterMoved(300, 1);
    actions().hideDetails->trigger();
    EXPECT_FALSE(details().isVisible());
    EXPECT_TRUE(actions().showDetails->isEnabled());
    actions().hideIgnored->trigger();
    QTest::keyClick(&*window, Qt::Key_F, Qt::ControlModifier);
    EXPECT_TRUE(searchEdit().hasFocus());
    window->close();

    open();
    EXPECT_EQ(window->size(), QSize(1111, 613));
    EXPECT_FALSE(actions().hideIgnored->isChecked());
    EXPECT_FALSE(details().isVisible());
    EXPECT_EQ(child<QSplitter>("sidebarSplitter").sizes().constFirst(), 300);
    actions().hideSidebar->trigger();
    actions().showDetails->trigger();
    EXPECT_GT(details().width(), 200);
    auto& splitter = child<QSplitter>("projectInfoSplitter");
    splitter.setSizes({splitter.width() - 400, 400});
    const int detailsWidth = details().width();
    EXPECT_NEAR(detailsWidth, 400, 8);
    window->close();

    open();
    EXPECT_EQ(details().width(), detailsWidth);
    EXPECT_FALSE(child<FilterSidebar>().isVisible());
    actions().showSidebar->trigger();
    // The width is forgotten with the hiding.
    EXPECT_LT(child<FilterSidebar>().width(), 300);
    window->close();
    QSettings().setValue("filterSliderPos", std::numeric_limits<int>::max());
    open();
    EXPECT_LT(child<FilterSidebar>().width(), window->width());
    window->close();
    QSettings().setValue("filterSliderPos", "wide");
    open();
    EXPECT_EQ(log.count("Could not load int value of setting 'filterSliderPos'"), 1);
    EXPECT_TRUE(child<FilterSidebar>().isVisible());
}
