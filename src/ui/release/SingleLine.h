#pragma once

#include <QValidator>

/// Makes one line of a text that is pasted into a field: a blank stands for line breaks between words, and
/// those around the text go. Everything else stays as it is.
class SingleLine : public QValidator {
    Q_OBJECT

public:
    using QValidator::QValidator;

    State validate(QString& input, int& position) const override;
};
