#pragma once

#include <QAccessible>
#include <QWidget>

namespace orvane {

/// What is drawn and takes no entry is told as a picture, by its accessible name.
void TellAsPicture(QWidget& widget);

/// Once ahead of the first window, or again: from then on a combo box is told by its accessible name, its text being
/// its value, as any other entry is.
void TellWidgetsByName();

}  // namespace orvane
