#pragma once

#include <map>
#include <string>

#include "platform/layout.h"

namespace orvane {

/// What stands beside a control that bears no caption itself, as somebody says it who cannot see it: its group and
/// the caption ahead of it, in a table the heads of its row and column. "Power Index: Level", "Channels and losses:
/// Tx loss (dB), DCS". The control's own name where nothing stands beside it. Of what is pressed, only where several
/// bear one caption: the place that tells them apart.
[[nodiscard]] std::map<const Control*, std::string> CaptionsBeside(const Layout& layout);

}  // namespace orvane
