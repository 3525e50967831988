#pragma once

#include <QByteArray>
#include <QDebug>
#include <QException>
#include <QString>

#include <iosfwd>

namespace Stemhaven {

/// Base of the failures that the program signals itself. Thrown by value, caught by reference, safe to copy
/// across threads.
class Exception : public QException {
public:
    explicit Exception(const QString& message);
    ~Exception() override = default;

    /// The message as UTF-8.
    const char* what() const noexcept override;
    QString message() const;

    Exception* clone() const override;
    void raise() const override;

private:
    QByteArray m_utf8Message;
};

QDebug operator<<(QDebug debug, const Exception& exception);
std::ostream& operator<<(std::ostream& stream, const Exception& exception);

} // namespace Stemhaven
