#pragma once

#include "WindowFixture.h"
#include "ui/details/ProgressSlider.h"
#include "ui/sidebar/FilterSidebar.h"
#include "ui/table/StarEditor.h"

#include <QComboBox>
#include <QMessageBox>
#include <QPushButton>

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

    /// Selects the rows, the last of them being the current one, and waits for its details.
    void select(const QList<int>& rows) {
        auto* selection = table().selectionModel();
        selection->clearSelection();
        for (const int row : rows) {
            selection->setCurrentIndex(
                model().index(row, 0), QItemSelectionModel::Select | QItemSelectionModel::Rows);
        }
        const qint64 id = model().projectIDForRow(rows.constLast());
        ASSERT_TRUE(waitUntil(
            [&] { return details().project().id == id && details().projects().size() == rows.size(); }));
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

    /// The open question, with the button of that text clicked.
    bool answer(const char* button) {
        auto* question = window->findChild<QMessageBox*>();
        if (!question || !question->isVisible())
            return false;
        for (auto* candidate : question->buttons()) {
            if (candidate->text().remove(QLatin1Char('&')) == button) {
                candidate->click();
                settle();
                return true;
            }
        }
        return false;
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
