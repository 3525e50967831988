#pragma once

#include <QSplitter>

/// A splitter between panes side by side. Its edges are as thin as ever, but can be taken hold of over the
/// margin of the pane behind them, too.
class Splitter : public QSplitter {
    Q_OBJECT

public:
    explicit Splitter(QWidget* parent = nullptr) : QSplitter(Qt::Horizontal, parent) {}

    /// In points; the margins of the panes take up what the edge itself leaves of it.
    static constexpr int gripWidth = 24;

protected:
    QSplitterHandle* createHandle() override;
};
