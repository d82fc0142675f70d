#pragma once

#include <string>

#include "app/records/text_table.h"

namespace orvane {

/// What standard output is: its width where it is a terminal, colours where that shows them and the user has not
/// forbidden them (NO_COLOR).
[[nodiscard]] Page PageOfStandardOutput();

/// Writes to standard output; on a terminal that is too low for it, by the user's pager (PAGER, else less).
void ShowOnScreen(const std::string& text);

}  // namespace orvane
