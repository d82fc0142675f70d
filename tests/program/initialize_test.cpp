#include <gtest/gtest.h>

#include <sstream>

#include "program/wired_bench.h"

namespace orvane::test {
namespace {

using testing::HasSubstr;

struct Outcome {
  const char* fault;
  int status;
  /// On standard error.
  const char* says;
};

/// What each unit or bench is worth, and why.
const Outcome kOutcomes[] = {
    {"battery", 1, "Warning: Battery Calibration ERROR. -> OK\n"},
    {"pa-dead", 1, "Warning:  Error in measuring Power. -> OK\n"},
    {"receiver-dead", 2, "The run ended without a verdict.\nreceive: "},
    {"pa-weak", 2, "PASS, but not every step was completed.\ntransmitDCS: DCS level 1 stopped at DAC 1020"},
    {"pa-weak", 2, "\nOUT OF TOLERANCE. Take the unit through once more."},
    {"supply-absent", 2, "\nNOT MEASURED. The unit is not calibrated."},
    {"supply-absent", 2, "PASS, but not every step was completed.\ncharger: Initialize Power Supply.\n"},
    {"testset-absent", 2, "PASS, but not every step was completed.\nreceive: The test set was not initialized.\n"},
    {"silent", 2, "Warning: Target을 Power On 해 주십시요 -> OK\nThe run ended without a verdict.\n"},
};

TEST(Initialize, AGoodUnitOfAnySeedPassesAndNothingIsToldOnStandardError) {
  const auto ends = InitializeOnEach(
      {{"--bench", "virtual"}, {"--bench", "virtual:seed=7"}, {"--bench", "virtual:seed=123456789"}});
  for (const auto& end : ends) {
    EXPECT_EQ(end.status, 0) << end.output << end.errors;
    EXPECT_THAT(end.output, HasSubstr(" PASS\n"));
    EXPECT_EQ(end.errors, "");
  }
}

TEST(Initialize, PressesTestSetSupplyAndLoadAndThenTheTarget) {
  const TempFolder folder;
  EXPECT_EQ(RunOrvane({"--initialize", "--bench", "virtual", "--trace", folder / "trace"}).status, 0);
  std::istringstream trace(ContentOf(folder / "trace"));
  std::vector<std::string> greeted;
  for (std::string line; std::getline(trace, line) && (greeted.empty() || greeted.back() != "COM1");) {
    const Json record = Json::parse(line);
    const bool greets = record.value("text", "") == "*IDN?" || record.value("says", "").starts_with("ti ");
    if (record.value("event", "") == "out" && greets) greeted.push_back(record["link"]);
  }
  EXPECT_EQ(greeted, (std::vector<std::string>{"GPIB 1", "GPIB 1", "GPIB 2", "GPIB 5", "COM1"}))
      << "the start-up greets the test set, too";
}

TEST(Initialize, EndsWithTheVerdictsStatusAndSaysWhatIsMissing) {
  std::vector<Arguments> benches;
  for (const Outcome& row : kOutcomes) benches.push_back({"--bench", std::string("virtual:fault=") + row.fault});
  const auto ends = InitializeOnEach(benches);
  for (std::size_t i = 0; i < ends.size(); ++i) {
    SCOPED_TRACE(kOutcomes[i].fault);
    EXPECT_EQ(ends[i].status, kOutcomes[i].status) << ends[i].output;
    EXPECT_THAT(ends[i].errors, HasSubstr(kOutcomes[i].says));
  }
}

TEST(InitializeOnWires, EndsWithTheVerdictsStatusAndSaysWhatIsMissing) {
  const Outcome rows[] = {
      {"status-ti@1000", 0, ""},  // never strikes
      {"battery", 1, "Warning: Battery Calibration ERROR. -> OK\n"},
      {"pa-weak", 2, "PASS, but not every step was completed.\ntransmitDCS: DCS level 1 stopped at DAC 1020"},
      {"supply-absent", 2, "Error: Unable to open device / ibsta = &H8000 / iberr = 2 -> OK\n"},
  };
  std::vector<std::unique_ptr<WiredBench>> benches;
  std::vector<Arguments> options;
  for (const Outcome& row : rows) {
    benches.push_back(std::make_unique<WiredBench>(Arguments{"--fault", row.fault}));
    options.push_back(benches.back()->Options());
  }
  const auto ends = InitializeOnEach(options);
  for (std::size_t i = 0; i < ends.size(); ++i) {
    SCOPED_TRACE(rows[i].fault);
    EXPECT_EQ(ends[i].status, rows[i].status) << ends[i].output;
    EXPECT_THAT(ends[i].errors, HasSubstr(rows[i].says));
    EXPECT_EQ(ends[i].errors.empty(), rows[i].status == 0) << ends[i].errors;
  }
}

TEST(InitializeOnWires, AnAddressWithoutARouteIsAnAbsentInstrumentAtItsInitialize) {
  WiredBench bench;
  const auto ends = InitializeOnEach({
      {"--com1", bench.Place("target"), "--instrument", "2=tcp:" + bench.Place("supply")},
  });
  EXPECT_EQ(ends[0].status, 2);
  EXPECT_THAT(ends[0].errors,
              testing::ContainsRegex("ORVANE: Instrument at address 1, route .* ibsta = &H8000, iberr = 2"));
  EXPECT_THAT(ends[0].errors, HasSubstr("Warning: Initialize Test Set at first. -> OK\n"));
  // Which instrument failed, over which route, and why, ahead of the box that has fixed words.
  EXPECT_THAT(ends[0].errors,
              testing::ContainsRegex("orvane: Instrument at address 5, route native: [^\n]*\n"
                                     "Error: Unable to open device / ibsta = &H8000 / iberr = 2 -> OK\n"));
  EXPECT_THAT(ends[0].errors, HasSubstr("receive: The test set was not initialized.\n"));
}

TEST(StandardStreams, ThatTheCallerLeftClosedAreNotTakenForAnythingElse) {
  const auto through = [](const std::string& redirection, const Arguments& arguments) {
    Arguments command{"/bin/sh", "-c", "exec \"$0\" \"$@\" " + redirection};
    const Arguments station = Orvane(arguments);
    command.insert(command.end(), station.begin(), station.end());
    return Child(command).WaitForEnd();
  };
  EXPECT_EQ(through("<&-", {"--bench", "virtual", "--automation", "stdio"}).output,
            "{\"jsonrpc\":\"2.0\",\"method\":\"exit\",\"params\":{}}\n");
  WiredBench bench;
  Arguments wired = bench.Options();
  wired.emplace_back("--initialize");
  EXPECT_EQ(through("<&- >&- 2>&-", wired).status, 0);
}

TEST(Initialize, LeavesWhatItSavedInTheUnitsStore) {
  const TempFolder folder;
  EXPECT_EQ(RunOrvane({"--initialize", "--bench", "virtual:store=" + folder.Path().string()}).status, 0);
  EXPECT_EQ(ContentOf(folder / "eeprom.bin").size(), 1816U);
  EXPECT_THAT(ContentOf(folder / "flash100.txt"), testing::MatchesRegex("(0x[0-9A-F]{4}\n){5}"));
}

}  // namespace
}  // namespace orvane::test
