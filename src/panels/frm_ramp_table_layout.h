#pragma once

#include "platform/layout.h"

namespace orvane {

struct FrmRampTable;

[[nodiscard]] Layout LayOut(FrmRampTable& panel);

}  // namespace orvane
