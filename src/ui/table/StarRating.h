#pragma once

#include <QMetaType>
#include <QPolygonF>
#include <QRect>
#include <QSize>

class QPainter;
class QPalette;
class QString;

/// A rating as a row of stars, with the outline of a star for each that is not given.
class StarRating {
public:
    enum class EditMode { Editable = 0, ReadOnly = 1 };

    explicit StarRating(int starCount = 0, int maxStarCount = 5);

    int starCount() const { return m_starCount; }

    void setStarCount(int count) { m_starCount = count; }

    int maxStarCount() const { return m_maxStarCount; }

    /// Grows with the application's font. Stars to be clicked are a little larger.
    QSize sizeHint(EditMode mode = EditMode::ReadOnly) const;
    /// For a screen reader.
    QString accessibleText() const;

    /// The number of stars up to the position x of those that are painted in rect, read only; -1 beside them.
    int starAt(int x, const QRect& rect, Qt::LayoutDirection direction) const;

    /// The first star is where one begins to read. Remembers rect as the place of the stars.
    void paint(QPainter* painter, const QRect& rect, const QPalette& palette, EditMode mode, bool selected);

    /// The rectangle of the last paint, null before it.
    QRect paintRect() const { return m_paintRect; }

private:
    QPolygonF m_star;
    int m_starCount;
    int m_maxStarCount;
    QRect m_paintRect;
};

Q_DECLARE_METATYPE(StarRating)
