#include "app/errors/Exception.h"

#include <ostream>

namespace Stemhaven {

Exception::Exception(const QString& message) : m_utf8Message(message.toUtf8()) {}

const char* Exception::what() const noexcept {
    return m_utf8Message.constData();
}

QString Exception::message() const {
    return QString::fromUtf8(m_utf8Message);
}

Exception* Exception::clone() const {
    return new Exception(*this);
}

void Exception::raise() const {
    throw *this;
}

QDebug operator<<(QDebug debug, const Exception& exception) {
    return debug << exception.what();
}

std::ostream& operator<<(std::ostream& stream, const Exception& exception) {
    return stream << exception.what();
}

} // namespace Stemhaven
