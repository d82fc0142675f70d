#pragma once

#include <optional>
#include <string_view>

#include "base/numbers.h"

namespace orvane {

/// The code of an RF type as a parameter file gives it: one of the names, or else a hexadecimal number behind two
/// characters of prefix, "0x2031". @throws StationFailure when it is neither.
[[nodiscard]] Integer RFTypeCode(std::string_view text);

/// The name of a code that has one.
[[nodiscard]] std::optional<std::string_view> RFTypeName(Integer code);

}  // namespace orvane
