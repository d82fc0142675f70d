#pragma once

#include <string>
#include <string_view>

#include "instruments/dialect.h"
#include "platform/gpib.h"
#include "results/results_console.h"
#include "state/test_set_state.h"

namespace orvane {

/// The session to the radio test set, as the runs use it: lines out, readings in.
class TestSet {
 public:
  TestSet(CWGPIB& control, TestSetState& state, ResultsConsole& console)
      : control_(control), state_(state), console_(console) {}

  [[nodiscard]] bool Ready() const { return state_.TestSetReady; }
  /// By `TestSetKind`.
  [[nodiscard]] Dialect Kind() const { return DialectOf(state_.TestSetKind); }
  /// The selected test set's line for a purpose.
  [[nodiscard]] std::string Line(Purpose purpose, std::string_view value = {}) const {
    return LineFor(Kind(), purpose, value);
  }

  /// Every member below throws StationFailure when the instrument fails or there is no session.
  void Write(std::string_view text) { control_.Write(text); }
  /// Writes, then shows the text and a line end on the console.
  void WriteShown(std::string_view text);
  /// The reply with its line end.
  [[nodiscard]] std::string Read() { return control_.Read(); }

 private:
  CWGPIB& control_;
  TestSetState& state_;
  ResultsConsole& console_;
};

/// Nothing but blanks and line ends counts as no reading.
[[nodiscard]] bool IsEmptyReading(std::string_view reply);

}  // namespace orvane
