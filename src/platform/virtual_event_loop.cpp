#include "platform/virtual_event_loop.h"

#include <algorithm>
#include <utility>

namespace orvane {

bool VirtualEventLoop::ServeOneDue() {
  if (events_.empty() || events_.top().when > now_) return false;
  // The queue hands out const references only; the event leaves it before it runs, since it may post others.
  auto run = std::move(const_cast<Event&>(events_.top()).run);  // NOLINT(cppcoreguidelines-pro-type-const-cast)
  events_.pop();
  run();
  return true;
}

void VirtualEventLoop::Yield(TimePoint until) {
  if (ServeOneDue()) {
    while (ServeOneDue()) {
    }
    return;
  }
  if (events_.empty() && until == kForever) throw EndlessWait();
  const TimePoint next = events_.empty() ? until : std::min(until, events_.top().when);
  now_ = std::max(now_, next);
  while (ServeOneDue()) {
  }
}

void VirtualEventLoop::PostAt(TimePoint when, std::function<void()> event) {
  events_.push({std::max(when, now_), posted_++, std::move(event)});
}

void VirtualEventLoop::RunDry() {
  while (!events_.empty()) Yield(kForever);
}

}  // namespace orvane
