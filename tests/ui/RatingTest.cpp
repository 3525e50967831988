// The ways to rate, and to set progress and statuses, in the window: a star in the table, keys and menus.

#include "BrowsingFixture.h"
#include "ui/actions/ValueMenu.h"
#include "ui/table/ProjectsPane.h"
#include "ui/table/StarRating.h"

using enum FilterType;

namespace {

class RatingTest : public BrowsingFixture {
protected:
    void SetUp() override {
        BrowsingFixture::SetUp();
        open();
    }

    QString ratings() { return values("star_rating").join(' '); }

    int ratingColumn() {
        int column = 0;
        while (!model().index(0, column).data().canConvert<StarRating>())
            ++column;
        return column;
    }

    /// In the middle of a star in a row of the table.
    QPoint star(int row, int number) {
        const int width = StarRating(0).sizeHint().width();
        const QPoint middle = table().visualRect(model().index(row, ratingColumn())).center();
        return middle + QPoint((2 * number - 6) * width / 10, 0);
    }

    void click(int row, int number, Qt::KeyboardModifiers modifiers = {}) {
        QTest::mouseClick(table().viewport(), Qt::LeftButton, modifiers, star(row, number));
    }

    void press(QWidget& widget, Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
        widget.setFocus();
        QTest::keyClick(&widget, key, modifiers);
    }

    qsizetype selectedRows() { return table().selectionModel()->selectedRows().size(); }

    ValueMenu& menu(const QString& title) {
        for (auto* candidate : window->findChildren<ValueMenu*>()) {
            if (candidate->title().remove('&') == title)
                return *candidate;
        }
        throw std::out_of_range(title.toStdString());
    }

    static QString plain(QString text) { return text.replace("&&", "+").remove('&'); }

    /// The entries that have a mark, "-" before those of some projects alone.
    QStringList marked(const QString& title) {
        QStringList entries;
        for (const QAction* action : menu(title).actions()) {
            const QString text = plain(action->text());
            if (text.endsWith(" (some)"))
                entries.append('-' + text.chopped(7));
            else if (action->isChecked())
                entries.append(text);
        }
        return entries;
    }

    void choose(const QString& title, const QString& entry) {
        for (QAction* action : menu(title).actions()) {
            if (plain(action->text()).remove(" (some)") == entry)
                trigger(action);
        }
    }
};

} // namespace

TEST_F(RatingTest, AClickOnAStarGivesItAndOnTheCurrentOneTakesItAway) {
    QSignalSpy opened(&child<ProjectsPane>(), &ProjectsPane::openRequested);
    click(1, 4);
    settle();
    EXPECT_EQ(ratings(), "0 4 0");
    EXPECT_EQ(selectedName(), "Beta");
    click(1, 4);
    settle();
    EXPECT_EQ(ratings(), "0 0 0");
    // The second edit is queued before the first one is written.
    click(1, 5);
    click(1, 5);
    settle();
    EXPECT_EQ(ratings(), "0 0 0");

    click(1, 3);
    QTest::mouseDClick(table().viewport(), Qt::LeftButton, {}, star(1, 3));
    settle();
    EXPECT_EQ(ratings(), "0 3 0");
    EXPECT_EQ(opened.count(), 0);

    // One of several, which stay selected.
    select({0, 1, 2});
    click(0, 2);
    settle();
    EXPECT_EQ(ratings(), "2 3 0");
    EXPECT_EQ(selectedRows(), 3);

    QTest::mousePress(table().viewport(), Qt::LeftButton, {}, star(1, 1));
    QTest::mouseMove(table().viewport(), star(2, 1));
    QTest::mouseRelease(table().viewport(), Qt::LeftButton, {}, star(2, 1));
    click(0, 5, Qt::ControlModifier);
    QTest::mouseClick(table().viewport(), Qt::LeftButton, {}, star(2, 5) + QPoint(18, 0));
    settle();
    EXPECT_EQ(ratings(), "2 3 0");

    for (const char* before : {"0 3 0", "0 0 0"}) {
        trigger(actions().undo);
        EXPECT_EQ(ratings(), before);
    }
    trigger(actions().redo);
    EXPECT_EQ(ratings(), "0 3 0");
}

TEST_F(RatingTest, AClickMeansTheRowThatTheUserSaw) {
    table().sortByColumn(nameColumn(), Qt::DescendingOrder);
    ASSERT_TRUE(waitForUnseenRows(model()));
    click(0, 5);
    settle();
    EXPECT_EQ(ratings(), "5 0 0");
    EXPECT_EQ(names(), (QStringList{"Gamma", "Beta", "Alpha"}));
}

TEST_F(RatingTest, KeysRateWhatIsSelectedFromAnywhere) {
    press(searchEdit(), Qt::Key_3, Qt::ControlModifier);
    settle();
    EXPECT_EQ(ratings(), "0 0 0");
    EXPECT_FALSE(actions().undo->isEnabled());

    select({0, 2});
    press(searchEdit(), Qt::Key_3, Qt::ControlModifier);
    settle();
    EXPECT_EQ(ratings(), "3 0 3");
    press(slider(), Qt::Key_0, Qt::ControlModifier);
    settle();
    EXPECT_EQ(ratings(), "0 0 0");

    // Before the details of the row have come.
    select({0});
    press(table(), Qt::Key_Down);
    press(table(), Qt::Key_4, Qt::ControlModifier);
    press(table(), Qt::Key_Down);
    press(table(), Qt::Key_5, Qt::ControlModifier);
    settle();
    EXPECT_EQ(ratings(), "0 4 5");

    // Behind a key that waits for rows.
    table().sortByColumn(nameColumn(), Qt::DescendingOrder);
    ASSERT_TRUE(waitForUnseenRows(model()));
    press(table(), Qt::Key_Down);
    press(table(), Qt::Key_1, Qt::ControlModifier);
    settle();
    settle();
    EXPECT_EQ(selectedName(), "Beta");
    EXPECT_EQ(ratings(), "0 1 5");
}

TEST_F(RatingTest, MenusShowWhatAllAndWhatSomeHaveAndSetItForAll) {
    database.rows("UPDATE projects SET star_rating=project_id, progress=project_id/4.0, "
                  "lyrics_status=min(project_id, 2)");
    database.rows("INSERT OR REPLACE INTO lyrics_status VALUES(2, 'Half & half')");
    open();
    EXPECT_FALSE(menu("Rating").isEnabled());
    select({0, 1, 2});
    EXPECT_EQ(marked("Rating"), (QStringList{"-1 Star", "-2 Stars", "-3 Stars"}));
    EXPECT_EQ(marked("Progress"), (QStringList{"-25%", "-50%", "-75%"}));
    EXPECT_EQ(marked("Lyrics"), (QStringList{"-No Lyrics", "-Half + half"}));
    EXPECT_EQ(marked("Recording"), QStringList("Recording Status Unknown"));

    choose("Rating", "2 Stars");
    choose("Progress", "50%");
    choose("Lyrics", "Half + half");
    EXPECT_EQ(values("star_rating, progress, lyrics_status"), QStringList({"2|0.5|2", "2|0.5|2", "2|0.5|2"}));
    ASSERT_TRUE(waitUntil([&] { return marked("Lyrics") == QStringList("Half + half"); }));
    EXPECT_EQ(marked("Rating"), QStringList("2 Stars"));
    EXPECT_EQ(marked("Progress"), QStringList("50%"));
    // What all have stays.
    choose("Rating", "2 Stars");
    EXPECT_EQ(marked("Rating"), QStringList("2 Stars"));

    choose("Progress", "100%");
    ASSERT_TRUE(answer("Yes"));
    EXPECT_EQ(values("progress, completed"), QStringList({"1|1", "1|1", "1|1"}));
    for (int edit = 0; edit < 4; ++edit)
        trigger(actions().undo);
    EXPECT_EQ(
        values("star_rating, progress, completed, lyrics_status"),
        QStringList({"1|0.25|0|1", "2|0.5|0|2", "3|0.75|0|2"}));
}
