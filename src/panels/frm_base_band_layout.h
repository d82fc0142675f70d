#pragma once

#include "platform/layout.h"

namespace orvane {

struct FrmBaseBand;

[[nodiscard]] Layout LayOut(FrmBaseBand& panel);

}  // namespace orvane
