#pragma once

#include "WindowFixture.h"
#include "ui/details/ProgressSlider.h"
#include "ui/sidebar/FilterSidebar.h"
#include "ui/table/StarEditor.h"

#include <QComboBox>

#include <functional>

/// The main window over three projects, and words to select, file and edit them.
class BrowsingFixture : public WindowFixture {
protected:
    void SetUp() override {
        ProjectsFixture::SetUp();
        insert({"Alpha", "Beta", "Gamma"});
        database.rows("UPDATE projects SET song_key='C', song_signature_numerator=4, "
                      "song_signature_denominator=4");
        database.rows("INSERT INTO tags VALUES(1, '#one'), (2, '#two & more')");
        database.rows("INSERT INTO genres VALUES(1, 'Pop', NULL)");
        database.rows("INSERT INTO collections VALUES(1, '100% <b>Album</b> %1')");
    }

    /// The status line afterwards.
    QString activate(FilterType type, const QString& name = {}) {
        qint64 id = -1;
        for (const auto& entry : child<FolderTreeItemModel>().getEntries(type)) {
            if (entry.name == name)
                id = entry.id;
        }
        emit child<FilterSidebar>().activated(type, id, name);
        settle();
        return status();
    }

    void trigger(QAction* action) {
        action->trigger();
        settle();
    }

    StarEditor& stars() { return child<StarEditor>(); }

    ProgressSlider& slider() { return child<ProgressSlider>(); }

    QComboBox& lyrics() { return child<QComboBox>("lyricsCombo"); }

    QString text(const char* label) { return child<QLabel>(label).text(); }

    QStringList values(const char* columns) {
        return database.rows(QString("SELECT %1 FROM projects ORDER BY project_id").arg(columns));
    }

    /// A press, three repetitions, and what happens meanwhile, before the key is let go.
    static void holdKey(QWidget& widget, Qt::Key key, const std::function<void()>& meanwhile = {}) {
        QTest::simulateEvent(&widget, true, key, Qt::NoModifier, {}, false);
        for (int repetition = 0; repetition < 3; ++repetition)
            QTest::simulateEvent(&widget, true, key, Qt::NoModifier, {}, true);
        if (meanwhile)
            meanwhile();
        QTest::simulateEvent(&widget, false, key, Qt::NoModifier, {}, false);
    }
};
