#pragma once

#include <QLabel>

/// Says in red what is wrong with what the user has entered. Plain text; keeps the place of its line while
/// nothing is wrong.
class ErrorLabel : public QLabel {
    Q_OBJECT

public:
    explicit ErrorLabel(QWidget* parent = nullptr);

    /// An empty text for no error.
    void showError(const QString& error);

protected:
    void changeEvent(QEvent* event) override;

private:
    void applyColor();
};
