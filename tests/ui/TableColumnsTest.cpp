#include "ui/table/TableColumns.h"

#include "BrowsingFixture.h"

#include <QHeaderView>
#include <QMenu>
#include <QScrollBar>

#include <algorithm>

namespace SettingsKeys = Stemhaven::SettingsKeys;

namespace {

class TableColumnsTest : public BrowsingFixture {
protected:
    QHeaderView& header() { return *table().horizontalHeader(); }

    /// From the left edge to the right one.
    QStringList titles() {
        QStringList shown;
        for (int place = 0; place < header().count(); ++place) {
            const int column = header().logicalIndex(place);
            shown.append(model().headerData(column, Qt::Horizontal, Qt::DisplayRole).toString().trimmed());
        }
        return shown;
    }

    QStringList firstTitles(int count) { return titles().mid(0, count); }

    QPoint middleOf(int place) {
        const int column = header().logicalIndex(place);
        const int left = header().sectionViewportPosition(column);
        return {left + header().sectionSize(column) / 2, header().height() / 2};
    }

    void drag(int from, int to) {
        QWidget* viewport = header().viewport();
        const QPoint start = middleOf(from);
        const QPoint end = middleOf(to) + QPoint(to > from ? 5 : -5, 0);
        QTest::mousePress(viewport, Qt::LeftButton, {}, start);
        for (int step = 1; step <= 8; ++step)
            QTest::mouseMove(viewport, start + (end - start) * step / 8);
        QTest::mouseRelease(viewport, Qt::LeftButton, {}, end);
    }

    QString current() { return titles().value(header().visualIndex(table().currentIndex().column())); }

    QMenu& menu(const QString& title) {
        const auto menus = window->findChildren<QMenu*>();
        for (QMenu* candidate : menus) {
            if (candidate->title().remove(QLatin1Char('&')) == title)
                return *candidate;
        }
        throw std::out_of_range(title.toStdString());
    }

    QAction* choice(const QString& title) {
        emit menu("Show").aboutToShow();
        const auto choices = menu("Show").actions();
        const auto found = std::find_if(
            choices.begin(), choices.end(), [&](const QAction* action) { return action->text() == title; });
        return found == choices.end() ? nullptr : *found;
    }

    const QStringList byDefault{"Progress", "Name", "Rating", "Tempo"};
};

} // namespace

TEST_F(TableColumnsTest, AreDraggedAndStayThereWithTheirSortAndWidth) {
    open();
    window->resize(1600, 800);
    table().sortByColumn(nameColumn(), Qt::DescendingOrder);
    settle();
    header().resizeSection(nameColumn() + 2, 123);
    table().setFocus();
    select({1});
    ASSERT_EQ(current(), "Progress");
    ASSERT_EQ(firstTitles(4), byDefault);

    drag(1, 3);
    const QStringList moved{"Progress", "Rating", "Tempo", "Name"};
    EXPECT_EQ(firstTitles(4), moved);
    // Until the table is told of the rows with the new order, it goes on with the old one.
    ASSERT_TRUE(waitForUnseenRows(model()));
    EXPECT_EQ(firstTitles(4), moved);
    EXPECT_EQ(model().index(0, 1).data(), "Gamma");
    for (int reload = 0; reload < 2; ++reload) {
        if (reload == 1)
            open();
        settle();
        EXPECT_EQ(firstTitles(4), moved);
        EXPECT_EQ(header().logicalIndex(3), 3);
        EXPECT_EQ(names(), (QStringList{"Gamma", "Beta", "Alpha"}));
        EXPECT_EQ(header().sortIndicatorSection(), 3);
        EXPECT_EQ(header().sortIndicatorOrder(), Qt::DescendingOrder);
        EXPECT_EQ(header().sectionSize(2), 123);
        // The selection is stored at the end of the program alone.
        EXPECT_EQ(selectedName(), reload == 0 ? "Beta" : "");
    }

    // A second one before the rows of the first have come.
    drag(3, 0);
    drag(2, 1);
    settle();
    EXPECT_EQ(firstTitles(4), (QStringList{"Name", "Rating", "Progress", "Tempo"}));
    EXPECT_EQ(QSettings().value(SettingsKeys::lastSortOrderIndex), 0);
}

TEST_F(TableColumnsTest, AreMovedByTheKeysOfTheTableAlone) {
    open();
    table().setFocus();
    table().setCurrentIndex(model().index(0, nameColumn()));
    for (const int place : {2, 3, 4}) {
        QTest::keyClick(&table(), Qt::Key_Right, Qt::AltModifier);
        if (place != 3)
            settle();
        EXPECT_EQ(titles().indexOf("Name"), place);
        EXPECT_EQ(current(), "Name");
    }
    for (int count = 0; count < 6; ++count)
        QTest::keyClick(&table(), Qt::Key_Left, Qt::AltModifier);
    settle();
    const QStringList first{"Name", "Progress", "Rating", "Tempo"};
    EXPECT_EQ(firstTitles(4), first);
    EXPECT_EQ(selectedName(), "Alpha");

    searchEdit().setFocus();
    QTest::keyClick(&searchEdit(), Qt::Key_Right, Qt::AltModifier);
    settle();
    EXPECT_EQ(firstTitles(4), first);
}

TEST_F(TableColumnsTest, AreShownAndHiddenButNeverAll) {
    open();
    table().sortByColumn(nameColumn(), Qt::DescendingOrder);
    settle();
    table().setCurrentIndex(model().index(0, nameColumn()));
    choice("Artist")->trigger();
    choice("Name")->trigger();
    settle();
    EXPECT_EQ(firstTitles(3), (QStringList{"Progress", "Artist", "Rating"}));
    EXPECT_EQ(current(), "Progress");
    // What sorts can be seen.
    EXPECT_EQ(header().sortIndicatorSection(), -1);
    EXPECT_EQ(QSettings().value(SettingsKeys::lastSortOrderIndex), -1);
    open();
    EXPECT_EQ(firstTitles(3), (QStringList{"Progress", "Artist", "Rating"}));

    const QStringList shown = titles();
    for (const QString& title : shown)
        choice(title)->trigger();
    settle();
    EXPECT_EQ(titles(), QStringList(shown.constLast()));
    EXPECT_FALSE(choice(shown.constLast())->isEnabled());
    choice("Name")->trigger();
    settle();
    EXPECT_EQ(titles(), (QStringList{"Name", shown.constLast()}));
}

TEST_F(TableColumnsTest, WhatIsLookedAtMostComesFirst) {
    open();
    const QStringList first{"Progress", "Name", "Rating", "Tempo", "Key", "Time Signature", "Last Modified"};
    EXPECT_EQ(firstTitles(7), first);
}

TEST_F(TableColumnsTest, ShowGenreFolderAndStatusesByTheirNames) {
    database.rows("UPDATE projects SET genre_id=1, lyrics_status=1 WHERE name='Beta'");
    database.rows("UPDATE projects SET filepath='/music/b, c/Ä/' WHERE name='Alpha'");
    open();
    for (const char* title : {"Genre", "Folder", "Arrangement", "Lyrics", "Recording", "Mix/Master"})
        choice(title)->trigger();
    settle();
    const auto shown = [this](const QString& title) {
        const int column = header().logicalIndex(static_cast<int>(titles().indexOf(title)));
        QStringList texts;
        for (int row = 0; row < model().rowCount(); ++row)
            texts.append(model().index(row, column).data().toString());
        return texts.join('|');
    };
    EXPECT_EQ(shown("Genre"), "|Pop|");
    EXPECT_EQ(shown("Folder"), "Ä|music|music");
    EXPECT_EQ(shown("Lyrics"), "Lyrics Status Unknown|No Lyrics|Lyrics Status Unknown");
    // What can be seen can be searched, and sorts.
    search("pop");
    EXPECT_EQ(names(), QStringList("Beta"));
    search("");
    table().sortByColumn(model().columnOf("folder"), Qt::AscendingOrder);
    settle();
    EXPECT_EQ(names(), (QStringList{"Beta", "Gamma", "Alpha"}));

    // The list of the builder is as long as before; the columns stay all the same.
    QSettings settings;
    settings.beginGroup(SettingsKeys::fields);
    EXPECT_EQ(settings.childGroups().size(), 22);
    const QStringList before = titles();
    open();
    EXPECT_EQ(titles(), before);
    EXPECT_EQ(shown("Folder"), "music|music|Ä");
    EXPECT_EQ(header().sortIndicatorSection(), model().columnOf("folder"));
}

TEST_F(TableColumnsTest, NamesStayInSightWhenTheTableIsScrolledSideways) {
    for (const Qt::LayoutDirection direction : {Qt::LeftToRight, Qt::RightToLeft}) {
        open();
        window->resize(1200, 500);
        window->setLayoutDirection(direction);
        settle();
        auto* bar = table().horizontalScrollBar();
        ASSERT_GT(bar->maximum(), 200);
        bar->setValue(bar->maximum());
        const bool isMirrored = direction == Qt::RightToLeft;
        const auto fromEdge = [&](int x) {
            return isMirrored ? table().viewport()->width() - 1 - x : x;
        };
        const QRect beta = table().visualRect(model().index(1, nameColumn()));
        EXPECT_EQ(isMirrored ? fromEdge(beta.right()) : beta.left(), 0);
        const QPoint place(fromEdge(20), beta.center().y());
        EXPECT_EQ(table().indexAt(place).data(), "Beta");
        QTest::mouseClick(table().viewport(), Qt::LeftButton, {}, place);
        settle();
        EXPECT_EQ(selectedName(), "Beta");
        EXPECT_EQ(bar->value(), bar->maximum());

        // What lies below the names comes out.
        table().setCurrentIndex(model().index(1, nameColumn() + 1));
        const QRect next = table().visualRect(table().currentIndex());
        EXPECT_FALSE(next.intersects(beta));
        EXPECT_TRUE(table().viewport()->rect().contains(next));

        bar->setValue(bar->maximum());
        for (const char* first : {"Alpha", "Gamma"}) {
            QTest::mouseClick(header().viewport(), Qt::LeftButton, {}, {fromEdge(20), header().height() / 2});
            settle();
            EXPECT_EQ(names().constFirst(), first);
            bar->setValue(bar->maximum());
        }
        QTest::mouseClick(header().viewport(), Qt::LeftButton, {}, {fromEdge(20), header().height() / 2});
        EXPECT_EQ(header().sortIndicatorSection(), -1);
        settle();
    }
}
