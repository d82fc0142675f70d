#pragma once

#include <QWidget>

#include "platform/controls.h"
#include "platform/event_loop.h"

namespace orvane {

/// How long a pace of that many turns lasts on this machine, by the speed measured here; empty for a text
/// that is no count of turns.
[[nodiscard]] QWidget* MakePaceTime(TextBox& turns, EventLoop& loop, QWidget* parent);

}  // namespace orvane
