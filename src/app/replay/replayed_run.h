#pragma once

#include <functional>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

#include "records/record.h"

namespace orvane {

/// An installed data file of another set of tables, by its name; no value where the set has none.
using OtherTable = std::function<std::optional<std::string>(const std::string& name)>;

/// How a run went when it was run again.
struct ReplayedRun {
  /// On the wires and the desk, as they were met, and how many there are in all; then those of what the run says of
  /// itself.
  std::vector<std::string> onTheWires;
  std::size_t onTheWiresInAll = 0;
  std::vector<std::string> inTheRecord;
  /// As the run would be recorded now.
  RunRecord now;

  [[nodiscard]] bool Same() const { return onTheWiresInAll == 0 && inTheRecord.empty(); }
  /// The first difference, and the others as far as a reader wants to see them, a line each. Empty for the same.
  [[nodiscard]] std::string Text() const;
};

/// What stands in the way of running a record again: no trace, no panels, an unknown kind of run.
class CannotReplay : public std::runtime_error {
  using std::runtime_error::runtime_error;
};

/// Takes a station through a recorded run once more, in virtual time, on a bench that consists of its record.
/// @param tables where another set of tables is to be tried
/// @throws CannotReplay
[[nodiscard]] ReplayedRun RunAgain(const RunRecord& record, const OtherTable& tables = nullptr);

}  // namespace orvane
