#pragma once

#include <chrono>
#include <string>

#include "platform/event_loop.h"

struct pollfd;

namespace orvane {

class LongWaits;

/// "10 s", "300 ms", "10 us".
[[nodiscard]] std::string SpanText(TimePoint span);

/// A moment of the monotonic clock up to which a message may take. No wire to an instrument is faster than a
/// millisecond: a shorter span counts as one.
class Deadline {
 public:
  /// @param waits whom the waits up to it are told; null for nobody.
  explicit Deadline(TimePoint span, const LongWaits* waits = nullptr);

  [[nodiscard]] TimePoint Span() const { return span_; }
  /// The span that was given, in words.
  [[nodiscard]] std::string Text() const { return SpanText(span_); }
  [[nodiscard]] bool Passed() const { return Left() == TimePoint::zero(); }
  /// Never negative.
  [[nodiscard]] TimePoint Left() const;
  /// Milliseconds, rounded up.
  [[nodiscard]] int LeftMs() const;
  /// As poll(2) of one descriptor up to this moment.
  [[nodiscard]] int Poll(pollfd& descriptor) const;
  /// For whoever sleeps otherwise: how long he may at one go. Behind each he glances up.
  [[nodiscard]] TimePoint UntilGlance() const;
  void Glance() const;
  /// This moment, or the one `limit` from now when that is sooner.
  [[nodiscard]] Deadline Within(TimePoint limit) const { return limit < Left() ? Deadline(limit, waits_) : *this; }
  /// The same span and words, over a moment later.
  [[nodiscard]] Deadline LaterBy(TimePoint moment) const;

 private:
  TimePoint span_;
  std::chrono::steady_clock::time_point at_;
  const LongWaits* waits_;
};

}  // namespace orvane
