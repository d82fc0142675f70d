#pragma once

#include <QPalette>
#include <optional>

#include "app/command_line.h"

namespace orvane {

[[nodiscard]] QPalette PaletteOf(Theme theme);

/// Whether a program that is to wear it is dark; without a wish as the desktop is.
[[nodiscard]] bool IsDark(std::optional<Theme> theme);

/// One look on every desktop, in the desktop's own colours where no theme is asked for.
void Wear(std::optional<Theme> theme);

}  // namespace orvane
