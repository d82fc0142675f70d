#pragma once

#include <string>
#include <string_view>

namespace orvane::test {

/// What is wrong with the texts that the station finds in a parameter file of that content, by position; empty when
/// nothing is: they are those of a second reader.
[[nodiscard]] std::string FaultOfParameterLines(std::string_view content);

/// What is wrong with the way the station takes a parameter file of that content; empty when nothing is: the image
/// can be made of whatever was converted, and a record that was converted whole comes back the same from its own
/// file.
[[nodiscard]] std::string FaultOfParameterFile(std::string_view content);

}  // namespace orvane::test
