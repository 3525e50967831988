#include "ui/sidebar/FilterSidebar.h"

#include "SidebarFixture.h"

#include <QMenu>
#include <QPushButton>
#include <QScrollBar>
#include <QShortcut>
#include <QTreeView>

using enum FilterType;

namespace {

class FilterSidebarTest : public SidebarFixture {
protected:
    void SetUp() override {
        SidebarFixture::SetUp();
        addEntries(SAVED_SEARCH, {"night"});
        addEntries(GENRES, {"Ambient", "Dub"});
        addEntries(TAGS, {"#a", "#b", "#c"});
        sidebar = std::make_unique<FilterSidebar>(*model);
        sidebar->resize(240, 600);
        sidebar->show();
        QApplication::setActiveWindow(sidebar.get());
        reload();
        tree().setFocus();
    }

    QTreeView& tree() { return *sidebar->findChild<QTreeView*>("filterTreeView"); }

    bool canRemove() { return button("removeFilterButton").isEnabled(); }

    QPushButton& button(const char* name) { return *sidebar->findChild<QPushButton*>(name); }

    void click(FilterType type, qint64 id = -1) {
        QTest::mouseClick(tree().viewport(), Qt::LeftButton, {}, centerOf(type, id));
    }

    QPoint centerOf(FilterType type, qint64 id = -1) {
        return tree().visualRect(model->indexOf(type, id)).center();
    }

    void press(Qt::Key key) { QTest::keyClick(&tree(), key); }

    bool isOpen(FilterType type) { return tree().isExpanded(model->indexOf(type)); }

    QString selectedName() {
        const auto selected = tree().selectionModel()->selectedIndexes();
        return selected.size() == 1 ? selected.constFirst().data().toString() : QString();
    }

    std::unique_ptr<FilterSidebar> sidebar;
};

/// What a signal of the sidebar carries.
QVariantList entry(FilterType type, qint64 id, const QString& name) {
    return {QVariant::fromValue(type), id, name};
}

/// What it carried last, if it came.
QVariantList last(const QSignalSpy& spy) {
    return spy.value(spy.count() - 1);
}

} // namespace

TEST_F(FilterSidebarTest, ClicksAndReturnFilterAndOpenGroups) {
    // A shortcut of the window must not take the key.
    const QShortcut shortcut(Qt::Key_Return, sidebar.get());
    QSignalSpy activated(sidebar.get(), &FilterSidebar::activated);
    EXPECT_EQ(selectedName(), "All");
    click(TAGS, 2);
    EXPECT_EQ(last(activated), entry(TAGS, 2, "#b"));
    click(LAST_SEARCH);
    EXPECT_EQ(last(activated), entry(LAST_SEARCH, -1, ""));
    press(Qt::Key_Up);
    EXPECT_EQ(selectedName(), "Last Search");
    press(Qt::Key_Return);
    EXPECT_EQ(last(activated), entry(ALL, -1, ""));
    EXPECT_EQ(activated.count(), 3);

    EXPECT_TRUE(isOpen(TAGS));
    EXPECT_FALSE(isOpen(LYRICS_STATUS));
    click(TAGS);
    EXPECT_FALSE(isOpen(TAGS));
    press(Qt::Key_Enter);
    EXPECT_TRUE(isOpen(TAGS));
    click(GENRES);
    QTest::mouseDClick(tree().viewport(), Qt::LeftButton, {}, centerOf(GENRES));
    EXPECT_FALSE(isOpen(GENRES));
    EXPECT_EQ(activated.count(), 3);
    EXPECT_EQ(selectedName(), "All");
}

TEST_F(FilterSidebarTest, WishesFollowTheCurrentEntry) {
    const QVariantList dub = entry(GENRES, 2, "Dub");
    const std::tuple<FilterType, qint64, bool, QVariantList, QVariantList> cases[] = {
        {ALL, -1, false, {}, {}},
        {LAST_SEARCH, -1, false, {}, {}},
        {SAVED_SEARCH, 1, true, {}, entry(SAVED_SEARCH, 1, "night")},
        {COLLECTIONS, -1, true, {}, {}},
        {GENRES, 2, true, dub, dub},
        {LYRICS_STATUS, 2, false, {}, {}}};
    for (const auto& [type, id, mayAdd, renaming, removal] : cases) {
        SCOPED_TRACE(int(type));
        QSignalSpy added(sidebar.get(), &FilterSidebar::addRequested);
        QSignalSpy removed(sidebar.get(), &FilterSidebar::removeRequested);
        QSignalSpy renamed(sidebar.get(), &FilterSidebar::renameRequested);
        QSignalSpy activated(sidebar.get(), &FilterSidebar::activated);
        sidebar->setCurrent(type, id);
        EXPECT_EQ(sidebar->currentType(), type);
        EXPECT_EQ(sidebar->currentEntryId(), id);
        EXPECT_EQ(button("addFilterButton").isEnabled(), mayAdd);
        EXPECT_EQ(canRemove(), !removal.isEmpty());
        QTest::keyClick(&button("addFilterButton"), Qt::Key_Return);
        EXPECT_EQ(added.count(), mayAdd ? 1 : 0);
        press(Qt::Key_F2);
        press(Qt::Key_Delete);
        EXPECT_EQ(last(renamed), renaming);
        EXPECT_EQ(last(removed), removal);
        QTest::mouseClick(&button("removeFilterButton"), Qt::LeftButton);
        EXPECT_EQ(removed.count(), removal.isEmpty() ? 0 : 2);
        EXPECT_TRUE(tree().hasFocus());
        EXPECT_EQ(activated.count(), 0);
    }
}

TEST_F(FilterSidebarTest, ReloadLeavesEverythingInItsPlace) {
    database.rows("WITH RECURSIVE n(i) AS (SELECT 100 UNION SELECT i + 1 FROM n WHERE i < 199) "
                  "INSERT INTO tags(name) SELECT '#n' || i FROM n");
    reload();
    tree().collapse(model->indexOf(GENRES));
    tree().expand(model->indexOf(RECORDING_STATUS));
    const qint64 id = model->getEntries(TAGS).at(50).id;
    sidebar->setCurrent(TAGS, id);
    tree().verticalScrollBar()->setValue(700);
    const int y = centerOf(TAGS, id).y();

    QSignalSpy activated(sidebar.get(), &FilterSidebar::activated);
    addEntries(COLLECTIONS, {"One", "Two"});
    addEntries(TAGS, {"#aa", "#zz"});
    database.rows(QString("UPDATE tags SET name=name || 'x' WHERE tag_id=%1").arg(id));
    reload();
    EXPECT_EQ(centerOf(TAGS, id).y(), y);
    EXPECT_EQ(sidebar->currentEntryId(), id);
    EXPECT_EQ(selectedName(), sidebar->currentName());
    EXPECT_FALSE(isOpen(GENRES));
    EXPECT_TRUE(isOpen(RECORDING_STATUS));
    EXPECT_TRUE(tree().hasFocus());
    EXPECT_EQ(activated.count(), 0);
}

TEST_F(FilterSidebarTest, EntriesThatComeAndGo) {
    sidebar->setCurrent(TAGS, 4);
    EXPECT_EQ(selectedName(), QString());
    addEntries(TAGS, {"#d"});
    reload();
    EXPECT_EQ(selectedName(), "#d");

    sidebar->setCurrent(TAGS, 2);
    // A menu acts on the entry that it was opened for.
    QSignalSpy renamed(sidebar.get(), &FilterSidebar::renameRequested);
    QContextMenuEvent event(QContextMenuEvent::Keyboard, {}, tree().mapToGlobal(QPoint()));
    QApplication::sendEvent(tree().viewport(), &event);
    auto* menu = sidebar->findChild<QMenu*>();
    ASSERT_NE(menu, nullptr);
    ASSERT_EQ(menu->actions().size(), 2);
    database.rows("DELETE FROM tags WHERE tag_id=2");
    reload();
    EXPECT_EQ(selectedName(), QString());
    EXPECT_EQ(sidebar->currentName(), "#c");
    menu->actions().constFirst()->trigger();
    EXPECT_EQ(last(renamed), entry(TAGS, 2, "#b"));
    menu->close();
    EXPECT_TRUE(canRemove());
    database.rows("DELETE FROM tags");
    reload();
    EXPECT_EQ(sidebar->currentType(), TAGS);
    EXPECT_EQ(sidebar->currentEntryId(), -1);
    EXPECT_FALSE(canRemove());

    sidebar->setCurrent(GENRES, 1);
    sidebar->collapseAll();
    EXPECT_EQ(sidebar->currentEntryId(), -1);
    EXPECT_FALSE(canRemove());
}
