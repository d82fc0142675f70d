#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "platform/gpib.h"

namespace orvane {

/// What drives current through the Target, and can be left on by nobody's will.
enum class OffPart { Supply, Load };

/// Where they stand; no value where there is none.
struct OffPlaces {
  std::optional<GpibAddress> supply;
  std::optional<GpibAddress> load;
  friend bool operator==(const OffPlaces&, const OffPlaces&) = default;
};
/// As the panels come up.
inline constexpr OffPlaces kUsualOffPlaces{GpibAddress{0, 2, 0}, GpibAddress{0, 5, 0}};

/// Why each is not sure to be off, as a sentence; empty where it is off, or there is none.
struct OffOutcome {
  std::string supply;
  std::string load;
  friend bool operator==(const OffOutcome&, const OffOutcome&) = default;
};

/// What the operator is told: "The supply's output could not be made sure to be off: no connection: Connection
/// refused. Switch it off by hand."
struct NotOff {
  OffPart part;
  std::string text;
};
/// One for each that is not sure to be off.
[[nodiscard]] std::vector<NotOff> TextsOf(const OffOutcome& outcome);

// What passes between a station and the process that switches the bench off for it: a line each, on one pipe. When
// the pipe ends without an `OffFarewell`, the station is no more, and the process does it by itself.

/// Where the instruments stand from now on.
struct OffMove {
  OffPlaces places;
};
/// Where what is not sure is to be written down, should the station die from now on: a file, which becomes part of
/// the record of the run that is under way. Empty where there is none.
struct OffNote {
  std::string file;
};
/// To be done now, and answered under this number.
struct OffOrder {
  long number = 0;
};
/// The station has ended, and nothing is left to be done.
struct OffFarewell {};
using OffWord = std::variant<OffMove, OffNote, OffOrder, OffFarewell>;

struct OffAnswer {
  long number = 0;
  OffOutcome outcome;
};

/// A line with its end.
[[nodiscard]] std::string LineOf(const OffWord& word);
[[nodiscard]] std::string LineOf(const OffAnswer& answer);
/// No value for a line that is none of these; without its end.
[[nodiscard]] std::optional<OffWord> OffWordOf(const std::string& line);
[[nodiscard]] std::optional<OffAnswer> OffAnswerOf(const std::string& line);

/// Takes the first whole line off, without its end; no value while there is none.
[[nodiscard]] std::optional<std::string> TakeLine(std::string& received);

}  // namespace orvane
