#pragma once

#include <string_view>

#include "link/command_words.h"
#include "link/frame.h"

namespace orvane {

/// What a command line comes to: the data of its frame.
struct CommandData {
  FrameData data{};
  Integer count = 0;

  /// @throws StationFailure beyond the array.
  void Add(Integer value);
};

/// One word of the command language.
struct CommandRow {
  std::string_view word;
  std::string_view longForm;
  Integer code;
  /// So many words behind the command word must be there.
  int required;
  /// Adds the data bytes. @return false when an argument is missing that only this command knows to need.
  /// @throws StationFailure for arguments that are no numbers or do not fit.
  bool (*encode)(const WordArray& words, CommandData& frame);
};

/// The row of a command word, short or long form, to the letter. A word of no row gives a row of its own: such a
/// line goes out with operation code 0 and no data.
[[nodiscard]] const CommandRow& CommandOf(std::string_view word);

/// The row of an operation code, or null.
[[nodiscard]] const CommandRow* CommandRowOf(Integer code);

}  // namespace orvane
