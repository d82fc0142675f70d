#include "adapters/gpib/deadline.h"

#include <algorithm>
#include <limits>

namespace orvane {
namespace {

using Clock = std::chrono::steady_clock;
using namespace std::chrono_literals;

constexpr TimePoint kShortest = 1ms;

}  // namespace

std::string SpanText(TimePoint span) {
  if (span >= 1s) return std::to_string(span / 1s) + " s";
  if (span >= 1ms) return std::to_string(span / 1ms) + " ms";
  return std::to_string(span / 1us) + " us";
}

Deadline::Deadline(TimePoint span) : span_(span), at_(Clock::now() + std::max(span, kShortest)) {}

Deadline Deadline::LaterBy(TimePoint moment) const {
  Deadline later = *this;
  later.at_ += moment;
  return later;
}

TimePoint Deadline::Left() const { return std::max<TimePoint>(at_ - Clock::now(), TimePoint::zero()); }

int Deadline::LeftMs() const {
  constexpr std::chrono::milliseconds kLongestPoll(std::numeric_limits<int>::max());
  return static_cast<int>(std::min(std::chrono::ceil<std::chrono::milliseconds>(Left()), kLongestPoll).count());
}

}  // namespace orvane
