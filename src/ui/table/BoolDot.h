#pragma once

#include <QMetaType>
#include <QSize>

class QPainter;
class QPalette;
class QRect;
class QString;

/// A yes or no as the table shows it: a dot or nothing.
class BoolDot {
public:
    explicit BoolDot(bool value = false) : m_value(value) {}

    bool value() const { return m_value; }

    QSize sizeHint() const;
    /// For a screen reader; empty for no.
    QString accessibleText() const;

    void paint(QPainter* painter, const QPalette& palette, const QRect& rect, bool selected) const;

private:
    bool m_value;
};

Q_DECLARE_METATYPE(BoolDot)
