#include "program/whole_road.h"

#include <gtest/gtest.h>

#include <list>

namespace orvane::test {

using testing::HasSubstr;

void ExpectTheRoadOfTheEmbeddedBench(const std::string& seed, const std::vector<Route>& routes) {
  constexpr std::size_t kEepromBytes = 1816;
  const TempFolder embedded;
  std::list<TempFolder> folders;
  std::list<WiredBench> benches;
  std::vector<Arguments> options{{"--bench", "virtual:seed=" + seed + ",store=" + embedded.Path().string()}};
  for (const Route& route : routes) {
    folders.emplace_back();
    benches.emplace_back(Arguments{"--seed", seed, "--store", folders.back().Path().string()});
    options.push_back(route(benches.back()));
  }
  for (const auto& end : InitializeOnEach(options)) {
    EXPECT_EQ(end.status, 0) << end.output;
    EXPECT_EQ(end.errors, "");
    EXPECT_THAT(end.output, HasSubstr(" PASS\n"));
  }
  ASSERT_EQ(ContentOf(embedded / "eeprom.bin").size(), kEepromBytes);
  for (const TempFolder& folder : folders) {
    for (const char* memory : {"eeprom.bin", "flash100.txt"}) {
      EXPECT_TRUE(ContentOf(folder / memory) == ContentOf(embedded / memory)) << memory;
    }
  }
}

void ExpectNoInstruments(const Child::End& end, const std::string& text) {
  EXPECT_EQ(end.status, 2);
  EXPECT_THAT(end.errors, testing::StartsWith("ORVANE: Instrument at address 1, route " + text));
  EXPECT_THAT(end.errors, HasSubstr(" / ibsta = &H8000, iberr = 2 -> OK\n"));
  EXPECT_THAT(end.errors, HasSubstr("Error: Unable to open device / ibsta = &H8000 / iberr = 2 -> OK\n"));
  EXPECT_THAT(end.errors, HasSubstr("receive: The test set was not initialized.\n"));
}

void ExpectRunEndsWithItsBench(Station& station, WiredBench& bench, const std::string& state, const Json& value) {
  station.InitializeInstruments();
  const int run = station.SendClick("OrvaneMain.cmdTargetInitialize");
  station.AwaitState(state, value);
  bench.Kill();
  EXPECT_EQ(station.AnswerTo(run)["error"]["code"], -32005);
  EXPECT_EQ(station.Await("verdict")["result"], "NONE");
}

void ExpectWholeRun(Station& station) {
  station.InitializeInstruments();
  EXPECT_EQ(station.Click("OrvaneMain.cmdTargetInitialize")["result"], Json::object());
  const Json verdict = station.Await("verdict");
  EXPECT_EQ(verdict["result"], "PASS");
  EXPECT_EQ(verdict["complete"], true) << verdict;
}

}  // namespace orvane::test
