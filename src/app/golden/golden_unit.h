#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <variant>

#include "app/golden/golden_book.h"
#include "app/golden/golden_check.h"
#include "app/golden/golden_options.h"
#include "platform/event_loop.h"
#include "platform/signal.h"

namespace orvane {

// Where a station stands with its golden unit. Times are milliseconds since 1970, UTC.

/// It was not run on this station, as far as anybody knows.
struct GoldenNeverChecked {};
/// Checked, inside its limits, and due again later.
struct GoldenGood {
  std::int64_t sinceMs;
  std::int64_t dueMs;
};
/// Checked and inside, but too long ago.
struct GoldenOverdue {
  std::int64_t sinceMs;
};
/// The last check was outside, or no complete PASS.
struct GoldenOutside {
  std::int64_t atMs;
  GoldenFinding finding;
};
/// One of those, and other units may be run all the same.
struct GoldenExcused {
  std::string why;
  std::int64_t untilMs;
};
using GoldenState = std::variant<GoldenNeverChecked, GoldenGood, GoldenOverdue, GoldenOutside, GoldenExcused>;

/// The station's own check: a unit whose readings are known is run every now and then as any other, and what is read
/// of it is held against a record of it. While it is due, or was outside its limits, no other unit is run, unless an
/// engineer says why.
class GoldenUnit {
 public:
  /// @param wallClock milliseconds since 1970, UTC
  GoldenUnit(GoldenOptions options, GoldenBook book, EventLoop& loop, std::function<std::int64_t()> wallClock);
  GoldenUnit(const GoldenUnit&) = delete;
  GoldenUnit& operator=(const GoldenUnit&) = delete;

  [[nodiscard]] const std::string& Serial() const { return options_.serial; }
  [[nodiscard]] GoldenState State() const;
  /// What came of the check that was made since the station's start; null where none was.
  [[nodiscard]] const GoldenFinding* LastCheck() const { return checkedHere_ ? &*finding_ : nullptr; }

  /// Why no run of the unit of that number may begin now; no value where it may.
  [[nodiscard]] std::optional<std::string> NextUnitRefusal(const std::string& serial) const;

  /// Other units may be run until the next check that is inside, or for as long as such a check would count; each
  /// record says why. @return false where nothing keeps them from it. @throws UnitFault for a text that no record can
  /// hold, and for none.
  bool Excuse(const std::string& why);

  /// A run begins: its tags say under which excuse.
  void Mark(RunIdentity& run) const;
  /// A run has ended: where it is of the golden unit, it is held against the reference, and its record says what came
  /// of it.
  void Take(RunRecord& record);

  /// Another state than before, or the same one anew.
  Signal<> changed;
  /// A check was made.
  Signal<const GoldenFinding&> checked;

 private:
  [[nodiscard]] bool IsExcused() const;
  /// Where nobody has said why.
  [[nodiscard]] GoldenState PlainState() const;
  void TellAt(std::int64_t ms);

  GoldenOptions options_;
  RunRecord reference_;
  EventLoop& loop_;
  std::function<std::int64_t()> wallClock_;
  std::optional<GoldenFinding> finding_;
  std::int64_t checkedMs_ = 0;
  bool checkedHere_ = false;
  std::optional<GoldenExcuse> excuse_;
  /// What is on its way in the loop finds out by it whether this is still there.
  std::shared_ptr<bool> alive_ = std::make_shared<bool>(true);
};

}  // namespace orvane
