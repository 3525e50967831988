// Where the keyboard is in the table while rows leave, are sorted anew or come late.

#include "WindowFixture.h"
#include "ui/sidebar/FilterSidebar.h"
#include "ui/table/ProjectsPane.h"
#include "ui/table/SelectionKeeper.h"
#include "ui/table/StarEditor.h"

#include <QComboBox>
#include <QHeaderView>
#include <QMessageBox>
#include <QScrollBar>

#include <functional>

namespace {

class KeyboardPlaceTest : public WindowFixture {
protected:
    QStringList selectedNames() {
        QStringList selected;
        for (int row = 0; row < model().rowCount(); ++row) {
            if (table().selectionModel()->isSelected(model().index(row, 0)))
                selected.append(model().index(row, nameColumn()).data().toString());
        }
        return selected;
    }

    QString currentName() {
        return model().index(table().currentIndex().row(), nameColumn()).data().toString();
    }

    /// What the action asks is answered with the button of that text.
    void answered(QAction* action, const char* button) {
        action->trigger();
        settle();
        ASSERT_TRUE(answer(button));
        delete window->findChild<QMessageBox*>();
        QApplication::setActiveWindow(&*window);
        settle();
    }

    /// Another program's doing, as far as the table is concerned.
    void write(const QString& sql) {
        database.rows(sql);
        emit monitor.projectsDbModified();
        child<ProjectsPane>().reloadProjects(false);
        settle();
    }
};

} // namespace

TEST_F(KeyboardPlaceTest, RowsThatLeaveTakeNeitherTheSelectionNorTheFocusWithThem) {
    const auto ignore = [this] {
        answered(actions().ignore, "Ignore");
    };
    const auto deleteRecords = [this] {
        answered(actions().deleteRecord, "Delete record");
    };
    const auto complete = [this] {
        write("UPDATE projects SET completed=1 WHERE project_id IN (2, 3)");
    };
    const auto filter = [this] {
        search("am");
    };

    struct {
        const char* what;
        QList<int> selected;
        std::function<void()> leave;
        QStringList stillSelected;
        QString current;
    } const cases[] = {
        {"ignored", {1}, ignore, {"Camera"}, "Camera"},
        {"several ignored", {0, 2}, ignore, {"Dime"}, "Dime"},
        {"the last ignored", {5}, ignore, {"Empty"}, "Empty"},
        {"deleted", {3}, deleteRecords, {"Empty"}, "Empty"},
        {"completed", {1}, complete, {"Dime"}, "Dime"},
        {"some completed, the current one too", {0, 4, 2}, complete, {"Amber", "Empty"}, "Empty"},
        {"some completed", {0, 1, 4}, complete, {"Amber", "Empty"}, "Empty"},
        {"all but one completed", {0, 2, 1}, complete, {"Amber"}, "Amber"},
        {"filtered", {1}, filter, {"Camera"}, "Camera"},
        {"filtered, none after it", {4}, filter, {"Camera"}, "Camera"},
        {"filtered, some", {0, 1, 2}, filter, {"Amber", "Camera"}, "Camera"}};

    for (const auto& each : cases) {
        SCOPED_TRACE(each.what);
        QSettings().clear();
        database.rows("DELETE FROM projects");
        for (const char* name : {"Amber", "Bold", "Camera", "Dime", "Empty", "Frost"})
            insert({name});
        database.rows("UPDATE projects SET ignored=0");
        open();
        ASSERT_EQ(names().size(), 6);
        table().setFocus();
        select(each.selected);
        each.leave();
        EXPECT_EQ(selectedNames(), each.stillSelected);
        EXPECT_EQ(currentName(), each.current);
        EXPECT_TRUE(table().hasFocus());
        EXPECT_EQ(child<SelectionKeeper>().selectedProjects().size(), each.stillSelected.size());
        EXPECT_TRUE(waitUntil([&] { return details().project().name == each.current; }));
    }

    // The last of all, and its way back.
    search("Frost");
    table().setFocus();
    select({0});
    answered(actions().ignore, "Ignore");
    EXPECT_TRUE(emptyState().isAncestorOf(window->focusWidget()));
    actions().undo->trigger();
    settle();
    EXPECT_TRUE(table().hasFocus());
}

TEST_F(KeyboardPlaceTest, AnEditInTheDetailsGoesOnToNoOtherProject) {
    struct {
        const char* what;
        QList<int> selected;
        QStringList statuses;
    } const cases[] = {
        {"one", {1}, {"0", "2", "0", "0"}},
        {"several", {0, 2}, {"2", "0", "2", "0"}},
        {"all", {0, 1, 2, 3}, {"2", "2", "2", "2"}}};

    for (const auto& each : cases) {
        SCOPED_TRACE(each.what);
        database.rows("DELETE FROM projects");
        insert({"Amber", "Bold", "Camera", "Dime"});
        open();
        emit child<FilterSidebar>().activated(FilterType::LYRICS_STATUS, defaultStatusId, {});
        settle();
        select(each.selected);
        const QStringList selected = selectedNames();
        const QString current = currentName();
        ASSERT_EQ(selected.size(), each.selected.size());
        auto& lyrics = child<QComboBox>("lyricsCombo");
        lyrics.setFocus();
        const auto press = [&](Qt::Key key) {
            QTest::keyClick(&lyrics, key);
            settle();
        };
        press(Qt::Key_Down);
        EXPECT_EQ(names().size(), 4 - selected.size());
        EXPECT_EQ(selectedNames(), QStringList());
        press(Qt::Key_Down);
        EXPECT_EQ(database.rows("SELECT lyrics_status FROM projects ORDER BY name"), each.statuses);
        EXPECT_EQ(details().project().name, current);
        EXPECT_EQ(details().projects().size(), selected.size());
        EXPECT_TRUE(lyrics.hasFocus());

        // Back in the filter, they are back in the selection.
        press(Qt::Key_Up);
        press(Qt::Key_Up);
        EXPECT_EQ(names().size(), 4);
        EXPECT_EQ(selectedNames(), selected);
        EXPECT_EQ(currentName(), current);
        press(Qt::Key_Down);
        if (selected.size() < 4)
            select({0});
        // Without a row, too, they are given up with the selection.
        child<ProjectsPane>().clearSelection();
        EXPECT_TRUE(waitUntil([this] { return !details().project().isValid(); }));
    }
}

TEST_F(KeyboardPlaceTest, AnEditByAMenuGoesOnWhereverTheKeyboardIs) {
    insert({"Amber", "Bold", "Camera", "Dime"});
    open();
    select({1});
    child<StarEditor>().setFocus();
    answered(actions().ignore, "Ignore");
    EXPECT_EQ(selectedNames(), QStringList("Camera"));
    EXPECT_TRUE(waitUntil([&] { return details().project().name == "Camera"; }));
    EXPECT_TRUE(child<StarEditor>().hasFocus());

    // The next one leaves by a key of the details, though a menu has changed it before.
    window->associateProjectWithFilter(FilterType::GENRES, 1, 3);
    emit child<FilterSidebar>().activated(FilterType::LYRICS_STATUS, defaultStatusId, {});
    settle();
    auto& lyrics = child<QComboBox>("lyricsCombo");
    lyrics.setFocus();
    QTest::keyClick(&lyrics, Qt::Key_Down);
    settle();
    EXPECT_EQ(names(), (QStringList{"Amber", "Dime"}));
    EXPECT_EQ(selectedNames(), QStringList());
    EXPECT_EQ(details().project().name, "Camera");
}

TEST_F(KeyboardPlaceTest, ANewOrderIsShownFromItsTopAndMovesNothingElse) {
    insertNumbered(200);
    window.reset();
    open();
    window->resize(700, 500);
    table().setFocus();
    select({150});
    auto* header = table().horizontalHeader();
    auto* horizontal = table().horizontalScrollBar();
    const int tempo = nameColumn() + 2;
    header->resizeSection(nameColumn(), 900);
    horizontal->setValue(header->sectionPosition(tempo));
    const int position = horizontal->value();
    ASSERT_GT(position, 100);
    const QPoint title(header->sectionViewportPosition(tempo) + 20, header->height() / 2);
    for (int click = 0; click < 3; ++click) {
        QTest::mouseClick(header->viewport(), Qt::LeftButton, {}, title);
        settle();
        EXPECT_EQ(horizontal->value(), position) << click;
        EXPECT_EQ(table().verticalScrollBar()->value(), 0) << click;
        EXPECT_EQ(selectedName(), "Song 000151") << click;
        EXPECT_TRUE(table().hasFocus()) << click;
        table().verticalScrollBar()->setValue(1000);
    }
}

TEST_F(KeyboardPlaceTest, HomeAndEndGoToTheFirstAndTheLastRow) {
    insertNumbered(200);
    open();
    table().setFocus();
    select({40});
    const auto press = [this](Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
        QTest::keyClick(&table(), key, modifiers);
        return selectedName();
    };
    EXPECT_EQ(press(Qt::Key_End), "Song 000200");
    EXPECT_TRUE(table().viewport()->rect().contains(table().visualRect(table().currentIndex())));
    EXPECT_EQ(press(Qt::Key_Home), "Song 000001");
    EXPECT_EQ(table().verticalScrollBar()->value(), 0);
    QTest::keyClick(&table(), Qt::Key_Down, Qt::ShiftModifier);
    QTest::keyClick(&table(), Qt::Key_Up, Qt::ControlModifier);
    EXPECT_EQ(press(Qt::Key_Home), "Song 000001");
    EXPECT_EQ(press(Qt::Key_End), "Song 000200");
    EXPECT_EQ(press(Qt::Key_Up), "Song 000199");
    QTest::keyClick(&table(), Qt::Key_End, Qt::ShiftModifier);
    EXPECT_EQ(selectedNames(), (QStringList{"Song 000199", "Song 000200"}));

    QTest::keyClick(&table(), Qt::Key_Space);
    EXPECT_EQ(searchEdit().text(), QString());
    EXPECT_TRUE(table().hasFocus());

    window->setLayoutDirection(Qt::RightToLeft);
    EXPECT_EQ(press(Qt::Key_Home), "Song 000001");
    EXPECT_EQ(press(Qt::Key_End), "Song 000200");
    table().selectionModel()->clear();
    QTest::keyClick(&searchEdit(), Qt::Key_Down);
    EXPECT_EQ(selectedName(), "Song 000001");
}

TEST_F(KeyboardPlaceTest, RowsBeginWithTheirNamesAndShowTheCurrentCell) {
    insert({"Amber", "Bold", "Camera"});
    open();
    table().setFocus();
    QTest::keyClick(&table(), Qt::Key_Down);
    EXPECT_EQ(table().currentIndex().data(), "Amber");
    EXPECT_EQ(model().headerData(1, Qt::Vertical, Qt::AccessibleTextRole), "Bold");
    const auto pictureOf = [this](int column) {
        return table().viewport()->grab(table().visualRect(model().index(0, column))).toImage();
    };
    const QImage with = pictureOf(nameColumn());
    QTest::keyClick(&table(), Qt::Key_Right);
    EXPECT_EQ(selectedName(), "Amber");
    EXPECT_NE(pictureOf(nameColumn()), with);
    QTest::keyClick(&table(), Qt::Key_Left);
    EXPECT_EQ(pictureOf(nameColumn()), with);
    searchEdit().setFocus();
    QTest::keyClicks(&searchEdit(), "a");
    QTest::keyClick(&searchEdit(), Qt::Key_Down);
    settle();
    EXPECT_EQ(table().currentIndex().data(), "Amber");
}

TEST_F(KeyboardPlaceTest, KeysPressedDuringAReloadAreNotLost) {
    insertNumbered(50);
    open();
    table().setFocus();
    select({3});
    // Rows that are there already, and of which the table has not been told.
    child<ProjectsPane>().reloadProjects(false);
    ASSERT_TRUE(waitForUnseenRows(model()));
    QTest::keyClick(&table(), Qt::Key_Down);
    QTest::keyClick(&table(), Qt::Key_Down, Qt::ShiftModifier);
    settle();
    EXPECT_EQ(selectedNames(), (QStringList{"Song 000005", "Song 000006"}));

    // From the search field into what it finds.
    table().selectionModel()->clear();
    searchEdit().setFocus();
    QTest::keyClicks(&searchEdit(), "4");
    QTest::keyClick(&searchEdit(), Qt::Key_Down);
    ASSERT_TRUE(model().isReloading());
    EXPECT_TRUE(table().hasFocus());
    QTest::keyClick(&table(), Qt::Key_Down);
    QTest::keyClick(&table(), Qt::Key_Return);
    settle();
    EXPECT_EQ(names().mid(0, 2), (QStringList{"Song 000004", "Song 000014"}));
    EXPECT_EQ(selectedName(), "Song 000014");
    EXPECT_TRUE(waitUntil([this] { return log.count("Could not open selected project!") == 1; }));
}
