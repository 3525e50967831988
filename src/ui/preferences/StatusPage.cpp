#include "ui/preferences/StatusPage.h"

#include "app/errors/DbException.h"
#include "app/errors/Guarded.h"
#include "database/FilterStatements.h"
#include "database/QueryTask.h"
#include "database/TaskManager.h"
#include "ui/edits/EditHistory.h"
#include "ui/sidebar/AddFilterForm.h"
#include "ui/sidebar/RemoveFilter.h"
#include "ui/widgets/ElidedTip.h"
#include "ui/widgets/PageHeading.h"

#include <QComboBox>
#include <QDebug>
#include <QGroupBox>
#include <QKeyEvent>
#include <QLabel>
#include <QListWidget>
#include <QPointer>
#include <QPushButton>
#include <QSqlQuery>
#include <QVBoxLayout>

using Stemhaven::DbException;
using Stemhaven::guarded;

namespace {

constexpr int IdRole = Qt::UserRole;
constexpr int NameRole = IdRole + 1;
constexpr int smallestListHeight = 84;

} // namespace

StatusPage::StatusPage(Stemhaven::TaskManager& tasks, EditHistory& history, QWidget* parent)
    : QWidget(parent),
      m_tasks(tasks),
      m_history(history),
      m_kinds(new QComboBox),
      m_labels(new QListWidget),
      m_addButton(new QPushButton(tr("&Add"))),
      m_removeButton(new QPushButton(tr("&Remove"))),
      m_renameButton(new QPushButton(tr("Re&name"))) {
    m_kinds->addItems({tr("Arrangement"), tr("Lyrics"), tr("Recording"), tr("Mix/Master")});
    layOut();
    setUpEvents();
    updateButtons();
    reload();
}

void StatusPage::layOut() {
    m_kinds->setObjectName(QStringLiteral("statusLabelsCombo"));
    m_labels->setObjectName(QStringLiteral("statusLabelsList"));
    m_labels->setAccessibleName(tr("Status Labels"));
    m_labels->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_labels->setUniformItemSizes(true);
    m_labels->setMinimumHeight(smallestListHeight);
    m_addButton->setObjectName(QStringLiteral("addStatusButton"));
    m_removeButton->setObjectName(QStringLiteral("removeStatusButton"));
    m_renameButton->setObjectName(QStringLiteral("renameStatusButton"));

    auto* kindLabel = new QLabel(tr("Status Labels &for"));
    kindLabel->setBuddy(m_kinds);
    auto* kindLine = new QHBoxLayout;
    kindLine->addWidget(kindLabel);
    kindLine->addWidget(m_kinds);
    kindLine->addStretch();
    auto* buttons = new QHBoxLayout;
    for (QPushButton* button : {m_addButton, m_removeButton, m_renameButton}) {
        button->setAutoDefault(false);
        buttons->addWidget(button);
    }
    buttons->addStretch();

    auto* group = new QGroupBox(tr("Status Labels"));
    auto* groupLayout = new QVBoxLayout(group);
    groupLayout->addLayout(kindLine);
    groupLayout->addWidget(m_labels, 1);
    groupLayout->addLayout(buttons);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(new PageHeading(
        tr("Status"),
        tr("Adjust Stemhaven's status labels to match your workflow and preference. Running backups is "
           "recommended before changing these.")));
    layout->addWidget(group, 1);
    setFocusProxy(m_kinds);
}

void StatusPage::setUpEvents() {
    const auto perform = [this](QPushButton* button, const QString& failureTitle, auto what) {
        connect(button, &QPushButton::clicked, this, [failureTitle, what] { guarded(failureTitle, what); });
    };
    perform(m_addButton, tr("Error while adding status"), [this] { addLabel(); });
    perform(m_renameButton, tr("Error while renaming status"), [this] { renameLabel(); });
    perform(m_removeButton, tr("Error while removing status"), [this] { removeLabel(); });
    connect(m_labels, &QListWidget::itemDoubleClicked, m_renameButton, &QPushButton::click);
    m_labels->installEventFilter(this);
    connect(m_labels, &QListWidget::currentRowChanged, this, [this] {
        guarded(tr("Selecting status label failed."), [this] { updateButtons(); });
    });
    connect(m_kinds, &QComboBox::currentIndexChanged, this, [this] {
        guarded(tr("Error while selecting status table"), [this] {
            m_selected = defaultStatusId;
            reload();
        });
    });
    // By these buttons, or by undoing what they did.
    connect(&m_history, &EditHistory::written, this, &StatusPage::reload);
}

FilterType StatusPage::kind() const {
    return statusFilterTypes.at(static_cast<std::size_t>(m_kinds->currentIndex()));
}

void StatusPage::reload() {
    const FilterType type = kind();
    auto task = std::make_shared<Stemhaven::QueryTask>(
        Stemhaven::FilterStatements::selectStatuses(type), m_tasks.mainDatabase());
    task->setQueryCallback(
        [page = QPointer(this), type](const auto& /*task*/, int /*rows*/, QSqlQuery* labels) {
            if (page)
                page->take(type, *labels);
        });
    task->setSqlErrorCallback([](const auto& /*task*/, const DbException& error) {
        qCritical() << "Could not load status labels for settings..." << error;
        Stemhaven::ErrorHandler::instance().reportError(
            tr("Could not load status labels."), error, QtCriticalMsg);
    });
    m_tasks.addTask(std::move(task));
}

void StatusPage::take(FilterType type, QSqlQuery& labels) {
    if (type != kind())
        return;
    const qint64 selected = m_selected;
    m_labels->clear();
    while (labels.next()) {
        const QString name = labels.value(0).toString();
        auto* item = new QListWidgetItem(QString(name).replace(u'\n', u' '), m_labels);
        item->setData(IdRole, labels.value(1));
        item->setData(NameRole, name);
        // A line may have no room for it.
        item->setToolTip(wrappingTip(name));
        if (labels.value(1).toLongLong() == selected)
            m_labels->setCurrentItem(item);
    }
    if (m_labels->currentRow() < 0)
        m_labels->setCurrentRow(0);
    updateButtons();
}

void StatusPage::updateButtons() {
    const auto* current = m_labels->currentItem();
    m_removeButton->setEnabled(current != nullptr);
    m_renameButton->setEnabled(current != nullptr);
    if (current)
        m_selected = current->data(IdRole).toLongLong();
}

void StatusPage::addLabel() {
    auto* form = new AddFilterForm(m_tasks, m_history, kind(), {}, AddFilterForm::EditType::Add, -1, this);
    connect(form, &AddFilterForm::onFilterAdded, this, [this](FilterType type, const QString&, qint64 id) {
        if (type != kind())
            return;
        m_selected = id;
        reload();
    });
    form->open();
}

void StatusPage::renameLabel() {
    if (const auto* label = m_labels->currentItem()) {
        auto* form = new AddFilterForm(
            m_tasks, m_history, kind(), label->data(NameRole).toString(), AddFilterForm::EditType::Rename,
            label->data(IdRole).toLongLong(), this);
        form->open();
    }
}

void StatusPage::removeLabel() {
    if (const auto* label = m_labels->currentItem()) {
        auto* form = new RemoveFilter(
            m_tasks, m_history, kind(), label->data(IdRole).toLongLong(), label->data(NameRole).toString(),
            this);
        form->open();
    }
}

bool StatusPage::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::KeyPress) {
        const auto& key = *static_cast<QKeyEvent*>(event);
        if (key.matches(QKeySequence::Delete) || key.key() == Qt::Key_Backspace) {
            m_removeButton->click();
            return true;
        }
        if (key.key() == Qt::Key_F2) {
            m_renameButton->click();
            return true;
        }
    }
    return QWidget::eventFilter(watched, event);
}
