#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "platform/files.h"
#include "state/ramp_state.h"

namespace orvane {

/// A ramp table file holds 992 records of 128 bytes, the 32 values of table 0, then those of table 1, up to table 30.
/// A record is the length of its text in two bytes, low byte first, and the text; what is behind it has no meaning.

inline constexpr int kRampRecords = kRampTables * kRampValues;

/// The text of a record as it stands in a file; no value when it is cut off or says that it is longer than it is.
[[nodiscard]] std::optional<std::string> RampTextOf(std::string_view record);
/// The record of that number with that text. @throws StationFailure for a text that is too long for a record.
[[nodiscard]] std::string RampRecordOf(const std::string& text, int number);

/// Reads the records in order. One that is missing, or that says it is longer than a record, is passed over: its
/// element keeps its text. Whether a text is a number is not looked at.
void ReadRampRecords(File& file, RampState& state);

/// The bytes of such a file. @throws StationFailure for a text that is too long for a record.
[[nodiscard]] std::string RampRecords(const RampState& state);

/// The companion for a spreadsheet: three lines a table, the values behind tabs.
[[nodiscard]] std::string RampSideText(const RampState& state);

}  // namespace orvane
