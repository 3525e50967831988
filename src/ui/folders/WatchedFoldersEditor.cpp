#include "ui/folders/WatchedFoldersEditor.h"

#include "app/errors/DbException.h"
#include "app/errors/Guarded.h"
#include "ui/dialogs/FolderAdder.h"
#include "ui/dialogs/FolderDrop.h"
#include "ui/dialogs/FolderRemover.h"
#include "ui/folders/WatchedFolderDelegate.h"
#include "ui/folders/WatchedFoldersModel.h"
#include "ui/widgets/Contrast.h"

#include <QKeyEvent>
#include <QLabel>
#include <QListView>
#include <QPushButton>
#include <QVBoxLayout>

#include <algorithm>
#include <utility>

using Stemhaven::guarded;

namespace {

constexpr int smallestListHeight = 96;

QListView* makeList(WatchedFoldersModel* model, QWidget* parent) {
    auto* list = new QListView(parent);
    list->setObjectName(QStringLiteral("monitoredPathsList"));
    list->setAccessibleName(WatchedFoldersEditor::tr("Monitored folders"));
    list->setModel(model);
    list->setItemDelegate(new WatchedFolderDelegate(list));
    list->setUniformItemSizes(true);
    list->setEditTriggers(QAbstractItemView::NoEditTriggers);
    list->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    list->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    list->setMinimumHeight(smallestListHeight);
    return list;
}

} // namespace

WatchedFoldersEditor::WatchedFoldersEditor(
    Stemhaven::TaskManager& tasks, Stemhaven::ProjectMonitor& monitor, Words words, QWidget* parent)
    : QWidget(parent),
      m_words(std::move(words)),
      m_model(new WatchedFoldersModel(tasks, monitor, this)),
      m_list(makeList(m_model, this)),
      m_hint(new QLabel(tr("No folders yet. Add one, or drop it here."))),
      m_addButton(new QPushButton(tr("&Add"), this)),
      m_removeButton(new QPushButton(tr("&Remove"), this)),
      m_adder(new FolderAdder(tasks, *this, m_words.addingFailure)),
      m_remover(new FolderRemover(tasks, *this)) {
    layOut();
    layOutHint();
    setUpEvents();
    new FolderDrop(*this, *m_adder);
    setFocusProxy(m_list);
    updateButtons();
    reload();
}

void WatchedFoldersEditor::layOut() {
    m_addButton->setObjectName(m_words.addButtonName);
    m_removeButton->setObjectName(m_words.removeButtonName);
    for (QPushButton* button : {m_addButton, m_removeButton})
        button->setAutoDefault(false);
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(m_addButton);
    buttons->addWidget(m_removeButton);
    buttons->addStretch();

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins({});
    layout->addWidget(m_list, 1);
    layout->addLayout(buttons);
}

/// Stands where the list has nothing to show.
void WatchedFoldersEditor::layOutHint() {
    Contrast::makeSecondary(*m_hint);
    m_hint->setAlignment(Qt::AlignCenter);
    m_hint->setWordWrap(true);
    m_hint->setAttribute(Qt::WA_TransparentForMouseEvents);
    m_hint->hide();
    auto* layout = new QVBoxLayout(m_list->viewport());
    layout->addWidget(m_hint);
}

void WatchedFoldersEditor::setUpEvents() {
    m_list->installEventFilter(this);
    connect(m_addButton, &QPushButton::clicked, m_adder, &FolderAdder::choose);
    connect(m_removeButton, &QPushButton::clicked, this, &WatchedFoldersEditor::removeCurrent);
    connect(m_list->selectionModel(), &QItemSelectionModel::currentChanged, this, [this] {
        guarded(m_words.selectionFailure, [this] { updateButtons(); });
    });
    connect(m_model, &WatchedFoldersModel::loaded, this, &WatchedFoldersEditor::keepSelection);
    connect(m_model, &WatchedFoldersModel::loadingFailed, this, [this](const Stemhaven::DbException& error) {
        Stemhaven::ErrorHandler::instance().reportError(m_words.loadingFailure, error, QtCriticalMsg);
    });
    connect(m_adder, &FolderAdder::folderAdded, this, [this](const QString& folder) {
        m_selected = folder;
        m_model->reload();
        emit edited();
    });
    connect(m_remover, &FolderRemover::folderRemoved, this, [this] {
        m_model->reload();
        emit edited();
    });
}

void WatchedFoldersEditor::reload() {
    guarded(m_words.readingFailure, [this] { m_model->reload(); });
}

bool WatchedFoldersEditor::isEmpty() const {
    return m_model->rowCount() == 0;
}

void WatchedFoldersEditor::removeCurrent() {
    const QModelIndex current = m_list->currentIndex();
    if (current.isValid())
        m_remover->remove(current.data(WatchedFoldersModel::PathRole).toString());
}

void WatchedFoldersEditor::updateButtons() {
    const QModelIndex current = m_list->currentIndex();
    m_removeButton->setEnabled(current.isValid());
    if (current.isValid())
        m_selected = current.data(WatchedFoldersModel::PathRole).toString();
}

/// Of the folder that was selected, or the first where it is gone, so that the keyboard keeps its place.
void WatchedFoldersEditor::keepSelection() {
    if (!m_list->currentIndex().isValid() && !isEmpty()) {
        const auto row = m_model->paths().indexOf(m_selected);
        m_list->setCurrentIndex(m_model->index(static_cast<int>(std::max<qsizetype>(row, 0))));
    }
    m_hint->setVisible(isEmpty());
    updateButtons();
}

bool WatchedFoldersEditor::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::KeyPress) {
        const auto& key = *static_cast<QKeyEvent*>(event);
        if (key.matches(QKeySequence::Delete) || key.key() == Qt::Key_Backspace) {
            removeCurrent();
            return true;
        }
    }
    return QWidget::eventFilter(watched, event);
}
