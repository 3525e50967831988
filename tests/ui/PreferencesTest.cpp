#include "BrowsingFixture.h"
#include "database/RootPathStatements.h"
#include "support/TestBundle.h"
#include "ui/folders/WatchedFoldersModel.h"
#include "ui/preferences/FieldsList.h"
#include "ui/preferences/PreferencesDialog.h"
#include "ui/sidebar/AddFilterForm.h"
#include "ui/sidebar/RemoveFilter.h"
#include "ui/table/EmptyState.h"

#include <QCheckBox>
#include <QDir>
#include <QFileDialog>
#include <QHeaderView>
#include <QListView>
#include <QListWidget>
#include <QToolButton>

namespace SettingsKeys = Stemhaven::SettingsKeys;

namespace {

const QString allRoots = Stemhaven::RootPathStatements::selectAll();

class PreferencesTest : public BrowsingFixture {
protected:
    void openPreferences(const char* tab) {
        open();
        actions().settings->trigger();
        preferences = window->findChild<PreferencesDialog*>();
        ASSERT_NE(preferences, nullptr);
        QApplication::setActiveWindow(preferences);
        part<QToolButton>(tab).click();
        settle();
    }

    template <typename T>
    T& part(const char* name = nullptr) {
        return *preferences->findChild<T*>(name);
    }

    /// The message box that is open, when it comes.
    QMessageBox* message() {
        QMessageBox* box = nullptr;
        waitUntil([&] { return (box = preferences->findChild<QMessageBox*>()) != nullptr; }, 20);
        return box;
    }

    bool reply(QMessageBox::StandardButton button) {
        auto* box = message();
        if (!box)
            return false;
        box->button(button)->click();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        settle();
        return true;
    }

    void add(const QString& folder) {
        part<QPushButton>("addMonitoredPathButton").click();
        auto* dialog = preferences->findChild<QFileDialog*>();
        ASSERT_NE(dialog, nullptr);
        EXPECT_EQ(dialog->fileMode(), QFileDialog::Directory);
        emit dialog->fileSelected(folder);
        delete dialog;
    }

    QStringList folders() {
        QStringList lines;
        const auto& model = *part<QListView>("monitoredPathsList").model();
        for (int row = 0; row < model.rowCount(); ++row) {
            const auto index = model.index(row, 0);
            lines.append(
                index.data().toString() + ": " + index.data(WatchedFoldersModel::DetailsRole).toString());
        }
        return lines;
    }

    QListWidget& labels() { return part<QListWidget>("statusLabelsList"); }

    QStringList labelNames() {
        QStringList names;
        for (int row = 0; row < labels().count(); ++row)
            names.append(labels().item(row)->text());
        return names;
    }

    QStringList titles() {
        QStringList shown;
        for (int column = 0; column < model().columnCount(); ++column)
            shown.append(model().headerData(column, Qt::Horizontal, Qt::DisplayRole).toString().trimmed());
        return shown;
    }

    PreferencesDialog* preferences = nullptr;
};

} // namespace

TEST_F(PreferencesTest, FoldersAreAddedAndRemovedAndTheWindowFollows) {
    const QString music = database.folder.path() + "/It's 100% music";
    const QString bundle = music + "/Song.logicx";
    TestBundle().write(bundle.toStdString());
    database.rows("DELETE FROM projects");
    openPreferences("monitorTabButton");
    EXPECT_FALSE(part<QPushButton>("removeMonitoredPathButton").isEnabled());
    add(music + "/");
    EXPECT_TRUE(waitUntil([&] { return folders() == QStringList(music + ": Watched · 1 project"); }));
    EXPECT_TRUE(waitUntil([&] { return names() == QStringList("Song"); }));
    EXPECT_EQ(log.count("New root search path added: "), 1);

    add(music);
    auto* known = message();
    ASSERT_NE(known, nullptr);
    EXPECT_EQ(known->text(), "This folder is watched already.");
    ASSERT_TRUE(reply(QMessageBox::Ok));
    const QString link = database.folder.path() + "/everything";
    ASSERT_TRUE(QFile::link("/", link));
    for (const QString& root : {QString("/"), link, music + "/../../../../../../../.."}) {
        add(root);
        auto* refusal = message();
        ASSERT_NE(refusal, nullptr) << root.toStdString();
        EXPECT_EQ(refusal->text(), "Root monitoring is not allowed.");
        ASSERT_TRUE(reply(QMessageBox::Ok));
    }
    EXPECT_EQ(database.rootRows(allRoots), QStringList(music));

    ASSERT_TRUE(QDir().rename(music, music + " gone"));
    auto& notice = child<QLabel>("noticeLabel");
    ASSERT_TRUE(waitUntil([&] { return notice.text().startsWith("Folder not available"); }));
    EXPECT_TRUE(waitUntil([&] { return folders() == QStringList(music + ": Missing · 1 project"); }));

    QTest::keyClick(&part<QListView>("monitoredPathsList"), Qt::Key_Delete);
    ASSERT_NE(message(), nullptr);
    EXPECT_EQ(message()->text(), "Do you want Stemhaven to stop looking for projects in " + music + "?");
    ASSERT_TRUE(reply(QMessageBox::No));
    EXPECT_EQ(database.rootRows(allRoots), QStringList(music));
    part<QPushButton>("removeMonitoredPathButton").click();
    ASSERT_TRUE(reply(QMessageBox::Yes));
    EXPECT_TRUE(waitUntil([&] { return folders().isEmpty() && notice.text().isEmpty(); }));
    EXPECT_TRUE(monitor.rootSearchPaths().isEmpty());
    EXPECT_EQ(names(), QStringList("Song"));
}

TEST_F(PreferencesTest, GenresByFolderAskOnlyWhenSwitchedOn) {
    openPreferences("monitorTabButton");
    auto& box = part<QCheckBox>("genreFromDirCheck");
    EXPECT_EQ(box.text(), " Assign Genre based on Directory");
    EXPECT_FALSE(box.isChecked());
    const auto isStored = [] {
        return QSettings().value(SettingsKeys::genreFromDir).toBool();
    };
    box.click();
    EXPECT_TRUE(isStored());
    ASSERT_TRUE(reply(QMessageBox::No));
    box.click();
    EXPECT_FALSE(isStored());
    EXPECT_EQ(preferences->findChild<QMessageBox*>(), nullptr);
    EXPECT_EQ(values("genre_id"), QStringList({"", "", ""}));
    box.click();
    ASSERT_TRUE(reply(QMessageBox::Yes));
    EXPECT_TRUE(waitUntil([&] {
        return database.rows("SELECT DISTINCT genres.name FROM projects JOIN genres USING (genre_id)") ==
            QStringList("music");
    }));
}

TEST_F(PreferencesTest, ColumnsTakeEffectAtOnceAndClearTheSort) {
    openPreferences("columnsTabButton");
    table().sortByColumn(nameColumn(), Qt::DescendingOrder);
    settle();
    ASSERT_EQ(names(), QStringList({"Gamma", "Beta", "Alpha"}));
    const QStringList before = titles();
    auto& list = part<FieldsList>("fieldsListWidget");
    EXPECT_EQ(list.count(), 28);
    QSignalSpy changed(preferences, &PreferencesDialog::columnsChanged);

    list.setCurrentItem(list.findItems("Progress", Qt::MatchExactly).constFirst());
    QTest::keyClick(&list, Qt::Key_Space);
    settle();
    EXPECT_EQ(changed.count(), 1);
    QStringList expected = before;
    expected.removeAll("Progress");
    EXPECT_EQ(titles(), expected);
    EXPECT_EQ(names(), QStringList({"Alpha", "Beta", "Gamma"}));
    EXPECT_EQ(table().horizontalHeader()->sortIndicatorSection(), -1);
    // As the keys and as the drop of a row do it.
    list.setCurrentItem(list.findItems("Rating", Qt::MatchExactly).constFirst());
    const int rating = list.currentRow();
    QTest::keyClick(&list, Qt::Key_Down, Qt::ControlModifier);
    EXPECT_EQ(list.currentRow(), rating + 1);
    settle();
    expected.move(expected.indexOf("Rating"), expected.indexOf("Tempo"));
    EXPECT_EQ(titles(), expected);
    ASSERT_TRUE(list.model()->moveRow({}, rating + 1, {}, rating));
    settle();
    expected.move(expected.indexOf("Rating"), expected.indexOf("Tempo"));
    EXPECT_EQ(titles(), expected);
    EXPECT_EQ(changed.count(), 3);
    // What is not shown is not searched.
    search("Alpha");
    EXPECT_EQ(names(), QStringList("Alpha"));
    list.findItems("Name", Qt::MatchExactly).constFirst()->setCheckState(Qt::Unchecked);
    settle();
    EXPECT_EQ(model().rowCount(), 0);

    // Rows without a column would be an empty page.
    search({});
    for (int row = 0; row < list.count(); ++row)
        list.item(row)->setCheckState(Qt::Unchecked);
    settle();
    const auto& hint = *window->findChild<EmptyState*>();
    EXPECT_EQ(hint.reason(), EmptyState::Reason::NoColumns);
    EXPECT_TRUE(hint.isVisible());
    hint.findChild<QPushButton*>()->click();
    settle();
    EXPECT_FALSE(hint.isVisible());
    EXPECT_EQ(titles(), QStringList("Name"));
    EXPECT_EQ(list.findItems("Name", Qt::MatchExactly).constFirst()->checkState(), Qt::Checked);
}

TEST_F(PreferencesTest, StatusLabelsAreEditsThatCanBeUndone) {
    const QString odd = QString("It's <b>\"100%\" %1</b> ") + QString(1000, 'x');
    database.rows("DELETE FROM lyrics_status");
    database.rows("INSERT INTO lyrics_status VALUES(0, 'None'), (1, 'Begun')");
    database.rows("UPDATE projects SET lyrics_status=1 WHERE name='Beta'");
    openPreferences("statusTabButton");
    part<QComboBox>("statusLabelsCombo").setCurrentIndex(1);
    ASSERT_TRUE(waitUntil([&] { return labelNames() == QStringList({"None", "Begun"}); }));

    part<QPushButton>("addStatusButton").click();
    auto* form = preferences->findChild<AddFilterForm*>();
    ASSERT_NE(form, nullptr);
    EXPECT_EQ(form->windowTitle(), "Add Lyrics Status");
    auto& name = *form->findChild<QLineEdit*>("nameEdit");
    name.setText("   ");
    EXPECT_FALSE(form->findChild<QPushButton*>("acceptButton")->isEnabled());
    name.setText(odd);
    form->accept();
    EXPECT_TRUE(waitUntil([&] { return labelNames() == QStringList({"None", "Begun", odd}); }));
    EXPECT_TRUE(waitUntil([&] { return labels().currentRow() == 2; }));

    // One that is in use, and back again.
    ASSERT_NO_FATAL_FAILURE(select({1}));
    EXPECT_EQ(lyrics().currentText(), "Begun");
    labels().setCurrentRow(1);
    part<QPushButton>("removeStatusButton").click();
    auto* removal = preferences->findChild<RemoveFilter*>();
    ASSERT_NE(removal, nullptr);
    ASSERT_TRUE(waitUntil([&] { return removal->findChild<QPushButton*>("acceptButton")->isEnabled(); }));
    removal->accept();
    EXPECT_TRUE(waitUntil([&] { return labelNames() == QStringList({"None", odd}); }));
    EXPECT_TRUE(waitUntil([&] { return lyrics().currentText() == "None"; }));
    EXPECT_EQ(values("lyrics_status"), QStringList({"0", "0", "0"}));
    actions().undo->trigger();
    EXPECT_TRUE(waitUntil([&] { return labelNames() == QStringList({"None", "Begun", odd}); }));
    EXPECT_EQ(values("lyrics_status"), QStringList({"0", "1", "0"}));

    database.rows("DROP TABLE recording_status");
    part<QComboBox>("statusLabelsCombo").setCurrentIndex(2);
    EXPECT_TRUE(waitUntil([&] { return log.count("Could not load status labels for settings...") == 1; }));
}

TEST_F(PreferencesTest, PagesAreReachedByKeyboardAndFitASmallScreen) {
    openPreferences("monitorTabButton");
    const char* const tabs[] = {
        "monitorTabButton", "columnsTabButton", "statusTabButton", "advancedTabButton"};
    auto& pages = part<QTabWidget>("tabWidget");
    for (int page = 0; page < 4; ++page) {
        EXPECT_EQ(pages.currentIndex(), page);
        auto& button = part<QToolButton>(tabs[page]);
        EXPECT_TRUE(button.isChecked());
        button.setFocus();
        QTest::keyClick(&button, Qt::Key_Tab);
        EXPECT_TRUE(pages.currentWidget()->isAncestorOf(QApplication::focusWidget())) << tabs[page];
        button.setFocus();
        if (page < 3)
            QTest::keyClick(&button, Qt::Key_Right);
    }
    QTest::keyClick(&pages, Qt::Key_Tab, Qt::ControlModifier);
    EXPECT_EQ(pages.currentIndex(), 0);
    EXPECT_TRUE(part<QToolButton>("monitorTabButton").isChecked());
    // 1366x768 at a scale of 1.5, less a title bar.
    constexpr QSize room(910, 472);
    EXPECT_EQ(preferences->minimumSizeHint().boundedTo(room), preferences->minimumSizeHint());
    EXPECT_EQ(preferences->size().boundedTo(room), preferences->size());
    // A second one is the same one, with the changes of the first.
    actions().settings->trigger();
    EXPECT_EQ(window->findChildren<PreferencesDialog*>().size(), 1);
    QTest::keyClick(preferences, Qt::Key_Escape);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(window->findChild<PreferencesDialog*>(), nullptr);
}
