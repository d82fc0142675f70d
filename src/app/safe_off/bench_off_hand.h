#pragma once

#include <utility>

#include "app/safe_off/off_hand.h"
#include "platform/event_loop.h"
#include "safe_off/switch_off.h"

namespace orvane {

/// Over a bus of the station's own: that of a virtual bench, which answers at once or never, and is gone with the
/// station whatever ends it.
class BenchOffHand final : public OffHand {
 public:
  BenchOffHand(EventLoop& loop, GpibBus& bus) : loop_(loop), bus_(bus) {}

  void Tell(const OffPlaces& places) override { places_ = places; }
  /// A bench that dies with its station is off.
  void Note(const std::string& /*file*/) override {}
  void SwitchOff(std::function<void(const OffOutcome&)> answered) override {
    loop_.Post([this, answered = std::move(answered)] { answered(Done()); });
  }
  void Dismiss() override {}

 private:
  [[nodiscard]] OffOutcome Done() {
    return {Done(OffPart::Supply, places_.supply), Done(OffPart::Load, places_.load)};
  }

  [[nodiscard]] std::string Done(OffPart part, const std::optional<GpibAddress>& place) {
    // There is no time for a second try.
    constexpr std::chrono::milliseconds kOnce{300};
    if (!place) return "";
    const OffClock clock{[this] { return loop_.Now(); }, [](TimePoint) {}};
    return ::orvane::SwitchOff(bus_, {{part, *place}}, clock, {kOnce, kOnce}).front();
  }

  EventLoop& loop_;
  GpibBus& bus_;
  OffPlaces places_ = kUsualOffPlaces;
};

}  // namespace orvane
