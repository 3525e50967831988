#include "ui/sidebar/FilterSidebar.h"

#include "ui/sidebar/FilterTreeView.h"
#include "ui/sidebar/FolderTreeItemModel.h"

#include <QHBoxLayout>
#include <QMenu>
#include <QPushButton>
#include <QVBoxLayout>

namespace {

constexpr int margin = 8;

bool filtersByItself(FilterType type) {
    return type == FilterType::ALL || type == FilterType::LAST_SEARCH;
}

bool isRenamable(FilterType type) {
    return filterTypeIsModifyable(type) && type != FilterType::SAVED_SEARCH;
}

} // namespace

FilterSidebar::FilterSidebar(FolderTreeItemModel& model, QWidget* parent)
    : QWidget(parent),
      m_model(model),
      m_tree(new FilterTreeView(model, this)),
      m_addButton(new QPushButton(tr("&Add"), this)),
      m_removeButton(new QPushButton(tr("&Remove"), this)) {
    layOut();
    setUpEvents();
    markShown();
    updateButtons();
    setFocusProxy(m_tree);
}

void FilterSidebar::layOut() {
    m_tree->setObjectName(QStringLiteral("filterTreeView"));
    m_addButton->setObjectName(QStringLiteral("addFilterButton"));
    m_removeButton->setObjectName(QStringLiteral("removeFilterButton"));

    auto* buttons = new QHBoxLayout;
    buttons->setContentsMargins(margin, margin, margin, margin);
    buttons->setSpacing(margin);
    buttons->addWidget(m_addButton, 1);
    buttons->addWidget(m_removeButton, 1);
    // A click on them leaves the keyboard in the tree.
    for (QPushButton* button : {m_addButton, m_removeButton}) {
        button->setFocusPolicy(Qt::TabFocus);
        // Outside dialogs only an auto-default button takes the Return key.
        button->setAutoDefault(true);
    }

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, margin, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(m_tree, 1);
    layout->addLayout(buttons);
}

void FilterSidebar::setUpEvents() {
    connect(m_tree, &FilterTreeView::chosen, this, &FilterSidebar::activate);
    connect(m_tree, &FilterTreeView::removalWished, this, &FilterSidebar::requestRemoval);
    connect(m_tree, &FilterTreeView::renamingWished, this, &FilterSidebar::requestRenaming);
    connect(m_tree, &FilterTreeView::menuWished, this, &FilterSidebar::showMenu);
    connect(m_tree, &FilterTreeView::restored, this, &FilterSidebar::markShown);
    connect(m_tree, &FilterTreeView::restored, this, &FilterSidebar::updateButtons);
    connect(&m_model, &FolderTreeItemModel::changed, this, &FilterSidebar::activateAwaited);
    connect(
        m_tree->selectionModel(), &QItemSelectionModel::currentChanged, this, &FilterSidebar::updateButtons);

    connect(m_addButton, &QPushButton::clicked, this, [this] { emit addRequested(currentType()); });
    connect(m_removeButton, &QPushButton::clicked, this, &FilterSidebar::requestRemoval);
}

void FilterSidebar::collapseAll() {
    m_tree->collapseAll();
}

QList<FilterType> FilterSidebar::foldedGroups() const {
    QList<FilterType> folded;
    for (const FilterType type : allFilterTypes) {
        if (!m_tree->isExpanded(m_model.indexOf(type)))
            folded.append(type);
    }
    return folded;
}

void FilterSidebar::foldGroups(const QList<FilterType>& groups) {
    for (const FilterType type : allFilterTypes)
        m_tree->setExpanded(m_model.indexOf(type), !groups.contains(type));
}

void FilterSidebar::setCurrent(FilterType type, qint64 id) {
    m_shownType = type;
    m_shownId = id;
    markShown();
    const QModelIndex index = m_model.indexOf(type, id);
    m_isShownAwaited = !index.isValid();
    if (index.isValid())
        m_tree->setCurrentIndex(index);
}

FilterType FilterSidebar::currentType() const {
    return FolderTreeItemModel::typeOf(m_tree->currentIndex());
}

qint64 FilterSidebar::currentEntryId() const {
    return FolderTreeItemModel::idOf(m_tree->currentIndex());
}

QString FilterSidebar::currentName() const {
    return currentEntryId() < 0 ? QString() : m_tree->currentIndex().data().toString();
}

void FilterSidebar::activate(const QModelIndex& index) {
    const FilterType type = FolderTreeItemModel::typeOf(index);
    const qint64 id = FolderTreeItemModel::idOf(index);
    if (id < 0 && !filtersByItself(type))
        return;
    const QString name = id < 0 ? QString() : index.data().toString();
    m_awaitedId = -1;
    setCurrent(type, id);
    emit activated(type, id, name);
}

void FilterSidebar::activateAfterReload(FilterType type, qint64 id) {
    m_awaitedType = type;
    m_awaitedId = id;
}

void FilterSidebar::activateAwaited() {
    const QModelIndex shown = m_model.indexOf(m_shownType, m_shownId);
    if (m_isShownAwaited && shown.isValid()) {
        m_isShownAwaited = false;
        // A group that was left folded stays so.
        if (m_tree->isExpanded(shown.parent()))
            m_tree->setCurrentIndex(shown);
    }
    if (m_awaitedId < 0)
        return;
    const QModelIndex entry = m_model.indexOf(m_awaitedType, m_awaitedId);
    if (entry.isValid())
        activate(entry);
}

void FilterSidebar::requestRemoval() {
    if (m_removeButton->isEnabled())
        emit removeRequested(currentType(), currentEntryId(), currentName());
}

void FilterSidebar::requestRenaming() {
    if (isRenamable(currentType()) && currentEntryId() >= 0)
        emit renameRequested(currentType(), currentEntryId(), currentName());
}

void FilterSidebar::showMenu(const QPoint& globalPosition) {
    const FilterType type = currentType();
    const qint64 id = currentEntryId();
    const QString name = currentName();
    if (!filterTypeIsModifyable(type))
        return;
    auto* menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    if (id < 0)
        menu->addAction(tr("Add..."), this, [this, type] { emit addRequested(type); });
    if (id >= 0 && isRenamable(type))
        menu->addAction(tr("Rename..."), this, [=, this] { emit renameRequested(type, id, name); });
    if (id >= 0)
        menu->addAction(tr("&Remove"), this, [=, this] { emit removeRequested(type, id, name); });
    menu->popup(globalPosition);
}

void FilterSidebar::markShown() {
    const QModelIndex shown = m_model.indexOf(m_shownType, m_shownId);
    if (shown.isValid())
        m_tree->selectionModel()->select(shown, QItemSelectionModel::ClearAndSelect);
    else
        m_tree->selectionModel()->clearSelection();
}

void FilterSidebar::updateButtons() {
    const bool isModifiable = filterTypeIsModifyable(currentType());
    m_addButton->setEnabled(isModifiable);
    m_removeButton->setEnabled(isModifiable && currentEntryId() >= 0);
}
