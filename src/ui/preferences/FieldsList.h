#pragma once

#include "database/Field.h"

#include <QList>
#include <QListWidget>

/// The table's columns: shown or not by their check marks, in an order that is changed by dragging them, or
/// with Ctrl and the arrow keys.
class FieldsList : public QListWidget {
    Q_OBJECT

public:
    explicit FieldsList(QWidget* parent = nullptr);

    /// Emits nothing.
    void setFields(const QList<Stemhaven::Field>& fields);

    /// The columns' names in the order of the rows, and which of them are checked.
    struct Row {
        QString name;
        bool isChecked = false;
    };

    QList<Row> fieldRows() const;

signals:
    /// By the user, once for each change, however the view carries it out.
    void edited();

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    void request();
    void moveCurrent(int step);

    bool m_isFilling = false;
    bool m_isRequested = false;
};
