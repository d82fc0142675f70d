#pragma once

#include <optional>
#include <string_view>

namespace orvane {

/// The line of the first letter beyond ASCII in a TOML text that stands neither in a text nor in a comment, or that
/// ends the blanks behind a line folded by a backslash. No value where there is none. The library that reads such
/// files takes some of these letters for something that cannot be, and goes wherever that leads.
[[nodiscard]] std::optional<long> LineOfStrayLetter(std::string_view content);

}  // namespace orvane
