#pragma once

#include "platform/layout.h"

namespace orvane {

struct FrmAutoCal;

[[nodiscard]] Layout LayOut(FrmAutoCal& panel);

}  // namespace orvane
