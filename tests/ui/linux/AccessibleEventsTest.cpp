#include "../WindowFixture.h"
#include "SentEvents.h"
#include "ui/details/ProgressSlider.h"
#include "ui/edits/EditHistory.h"
#include "ui/sidebar/AddFilterForm.h"
#include "ui/sidebar/FilterSidebar.h"
#include "ui/sidebar/FolderTreeItemModel.h"
#include "ui/table/ProjectsPane.h"
#include "ui/table/StarEditor.h"

#include <QLineEdit>

#include <algorithm>
#include <utility>

namespace {

QAccessibleInterface& accessible(QWidget& widget) {
    return *QAccessible::queryAccessibleInterface(&widget);
}

class AccessibleEventsTest : public WindowFixture {
protected:
    void reload() {
        child<ProjectsPane>().reloadProjects(false);
        settle();
    }
};

} // namespace

TEST_F(AccessibleEventsTest, TheFocusIsReportedOnlyWhereTheKeyboardIs) {
    insert({"Amber", "Bold", "Camera"});
    open();
    table().setFocus();
    select({1});
    {
        // The selected row leaves for the search, and another one is selected; then that one stays.
        searchEdit().setFocus();
        SentEvents events;
        for (const auto& [key, selected] : {std::pair('a', "Camera"), {'m', "Camera"}, {'b', "Amber"}}) {
            QTest::keyClick(&searchEdit(), key);
            settle();
            EXPECT_EQ(selectedName(), selected);
        }
        search({});
        auto& stars = child<StarEditor>();
        stars.setFocus();
        EXPECT_EQ(events.names(QAccessible::Focus), QStringList("Rating"));
        QTest::keyClick(&stars, Qt::Key_3);
        settle();
        EXPECT_EQ(events.names(QAccessible::Focus), QStringList("Rating"));
    }
    table().setFocus();
    table().setCurrentIndex(model().index(1, nameColumn()));
    SentEvents events;
    QTest::keyClick(&table(), Qt::Key_Down);
    EXPECT_EQ(events.names(QAccessible::Focus), QStringList("Camera"));
    // It stands where it stood, and that is said once.
    reload();
    EXPECT_EQ(events.names(QAccessible::Focus), QStringList("Camera"));
    database.rows("UPDATE projects SET ignored=1 WHERE name='Camera'");
    reload();
    EXPECT_EQ(events.names(QAccessible::Focus), (QStringList{"Camera", "Bold"}));
    events.clear();
    // The sidebar's rows are exchanged, and its current one moves.
    database.rows("INSERT INTO tags (name) VALUES ('#new')");
    child<FolderTreeItemModel>().reload();
    settle();
    child<FilterSidebar>().setCurrent(FilterType::LAST_SEARCH, -1);
    EXPECT_EQ(events.names(QAccessible::Focus), QStringList());
}

TEST_F(AccessibleEventsTest, TheFocusGoesStraightToThePlaceOfTheTableAndBack) {
    insert({"Amber"});
    open();
    table().setFocus();
    select({0});
    const auto ignore = [&](bool ignored) {
        database.rows(QStringLiteral("UPDATE projects SET ignored=%1").arg(ignored));
        reload();
    };
    SentEvents events;
    ignore(true);
    EXPECT_EQ(events.names(QAccessible::Focus), QStringList("Show Hidden Projects"));
    ignore(false);
    EXPECT_TRUE(table().hasFocus());
    EXPECT_FALSE(events.names(QAccessible::Focus).contains(QString()));
}

TEST_F(AccessibleEventsTest, CellsMayBeAskedForWhileTheRowsAreExchanged) {
    insertNumbered(300);
    open();
    auto& tree = accessible(table());
    int asked = 0;
    const auto askForAll = [&] {
        auto* cells = tree.tableInterface();
        const int rows = std::max(cells->rowCount(), 300);
        for (int row = 0; row < rows; row += 37) {
            for (int column = 0; column < cells->columnCount(); ++column) {
                const auto* cell = cells->cellAt(row, column);
                if (cell && cell->isValid())
                    asked += static_cast<int>(cell->text(QAccessible::Name).size());
            }
        }
    };
    SentEvents events(askForAll);
    select({250});
    const auto* cell = tree.tableInterface()->cellAt(250, 0);
    ASSERT_EQ(cell->text(QAccessible::Name), "0%");
    searchEdit().setText("000007");
    ASSERT_TRUE(waitForUnseenRows(model()));
    // A row that is gone, and the views have not been told.
    EXPECT_EQ(cell->text(QAccessible::Name), QString());
    askForAll();
    settle();
    askForAll();
    EXPECT_EQ(tree.tableInterface()->rowCount(), 1);
    EXPECT_EQ(log.count("Expected row out of bounds for accesssibility table element!"), 1);
    search({});
    EXPECT_EQ(tree.tableInterface()->rowCount(), 300);
    EXPECT_EQ(tree.tableInterface()->cellAt(250, nameColumn())->text(QAccessible::Name), "Song 000251");
    EXPECT_GT(asked, 0);
}

TEST_F(AccessibleEventsTest, ChangesAreAnnounced) {
    insert({"One", "Two"});
    open();
    select({0});
    SentEvents events;
    auto& stars = child<StarEditor>();
    QTest::keyClick(&stars, Qt::Key_4);
    EXPECT_EQ(events.names(QAccessible::ValueChanged), QStringList("Rating"));
    settle();
    events.clear();
    QTest::keyClick(&child<ProgressSlider>(), Qt::Key_Right);
    EXPECT_EQ(events.names(QAccessible::ValueChanged), QStringList("Progress"));
    settle();
    events.clear();
    // Another project's values.
    select({1});
    EXPECT_EQ(events.names(QAccessible::ValueChanged), (QStringList{"Rating", "Progress"}));

    search("Two");
    EXPECT_EQ(events.names(QAccessible::Alert), QStringList("All projects matching 'Two' (1 found)"));
    search("On");
    reload();
    EXPECT_EQ(events.names(QAccessible::Alert).size(), 2);

    events.clear();
    EditHistory history(tasks());
    AddFilterForm form(tasks(), history, FilterType::TAGS, "#x", AddFilterForm::EditType::Add, -1, &*window);
    form.open();
    form.findChild<QLineEdit*>()->setText("");
    EXPECT_EQ(events.names(QAccessible::Alert), QStringList(form.findChild<QLabel*>("errorLabel")->text()));
}
