#pragma once

#include <QWidget>

#include "platform/controls.h"

namespace orvane {

/// What a lamp says: "Ready", "Not ready", "Not used yet".
[[nodiscard]] QString LampWords(const Lamp& lamp);

/// A lamp in the colour of its control, with a shape beside the colour: a disk with a tick on green, an open ring
/// on red, a thin one while it is dark. Nobody has to tell green from red.
[[nodiscard]] QWidget* MakeLamp(Lamp& lamp, QWidget* parent);

}  // namespace orvane
