#pragma once

#include "ProjectsFixture.h"
#include "ui/sidebar/FolderTreeItemModel.h"

#include <QSignalSpy>

/// A sidebar's model over databases of their own, and words to fill their look-up tables with.
class SidebarFixture : public ProjectsFixture {
protected:
    void SetUp() override {
        ProjectsFixture::SetUp();
        model = std::make_unique<FolderTreeItemModel>(tasks());
    }

    void addEntries(FilterType type, const QStringList& names) {
        for (QString name : names) {
            database.rows(QStringLiteral("INSERT INTO %1(%2) VALUES('%3')")
                              .arg(
                                  filterTypeTable(type), filterTypeNameColumn(type),
                                  name.replace(u'\'', QStringLiteral("''"))));
        }
    }

    void reload() {
        model->reload();
        ASSERT_TRUE(waitUntil([&] { return !model->isReloading(); }));
    }

    /// The entries as the tree shows them.
    QStringList shown(FilterType type) {
        const QModelIndex group = model->index(static_cast<int>(type), 0);
        QStringList names;
        for (int row = 0; row < model->rowCount(group); ++row)
            names.append(model->index(row, 0, group).data().toString());
        return names;
    }

    QStringList stored(FilterType type) {
        return database.rows(QStringLiteral("SELECT * FROM %1 ORDER BY %2")
                                 .arg(filterTypeTable(type), filterTypeIdColumn(type)));
    }

    std::unique_ptr<FolderTreeItemModel> model;
};

inline QStringList list(std::initializer_list<const char*> names) {
    QStringList result;
    for (const char* name : names)
        result.append(QString::fromUtf8(name));
    return result;
}
