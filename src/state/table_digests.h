#pragma once

#include <functional>
#include <map>
#include <string>
#include <string_view>

namespace orvane {

/// The installed data files that start-up reads, by name.
inline constexpr std::string_view kRFParameterFileName = "TI532.epm";
inline constexpr std::string_view kRampTableFileName = "RampTable.dat";
inline constexpr std::string_view kCableLossFileName = "Cable.loss";

/// The SHA-256, in lower-case hexadecimal, that an installed data file has to have, by the file's name. A file that
/// is not named here may have any content that its kind can have.
using TableDigests = std::map<std::string, std::string, std::less<>>;

/// The SHA-256 of a content, in lower-case hexadecimal.
using DigestOf = std::function<std::string(std::string_view content)>;

}  // namespace orvane
