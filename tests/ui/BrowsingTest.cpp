// The main window over a catalogue: the sidebar, the table and the details together.

#include "ProjectsFixture.h"
#include "monitor/ProjectMonitor.h"
#include "support/TestBundle.h"
#include "ui/MainWindow.h"
#include "ui/actions/AssociationMenu.h"
#include "ui/actions/WindowActions.h"
#include "ui/details/DetailsPane.h"
#include "ui/details/ProgressSlider.h"
#include "ui/edits/EditHistory.h"
#include "ui/sidebar/FilterSidebar.h"
#include "ui/sidebar/FolderTreeItemModel.h"
#include "ui/table/EmptyState.h"
#include "ui/table/KeyEventTableView.h"
#include "ui/table/StarEditor.h"

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QContextMenuEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QMessageBox>
#include <QPushButton>
#include <QSignalSpy>
#include <QSplitter>
#include <QtTest/QTest>

#include <functional>
#include <limits>
#include <optional>

namespace {

class BrowsingTest : public ProjectsFixture {
protected:
    void SetUp() override {
        ProjectsFixture::SetUp();
        insert({"Alpha", "Beta", "Gamma"});
        database.rows(QStringLiteral("UPDATE projects SET song_key='C', song_signature_numerator=4, "
                                     "song_signature_denominator=4"));
        database.rows(QStringLiteral("INSERT INTO tags VALUES(1, '#one'), (2, '#two & more')"));
        database.rows(QStringLiteral("INSERT INTO genres VALUES(1, 'Pop', NULL)"));
        database.rows(QStringLiteral("INSERT INTO collections VALUES(1, '100% <b>Album</b> %1')"));
    }

    void TearDown() override { window.reset(); }

    void open() {
        window.reset();
        window.emplace(tasks(), monitor);
        QSignalSpy loaded(&*window, &MainWindow::firstLoaded);
        QSignalSpy filled(&child<FolderTreeItemModel>(), &FolderTreeItemModel::changed);
        window->resize(1300, 800);
        window->show();
        QApplication::setActiveWindow(&*window);
        ASSERT_TRUE(waitUntil([&] { return loaded.count() == 1 && !filled.isEmpty(); }));
        settle();
    }

    template <typename T>
    T& child(const char* name = nullptr) {
        return *window->findChild<T*>(QString::fromLatin1(name));
    }

    ProjectsTableModel& model() { return child<ProjectsTableModel>(); }

    KeyEventTableView& table() { return child<KeyEventTableView>("projectsTableView"); }

    WindowActions& actions() { return child<WindowActions>(); }

    DetailsPane& details() { return child<DetailsPane>(); }

    QString status() { return child<QLabel>("statusLabel").text(); }

    QStringList names() {
        const int column = nameColumn();
        QStringList shown;
        for (int row = 0; row < model().rowCount(); ++row)
            shown.append(model().index(row, column).data().toString());
        return shown;
    }

    int nameColumn() {
        for (int column = 0; column < model().columnCount(); ++column) {
            if (model().headerData(column, Qt::Horizontal, Qt::DisplayRole).toString().trimmed() == "Name")
                return column;
        }
        return -1;
    }

    /// Until nothing is queued or under way any more.
    void settle() {
        do {
            ASSERT_TRUE(waitForReloads(model()));
            database.rows(QStringLiteral("SELECT 1"));
        } while (model().isReloading() || child<FolderTreeItemModel>().isReloading());
    }

    /// Selects the rows, the last of them being the current one, and waits for its details.
    void select(const QList<int>& rows) {
        auto* selection = table().selectionModel();
        for (const int row : rows) {
            selection->setCurrentIndex(
                model().index(row, 0),
                (row == rows.constFirst() ? QItemSelectionModel::ClearAndSelect
                                          : QItemSelectionModel::Select) |
                    QItemSelectionModel::Rows);
        }
        const qint64 id = model().projectIDForRow(rows.constLast());
        ASSERT_TRUE(waitUntil([&] { return details().project().id == id; }));
    }

    void activate(FilterType type, const QString& name = {}) {
        qint64 id = -1;
        for (const auto& entry : child<FolderTreeItemModel>().getEntries(type)) {
            if (entry.name == name)
                id = entry.id;
        }
        emit child<FilterSidebar>().activated(type, id, name);
        settle();
    }

    QStringList values(const char* columns) {
        return database.rows(
            QStringLiteral("SELECT %1 FROM projects ORDER BY project_id").arg(QLatin1String(columns)));
    }

    /// The open question, with the button of that text clicked.
    bool answer(const char* button) {
        auto* question = window->findChild<QMessageBox*>();
        if (!question || !question->isVisible())
            return false;
        for (auto* candidate : question->buttons()) {
            if (candidate->text().remove(QLatin1Char('&')) == QLatin1String(button)) {
                candidate->click();
                settle();
                return true;
            }
        }
        return false;
    }

    /// A press, three repetitions, and what happens meanwhile, before the key is let go.
    static void holdKey(QWidget& widget, Qt::Key key, const std::function<void()>& meanwhile = {}) {
        QTest::simulateEvent(&widget, true, key, Qt::NoModifier, {}, false);
        for (int repetition = 0; repetition < 3; ++repetition)
            QTest::simulateEvent(&widget, true, key, Qt::NoModifier, {}, true);
        if (meanwhile)
            meanwhile();
        QTest::simulateEvent(&widget, false, key, Qt::NoModifier, {}, false);
    }

    Stemhaven::ProjectMonitor monitor{tasks()};
    std::optional<MainWindow> window;
};

} // namespace

TEST_F(BrowsingTest, TheDetailsShowTheSelectedProjectAndWriteNothing) {
    database.rows(QStringLiteral("UPDATE projects SET star_rating=3, progress=0.57, lyrics_status=2, "
                                 "mix_master_status=99, bpm=128.5 WHERE name='Beta'"));
    database.rows(QStringLiteral("INSERT INTO project_tag_map VALUES(2, 2)"));
    open();
    select({0});
    const QStringList before = values("*");
    select({1});
    EXPECT_EQ(child<QLabel>("projectNameLabel").text(), QStringLiteral("Beta"));
    EXPECT_EQ(child<QLabel>("projectDetailsLabel").text(), QStringLiteral("128.5 BPM - 4/4 - C"));
    EXPECT_EQ(child<QLabel>("projectFilepathLabel").text(), QStringLiteral("/music/Beta.logicx"));
    EXPECT_EQ(child<QLabel>("projectProgressLabel").text(), QStringLiteral("Progress: 57%"));
    EXPECT_EQ(child<QSlider>("projectProgressSlider").value(), 57);
    EXPECT_EQ(child<StarEditor>("projectStarEditWidget").starRating().starCount(), 3);
    EXPECT_EQ(child<QComboBox>("lyricsCombo").currentText(), QStringLiteral("Needs Lyrics"));
    // A status that does not exist any more.
    EXPECT_EQ(child<QComboBox>("mixMasterCombo").currentIndex(), -1);
    for (auto* menu : window->findChildren<AssociationMenu*>()) {
        for (const QAction* entry : menu->actions())
            EXPECT_EQ(entry->isChecked(), entry->text() == QStringLiteral("#two && more"))
                << qPrintable(entry->text());
    }

    // The lists are filled anew while they are shown.
    database.rows(QStringLiteral("UPDATE lyrics_status SET name='None' WHERE lyrics_status_id=2"));
    emit monitor.projectsDbModified();
    ASSERT_TRUE(waitUntil(
        [this] { return child<QComboBox>("lyricsCombo").currentText() == QStringLiteral("None"); }));
    table().selectionModel()->clear();
    settle();
    EXPECT_FALSE(details().project().isValid());
    EXPECT_EQ(values("*"), before);
    EXPECT_FALSE(actions().undo->isEnabled());
}

TEST_F(BrowsingTest, WhatIsChangedInTheDetailsIsWrittenForAllThatAreSelected) {
    open();
    select({0, 2, 1});
    EXPECT_EQ(details().project().name, QStringLiteral("Beta"));
    auto& stars = child<StarEditor>("projectStarEditWidget");
    stars.setFocus();
    QTest::keyClick(&stars, Qt::Key_3);
    QTest::keyClick(&stars, Qt::Key_Right);
    settle();
    EXPECT_EQ(values("star_rating"), (QStringList{"4", "4", "4"}));
    select({1});
    QTest::keyClick(&stars, Qt::Key_0);
    auto& lyrics = child<QComboBox>("lyricsCombo");
    lyrics.setFocus();
    QTest::keyClick(&lyrics, Qt::Key_Down);
    auto& slider = child<ProgressSlider>("projectProgressSlider");
    slider.setFocus();
    QTest::keyClick(&slider, Qt::Key_PageUp);
    settle();
    EXPECT_EQ(
        values("star_rating, lyrics_status, progress, completed"),
        (QStringList{"4|0||0", "0|1|0.1|0", "4|0||0"}));

    for (int step = 0; step < 3; ++step) {
        actions().undo->trigger();
        settle();
    }
    EXPECT_EQ(values("star_rating, lyrics_status, progress"), (QStringList{"4|0|", "4|0|", "4|0|"}));
    EXPECT_EQ(stars.starRating().starCount(), 4);
    EXPECT_EQ(slider.value(), 0);
    actions().redo->trigger();
    settle();
    EXPECT_EQ(values("star_rating"), (QStringList{"4", "0", "4"}));
}

TEST_F(BrowsingTest, FullProgressAsksWhetherTheProjectIsCompleted) {
    open();
    auto& slider = child<ProgressSlider>("projectProgressSlider");
    select({0});
    slider.setFocus();
    QTest::keyClick(&slider, Qt::Key_End);
    EXPECT_EQ(child<QLabel>("projectProgressLabel").text(), QStringLiteral("Progress: 100%"));
    ASSERT_TRUE(answer("No"));
    EXPECT_EQ(values("progress, completed").constFirst(), QStringLiteral("1|0"));
    select({1});
    QTest::keyClick(&slider, Qt::Key_End);
    ASSERT_TRUE(answer("Yes"));
    EXPECT_EQ(values("progress, completed").at(1), QStringLiteral("1|1"));
    EXPECT_EQ(names(), (QStringList{"Alpha", "Gamma"}));
    EXPECT_FALSE(details().project().isValid());
    actions().hideCompleted->trigger();
    settle();
    EXPECT_EQ(names(), (QStringList{"Alpha", "Beta", "Gamma"}));
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
    actions().hideIgnored->trigger();
    settle();
    select({1});
    EXPECT_TRUE(actions().ignore->isChecked());
    actions().ignore->trigger();
    settle();
    EXPECT_EQ(values("ignored"), (QStringList{"1", "0", "0"}));

    const QStringList before = values("*");
    actions().deleteRecord->trigger();
    auto* question = window->findChild<QMessageBox*>();
    ASSERT_NE(question, nullptr);
    EXPECT_EQ(question->defaultButton()->text(), QStringLiteral("Cancel"));
    ASSERT_TRUE(answer("Delete record"));
    EXPECT_EQ(names(), (QStringList{"Alpha", "Gamma"}));
    EXPECT_FALSE(details().project().isValid());
    EXPECT_EQ(log.count(QStringLiteral("Deleted record for project_id: 2")), 1);
    actions().undo->trigger();
    settle();
    EXPECT_EQ(values("*"), before);
}

TEST_F(BrowsingTest, TheSidebarNarrowsTheTable) {
    database.rows(QStringLiteral("INSERT INTO project_tag_map VALUES(1, 2), (3, 2)"));
    database.rows(QStringLiteral("INSERT INTO collections_projects_map VALUES(1, 2)"));
    database.rows(QStringLiteral("INSERT INTO saved_searches VALUES(1, 'amm')"));
    database.rows(QStringLiteral("UPDATE projects SET genre_id=1, recording_status=2 WHERE name='Gamma'"));
    open();
    EXPECT_EQ(status(), QStringLiteral("All projects (3 found)"));
    activate(FilterType::TAGS, QStringLiteral("#two & more"));
    EXPECT_EQ(status(), QStringLiteral("Tag '#two & more' (2 found)"));
    child<QLineEdit>("searchEdit").setText(QStringLiteral("gam"));
    settle();
    EXPECT_EQ(status(), QStringLiteral("Tag '#two & more' matching 'gam' (1 found)"));
    activate(FilterType::COLLECTIONS, QStringLiteral("100% <b>Album</b> %1"));
    EXPECT_EQ(status(), QStringLiteral("Collection '100% <b>Album</b> %1' (1 found)"));
    EXPECT_EQ(names(), QStringList("Beta"));
    activate(FilterType::LAST_SEARCH);
    EXPECT_EQ(status(), QStringLiteral("All projects matching 'gam' (1 found)"));
    activate(FilterType::GENRES, QStringLiteral("Pop"));
    EXPECT_EQ(names(), QStringList("Gamma"));
    activate(FilterType::RECORDING_STATUS, QStringLiteral("Needs Takes"));
    EXPECT_EQ(status(), QStringLiteral("Recording Status 'Needs Takes' (1 found)"));
    activate(FilterType::SAVED_SEARCH, QStringLiteral("amm"));
    EXPECT_EQ(child<QLineEdit>("searchEdit").text(), QStringLiteral("amm"));
    EXPECT_EQ(status(), QStringLiteral("All projects matching 'amm' (1 found)"));
    activate(FilterType::TAGS, QStringLiteral("#one"));
    EXPECT_EQ(child<EmptyState>().reason(), EmptyState::Reason::NothingInFilter);
    activate(FilterType::ALL);
    EXPECT_EQ(status(), QStringLiteral("All projects (3 found)"));
}

TEST_F(BrowsingTest, MenusFileTheSelectedProjectsAndTakeThemOutAgain) {
    open();
    select({0, 1});
    AssociationMenu* tags = nullptr;
    for (auto* menu : window->findChildren<AssociationMenu*>()) {
        if (menu->type() == FilterType::TAGS)
            tags = menu;
    }
    ASSERT_NE(tags, nullptr);
    tags->actions().at(0)->trigger();
    settle();
    tags->actions().at(0)->trigger();
    settle();
    EXPECT_EQ(database.rows(QStringLiteral("SELECT * FROM project_tag_map")), QStringList());
    actions().undo->trigger();
    settle();
    EXPECT_EQ(
        database.rows(QStringLiteral("SELECT * FROM project_tag_map ORDER BY 1")),
        (QStringList{"1|1", "2|1"}));
    EXPECT_TRUE(tags->actions().at(0)->isChecked());

    // The new entry goes to the projects that were selected when it was asked for.
    tags->actions().constLast()->trigger();
    auto* nameEdit = window->findChild<QDialog*>()->findChild<QLineEdit*>();
    ASSERT_NE(nameEdit, nullptr);
    settle();
    nameEdit->setText(QStringLiteral("#it's new"));
    select({2});
    QTest::keyClick(nameEdit, Qt::Key_Return);
    settle();
    ASSERT_TRUE(waitUntil([this] {
        return database.rows(
                   QStringLiteral("SELECT project_id FROM project_tag_map WHERE tag_id=3 ORDER BY 1")) ==
            QStringList{"1", "2"};
    }));
    EXPECT_EQ(
        database.rows(QStringLiteral("SELECT name FROM tags WHERE tag_id=3")), QStringList("#it's new"));

    // What is shown is removed.
    settle();
    activate(FilterType::TAGS, QStringLiteral("#it's new"));
    EXPECT_EQ(names(), (QStringList{"Alpha", "Beta"}));
    emit child<FilterSidebar>().removeRequested(FilterType::TAGS, 3, QStringLiteral("#it's new"));
    settle();
    auto* removal = window->findChild<QDialog*>();
    ASSERT_NE(removal, nullptr);
    removal->accept();
    ASSERT_TRUE(waitUntil([this] {
        settle();
        return status() == QStringLiteral("All projects (3 found)");
    }));
    actions().undo->trigger();
    settle();
    EXPECT_EQ(database.rows(QStringLiteral("SELECT * FROM project_tag_map WHERE tag_id=3")), QStringList());

    window->associateProjectWithFilter(FilterType::GENRES, -1, 1);
    EXPECT_EQ(
        log.count(QStringLiteral(
            "Attempted to associate a project with invalid IDs! FilterType::GENRES-ID:-1 projectID:1")),
        1);
}

TEST_F(BrowsingTest, ARefusedWriteShowsTheStoredValueAgain) {
    open();
    select({1});
    database.rows(QStringLiteral("CREATE TRIGGER refuse BEFORE UPDATE ON projects BEGIN SELECT RAISE(FAIL, "
                                 "'refused'); END"));
    QTest::keyClick(&child<StarEditor>("projectStarEditWidget"), Qt::Key_5);
    auto& lyrics = child<QComboBox>("lyricsCombo");
    QTest::keyClick(&lyrics, Qt::Key_End);
    ASSERT_TRUE(waitUntil([&] {
        return child<StarEditor>("projectStarEditWidget").starRating().starCount() == 0 &&
            lyrics.currentIndex() == 0;
    }));
    EXPECT_EQ(log.count(QStringLiteral("Error updating project star rating!")), 1);
    EXPECT_FALSE(actions().undo->isEnabled());
}

TEST_F(BrowsingTest, ReturnOpensOnceAndOnlyFromTheTable) {
    open();
    select({0});
    QSignalSpy opened(actions().open, &QAction::triggered);
    for (auto* widget :
         {static_cast<QWidget*>(&child<QLineEdit>("searchEdit")),
          static_cast<QWidget*>(&child<QComboBox>("lyricsCombo")),
          static_cast<QWidget*>(&child<QWidget>("filterTreeView"))}) {
        widget->setFocus();
        QTest::keyClick(widget, Qt::Key_Return);
        EXPECT_EQ(opened.count(), 0) << qPrintable(widget->objectName());
    }
    table().setFocus();
    QTest::keyRelease(&table(), Qt::Key_Return);
    EXPECT_EQ(opened.count(), 0);
    holdKey(table(), Qt::Key_Return);
    EXPECT_EQ(opened.count(), 1);
    QTest::keyClick(&table(), Qt::Key_Enter);
    EXPECT_EQ(opened.count(), 2);
    settle();
    // There is no such bundle.
    EXPECT_EQ(log.count(QStringLiteral("Could not open selected project!")), 2);
}

TEST_F(BrowsingTest, TheKeyboardReachesTheSearchAndAllRows) {
    open();
    auto& tree = child<QWidget>("filterTreeView");
    tree.setFocus();
    QTest::keyClick(&tree, Qt::Key_Tab);
    auto& search = child<QLineEdit>("searchEdit");
    EXPECT_TRUE(search.hasFocus());
    QTest::keyClick(&search, Qt::Key_Tab);
    EXPECT_TRUE(table().hasFocus());
    QTest::keyClick(&table(), Qt::Key_A, Qt::ControlModifier);
    EXPECT_EQ(table().selectionModel()->selectedRows().size(), 3);
}

TEST_F(BrowsingTest, ARowIsMeantAsSoonAsItIsClicked) {
    open();
    select({0});
    // The details come late.
    ASSERT_TRUE(stopWorker());
    const QPoint place = table().visualRect(model().index(1, 1)).center();
    QTest::mouseClick(table().viewport(), Qt::LeftButton, {}, place);
    QTest::mouseDClick(table().viewport(), Qt::LeftButton, {}, place);
    EXPECT_EQ(log.count(QStringLiteral("Could not open selected project!")), 0);
    tasks().restart();
    ASSERT_TRUE(
        waitUntil([this] { return log.count(QStringLiteral("Could not open selected project!")) == 1; }));
    EXPECT_EQ(details().project().name, QStringLiteral("Beta"));

    // A first click that asks for the menu.
    table().selectionModel()->clear();
    QTest::mousePress(table().viewport(), Qt::RightButton, {}, place);
    QContextMenuEvent menu(QContextMenuEvent::Mouse, place, table().viewport()->mapToGlobal(place));
    QApplication::sendEvent(table().viewport(), &menu);
    ASSERT_TRUE(waitUntil([] { return QApplication::activePopupWidget() != nullptr; }));
    EXPECT_EQ(details().project().name, QStringLiteral("Beta"));
    QApplication::activePopupWidget()->close();
    QTest::mouseRelease(table().viewport(), Qt::RightButton, {}, place);
}

TEST_F(BrowsingTest, WhatTheUserIsAtIsNotSetBackByALateRecord) {
    open();
    select({0});
    auto& slider = child<ProgressSlider>("projectProgressSlider");
    slider.setFocus();
    holdKey(slider, Qt::Key_PageUp, [this] {
        emit monitor.projectsDbModified();
        settle();
    });
    settle();
    EXPECT_EQ(values("progress").constFirst(), QStringLiteral("0.4"));

    // The record is read before the edit is written, and comes after it was made.
    auto& stars = child<StarEditor>("projectStarEditWidget");
    ASSERT_TRUE(stopWorker());
    emit monitor.projectsDbModified();
    QTest::keyClick(&stars, Qt::Key_2);
    QSignalSpy written(&child<EditHistory>(), &EditHistory::written);
    tasks().restart();
    ASSERT_TRUE(waitUntil([&] { return !written.isEmpty() || stars.starRating().starCount() != 2; }));
    EXPECT_EQ(stars.starRating().starCount(), 2);
    settle();
    EXPECT_EQ(values("star_rating").constFirst(), QStringLiteral("2"));
}

TEST_F(BrowsingTest, TheWindowComesBackAsItWasLeft) {
    open();
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
    window->close();

    open();
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
    QSettings().setValue(QStringLiteral("filterSliderPos"), std::numeric_limits<int>::max());
    open();
    EXPECT_LT(child<FilterSidebar>().width(), window->width());
    window->close();
    QSettings().setValue(QStringLiteral("filterSliderPos"), QStringLiteral("wide"));
    open();
    EXPECT_EQ(log.count(QStringLiteral("Could not load int value of setting 'filterSliderPos'")), 1);
    EXPECT_TRUE(child<FilterSidebar>().isVisible());
}
