#include "bench/wire_codec.h"

#include <gtest/gtest.h>

#include <numeric>

#include "bench/bytes_of.h"
#include "bench/random.h"

namespace orvane::bench::test {
namespace {

std::vector<Command> CommandsIn(const Bytes& bytes) {
  CommandReader reader;
  reader.Feed(bytes);
  std::vector<Command> commands;
  while (const auto command = reader.Next()) {
    commands.push_back(*command);
  }
  return commands;
}

struct CommandCase {
  const char* what;
  const char* wire;
  int operation;
  const char* data;
};

TEST(CommandFrame, IsReadAsTheStationWritesIt) {
  const CommandCase cases[] = {
      {"ti has no data", "02 14 20 20 02", 0x20, ""},
      {"rfe 0", "02 14 23 00 00 23 02", 0x23, "00 00"},
      {"rfpw 1 -1", "02 14 30 01 00 FF FF 31 02", 0x30, "01 00 FF FF"},
      {"a data byte 0x02 travels behind 0x10", "02 14 34 01 00 10 02 00 37 02", 0x34, "01 00 02 00"},
      {"a data byte 0x10 travels as 10 10", "02 14 23 10 10 00 33 02", 0x23, "10 00"},
      {"an escaped checksum of 0x10", "02 14 23 33 00 10 10 02", 0x23, "33 00"},
      {"an unknown word is operation 0", "02 14 00 00 02", 0x00, ""},
  };
  for (const CommandCase& row : cases) {
    const auto commands = CommandsIn(CommandBytes(row.wire));
    ASSERT_EQ(commands.size(), 1u) << row.what;
    EXPECT_EQ(commands[0].operation, row.operation) << row.what;
    EXPECT_EQ(HexOf(commands[0].data), row.data) << row.what;
  }
}

TEST(CommandFrame, IsPassedOverWhenItIsNotSound) {
  const std::pair<const char*, Bytes> cases[] = {
      {"bad checksum", CommandBytes("02 14 23 00 00 24 02")},
      {"no terminator", CommandBytes("02 14 23 00 00 23")},
      {"something in the fill", CommandBytes("02 14 23 00 00 23 02 07")},
      {"an escape ahead of a plain byte", CommandBytes("02 14 23 10 05 00 26 02")},
      {"neither data nor checksum", CommandBytes("02 14 20 02")},
  };
  for (const auto& [what, bytes] : cases) {
    EXPECT_TRUE(CommandsIn(bytes).empty()) << what;
  }
  Bytes shortFrame = CommandBytes("02 14 20 20 02");
  shortFrame.pop_back();
  EXPECT_TRUE(CommandsIn(shortFrame).empty());
}

TEST(CommandFrame, IsFoundBehindWhateverCameBefore) {
  const char* const leaders[] = {"AA 55 00", "02", "02 02", "02 14", "02 14 23 00", "02 14 23 00 00 24 02 00 00"};
  for (const char* const leader : leaders) {
    const auto commands = CommandsIn(BytesOf(leader) + CommandBytes("02 14 20 20 02"));
    ASSERT_EQ(commands.size(), 1u) << leader;
    EXPECT_EQ(commands[0].operation, 0x20) << leader;
  }
}

TEST(CommandFrame, MayComeInPiecesAndInARow) {
  const Bytes stream =
      CommandBytes("02 14 20 20 02") + CommandBytes("02 14 23 00 00 23 02") + CommandBytes("02 14 21 01 00 20 02");
  CommandReader reader;
  std::string seen;
  for (const std::uint8_t byte : stream) {
    reader.Feed(std::span(&byte, 1));
    while (const auto command = reader.Next()) {
      seen += std::to_string(command->operation) + " ";
    }
  }
  EXPECT_EQ(seen, "32 35 33 ");
}

TEST(CommandFrame, SurvivesAnyBytesAndStillFindsTheSoundFrameBehindThem) {
  for (std::uint64_t seed = 0; seed < 2000; ++seed) {
    Random chance(seed, 7);
    Bytes garbage(static_cast<std::size_t>(chance.Uniform(0, 120)));
    for (std::uint8_t& byte : garbage) {
      // Half of it is what frames are made of.
      constexpr std::uint8_t kParts[] = {0x02, 0x14, 0x10, 0x00, 0x20};
      byte = chance.Uniform(0, 1) < 0.5 ? kParts[static_cast<std::size_t>(chance.Uniform(0, 5))]
                                        : static_cast<std::uint8_t>(chance.Uniform(0, 256));
    }
    // 53 zeros behind end whatever the garbage began.
    const auto commands = CommandsIn(garbage + Bytes(53, 0) + CommandBytes("02 14 21 01 00 20 02"));
    ASSERT_FALSE(commands.empty()) << HexOf(garbage);
    EXPECT_EQ(commands.back().operation, 0x21) << HexOf(garbage);
  }
}

struct ReplyCase {
  const char* what;
  Reply reply;
  const char* wire;
};

TEST(ReplyFrame, CarriesEveryValueBehindAPad) {
  const ReplyCase cases[] = {
      {"ti", {32, 0, {}}, "02 14 00 20 00 00 00 20 02"},
      {"a failure status", {32, 1, {}}, "02 14 00 20 00 01 00 21 02"},
      {"a value from 0x80 up travels less 128 behind pad 01",
       {69, 0, {30, 0xF0, 0x01}},
       "02 14 00 45 00 00 00 1E 01 70 00 01 01 2A 02"},
      {"0x02 has its escape ahead of the pad",
       {49, 0, {2, 0x3E, 0}},
       "02 14 00 31 00 00 10 00 02 00 3E 00 00 00 0D 02"},
      {"0x10 likewise", {53, 0, {1, 0x10, 0}}, "02 14 00 35 00 00 00 01 10 00 10 00 00 00 24 02"},
      {"0x82 is escaped as it travels", {83, 0, {0x82}}, "02 14 00 53 00 00 10 01 02 01 51 02"},
      {"0x90 is escaped as it travels", {83, 0, {0x90}}, "02 14 00 53 00 00 10 01 10 01 43 02"},
      {"a checksum of 0x10", {0x20, 0x30, {}}, "02 14 00 20 00 30 10 00 10 02"},
      {"a status of 0x02", {0x20, 0x02, {}}, "02 14 00 20 10 00 02 00 22 02"},
  };
  for (const ReplyCase& row : cases) {
    EXPECT_EQ(HexOf(PaddedFrame(row.reply)), row.wire) << row.what;
  }
}

TEST(ReplyFrame, OfARampTableHasBareValuesAndTheFirstOneInThePlaceOfTheStatus) {
  Bytes values(32);
  std::iota(values.begin(), values.end(), std::uint8_t{0x20});
  values[0] = 0;
  EXPECT_EQ(
      HexOf(RampRowFrame(57, 3, values)),
      "02 14 00 39 03 00 21 22 23 24 25 26 27 28 29 2A 2B 2C 2D 2E 2F 30 31 32 33 34 35 36 37 38 39 3A 3B 3C 3D "
      "3E 3F 1A 02");
}

TEST(ReplyFrame, OfARampTableHasItsEscapesTwoAhead) {
  Bytes values(32, 0x30);
  values[0] = 0;
  values[5] = 0x02;
  values[9] = 0x10;
  EXPECT_EQ(HexOf(RampRowFrame(57, 2, values)),
            "02 14 00 10 39 02 00 30 30 30 10 30 02 30 30 10 30 10 30 30 30 30 30 30 30 30 30 30"
            " 30 30 30 30 30 30 30 30 30 30 30 30 19 02");
}

}  // namespace
}  // namespace orvane::bench::test
