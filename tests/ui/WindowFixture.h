#pragma once

#include "ProjectsFixture.h"
#include "monitor/ProjectMonitor.h"
#include "ui/MainWindow.h"
#include "ui/actions/WindowActions.h"
#include "ui/details/DetailsPane.h"
#include "ui/sidebar/FolderTreeItemModel.h"
#include "ui/table/EmptyState.h"
#include "ui/table/KeyEventTableView.h"
#include "ui/table/SearchField.h"

#include <QAction>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>

#include <optional>

/// The main window over databases of its own, and words to use it with.
class WindowFixture : public ProjectsFixture {
protected:
    /// A window as after the program's start, with what its first reloads brought.
    void open() {
        window.reset();
        window.emplace(tasks(), monitor);
        QSignalSpy loaded(&*window, &MainWindow::firstLoaded);
        QSignalSpy filled(&child<FolderTreeItemModel>(), &FolderTreeItemModel::changed);
        window->show();
        QApplication::setActiveWindow(&*window);
        ASSERT_TRUE(waitUntil([&] { return loaded.count() == 1 && !filled.isEmpty(); }));
        settle();
    }

    /// Until nothing is queued or under way any more.
    void settle() {
        do {
            ASSERT_TRUE(waitForReloads(model()));
            database.rows("SELECT 1");
        } while (model().isReloading() || child<FolderTreeItemModel>().isReloading());
    }

    template <typename T>
    T& child(const char* name = nullptr) {
        return *window->findChild<T*>(name);
    }

    ProjectsTableModel& model() { return child<ProjectsTableModel>(); }

    KeyEventTableView& table() { return child<KeyEventTableView>(); }

    SearchField& searchEdit() { return child<SearchField>(); }

    EmptyState& emptyState() { return child<EmptyState>(); }

    DetailsPane& details() { return child<DetailsPane>(); }

    WindowActions& actions() { return child<WindowActions>(); }

    QString status() { return child<QLabel>("statusLabel").text(); }

    QStringList names() {
        QStringList shown;
        for (int row = 0; row < model().rowCount(); ++row)
            shown.append(model().index(row, nameColumn()).data().toString());
        return shown;
    }

    int nameColumn() {
        int column = 0;
        while (model().headerData(column, Qt::Horizontal, Qt::DisplayRole).toString().trimmed() != "Name")
            ++column;
        return column;
    }

    /// Of the one row that is selected.
    QString selectedName() {
        const auto rows = table().selectionModel()->selectedRows(nameColumn());
        return rows.size() == 1 ? rows.constFirst().data().toString() : QString();
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

    void search(const QString& term) {
        searchEdit().setText(term);
        settle();
    }

    Stemhaven::ProjectMonitor monitor{tasks()};
    std::optional<MainWindow> window;
};
