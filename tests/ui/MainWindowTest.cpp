#include "WindowFixture.h"
#include "app/errors/ErrorHandler.h"
#include "support/FakeCommand.h"
#include "support/TestBundle.h"
#include "ui/Screenshot.h"
#include "ui/SelectedBundle.h"
#include "ui/sidebar/FilterSidebar.h"
#include "ui/table/ProjectsPane.h"
#include "ui/table/StarEditor.h"
#include "ui/widgets/ImageView.h"

#include <QDir>
#include <QDropEvent>
#include <QMenuBar>
#include <QMimeData>
#include <QPushButton>
#include <QSplitter>
#include <QStyledItemDelegate>
#include <QTranslator>
#include <QTreeView>

#include <limits>

namespace {

const QString allRoots = "SELECT * FROM root_project_search_paths";

class MainWindowTest : public WindowFixture {
protected:
    /// What a drag of these paths to the window and a drop there does; whether it was welcome.
    bool drop(const QStringList& paths, QWidget* target = nullptr) {
        QMimeData data;
        // As file managers add it.
        data.setText(paths.join('\n'));
        QList<QUrl> urls;
        for (const QString& path : paths)
            urls.append(QUrl::fromLocalFile(path));
        data.setUrls(urls);
        QDragEnterEvent enter({10, 10}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        enter.ignore();
        QWidget* const under = target ? target : &*window;
        QApplication::sendEvent(under, &enter);
        if (!enter.isAccepted())
            return false;
        QDragMoveEvent move({10, 10}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(under, &move);
        QDropEvent dropped({10, 10}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(under, &dropped);
        return true;
    }
};

} // namespace

TEST_F(MainWindowTest, DroppedFolderFillsTheTableAndIsNamedWhileItIsMissing) {
    const QString music = database.folder.path() + "/music";
    const QString bundle = music + "/Song.logicx";
    TestBundle().write(bundle.toStdString());
    open();
    auto& notice = child<QLabel>("noticeLabel");
    const auto& picture = child<ImageView>();
    EXPECT_FALSE(drop({bundle, music + "/none", "relative"}));
    EXPECT_FALSE(drop({bundle + "/Resources/ProjectInformation.plist"}, &searchEdit()));
    ASSERT_TRUE(drop({music}, &searchEdit()));
    EXPECT_EQ(searchEdit().text(), QString());
    ASSERT_TRUE(waitUntil([&] { return model().rowCount() == 1 && monitor.isWatching(); }));
    EXPECT_EQ(database.rootRows(allRoots), QStringList(music));
    EXPECT_TRUE(waitUntil([&] { return !emptyState().isVisible(); }));
    table().selectRow(0);
    ASSERT_TRUE(waitUntil([&] { return details().project().isValid(); }));
    EXPECT_FALSE(notice.isVisible());

    ASSERT_TRUE(QDir().rename(music, music + " elsewhere"));
    ASSERT_TRUE(waitUntil([&] { return notice.isVisible(); }));
    EXPECT_EQ(notice.text(), "Folder not available: " + music);
    EXPECT_TRUE(waitUntil([&] { return picture.accessibleDescription() == "Not found"; }));
    ASSERT_TRUE(QDir().rename(music + " elsewhere", music));
    EXPECT_TRUE(
        waitUntil([&] { return !notice.isVisible() && picture.accessibleDescription() == "No picture"; }));
    EXPECT_EQ(model().rowCount(), 1);
    ASSERT_TRUE(waitUntil([&] { return !monitor.isSearching() && !model().isReloading(); }));

    const auto told = std::make_shared<QString>();
    Stemhaven::ErrorHandler::instance().setPresenter(
        [told](const auto& details) { *told += details.message; });
    emit monitor.rootSearchPathChanged(music);
    EXPECT_TRUE(waitUntil([&] { return told->contains(music); }));
    Stemhaven::ErrorHandler::instance().setPresenter([](const auto& /*details*/) {});
    ASSERT_TRUE(waitUntil([&] { return !monitor.isSearching() && !model().isReloading(); }));
}

TEST_F(MainWindowTest, ARestartGivesBackWhatWasShownAndSelected) {
    insert({"Alpha", "Beta", "Gamma", "Delta"});
    database.rows("INSERT INTO tags VALUES(1, '#one'), (2, '#two')");
    database.rows("INSERT INTO project_tag_map VALUES(2, 2), (3, 2)");
    open();
    auto* tree = &child<QTreeView>();
    const auto group = [&](FilterType type) {
        return child<FolderTreeItemModel>().indexOf(type);
    };
    tree->collapse(group(FilterType::GENRES));
    tree->expand(group(FilterType::LYRICS_STATUS));
    emit child<FilterSidebar>().activated(FilterType::TAGS, 2, "#two");
    settle();
    table().selectRow(1);
    window->close();

    open();
    tree = &child<QTreeView>();
    EXPECT_EQ(status(), "Tag '#two' (2 found)");
    EXPECT_EQ(child<FilterSidebar>().shownType(), FilterType::TAGS);
    EXPECT_EQ(tree->currentIndex(), child<FolderTreeItemModel>().indexOf(FilterType::TAGS, 2));
    EXPECT_EQ(selectedName(), "Gamma");
    EXPECT_TRUE(waitUntil([&] { return details().project().name == "Gamma"; }));
    EXPECT_FALSE(tree->isExpanded(group(FilterType::GENRES)));
    EXPECT_TRUE(tree->isExpanded(group(FilterType::LYRICS_STATUS)));
    EXPECT_TRUE(tree->isExpanded(group(FilterType::TAGS)));
    window->close();

    // What is not there any more, and what never was.
    database.rows("DELETE FROM tags WHERE tag_id=2");
    database.rows("DELETE FROM projects WHERE name='Gamma'");
    open();
    ASSERT_TRUE(waitUntil([&] { return status() == "All projects (3 found)"; }));
    EXPECT_EQ(child<FilterSidebar>().shownType(), FilterType::ALL);
    window->close();
    QSettings().setValue("sidebarEntryType", 77);
    QSettings().setValue("foldedGroups", "all");
    open();
    EXPECT_EQ(status(), "All projects (3 found)");
}

TEST_F(MainWindowTest, APictureThatCannotBeTakenEndsTheProgramNevertheless) {
    ASSERT_TRUE(stopWorker());
    window.emplace(tasks(), monitor);
    const QString file = database.folder.path() + "/picture.png";
    const Screenshot screenshot(*window, file, std::chrono::milliseconds(1));
    testing::internal::CaptureStderr();
    EXPECT_EQ(QApplication::exec(), 1);
    EXPECT_NE(testing::internal::GetCapturedStderr().find("was not filled in time"), std::string::npos);
    EXPECT_FALSE(QFile::exists(file));
}

TEST_F(MainWindowTest, DatesNumbersAndCountsFollowTheLanguage) {
    const QLocale before;
    const auto moment = QDateTime({2016, 1, 29}, {14, 53}).toSecsSinceEpoch();
    insertNumbered(1200);
    database.rows(QString("UPDATE projects SET bpm=174.98765, last_modified=%1").arg(moment));
    const std::tuple<QLocale::Language, QString, QString, QString> cases[] = {
        {QLocale::English, "All projects (1,200 found)", "Jan 29, 2016 2:53 PM", "174.99"},
        {QLocale::German, "Alle Projekte (1.200 gefunden)", "29. Jan. 2016 14:53", "174,99"}};
    for (const auto& [language, count, date, tempo] : cases) {
        QTranslator translator;
        if (language == QLocale::German) {
            ASSERT_TRUE(translator.load(":/i18n/Stemhaven_de_DE"));
            QApplication::installTranslator(&translator);
        }
        QLocale::setDefault(language);
        open();
        EXPECT_EQ(status(), count);
        QStringList shown;
        const auto& delegate = *qobject_cast<QStyledItemDelegate*>(table().itemDelegate());
        for (int column = 0; column < model().columnCount(); ++column)
            shown.append(delegate.displayText(model().index(0, column).data(), QLocale()));
        EXPECT_TRUE(shown.contains(date)) << qPrintable(shown.join(" | "));
        EXPECT_TRUE(shown.contains(tempo)) << qPrintable(shown.join(" | "));
        window.reset();
    }
    QLocale::setDefault(before);
}

TEST_F(MainWindowTest, TheKeyboardReachesPanesMenusSortingAndWidths) {
    insert({"Beta", "Alpha"});
    open();
    table().setFocus();
    table().selectRow(0);
    ASSERT_TRUE(waitUntil([&] { return details().project().isValid(); }));
    QList<QWidget*> panes{&child<FilterSidebar>(), &child<ProjectsPane>(), &details()};
    const auto pane = [&] {
        const auto found = std::find_if(panes.begin(), panes.end(), [&](const QWidget* candidate) {
            return candidate->isAncestorOf(QApplication::focusWidget());
        });
        return found - panes.begin();
    };
    for (const int expected : {2, 0, 1}) {
        QTest::keyClick(&*window, Qt::Key_F6);
        EXPECT_EQ(pane(), expected);
    }
    EXPECT_TRUE(table().hasFocus());
    child<QSplitter>("sidebarSplitter").widget(0)->setVisible(false);
    QTest::keyClick(&*window, Qt::Key_F6, Qt::ShiftModifier);
    EXPECT_EQ(pane(), 2);
    const int width = details().width();
    QTest::keyClick(&*window, Qt::Key_Plus, Qt::ControlModifier | Qt::AltModifier);
    EXPECT_EQ(details().width(), width + 24);
    QTest::keyClick(&*window, Qt::Key_Minus, Qt::ControlModifier | Qt::AltModifier);
    EXPECT_EQ(details().width(), width);

    for (QAction* menu : window->menuBar()->actions())
        EXPECT_TRUE(menu->text().contains('&')) << qPrintable(menu->text());
    QMenu* view = actions().viewMenu();
    const auto named = [](QMenu& menu, const QString& text) -> QAction& {
        for (QAction* action : menu.actions()) {
            if (action->text().remove('&') == text)
                return *action;
        }
        throw std::out_of_range(text.toStdString());
    };
    QMenu& sortMenu = *named(*view, "Sort By").menu();
    emit sortMenu.aboutToShow();
    named(sortMenu, "Name").trigger();
    settle();
    EXPECT_EQ(names(), (QStringList{"Alpha", "Beta"}));
    emit sortMenu.aboutToShow();
    EXPECT_TRUE(named(sortMenu, "Name").isChecked());
    named(sortMenu, "Descending").trigger();
    settle();
    EXPECT_EQ(names(), (QStringList{"Beta", "Alpha"}));
    table().setCurrentIndex(model().index(0, nameColumn()));
    const int columnWidth = table().columnWidth(nameColumn());
    named(*named(*view, "Column").menu(), "Wider").trigger();
    EXPECT_EQ(table().columnWidth(nameColumn()), columnWidth + 24);

    QTest::keyClick(&*window, Qt::Key_F10);
    auto* popup = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    ASSERT_NE(popup, nullptr);
    EXPECT_EQ(popup->title(), "&File");
    popup->close();
}

TEST_F(MainWindowTest, TheWindowComesBackAsItWasLeft) {
    open();
    window->resize(1111, 613);
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
    QTest::keyClick(&*window, Qt::Key_F, Qt::ControlModifier);
    EXPECT_TRUE(searchEdit().hasFocus());
    window->close();

    open();
    EXPECT_EQ(window->size(), QSize(1111, 613));
    EXPECT_FALSE(actions().hideIgnored->isChecked());
    EXPECT_FALSE(details().isVisible());
    EXPECT_EQ(child<QSplitter>("sidebarSplitter").sizes().constFirst(), 300);
    actions().hideSidebar->trigger();
    window->close();

    open();
    EXPECT_FALSE(child<FilterSidebar>().isVisible());
    actions().showSidebar->trigger();
    // The width is forgotten with the hiding.
    EXPECT_LT(child<FilterSidebar>().width(), 300);
    window->close();
    QSettings().setValue("filterSliderPos", std::numeric_limits<int>::max());
    open();
    EXPECT_LT(child<FilterSidebar>().width(), window->width());
    window->close();
    QSettings().setValue("filterSliderPos", "wide");
    open();
    EXPECT_EQ(log.count("Could not load int value of setting 'filterSliderPos'"), 1);
    EXPECT_TRUE(child<FilterSidebar>().isVisible());
}

TEST_F(MainWindowTest, AShortcutTakesBackWhatItDidAndQuitCloses) {
    open();
    for (int round = 0; round < 2; ++round) {
        QTest::keyClick(&*window, Qt::Key_D, Qt::ControlModifier);
        EXPECT_EQ(details().isVisible(), round == 1);
        QTest::keyClick(&*window, Qt::Key_BracketLeft, Qt::ControlModifier);
        EXPECT_EQ(child<FilterSidebar>().isVisible(), round == 1);
    }
    QSignalSpy again(actions().redo, &QAction::triggered);
    actions().redo->setEnabled(true);
    QTest::keyClick(&*window, Qt::Key_Y, Qt::ControlModifier);
    QTest::keyClick(&*window, Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(again.count(), 2);
    EXPECT_EQ(actions().quit->shortcut(), QKeySequence(QKeySequence::Quit));
    actions().quit->trigger();
    EXPECT_FALSE(window->isVisible());
}

TEST_F(MainWindowTest, ButtonsActOnAClickThatEndsOnThem) {
    insert({"Song"});
    open();
    table().selectRow(0);
    ASSERT_TRUE(waitUntil([&] { return details().project().isValid(); }));
    auto& button = child<QPushButton>("openProjectButton");
    auto& stars = child<StarEditor>();
    details().disconnect(SIGNAL(openRequested()));
    QSignalSpy opened(&details(), &DetailsPane::openRequested);
    QSignalSpy rated(&details(), &DetailsPane::starRatingEdited);
    const QPoint outside(-200, -200);
    stars.grab();
    const QPoint third(stars.rect().center());

    QTest::mousePress(&button, Qt::LeftButton);
    QTest::mouseRelease(&button, Qt::LeftButton, {}, outside);
    QTest::mouseClick(&button, Qt::RightButton);
    EXPECT_EQ(opened.count(), 0);
    QTest::mouseClick(&button, Qt::LeftButton);
    QTest::mouseDClick(&button, Qt::LeftButton);
    EXPECT_EQ(opened.count(), 1);

    QTest::mouseMove(&stars, third);
    QTest::mousePress(&stars, Qt::LeftButton, {}, third);
    QTest::mouseRelease(&stars, Qt::LeftButton, {}, outside);
    QTest::mouseClick(&stars, Qt::RightButton, {}, third);
    EXPECT_EQ(rated.count(), 0);
    QTest::mouseMove(&stars, third + QPoint(1, 0));
    QTest::mouseClick(&stars, Qt::LeftButton, {}, third + QPoint(1, 0));
    EXPECT_EQ(rated.count(), 1);
    settle();
}

TEST_F(MainWindowTest, OpeningWithoutTheDesktopsCommandSaysWhatIsMissing) {
    const QByteArray path = qgetenv("PATH");
    qputenv("PATH", database.folder.path().toLocal8Bit());
    QString messages; // those of the tests before, too
    auto& handler = Stemhaven::ErrorHandler::instance();
    handler.setPresenter([&](const auto& details) { messages += details.message; });
    SelectedBundle(database.folder.path()).open();
    EXPECT_TRUE(waitUntil([&] { return messages.contains("xdg-utils"); })) << qPrintable(messages);
    handler.setPresenter([](const auto& /*details*/) {});
    qputenv("PATH", path);
    EXPECT_TRUE(messages.contains("Error code: 127"));

    // The command is there, but finds no program.
    for (const int status : {1, 3, 4}) {
        messages.clear();
        handler.setPresenter([&](const auto& details) { messages += details.message; });
        const FakeCommand opener("xdg-open", status);
        SelectedBundle(database.folder.path()).open();
        EXPECT_TRUE(waitUntil([&] { return messages.contains(QString("Error code: %1").arg(status)); }))
            << status;
        EXPECT_EQ(messages.contains("No program is set up to open Logic Pro projects."), status != 1);
        handler.setPresenter([](const auto& /*details*/) {});
    }
}
