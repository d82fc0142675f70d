#pragma once

#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "records/record.h"

namespace orvane {

/// Bytes that are no record, in words.
class DamagedRecord : public std::runtime_error {
  using std::runtime_error::runtime_error;
};

/// What one table holds of a record, by the table's name: "run", "step", "reading", "pass", "box", "tag". Equal rows
/// have equal bytes, and the other way round.
[[nodiscard]] std::vector<std::pair<std::string_view, std::string>> RowBytesOf(const RunRecord& record);

/// All of a record, its documents included. Numbers are stored least significant byte first, a text behind its length
/// in four bytes, a number with a fraction as its 64 bits (IEEE 754), rows behind their count in four bytes; what may
/// be unknown behind a byte, 1 or 0. Each group of rows stands behind its name and its length.
[[nodiscard]] std::string BytesOf(const RunRecord& record);

/// @throws DamagedRecord for bytes that BytesOf gives of no record.
[[nodiscard]] RunRecord RunRecordOf(std::string_view bytes);

}  // namespace orvane
