#include "ui/table/UndoOffer.h"

#include "BrowsingFixture.h"
#include "ui/widgets/LinkButton.h"

#include <QTimer>

namespace {

class UndoOfferTest : public BrowsingFixture {
protected:
    void SetUp() override {
        BrowsingFixture::SetUp();
        open();
    }

    LinkButton& link() { return child<LinkButton>("undoLink"); }

    /// Empty where nothing is offered.
    QString offered() {
        EXPECT_NE(link().isVisible(), child<QLabel>("statusLabel").isVisible());
        return link().isVisible() ? text("doneLabel") : QString();
    }

    void rate(const QList<int>& rows, Qt::Key stars) {
        select(rows);
        table().setFocus();
        QTest::keyClick(&table(), stars, Qt::ControlModifier);
        settle();
    }

    QTimer& time() { return *child<UndoOffer>().findChild<QTimer*>(); }

    void letTimePass() {
        EXPECT_EQ(time().interval(), 8000);
        QMetaObject::invokeMethod(&time(), "timeout");
    }
};

} // namespace

TEST_F(UndoOfferTest, ComesAfterAnEditOfSeveralAndIsTakenByKeyboardAndMouse) {
    rate({1}, Qt::Key_4);
    EXPECT_EQ(offered(), "");
    rate({0, 1, 2}, Qt::Key_2);
    EXPECT_EQ(offered(), "3 projects rated");
    QTest::keyClick(&table(), Qt::Key_Tab);
    ASSERT_TRUE(link().hasFocus());
    // It does not go away below the keyboard.
    letTimePass();
    EXPECT_EQ(offered(), "3 projects rated");
    QTest::keyClick(&link(), Qt::Key_Return);
    settle();
    EXPECT_EQ(values("star_rating"), QStringList({"0", "4", "0"}));
    EXPECT_EQ(offered(), "");
    EXPECT_TRUE(table().hasFocus());

    rate({0, 2}, Qt::Key_0);
    EXPECT_EQ(offered(), "") << "nothing has changed";
    rate({0, 1}, Qt::Key_0);
    EXPECT_EQ(offered(), "Rating of 2 projects removed");
    QTest::mouseClick(&link(), Qt::LeftButton);
    settle();
    EXPECT_EQ(values("star_rating"), QStringList({"0", "4", "0"}));
}

TEST_F(UndoOfferTest, GoesWithItsTimeAndWithTheNextEdit) {
    rate({0, 1}, Qt::Key_5);
    letTimePass();
    EXPECT_EQ(offered(), "");
    rate({0, 1}, Qt::Key_1);
    EXPECT_EQ(offered(), "2 projects rated");
    rate({2}, Qt::Key_3);
    // Its link would undo the other one.
    EXPECT_EQ(offered(), "");

    refuse("UPDATE ON projects");
    rate({0, 1}, Qt::Key_2);
    EXPECT_EQ(offered(), "");
}

TEST_F(UndoOfferTest, ARemovalIsOfferedWhateverItTook) {
    database.rows("INSERT INTO collections_projects_map VALUES(1, 2)");
    emit child<FilterSidebar>().removeRequested(FilterType::COLLECTIONS, 1, "x");
    settle();
    child<QPushButton>("acceptButton").click();
    settle();
    EXPECT_EQ(offered(), "Collection removed");
    QTest::mouseClick(&link(), Qt::LeftButton);
    settle();
    EXPECT_EQ(database.rows("SELECT * FROM collections_projects_map"), QStringList("1|2"));

    activate(FilterType::COLLECTIONS, "100% <b>Album</b> %1");
    window->disassociateProjectWithFilter(FilterType::COLLECTIONS, 1, 2);
    settle();
    EXPECT_EQ(offered(), "Project removed from the collection");
    activate(FilterType::ALL);
    select({0});
    actions().deleteRecord->trigger();
    ASSERT_TRUE(answer("Delete record"));
    EXPECT_EQ(offered(), "Record deleted");
    QTest::mouseClick(&link(), Qt::LeftButton);
    settle();
    EXPECT_EQ(names().size(), 3);
}
