#include "app/errors/IOException.h"

#include <QFile>

namespace Stemhaven {

IOException::IOException(const QString& message) : Exception(message) {}

IOException::IOException(const QFile& file, const QString& message)
    : Exception(message + QStringLiteral("File: ") + file.fileName()) {}

IOException* IOException::clone() const {
    return new IOException(*this);
}

void IOException::raise() const {
    throw *this;
}

} // namespace Stemhaven
