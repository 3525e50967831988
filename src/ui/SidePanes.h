#pragma once

#include <QObject>

class QSplitter;

/// The panes at both sides of the projects: shown or hidden, as wide as the user made them, now and after a
/// restart.
class SidePanes : public QObject {
    Q_OBJECT

public:
    /// The sidebar is the first of its splitter, the details are the last of theirs. Both outlive this
    /// object.
    SidePanes(QSplitter& sidebarSplitter, QSplitter& detailsSplitter, QObject* parent);

    bool isSidebarShown() const;
    bool areDetailsShown() const;

    /// Widths are in points. The default is for a sidebar of which no width is remembered.
    void showFilterSidebar(bool show, int defaultWidth = defaultSidebarWidth);
    void showProjectDetails(bool show);

    /// By so many points, as far as there is room. Does nothing for a hidden pane.
    void widenSidebar(int step);
    void widenDetails(int step);

    void restore();
    void store() const;

    static constexpr int defaultSidebarWidth = 220;
    static constexpr int defaultDetailsWidth = 320;

signals:
    /// One of the panes was shown or hidden.
    void changed();

private:
    void sidebarSplitterMoved();
    void detailsSplitterMoved();

    QSplitter& m_sidebarSplitter;
    QSplitter& m_detailsSplitter;
    int m_sidebarWidth = 0; ///< 0: none is remembered
    int m_detailsWidth = 0; ///< also while they are hidden
};
