#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <numeric>

#include "rfparams/eeprom_image.h"
#include "rfparams/rf_text_file.h"

namespace orvane {
namespace {

using ::testing::Each;
using ::testing::Ge;
using ::testing::Le;
using ::testing::SizeIs;

std::string Installed(const std::string& name) {
  std::ifstream in(std::string(ORVANE_DATA_DIR "/").append(name), std::ios::binary);
  EXPECT_TRUE(in) << name;
  return {std::istreambuf_iterator<char>(in), {}};
}

std::vector<std::string> LinesWithTheirEnds(const std::string& content) {
  std::vector<std::string> lines;
  for (std::size_t at = 0; at < content.size();) {
    const auto end = content.find("\r\n", at);
    EXPECT_NE(end, std::string::npos);
    lines.push_back(content.substr(at, end - at));
    at = end == std::string::npos ? content.size() : end + 2;
  }
  return lines;
}

std::vector<int> RampTableOfFile(const std::string& content, std::size_t table) {
  std::vector<int> values;
  for (std::size_t j = 0; j < 32; ++j) {
    const std::string record = content.substr(128 * (32 * table + j), 128);
    const auto length = static_cast<std::size_t>(record.at(0));
    EXPECT_TRUE((length == 1 || length == 2) && record.at(1) == '\0') << table << ", " << j;
    values.push_back(std::stoi(record.substr(2, length)));
    EXPECT_EQ(std::to_string(values.back()), record.substr(2, length));
  }
  return values;
}

RFState LoadedParameters() {
  RFState rf;
  EXPECT_EQ(ReadParameterLines(Installed("TI532.epm"), rf), 1857);
  FileToRFParamsConvert(rf);
  return rf;
}

TEST(InstalledParameters, Are1857LinesInTheWrittenForm) {
  const auto lines = LinesWithTheirEnds(Installed("TI532.epm"));
  ASSERT_THAT(lines, SizeIs(1857));
  EXPECT_EQ(lines[0], "rf_revision\t=\tRF_PASCAL_20");
  EXPECT_EQ(lines[1].substr(0, 20), "low_agc_noise_thr\t=\t");
  EXPECT_EQ(lines[377], "BAND(0).g_magic\t=\t180");
  EXPECT_EQ(lines[438], "BAND(0).tx_Level(0).apc (5)\t=\t600");
  EXPECT_EQ(lines[1117], "BAND(1).g_magic\t=\t180");
  EXPECT_EQ(lines[1163], "BAND(1).tx_Level(0).apc (0)\t=\t720");
  EXPECT_EQ(lines[1179], "BAND(1).tx_Level(0).ramp_index(5)\t=\t5");
  EXPECT_EQ(lines[520], "BAND(0).chan_cal(0).chan_cal(0)\t=\t128");
  for (const auto& line : lines) EXPECT_EQ(line.find('/'), std::string::npos) << "a slash makes a comment: " << line;
}

TEST(InstalledParameters, AreWhatASaveWouldWrite) {
  RFState rf = LoadedParameters();
  EXPECT_EQ(rf.RFParams.rf_revision, 8240);
  RFParamsToDataConvert(rf);
  EXPECT_EQ(ParameterFileText(rf), Installed("TI532.epm"));
}

TEST(InstalledParameters, GiveEachLevelTheRampThatThePanelGivesIt) {
  const RFState rf = LoadedParameters();
  for (int i = 0; i < 32; ++i) {
    const auto at = static_cast<std::size_t>(i);
    EXPECT_EQ(rf.RFParams.BAND[0].tx_Level[at].ramp_index, i < 5 ? 0 : i < 20 ? i - 5 : 14) << i;
    EXPECT_EQ(rf.RFParams.BAND[1].tx_Level[at].ramp_index, i < 16 ? i : i < 29 ? 15 : 0) << i;
  }
}

TEST(InstalledParameters, HaveNeutralChannelCodesAndBandsInOrder) {
  const RFState rf = LoadedParameters();
  for (const auto& band : rf.RFParams.BAND) {
    EXPECT_THAT(band.g_magic, testing::AllOf(Ge(171), Le(191)));
    for (int a = 0; a < 4; ++a) {
      for (int b = 0; b < 8; ++b) {
        EXPECT_EQ(band.chan_cal(a, b).chan_cal, 128);
        if (b > 0) {
          EXPECT_GE(band.chan_cal(a, b).arfcn_limit, band.chan_cal(a, b - 1).arfcn_limit);
        }
      }
    }
  }
}

TEST(InstalledParameters, LeaveRoomForEscapesInEveryFrameOfADownload) {
  RFState rf = LoadedParameters();
  TMEEPROMDataMaker(rf);
  for (std::size_t first = 0; first < 1816; first += 32) {
    int escapes = 0;
    for (std::size_t i = first; i < std::min<std::size_t>(first + 32, 1816); ++i) {
      const int byte = std::stoi(rf.EepromImage[i], nullptr, 16) & 0xFF;
      escapes += byte == 2 || byte == 16 ? 1 : 0;
    }
    // A frame of 53 bytes takes 33 data bytes, 14 escapes of theirs and one of the checksum.
    EXPECT_LE(escapes, 14) << "chunk at " << first;
  }
}

TEST(InstalledRampTables, Are992RecordsOfRisingAndFallingLevels) {
  const std::string content = Installed("RampTable.dat");
  ASSERT_EQ(content.size(), 992U * 128U);
  for (std::size_t t = 0; t < 31; ++t) {
    const auto values = RampTableOfFile(content, t);
    const auto middle = values.begin() + 16;
    EXPECT_EQ(std::accumulate(values.begin(), middle, 0), 128) << t;
    EXPECT_EQ(std::accumulate(middle, values.end(), 0), 128) << t;
    EXPECT_TRUE(std::is_sorted(values.begin(), middle)) << t;
    EXPECT_TRUE(std::is_sorted(middle, values.end(), std::greater<>())) << t;
    EXPECT_THAT(values, Each(testing::AllOf(Ge(0), Le(31)))) << t;
    EXPECT_EQ(values.front(), 0) << "stands where a read reply has its status, table " << t;
  }
}

TEST(InstalledRampTables, AreThoseOfTheInstalledParameters) {
  const std::string content = Installed("RampTable.dat");
  const RFState rf = LoadedParameters();
  for (std::size_t t = 0; t < 31; ++t) {
    const auto values = RampTableOfFile(content, t);
    const auto& table = t < 15 ? rf.RFParams.BAND[0].ramp_tables[t] : rf.RFParams.BAND[1].ramp_tables[t - 15];
    for (std::size_t k = 0; k < 16; ++k) {
      EXPECT_EQ(table.ramp_up[k], values[k]) << t << ", " << k;
      EXPECT_EQ(table.ramp_down[k], values[k + 16]) << t << ", " << k;
    }
  }
}

TEST(InstalledLosses, AreFiveCountsOfTenThousandths) {
  const std::string content = Installed("Cable.loss");
  ASSERT_EQ(content.size(), 5U * 128U);
  // -5000 and 100 as 64-bit numbers, low byte first.
  const std::string half("\x78\xEC\xFF\xFF\xFF\xFF\xFF\xFF", 8);
  for (std::size_t i = 0; i < 4; ++i) EXPECT_EQ(content.substr(128 * i, 8), half) << i;
  EXPECT_EQ(content.substr(512, 8), std::string("\x64\0\0\0\0\0\0\0", 8));
}

}  // namespace
}  // namespace orvane
