#pragma once

#include <QString>

/// The direction in which a text is read, apart from that of the window around it.
enum class TextOrder {
    OfTheWindow,
    OfItsOwn,   ///< as its first letter says, as for names; from left to right where there is none, as in
                ///< "#100"
    LeftToRight ///< as paths and "175 BPM"
};

/// The text so that it keeps its order in a window that is read from right to left. Goes last, after the text
/// has been cut to its place.
QString isolated(const QString& text, Qt::LayoutDirection window, TextOrder order);
