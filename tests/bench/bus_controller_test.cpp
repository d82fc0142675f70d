#include "bench/bus_controller.h"

#include <gtest/gtest.h>

#include "bench/bench.h"

namespace orvane::bench::test {
namespace {

using namespace std::chrono_literals;

class Adapter : public testing::Test {
 protected:
  /// What it says to these bytes.
  std::string Say(std::string_view bytes) {
    adapter_.Hear(bytes);
    std::string output;
    busy_ = 0ms;
    while (const auto done = adapter_.Next()) {
      output += done->output;
      busy_ += done->busy;
    }
    return output;
  }

  Bench bench_{BenchOptions{}};
  BusController adapter_{{{1, &bench_.testSet}, {2, &bench_.supply}, {5, &bench_.load}}};
  /// For how long it read in vain meanwhile.
  std::chrono::milliseconds busy_{0};
};

TEST_F(Adapter, TellsItsVersionAndItsSettings) {
  EXPECT_EQ(Say("++ver\n"), "ORVANE virtual GPIB adapter, version 1.0\r\n");
  EXPECT_EQ(Say("++addr 5\n++addr\n"), "5\r\n");
  EXPECT_EQ(Say("++addr 5 96\r\n++addr\r\n"), "5 96\r\n");
  EXPECT_EQ(Say("++read_tmo_ms 3000\n++read_tmo_ms\n"), "3000\r\n");
  EXPECT_EQ(Say("++mode\n++auto\n++eoi\n++eot_enable\n"), "1\r\n0\r\n1\r\n0\r\n");
}

TEST_F(Adapter, DoesNotKnowWhatIsNoCommandOrBeyondItsBounds) {
  for (const char* line : {"++nonsense\n", "++read_tmo_ms 0\n", "++read_tmo_ms 3001\n", "++addr 31\n",
                           "++addr 5 95\n", "++addr x\n", "++auto 2\n"}) {
    EXPECT_EQ(Say(line), "Unrecognized command\r\n") << line;
  }
  EXPECT_EQ(Say("++addr\n"), "0\r\n");
}

TEST_F(Adapter, CarriesTextsAndRepliesToTheInstrumentThatIsAddressed) {
  EXPECT_EQ(Say("++addr 2\nVOLT 4.21\n++addr 5\nCURR 0.1\n++addr 2\nVOLT?\n"), "") << "nothing is read unasked";
  EXPECT_EQ(Say("++read eoi\n"), "+4.21000E+000\n");
  EXPECT_EQ(Say("++addr 5\nCURR?\n++read eoi\n"), "+1.00000E-001\n");
  EXPECT_EQ(busy_, 0ms);
}

TEST_F(Adapter, ReadsInVainForItsTimeOut) {
  for (const char* lines : {"++addr 2\n", "++addr 2\nVOLT 4\n", "++addr 7\n*IDN?\n", "++addr 2 96\n*IDN?\n"}) {
    EXPECT_EQ(Say(std::string("++read_tmo_ms 700\n") + lines + "++read eoi\n"), "") << lines;
    EXPECT_EQ(busy_, 700ms) << lines;
  }
}

TEST_F(Adapter, AReadThatDoesNotKnowTheEndWaitsForItsTimeOut) {
  EXPECT_EQ(Say("++read_tmo_ms 700\n++addr 2\n*IDN?\n++read\n"), "ORVANE,VIRTUAL SUPPLY,0,1.0\n");
  EXPECT_EQ(busy_, 700ms);
}

TEST_F(Adapter, MarksTheEndOfAReplyAndReadsByItselfIfItIsToldTo) {
  EXPECT_EQ(Say("++addr 2\n++eot_char 3\n++eot_enable 1\n++auto 1\nVOLT 4;VOLT?\n"), "+4.00000E+000\n\x03");
}

TEST_F(Adapter, ADeviceClearTakesTheReplyAway) {
  EXPECT_EQ(Say("++addr 2\n*IDN?\n++clr\n++read eoi\n"), "");
  EXPECT_EQ(Say("SYST:ERR?\n++read eoi\n"), "+0,\"No error\"\n");
}

TEST_F(Adapter, AnEscapedCharacterIsPartOfTheText) {
  EXPECT_EQ(Say("++addr 2\n++eos 3\nVOLT \x1b+4.5;\x1b\n VOLT?\n++read eoi\n"), "+4.50000E+000\n");
  EXPECT_EQ(Say("VOLT +3\nVOLT?\n++read eoi\n"), "+3.00000E+000\n") << "without an escape the plus is lost";
}

TEST_F(Adapter, LinesMayComeInPieces) {
  EXPECT_EQ(Say("+"), "");
  EXPECT_EQ(Say("+ad"), "");
  EXPECT_EQ(Say("dr 5\n++addr"), "");
  EXPECT_EQ(Say("\n"), "5\r\n");
}

TEST_F(Adapter, CountsHowOftenItsMemoryIsWritten) {
  (void)Say("++addr 5\n++auto 0\n");
  EXPECT_EQ(adapter_.Saved(), 2U);
  (void)Say("++savecfg 0\n++addr 2\n++auto 1\n");
  EXPECT_EQ(adapter_.Saved(), 2U);
}

}  // namespace
}  // namespace orvane::bench::test
