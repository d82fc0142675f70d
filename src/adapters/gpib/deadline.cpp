#include "adapters/gpib/deadline.h"

#include <poll.h>

#include <algorithm>
#include <limits>

#include "adapters/gpib/long_waits.h"

namespace orvane {
namespace {

using Clock = std::chrono::steady_clock;
using namespace std::chrono_literals;

constexpr TimePoint kShortest = 1ms;

/// For poll(2): rounded up.
int Milliseconds(TimePoint span) {
  constexpr std::chrono::milliseconds kLongestPoll(std::numeric_limits<int>::max());
  return static_cast<int>(std::min(std::chrono::ceil<std::chrono::milliseconds>(span), kLongestPoll).count());
}

}  // namespace

std::string SpanText(TimePoint span) {
  if (span >= 1s) return std::to_string(span / 1s) + " s";
  if (span >= 1ms) return std::to_string(span / 1ms) + " ms";
  return std::to_string(span / 1us) + " us";
}

Deadline::Deadline(TimePoint span, const LongWaits* waits)
    : span_(span), at_(Clock::now() + std::max(span, kShortest)), waits_(waits) {}

Deadline Deadline::LaterBy(TimePoint moment) const {
  Deadline later = *this;
  later.at_ += moment;
  return later;
}

TimePoint Deadline::Left() const { return std::max<TimePoint>(at_ - Clock::now(), TimePoint::zero()); }

int Deadline::LeftMs() const { return Milliseconds(Left()); }

TimePoint Deadline::UntilGlance() const {
  return waits_ == nullptr ? Left() : std::min(Left(), waits_->UntilGlance());
}

void Deadline::Glance() const {
  if (waits_ != nullptr) waits_->Glance();
}

int Deadline::Poll(pollfd& descriptor) const {
  int events = ::poll(&descriptor, 1, Milliseconds(UntilGlance()));
  while (events == 0 && !Passed()) {
    Glance();
    // Also when the moment has passed meanwhile: what came in time was in time.
    events = ::poll(&descriptor, 1, Milliseconds(UntilGlance()));
  }
  return events;
}

}  // namespace orvane
