#include "ui/actions/PaneKeys.h"

#include "ui/SidePanes.h"

#include <QAction>
#include <QMainWindow>
#include <QMenuBar>
#include <QShortcut>

#include <algorithm>

namespace {

constexpr int widthStep = 24;

bool takesKeys(const QWidget& widget) {
    return widget.isVisible() && widget.isEnabled() && widget.focusPolicy() & Qt::TabFocus;
}

/// Where the keyboard was in a pane, otherwise the first place for it there.
QWidget* focusPlaceIn(QWidget& pane) {
    if (QWidget* last = pane.focusWidget(); last && takesKeys(*last))
        return last;
    for (QWidget* next = pane.nextInFocusChain(); next != &pane; next = next->nextInFocusChain()) {
        if (pane.isAncestorOf(next) && takesKeys(*next))
            return next;
    }
    return nullptr;
}

} // namespace

PaneKeys::PaneKeys(QMainWindow& window, SidePanes& sidePanes, const QList<QWidget*>& panes)
    : QObject(&window),
      m_window(window),
      m_sidePanes(sidePanes),
      m_panes(panes) {
    const auto onKey = [&](const QKeySequence& key, auto what) {
        connect(new QShortcut(key, &window), &QShortcut::activated, this, what);
    };
    onKey(Qt::Key_F6, [this] { goOn(1); });
    onKey(Qt::SHIFT | Qt::Key_F6, [this] { goOn(-1); });
    onKey(Qt::Key_F10, [this] { openMenu(); });

    const auto addAction = [&](const QString& text, const QKeySequence& key, int step) {
        auto* action = new QAction(text, &window);
        action->setShortcut(key);
        window.addAction(action);
        connect(action, &QAction::triggered, this, [this, step] { widen(step); });
        m_widthActions.append(action);
    };
    addAction(tr("Make Pane &Wider"), Qt::CTRL | Qt::ALT | Qt::Key_Plus, widthStep);
    addAction(tr("Make Pane &Narrower"), Qt::CTRL | Qt::ALT | Qt::Key_Minus, -widthStep);
}

int PaneKeys::currentPane() const {
    const QWidget* focused = m_window.focusWidget();
    const auto found = std::find_if(m_panes.begin(), m_panes.end(), [&](const QWidget* pane) {
        return focused && (pane == focused || pane->isAncestorOf(focused));
    });
    return found == m_panes.end() ? -1 : static_cast<int>(found - m_panes.begin());
}

void PaneKeys::goOn(int step) {
    const auto count = static_cast<int>(m_panes.size());
    int pane = currentPane();
    for (int tried = 0; tried < count; ++tried) {
        pane = (pane + step + count) % count;
        if (!m_panes[pane]->isVisible())
            continue;
        if (QWidget* place = focusPlaceIn(*m_panes[pane])) {
            place->setFocus(step > 0 ? Qt::TabFocusReason : Qt::BacktabFocusReason);
            return;
        }
    }
}

void PaneKeys::openMenu() {
    QMenuBar& menus = *m_window.menuBar();
    if (!menus.actions().isEmpty())
        menus.setActiveAction(menus.actions().constFirst());
}

void PaneKeys::widen(int step) {
    switch (currentPane()) {
    case 0:
        m_sidePanes.widenSidebar(step);
        break;
    case 1: // at the cost of the details
        m_sidePanes.widenDetails(-step);
        break;
    case 2:
        m_sidePanes.widenDetails(step);
        break;
    default:
        break;
    }
}
