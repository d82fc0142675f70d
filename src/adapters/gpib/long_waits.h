#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "platform/gpib.h"

namespace orvane {

/// The messages to instruments that keep the station waiting. Nothing of the station runs in such a wait; but whoever
/// shows the station to somebody is told of it again and again, and may go on showing.
///
/// A message that is answered soon goes as it would go with nobody listening.
class LongWaits {
 public:
  /// A message that is answered by then is no news.
  static constexpr std::chrono::milliseconds kUntold{100};
  /// From one telling to the next.
  static constexpr std::chrono::milliseconds kGlance{30};

  struct Wait {
    Integer address = 0;
    TimePoint lasts{};
    /// What the message may take; zero where nobody has said.
    TimePoint limit{};
  };

  LongWaits() = default;
  LongWaits(const LongWaits&) = delete;
  LongWaits& operator=(const LongWaits&) = delete;

  /// Called within a wait that lasts. Nothing may come out of it, and no message may go out in it.
  std::function<void()> onWait;

  /// The message under way; no value between messages.
  [[nodiscard]] std::optional<Wait> UnderWay() const;

  /// How long whoever waits may sleep before he looks up again.
  [[nodiscard]] TimePoint UntilGlance() const;
  /// He has looked up: whoever listens is told, once the wait has lasted long enough.
  void Glance() const;
  /// A wait that nothing ends early.
  void Sleep(TimePoint span) const;

  /// A message, for as long as it is on the stack.
  class Message {
   public:
    /// @param limit zero where nobody has said
    Message(LongWaits& waits, Integer address, TimePoint limit);
    Message(const Message&) = delete;
    Message& operator=(const Message&) = delete;
    ~Message() { waits_.begun_.reset(); }

   private:
    LongWaits& waits_;
  };

 private:
  struct Begun {
    Integer address;
    TimePoint at;
    TimePoint limit;
  };
  std::optional<Begun> begun_;
};

/// A bus whose messages are noted as waits; otherwise the bus itself.
class WaitedBus final : public GpibBus {
 public:
  WaitedBus(GpibBus& bus, LongWaits& waits) : bus_(bus), waits_(waits) {}
  [[nodiscard]] std::unique_ptr<GpibSession> Open(const GpibAddress& address) override;
  [[nodiscard]] std::string RouteOf(const GpibAddress& address) const override { return bus_.RouteOf(address); }

 private:
  GpibBus& bus_;
  LongWaits& waits_;
};

}  // namespace orvane
