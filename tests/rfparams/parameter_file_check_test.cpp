#include "rfparams/parameter_file_check.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <random>

namespace orvane {
namespace {

std::string InstalledFile() {
  std::ifstream in(std::string(ORVANE_DATA_DIR "/TI532.epm"), std::ios::binary);
  return {std::istreambuf_iterator<char>(in), {}};
}

TEST(ParameterFile, IsReadAsASecondReaderReadsItHoweverItIsSpoilt) {
  const std::string sound = InstalledFile();
  ASSERT_EQ(test::FaultOfParameterFile(sound), "");
  const std::string pieces = "=\t \r\n/0x&H-.e,\xE9";
  std::mt19937 random(11);
  const auto below = [&](std::size_t bound) {
    return std::uniform_int_distribution<std::size_t>(0, bound - 1)(random);
  };
  for (int turn = 0; turn < 60; ++turn) {
    std::string spoilt = sound;
    for (std::size_t i = below(20); i-- > 0;) {
      const std::size_t at = below(spoilt.size());
      switch (below(3)) {
        case 0:
          spoilt[at] = pieces[below(pieces.size())];
          break;
        case 1:
          spoilt.erase(at, below(200));
          break;
        default:
          spoilt.insert(at, 1 + below(3), pieces[below(pieces.size())]);
      }
    }
    ASSERT_EQ(test::FaultOfParameterLines(spoilt), "") << "turn " << turn;
    ASSERT_EQ(test::FaultOfParameterFile(spoilt), "") << "turn " << turn;
  }
}

}  // namespace
}  // namespace orvane
