#pragma once

#include <QObject>

namespace Stemhaven {

/// Tells when the desktop's colour scheme, contrast or accent colour changes. Silent where Qt takes the
/// desktop's colours over by itself, and where there is no desktop to tell.
class AppearanceChanges : public QObject {
    Q_OBJECT

public:
    explicit AppearanceChanges(QObject* parent = nullptr);

signals:
    void changed();
};

} // namespace Stemhaven
