#pragma once

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "app/station.h"
#include "audit/auditor.h"
#include "bench/virtual_bench.h"
#include "platform/operator.h"
#include "platform/virtual_event_loop.h"
#include "support/kept_records.h"
#include "support/memory_files.h"
#include "wire_damage.h"

namespace orvane::proofs {

/// Boxes and file dialogs of an operator who is not there: a box gets its first button, a dialog the next name. What
/// ends the station is declined.
class Absent final : public Boxes, public FileDialogs {
 public:
  BoxButton Show(const Box& box) override;
  std::optional<std::string> ShowOpen(FileDialog& dialog) override { return Choose(dialog); }
  std::optional<std::string> ShowSave(FileDialog& dialog) override { return Choose(dialog); }

  /// Answers in their place, if it has an answer.
  std::function<std::optional<BoxButton>(const Box&)> onBox;
  std::function<std::optional<std::string>()> onDialog;

  /// Boxes since the beginning.
  std::uint64_t shown = 0;

 private:
  std::optional<std::string> Choose(FileDialog& dialog);
};

/// A bus that counts what is said on it.
class CountedBus final : public GpibBus {
 public:
  struct Counts {
    unsigned lines = 0;
    unsigned queries = 0;
    unsigned readings = 0;
  };

  explicit CountedBus(GpibBus& bus) : bus_(bus) {}
  [[nodiscard]] std::unique_ptr<GpibSession> Open(const GpibAddress& address) override;

  /// By primary address.
  std::map<Integer, Counts> counts;

 private:
  class Session;
  GpibBus& bus_;
};

/// The text of an installed data file.
[[nodiscard]] const std::string& InstalledFile(std::string_view name);

/// A standing station in virtual time, and one unit after the other in its fixture.
class Stand {
 public:
  /// @param records whether the record of each run is kept
  explicit Stand(bool records = false);

  /// The operator takes the unit out, if there is one, and puts another one in. The instruments are initialised
  /// again when `instrumentsToo`.
  void Insert(const bench::BenchOptions& unit, bool instrumentsToo);
  /// The one click. The text of the failure that stopped it, or none.
  const std::string& TakeThrough();

  /// What an operator does whom a verdict's reason tells to load the ramp tables again.
  void LoadTablesAgainWhereTold();

  [[nodiscard]] bool PassedComplete();
  [[nodiscard]] Verdict Concluded() const { return verdict_; }
  /// What is wrong with a station that is to be ready for the next click; empty when nothing is.
  [[nodiscard]] std::string Unready();
  /// "receive: complete; transmitDCS: why not; ..."
  [[nodiscard]] std::string Steps();
  /// What an auditor has to know about the present unit.
  [[nodiscard]] Subject ToAudit();

  [[nodiscard]] StationState& State() { return station.State(); }
  [[nodiscard]] StationPanels& Panels() { return station.Panels(); }

  VirtualEventLoop loop;
  Absent absent;
  test::MemoryFiles files;
  bench::VirtualBench bench;
  CountedBus bus{bench.Bus()};
  WireDamage line{loop, bench.Serial()};
  /// Of the runs so far, where they are kept.
  std::optional<test::KeptRecords> kept;
  Station station;
  Operator op;

 private:
  /// The station's world, with whoever keeps its records around it.
  [[nodiscard]] StationPorts Ports(bool records);
  void InitializeInstrument(Button& button);
  void LetTimePass(TimePoint span);

  bench::BenchOptions unit_;
  std::string failure_;
  Verdict verdict_ = Verdict::None;
};

}  // namespace orvane::proofs
