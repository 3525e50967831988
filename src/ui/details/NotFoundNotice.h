#pragma once

#include <QWidget>

class QLabel;

/// Says that the bundles of selected projects are not there, and what the user can do. Hidden where all are.
class NotFoundNotice : public QWidget {
    Q_OBJECT

public:
    explicit NotFoundNotice(QWidget* parent = nullptr);

    void present(int missing, int selected);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QLabel* m_title;
    QLabel* m_remedy;
};
