// Makes the installed data files out of the readable tables beside this file:
//   make_data SOURCE_FOLDER OUTPUT_FOLDER
// writes TI532.epm, RampTable.dat and Cable.loss.

#include <algorithm>
#include <exception>
#include <fstream>
#include <iostream>
#include <iterator>
#include <string>
#include <vector>

#include "base/failure.h"
#include "base/numbers.h"
#include "base/text.h"
#include "platform/files.h"
#include "ramp/ramp_file.h"
#include "ramp/ramp_record.h"
#include "rfparams/record_layout.h"
#include "rfparams/rf_text_file.h"
#include "txcal/side_tables.h"

namespace orvane {
namespace {

/// The lines of a table, without comments and empty lines.
std::vector<std::string> RowsOf(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  if (!in) throw StationFailure("Cannot read " + path);
  const std::string content{std::istreambuf_iterator<char>(in), {}};
  std::vector<std::string> rows;
  for (const std::string& line : LinesOf(content)) {
    const std::string row(TrimBlanksAndLineEnds(line.substr(0, line.find('#'))));
    if (!row.empty()) rows.push_back(row);
  }
  return rows;
}

void WriteOut(const std::string& path, const std::string& content) {
  std::ofstream out(path, std::ios::binary | std::ios::trunc);
  out.write(content.data(), static_cast<std::streamsize>(content.size()));
  out.flush();
  if (!out) throw StationFailure("Cannot write " + path);
}

/// The words of a text, each "a..b" and "axn" spelt out.
std::vector<std::string> ValuesOf(std::string_view text) {
  std::vector<std::string> values;
  while (!Trim(text).empty()) {
    const std::string_view word = TakeWord(text);
    if (const auto dots = word.find(".."); dots != std::string_view::npos) {
      for (int v = ToInteger(word.substr(0, dots)); v <= ToInteger(word.substr(dots + 2)); ++v) {
        values.push_back(std::to_string(v));
      }
    } else if (const auto times = word.find('x'); times != std::string_view::npos) {
      values.insert(values.end(), static_cast<std::size_t>(ToInteger(word.substr(times + 1))),
                    std::string(word.substr(0, times)));
    } else {
      values.emplace_back(word);
    }
  }
  return values;
}

/// Whether a label fits a pattern in which a * stands for an index.
bool Fits(std::string_view label, std::string_view pattern) {
  constexpr std::string_view kDigits = "0123456789";
  for (const char c : pattern) {
    if (c == '*') {
      const auto end = std::min(label.find_first_not_of(kDigits), label.size());
      if (end == 0) return false;
      label.remove_prefix(end);
    } else {
      if (label.empty() || label.front() != c) return false;
      label.remove_prefix(1);
    }
  }
  return label.empty();
}

RampState ReadRampTables(const std::string& folder) {
  RampState ramp;
  const auto rows = RowsOf(folder + "/ramp_tables.txt");
  if (rows.size() != kRampTables) throw StationFailure("ramp_tables.txt does not hold 31 tables.");
  for (std::size_t t = 0; t < rows.size(); ++t) {
    const auto values = ValuesOf(ReplaceAll(rows[t], ":", " "));
    if (values.size() != kRampValues + 1 || values.front() != std::to_string(t)) {
      throw StationFailure("Not table " + std::to_string(t) + " with 32 values: " + rows[t]);
    }
    std::copy(values.begin() + 1, values.end(), ramp.RampTable[t].begin());
  }
  return ramp;
}

void ReadParameters(const std::string& folder, std::vector<std::string>& texts) {
  for (const std::string& row : RowsOf(folder + "/parameters.txt")) {
    const auto equals = row.find('=');
    if (equals == std::string::npos) throw StationFailure("No \"=\" in: " + row);
    const auto pattern = Trim(std::string_view(row).substr(0, equals));
    const auto values = ValuesOf(std::string_view(row).substr(equals + 1));
    std::size_t hits = 0;
    for (std::size_t position = 0; position < kParameterCount; ++position) {
      if (!Fits(ParameterLabel(static_cast<int>(position)), pattern)) continue;
      if (!texts[position].empty()) throw StationFailure("A second value: " + row);
      texts[position] = values.at(hits++ % values.size());
    }
    if (hits == 0 || hits % values.size() != 0) {
      throw StationFailure(std::to_string(hits) + " labels for " + std::to_string(values.size()) + " values: " + row);
    }
  }
}

std::string ParameterFile(const std::string& folder, const RampState& ramp) {
  RFState rf;
  // The ramp tables come from their own file; until then they hold a number, so that the rest converts.
  for (std::size_t position = 0; position < kParameterCount; ++position) {
    if (ParameterLabel(static_cast<int>(position)).find(".ramp_tables(") != std::string::npos) {
      rf.RFParamText[position] = "0";
    }
  }
  ReadParameters(folder, rf.RFParamText);
  FileToRFParamsConvert(rf);
  CopyRampTablesToRFParams(ramp, rf.RFParams);
  // No panel edits the first band's last table: it repeats the one of the weakest level.
  auto& tables = rf.RFParams.BAND[0].ramp_tables;
  tables[15] = tables[14];
  RFParamsToDataConvert(rf);
  return ParameterFileText(rf);
}

std::string LossFile(const std::string& folder) {
  const auto rows = RowsOf(folder + "/cable_loss.txt");
  if (rows.size() != kLosses) throw StationFailure("cable_loss.txt does not hold 5 losses.");
  CalState cal;
  for (std::size_t i = 0; i < rows.size(); ++i) cal.LossTable[i] = Decimal4::FromText(rows[i]);
  return LossRecords(cal);
}

void Make(const std::string& source, const std::string& output) {
  const RampState ramp = ReadRampTables(source);
  WriteOut(output + "/TI532.epm", ParameterFile(source, ramp));
  WriteOut(output + "/RampTable.dat", RampRecords(ramp));
  WriteOut(output + "/Cable.loss", LossFile(source));
}

}  // namespace
}  // namespace orvane

int main(int argc, char** argv) {
  if (argc != 3) {
    std::cerr << "Usage: make_data SOURCE_FOLDER OUTPUT_FOLDER\n";
    return 2;
  }
  try {
    orvane::Make(argv[1], argv[2]);
    return 0;
  } catch (const std::exception& failure) {
    std::cerr << "make_data: " << failure.what() << "\n";
    return 1;
  }
}
