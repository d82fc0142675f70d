#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <string_view>

#include "console_rig.h"

namespace orvane::test {

/// A parameter file whose value at each position is the position modulo 32.
inline std::string ParameterFile() {
  std::string text = "rf_revision\t=\tRF_PASCAL_20\r\n";
  for (int i = 1; i < 1857; ++i) text += "label\t=\t" + std::to_string(i % 32) + "\r\n";
  return text;
}

/// One record of a ramp table file: length, text, filler that says nothing.
inline std::string RampRecord(std::string_view text) {
  std::string record(128, '\xEE');
  record[0] = static_cast<char>(text.size());
  record[1] = '\0';
  record.replace(2, text.size(), text);
  return record;
}

inline std::string RampFile(std::string_view value) {
  std::string bytes;
  for (int i = 0; i < 992; ++i) bytes += RampRecord(value);
  return bytes;
}

inline std::string LossRecord(std::int64_t tenThousandths) {
  std::string record(128, '\xEE');
  for (std::size_t i = 0; i < 8; ++i) {
    record[i] = static_cast<char>(static_cast<std::uint64_t>(tenThousandths) >> (8 * i) & 0xFF);
  }
  return record;
}

inline std::string LossFile() {
  return LossRecord(-6000) + LossRecord(-7000) + LossRecord(-8000) + LossRecord(-9000) + LossRecord(300);
}

/// A station that is about to start, its three data files in the first place.
struct StartRig : ConsoleRig {
  StartRig() {
    files.content["/system/TI532.epm"] = ParameterFile();
    files.content["/system/RampTable.dat"] = RampFile("8");
    files.content["/system/Cable.loss"] = LossFile();
  }
};

}  // namespace orvane::test
