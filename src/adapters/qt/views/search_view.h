#pragma once

#include <QWidget>

#include "state/search_trail.h"

namespace orvane {

/// The power search as it converges, and beside it the DAC values that the levels of both bands have so far.
[[nodiscard]] QWidget* MakeSearchView(SearchTrail& trail, QWidget* parent);

}  // namespace orvane
