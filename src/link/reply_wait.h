#pragma once

#include "platform/event_loop.h"

namespace orvane {

/// How long a reply may take, as the seconds field of the elapsed time.
inline constexpr int kReplyLimit = 3;

/// The seconds field of a span: rounded to whole seconds, a half to the even neighbour, and wrapped at the minute.
[[nodiscard]] int SecondsField(TimePoint elapsed);

/// The first moment of a wait at which its seconds field is no longer below the limit; `elapsed` has one below it.
[[nodiscard]] TimePoint EndOfWait(TimePoint elapsed);

}  // namespace orvane
