#pragma once

#include <QMetaType>
#include <QSize>

class QPainter;
class QPalette;
class QRect;
class QString;

/// A project's progress as the table shows it: a bar over a fraction of the cell's width, on a
/// track over all of it.
class ProgressBar {
public:
    explicit ProgressBar(float progress = 0.0F) : m_progress(progress) {}

    /// As stored; 0 to 1 in a sound record.
    float progress() const { return m_progress; }

    QSize sizeHint() const;
    /// For a screen reader; empty for no progress.
    QString accessibleText() const;

    void paint(QPainter* painter, const QPalette& palette, const QRect& rect, bool selected) const;

private:
    float m_progress;
};

Q_DECLARE_METATYPE(ProgressBar)
