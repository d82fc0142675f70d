#pragma once

#include <optional>
#include <utility>

#include "bench/fixture.h"
#include "bench/handset.h"
#include "bench/instrument_line.h"
#include "bench/options.h"
#include "bench/supply.h"
#include "bench/target_line.h"
#include "bench/test_set.h"

namespace orvane::bench {

/// The whole bench as models: no clock, no loop, no thread. What goes in and in what order decides what comes out.
class Bench {
 public:
  /// @throws BenchOptionError when the store cannot be used.
  explicit Bench(const BenchOptions& options)
      : fixture_{.cableLossDb = options.cableLossDb,
                 .leadLossVolts = options.leadLossVolts,
                 .generator = {},
                 .uplink = {}},
        faults_(options.faults),
        handset_(std::in_place, fixture_, Memory(options.store), options.seed),
        testSetModel_(fixture_, options.seed),
        supplyModel_(fixture_) {}
  Bench(const Bench&) = delete;
  Bench& operator=(const Bench&) = delete;

  [[nodiscard]] const Handset& Target() const { return *handset_; }
  [[nodiscard]] const Fixture& Joined() const { return fixture_; }

  /// Another unit in place of the present one, on the same instruments, with what joins them as `options` say, and
  /// with faults of its own.
  /// @throws BenchOptionError when the store cannot be used.
  void Insert(const BenchOptions& options) {
    Memory kept(options.store);
    fixture_.cableLossDb = options.cableLossDb;
    fixture_.leadLossVolts = options.leadLossVolts;
    faults_ = FaultBoard(options.faults);
    handset_.emplace(fixture_, std::move(kept), options.seed);
    target.TakeUp();
  }

 private:
  Fixture fixture_;
  FaultBoard faults_;
  std::optional<Handset> handset_;
  TestSet testSetModel_;
  Supply supplyModel_;
  Load loadModel_;

 public:
  TargetLine target{*handset_, faults_};
  LineOf<TestSet> testSet{"test set", kTestSetFaults, faults_, testSetModel_};
  LineOf<Supply> supply{"supply", kSupplyFaults, faults_, supplyModel_};
  LineOf<Load> load{"load", kLoadFaults, faults_, loadModel_};
};

}  // namespace orvane::bench
