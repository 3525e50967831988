#pragma once

#include "ProjectsFixture.h"
#include "ui/sidebar/FolderTreeItemModel.h"

/// A sidebar's model over databases of their own, and words to fill their look-up tables with.
class SidebarFixture : public ProjectsFixture {
protected:
    void SetUp() override {
        ProjectsFixture::SetUp();
        model = std::make_unique<FolderTreeItemModel>(tasks());
    }

    void addEntries(FilterType type, const QStringList& names) {
        for (QString name : names) {
            const QString statement = "INSERT INTO %1(%2) VALUES('%3')";
            name.replace('\'', "''");
            database.rows(statement.arg(filterTypeTable(type), filterTypeNameColumn(type), name));
        }
    }

    void reload() {
        model->reload();
        ASSERT_TRUE(waitUntil([&] { return !model->isReloading(); }));
    }

    /// As the tree shows them.
    QStringList textsBelow(const QModelIndex& parent) {
        QStringList texts;
        for (int row = 0; row < model->rowCount(parent); ++row)
            texts.append(model->index(row, 0, parent).data().toString());
        return texts;
    }

    QStringList shown(FilterType type) { return textsBelow(model->index(static_cast<int>(type), 0)); }

    QStringList stored(FilterType type) {
        return database.rows(
            QString("SELECT * FROM %1 ORDER BY %2").arg(filterTypeTable(type), filterTypeIdColumn(type)));
    }

    std::unique_ptr<FolderTreeItemModel> model;
};
