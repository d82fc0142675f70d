#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "records/record.h"

namespace orvane {

/// A way to write records down, by the ending of the file's name.
struct ExportForm {
  /// ".json".
  std::string_view ending;
  /// None for an archive, whose making is handed in.
  std::string (*contentOf)(const std::vector<RunRecord>& records);
};

/// No value for a name with another ending.
[[nodiscard]] const ExportForm* ExportFormOf(std::string_view file);

/// ".json, .csv, .html, .xml or .orvane".
[[nodiscard]] std::string ExportEndings();

}  // namespace orvane
