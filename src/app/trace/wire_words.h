#pragma once

#include <string>
#include <string_view>

namespace orvane {

/// What follows the sync bytes of a command frame, as the command line that it comes from, with the word's long form:
/// "rfpw 1 62 (rf_param_write)". Values are decimal; data of a length that the command has not are bytes.
/// An operation code of no command is "operation 7".
[[nodiscard]] std::string CommandWords(std::string_view body);

/// The first whole reply frame in what came since a command: "rfpr: status 0, item 1, value 62". Empty when there is
/// none.
[[nodiscard]] std::string ReplyWords(std::string_view received);

}  // namespace orvane
