#include <random>

#include "link/wire_check.h"

namespace orvane::test {
namespace {

template <class Choices>
auto OneOf(const Choices& choices, std::mt19937& random) {
  return choices[random() % std::size(choices)];
}

TEST(RandomLines, PutNothingButSoundFramesOnTheWire) {
  constexpr std::array kWords{"ti",  "tms", "rfe", "sr",  "scw", "rfpw", "rfpr", "rxpw", "rxpr", "txpw", "txpr",
                              "ttw", "ttr", "mpw", "mpr", "spw", "spr",  "stw",  "str",  "se",   "cw",   ""};
  constexpr std::array kArguments{"0",  "1",   "2",      "3",     "16", "100", "0x10",  "&H2",  "255",
                                  "-1", "256", "0x0210", "-1180", "zz", "1.5", "40000", "0xx1", "20"};
  std::mt19937 random(2);
  LinkRig rig;
  for (int i = 0; i < 3000; ++i) {
    std::string line = OneOf(kWords, random);
    for (auto words = random() % (random() % 8 == 0 ? 45 : 7); words > 0; --words) {
      line += std::string(" ") + OneOf(kArguments, random);
    }
    ASSERT_EQ(FaultOfLine(rig, line), "") << line;
  }
}

TEST(RandomReplies, LeaveTheLinkAtRest) {
  constexpr std::string_view kLikely{"\x02\x14\x10\x01\x00\x20\x31\x45\x24", 9};
  constexpr std::array<std::size_t, 4> kPieces{1, 3, 14, 500};
  std::mt19937 random(3);
  for (int i = 0; i < 1000; ++i) {
    LinkRig rig;
    std::string bytes = random() % 4 == 0 ? "" : "\x02\x14";
    for (auto size = random() % 40; size > 0; --size) bytes += OneOf(kLikely, random);
    ASSERT_EQ(FaultOfReply(rig, bytes, OneOf(kPieces, random)), "") << Hex(bytes);
  }
}

}  // namespace
}  // namespace orvane::test
