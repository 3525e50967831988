#pragma once

#include <QWidget>

class QComboBox;

/// What is written to the log.
class AdvancedPage : public QWidget {
    Q_OBJECT

public:
    explicit AdvancedPage(QWidget* parent = nullptr);

private:
    QComboBox* m_logLevel;
};
