#include "ui/table/ColumnLayout.h"

#include "app/SettingsKeys.h"
#include "database/QueryBuilder.h"

#include <QSettings>

#include <gtest/gtest.h>

#include <memory>

namespace {

/// The first fields and how many there are: those that are shown as they are, "-" before the others.
QStringList firstAfterRestart(int count) {
    const std::unique_ptr<Stemhaven::QueryBuilder> builder(
        Stemhaven::QueryBuilder::defaultProjectsTableBuilder());
    ColumnLayout::restore(*builder);
    QStringList names;
    const auto fields = builder->getFields();
    for (const auto& field : fields.first(count))
        names.append((field.visible != 0 ? "" : "-") + field.name);
    return names << QString::number(fields.size());
}

} // namespace

TEST(ColumnLayoutTest, WhatIsStoredWronglyLosesNoColumn) {
    struct Case {
        QVariant stored;
        QStringList first;
    };

    const QStringList byDefault{"progress", "name", "-release_name", "28"};
    const Case cases[] = {
        {{}, byDefault},
        {QStringList(), byDefault},
        {12, byDefault},
        {QByteArray("\xff\xfe\0", 3), byDefault},
        {QStringList{"no_such_column", "", "-", "project_id"}, byDefault},
        // Nothing would be left to see.
        {QStringList{"-name", "-progress"}, byDefault},
        {QString("name"), {"name", "progress", "-release_name", "28"}},
        {QStringList{"bpm", "-name", "name", "bpm", "gone"}, {"bpm", "-name", "progress", "28"}},
    };
    for (const auto& [stored, first] : cases) {
        QSettings().setValue(Stemhaven::SettingsKeys::columnLayout, stored);
        EXPECT_EQ(firstAfterRestart(3), first) << qPrintable(first.join(' '));
    }
    QSettings().clear();
}

TEST(ColumnLayoutTest, AnOrderThatTheBuilderHasTakenStays) {
    QSettings().clear();
    const std::unique_ptr<Stemhaven::QueryBuilder> builder(
        Stemhaven::QueryBuilder::defaultProjectsTableBuilder());
    auto fields = builder->getFields();
    for (const char* name : {"notes", "SUFID", "project_type", "genre_id"})
        fields.append({name, name, Stemhaven::Format::Text, 0, 0, 30});
    fields.swapItemsAt(0, 1);
    for (std::uint32_t order = 0; auto& field : fields)
        field.order = order++;
    builder->setFields(fields);
    builder->saveSettings();
    EXPECT_EQ(firstAfterRestart(3), (QStringList{"name", "progress", "-release_name", "32"}));
    QSettings().clear();
}
