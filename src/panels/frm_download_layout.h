#pragma once

#include "platform/layout.h"

namespace orvane {

struct FrmDownLoad;

[[nodiscard]] Layout LayOut(FrmDownLoad& panel);

}  // namespace orvane
