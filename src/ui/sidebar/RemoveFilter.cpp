#include "ui/sidebar/RemoveFilter.h"

#include "app/errors/DbException.h"
#include "app/errors/Guarded.h"
#include "database/FilterStatements.h"
#include "database/QueryTask.h"
#include "database/TaskManager.h"
#include "ui/edits/EditHistory.h"
#include "ui/edits/EntryPresenceEdit.h"
#include "ui/sidebar/ElidedName.h"
#include "ui/widgets/ScreenFitting.h"

#include <QDebug>
#include <QDialogButtonBox>
#include <QLabel>
#include <QListView>
#include <QPointer>
#include <QPushButton>
#include <QScreen>
#include <QSqlQuery>
#include <QStringListModel>
#include <QVBoxLayout>

#include <algorithm>

namespace FilterStatements = Stemhaven::FilterStatements;
using Stemhaven::DbException;
using Stemhaven::guarded;
using Stemhaven::QueryTask;

namespace {

constexpr int smallestWidth = 440;
constexpr int mostRowsShown = 8;

struct Kind {
    const char* label = "";
    const char* entryFailure = "";
    const char* referencesFailure = "";
    const char* defaultRefusal = "";
    const char* done = "";
};

constexpr std::array<Kind, allFilterTypes.size()> kinds{{
    {},
    {},
    {QT_TRANSLATE_NOOP("RemoveFilter", "Saved Search"), "Could not delete saved search with ID: ", "", "",
     QT_TRANSLATE_NOOP("RemoveFilter", "Saved search removed")},
    {QT_TRANSLATE_NOOP("RemoveFilter", "Collection"),
     "Could not delete collection with ID: ", "Could not delete collection projects map entries for ID:", "",
     QT_TRANSLATE_NOOP("RemoveFilter", "Collection removed")},
    {QT_TRANSLATE_NOOP("RemoveFilter", "Genre"),
     "Could not delete genre with ID:", "Could not clear project's with deleted genre_id:", "",
     QT_TRANSLATE_NOOP("RemoveFilter", "Genre removed")},
    {QT_TRANSLATE_NOOP("RemoveFilter", "Tag"),
     "Could not delete tag with ID: ", "Could not delete projects tag map entries for tag_id:", "",
     QT_TRANSLATE_NOOP("RemoveFilter", "Tag removed")},
    {QT_TRANSLATE_NOOP("RemoveFilter", "Arrangment Status"), "Could not delete arrangement status with ID: ",
     "Could not update arrangement stauts to default for projects after removal of status...",
     QT_TRANSLATE_NOOP("RemoveFilter", "Cannot remove default Arrangement Status! This can only be renamed."),
     QT_TRANSLATE_NOOP("RemoveFilter", "Status removed")},
    {QT_TRANSLATE_NOOP("RemoveFilter", "Lyrics Status"), "Could not delete lyrics status with ID: ",
     "Could not update lyrics status to default for projects after removal of lyrics status...",
     QT_TRANSLATE_NOOP("RemoveFilter", "Cannot remove default Lyrics Status! This can only be renamed."),
     QT_TRANSLATE_NOOP("RemoveFilter", "Status removed")},
    {QT_TRANSLATE_NOOP("RemoveFilter", "Recording Status"), "Could not delete recording status with ID: ",
     "Could not update recording status for projects to default after removal of recording status...",
     QT_TRANSLATE_NOOP("RemoveFilter", "Cannot remove default Recording Status! This can only be renamed."),
     QT_TRANSLATE_NOOP("RemoveFilter", "Status removed")},
    {QT_TRANSLATE_NOOP("RemoveFilter", "Mix/Master Status"), "Could not delete mix/master status with ID: ",
     "Could not update mix/master stauts for projects to default after removal of mix/master status...",
     QT_TRANSLATE_NOOP("RemoveFilter", "Cannot remove default Mix/Master Status! This can only be renamed."),
     QT_TRANSLATE_NOOP("RemoveFilter", "Status removed")},
}};

const Kind& kindOf(FilterType type) {
    return kinds.at(static_cast<std::size_t>(type));
}

QString referencesFailure(FilterType type, qint64 id) {
    const QString failure = QString::fromLatin1(kindOf(type).referencesFailure);
    return filterTypeIsStatus(type) ? failure : failure + QString::number(id);
}

bool isDefaultStatus(FilterType type, qint64 id) {
    return filterTypeIsStatus(type) && id == defaultStatusId;
}

QLabel* makeLabel(const char* name, QWidget* parent) {
    auto* label = new QLabel(parent);
    label->setObjectName(QString::fromLatin1(name));
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    return label;
}

} // namespace

RemoveFilter::RemoveFilter(
    Stemhaven::TaskManager& tasks, EditHistory& history, FilterType type, qint64 id, const QString& name,
    QWidget* parent)
    : WritingDialog(parent),
      m_tasks(tasks),
      m_history(history),
      m_type(type),
      m_id(id),
      m_name(name),
      m_promptLabel(makeLabel("promptLabel", this)),
      m_questionLabel(makeLabel("questionLabel", this)),
      m_projectsView(new QListView(this)),
      m_projects(new QStringListModel(this)) {
    layOut();
    setWindowTitle(tr("Remove %1").arg(tr(kindOf(type).label)));
    if (isDefaultStatus(type, id)) {
        m_promptLabel->setText(tr("Cannot delete default status!"));
        m_questionLabel->hide();
        m_projectsView->hide();
        m_removeButton->hide();
        return;
    }
    m_promptLabel->setText(tr("Are you sure you want to remove %1 '%2'?")
                               .arg(tr(kindOf(type).label), elidedName(name, fontMetrics())));
    loadProjects();
}

void RemoveFilter::layOut() {
    QFont promptFont = font();
    promptFont.setWeight(QFont::DemiBold);
    m_promptLabel->setFont(promptFont);
    m_promptLabel->setMinimumWidth(smallestWidth);

    m_projectsView->setObjectName(QStringLiteral("projectsListView"));
    m_projectsView->setAccessibleName(tr("Projects that use it"));
    m_projectsView->setModel(m_projects);
    m_projectsView->setUniformItemSizes(true);
    m_projectsView->setSpacing(2);
    m_projectsView->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_projectsView->setSelectionMode(QAbstractItemView::NoSelection);
    m_projectsView->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_projectsView->setTextElideMode(Qt::ElideRight);

    auto* buttons = new QDialogButtonBox(this);
    m_removeButton = buttons->addButton(tr("&Remove"), QDialogButtonBox::AcceptRole);
    auto* cancelButton = buttons->addButton(tr("&Cancel"), QDialogButtonBox::RejectRole);
    m_removeButton->setObjectName(QStringLiteral("acceptButton"));
    cancelButton->setObjectName(QStringLiteral("cancelButton"));
    cancelButton->setDefault(true);
    cancelButton->setFocus();
    connect(buttons, &QDialogButtonBox::accepted, this, &RemoveFilter::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &RemoveFilter::reject);

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(24, 20, 24, 20);
    layout->setSpacing(12);
    layout->addWidget(m_promptLabel);
    layout->addWidget(m_questionLabel);
    layout->addWidget(m_projectsView, 1);
    layout->addSpacing(4);
    layout->addWidget(buttons);
}

void RemoveFilter::loadProjects() {
    const QString statement = FilterStatements::selectProjectNames(m_type, m_id);
    if (statement.isEmpty()) {
        showNoProjects();
        return;
    }
    m_removeButton->setEnabled(false);
    auto task = std::make_shared<QueryTask>(statement, m_tasks.mainDatabase());
    task->setQueryCallback([form = QPointer(this)](const auto& /*task*/, int rowCount, QSqlQuery* query) {
        QStringList names;
        names.reserve(rowCount);
        while (query->next())
            names.append(query->value(0).toString());
        if (form)
            form->takeProjects(names);
    });
    task->setSqlErrorCallback([form = QPointer(this)](const auto& /*task*/, const DbException& error) {
        qCritical() << "Could not retrieve the projects that use the filter!" << error;
        if (form)
            form->showNoProjects();
    });
    m_tasks.addTask(std::move(task));
}

void RemoveFilter::takeProjects(const QStringList& names) {
    const QString count = locale().toString(names.size());
    const QString name = elidedName(m_name, fontMetrics());
    m_questionLabel->setText(
        filterTypeIsStatus(m_type)
            ? tr("This status is used by %2 projects. If this status is removed, all of these projects will "
                 "have their previous status of '%1' set to default.")
                  .arg(name, count)
            : tr("'%1' is used by %2 projects. The references will be removed but the projects will remain.")
                  .arg(name, count));
    m_projects->setStringList(names);
    m_projectsView->setVisible(!names.isEmpty());
    const int rows = std::min(static_cast<int>(names.size()), mostRowsShown);
    const int rowHeight = m_projectsView->sizeHintForRow(0) + 2 * m_projectsView->spacing();
    const int height = rows * rowHeight + 2 * m_projectsView->frameWidth();
    // The rest of the dialog needs its place on a small screen, too.
    m_projectsView->setMinimumHeight(std::min(height, screen()->availableGeometry().height() / 6));
    if (names.size() <= mostRowsShown)
        m_projectsView->setMaximumHeight(height);
    m_removeButton->setEnabled(true);
    adjustSize();
    fitToScreen(*this);
}

void RemoveFilter::showNoProjects() {
    m_questionLabel->hide();
    m_projectsView->hide();
    m_removeButton->setEnabled(true);
    adjustSize();
}

void RemoveFilter::accept() {
    if (isWriting())
        return;
    guarded(tr("Removal failed"), [this] {
        if (isDefaultStatus(m_type, m_id))
            throw Stemhaven::Exception(tr(kindOf(m_type).defaultRefusal));
        if (filterTypeTable(m_type).isEmpty() || m_id < 0)
            throw Stemhaven::Exception(tr("Cannot remove filter. Could not find primary key..."));
        removeEntry();
        beginWriting();
    });
}

void RemoveFilter::reject() {
    guarded(tr("Closing remove filter dialog failed."), [this] { WritingDialog::reject(); });
}

void RemoveFilter::removeEntry() {
    const QString failure = QString::fromLatin1(kindOf(m_type).entryFailure) + QString::number(m_id);
    m_history.perform(
        EntryPresenceEdit::removal(
            {windowTitle(), tr("Removal failed"), failure, {}, tr(kindOf(m_type).done)}, m_type, m_id,
            referencesFailure(m_type, m_id)),
        [form = QPointer(this)](bool succeeded) {
            if (form && succeeded)
                form->finish();
            else if (form)
                form->endWriting(false);
        });
}

void RemoveFilter::finish() {
    const QPointer form(this);
    emit removed(m_type, m_id);
    if (form)
        endWriting(true);
}

void RemoveFilter::showWriting(bool writing) {
    m_removeButton->setEnabled(!writing);
}
