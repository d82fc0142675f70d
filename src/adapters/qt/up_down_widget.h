#pragma once

#include <QWidget>

#include "adapters/qt/hands.h"
#include "platform/controls.h"

namespace orvane {

/// Two small arrows, named "up" and "down"; held down they repeat. The arrow keys of `box` step it too.
[[nodiscard]] QWidget* MakeUpDown(UpDown& upDown, Hands& hands, QWidget* box, QWidget* parent);

}  // namespace orvane
