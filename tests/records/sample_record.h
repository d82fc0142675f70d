#pragma once

#include <string>

#include "records/record.h"

namespace orvane::test {

/// The id of a run: those of higher numbers are later.
[[nodiscard]] std::string IdOf(int number);

/// A whole run as large as they are: 110 readings, some 400 passes, twelve documents. Runs of different numbers have
/// different readings, and share the documents that a station has for all of them.
[[nodiscard]] RunRecord TypicalRecord(int number);

/// A small one with something in every place.
[[nodiscard]] RunRecord SmallRecord(int number);

/// 2026-11-22T03:04:05.678Z, when the run of number 0 began. Each one begins a minute after the one before.
inline constexpr std::int64_t kFirstBeganMs = 1795316645678;

}  // namespace orvane::test
