#include "ui/recovery/RecoverableList.h"

#include "ui/widgets/Contrast.h"
#include "ui/widgets/ElidedTip.h"

#include <QDir>
#include <QLabel>
#include <QSignalBlocker>
#include <QVBoxLayout>

#include <algorithm>

using Stemhaven::RecoverableProject;

namespace {

constexpr int IndexRole = Qt::UserRole;
constexpr int StateRole = IndexRole + 1;
constexpr int DetailsRole = IndexRole + 2;

QString plan(const RecoverableProject& project) {
    QStringList steps;
    if (project.needsRestore())
        steps += RecoverableList::tr("Alternative %1 gets the files of its automatic backup %2.")
                     .arg(project.alternativeName, project.backupName);
    if (project.needsInformation())
        steps += RecoverableList::tr("A new ProjectInformation.plist is written, with alternative %1 active.")
                     .arg(project.alternativeName);
    return steps.join(u' ');
}

} // namespace

QString RecoverableList::shownPath(const QString& path) {
    QString shown = QDir::toNativeSeparators(path);
    std::replace_if(
        shown.begin(), shown.end(),
        [](QChar character) {
            return character.category() == QChar::Other_Control ||
                character.category() == QChar::Separator_Line ||
                character.category() == QChar::Separator_Paragraph;
        },
        QChar(QChar::ReplacementCharacter));
    return shown;
}

RecoverableList::RecoverableList(QWidget* parent) : QListWidget(parent), m_hint(new QLabel) {
    setUniformItemSizes(true);
    setTextElideMode(Qt::ElideMiddle);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    Contrast::makeSecondary(*m_hint);
    m_hint->setAlignment(Qt::AlignCenter);
    m_hint->setWordWrap(true);
    m_hint->setAttribute(Qt::WA_TransparentForMouseEvents);
    auto* layout = new QVBoxLayout(viewport());
    layout->addWidget(m_hint);
    connect(this, &QListWidget::itemChanged, this, &RecoverableList::checksChanged);
    connect(this, &QListWidget::currentRowChanged, this, &RecoverableList::currentDetailsChanged);
}

void RecoverableList::setProjects(const QList<RecoverableProject>& projects) {
    clear();
    m_projects = projects;
    for (int row = 0; row < m_projects.size(); ++row) {
        auto* item = new QListWidgetItem;
        item->setData(IndexRole, row);
        item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable);
        item->setCheckState(Qt::Unchecked);
        addItem(item);
        setState(row, State::Damaged, shownPath(m_projects[row].getPath()), plan(m_projects[row]));
    }
    m_hint->setVisible(m_projects.isEmpty());
    lock(m_isLocked);
    setCurrentRow(m_projects.isEmpty() ? -1 : 0);
}

QList<int> RecoverableList::checked() const {
    QList<int> rows;
    for (int row = 0; row < count(); ++row) {
        if (item(row)->checkState() == Qt::Checked)
            rows += row;
    }
    return rows;
}

int RecoverableList::checkable() const {
    int number = 0;
    for (int row = 0; row < count(); ++row)
        number += stateOf(row) == State::Recovered ? 0 : 1;
    return number;
}

void RecoverableList::setAllChecked(bool isChecked) {
    {
        const QSignalBlocker once(this);
        for (int row = 0; row < count(); ++row) {
            if (stateOf(row) != State::Recovered)
                item(row)->setCheckState(isChecked ? Qt::Checked : Qt::Unchecked);
        }
    }
    emit checksChanged();
}

void RecoverableList::lock(bool isLocked) {
    m_isLocked = isLocked;
    const QSignalBlocker noChecks(this);
    for (int row = 0; row < count(); ++row) {
        auto flags = item(row)->flags();
        flags.setFlag(Qt::ItemIsUserCheckable, !isLocked && stateOf(row) != State::Recovered);
        item(row)->setFlags(flags);
    }
}

void RecoverableList::markRecovered(int row) {
    item(row)->setCheckState(Qt::Unchecked);
    item(row)->setFlags(item(row)->flags() & ~Qt::ItemIsUserCheckable);
    setState(
        row, State::Recovered, shownPath(m_projects[row].getPath()) + tr(" (Recovered)"), tr("Recovered."));
}

void RecoverableList::markFailed(int row, const QString& reason) {
    setState(
        row, State::Failed, shownPath(m_projects[row].getPath()) + tr(" (Failed)"),
        tr("Could not be recovered: %1").arg(reason));
}

int RecoverableList::firstFailed() const {
    int row = 0;
    while (row < count() && stateOf(row) != State::Failed)
        ++row;
    return row < count() ? row : -1;
}

QString RecoverableList::currentDetails() const {
    return currentItem() ? currentItem()->data(DetailsRole).toString() : QString();
}

void RecoverableList::setHint(const QString& hint) {
    m_hint->setText(hint);
}

RecoverableList::State RecoverableList::stateOf(int row) const {
    return static_cast<State>(item(row)->data(StateRole).toInt());
}

void RecoverableList::setState(int row, State state, const QString& text, const QString& details) {
    auto* entry = item(row);
    {
        const QSignalBlocker noChecks(this);
        entry->setData(StateRole, static_cast<int>(state));
        entry->setData(DetailsRole, details);
        entry->setText(text);
        entry->setToolTip(wrappingTip(text) + wrappingTip(details));
        entry->setData(Qt::AccessibleDescriptionRole, details);
    }
    if (row == currentRow())
        emit currentDetailsChanged();
}
