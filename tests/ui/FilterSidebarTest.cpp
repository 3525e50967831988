#include "ui/sidebar/FilterSidebar.h"

#include "SidebarFixture.h"

#include <QApplication>
#include <QMenu>
#include <QPushButton>
#include <QScrollBar>
#include <QShortcut>
#include <QTreeView>
#include <QtTest/QTest>

namespace {

class FilterSidebarTest : public SidebarFixture {
protected:
    void SetUp() override {
        SidebarFixture::SetUp();
        addEntries(FilterType::SAVED_SEARCH, list({"night"}));
        addEntries(FilterType::GENRES, list({"Ambient", "Dub"}));
        addEntries(FilterType::TAGS, list({"#a", "#b", "#c"}));
        sidebar = std::make_unique<FilterSidebar>(*model);
        sidebar->resize(240, 600);
        sidebar->show();
        QApplication::setActiveWindow(sidebar.get());
        reload();
        tree().setFocus();
    }

    void TearDown() override { sidebar.reset(); }

    QTreeView& tree() { return *sidebar->findChild<QTreeView*>(QStringLiteral("filterTreeView")); }

    bool canAdd() { return button("addFilterButton").isEnabled(); }

    bool canRemove() { return button("removeFilterButton").isEnabled(); }

    QPushButton& button(const char* name) {
        return *sidebar->findChild<QPushButton*>(QString::fromLatin1(name));
    }

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

/// What a signal of the sidebar carried last, in words.
QString last(const QSignalSpy& spy) {
    if (spy.isEmpty())
        return {};
    QStringList words;
    for (const QVariant& value : spy.constLast())
        words.append(
            value.metaType() == QMetaType::fromType<FilterType>()
                ? QString::number(static_cast<int>(value.value<FilterType>()))
                : value.toString());
    return words.join(u'|');
}

} // namespace

TEST_F(FilterSidebarTest, ClicksAndReturnFilterAndOpenGroups) {
    QSignalSpy activated(sidebar.get(), &FilterSidebar::activated);
    EXPECT_EQ(selectedName(), QStringLiteral("All"));
    click(FilterType::TAGS, 2);
    EXPECT_EQ(last(activated), QStringLiteral("5|2|#b"));
    click(FilterType::LAST_SEARCH);
    EXPECT_EQ(last(activated), QStringLiteral("1|-1|"));
    press(Qt::Key_Up);
    EXPECT_EQ(selectedName(), QStringLiteral("Last Search"));
    press(Qt::Key_Return);
    EXPECT_EQ(last(activated), QStringLiteral("0|-1|"));
    EXPECT_EQ(activated.count(), 3);

    EXPECT_TRUE(isOpen(FilterType::TAGS));
    EXPECT_FALSE(isOpen(FilterType::LYRICS_STATUS));
    click(FilterType::TAGS);
    EXPECT_FALSE(isOpen(FilterType::TAGS));
    press(Qt::Key_Enter);
    EXPECT_TRUE(isOpen(FilterType::TAGS));
    QTest::mouseClick(tree().viewport(), Qt::LeftButton, {}, centerOf(FilterType::GENRES));
    QTest::mouseDClick(tree().viewport(), Qt::LeftButton, {}, centerOf(FilterType::GENRES));
    EXPECT_FALSE(isOpen(FilterType::GENRES));
    EXPECT_EQ(activated.count(), 3);
    EXPECT_EQ(selectedName(), QStringLiteral("All"));
}

TEST_F(FilterSidebarTest, WishesFollowTheCurrentEntry) {
    struct Case {
        FilterType type;
        qint64 id;
        bool canAdd;
        bool canRemove;
        const char* renamed;
        const char* removed;
    };

    const Case cases[] = {
        {FilterType::ALL, -1, false, false, "", ""},
        {FilterType::LAST_SEARCH, -1, false, false, "", ""},
        {FilterType::SAVED_SEARCH, 1, true, true, "", "2|1|night"},
        {FilterType::COLLECTIONS, -1, true, false, "", ""},
        {FilterType::GENRES, 2, true, true, "4|2|Dub", "4|2|Dub"},
        {FilterType::LYRICS_STATUS, 2, false, false, "", ""}};
    for (const Case& c : cases) {
        QSignalSpy added(sidebar.get(), &FilterSidebar::addRequested);
        QSignalSpy removed(sidebar.get(), &FilterSidebar::removeRequested);
        QSignalSpy renamed(sidebar.get(), &FilterSidebar::renameRequested);
        QSignalSpy activated(sidebar.get(), &FilterSidebar::activated);
        sidebar->setCurrent(c.type, c.id);
        EXPECT_EQ(sidebar->currentType(), c.type);
        EXPECT_EQ(sidebar->currentEntryId(), c.id);
        EXPECT_EQ(canAdd(), c.canAdd) << int(c.type);
        EXPECT_EQ(canRemove(), c.canRemove) << int(c.type);
        QTest::keyClick(&button("addFilterButton"), Qt::Key_Return);
        EXPECT_EQ(added.count(), c.canAdd ? 1 : 0);
        press(Qt::Key_F2);
        press(Qt::Key_Delete);
        EXPECT_EQ(last(renamed), QLatin1String(c.renamed));
        EXPECT_EQ(last(removed), QLatin1String(c.removed));
        QTest::mouseClick(&button("removeFilterButton"), Qt::LeftButton);
        EXPECT_EQ(removed.count(), c.canRemove ? 2 : 0);
        EXPECT_TRUE(tree().hasFocus());
        EXPECT_EQ(activated.count(), 0);
    }
}

TEST_F(FilterSidebarTest, MenuActsOnWhatItWasOpenedFor) {
    QSignalSpy renamed(sidebar.get(), &FilterSidebar::renameRequested);
    sidebar->setCurrent(FilterType::TAGS, 2);
    QContextMenuEvent event(QContextMenuEvent::Keyboard, {}, tree().mapToGlobal(QPoint()));
    QApplication::sendEvent(tree().viewport(), &event);
    auto* menu = sidebar->findChild<QMenu*>();
    ASSERT_NE(menu, nullptr);
    ASSERT_EQ(menu->actions().size(), 2);
    addEntries(FilterType::TAGS, list({"#0"}));
    reload();
    sidebar->setCurrent(FilterType::ALL);
    menu->actions().constFirst()->trigger();
    EXPECT_EQ(last(renamed), QStringLiteral("5|2|#b"));
}

TEST_F(FilterSidebarTest, KeysAreNotTakenByTheWindowsShortcuts) {
    QSignalSpy activated(sidebar.get(), &FilterSidebar::activated);
    QShortcut shortcut(QKeySequence(Qt::Key_Return), sidebar.get());
    QSignalSpy taken(&shortcut, &QShortcut::activated);
    press(Qt::Key_Return);
    EXPECT_EQ(activated.count(), 1);
    EXPECT_EQ(taken.count(), 0);
}

TEST_F(FilterSidebarTest, ReloadLeavesEverythingInItsPlace) {
    QStringList many;
    for (int i = 100; i < 200; ++i)
        many.append(QStringLiteral("#n%1").arg(i));
    addEntries(FilterType::TAGS, many);
    reload();
    tree().collapse(model->indexOf(FilterType::GENRES));
    tree().expand(model->indexOf(FilterType::RECORDING_STATUS));
    const qint64 id = model->getEntries(FilterType::TAGS).at(50).id;
    sidebar->setCurrent(FilterType::TAGS, id);
    tree().verticalScrollBar()->setValue(700);
    const int y = centerOf(FilterType::TAGS, id).y();

    QSignalSpy activated(sidebar.get(), &FilterSidebar::activated);
    addEntries(FilterType::COLLECTIONS, list({"One", "Two"}));
    addEntries(FilterType::TAGS, list({"#aa", "#zz"}));
    database.rows(QStringLiteral("UPDATE tags SET name=name || 'x' WHERE tag_id=%1").arg(id));
    reload();
    EXPECT_EQ(centerOf(FilterType::TAGS, id).y(), y);
    EXPECT_EQ(sidebar->currentEntryId(), id);
    EXPECT_EQ(selectedName(), sidebar->currentName());
    EXPECT_FALSE(isOpen(FilterType::GENRES));
    EXPECT_TRUE(isOpen(FilterType::RECORDING_STATUS));
    EXPECT_TRUE(tree().hasFocus());
    EXPECT_EQ(activated.count(), 0);
}

TEST_F(FilterSidebarTest, EntriesThatComeAndGo) {
    sidebar->setCurrent(FilterType::TAGS, 4);
    EXPECT_EQ(selectedName(), QString());
    addEntries(FilterType::TAGS, list({"#d"}));
    reload();
    EXPECT_EQ(selectedName(), QStringLiteral("#d"));

    sidebar->setCurrent(FilterType::TAGS, 2);
    database.rows(QStringLiteral("DELETE FROM tags WHERE tag_id=2"));
    reload();
    EXPECT_EQ(selectedName(), QString());
    EXPECT_EQ(sidebar->currentName(), QStringLiteral("#c"));
    EXPECT_TRUE(canRemove());
    database.rows(QStringLiteral("DELETE FROM tags"));
    reload();
    EXPECT_EQ(sidebar->currentType(), FilterType::TAGS);
    EXPECT_EQ(sidebar->currentEntryId(), -1);
    EXPECT_FALSE(canRemove());

    sidebar->setCurrent(FilterType::GENRES, 1);
    sidebar->collapseAll();
    EXPECT_EQ(sidebar->currentEntryId(), -1);
    EXPECT_FALSE(canRemove());
}
