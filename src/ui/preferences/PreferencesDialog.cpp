#include "ui/preferences/PreferencesDialog.h"

#include "app/errors/Guarded.h"
#include "ui/preferences/AdvancedPage.h"
#include "ui/preferences/ColumnsPage.h"
#include "ui/preferences/MonitorPage.h"
#include "ui/preferences/StatusPage.h"
#include "ui/widgets/Icons.h"
#include "ui/widgets/ScreenFitting.h"

#include <QHBoxLayout>
#include <QTabBar>
#include <QTabWidget>
#include <QToolButton>

#include <algorithm>

namespace {

constexpr QSize initialSize{600, 464};
constexpr int smallestIcon = 20;

} // namespace

PreferencesDialog::PreferencesDialog(
    Stemhaven::TaskManager& tasks, Stemhaven::ProjectMonitor& monitor, EditHistory& history,
    Stemhaven::QueryBuilder* builder, QWidget* parent)
    : QDialog(parent),
      m_pages(new QTabWidget),
      m_buttons(new QHBoxLayout) {
    setWindowTitle(tr("Preferences"));
    m_pages->setObjectName(QStringLiteral("tabWidget"));
    m_pages->setDocumentMode(true);
    m_pages->tabBar()->hide();
    // It would hand the focus on to the hidden bar, and the Tab key would lead no further.
    m_pages->setFocusPolicy(Qt::NoFocus);

    m_columns = new ColumnsPage(*builder);
    connect(m_columns, &ColumnsPage::columnsChanged, this, &PreferencesDialog::columnsChanged);
    m_buttons->setSpacing(4);
    m_buttons->addStretch();
    addPage(new MonitorPage(tasks, monitor), Glyph::Monitor, tr("&Monitor"), "monitorTabButton")
        ->setChecked(true);
    addPage(m_columns, Glyph::Columns, tr("&Columns"), "columnsTabButton");
    addPage(new StatusPage(tasks, history), Glyph::StatusLabels, tr("&Status"), "statusTabButton");
    addPage(new AdvancedPage, Glyph::Advanced, tr("A&dvanced"), "advancedTabButton");
    m_buttons->addStretch();

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(8, 12, 8, 4);
    layout->setSpacing(0);
    layout->addLayout(m_buttons);
    layout->addWidget(m_pages, 1);
    resize(initialSize);
    fitToScreen(*this);
}

void PreferencesDialog::showColumns() {
    m_columns->showFields();
}

QToolButton*
PreferencesDialog::addPage(QWidget* page, Glyph glyph, const QString& text, const char* buttonName) {
    auto* button = new QToolButton;
    button->setObjectName(QString::fromLatin1(buttonName));
    button->setText(text);
    button->setIcon(::icon(glyph));
    const int side = std::max(smallestIcon, fontMetrics().height());
    button->setIconSize({side, side});
    button->setToolButtonStyle(
        button->icon().isNull() ? Qt::ToolButtonTextOnly : Qt::ToolButtonTextBesideIcon);
    button->setAutoRaise(true);
    button->setCheckable(true);
    button->setAutoExclusive(true);
    button->setFocusPolicy(Qt::StrongFocus);
    m_buttons->addWidget(button);
    const int index = m_pages->addTab(page, text);
    connect(button, &QToolButton::toggled, this, [this, page](bool on) {
        if (on)
            Stemhaven::guarded(
                tr("Preferences tab selection failed."), [&] { m_pages->setCurrentWidget(page); });
    });
    // By Ctrl and Tab.
    connect(m_pages, &QTabWidget::currentChanged, button, [button, index](int current) {
        if (current == index)
            button->setChecked(true);
    });
    return button;
}
