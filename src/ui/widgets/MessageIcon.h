#pragma once

#include <QIcon>
#include <QStyle>

/// The sign beside the text of a message, of the same kind as the other icons; null for anything else.
QIcon messageIcon(QStyle::StandardPixmap which);
