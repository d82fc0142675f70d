#include "link/deframer.h"

#include <random>

#include "link/link_rig.h"
#include "link/plain_deframer.h"

namespace orvane::test {
namespace {

std::string ValuesOf(const Deframed& reply) {
  std::string bytes;
  for (int i = 0; i < reply.count; ++i) bytes += static_cast<char>(reply.values[static_cast<std::size_t>(i)]);
  return Hex(bytes);
}

struct Case {
  std::string why;
  std::string gathered;
  std::string values;
  int start;  ///< -1: no frame
  int end;
};

class Deframer : public testing::TestWithParam<Case> {};

TEST_P(Deframer, Finds) {
  const Case& c = GetParam();
  const Deframed reply = Deframe(Bytes(c.gathered), ReplyLayout::Padded);
  EXPECT_EQ(ValuesOf(reply), c.values) << c.why;
  ASSERT_EQ(reply.frame.has_value(), c.start >= 0) << c.why;
  if (!reply.frame) return;
  EXPECT_EQ(reply.frame->start, c.start) << c.why;
  EXPECT_EQ(reply.frame->end, c.end) << c.why;
}

INSTANTIATE_TEST_SUITE_P(
    Padded, Deframer,
    testing::Values(Case{"a frame alone", "02 14 00 20 00 00 00 20 02", "02 14 00 20 00 00 00 20 02", 0, 8},
                    Case{"an escaped 02 is no terminator", "02 14 00 31 00 00 10 00 02 00 3E 02",
                         "02 14 00 31 00 00 00 02 00 3E 02", 0, 10},
                    Case{"an escaped 10", "02 14 00 31 00 00 10 00 10 00 3E 02", "02 14 00 31 00 00 00 10 00 3E 02",
                         0, 10},
                    Case{"two escapes in a row", "02 14 00 31 00 00 10 00 02 10 00 02 00 3E 02",
                         "02 14 00 31 00 00 00 02 00 02 00 3E 02", 0, 12},
                    Case{"the byte behind an escape is not looked at", "02 14 00 31 10 10 02 10 02",
                         "02 14 00 31 10 02 10 02", 0, 7},
                    Case{"a pad of 01 adds 128", "02 14 00 31 00 00 00 03 01 4F 00 7E 02",
                         "02 14 00 31 00 00 00 03 00 CF 00 7E 02", 0, 12},
                    Case{"pads ahead of the seventh byte tell nothing", "02 14 01 20 01 00 00 20 02",
                         "02 14 01 20 01 00 00 20 02", 0, 8},
                    Case{"behind a stray byte pads are looked for in the wrong places",
                         "55 02 14 00 45 00 00 00 13 00 01 00 00 00 57 02",
                         "55 02 14 00 45 00 00 00 13 00 00 80 00 00 57 02", 1, 15},
                    Case{"a stray escape behind the frame pulls its end in", "02 14 00 20 00 00 00 20 02 10 00 02",
                         "02 14 00 20 00 00 00 20 02 00 02", 0, 7},
                    Case{"a stray escape ahead of the frame leaves its start", "10 00 02 02 14 00 20 00 00 00 20 02",
                         "00 02 02 14 00 20 00 00 00 20 02", 3, 10},
                    Case{"the first of two frames", "02 14 00 20 00 00 00 20 02 02 14 00 21 00 00 00 21 02",
                         "02 14 00 20 00 00 00 20 02 02 14 00 21 00 00 00 21 02", 0, 8},
                    Case{"the shortest frame", "02 14 02", "02 14 02", 0, 2},
                    Case{"no terminator: escapes go, pads stay", "02 14 00 31 00 00 01 00 10 00 02",
                         "02 14 00 31 00 00 01 00 00 02", -1, 0},
                    Case{"no second sync", "02 15 00 02", "02 15 00 02", -1, 0}, Case{"nothing", "", "", -1, 0}));

TEST(Deframer, AValueThatIsLargeAlreadyOutgrowsItsByte) {
  const Deframed reply = Deframe(Bytes("02 14 00 31 00 00 01 80 02"), ReplyLayout::Padded);
  EXPECT_EQ(reply.values[7], 0x100);
  const Deframed raw = Deframe(Bytes("02 14 00 31 00 00 00 80 02"), ReplyLayout::Padded);
  EXPECT_EQ(raw.values[7], 0x80);
}

TEST(Deframer, InThePlainLayoutEscapesStandRightAhead) {
  const Deframed reply = Deframe(Bytes("02 14 31 00 10 02 01 05 10 10 07 02"), ReplyLayout::Plain);
  EXPECT_EQ(ValuesOf(reply), "02 14 31 00 02 01 05 10 07 02");
  ASSERT_TRUE(reply.frame);
  EXPECT_EQ(reply.frame->end, 9);
}

/// Bytes of which most mean something, so that escapes, pads and frames meet in every way.
std::string Tangle(std::mt19937& random) {
  constexpr std::string_view kLikely{"\x02\x14\x10\x01\x00\x20\x80", 7};
  std::string bytes(random() % (kGatheredLimit + 1), '\0');
  for (char& byte : bytes)
    byte = random() % 8 == 0 ? static_cast<char>(random()) : kLikely[random() % kLikely.size()];
  return bytes;
}

TEST(Deframer, AgreesWithAPlainFormulationOnTangledBytes) {
  std::mt19937 random(1);
  for (int i = 0; i < 5000; ++i) {
    const std::string bytes = Tangle(random);
    for (const ReplyLayout layout : {ReplyLayout::Padded, ReplyLayout::Plain}) {
      ASSERT_EQ(DifferenceOf(Deframe(bytes, layout), DeframedPlainly(bytes, layout)), "") << Hex(bytes);
    }
  }
}

}  // namespace
}  // namespace orvane::test
