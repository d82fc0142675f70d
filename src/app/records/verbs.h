#pragma once

#include "app/records/doors.h"
#include "app/records/orders.h"

namespace orvane {

inline constexpr int kAnswerIsNo = 1;
inline constexpr int kNoStore = 74;

/// Does what was asked for. What went wrong is told on `errors`. @return the program's exit status.
[[nodiscard]] int CarryOut(const RecordsOrder& order, RecordsDoors& doors);

}  // namespace orvane
