#pragma once

#include "platform/layout.h"

namespace orvane {

struct FrmMPAutoCal;

[[nodiscard]] Layout LayOut(FrmMPAutoCal& panel);

}  // namespace orvane
