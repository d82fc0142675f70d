#pragma once

#include <vector>

#include "app/option_rows.h"

namespace orvane {

/// The options of the word that engineers go by.
void AddEngineerRows(std::vector<OptionRow>& rows);

}  // namespace orvane
