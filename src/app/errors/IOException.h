#pragma once

#include "app/errors/Exception.h"

class QFile;

namespace Stemhaven {

/// A failure to read or write a file.
class IOException : public Exception {
public:
    explicit IOException(const QString& message);
    /// Appends "File: " and the file's name to message, with nothing between.
    IOException(const QFile& file, const QString& message);

    IOException* clone() const override;
    void raise() const override;
};

} // namespace Stemhaven
