#pragma once

#include "platform/layout.h"

namespace orvane {

struct FrmAutoCalTxResult;
struct FrmAutoCalRxResult;
struct FrmFail;
struct FrmFailPass;

[[nodiscard]] Layout LayOut(FrmAutoCalTxResult& panel);
[[nodiscard]] Layout LayOut(FrmAutoCalRxResult& panel);
[[nodiscard]] Layout LayOut(FrmFail& panel);
[[nodiscard]] Layout LayOut(FrmFailPass& panel);

}  // namespace orvane
