#pragma once

#include <vector>

#include "app/option_rows.h"

namespace orvane {

/// The options of a station's golden unit.
void AddGoldenRows(std::vector<OptionRow>& rows);

}  // namespace orvane
