#include "ui/sidebar/AddFilterForm.h"

#include "app/errors/DbException.h"
#include "app/errors/Guarded.h"
#include "database/FilterStatements.h"
#include "database/QueryTask.h"
#include "database/TaskManager.h"
#include "ui/edits/EditHistory.h"
#include "ui/edits/EntryPresenceEdit.h"
#include "ui/edits/EntryRenaming.h"
#include "ui/sidebar/ElidedName.h"
#include "ui/sidebar/ErrorLabel.h"

#include <QDebug>
#include <QDialogButtonBox>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QSqlQuery>
#include <QVBoxLayout>

#include <memory>
#include <utility>

namespace FilterStatements = Stemhaven::FilterStatements;
using Stemhaven::DbException;
using Stemhaven::guarded;
using Stemhaven::QueryTask;

namespace {

constexpr int smallestWidth = 440;

struct Texts {
    const char* addTitle = "";
    const char* addPrompt = "";
    const char* renameTitle = "";
    const char* renamePrompt = "";
    const char* placeholder = "";
};

constexpr std::array<Texts, allFilterTypes.size()> allTexts{{
    {},
    {},
    {QT_TRANSLATE_NOOP("AddFilterForm", "Save Search"),
     QT_TRANSLATE_NOOP("AddFilterForm", "Enter the search term to save"), "", "",
     QT_TRANSLATE_NOOP("AddFilterForm", "Search term")},
    {QT_TRANSLATE_NOOP("AddFilterForm", "Add Collection"),
     QT_TRANSLATE_NOOP("AddFilterForm", "Enter the name of the new Collection"),
     QT_TRANSLATE_NOOP("AddFilterForm", "Rename Collection"),
     QT_TRANSLATE_NOOP("AddFilterForm", "Edit the name of the Collection"),
     QT_TRANSLATE_NOOP("AddFilterForm", "Collection name")},
    {QT_TRANSLATE_NOOP("AddFilterForm", "Add Genre"),
     QT_TRANSLATE_NOOP("AddFilterForm", "Enter the name of the new Genre"),
     QT_TRANSLATE_NOOP("AddFilterForm", "Rename Genre"),
     QT_TRANSLATE_NOOP("AddFilterForm", "Edit the name of the Genre"),
     QT_TRANSLATE_NOOP("AddFilterForm", "Genre name")},
    {QT_TRANSLATE_NOOP("AddFilterForm", "Add Tag"),
     QT_TRANSLATE_NOOP("AddFilterForm", "Enter the name of the new Tag"),
     QT_TRANSLATE_NOOP("AddFilterForm", "Rename Tag"),
     QT_TRANSLATE_NOOP("AddFilterForm", "Edit the name of the Tag"), ""},
    {QT_TRANSLATE_NOOP("AddFilterForm", "Add Arrangement Status"),
     QT_TRANSLATE_NOOP("AddFilterForm", "Enter the name for the new Arrangement Status"),
     QT_TRANSLATE_NOOP("AddFilterForm", "Rename Arrangement Status"),
     QT_TRANSLATE_NOOP("AddFilterForm", "Edit the name for the Arrangement Status"),
     QT_TRANSLATE_NOOP("AddFilterForm", "Arrangement Status Name")},
    {QT_TRANSLATE_NOOP("AddFilterForm", "Add Lyrics Status"),
     QT_TRANSLATE_NOOP("AddFilterForm", "Enter the name for the new Lyrics Status"),
     QT_TRANSLATE_NOOP("AddFilterForm", "Rename Lyrics Status"),
     QT_TRANSLATE_NOOP("AddFilterForm", "Edit the name for the Lyrics Status"),
     QT_TRANSLATE_NOOP("AddFilterForm", "Lyrics Status")},
    {QT_TRANSLATE_NOOP("AddFilterForm", "Add Recording Status"),
     QT_TRANSLATE_NOOP("AddFilterForm", "Enter the name for the new Recording Status"),
     QT_TRANSLATE_NOOP("AddFilterForm", "Rename Recording Status"),
     QT_TRANSLATE_NOOP("AddFilterForm", "Edit the name for the Recording Status"),
     QT_TRANSLATE_NOOP("AddFilterForm", "Recording Status")},
    {QT_TRANSLATE_NOOP("AddFilterForm", "Add Mix/Master Status"),
     QT_TRANSLATE_NOOP("AddFilterForm", "Enter the name for the new Mix/Master Status"),
     QT_TRANSLATE_NOOP("AddFilterForm", "Rename Mix/Master Status"),
     QT_TRANSLATE_NOOP("AddFilterForm", "Edit the name for the Mix/Master Status"),
     QT_TRANSLATE_NOOP("AddFilterForm", "Mix/Master Status")},
}};

bool isEditable(FilterType type) {
    return filterTypeIsModifyable(type) || filterTypeIsStatus(type);
}

QString initialName(FilterType type, const QString& name) {
    return name.isEmpty() && type == FilterType::TAGS ? AddFilterForm::tr("#newTag") : name;
}

} // namespace

AddFilterForm::AddFilterForm(
    Stemhaven::TaskManager& tasks, EditHistory& history, FilterType type, const QString& name,
    EditType editType, qint64 id, QWidget* parent)
    : WritingDialog(parent),
      m_tasks(tasks),
      m_history(history),
      m_type(type),
      m_editType(editType),
      m_id(id),
      m_oldName(name),
      m_promptLabel(new QLabel(this)),
      m_nameEdit(new QLineEdit(initialName(type, name), this)),
      m_errorLabel(new ErrorLabel(this)) {
    layOut();
    if (isEditable(type)) {
        setTexts();
        connect(m_nameEdit, &QLineEdit::textChanged, this, &AddFilterForm::checkName);
        checkName();
        loadNames();
    } else {
        m_promptLabel->setText(tr("Sorry. This filter can't be edited!"));
        m_nameEdit->hide();
        m_errorLabel->hide();
        m_acceptButton->hide();
    }
}

void AddFilterForm::layOut() {
    m_promptLabel->setObjectName(QStringLiteral("promptLabel"));
    m_nameEdit->setObjectName(QStringLiteral("nameEdit"));
    m_errorLabel->setObjectName(QStringLiteral("errorLabel"));
    m_promptLabel->setBuddy(m_nameEdit);
    m_nameEdit->setMinimumWidth(smallestWidth);

    auto* buttons = new QDialogButtonBox(this);
    m_acceptButton = buttons->addButton(
        m_editType == EditType::Add ? tr("&Add") : tr("&Rename"), QDialogButtonBox::AcceptRole);
    auto* cancelButton = buttons->addButton(tr("&Cancel"), QDialogButtonBox::RejectRole);
    m_acceptButton->setObjectName(QStringLiteral("acceptButton"));
    cancelButton->setObjectName(QStringLiteral("cancelButton"));
    m_acceptButton->setDefault(true);
    connect(buttons, &QDialogButtonBox::accepted, this, &AddFilterForm::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &AddFilterForm::reject);

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(24, 20, 24, 20);
    layout->addWidget(m_promptLabel);
    layout->addWidget(m_nameEdit);
    layout->addWidget(m_errorLabel);
    layout->addStretch();
    layout->addSpacing(8);
    layout->addWidget(buttons);
}

void AddFilterForm::setTexts() {
    const Texts& texts = allTexts.at(static_cast<std::size_t>(m_type));
    const bool adding = m_editType == EditType::Add;
    setWindowTitle(tr(adding ? texts.addTitle : texts.renameTitle));
    m_promptLabel->setText(tr(adding ? texts.addPrompt : texts.renamePrompt));
    m_nameEdit->setPlaceholderText(tr(texts.placeholder));
    m_nameEdit->setAccessibleName(m_promptLabel->text());
    m_nameEdit->setFocus();
    // Typing replaces the name, but not what every tag begins with.
    const bool keepsFirst = m_type == FilterType::TAGS && m_nameEdit->text().startsWith(u'#');
    m_nameEdit->setSelection(keepsFirst ? 1 : 0, static_cast<int>(m_nameEdit->text().size()));
}

void AddFilterForm::loadNames() {
    auto task = std::make_shared<QueryTask>(FilterStatements::selectNames(m_type), m_tasks.mainDatabase());
    task->setQueryCallback([form = QPointer(this)](const auto& /*task*/, int /*rows*/, QSqlQuery* query) {
        QSet<QString> names;
        while (query->next())
            names.insert(query->value(0).toString());
        if (form)
            form->takeNames(std::move(names));
    });
    task->setSqlErrorCallback([form = QPointer(this)](const auto& /*task*/, const DbException& error) {
        qCritical() << "Could not retrieve filter names!" << error;
        if (form)
            form->takeNames({});
    });
    m_tasks.addTask(std::move(task));
}

void AddFilterForm::takeNames(QSet<QString> names) {
    m_names = std::move(names);
    // An entry may keep its own name.
    if (m_editType == EditType::Rename)
        m_names.remove(m_oldName);
    m_namesAreKnown = true;
    const bool acceptNow = m_acceptWhenNamesAreKnown;
    checkName();
    if (acceptNow)
        accept();
}

void AddFilterForm::checkName() {
    m_acceptWhenNamesAreKnown = false;
    const QString problem = problemWith(m_nameEdit->text());
    m_errorLabel->showError(problem);
    m_nameEdit->setAccessibleDescription(problem);
    m_acceptButton->setEnabled(isAcceptable());
}

QString AddFilterForm::problemWith(const QString& name) const {
    if (m_names.contains(name))
        return tr("The name '%1' is already in use.").arg(elidedName(name, fontMetrics()));
    if (m_type == FilterType::TAGS && !name.startsWith(u'#'))
        return tr("Tags must begin with a hash '#' symbol.");
    return {};
}

bool AddFilterForm::isAcceptable() const {
    // An entry without a name would never be listed.
    return isEditable(m_type) && m_errorLabel->text().isEmpty() && !m_nameEdit->text().trimmed().isEmpty();
}

void AddFilterForm::accept() {
    if (isWriting() || !isAcceptable())
        return;
    m_acceptWhenNamesAreKnown = !m_namesAreKnown;
    if (!m_namesAreKnown)
        return;
    if (m_editType == EditType::Add)
        guarded(tr("Adding filter failed"), [this] { add(m_nameEdit->text()); });
    else
        guarded(tr("Filter could not be renamed."), [this] { rename(m_nameEdit->text()); });
}

void AddFilterForm::reject() {
    guarded(tr("Cancel filter add failed."), [this] {
        m_acceptWhenNamesAreKnown = false;
        WritingDialog::reject();
    });
}

void AddFilterForm::add(const QString& name) {
    const QString failure = QStringLiteral("Could not insert new filter record");
    auto edit = EntryPresenceEdit::addition(
        {windowTitle(), tr("Could not insert new filter record"), failure, {}}, m_type, name);
    const auto* addition = edit.get();
    m_history.perform(std::move(edit), [form = QPointer(this), addition, name](bool succeeded) {
        if (form && succeeded)
            emit form->onFilterAdded(form->m_type, name, addition->id());
        if (form)
            form->endWriting(succeeded);
    });
    beginWriting();
}

void AddFilterForm::rename(const QString& name) {
    if (m_id < 0)
        throw Stemhaven::Exception(tr("Invalid filter ID"));
    QString what;
    QDebug(&what).noquote().nospace() << m_type << " filter with primary ID: " << m_id << " to: " << name;
    Edit::Texts texts{
        windowTitle(), tr("Could not rename."), QStringLiteral("Could not rename  ") + what,
        QStringLiteral("Renamed ") + what};
    auto edit = std::make_unique<EntryRenaming>(std::move(texts), m_type, m_id, name);
    m_history.perform(std::move(edit), [form = QPointer(this), name](bool succeeded) {
        if (form && succeeded)
            emit form->onFilterRenamed(form->m_type, name, form->m_id);
        if (form)
            form->endWriting(succeeded);
    });
    beginWriting();
}

void AddFilterForm::showWriting(bool writing) {
    m_nameEdit->setReadOnly(writing);
    m_acceptButton->setEnabled(!writing && isAcceptable());
}
