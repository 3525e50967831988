#pragma once

#include "ui/widgets/Palettes.h"

#include <QObject>

class QDBusMessage;

/// What the desktop says about light and dark. Without a session bus it says light and never changes.
class DesktopAppearance : public QObject {
    Q_OBJECT

public:
    explicit DesktopAppearance(QObject* parent = nullptr);

    /// Asks the desktop, for at most a fraction of a second.
    static ColorScheme colorScheme();

signals:
    /// The scheme or the accent colour has changed.
    void changed();

private slots:
    void onSettingChanged(const QDBusMessage& message);
};
