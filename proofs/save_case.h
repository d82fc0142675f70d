#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "support/faulty_disk.h"

namespace orvane::test {

/// What stands where a file is to be saved, and what the operator answers.
enum class OldState { Nothing, Yes, No };
inline constexpr OldState kOldStates[] = {OldState::Nothing, OldState::Yes, OldState::No};

/// One save with one fault in its way.
struct SaveCase {
  /// The way of saving, by its place in SavePathNames().
  std::size_t path = 0;
  OldState old = OldState::Nothing;
  FaultyDisk::Fault fault;
  /// 0: the plain one. Others choose unit, name and old content.
  std::uint64_t seed = 0;
};

/// "ramp-main,yes,killed,28,7,0": what `--case` takes.
[[nodiscard]] std::string TextOf(const SaveCase& save);
[[nodiscard]] std::optional<SaveCase> SaveCaseOf(std::string_view text);

[[nodiscard]] const std::vector<std::string_view>& SavePathNames();
/// Every kind of fault with every error that it has; `at` is left to be chosen.
[[nodiscard]] std::vector<FaultyDisk::Fault> AllFaults();
/// A case of its seed alone.
[[nodiscard]] SaveCase RandomSaveCase(std::uint64_t seed);

}  // namespace orvane::test
