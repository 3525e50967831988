#pragma once

#include "ui/widgets/Icons.h"

#include <QToolButton>

/// A flat button that shows an icon, with its text as tool tip and accessible name, or the text where the
/// icon font is absent. It can be reached with the Tab key. Connect its signals: a default action would
/// replace what it shows.
class ToolButton : public QToolButton {
    Q_OBJECT

public:
    /// text is plain, without mnemonics.
    ToolButton(Glyph glyph, const QString& text, QWidget* parent = nullptr);

    /// For a button whose meaning changes.
    void present(Glyph glyph, const QString& text);
};
