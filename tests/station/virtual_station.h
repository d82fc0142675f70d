#pragma once

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "app/station.h"
#include "bench/virtual_bench.h"
#include "platform/operator.h"
#include "platform/virtual_event_loop.h"
#include "support/fake_desk.h"
#include "support/journal.h"
#include "support/journaling_bus.h"
#include "support/memory_files.h"

namespace orvane::test {

/// A whole station on the virtual bench in virtual time, with the installed data files on a disk in memory.
class VirtualStation {
 public:
  /// Installed data files of another content, by name; one without a value is not there.
  using OtherFiles = std::map<std::string, std::optional<std::string>, std::less<>>;
  /// What is put around the world that the station stands in. It is held for as long as that world is there.
  using Around = std::function<StationPorts(const StationPorts&, std::shared_ptr<void>& held)>;
  explicit VirtualStation(const bench::BenchOptions& options = {}, const OtherFiles& others = {},
                          const StationWishes& wishes = {}, const Around& put = nullptr);
  /// A unit of that seed with faults in their text form, "battery", "status-txpw@7".
  explicit VirtualStation(std::uint64_t seed, const std::vector<std::string>& faults = {});
  ~VirtualStation();

  /// Test set, supply and load are initialised by hand, as an operator does before the first Target.
  void InitializeInstruments();
  /// The operator's one click. The text of the failure that stopped it, or no value.
  std::optional<std::string> InitializeTarget();
  /// Both.
  std::optional<std::string> TakeTargetThrough();

  [[nodiscard]] StationState& State() { return station.State(); }
  [[nodiscard]] StationPanels& Panels() { return station.Panels(); }
  [[nodiscard]] Verdict Concluded() const { return verdict_; }
  /// "receive: complete" or "receive: why not", a line a step.
  [[nodiscard]] std::string Steps();

  VirtualEventLoop loop;
  Journal journal;
  FakeBoxes boxes{journal};
  FakeDialogs dialogs;
  MemoryFiles files;
  bench::VirtualBench bench;
  JournalingBus bus{bench.Bus(), journal};
  std::shared_ptr<void> around;
  Station station;
  Operator op;

 private:
  [[nodiscard]] StationPorts PlainPorts() { return {loop, bench.Serial(), bus, files, boxes, dialogs}; }

  Verdict verdict_ = Verdict::None;
};

/// The installed data file as the build made it.
[[nodiscard]] const std::string& InstalledFile(const std::string& name);

[[nodiscard]] bench::BenchOptions OptionsOf(std::uint64_t seed, const std::vector<std::string>& faults);

}  // namespace orvane::test
