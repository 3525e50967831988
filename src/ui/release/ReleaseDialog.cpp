#include "ui/release/ReleaseDialog.h"

#include "app/errors/DbException.h"
#include "app/errors/Guarded.h"
#include "database/QueryTask.h"
#include "database/TaskManager.h"
#include "ui/calendar/CalendarPane.h"
#include "ui/calendar/CalendarView.h"
#include "ui/edits/EditHistory.h"
#include "ui/edits/ProjectEdit.h"
#include "ui/edits/ProjectEdits.h"
#include "ui/release/SingleLine.h"
#include "ui/sidebar/ErrorLabel.h"

#include <QCheckBox>
#include <QDateEdit>
#include <QDebug>
#include <QDialogButtonBox>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QSqlQuery>
#include <QVBoxLayout>

#include <memory>

using Stemhaven::DbException;
using Stemhaven::guarded;
using Stemhaven::QueryTask;
using Stemhaven::ReleaseDetails;
namespace ReleaseStatements = Stemhaven::ReleaseStatements;

namespace {

constexpr int smallestFieldWidth = 240;

/// From the row that query stands on, by position.
ReleaseDetails readDetails(const QSqlQuery& query) {
    ReleaseDetails details;
    details.artist = query.value(0).toString();
    details.releaseName = query.value(1).toString();
    details.isPubliclyReleased = query.value(2).toLongLong() != 0;
    details.isrc = query.value(3).toString();
    details.upc = query.value(4).toString();
    details.isCompleted = query.value(5).toLongLong() != 0;
    details.date = QDate::fromString(query.value(6).toString(), Qt::ISODate);
    details.album = query.value(7).toString();
    return details;
}

} // namespace

ReleaseDialog::ReleaseDialog(
    Stemhaven::TaskManager& tasks, EditHistory& history, qint64 projectId, QWidget* parent)
    : WritingDialog(parent),
      m_tasks(tasks),
      m_history(history),
      m_projectId(projectId),
      m_releaseName(
          makeEdit("releaseNameEdit", tr("Song name"), tr("The name of the publicly released track"))),
      m_artist(
          makeEdit("artistNameEdit", tr("Artist"), tr("The name of the artist this track was released as"))),
      m_album(makeEdit("albumEdit", {}, tr("The name of the album the track was released on"))),
      m_isrc(makeEdit("isrcEdit", tr("ISRC "), tr("The ISRC registration code for the released track"))),
      m_upc(makeEdit("upcEdit", {}, tr("The UPC code for the album or released track"))),
      m_isCompleted(new QCheckBox(tr("  Completed"), this)),
      m_isReleased(new QCheckBox(tr("  Publicly released"), this)),
      m_date(new QDateEdit(QDate::currentDate(), this)),
      m_calendar(new CalendarPane(this)),
      m_error(new ErrorLabel(this)) {
    setWindowTitle(tr("Release Details"));
    m_isCompleted->setObjectName(QStringLiteral("isCompletedCheckbox"));
    m_isReleased->setObjectName(QStringLiteral("publiclyReleasedCheckbox"));
    m_date->setObjectName(QStringLiteral("releaseDateEdit"));
    m_date->setDisplayFormat(tr("M/d/yyyy"));
    // Its steps are those of the arrow keys; the calendar stands below.
    m_date->setButtonSymbols(QAbstractSpinBox::NoButtons);
    m_calendar->setObjectName(QStringLiteral("releaseCalendar"));
    m_calendar->view().setAccessibleName(tr("Release date"));
    layOut();
    setupEvents();
    m_fields->setEnabled(false);
    m_done->setEnabled(false);
    if (m_projectId > 0)
        load();
}

QLineEdit* ReleaseDialog::makeEdit(const char* name, const QString& placeholder, const QString& toolTip) {
    auto* edit = new QLineEdit(this);
    edit->setObjectName(QLatin1String(name));
    edit->setPlaceholderText(placeholder);
    edit->setToolTip(toolTip);
    edit->setMinimumWidth(smallestFieldWidth);
    edit->setValidator(new SingleLine(edit));
    return edit;
}

void ReleaseDialog::layOut() {
    m_fields = new QWidget(this);
    auto* columns = new QHBoxLayout(m_fields);
    columns->setContentsMargins(0, 0, 0, 0);
    columns->setSpacing(32);
    columns->addWidget(makeFields(), 1);
    columns->addWidget(makeDateFields(), 1);

    auto* buttons = new QDialogButtonBox(this);
    m_done = buttons->addButton(tr("Save"), QDialogButtonBox::AcceptRole);
    m_cancel = buttons->addButton(tr("Cancel"), QDialogButtonBox::RejectRole);
    m_done->setObjectName(QStringLiteral("doneButton"));
    m_cancel->setObjectName(QStringLiteral("cancelButton"));
    m_done->setDefault(true);
    connect(buttons, &QDialogButtonBox::accepted, this, &ReleaseDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &ReleaseDialog::reject);

    auto* bottom = new QHBoxLayout;
    bottom->addWidget(m_error, 1);
    bottom->addWidget(buttons);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(24, 20, 24, 20);
    layout->setSpacing(16);
    layout->addWidget(m_fields, 1);
    layout->addLayout(bottom);
}

QWidget* ReleaseDialog::makeFields() {
    auto* fields = new QWidget;
    auto* layout = new QGridLayout(fields);
    layout->setContentsMargins(0, 0, 0, 0);
    int row = 0;
    for (const auto& [name, edit] :
         {std::pair(tr("Release name"), m_releaseName), std::pair(tr("Release Artist"), m_artist),
          std::pair(tr("Album"), m_album), std::pair(tr("ISRC"), m_isrc), std::pair(tr("UPC"), m_upc)}) {
        auto* label = new QLabel(name);
        label->setBuddy(edit);
        edit->setAccessibleName(name);
        edit->setAccessibleDescription(edit->toolTip());
        layout->addWidget(label, row, 0);
        layout->addWidget(edit, row++, 1);
    }
    layout->addWidget(m_isCompleted, row++, 1);
    layout->setRowStretch(row, 1);
    return fields;
}

QWidget* ReleaseDialog::makeDateFields() {
    auto* fields = new QWidget;
    auto* label = new QLabel(tr("Release date"));
    label->setBuddy(m_date);
    m_date->setAccessibleName(label->text());
    auto* line = new QHBoxLayout;
    line->addWidget(label);
    line->addWidget(m_date, 1);
    auto* layout = new QVBoxLayout(fields);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_isReleased);
    layout->addLayout(line);
    layout->addWidget(m_calendar, 1);
    return fields;
}

void ReleaseDialog::setupEvents() {
    connect(m_date, &QDateEdit::userDateChanged, &m_calendar->view(), &CalendarView::setCurrentDate);
    connect(&m_calendar->view(), &CalendarView::dateChosen, m_date, &QDateEdit::setDate);
    // Without a release there is no date: none would be stored.
    const auto offerDate = [this](bool isReleased) {
        m_date->setEnabled(isReleased);
        m_calendar->setEnabled(isReleased);
    };
    connect(m_isReleased, &QCheckBox::toggled, this, offerDate);
    offerDate(false);
}

void ReleaseDialog::load() {
    auto task = std::make_shared<QueryTask>(ReleaseStatements::select(m_projectId), m_tasks.mainDatabase());
    task->setQueryCallback(
        [dialog = QPointer(this), id = m_projectId](const auto& /*task*/, int rows, QSqlQuery* query) {
            if (rows >= 2)
                qWarning() << "Possible duplicate detected for project_id:" << id;
            if (!dialog)
                return;
            if (query->next())
                dialog->takeDetails(readDetails(*query));
            else
                dialog->showUnreadable();
        });
    task->setSqlErrorCallback(
        [dialog = QPointer(this), id = m_projectId](const auto& /*task*/, const DbException& error) {
            qCritical() << "Could not read the release details of project_id:" << id << error;
            if (dialog)
                dialog->showUnreadable();
        });
    m_tasks.addTask(std::move(task));
}

void ReleaseDialog::takeDetails(const ReleaseDetails& details) {
    m_releaseName->setText(details.releaseName);
    m_artist->setText(details.artist);
    m_album->setText(details.album);
    m_isrc->setText(details.isrc);
    m_upc->setText(details.upc);
    m_isCompleted->setChecked(details.isCompleted);
    m_isReleased->setChecked(details.isPubliclyReleased);
    if (details.isPubliclyReleased && details.date.isValid())
        showDate(details.date);
    m_isFilled = true;
    m_fields->setEnabled(true);
    m_done->setEnabled(true);
    m_releaseName->setFocus();
    m_releaseName->selectAll();
    emit filled();
}

void ReleaseDialog::showDate(QDate day) {
    m_date->setDate(day);
    m_calendar->view().setCurrentDate(day);
}

void ReleaseDialog::showUnreadable() {
    m_error->showError(tr("The release details could not be read."));
    m_cancel->setFocus();
}

ReleaseDetails ReleaseDialog::details() const {
    ReleaseDetails details;
    details.releaseName = m_releaseName->text();
    details.artist = m_artist->text();
    details.album = m_album->text();
    details.isrc = m_isrc->text();
    details.upc = m_upc->text();
    details.isCompleted = m_isCompleted->isChecked();
    details.isPubliclyReleased = m_isReleased->isChecked();
    details.date = m_date->date();
    return details;
}

void ReleaseDialog::accept() {
    if (isWriting() || !m_isFilled)
        return;
    guarded(tr("Could not update project release details"), [this] { save(); });
}

void ReleaseDialog::save() {
    m_history.perform(
        ProjectEdits::release(m_projectId, details()), [dialog = QPointer(this)](bool succeeded) {
            if (dialog)
                dialog->endWriting(succeeded);
        });
    beginWriting();
}

void ReleaseDialog::reject() {
    if (isWriting())
        return;
    guarded(tr("Closing release dialog failed."), [this] { WritingDialog::reject(); });
}

void ReleaseDialog::showWriting(bool writing) {
    m_fields->setEnabled(!writing);
    m_done->setEnabled(!writing);
    m_cancel->setEnabled(!writing);
    if (!writing)
        m_done->setFocus();
}
