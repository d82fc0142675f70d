#pragma once

#include <string>
#include <string_view>

namespace orvane {

/// The SHA-256 of a content, in lower-case hexadecimal.
[[nodiscard]] std::string Sha256Of(std::string_view content);

}  // namespace orvane
