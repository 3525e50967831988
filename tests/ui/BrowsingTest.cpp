// The main window over a catalogue: the sidebar, the table and the details together.

#include "BrowsingFixture.h"
#include "ui/actions/AssociationMenu.h"
#include "ui/edits/EditHistory.h"
#include "ui/table/ProjectsPane.h"

#include <QAbstractItemView>
#include <QContextMenuEvent>
#include <QLocale>
#include <QTimer>

using enum FilterType;

namespace {

class BrowsingTest : public BrowsingFixture {};

} // namespace

TEST_F(BrowsingTest, TheDetailsShowTheSelectedProjectAndWriteNothing) {
    database.rows("UPDATE projects SET star_rating=3, progress=0.57, lyrics_status=2, "
                  "mix_master_status=99, bpm=128.5 WHERE name='Beta'");
    database.rows("INSERT INTO project_tag_map VALUES(2, 2)");
    open();
    select({0});
    const QStringList before = values("*");
    select({1});
    EXPECT_EQ(text("projectNameLabel"), "Beta");
    EXPECT_EQ(text("projectDetailsLabel"), QLocale().toString(128.5) + " BPM - 4/4 - C");
    EXPECT_EQ(text("projectFilepathLabel"), "/music/Beta.logicx");
    EXPECT_EQ(text("projectProgressLabel"), "Progress: 57%");
    EXPECT_EQ(slider().value(), 57);
    EXPECT_EQ(stars().starRating().starCount(), 3);
    EXPECT_EQ(lyrics().currentText(), "Needs Lyrics");
    // A status that does not exist any more.
    EXPECT_EQ(child<QComboBox>("mixMasterCombo").currentIndex(), -1);
    for (auto* menu : window->findChildren<AssociationMenu*>()) {
        for (const QAction* entry : menu->actions())
            EXPECT_EQ(entry->isChecked(), entry->text() == "#two && more") << qPrintable(entry->text());
    }

    // The lists are filled anew while they are shown.
    database.rows("UPDATE lyrics_status SET name='None' WHERE lyrics_status_id=2");
    emit monitor.projectsDbModified();
    ASSERT_TRUE(waitUntil([this] { return lyrics().currentText() == "None"; }));
    table().selectionModel()->clear();
    settle();
    EXPECT_FALSE(details().project().isValid());
    EXPECT_EQ(values("*"), before);
    EXPECT_FALSE(actions().undo->isEnabled());
}

TEST_F(BrowsingTest, FullProgressAsksWhetherTheProjectIsCompleted) {
    open();
    select({0});
    slider().setFocus();
    QTest::keyClick(&slider(), Qt::Key_End);
    EXPECT_EQ(text("projectProgressLabel"), "Progress: 100%");
    ASSERT_TRUE(answer("No"));
    EXPECT_EQ(values("progress, completed").constFirst(), "1|0");
    select({1});
    QTest::keyClick(&slider(), Qt::Key_End);
    ASSERT_TRUE(answer("Yes"));
    EXPECT_EQ(values("progress, completed").at(1), "1|1");
    EXPECT_EQ(names(), (QStringList{"Alpha", "Gamma"}));
    EXPECT_EQ(details().project().name, "Beta");
    trigger(actions().hideCompleted);
    EXPECT_EQ(names(), (QStringList{"Alpha", "Beta", "Gamma"}));
    EXPECT_EQ(selectedName(), "Beta");
}

TEST_F(BrowsingTest, IgnoringAsksOnceAndDeletingCanBeTakenBack) {
    open();
    select({0, 1});
    actions().ignore->trigger();
    EXPECT_FALSE(actions().ignore->isChecked());
    ASSERT_TRUE(answer("Cancel"));
    EXPECT_EQ(values("ignored"), (QStringList{"0", "0", "0"}));
    actions().ignore->trigger();
    ASSERT_TRUE(answer("Ignore"));
    EXPECT_EQ(values("ignored"), (QStringList{"1", "1", "0"}));
    EXPECT_EQ(names(), QStringList("Gamma"));
    trigger(actions().hideIgnored);
    select({1});
    EXPECT_TRUE(actions().ignore->isChecked());
    trigger(actions().ignore);
    EXPECT_EQ(values("ignored"), (QStringList{"1", "0", "0"}));

    const QStringList before = values("*");
    actions().deleteRecord->trigger();
    auto* question = window->findChild<QMessageBox*>();
    ASSERT_NE(question, nullptr);
    EXPECT_EQ(question->defaultButton()->text(), "&Cancel");
    ASSERT_TRUE(answer("Delete record"));
    EXPECT_EQ(names(), (QStringList{"Alpha", "Gamma"}));
    EXPECT_TRUE(waitUntil([this] { return details().project().name == "Gamma"; }));
    EXPECT_EQ(log.count("Deleted record for project_id: 2"), 1);
    trigger(actions().undo);
    EXPECT_EQ(values("*"), before);
}

TEST_F(BrowsingTest, TheSidebarNarrowsTheTable) {
    database.rows("INSERT INTO project_tag_map VALUES(1, 2), (3, 2)");
    database.rows("INSERT INTO collections_projects_map VALUES(1, 2)");
    database.rows("INSERT INTO saved_searches VALUES(1, 'amm')");
    database.rows("UPDATE projects SET genre_id=1, recording_status=2 WHERE name='Gamma'");
    open();
    EXPECT_EQ(status(), "All projects (3 found)");
    EXPECT_EQ(activate(TAGS, "#two & more"), "Tag '#two & more' (2 found)");
    search("gam");
    QTest::keyClick(&searchEdit(), Qt::Key_Return);
    EXPECT_EQ(status(), "Tag '#two & more' matching 'gam' (1 found)");
    EXPECT_EQ(activate(COLLECTIONS, "100% <b>Album</b> %1"), "Collection '100% <b>Album</b> %1' (1 found)");
    EXPECT_EQ(names(), QStringList("Beta"));
    EXPECT_EQ(activate(LAST_SEARCH), "All projects matching 'gam' (1 found)");
    activate(GENRES, "Pop");
    EXPECT_EQ(names(), QStringList("Gamma"));
    EXPECT_EQ(activate(RECORDING_STATUS, "Needs Takes"), "Recording Status 'Needs Takes' (1 found)");
    EXPECT_EQ(activate(SAVED_SEARCH, "amm"), "All projects matching 'amm' (1 found)");
    EXPECT_EQ(searchEdit().text(), "amm");
    activate(TAGS, "#one");
    EXPECT_EQ(emptyState().reason(), EmptyState::Reason::NothingInFilter);
    EXPECT_EQ(activate(ALL), "All projects (3 found)");
}

TEST_F(BrowsingTest, LastSearchIsWhatWasMeantAndTheMarkFollowsTheSearchField) {
    database.rows("INSERT INTO saved_searches VALUES(7, 'amm')");
    open();
    const auto lastSearch = [this] {
        return child<ProjectsPane>().lastSearchTerm();
    };
    const auto type = [this](const char* text) {
        searchEdit().clear();
        searchEdit().setFocus();
        QTest::keyClicks(&searchEdit(), text);
        settle();
    };

    type("alp");
    EXPECT_EQ(lastSearch(), QString());
    QTest::keyClick(&searchEdit(), Qt::Key_Return);
    EXPECT_EQ(lastSearch(), "alp");
    type("bet");
    EXPECT_EQ(lastSearch(), "alp");
    table().selectRow(0);
    EXPECT_EQ(lastSearch(), "bet");
    // The next row takes the place of one that has left, which nobody has chosen.
    type("gam");
    EXPECT_EQ(lastSearch(), "bet");
    EXPECT_TRUE(waitUntil([&] { return lastSearch() == "gam"; }));
    QTest::keyClick(&searchEdit(), Qt::Key_Escape);
    settle();
    open();
    EXPECT_EQ(activate(LAST_SEARCH), "All projects matching 'gam' (1 found)");

    auto& reopened = child<FilterSidebar>();
    EXPECT_EQ(reopened.shownType(), LAST_SEARCH);
    QTest::keyClick(&searchEdit(), Qt::Key_Escape);
    EXPECT_EQ(reopened.shownType(), ALL);
    activate(SAVED_SEARCH, "amm");
    EXPECT_EQ(reopened.shownType(), SAVED_SEARCH);
    QTest::keyClicks(&searchEdit(), "a");
    EXPECT_EQ(reopened.shownType(), ALL);
}

TEST_F(BrowsingTest, MenusFileTheProjectsThatWereSelected) {
    open();
    select({0, 1});
    auto* tags = window->findChildren<AssociationMenu*>().value(2);
    ASSERT_NE(tags, nullptr);
    ASSERT_EQ(tags->type(), TAGS);
    trigger(tags->actions().at(0));
    trigger(tags->actions().at(0));
    EXPECT_EQ(database.rows("SELECT * FROM project_tag_map"), QStringList());
    trigger(actions().undo);
    EXPECT_EQ(database.rows("SELECT * FROM project_tag_map ORDER BY 1"), (QStringList{"1|1", "2|1"}));
    EXPECT_TRUE(tags->actions().at(0)->isChecked());

    // The new entry goes to the projects that were selected when it was asked for.
    tags->actions().constLast()->trigger();
    auto* nameEdit = window->findChild<QDialog*>()->findChild<QLineEdit*>();
    ASSERT_NE(nameEdit, nullptr);
    settle();
    nameEdit->setText("#it's new");
    select({2});
    QTest::keyClick(nameEdit, Qt::Key_Return);
    settle();
    const auto filed = [this] {
        return database.rows("SELECT project_id FROM project_tag_map WHERE tag_id=3 ORDER BY 1");
    };
    ASSERT_TRUE(waitUntil([&] { return filed() == QStringList{"1", "2"}; }));
    EXPECT_EQ(database.rows("SELECT name FROM tags WHERE tag_id=3"), QStringList("#it's new"));
}

TEST_F(BrowsingTest, TheKeyboardReachesAllRowsAndReturnOpensOnceOnlyFromThem) {
    open();
    select({0});
    QSignalSpy opened(actions().open, &QAction::triggered);
    for (const char* name : {"lyricsCombo", "filterTreeView", "searchEdit"}) {
        auto& widget = child<QWidget>(name);
        widget.setFocus();
        QTest::keyClick(&widget, Qt::Key_Return);
        EXPECT_EQ(opened.count(), 0) << name;
    }
    settle();
    child<QWidget>("filterTreeView").setFocus();
    QTest::keyClick(&child<QWidget>("filterTreeView"), Qt::Key_Tab);
    EXPECT_TRUE(searchEdit().hasFocus());
    QTest::keyClick(&searchEdit(), Qt::Key_Tab);
    EXPECT_TRUE(table().hasFocus());
    QTest::keyRelease(&table(), Qt::Key_Return);
    EXPECT_EQ(opened.count(), 0);
    holdKey(table(), Qt::Key_Return);
    EXPECT_EQ(opened.count(), 1);
    QTest::keyClick(&table(), Qt::Key_Enter);
    EXPECT_EQ(opened.count(), 2);
    settle();
    // There is no such bundle.
    EXPECT_EQ(log.count("Could not open selected project!"), 2);
    QTest::keyClick(&table(), Qt::Key_A, Qt::ControlModifier);
    EXPECT_EQ(table().selectionModel()->selectedRows().size(), 3);

    // In an open list it chooses, and that alone.
    lyrics().showPopup();
    QTest::keyClick(lyrics().view(), Qt::Key_Down);
    QTest::keyClick(lyrics().view(), Qt::Key_Return);
    EXPECT_EQ(lyrics().currentIndex(), 1);
    EXPECT_FALSE(lyrics().view()->isVisible());
    EXPECT_EQ(opened.count(), 2);
}

TEST_F(BrowsingTest, ARowIsMeantAsSoonAsItIsClicked) {
    open();
    select({0});
    // The details come late.
    ASSERT_TRUE(stopWorker());
    const QPoint place = table().visualRect(model().index(1, 1)).center();
    QTest::mouseClick(table().viewport(), Qt::LeftButton, {}, place);
    QTest::mouseDClick(table().viewport(), Qt::LeftButton, {}, place);
    EXPECT_EQ(log.count("Could not open selected project!"), 0);
    tasks().restart();
    ASSERT_TRUE(waitUntil([this] { return log.count("Could not open selected project!") == 1; }));
    EXPECT_EQ(details().project().name, "Beta");

    // A first click that asks for the menu.
    table().selectionModel()->clear();
    QTest::mousePress(table().viewport(), Qt::RightButton, {}, place);
    QContextMenuEvent menu(QContextMenuEvent::Mouse, place, table().viewport()->mapToGlobal(place));
    QApplication::sendEvent(table().viewport(), &menu);
    ASSERT_TRUE(waitUntil([] { return QApplication::activePopupWidget() != nullptr; }));
    EXPECT_EQ(details().project().name, "Beta");
    QApplication::activePopupWidget()->close();
    QTest::mouseRelease(table().viewport(), Qt::RightButton, {}, place);
}

TEST_F(BrowsingTest, WhatTheUserIsAtIsSetBackByARefusedWriteButNotByALateRecord) {
    open();
    select({0});
    slider().setFocus();
    holdKey(slider(), Qt::Key_PageUp, [this] {
        emit monitor.projectsDbModified();
        settle();
    });
    settle();
    EXPECT_EQ(values("progress").constFirst(), "0.4");

    // The record is read before the edit is written, and comes after it was made.
    ASSERT_TRUE(stopWorker());
    emit monitor.projectsDbModified();
    QTest::keyClick(&stars(), Qt::Key_2);
    QSignalSpy written(&child<EditHistory>(), &EditHistory::written);
    tasks().restart();
    ASSERT_TRUE(waitUntil([&] { return !written.isEmpty() || stars().starRating().starCount() != 2; }));
    EXPECT_EQ(stars().starRating().starCount(), 2);
    settle();
    EXPECT_EQ(values("star_rating").constFirst(), "2");

    refuse("UPDATE ON projects");
    QTest::keyClick(&stars(), Qt::Key_5);
    QTest::keyClick(&lyrics(), Qt::Key_End);
    ASSERT_TRUE(
        waitUntil([&] { return stars().starRating().starCount() == 2 && lyrics().currentIndex() == 0; }));
    EXPECT_EQ(log.count("Error updating project star rating!"), 1);
    EXPECT_EQ(actions().undo->text(), "&Undo Rating");
}

TEST_F(BrowsingTest, NoticesOfTheMonitorPutNeitherTheDetailsOffNorReloadTheSidebarEachTime) {
    open();
    QTimer notices;
    QObject::connect(&notices, &QTimer::timeout, &details(), &DetailsPane::reload);
    notices.start(0);
    select({1});
    EXPECT_EQ(text("projectNameLabel"), "Beta");
    notices.stop();
    settle();

    QSignalSpy reloaded(&child<FolderTreeItemModel>(), &FolderTreeItemModel::changed);
    for (int notice = 0; notice < 20; ++notice) {
        emit monitor.projectsDbModified();
        settle();
    }
    EXPECT_LE(reloaded.count(), 5);
    // The last one is not lost.
    database.rows("INSERT INTO genres VALUES(7, 'Late', NULL)");
    emit monitor.projectsDbModified();
    EXPECT_TRUE(waitUntil([this] { return child<FolderTreeItemModel>().getEntries(GENRES).size() == 2; }));
}
