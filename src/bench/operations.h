#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

namespace orvane::bench {

/// What the Target's firmware calls its test-mode operations.
enum class Op : std::uint8_t {
  kInit = 32,
  kModeSet = 33,
  kRfEnable = 35,
  kStatsRead = 36,
  kStatsConfigWrite = 37,
  kRfWrite = 48,
  kRfRead = 49,
  kRxWrite = 52,
  kRxRead = 53,
  kTxWrite = 54,
  kTxRead = 55,
  kTemplateWrite = 56,
  kTemplateRead = 57,
  kMiscWrite = 68,
  kMiscRead = 69,
  kSpecialWrite = 80,
  kSpecialRead = 81,
  kTableWrite = 82,
  kTableRead = 83,
  kSpecialEnable = 84,
};

struct OperationRow {
  Op code;
  std::string_view word;
  std::size_t fewest;  ///< data bytes
  std::size_t most;
};

inline constexpr std::array kOperations{
    OperationRow{Op::kInit, "ti", 0, 0},
    OperationRow{Op::kModeSet, "tms", 2, 2},
    OperationRow{Op::kRfEnable, "rfe", 2, 2},
    OperationRow{Op::kStatsRead, "sr", 4, 4},
    OperationRow{Op::kStatsConfigWrite, "scw", 8, 8},
    OperationRow{Op::kRfWrite, "rfpw", 4, 4},
    OperationRow{Op::kRfRead, "rfpr", 2, 2},
    OperationRow{Op::kRxWrite, "rxpw", 4, 4},
    OperationRow{Op::kRxRead, "rxpr", 2, 2},
    OperationRow{Op::kTxWrite, "txpw", 4, 4},
    OperationRow{Op::kTxRead, "txpr", 2, 2},
    OperationRow{Op::kTemplateWrite, "ttw", 33, 33},
    OperationRow{Op::kTemplateRead, "ttr", 1, 1},
    OperationRow{Op::kMiscWrite, "mpw", 4, 4},
    OperationRow{Op::kMiscRead, "mpr", 2, 2},
    OperationRow{Op::kSpecialWrite, "spw", 4, 4},
    OperationRow{Op::kSpecialRead, "spr", 2, 2},
    // One byte for the table's number, then what the table carries.
    OperationRow{Op::kTableWrite, "stw", 1, 48},
    OperationRow{Op::kTableRead, "str", 1, 1},
    OperationRow{Op::kSpecialEnable, "se", 2, 2},
};

[[nodiscard]] constexpr const OperationRow* RowOfOperation(std::uint8_t code) {
  for (const OperationRow& row : kOperations) {
    if (static_cast<std::uint8_t>(row.code) == code) {
      return &row;
    }
  }
  return nullptr;
}

[[nodiscard]] constexpr std::optional<std::uint8_t> OperationOf(std::string_view word) {
  for (const OperationRow& row : kOperations) {
    if (row.word == word) {
      return static_cast<std::uint8_t>(row.code);
    }
  }
  return std::nullopt;
}

static_assert(OperationOf("se") == 84 && RowOfOperation(0) == nullptr);

}  // namespace orvane::bench
