#include "app/safe_off/off_lanes.h"

#include <chrono>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <thread>
#include <utility>
#include <variant>

#include "safe_off/switch_off.h"

namespace orvane {
namespace {

using namespace std::chrono_literals;

constexpr TimePoint kWhole = 2600ms;
constexpr auto kNoLonger = 2900ms;
/// The GPIB library knows few time-outs, and takes the next longer one: this is one of them.
constexpr TimePoint kNativeMessage = 1s;

/// Instruments that share a wire, and stand in line for it.
using Lane = std::vector<OffJob>;

std::vector<Lane> LanesOf(const GpibRoutes& routes, const OffPlaces& places) {
  std::vector<OffJob> jobs;
  if (places.supply) jobs.push_back({OffPart::Supply, *places.supply});
  if (places.load) jobs.push_back({OffPart::Load, *places.load});
  std::vector<Lane> lanes;
  Lane together;
  for (const OffJob& job : jobs) {
    // Behind a gateway each has a connection of its own, too.
    const bool alone =
        routes.instruments.contains(job.address.primary) || std::holds_alternative<GatewayRoute>(routes.bus);
    if (alone) {
      lanes.push_back({job});
    } else {
      together.push_back(job);
    }
  }
  if (!together.empty()) lanes.push_back(together);
  return lanes;
}

/// What the lanes have found out so far. A lane that hangs may outlive whoever asked.
struct Findings {
  std::mutex mutex;
  std::condition_variable changed;
  OffOutcome outcome;
  std::size_t lanesOpen = 0;

  std::string& Of(OffPart part) { return part == OffPart::Supply ? outcome.supply : outcome.load; }
};

void TakeLane(const GpibRoutes& routes, const Lane& lane, const std::shared_ptr<Findings>& findings) {
  RoutedGpibBus bus(routes);
  const bool native =
      !routes.instruments.contains(lane.front().address.primary) && std::holds_alternative<NativeRoute>(routes.bus);
  const OffClock clock{[] { return std::chrono::steady_clock::now().time_since_epoch(); },
                       [](TimePoint span) { std::this_thread::sleep_for(span); }};
  const std::vector<std::string> why = SwitchOff(bus, lane, clock, {kWhole, native ? kNativeMessage : kWhole});
  const std::lock_guard held(findings->mutex);
  for (std::size_t i = 0; i < lane.size(); ++i) findings->Of(lane[i].part) = why[i];
  --findings->lanesOpen;
  findings->changed.notify_all();
}

}  // namespace

OffOutcome SwitchBenchOff(const GpibRoutes& routes, const OffPlaces& places) {
  const auto end = std::chrono::steady_clock::now() + kNoLonger;
  const auto findings = std::make_shared<Findings>();
  const std::vector<Lane> lanes = LanesOf(routes, places);
  findings->lanesOpen = lanes.size();
  for (const Lane& lane : lanes) {
    for (const OffJob& job : lane) findings->Of(job.part) = "its route hangs.";
    std::thread([routes, lane, findings] { TakeLane(routes, lane, findings); }).detach();
  }
  std::unique_lock held(findings->mutex);
  findings->changed.wait_until(held, end, [&] { return findings->lanesOpen == 0; });
  return findings->outcome;
}

}  // namespace orvane
