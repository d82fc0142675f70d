#pragma once

#include "platform/layout.h"

namespace orvane {

struct OrvaneMain;

[[nodiscard]] Layout LayOut(OrvaneMain& panel);

}  // namespace orvane
