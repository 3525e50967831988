#include "BrowsingFixture.h"
#include "app/errors/ErrorHandler.h"
#include "support/TestBundle.h"
#include "ui/widgets/ImageView.h"

#include <QAccessible>
#include <QDir>
#include <QHelpEvent>
#include <QToolTip>

namespace {

/// Three projects with bundles in a folder that the monitor knows.
class MissingProjectsTest : public BrowsingFixture {
protected:
    void SetUp() override {
        BrowsingFixture::SetUp();
        database.rows(
            QString("UPDATE projects SET name=replace(name, 'Alpha', 'It''s 100% A'), filepath='%1'")
                .arg(music));
        database.rows("UPDATE projects SET filename=name || '.logicx'");
        for (const char* name : {alpha, "Beta", "Gamma"})
            TestBundle().write(bundle(name).toStdString());
        bool isLoaded = false;
        monitor.loadProjectPaths([&] { isLoaded = true; });
        ASSERT_TRUE(waitUntil([&] { return isLoaded; }));
        open();
    }

    QString bundle(const QString& name) const { return music + name + ".logicx"; }

    void takeAway(const QString& name) {
        QDir(bundle(name)).removeRecursively();
        monitor.directoryChanged(bundle(name), true);
    }

    void putBack(const QString& name) {
        TestBundle().write(bundle(name).toStdString());
        monitor.directoryChanged(bundle(name), true);
    }

    /// The names of the rows that are dimmed.
    QStringList dimmed() {
        QStringList found;
        for (int row = 0; row < model().rowCount(); ++row) {
            const QModelIndex index = model().index(row, nameColumn());
            if (index.data(ProjectsTableModel::NotFoundRole).toBool())
                found.append(index.data().toString());
        }
        return found;
    }

    /// What the mouse is told over a cell of the first row.
    QString tipOver(int column) {
        QToolTip::hideText();
        const QPoint place = table().visualRect(model().index(0, column)).center();
        QHelpEvent event(QEvent::ToolTip, place, table().viewport()->mapToGlobal(place));
        QApplication::sendEvent(table().viewport(), &event);
        return QToolTip::text();
    }

    static constexpr const char* alpha = "It's 100% A";
    const QString music = database.folder.path() + "/music/";
};

} // namespace

TEST_F(MissingProjectsTest, AreDimmedAndSaySoUntilTheyComeBack) {
    select({0});
    auto& notice = child<QLabel>("notFoundLabel");
    auto& openButton = child<QPushButton>("openProjectButton");
    const auto& picture = child<ImageView>();
    const QString ownTip = actions().open->statusTip();
    EXPECT_EQ(dimmed(), QStringList());
    EXPECT_EQ(tipOver(nameColumn()), QString());
    EXPECT_FALSE(notice.isVisible());

    takeAway(alpha);
    ASSERT_TRUE(waitUntil([&] { return notice.isVisible(); }));
    EXPECT_EQ(notice.text(), "Not found");
    EXPECT_TRUE(text("notFoundRemedyLabel").contains("by itself"));
    EXPECT_TRUE(waitUntil([&] { return picture.accessibleDescription() == "Not found"; }));
    EXPECT_EQ(dimmed(), QStringList(alpha));
    EXPECT_EQ(tipOver(nameColumn()), "Not found");
    auto& cells = *QAccessible::queryAccessibleInterface(&table())->tableInterface();
    for (int column = 0; column < model().columnCount(); ++column) {
        EXPECT_EQ(cells.cellAt(0, column)->text(QAccessible::Description), "Not found") << column;
        EXPECT_EQ(cells.cellAt(1, column)->text(QAccessible::Description), QString()) << column;
    }
    EXPECT_EQ(cells.cellAt(0, nameColumn())->text(QAccessible::Name), QString(alpha) + ", Not found");
    EXPECT_EQ(model().headerData(0, Qt::Vertical, Qt::AccessibleTextRole), QString(alpha) + ", Not found");
    for (QAction* action : {actions().open, actions().showInFinder, actions().showPackageContents}) {
        EXPECT_FALSE(action->isEnabled());
        EXPECT_EQ(action->statusTip(), openButton.toolTip());
    }
    EXPECT_FALSE(openButton.isEnabled());
    EXPECT_FALSE(openButton.toolTip().isEmpty());
    EXPECT_TRUE(actions().ignore->isEnabled());

    // What the user says of it is written as ever.
    QTest::keyClick(&stars(), Qt::Key_4);
    settle();
    EXPECT_EQ(values("star_rating"), (QStringList{"4", "0", "0"}));

    select({1});
    EXPECT_TRUE(openButton.isEnabled());
    EXPECT_FALSE(notice.isVisible());
    select({1, 0});
    EXPECT_EQ(notice.text(), "Not found: 1 of 2");
    takeAway("Beta");
    EXPECT_TRUE(waitUntil([&] { return notice.text() == "Not found"; }));
    EXPECT_EQ(dimmed(), (QStringList{alpha, "Beta"}));

    putBack(alpha);
    putBack("Beta");
    EXPECT_TRUE(waitUntil([&] { return !notice.isVisible(); }));
    EXPECT_EQ(dimmed(), QStringList());
    EXPECT_TRUE(actions().open->isEnabled());
    EXPECT_TRUE(openButton.isEnabled());
    EXPECT_EQ(actions().open->statusTip(), ownTip);
    select({0});
    EXPECT_TRUE(waitUntil([&] { return picture.accessibleDescription() == "No picture"; }));
    EXPECT_EQ(values("star_rating"), (QStringList{"4", "0", "0"}));
}

TEST_F(MissingProjectsTest, OpeningOneSaysWhyItCannotBeAndARecordWithoutAPlaceIsOne) {
    // A file of that name in the working folder is another one.
    const QString before = QDir::currentPath();
    QDir::setCurrent(music);
    database.rows("UPDATE projects SET filepath='' WHERE name='Beta'");
    emit monitor.projectsDbModified();
    takeAway(alpha);
    EXPECT_TRUE(waitUntil([&] { return dimmed() == QStringList{alpha, "Beta"}; }));
    settle();

    QStringList told;
    auto& handler = Stemhaven::ErrorHandler::instance();
    handler.setPresenter([&](const auto& details) { told.append(details.title + ": " + details.message); });
    for (const int row : {0, 1}) {
        select({row});
        table().setFocus();
        QTest::keyClick(&table(), Qt::Key_Return);
        EXPECT_TRUE(waitUntil([&] { return told.size() == 2 * row + 1; }));
        emit table().doubleClicked(model().index(row, 0));
        EXPECT_TRUE(waitUntil([&] { return told.size() == 2 * row + 2; }));
    }
    handler.setPresenter([](const auto& /*details*/) {});
    told.removeDuplicates();
    EXPECT_EQ(told, QStringList("Could not open selected project!: Project wasn't found"));
    QDir::setCurrent(before);

    // An undone deletion brings the record back as what it was.
    select({1});
    actions().deleteRecord->trigger();
    ASSERT_TRUE(answer("Delete record"));
    EXPECT_EQ(names(), (QStringList{alpha, "Gamma"}));
    trigger(actions().undo);
    EXPECT_TRUE(waitUntil([&] { return dimmed() == QStringList{alpha, "Beta"}; }));
}
