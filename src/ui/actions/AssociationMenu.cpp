#include "ui/actions/AssociationMenu.h"

#include "app/errors/Guarded.h"

#include <QActionGroup>

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

/// A name on one line, in which a "&" is one and a tab does not set a shortcut apart.
QString menuText(const QString& name) {
    constexpr int longest = 60;
    QString text = name.size() <= longest ? name : name.left(longest) + QStringLiteral("…");
    text.replace(QLatin1Char('\n'), QLatin1Char(' ')).replace(QLatin1Char('\t'), QLatin1Char(' '));
    return text.replace(QLatin1Char('&'), QLatin1String("&&"));
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
    connect(addAction(tr("New...")), &QAction::triggered, this, [this, texts] {
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
        auto* action = new QAction(menuText(entry.name), m_group);
        action->setCheckable(true);
        action->setData(entry.id);
        insertAction(m_separator, action);
    }
    m_separator->setVisible(!entries.isEmpty());
    showChecked();
}

void AssociationMenu::setChecked(const QSet<qint64>& ids) {
    m_checked = ids;
    showChecked();
}

void AssociationMenu::showChecked() {
    const auto entries = m_group->actions();
    for (QAction* entry : entries)
        entry->setChecked(m_checked.contains(entry->data().toLongLong()));
}

void AssociationMenu::toggle(QAction* entry) {
    const qint64 id = entry->data().toLongLong();
    const bool wasChecked = m_checked.contains(id);
    // The mark follows the record, once it has changed.
    entry->setChecked(wasChecked);
    if (wasChecked)
        emit disassociateRequested(m_type, id);
    else
        emit associateRequested(m_type, id);
}
