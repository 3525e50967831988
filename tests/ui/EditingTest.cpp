// What an edit in the window does to the projects that are selected.

#include "BrowsingFixture.h"
#include "app/errors/ErrorHandler.h"
#include "ui/actions/AssociationMenu.h"

#include <QAbstractItemView>
#include <QAccessible>
#include <QDialog>
#include <QLineEdit>
#include <QStyleOptionSlider>

using enum FilterType;

namespace {

/// Three projects, of which no two say the same.
class EditingTest : public BrowsingFixture {
protected:
    void SetUp() override {
        BrowsingFixture::SetUp();
        database.rows("INSERT INTO genres VALUES(2, 'Rock', NULL)");
        database.rows("UPDATE projects SET star_rating=project_id, progress=project_id/10.0, "
                      "lyrics_status=project_id, bpm=100+project_id/3, genre_id=nullif(project_id, 3)");
        database.rows("UPDATE projects SET song_key='D', ignored=1 WHERE project_id=3");
        database.rows("INSERT INTO collections_projects_map VALUES(1, 1)");
        database.rows("INSERT INTO project_tag_map VALUES(1, 1), (2, 1), (3, 1), (3, 2)");
        QSettings().setValue("hideIgnored", false);
        open();
    }

    QString of(const QString& expression) {
        return database.rows(QString("SELECT %1 FROM projects ORDER BY project_id").arg(expression))
            .join(' ');
    }

    AssociationMenu& menu(FilterType type) {
        const auto menus = window->findChildren<AssociationMenu*>();
        return **std::find_if(menus.begin(), menus.end(), [&](auto* menu) { return menu->type() == type; });
    }

    QAction* entry(FilterType type, qint64 id) {
        for (QAction* action : menu(type).actions()) {
            if (action->isCheckable() && action->data().toLongLong() == id)
                return action;
        }
        return nullptr;
    }

    void clickHandle() {
        QStyleOptionSlider option;
        option.initFrom(&slider());
        option.orientation = Qt::Horizontal;
        option.maximum = 100;
        option.sliderPosition = option.sliderValue = slider().value();
        const QRect handle =
            slider().style()->subControlRect(QStyle::CC_Slider, &option, QStyle::SC_SliderHandle, &slider());
        QTest::mouseClick(&slider(), Qt::LeftButton, {}, handle.center() + QPoint(4, 0));
        settle();
    }
};

} // namespace

TEST_F(EditingTest, AnEditOfManyReachesAllOfThemAndNoOtherValue) {
    const auto mapped = [](const char* table, const char* column) {
        return QString("(SELECT group_concat(%2) FROM %1 m WHERE m.project_id=projects.project_id)")
            .arg(table, column);
    };
    const QString collections = "coalesce(" + mapped("collections_projects_map", "collection_id") + ", '-')";
    const QString tags = mapped("project_tag_map", "tag_id");
    const auto choose = [this](FilterType type, qint64 id) {
        return [this, type, id] {
            entry(type, id)->trigger();
        };
    };
    const auto press = [](QWidget& widget, Qt::Key key) {
        return [&widget, key] {
            widget.setFocus();
            QTest::keyClick(&widget, key);
        };
    };

    const struct {
        const char* what;
        std::function<void()> edit;
        QString column;
        QString edited;
    } cases[] = {
        {"stars", press(stars(), Qt::Key_2), "star_rating", "2 2 2"},
        {"the stars of the current one", press(stars(), Qt::Key_3), "star_rating", "3 3 3"},
        {"progress", press(slider(), Qt::Key_Right), "progress", "0.31 0.31 0.31"},
        {"progress to the left and back",
         [this] {
             slider().setFocus();
             QTest::keyPress(&slider(), Qt::Key_Left);
             QTest::keyPress(&slider(), Qt::Key_Right);
             QTest::keyRelease(&slider(), Qt::Key_Right);
         },
         "progress", "0.3 0.3 0.3"},
        {"a status",
         [this] {
             lyrics().setFocus();
             QTest::keyClick(&lyrics(), Qt::Key_Down);
         },
         "lyrics_status", "0 0 0"},
        {"the status of the current one",
         [this] {
             lyrics().setFocus();
             QTest::keyClick(&lyrics(), Qt::Key_End);
             QTest::keyClick(&lyrics(), Qt::Key_Up);
         },
         "lyrics_status", "3 3 3"},
        {"a genre that one has", choose(GENRES, 1), "quote(genre_id)", "1 1 1"},
        {"a genre that another has", choose(GENRES, 2), "quote(genre_id)", "2 2 2"},
        {"a collection that one has", choose(COLLECTIONS, 1), collections, "1 1 1"},
        {"a tag that one has", choose(TAGS, 2), tags, "1,2 1,2 1,2"},
        {"a tag that all have", choose(TAGS, 1), tags, "  2"},
    };

    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        select({0, 1, 2});
        const QStringList before = values("*") + database.rows("SELECT * FROM collections_projects_map") +
            database.rows("SELECT * FROM project_tag_map ORDER BY 1, 2");
        c.edit();
        settle();
        EXPECT_EQ(of(c.column).simplified(), c.edited.simplified());
        while (actions().undo->isEnabled())
            trigger(actions().undo);
        EXPECT_EQ(
            values("*") + database.rows("SELECT * FROM collections_projects_map") +
                database.rows("SELECT * FROM project_tag_map ORDER BY 1, 2"),
            before);
        table().selectionModel()->clear();
        settle();
    }
}

TEST_F(EditingTest, TakingAGenreAwayTouchesOnlyThoseThatHaveIt) {
    activate(GENRES, "Pop");
    database.rows("UPDATE projects SET genre_id=2 WHERE project_id=2");
    window->disassociateProjectWithFilter(GENRES, 1, 2);
    settle();
    EXPECT_EQ(of("quote(genre_id)"), "1 2 NULL");
    activate(ALL);
    select({0});
    trigger(entry(GENRES, 1));
    EXPECT_EQ(of("quote(genre_id)"), "NULL 2 NULL");
}

TEST_F(EditingTest, TheDetailsOfManyShowWhatTheyShareAndMarkTheRest) {
    select({0, 1});
    EXPECT_EQ(text("projectNameLabel"), "2 projects");
    EXPECT_EQ(text("projectDetailsLabel"), "100 BPM - 4/4 - C");
    EXPECT_EQ(text("projectFilepathLabel"), "/music/");
    select({0, 1, 2});
    EXPECT_EQ(text("projectNameLabel"), "3 projects");
    EXPECT_EQ(text("projectDetailsLabel"), "(mixed) - 4/4 - (mixed)");
    EXPECT_EQ(text("projectProgressLabel"), "Progress: (mixed)");
    EXPECT_EQ(slider().accessibleDescription(), "(mixed)");
    EXPECT_TRUE(child<QLabel>("mixedStarsLabel").isVisible());
    EXPECT_EQ(stars().starRating().starCount(), 0);
    EXPECT_EQ(lyrics().currentIndex(), -1);
    EXPECT_EQ(lyrics().placeholderText(), "(mixed)");
    EXPECT_EQ(child<QComboBox>("recordingCombo").currentIndex(), 0);
    EXPECT_FALSE(actions().ignore->isChecked());
    EXPECT_EQ(entry(GENRES, 1)->text(), "Pop\t1 of 3");
    EXPECT_EQ(entry(TAGS, 1)->text(), "#one");
    EXPECT_TRUE(entry(TAGS, 1)->isChecked());
    EXPECT_FALSE(entry(TAGS, 2)->isChecked());

    // All get one value, and the marks go.
    QTest::keyClick(&stars(), Qt::Key_4);
    trigger(entry(GENRES, 2));
    EXPECT_FALSE(child<QLabel>("mixedStarsLabel").isVisible());
    EXPECT_EQ(stars().starRating().starCount(), 4);
    EXPECT_EQ(entry(GENRES, 2)->text(), "Rock");
    EXPECT_TRUE(entry(GENRES, 2)->isChecked());
    EXPECT_EQ(entry(GENRES, 1)->text(), "Pop");

    // The current project stays, and the others do not.
    table().selectRow(2);
    ASSERT_TRUE(waitUntil([this] { return text("projectNameLabel") == "Gamma"; }));
    EXPECT_EQ(text("projectProgressLabel"), "Progress: 30%");
    EXPECT_TRUE(actions().ignore->isChecked());
}

TEST_F(EditingTest, AClickOnTheRestingHandleChangesNothing) {
    for (const QList<int>& rows : {QList<int>{0}, QList<int>{0, 1, 2}}) {
        select(rows);
        clickHandle();
        EXPECT_EQ(of("progress"), "0.1 0.2 0.3");
        EXPECT_FALSE(actions().undo->isEnabled());
    }
}

TEST_F(EditingTest, OtherButtonsThanTheLeftOneAndAReleaseOutsideEditNothing) {
    for (const QList<int>& rows : {QList<int>{0}, QList<int>{0, 1, 2}}) {
        select(rows);
        const QStringList before = values("*");
        for (const Qt::MouseButton button : {Qt::RightButton, Qt::MiddleButton}) {
            for (QWidget* field : {static_cast<QWidget*>(&stars()), static_cast<QWidget*>(&slider())}) {
                for (const QPoint place : {QPoint(3, 12), field->rect().center()}) {
                    QTest::mouseMove(field, place);
                    QTest::mouseClick(field, button, {}, place);
                }
            }
            lyrics().showPopup();
            auto& list = *lyrics().view();
            const QPoint place = list.visualRect(list.model()->index(2, 0)).center();
            QTest::mouseMove(list.viewport(), place);
            // The list takes no click soon after it has opened.
            QTest::qWait(QApplication::doubleClickInterval() + 50);
            QTest::mouseClick(list.viewport(), button, {}, place);
            EXPECT_TRUE(list.isVisible());
            lyrics().hidePopup();
            settle();
            EXPECT_EQ(values("*"), before);
        }
        QTest::mouseMove(&stars(), stars().rect().center());
        QTest::mousePress(&stars(), Qt::LeftButton, {}, stars().rect().center());
        QTest::mouseRelease(&stars(), Qt::LeftButton, {}, {-200, -200});
        settle();
        EXPECT_EQ(values("*"), before);
        EXPECT_FALSE(actions().undo->isEnabled());
    }
}

TEST_F(EditingTest, OnlyThoseThatAreStillSelectedAreEditedWhileTheDetailsAreOnTheirWay) {
    select({0, 1, 2});
    ASSERT_TRUE(stopWorker());
    table().selectRow(1);
    QTest::keyClick(&stars(), Qt::Key_5);
    tasks().restart();
    settle();
    EXPECT_EQ(of("star_rating"), "1 5 3");
}

TEST_F(EditingTest, LeavingTheQuestionOfCompletionOpenChangesNothing) {
    const std::pair<const char*, std::function<void(QMessageBox&)>> ways[] = {
        {"Escape",
         [](QMessageBox& question) {
             QTest::keyClick(&question, Qt::Key_Escape);
         }},
        {"closed", [](QMessageBox& question) {
             question.close();
         }}};
    const QStringList before = values("*");
    for (const auto& [name, leave] : ways) {
        SCOPED_TRACE(name);
        select({1, 2});
        QTest::keyClick(&slider(), Qt::Key_End);
        auto* question = window->findChild<QMessageBox*>();
        ASSERT_NE(question, nullptr);
        EXPECT_EQ(question->text(), "Do you want to mark these 2 projects as completed?");
        EXPECT_FALSE(question->button(QMessageBox::Cancel)->isVisible());
        leave(*question);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        settle();
        EXPECT_EQ(values("*"), before);
        EXPECT_FALSE(actions().undo->isEnabled());
        EXPECT_TRUE(waitUntil([this] { return slider().value() == 30; }));
        EXPECT_EQ(text("projectProgressLabel"), "Progress: (mixed)");
    }
}

TEST_F(EditingTest, UndoAndRedoSelectWhatTheyChanged) {
    select({0, 1});
    QTest::keyClick(&stars(), Qt::Key_5);
    settle();
    select({2});
    trigger(actions().undo);
    EXPECT_EQ(names().size(), 3);
    ASSERT_TRUE(waitUntil([this] { return details().projects() == QList<qint64>{1, 2}; }));
    EXPECT_EQ(table().selectionModel()->selectedRows().size(), 2);
    table().selectionModel()->clear();
    trigger(actions().redo);
    ASSERT_TRUE(waitUntil([this] { return stars().starRating().starCount() == 5; }));
    EXPECT_EQ(text("projectNameLabel"), "2 projects");

    // A record that comes back, and one that is hidden by what is done again.
    select({0});
    actions().deleteRecord->trigger();
    ASSERT_TRUE(answer("Delete record"));
    select({1});
    trigger(actions().undo);
    ASSERT_TRUE(waitUntil([this] { return details().project().name == "Alpha"; }));
    trigger(actions().hideIgnored);
    EXPECT_EQ(names(), (QStringList{"Alpha", "Beta"}));
    actions().ignore->trigger();
    ASSERT_TRUE(answer("Ignore"));
    trigger(actions().undo);
    select({1});
    trigger(actions().redo);
    EXPECT_EQ(selectedName(), "Beta");
}

TEST_F(EditingTest, UndoBringsTheSidebarBackAndTheTableFollows) {
    const auto removeOrRename = [this](FilterType type, const QString& newName) {
        settle();
        auto* dialog = window->findChild<QDialog*>();
        ASSERT_NE(dialog, nullptr);
        if (!newName.isEmpty())
            dialog->findChild<QLineEdit*>()->setText(newName);
        dialog->accept();
        settle();
        settle();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        EXPECT_FALSE(child<FolderTreeItemModel>().getEntries(type).isEmpty());
    };
    QTest::keyClick(&stars(), Qt::Key_5);
    EXPECT_EQ(activate(TAGS, "#two & more"), "Tag '#two & more' (1 found)");
    emit child<FilterSidebar>().renameRequested(TAGS, 2, "#two & more");
    removeOrRename(TAGS, "#second");
    ASSERT_TRUE(waitUntil([this] { return status() == "Tag '#second' (1 found)"; }));
    EXPECT_EQ(actions().undo->text(), "Undo Rename Tag");
    trigger(actions().undo);
    ASSERT_TRUE(waitUntil([this] { return status() == "Tag '#two & more' (1 found)"; }));
    trigger(actions().redo);

    emit child<FilterSidebar>().removeRequested(TAGS, 2, "#second");
    removeOrRename(TAGS, {});
    ASSERT_TRUE(waitUntil([this] { return status() == "All projects (3 found)"; }));
    EXPECT_EQ(actions().undo->text(), "Undo Remove Tag");
    trigger(actions().undo);
    EXPECT_EQ(database.rows("SELECT project_id FROM project_tag_map WHERE tag_id=2"), QStringList("3"));
    // What has come back is shown, and the keyboard is there.
    ASSERT_TRUE(waitUntil([this] { return status() == "Tag '#second' (1 found)"; }));
    EXPECT_EQ(child<FilterSidebar>().currentName(), "#second");
    EXPECT_EQ(child<FilterSidebar>().shownEntryId(), 2);
    trigger(actions().redo);
    ASSERT_TRUE(waitUntil([this] { return status() == "All projects (3 found)"; }));
}

TEST_F(EditingTest, WhatWasAskedForBeforeUnreadableDetailsIsDroppedAndAClickTriesAgain) {
    QStringList alerts;
    Stemhaven::ErrorHandler::instance().setPresenter([&](const auto& details) {
        // Others may be of what came before.
        if (details.message.contains("could not be read"))
            alerts.append(details.title + '|' + details.message);
    });
    select({0});
    database.rows("ALTER TABLE project_tag_map RENAME TO elsewhere");
    ASSERT_TRUE(stopWorker());
    table().selectRow(1);
    actions().deleteRecord->trigger();
    tasks().restart();
    ASSERT_TRUE(waitUntil([&] { return !alerts.isEmpty(); }));
    EXPECT_EQ(alerts, QStringList("Could not delete record|The project's details could not be read."));
    EXPECT_FALSE(details().project().isValid());
    EXPECT_FALSE(actions().deleteRecord->isEnabled());

    database.rows("ALTER TABLE elsewhere RENAME TO project_tag_map");
    const QPoint place = table().visualRect(model().index(1, 1)).center();
    QTest::mouseClick(table().viewport(), Qt::LeftButton, {}, place);
    EXPECT_TRUE(waitUntil([this] { return details().project().name == "Beta"; }));
    settle();
    EXPECT_EQ(window->findChild<QMessageBox*>(), nullptr);
    EXPECT_EQ(alerts.size(), 1);
    Stemhaven::ErrorHandler::instance().setPresenter([](const auto& /*details*/) {});
}

TEST_F(EditingTest, AValueSetByAssistiveTechnologyIsAnEditLikeOneByKey) {
    select({0});
    auto* face = QAccessible::queryAccessibleInterface(&slider());
    ASSERT_NE(face, nullptr);
    ASSERT_NE(face->valueInterface(), nullptr);
    const auto expect = [this](const char* progress) {
        settle();
        EXPECT_EQ(values("progress").constFirst(), progress);
        EXPECT_EQ(slider().value(), qRound(QString(progress).toDouble() * 100));
    };
    face->valueInterface()->setCurrentValue(42);
    expect("0.42");
    face->valueInterface()->setCurrentValue(43);
    expect("0.43");
    trigger(actions().undo);
    trigger(actions().undo);
    expect("0.1");

    // Where the handle rests is one project's value; for the others it is another one.
    select({1, 2, 0});
    ASSERT_EQ(slider().value(), 10);
    face->valueInterface()->setCurrentValue(10);
    settle();
    EXPECT_EQ(of("progress"), "0.1 0.1 0.1");
    trigger(actions().undo);
    EXPECT_EQ(of("progress"), "0.1 0.2 0.3");
    face->valueInterface()->setCurrentValue(10);
    settle();
    face->valueInterface()->setCurrentValue(10);
    settle();
    trigger(actions().undo);
    EXPECT_FALSE(actions().undo->isEnabled());
}
