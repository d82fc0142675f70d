#pragma once

#include <QWidget>

#include "platform/controls.h"

namespace orvane {

/// A lamp in the fill colour of its control, with a mark beside the colour: a tick on green, a cross on red, none
/// while it is dark. Nobody has to tell green from red.
[[nodiscard]] QWidget* MakeLamp(Lamp& lamp, QWidget* parent);

}  // namespace orvane
