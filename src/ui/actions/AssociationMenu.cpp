#include "ui/actions/AssociationMenu.h"

#include "app/errors/Guarded.h"
#include "ui/actions/MenuText.h"

#include <QActionGroup>
#include <QStyleOptionMenuItem>

namespace {

struct Texts {
    const char* title;
    const char* failureTitle;
    const char* creationFailureTitle;
};

Texts textsOf(FilterType type) {
    switch (type) {
    case FilterType::COLLECTIONS:
        return {
            QT_TRANSLATE_NOOP("AssociationMenu", "Add to &Collection"),
            QT_TRANSLATE_NOOP("AssociationMenu", "Could not add to collection"),
            QT_TRANSLATE_NOOP("AssociationMenu", "Could not create collection")};
    case FilterType::GENRES:
        return {
            QT_TRANSLATE_NOOP("AssociationMenu", "Set &Genre"),
            QT_TRANSLATE_NOOP("AssociationMenu", "Could not set genre"),
            QT_TRANSLATE_NOOP("AssociationMenu", "Could not create genre")};
    default:
        return {
            QT_TRANSLATE_NOOP("AssociationMenu", "Add &Tag"),
            QT_TRANSLATE_NOOP("AssociationMenu", "Could not add tag"),
            QT_TRANSLATE_NOOP("AssociationMenu", "Could not create tag")};
    }
}

} // namespace

AssociationMenu::AssociationMenu(FilterType type, QWidget* parent)
    : QMenu(parent),
      m_type(type),
      m_group(new QActionGroup(this)),
      m_separator(addSeparator()) {
    const Texts texts = textsOf(type);
    setTitle(tr(texts.title));
    m_group->setExclusionPolicy(QActionGroup::ExclusionPolicy::None);
    connect(m_group, &QActionGroup::triggered, this, [this, texts](QAction* entry) {
        Stemhaven::guarded(tr(texts.failureTitle), [&] { toggle(entry); });
    });
    connect(addAction(tr("&New...")), &QAction::triggered, this, [this, texts] {
        Stemhaven::guarded(tr(texts.creationFailureTitle), [this] { emit newRequested(m_type); });
    });
    m_separator->setVisible(false);
}

void AssociationMenu::setEntries(const QList<FolderTreeItemModel::Entry>& entries) {
    if (m_entries == entries)
        return;
    m_entries = entries;
    const auto old = m_group->actions();
    qDeleteAll(old);
    for (const auto& entry : entries) {
        auto* action = new QAction(m_group);
        action->setCheckable(true);
        action->setData(entry.id);
        insertAction(m_separator, action);
    }
    m_separator->setVisible(!entries.isEmpty());
    showCounts();
}

void AssociationMenu::setCounts(const QHash<qint64, int>& counts, int selectedCount) {
    m_counts = counts;
    m_selectedCount = selectedCount;
    showCounts();
}

bool AssociationMenu::haveAll(qint64 id) const {
    return m_selectedCount > 0 && m_counts.value(id) >= m_selectedCount;
}

bool AssociationMenu::haveSome(qint64 id) const {
    return m_counts.value(id) > 0 && !haveAll(id);
}

void AssociationMenu::showCounts() {
    const auto entries = m_group->actions();
    for (qsizetype i = 0; i < entries.size(); ++i) {
        const auto& [name, id] = m_entries[i];
        const QString count =
            tr("%1 of %2").arg(locale().toString(m_counts.value(id)), locale().toString(m_selectedCount));
        // In words, too, for whoever cannot see the mark.
        entries[i]->setText(haveSome(id) ? menuText(name) + QLatin1Char('\t') + count : menuText(name));
        entries[i]->setChecked(haveAll(id));
    }
}

void AssociationMenu::initStyleOption(QStyleOptionMenuItem* option, const QAction* action) const {
    QMenu::initStyleOption(option, action);
    if (action && action->isCheckable() && haveSome(action->data().toLongLong())) {
        option->checked = true;
        option->state |= QStyle::State_NoChange;
    }
}

void AssociationMenu::toggle(QAction* entry) {
    const qint64 id = entry->data().toLongLong();
    const bool isTakenAway = haveAll(id);
    // The mark follows the records, once they have changed.
    entry->setChecked(isTakenAway);
    if (isTakenAway)
        emit disassociateRequested(m_type, id);
    else
        emit associateRequested(m_type, id);
}
