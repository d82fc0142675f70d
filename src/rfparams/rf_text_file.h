#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "state/rf_state.h"

namespace orvane {

/// A parameter file is a text of 1857 lines, label, Tab, "=", Tab, value. It is valid by its order alone: the reader
/// never looks at a label.

/// A whole one has some 60 KiB; comments and the tail of a longer old file may come on top.
inline constexpr std::uint64_t kLargestParameterFile = 4 << 20;

/// Files the word behind the "=" of each data line into `RFParamText` by the line's place among the data lines. Empty
/// lines and lines with a "/" anywhere are no data lines; a data line without an "=" keeps its place and leaves the
/// old text there; lines beyond position 2700 leave nothing. Sets `RFParamCount`.
/// @return the number of data lines.
int ReadParameterLines(std::string_view content, RFState& state);

/// What shows that the last file read was not a whole one and nothing else: "holds 900 values, not 1857". Empty when
/// nothing does.
[[nodiscard]] std::string DamageOfParameterLines(const RFState& state);

/// `RFParamText` into `RFParams`, all 1857 values; says in `recordIsWhole` whether all of them came from the last
/// file.
/// @throws StationFailure at the first text that does not convert: what stands before it is converted, the rest of
/// the record keeps its old values.
void FileToRFParamsConvert(RFState& state);

/// `RFParams` into `RFParamText`, all 1857 values. An RF type that has no name leaves its old text.
void RFParamsToDataConvert(RFState& state);

/// The 1857 lines of a file with the values of `RFParamText`.
[[nodiscard]] std::string ParameterFileText(const RFState& state);

/// "BAND(1).tx_Level(0).ramp_index(5)" for position 1179. @throws StationFailure beyond 0..1856.
[[nodiscard]] std::string ParameterLabel(int position);

}  // namespace orvane
