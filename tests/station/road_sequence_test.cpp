// Every command and every line of one production road, in order, typed from the product's documents. Only how many
// passes a power search takes, and the values that the unit decides, are left open.

#include <gtest/gtest.h>

#include "station/virtual_station.h"

namespace orvane::test {
namespace {

using Script = std::vector<std::string>;

/// Marks in a script: any number of search passes, and a line of which only the beginning is fixed.
const std::string kBandSearch = "<search of a level>";
const std::string kChannelSearch = "<search on a channel>";
const std::string kBeginsWith = "<begins with>";

void Add(Script& script, const Script& more) { script.insert(script.end(), more.begin(), more.end()); }

Script BringUp() { return {"Target: ti", "Target: tms 1", "2: VOLT 4.5"}; }

Script Receive() {
  Script script{"Target: rfpw 8 0",
                "Target: rxpw 1 40",
                "Target: rxpw 2 4",
                "Target: scw 16 10",
                "Target: scw 17 10",
                "Target: scw 18 10",
                "Target: scw 24 1",
                "Target: scw 25 0x0002",
                "1: CALL:OPERATING:MODE TEST",
                "1: CALL:FUNCTION:DOWNLINK CW",
                "1: CALL:CELL:BAND EGSM"};
  struct Channel {
    const char* arfcn;
    const char* high;
    const char* low;
  };
  const Channel channels[] = {
      {"0", "935.067", "934.933"},     {"40", "943.067", "942.933"},    {"124", "959.867", "959.733"},
      {"512", "1805.267", "1805.133"}, {"574", "1817.667", "1817.533"}, {"636", "1830.067", "1829.933"},
      {"700", "1842.867", "1842.733"}, {"760", "1854.867", "1854.733"}, {"822", "1867.267", "1867.133"},
      {"885", "1879.867", "1879.733"}, {"975", "925.267", "925.133"},   {"1023", "934.867", "934.733"}};
  for (int i = 0; i < 12; ++i) {
    const std::string n = channels[i].arfcn;
    const bool firstOfBand = i == 0 || i == 3 || i == 10;
    if (i == 3) Add(script, {"1: CALL:CELL:BAND DCS"});
    if (i == 10) Add(script, {"1: CALL:CELL:BAND EGSM"});
    if (firstOfBand) Add(script, {"1: SYST:CORR:SGA -0.5"});
    if (i == 0) Add(script, {"1: CALL:CELL:RFG:POWER:AMPLITUDE -74dBm"});
    Add(script, {"1: CALL:TCH:SEQ " + n, "1: CALL:BCH:SEQ " + n,
                 std::string("1: CALL:CELL:RFG:FREQ ") + channels[i].high + "MHz", "Target: rfpw 2 " + n,
                 "Target: rfpw 1 " + n, "Target: rxpw 8 0"});
    if (firstOfBand) Add(script, {"Target: rfe 1", "Target: sr 1 2", "Target: rfe 1", "Target: sr 1 2"});
    Add(script, {"Target: rfe 1", "Target: sr 1 2", std::string("1: CALL:CELL:RFG:FREQ ") + channels[i].low + "MHz",
                 "Target: rfe 1", "Target: sr 1 2"});
  }
  Add(script, {"Target: rfpw 8 1"});
  return script;
}

Script BandSetUp(const std::string& channel, const std::string& band, const std::string& level) {
  return {"Target: txpw 8 0",
          "Target: txpw 9 0",
          "Target: rfpw 2 " + channel,
          "Target: rfpw 1 " + channel,
          "1: CALL:CELL:BAND " + band,
          "1: CALL:OPERATING:MODE TEST",
          "1: RFAN:MAN:CHAN:SELECTED " + channel,
          "1: CALL:MS:TXL:SEQ " + level,
          "1: INIT:PVTIME",
          "1: INIT:TXP",
          "1: CALL:BCH:SEQ " + channel,
          "1: CALL:TCH:SEQ " + channel,
          "1: CALL:FUNCTION:DOWNLINK BCHTCH",
          "1: SYST:CORR:SGA -0.5"};
}

Script Levels(const std::vector<std::string>& words, const std::vector<std::string>& targets,
              const std::string& samples) {
  Script script;
  for (std::size_t i = 0; i < words.size(); ++i) {
    Add(script, {"Target: txpw 1 " + words[i], "1: RFAN:EXP:POWER:SELECTED " + targets[i]});
    if (i == 0) {
      Add(script, {"1: SETUP:TXPOWER:CONTINUOUS OFF", "1: SETUP:TXPOWER:COUNT:SNUMBER " + samples,
                   "1: SETUP:TXPOWER:TRIGGER:SOURCE AUTO"});
    }
    Add(script, {kBandSearch});
  }
  return script;
}

Script PhaseMeasurement() {
  return {"Target: rfe 2",
          "1: SETUP:TXPOWER:CONTINUOUS OFF",
          "1: SETUP:TXPOWER:COUNT:SNUMBER 5",
          "1: SETUP:TXPOWER:TRIGGER:SOURCE AUTO",
          "1: SETUP:PFERROR:BSYNC MIDAMBLE",
          "1: INITIATE:PFERROR",
          "1: FETCH:PFERROR:ALL?",
          "Target: rfe 0"};
}

Script Dcs() {
  Script script = BandSetUp("699", "DCS", "15");
  for (int t = 0; t <= 30; ++t) Add(script, {kBeginsWith + "Target: ttw " + std::to_string(t) + " "});
  Add(script, {"Target: rfe 2"});
  Add(script,
      Levels({"115", "114", "113", "112", "111", "110", "109", "108", "107", "106", "105", "104", "103", "102", "101",
              "100"},
             {"3", "4", "5", "6", "8", "10", "12", "14", "16", "18", "20", "22", "24", "26", "28", "29"}, "30"));
  for (const std::string channel : {"512", "781", "885"}) {
    Add(script, {"1: RFAN:MAN:CHAN:SELECTED " + channel, "1: CALL:BCH:SEQ " + channel, "1: CALL:TCH:SEQ " + channel,
                 "Target: rfpw 2 " + channel, "Target: rfpw 1 " + channel, "Target: txpw 1 100",
                 "1: RFAN:EXP:POWER:SELECTED 29", kChannelSearch});
  }
  Add(script, {"Target: rfe 0", "Target: txpw 8 0", "Target: txpw 9 0", "Target: rfpw 2 699", "Target: rfpw 1 699",
               "1: RFAN:MAN:CHAN:SELECTED 699", "1: CALL:TCH:SEQ 699", "1: CALL:CELL:POWER:AMPLITUDE -74.5 DBM",
               "1: CALL:MS:TXL:SEQ 0"});
  Add(script, PhaseMeasurement());
  return script;
}

Script Gsm() {
  Script script = BandSetUp("62", "EGSM", "19");
  Add(script, {"Target: txpw 1 19", "Target: rfe 2"});
  Add(script, Levels({"19", "18", "17", "16", "15", "14", "13", "12", "11", "10", "9", "8", "7", "6", "5"},
                     {"7", "8", "9", "11", "13", "15", "17", "19", "21", "23", "25", "27", "29", "31", "32"}, "5"));
  for (const std::string channel : {"5", "124", "975"}) {
    Add(script, {"Target: rfpw 2 " + channel, "Target: rfpw 1 " + channel, "1: RFAN:MAN:CHAN:SELECTED " + channel,
                 "1: CALL:BCH:SEQ " + channel, "1: CALL:TCH:SEQ " + channel, "Target: rfpw 2 " + channel,
                 "Target: rfpw 1 " + channel, "Target: txpw 1 5", "1: RFAN:EXP:POWER:SELECTED 32", kChannelSearch});
  }
  Add(script, {"Target: rfe 0", "Target: txpw 8 0", "Target: txpw 9 0", "Target: rfpw 2 62", "Target: rfpw 1 62",
               "1: RFAN:MAN:CHAN:SELECTED 62", "1: CALL:BCH:SEQ 62", "1: CALL:TCH:SEQ 62", "1: SYST:CORR:SGA -0.5",
               "1: CALL:CELL:POWER:AMPLITUDE -74.5 DBM"});
  Add(script, PhaseMeasurement());
  return script;
}

Script Save() {
  Script script{"Target: spw 5 0", "Target: spw 1 0"};
  for (int chunk = 0; chunk < 57; ++chunk) Add(script, {kBeginsWith + "Target: stw 3 0x"});
  Add(script, {"Target: se 1"});
  return script;
}

Script Charger() {
  return {"Target: tms 0",   "2: VOLT 4.21",     "Target: tms 3",
          "Target: mpr 30",  "Target: mpr 30",   "2: VOLT 3.36",
          "Target: mpr 30",  "Target: tms 1",    kBeginsWith + "Target: stw 100 0x0",
          "Target: str 100", "Target: tms 4",    "2: VOLT 4.21",
          "Target: tms 0",   "1: SYSTEM:PRESET3"};
}

Script WholeRoad() {
  Script script = BringUp();
  Add(script, Receive());
  Add(script, {"Target: rfpw 8 1", "Target: spw 3 0"});
  Add(script, Dcs());
  Add(script, Gsm());
  Add(script, Save());
  Add(script, Charger());
  return script;
}

/// How many lines from `at` on are whole passes of a search.
std::size_t PassesLength(const Script& lines, std::size_t at, const Script& pass) {
  const auto setsDac = [](const std::string& line) {
    const std::string command = "Target: txpw 4 ";
    return line.starts_with(command) && line.find_first_not_of("0123456789", command.size()) == std::string::npos;
  };
  const std::size_t begin = at;
  while (at + pass.size() < lines.size() && setsDac(lines[at]) &&
         std::equal(pass.begin(), pass.end(), lines.begin() + static_cast<std::ptrdiff_t>(at) + 1)) {
    at += pass.size() + 1;
  }
  return at - begin;
}

const Script kBandPass{"1: SETUP:TXPOWER:TIMEOUT:TIME 2;STATE ON", "1: INITIATE:TXPOWER", "1: FETC:TXP:POW?"};
const Script kChannelPass{"1: INITIATE:TXPOWER", "1: FETC:TXP:POW?"};

TEST(WholeRoad, SendsExactlyTheseCommandsAndLinesInThisOrder) {
  VirtualStation station(1);
  station.InitializeInstruments();
  station.journal.Clear();
  ASSERT_EQ(station.InitializeTarget(), std::nullopt);

  const Script& lines = station.journal.Lines();
  std::size_t at = 0;
  for (const std::string& expected : WholeRoad()) {
    ASSERT_LT(at, lines.size()) << "missing: " << expected;
    if (expected == kBandSearch || expected == kChannelSearch) {
      const std::size_t length = PassesLength(lines, at, expected == kBandSearch ? kBandPass : kChannelPass);
      ASSERT_GT(length, 0U) << "no pass at line " << at << ": " << lines[at];
      at += length;
    } else if (expected.starts_with(kBeginsWith)) {
      ASSERT_TRUE(lines[at].starts_with(expected.substr(kBeginsWith.size()))) << "line " << at << ": " << lines[at];
      ++at;
    } else {
      ASSERT_EQ(lines[at], expected) << "line " << at;
      ++at;
    }
  }
  EXPECT_EQ(at, lines.size()) << "more than expected: " << lines[at];
}

}  // namespace
}  // namespace orvane::test
