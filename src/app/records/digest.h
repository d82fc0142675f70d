#pragma once

#include <string>
#include <string_view>

namespace orvane {

/// SHA-256 in lower-case hexadecimal.
[[nodiscard]] std::string Sha256Of(std::string_view content);

}  // namespace orvane
