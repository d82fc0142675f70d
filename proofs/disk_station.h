#pragma once

#include <set>
#include <string>

#include "adapters/disk_files.h"
#include "app/station.h"
#include "bench/virtual_bench.h"
#include "platform/operator.h"
#include "platform/virtual_event_loop.h"
#include "save_case.h"
#include "support/fake_desk.h"
#include "support/faulty_disk.h"
#include "support/journal.h"

namespace orvane::test {

/// A whole station on the virtual bench in virtual time, on this machine's disk with something in its way.
class DiskStation {
 public:
  explicit DiskStation(std::uint64_t unit);

  /// Saves in one of the ways of SavePathNames, to `path`.
  void Save(std::size_t way, OldState old, const std::string& path, const FaultyDisk::Fault& fault);
  /// What a failure tells the operator was shown.
  [[nodiscard]] bool ToldOfAFailure() const;
  /// A run's verdict is PASS and stands on complete steps; other ways of saving have none and are always so.
  [[nodiscard]] bool Complete();
  [[nodiscard]] bool CameToItsVerdict() const { return !ran_ || verdict_ == Verdict::Pass; }
  [[nodiscard]] bool Ran() const { return ran_; }
  /// The fault was met; and what could not even be removed.
  [[nodiscard]] bool Struck() const { return struck_; }
  [[nodiscard]] bool UnlinkFailed() const { return unlinkFailed_; }
  [[nodiscard]] std::string Boxes() const;

 private:
  void Click(std::size_t way);
  void TakeTargetThrough();
  void Log();

  FaultyDisk* disk_;
  VirtualEventLoop loop_;
  Journal journal_;
  FakeBoxes boxes_{journal_};
  FakeDialogs dialogs_;
  DiskFiles files_;
  bench::VirtualBench bench_;
  Station station_;
  Operator op_;
  bool ran_ = false;
  Verdict verdict_ = Verdict::None;
  bool struck_ = false;
  bool unlinkFailed_ = false;
  std::string failures_;
};

}  // namespace orvane::test
