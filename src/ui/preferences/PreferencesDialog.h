#pragma once

#include <QDialog>

class ColumnsPage;
class EditHistory;
class QBoxLayout;
class QTabWidget;
class QToolButton;
enum class Glyph : char16_t;

namespace Stemhaven {
class ProjectMonitor;
class QueryBuilder;
class TaskManager;
} // namespace Stemhaven

/// The pages with what the user can set. Everything takes effect at once.
class PreferencesDialog : public QDialog {
    Q_OBJECT

public:
    /// All outlive the dialog.
    PreferencesDialog(
        Stemhaven::TaskManager& tasks, Stemhaven::ProjectMonitor& monitor, EditHistory& history,
        Stemhaven::QueryBuilder* builder, QWidget* parent = nullptr);

    /// The columns have been changed elsewhere.
    void showColumns();

signals:
    /// The builder has other columns, and no sort.
    void columnsChanged();

private:
    QToolButton* addPage(QWidget* page, Glyph glyph, const QString& text, const char* buttonName);

    ColumnsPage* m_columns = nullptr;
    QTabWidget* m_pages;
    QBoxLayout* m_buttons;
};
