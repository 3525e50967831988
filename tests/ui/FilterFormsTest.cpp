#include "SidebarFixture.h"
#include "app/errors/ErrorHandler.h"
#include "ui/edits/EditHistory.h"
#include "ui/sidebar/AddFilterForm.h"
#include "ui/sidebar/RemoveFilter.h"

#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QPointer>
#include <QPushButton>
#include <QStringListModel>

using EditType = AddFilterForm::EditType;
using enum FilterType;

namespace {

class FilterFormsTest : public SidebarFixture {
protected:
    void SetUp() override {
        SidebarFixture::SetUp();
        Stemhaven::ErrorHandler::instance().setPresenter(
            [this](const auto& details) { alerts.append(details.title + u'|' + details.message); });
    }

    void TearDown() override {
        Stemhaven::ErrorHandler::instance().setPresenter([](const auto& /*details*/) {});
    }

    AddFilterForm&
    edit(FilterType type, const QString& name = {}, EditType editType = EditType::Add, qint64 id = -1) {
        auto* form = new AddFilterForm(tasks(), history, type, name, editType, id, &window);
        show(*form);
        return *form;
    }

    RemoveFilter& remove(FilterType type, qint64 id, const QString& name = "x") {
        auto* form = new RemoveFilter(tasks(), history, type, id, name, &window);
        show(*form);
        return *form;
    }

    /// With all that it reads on opening.
    void show(QDialog& form) {
        form.open();
        QApplication::setActiveWindow(&form);
        settle();
    }

    void settle() { database.rows("SELECT 1"); }

    static QString text(QWidget& form, const char* label) { return form.findChild<QLabel*>(label)->text(); }

    static QPushButton& button(QWidget& form, const char* name) {
        return *form.findChild<QPushButton*>(name);
    }

    static QLineEdit& line(QWidget& form) { return *form.findChild<QLineEdit*>(); }

    static bool isGone(const QPointer<QDialog>& form) {
        return waitUntil([&] {
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
            return form.isNull();
        });
    }

    EditHistory history{tasks()};
    QWidget window;
    QStringList alerts;
};

} // namespace

TEST_F(FilterFormsTest, AddsOneOfEachKind) {
    const std::tuple<FilterType, const char*, const char*, const char*> cases[] = {
        {SAVED_SEARCH, "Save Search", "1", ""},
        {GENRES, "Add Genre", "1", "|"},
        {TAGS, "Add Tag", "1", ""},
        {ARRANGEMENT_STATUS, "Add Arrangement Status", "7", ""}};
    const QString name = "#it's '%1'";
    for (const auto& [type, title, id, otherColumns] : cases) {
        SCOPED_TRACE(title);
        auto& form = edit(type);
        const QPointer<QDialog> pointer(&form);
        QSignalSpy added(&form, &AddFilterForm::onFilterAdded);
        EXPECT_EQ(form.windowTitle(), title);
        EXPECT_TRUE(line(form).hasFocus());
        line(form).clear();
        QTest::keyClicks(&line(form), name);
        QTest::keyClick(&line(form), Qt::Key_Return);
        ASSERT_TRUE(waitUntil([&] { return added.count() == 1; }));
        EXPECT_EQ(added.constFirst().at(1).toString(), name);
        EXPECT_EQ(added.constFirst().at(2).toString(), id);
        EXPECT_EQ(stored(type).constLast(), id + ('|' + name) + otherColumns);
        EXPECT_TRUE(isGone(pointer));
    }
}

TEST_F(FilterFormsTest, RefusesNamesThatCannotBe) {
    addEntries(TAGS, {"#used", "#newTag"});
    const QString used = "The name '%1' is already in use.";
    const QString hash = "Tags must begin with a hash '#' symbol.";
    auto& form = edit(TAGS);
    EXPECT_EQ(text(form, "errorLabel"), used.arg("#newTag"));
    QTest::keyClicks(&line(form), "own");
    EXPECT_EQ(line(form).text(), "#own");

    const std::pair<const char*, QString> cases[] = {
        {"#used", used.arg("#used")}, {"#Used", {}}, {"newTag", hash}, {"", hash}};
    for (const auto& [name, problem] : cases) {
        line(form).setText(name);
        EXPECT_EQ(text(form, "errorLabel"), problem) << name;
        EXPECT_EQ(button(form, "acceptButton").isEnabled(), problem.isEmpty()) << name;
    }
    QTest::keyClick(&line(form), Qt::Key_Return);
    form.accept();
    settle();
    EXPECT_TRUE(form.isVisible());
    EXPECT_EQ(stored(TAGS).size(), 2);

    auto& blank = edit(GENRES);
    for (const char* name : {"", "  "}) {
        line(blank).setText(name);
        EXPECT_FALSE(button(blank, "acceptButton").isEnabled());
    }
    EXPECT_EQ(text(edit(ALL), "promptLabel"), "Sorry. This filter can't be edited!");
}

TEST_F(FilterFormsTest, ReturnBeforeTheNamesAreThereAndTasksOfClosedWindowsAreNotLost) {
    addEntries(GENRES, {"Dub"});
    ASSERT_TRUE(stopWorker());
    auto owner = std::make_unique<QWidget>();
    auto* fresh = new AddFilterForm(tasks(), history, GENRES, "House", EditType::Add, -1, &window);
    auto* used = new AddFilterForm(tasks(), history, GENRES, "Dub", EditType::Add, -1, &window);
    auto* cancelled = new AddFilterForm(tasks(), history, GENRES, "Pop", EditType::Add, -1, &window);
    auto* adding = new AddFilterForm(tasks(), history, GENRES, "Rock", EditType::Add, -1, owner.get());
    auto* removing = new RemoveFilter(tasks(), history, GENRES, 1, "Dub", owner.get());
    for (auto* form : QList<QDialog*>{fresh, used, cancelled, adding, removing}) {
        form->open();
        form->accept();
    }
    cancelled->reject();
    owner.reset();
    QSignalSpy added(fresh, &AddFilterForm::onFilterAdded);
    tasks().restart();
    ASSERT_TRUE(waitUntil([&] { return added.count() == 1; }));
    settle();
    EXPECT_EQ(database.rows("SELECT name FROM genres"), QStringList("House"));
    EXPECT_TRUE(used->isVisible());
}

TEST_F(FilterFormsTest, Renames) {
    addEntries(COLLECTIONS, {"One", "Two"});
    auto& form = edit(COLLECTIONS, "One", EditType::Rename, 1);
    QSignalSpy renamed(&form, &AddFilterForm::onFilterRenamed);
    EXPECT_EQ(form.windowTitle(), "Rename Collection");
    EXPECT_EQ(button(form, "acceptButton").text(), "&Rename");
    line(form).setText("Two");
    EXPECT_FALSE(button(form, "acceptButton").isEnabled());
    line(form).setText("One");
    EXPECT_EQ(text(form, "errorLabel"), QString());
    line(form).setText("It's one");
    form.accept();
    ASSERT_TRUE(waitUntil([&] { return renamed.count() == 1; }));
    EXPECT_EQ(stored(COLLECTIONS), (QStringList{"1|It's one", "2|Two"}));

    auto& defaultStatus = edit(LYRICS_STATUS, "x", EditType::Rename, 0);
    line(defaultStatus).setText("Unsung");
    defaultStatus.accept();
    settle();
    EXPECT_EQ(stored(LYRICS_STATUS).constFirst(), "0|Unsung");
}

TEST_F(FilterFormsTest, FailedWriteKeepsWhatWasTyped) {
    addEntries(TAGS, {"#a"});
    const std::tuple<EditType, const char*, const char*> cases[] = {
        {EditType::Add, "INSERT ON tags", "Could not insert new filter record"},
        {EditType::Rename, "UPDATE ON tags", "Could not rename."}};
    for (const auto& [editType, write, title] : cases) {
        refuse(write);
        alerts.clear();
        auto& form = edit(TAGS, "#typed", editType, 1);
        form.accept();
        EXPECT_FALSE(button(form, "acceptButton").isEnabled());
        ASSERT_TRUE(waitUntil([&] { return alerts.size() == 1; }));
        EXPECT_TRUE(alerts.constFirst().startsWith(title));
        EXPECT_TRUE(form.isVisible());
        EXPECT_EQ(line(form).text(), "#typed");
        EXPECT_TRUE(button(form, "acceptButton").isEnabled());
        refuseNoMore();
    }
    EXPECT_EQ(stored(TAGS), QStringList("1|#a"));
}

TEST_F(FilterFormsTest, ClosingDuringAWriteTellsOfItAllTheSame) {
    auto& form = edit(GENRES, "Dub");
    const QPointer<QDialog> pointer(&form);
    QSignalSpy added(&form, &AddFilterForm::onFilterAdded);
    form.accept();
    QTest::keyClick(&form, Qt::Key_Escape);
    EXPECT_FALSE(form.isVisible());
    EXPECT_TRUE(isGone(pointer));
    EXPECT_EQ(added.count(), 1);
}

TEST_F(FilterFormsTest, RemovesEntriesAndNamesTheProjectsThatHaveThem) {
    insert({"Song 1", "<b>Song</b> 2", "Song 3"});
    for (const FilterType type : {SAVED_SEARCH, COLLECTIONS, GENRES, TAGS})
        addEntries(type, {"one", "two"});
    database.rows("UPDATE projects SET genre_id=1, arrangement_status=1 WHERE project_id<3");
    // Ids of projects and of entries differ, so that confusing them shows.
    database.rows("INSERT INTO collections_projects_map VALUES(1, 2), (1, 3), (2, 1)");
    database.rows("INSERT INTO project_tag_map VALUES(2, 1), (3, 1), (1, 2)");

    const QStringList firstTwo{"Song 1", "<b>Song</b> 2"};
    const QStringList lastTwo{"<b>Song</b> 2", "Song 3"};
    const std::tuple<FilterType, QString, QStringList> cases[] = {
        {SAVED_SEARCH, "Saved Search", {}},
        {COLLECTIONS, "Collection", lastTwo},
        {GENRES, "Genre", firstTwo},
        {TAGS, "Tag", lastTwo},
        {ARRANGEMENT_STATUS, "Arrangment Status", firstTwo}};
    for (const auto& [type, kind, projects] : cases) {
        SCOPED_TRACE(qPrintable(kind));
        const auto before = stored(type).size();
        auto& form = remove(type, 1, "one %2");
        const QPointer<QDialog> pointer(&form);
        QSignalSpy removed(&form, &RemoveFilter::removed);
        EXPECT_EQ(form.windowTitle(), "Remove " + kind);
        EXPECT_EQ(text(form, "promptLabel"), "Are you sure you want to remove " + kind + " 'one %2'?");
        EXPECT_EQ(form.findChild<QStringListModel*>()->stringList(), projects);
        EXPECT_EQ(form.findChild<QListView*>()->isVisible(), !projects.isEmpty());
        const QString usedByTwo = "'one %2' is used by 2 projects. The references will be removed but the "
                                  "projects will remain.";
        EXPECT_EQ(text(form, "questionLabel") == usedByTwo, !projects.isEmpty() && !filterTypeIsStatus(type));
        EXPECT_TRUE(button(form, "cancelButton").isDefault());
        EXPECT_TRUE(button(form, "cancelButton").hasFocus());
        button(form, "acceptButton").setFocus();
        QTest::keyClick(&form, Qt::Key_Return);
        ASSERT_TRUE(waitUntil([&] { return removed.count() == 1; }));
        EXPECT_EQ(stored(type).size(), before - 1);
        EXPECT_TRUE(isGone(pointer));
    }
}

TEST_F(FilterFormsTest, DefaultStatusesStay) {
    const QStringList before = stored(RECORDING_STATUS);
    auto& form = remove(RECORDING_STATUS, 0);
    EXPECT_EQ(text(form, "promptLabel"), "Cannot delete default status!");
    EXPECT_FALSE(button(form, "acceptButton").isVisible());
    form.accept();
    EXPECT_TRUE(waitUntil([&] { return alerts.size() == 1; }));
    EXPECT_EQ(
        alerts.constFirst(),
        "Removal failed|Cannot remove default Recording Status! This can only be renamed.");
    EXPECT_EQ(stored(RECORDING_STATUS), before);
}

TEST_F(FilterFormsTest, FailedRemovalCanBeTriedAgain) {
    insert("Song", "genre_id=1");
    addEntries(GENRES, {"Dub"});
    auto& form = remove(GENRES, 1);
    const QPointer<QDialog> pointer(&form);
    QSignalSpy removed(&form, &RemoveFilter::removed);

    for (const char* write : {"DELETE ON genres", "UPDATE ON projects"}) {
        alerts.clear();
        refuse(write);
        form.accept();
        ASSERT_TRUE(waitUntil([&] { return alerts.size() == 1; }));
        EXPECT_TRUE(alerts.constFirst().startsWith("Removal failed|"));
        EXPECT_TRUE(button(form, "acceptButton").isEnabled());
        refuseNoMore();
        // Half of it is not done.
        EXPECT_EQ(database.rows("SELECT genre_id FROM genres"), QStringList("1"));
    }
    EXPECT_EQ(removed.count(), 0);
    form.accept();
    EXPECT_TRUE(isGone(pointer));
    EXPECT_EQ(removed.count(), 1);
    EXPECT_EQ(database.rows("SELECT genre_id FROM projects"), QStringList(""));
}
