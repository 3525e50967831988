#include "ProjectsFixture.h"
#include "ui/table/KeyEventTableView.h"
#include "ui/table/ProgressBar.h"
#include "ui/table/StarRating.h"

#include <QHeaderView>

namespace {

class ProjectsTableModelTest : public ProjectsFixture {
protected:
    void SetUp() override {
        ProjectsFixture::SetUp();
        builder.loadSettings();
    }

    bool load() {
        model->reload();
        return waitForReloads(*model);
    }

    QVariant value(int row, const char* field) const {
        return model->index(row, builder.fieldIndexByName(field)).data();
    }

    Stemhaven::QueryBuilder builder;
    std::unique_ptr<ProjectsTableModel> model = std::make_unique<ProjectsTableModel>(tasks(), &builder);
};

} // namespace

TEST_F(ProjectsTableModelTest, FindsRowsByIdAndKeepsThemWhenAReloadFails) {
    insert({"Air", "Moon"});
    insert({"Tide"});
    builder.sortBy("name", Qt::DescendingOrder);
    EXPECT_EQ(model->rowForProjectID(1), -1);
    ASSERT_TRUE(load());
    EXPECT_FALSE(model->index(0, 12).isValid());
    EXPECT_EQ(model->rowForProjectID(1), 2);
    EXPECT_EQ(model->rowForProjectID(3), 0);
    EXPECT_EQ(model->rowForProjectID(99), -1);
    EXPECT_EQ(model->projectIDForRow(0), 3);
    EXPECT_EQ(model->projectIDForRow(3), -1);
    EXPECT_EQ(model->projectIDForRow(-1), -1);

    QSignalSpy failed(model.get(), &ProjectsTableModel::reloadFailed);
    QSignalSpy changed(model.get(), &QAbstractItemModel::layoutChanged);
    builder.sortBy("no_such_column", Qt::AscendingOrder);
    ASSERT_TRUE(load());
    EXPECT_EQ(failed.count(), 1);
    EXPECT_EQ(changed.count(), 0);
    EXPECT_EQ(value(0, "name"), "Tide");
    EXPECT_EQ(log.count("C: Could not reload projects table!"), 1);
}

TEST_F(ProjectsTableModelTest, ViewBearsLateAndVanishingRows) {
    EXPECT_EQ(model->columnCount(), -1);
    KeyEventTableView view;
    view.setModel(model.get());
    view.setSortingEnabled(true);
    view.resize(600, 400);
    view.show();
    view.grab();
    insertNumbered(500);
    ASSERT_TRUE(load());
    view.grab();
    EXPECT_EQ(view.horizontalHeader()->count(), 11);
    EXPECT_EQ(view.verticalHeader()->count(), 500);

    const QPersistentModelIndex last = model->index(499, builder.fieldIndexByName("progress"));
    view.scrollToBottom();

    builder.search("000007");
    model->reload();
    ASSERT_TRUE(waitForUnseenRows(*model));
    EXPECT_EQ(model->rowCount(), 1);
    EXPECT_EQ(last.data(), QVariant());
    view.grab();
    ASSERT_TRUE(waitForReloads(*model));
    EXPECT_FALSE(model->hasUnannouncedRows());
    view.grab();
    EXPECT_EQ(value(0, "name"), "Song 000007");
}

TEST_F(ProjectsTableModelTest, RowsKeepTheColumnsThatTheyWereReadWith) {
    insert("Tide", "progress=0.5, star_rating=3");
    ASSERT_TRUE(load());
    auto fields = builder.getFields();
    fields[0].visible = 0;
    const auto before = builder.getFields();
    builder.setFields(fields);
    EXPECT_TRUE(model->index(0, 0).data().canConvert<ProgressBar>());
    EXPECT_EQ(model->index(0, 1).data(), "Tide");
    EXPECT_EQ(model->index(0, 2).data().value<StarRating>().starCount(), 3);

    // Rows that are there before the table is told of them, and columns that have changed back meanwhile.
    model->reload();
    builder.setFields(before);
    ASSERT_TRUE(waitForUnseenRows(*model));
    EXPECT_EQ(model->columnCount(), before.size() - 11);
    EXPECT_FALSE(model->index(0, 0).data().isValid());
    EXPECT_EQ(model->index(0, 1).data(), "Tide");
    EXPECT_EQ(model->index(0, 2).data().value<StarRating>().starCount(), 3);
    EXPECT_EQ(model->headerData(1, Qt::Horizontal, Qt::DisplayRole), "Name ");
    EXPECT_EQ(model->projectIDForRow(0), 1);
    ASSERT_TRUE(waitForReloads(*model));
    EXPECT_EQ(model->index(0, 0).data(), "Tide");
    EXPECT_EQ(log.count("Could not convert"), 0);
}

TEST_F(ProjectsTableModelTest, ReadsAreSafeWhileTheWorkerExchanges) {
    insertNumbered(300);
    ASSERT_TRUE(load());
    QSignalSpy reloaded(model.get(), &ProjectsTableModel::reloaded);
    constexpr int reloads = 60;
    for (int i = 0; i < reloads; ++i) {
        builder.search(i % 2 == 0 ? "Song 00000" : QString());
        model->reload();
    }
    int read = 0;
    while (reloaded.count() < reloads) {
        for (int row = 0; row < 300; row += 7) {
            const std::lock_guard rows(*model);
            const QString name = value(row, "name").toString();
            EXPECT_EQ(name.isEmpty(), row >= model->rowCount());
            ++read;
        }
        QCoreApplication::processEvents();
    }
    EXPECT_GT(read, 0);
    EXPECT_EQ(model->rowCount(), 300);
}

TEST_F(ProjectsTableModelTest, MayEndWhileReloadsAreUnderWay) {
    insertNumbered(2000);
    model->reload();
    model->reload();
    model.reset();
    // The worker has come to the end of everything queued before.
    EXPECT_EQ(database.rows("SELECT 1"), QStringList("1"));

    // A worker that never comes to them: what it would have freed goes with its manager.
    ASSERT_TRUE(stopWorker());
    auto unlucky = std::make_unique<ProjectsTableModel>(tasks(), &builder);
    unlucky->reload();
    unlucky.reset();
    database.tasks.reset();
}
