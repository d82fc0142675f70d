#pragma once

#include <vector>

#include "app/option_rows.h"

namespace orvane {

/// The options of instruments that several stations use.
void AddSharing(std::vector<OptionRow>& rows);

}  // namespace orvane
