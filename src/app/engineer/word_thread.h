#pragma once

#include <string>

#include "app/engineer/engineer_word.h"
#include "platform/event_loop.h"

namespace orvane {

/// A look at words costs the station's thread nothing: it is taken on a thread of its own.
[[nodiscard]] WordLook LookOnAThread(EventLoop& loop, std::string digest);

}  // namespace orvane
