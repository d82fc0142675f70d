#include <gtest/gtest.h>

#include "bench/random.h"
#include "bench/virtual_bench.h"
#include "link/reply_decoder.h"
#include "link/target_link.h"
#include "panels/station_panels.h"
#include "platform/operation_nest.h"
#include "results/results_console.h"
#include "state/station_state.h"
#include "support/fake_desk.h"
#include "support/journal.h"
#include "support/memory_files.h"

/// The station's codec and the bench's were written apart. Here each is the other's judge.
namespace orvane::bench::test {
namespace {

class LinkOnBench : public ::testing::Test {
 protected:
  LinkOnBench() {
    state.reply.TargetMode = "TestMode";
    serial.setup.rThreshold = 1;
    serial.onComm = [this](int event) { link.OnComm(event); };
    serial.Open();
    link.Connect();
  }
  void Run(const std::string& line) {
    panels.main.txtResults.SetText("");
    link.RunTargetCommand(line);
    EXPECT_EQ(link.Status(), 0) << line;
  }
  std::string Shown() { return panels.main.txtResults.Text(); }

  VirtualEventLoop loop;
  VirtualBench bench{loop};
  SerialControl& serial = bench.Serial();
  orvane::test::Journal journal;
  orvane::test::FakeBoxes boxes{journal};
  orvane::test::MemoryFiles files;
  StationState state;
  StationPanels panels;
  ResultsConsole console{panels.main, state.console, files, boxes};
  ReplyDecoder decoder{loop, state.reply, state.tally, state.cal, state.ramp, panels.main, panels.baseBand, console};
  TargetLink link{loop, serial, panels.main, console, decoder, state.reply, state.tally, boxes};
};

TEST_F(LinkOnBench, CarriesEveryByteIntoTheEepromAndBack) {
  Random chance(1, 11);
  for (int round = 0; round < 60; ++round) {
    std::string line = "stw 3 ";
    std::vector<int> written;
    for (int i = 0; i < 16; ++i) {
      // Every value in turn, with more than a fair share of those that have to be escaped.
      constexpr int kHard[] = {0x02, 0x10, 0x82, 0x90, 0x00, 0x80, 0xFF, 0x01, 0x14};
      const int dice = static_cast<int>(chance.Uniform(0, 3));
      // The station escapes only so far behind the plain length; a few hard values a line are in its reach.
      const bool hard = i % 4 == 0 && dice == 0;
      int value = hard ? kHard[static_cast<std::size_t>(chance.Uniform(0, 9))] : (round * 16 + i) % 256;
      value = !hard && (value == 0x02 || value == 0x10) ? 0x03 : value;
      written.push_back(value);
      line += std::to_string(value) + ",";
    }
    Run("spw 1 0");
    Run(line);
    Run("spw 1 0");
    Run("str 3");
    for (std::size_t i = 0; i < written.size(); ++i) {
      EXPECT_EQ(std::stoi(state.reply.ReplyBytes[9 + 2 * i].substr(2), nullptr, 16), written[i]) << line;
    }
  }
}

TEST_F(LinkOnBench, CarriesEverySixteenBitValue) {
  for (int value = 0; value < 32768; value += 37) {
    Run("rfpw 2 " + std::to_string(value));
    Run("rfpr 2");
    EXPECT_EQ(Shown(), "TCH ARFCN = " + std::to_string(value) + "\r\n");
  }
}

TEST_F(LinkOnBench, ReadsBackARampTable) {
  const std::string values = "0 0 0 0 0 5 2 3 5 7 10 14 17 21 24 24 21 21 19 17 14 11 9 6 4 3 2 4 0 0 0 0";
  Run("ttw 3 " + values);
  Run("ttr 3");
  std::string read;
  for (const std::string& value : state.ramp.RampTable[3]) {
    read += (read.empty() ? "" : " ") + value;
  }
  EXPECT_EQ(read, values);
}

TEST_F(LinkOnBench, ReadsBackTheFlashTable) {
  Run("stw 100 0x0270,0x0000,0x0000,0x0000,0x01F0");
  Run("str 100");
  const std::string text = panels.baseBand.txtChargerDisplay.Text();
  EXPECT_NE(text.find("CV_START_VOLTAGE     = 0x0270\r\n"), std::string::npos) << text;
  EXPECT_NE(text.find("SHUTDOWN_VOLTAGE    = 0x01F0\r\n"), std::string::npos) << text;
}

TEST_F(LinkOnBench, ReadsAPowerReport) {
  for (const char* line : {"rfpw 1 40", "rxpw 1 40", "scw 25 0x0002", "rfe 1", "sr 1 2"}) {
    Run(line);
  }
  EXPECT_TRUE(Shown().starts_with("PM = ")) << Shown();
  Run("sr 1 1");
  EXPECT_TRUE(Shown().starts_with("Rxlevel = ")) << Shown();
}

TEST_F(LinkOnBench, AnUnknownWordCostsAFullWait) {
  const TimePoint before = loop.Now();
  link.RunTargetCommand("cw 0 25 0x01E5");
  EXPECT_EQ(link.Status(), 255);
  EXPECT_GE(loop.Now() - before, std::chrono::milliseconds(2500));
}

}  // namespace
}  // namespace orvane::bench::test
