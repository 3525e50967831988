#pragma once

#include "platform/ColorScheme.h"

#include <QObject>

#include <optional>

/// The look of the whole program: its style, the colours of its icons and, on a desktop that brings no
/// colours of its own, its light and dark palettes, live after the desktop's wish. In colours of a desktop
/// that are not readable it replaces those of the texts. Made in main after the
/// application object, and lives as long as it.
class Theme : public QObject {
    Q_OBJECT

public:
    /// scheme: light or dark whatever the desktop wishes, in colours of our own.
    explicit Theme(std::optional<Stemhaven::ColorScheme> scheme = {}, QObject* parent = nullptr);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void applyPalette() const;
    void mendPalette();

    std::optional<Stemhaven::ColorScheme> m_scheme;
    bool m_mendsColors = false; ///< the desktop brings colours
};
