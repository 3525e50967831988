#include "SidebarFixture.h"
#include "app/errors/ErrorHandler.h"
#include "ui/sidebar/AddFilterForm.h"
#include "ui/sidebar/RemoveFilter.h"

#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QPointer>
#include <QPushButton>
#include <QtTest/QTest>

using EditType = AddFilterForm::EditType;

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
        auto* form = new AddFilterForm(tasks(), type, name, editType, id, &window);
        show(*form);
        return *form;
    }

    RemoveFilter& remove(FilterType type, qint64 id, const QString& name = QStringLiteral("x")) {
        auto* form = new RemoveFilter(tasks(), type, id, name, &window);
        show(*form);
        return *form;
    }

    /// With all that it reads on opening.
    void show(QDialog& form) {
        form.open();
        QApplication::setActiveWindow(&form);
        settle();
    }

    void settle() { database.rows(QStringLiteral("SELECT 1")); }

    static QString text(QWidget& form, const char* label) {
        return form.findChild<QLabel*>(QString::fromLatin1(label))->text();
    }

    static QPushButton& button(QWidget& form, const char* name) {
        return *form.findChild<QPushButton*>(QString::fromLatin1(name));
    }

    static QLineEdit& line(QWidget& form) { return *form.findChild<QLineEdit*>(); }

    static bool isGone(const QPointer<QDialog>& form) {
        return waitUntil([&] {
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
            return form.isNull();
        });
    }

    /// Makes every statement that writes fail from now on.
    void refuseWrites(const char* table) {
        for (const char* action : {"INSERT", "UPDATE", "DELETE"}) {
            database.rows(QStringLiteral("CREATE TRIGGER refuse_%1_%2 BEFORE %1 ON %2 BEGIN "
                                         "SELECT RAISE(ABORT, 'refused'); END")
                              .arg(QLatin1String(action), QLatin1String(table)));
        }
    }

    void allowWrites(const char* table) {
        for (const char* action : {"INSERT", "UPDATE", "DELETE"})
            database.rows(
                QStringLiteral("DROP TRIGGER refuse_%1_%2").arg(QLatin1String(action), QLatin1String(table)));
    }

    QWidget window;
    QStringList alerts;
};

} // namespace

TEST_F(FilterFormsTest, AddsOneOfEachKind) {
    struct Case {
        FilterType type;
        const char* title;
        const char* row;
    };

    const Case cases[] = {
        {FilterType::SAVED_SEARCH, "Save Search", "1|#it's '%1'"},
        {FilterType::COLLECTIONS, "Add Collection", "1|#it's '%1'"},
        {FilterType::GENRES, "Add Genre", "1|#it's '%1'|"},
        {FilterType::TAGS, "Add Tag", "1|#it's '%1'"},
        {FilterType::ARRANGEMENT_STATUS, "Add Arrangement Status", "7|#it's '%1'"},
        {FilterType::MIX_MASTER_STATUS, "Add Mix/Master Status", "6|#it's '%1'"}};
    const QString name = QStringLiteral("#it's '%1'");
    for (const Case& c : cases) {
        auto& form = edit(c.type);
        const QPointer<QDialog> pointer(&form);
        QSignalSpy added(&form, &AddFilterForm::onFilterAdded);
        EXPECT_EQ(form.windowTitle(), QLatin1String(c.title));
        EXPECT_TRUE(line(form).hasFocus());
        line(form).clear();
        QTest::keyClicks(&line(form), name);
        QTest::keyClick(&line(form), Qt::Key_Return);
        ASSERT_TRUE(waitUntil([&] { return added.count() == 1; }));
        EXPECT_EQ(added.constFirst().at(1).toString(), name);
        EXPECT_EQ(stored(c.type).constLast(), QLatin1String(c.row));
        EXPECT_EQ(added.constFirst().at(2).toLongLong(), QByteArray(c.row).left(1).toLongLong());
        EXPECT_TRUE(isGone(pointer));
    }
}

TEST_F(FilterFormsTest, RefusesNamesThatCannotBe) {
    addEntries(FilterType::TAGS, list({"#used", "#newTag"}));
    const QString used = QStringLiteral("The name '%1' is already in use.");
    const QString hash = QStringLiteral("Tags must begin with a hash '#' symbol.");
    auto& form = edit(FilterType::TAGS);
    EXPECT_EQ(line(form).text(), QStringLiteral("#newTag"));
    EXPECT_EQ(text(form, "errorLabel"), used.arg(QStringLiteral("#newTag")));
    QTest::keyClicks(&line(form), QStringLiteral("own"));
    EXPECT_EQ(line(form).text(), QStringLiteral("#own"));

    const std::pair<const char*, QString> cases[] = {
        {"#used", used.arg(QStringLiteral("#used"))}, {"#Used", {}}, {"newTag", hash}, {"", hash}};
    for (const auto& [name, problem] : cases) {
        line(form).setText(QLatin1String(name));
        EXPECT_EQ(text(form, "errorLabel"), problem) << name;
        EXPECT_EQ(button(form, "acceptButton").isEnabled(), problem.isEmpty()) << name;
    }
    QTest::keyClick(&line(form), Qt::Key_Return);
    form.accept();
    settle();
    EXPECT_TRUE(form.isVisible());
    EXPECT_EQ(stored(FilterType::TAGS).size(), 2);

    auto& blank = edit(FilterType::GENRES);
    for (const char* name : {"", "  "}) {
        line(blank).setText(QLatin1String(name));
        EXPECT_FALSE(button(blank, "acceptButton").isEnabled());
    }
    EXPECT_EQ(
        text(edit(FilterType::ALL), "promptLabel"), QStringLiteral("Sorry. This filter can't be edited!"));
}

TEST_F(FilterFormsTest, ReturnBeforeTheNamesAreThereIsNotLost) {
    addEntries(FilterType::GENRES, list({"Dub"}));
    ASSERT_TRUE(stopWorker());
    auto* fresh =
        new AddFilterForm(tasks(), FilterType::GENRES, QStringLiteral("House"), EditType::Add, -1, &window);
    auto* used =
        new AddFilterForm(tasks(), FilterType::GENRES, QStringLiteral("Dub"), EditType::Add, -1, &window);
    auto* cancelled =
        new AddFilterForm(tasks(), FilterType::GENRES, QStringLiteral("Pop"), EditType::Add, -1, &window);
    for (auto* form : {fresh, used, cancelled}) {
        form->open();
        form->accept();
    }
    cancelled->reject();
    QSignalSpy added(fresh, &AddFilterForm::onFilterAdded);
    tasks().restart();
    ASSERT_TRUE(waitUntil([&] { return added.count() == 1; }));
    settle();
    EXPECT_EQ(database.rows(QStringLiteral("SELECT name FROM genres")), list({"Dub", "House"}));
    EXPECT_TRUE(used->isVisible());
}

TEST_F(FilterFormsTest, Renames) {
    addEntries(FilterType::COLLECTIONS, list({"One", "Two"}));
    auto& form = edit(FilterType::COLLECTIONS, QStringLiteral("One"), EditType::Rename, 1);
    QSignalSpy renamed(&form, &AddFilterForm::onFilterRenamed);
    EXPECT_EQ(form.windowTitle(), QStringLiteral("Rename Collection"));
    EXPECT_EQ(button(form, "acceptButton").text(), QStringLiteral("Rename"));
    line(form).setText(QStringLiteral("Two"));
    EXPECT_FALSE(button(form, "acceptButton").isEnabled());
    line(form).setText(QStringLiteral("One"));
    EXPECT_EQ(text(form, "errorLabel"), QString());
    line(form).setText(QStringLiteral("It's one"));
    form.accept();
    ASSERT_TRUE(waitUntil([&] { return renamed.count() == 1; }));
    EXPECT_EQ(stored(FilterType::COLLECTIONS), list({"1|It's one", "2|Two"}));
    EXPECT_EQ(
        log.count(QStringLiteral("Renamed FilterType::COLLECTIONS filter with primary ID: 1 to: It's one")),
        1);

    auto& defaultStatus = edit(FilterType::LYRICS_STATUS, QStringLiteral("x"), EditType::Rename, 0);
    line(defaultStatus).setText(QStringLiteral("Unsung"));
    defaultStatus.accept();
    settle();
    EXPECT_EQ(stored(FilterType::LYRICS_STATUS).constFirst(), QStringLiteral("0|Unsung"));

    auto& withoutId = edit(FilterType::TAGS, QStringLiteral("#x"), EditType::Rename, -1);
    withoutId.accept();
    EXPECT_TRUE(waitUntil([&] { return !alerts.isEmpty(); }));
    EXPECT_EQ(alerts, list({"Filter could not be renamed.|Invalid filter ID"}));
}

TEST_F(FilterFormsTest, FailedWriteKeepsWhatWasTyped) {
    addEntries(FilterType::TAGS, list({"#a"}));
    refuseWrites("tags");
    const std::tuple<EditType, const char*, const char*> cases[] = {
        {EditType::Add, "Could not insert new filter record", "C: Could not insert new filter record"},
        {EditType::Rename, "Could not rename.",
         "C: Could not rename  FilterType::TAGS filter with primary ID: 1 to: #typed"}};
    for (const auto& [editType, title, logged] : cases) {
        alerts.clear();
        auto& form = edit(FilterType::TAGS, QStringLiteral("#typed"), editType, 1);
        form.accept();
        EXPECT_FALSE(button(form, "acceptButton").isEnabled());
        ASSERT_TRUE(waitUntil([&] { return alerts.size() == 1; }));
        EXPECT_TRUE(alerts.constFirst().startsWith(QLatin1String(title)));
        EXPECT_EQ(log.count(QLatin1String(logged)), 1);
        EXPECT_TRUE(form.isVisible());
        EXPECT_EQ(line(form).text(), QStringLiteral("#typed"));
        EXPECT_TRUE(button(form, "acceptButton").isEnabled());
    }
    EXPECT_EQ(stored(FilterType::TAGS), list({"1|#a"}));
}

TEST_F(FilterFormsTest, ClosingDuringAWriteTellsOfItAllTheSame) {
    auto& form = edit(FilterType::GENRES, QStringLiteral("Dub"));
    const QPointer<QDialog> pointer(&form);
    QSignalSpy added(&form, &AddFilterForm::onFilterAdded);
    form.accept();
    QTest::keyClick(&form, Qt::Key_Escape);
    EXPECT_FALSE(form.isVisible());
    EXPECT_TRUE(isGone(pointer));
    EXPECT_EQ(added.count(), 1);

    // Dialogs that go with their window leave their tasks behind.
    ASSERT_TRUE(stopWorker());
    auto owner = std::make_unique<QWidget>();
    auto* adding = new AddFilterForm(tasks(), FilterType::TAGS, {}, EditType::Add, -1, owner.get());
    auto* removing = new RemoveFilter(tasks(), FilterType::GENRES, 1, QStringLiteral("Dub"), owner.get());
    adding->open();
    removing->open();
    removing->accept();
    owner.reset();
    tasks().restart();
    EXPECT_EQ(stored(FilterType::GENRES), QStringList());
}

TEST_F(FilterFormsTest, RemovesEntriesWithTheirReferences) {
    insert(list({"Song 1", "<b>Song</b> 2", "Song 3"}));
    database.rows(QStringLiteral("UPDATE projects SET genre_id=1, arrangement_status=1, lyrics_status=1, "
                                 "recording_status=1, mix_master_status=1 WHERE project_id<3"));
    database.rows(QStringLiteral("UPDATE projects SET genre_id=2, arrangement_status=2, lyrics_status=2, "
                                 "recording_status=2, mix_master_status=2 WHERE project_id=3"));
    for (const FilterType type :
         {FilterType::SAVED_SEARCH, FilterType::COLLECTIONS, FilterType::GENRES, FilterType::TAGS})
        addEntries(type, list({"one", "two"}));
    // Ids of projects and of entries differ, so that confusing them shows.
    database.rows(QStringLiteral("INSERT INTO collections_projects_map VALUES(1, 2), (1, 3), (2, 1)"));
    database.rows(QStringLiteral("INSERT INTO project_tag_map VALUES(2, 1), (3, 1), (1, 2)"));

    struct Case {
        FilterType type;
        const char* kind;
        QStringList projects;
        const char* left;
        QStringList leftRows;
    };

    const Case cases[] = {
        {FilterType::SAVED_SEARCH, "Saved Search", {}, "SELECT 1", list({"1"})},
        {FilterType::COLLECTIONS, "Collection", list({"<b>Song</b> 2", "Song 3"}),
         "SELECT * FROM collections_projects_map", list({"2|1"})},
        {FilterType::GENRES, "Genre", list({"Song 1", "<b>Song</b> 2"}),
         "SELECT project_id FROM projects WHERE genre_id IS NULL", list({"1", "2"})},
        {FilterType::TAGS, "Tag", list({"<b>Song</b> 2", "Song 3"}), "SELECT * FROM project_tag_map",
         list({"1|2"})},
        {FilterType::ARRANGEMENT_STATUS, "Arrangment Status", list({"Song 1", "<b>Song</b> 2"}),
         "SELECT arrangement_status FROM projects", list({"0", "0", "2"})},
        {FilterType::LYRICS_STATUS, "Lyrics Status", list({"Song 1", "<b>Song</b> 2"}),
         "SELECT lyrics_status FROM projects", list({"0", "0", "2"})},
        {FilterType::RECORDING_STATUS, "Recording Status", list({"Song 1", "<b>Song</b> 2"}),
         "SELECT recording_status FROM projects", list({"0", "0", "2"})},
        {FilterType::MIX_MASTER_STATUS, "Mix/Master Status", list({"Song 1", "<b>Song</b> 2"}),
         "SELECT mix_master_status FROM projects", list({"0", "0", "2"})}};
    for (const Case& c : cases) {
        const int before = static_cast<int>(stored(c.type).size());
        auto& form = remove(c.type, 1, QStringLiteral("one %2"));
        const QPointer<QDialog> pointer(&form);
        QSignalSpy removed(&form, &RemoveFilter::removed);
        EXPECT_EQ(form.windowTitle(), QStringLiteral("Remove ") + QLatin1String(c.kind));
        EXPECT_EQ(
            text(form, "promptLabel"),
            QStringLiteral("Are you sure you want to remove ") + QLatin1String(c.kind) +
                QStringLiteral(" 'one %2'?"));
        const auto& names = *form.findChild<QListView*>();
        QStringList listed;
        for (int row = 0; row < names.model()->rowCount(); ++row)
            listed.append(names.model()->index(row, 0).data().toString());
        EXPECT_EQ(listed, c.projects) << c.kind;
        EXPECT_EQ(names.isVisible(), c.type != FilterType::SAVED_SEARCH);
        if (c.type == FilterType::GENRES) {
            EXPECT_EQ(
                text(form, "questionLabel"),
                QStringLiteral("'one %2' is used by 2 projects. The references will be removed but the "
                               "projects will remain."));
        }
        EXPECT_TRUE(button(form, "cancelButton").isDefault());
        EXPECT_TRUE(button(form, "cancelButton").hasFocus());
        button(form, "acceptButton").setFocus();
        QTest::keyClick(&form, Qt::Key_Return);
        ASSERT_TRUE(waitUntil([&] { return removed.count() == 1; })) << c.kind;
        EXPECT_EQ(stored(c.type).size(), before - 1) << c.kind;
        EXPECT_EQ(database.rows(QLatin1String(c.left)), c.leftRows) << c.kind;
        EXPECT_TRUE(isGone(pointer));
    }
}

TEST_F(FilterFormsTest, DefaultStatusesStay) {
    const std::pair<FilterType, const char*> cases[] = {
        {FilterType::ARRANGEMENT_STATUS, "Arrangement"},
        {FilterType::LYRICS_STATUS, "Lyrics"},
        {FilterType::RECORDING_STATUS, "Recording"},
        {FilterType::MIX_MASTER_STATUS, "Mix/Master"}};
    for (const auto& [type, kind] : cases) {
        alerts.clear();
        const QStringList before = stored(type);
        auto& form = remove(type, 0);
        EXPECT_EQ(text(form, "promptLabel"), QStringLiteral("Cannot delete default status!"));
        EXPECT_FALSE(button(form, "acceptButton").isVisible());
        form.accept();
        EXPECT_TRUE(waitUntil([&] { return alerts.size() == 1; }));
        EXPECT_EQ(
            alerts.constFirst(),
            QStringLiteral("Removal failed|Cannot remove default %1 Status! This can only be renamed.")
                .arg(QLatin1String(kind)));
        EXPECT_EQ(stored(type), before);
    }
}

TEST_F(FilterFormsTest, FailedRemovalCanBeTriedAgain) {
    insert(list({"Song"}));
    database.rows(QStringLiteral("UPDATE projects SET genre_id=1"));
    addEntries(FilterType::GENRES, list({"Dub"}));
    auto& form = remove(FilterType::GENRES, 1);
    const QPointer<QDialog> pointer(&form);
    QSignalSpy removed(&form, &RemoveFilter::removed);

    const std::pair<const char*, const char*> cases[] = {
        {"genres", "C: Could not delete genre with ID:1"},
        {"projects", "C: Could not clear project's with deleted genre_id:1"}};
    for (const auto& [table, logged] : cases) {
        alerts.clear();
        refuseWrites(table);
        form.accept();
        ASSERT_TRUE(waitUntil([&] { return alerts.size() == 1; }));
        EXPECT_TRUE(alerts.constFirst().startsWith(QStringLiteral("Removal failed|")));
        EXPECT_EQ(log.count(QLatin1String(logged)), 1);
        EXPECT_TRUE(button(form, "acceptButton").isEnabled());
        allowWrites(table);
        // Half of it is not done.
        EXPECT_EQ(database.rows(QStringLiteral("SELECT genre_id FROM genres")), list({"1"}));
    }
    EXPECT_EQ(log.count(QStringLiteral("C: Reason: ")), 2);
    EXPECT_EQ(removed.count(), 0);
    form.accept();
    EXPECT_TRUE(isGone(pointer));
    EXPECT_EQ(removed.count(), 1);
    EXPECT_EQ(database.rows(QStringLiteral("SELECT genre_id FROM projects")), list({""}));
}
