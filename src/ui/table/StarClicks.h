#pragma once

#include <QObject>

#include <optional>

class QMouseEvent;
class QTableView;
class SelectionKeeper;

/// A click on a star in the table. On a row that is selected it leaves the selection alone, so that each of
/// several projects can be rated; any other row is selected by it as by every click. The second click of a
/// double click does nothing.
class StarClicks : public QObject {
    Q_OBJECT

public:
    /// Both outlive this object.
    StarClicks(QTableView& table, const SelectionKeeper& projects, QObject* parent);

    bool eventFilter(QObject* watched, QEvent* event) override;

signals:
    /// stars: from the first up to the one that was clicked.
    void clicked(qint64 project, int stars);

private:
    struct Star {
        qint64 project;
        int stars;

        bool operator==(const Star&) const = default;
    };

    bool press(const QMouseEvent& event);
    bool release(const QMouseEvent& event);
    std::optional<Star> starAt(const QPoint& position) const;

    QTableView& m_table;
    const SelectionKeeper& m_projects;
    std::optional<Star> m_pressed;
    bool m_isTaken = false; ///< the table has not been told of the press
};
