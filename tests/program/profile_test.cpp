// The profile and the unit's identity, from outside.

#include <gtest/gtest.h>

#include <sstream>

#include "program/programs.h"

namespace orvane::test {
namespace {

using testing::HasSubstr;

/// What a trace says that went out.
std::vector<std::string> SentIn(const std::string& file) {
  std::istringstream trace(ContentOf(file));
  std::vector<std::string> sent;
  for (std::string line; std::getline(trace, line);) {
    const Json record = Json::parse(line);
    if (record.value("event", "") == "out") sent.push_back(record.value("text", record.value("hex", "")));
  }
  return sent;
}

TEST(AskSerial, HeadlessWithoutANumberEndsUndecidedWithNothingSent) {
  const TempFolder folder;
  const auto end = RunOrvane({"--initialize", "--bench", "virtual", "--ask-serial", "--trace", folder / "refused"});
  EXPECT_EQ(end.status, 2);
  EXPECT_EQ(end.errors, "ORVANE: A serial number is needed. -> OK\nThe run ended without a verdict.\n");
  EXPECT_THAT(SentIn(folder / "refused"), testing::ElementsAre("*IDN?", "RFAN:CONT:AUTO OFF", "*RST"))
      << "what every start sends, and no more";
  EXPECT_EQ(RunOrvane({"--initialize", "--bench", "virtual", "--ask-serial", "--serial", "A-1"}).status, 0);
}

TEST(AskSerial, AClientHearsTheTextAndTheBox) {
  Station station({"--bench", "virtual", "--ask-serial"});
  station.InitializeInstruments();
  const Json refused = station.Click("OrvaneMain.cmdTargetInitialize");
  EXPECT_EQ(refused["error"]["code"], -32005);
  EXPECT_EQ(refused["error"]["message"], "A serial number is needed.");
  EXPECT_EQ(station.Heard("box").back()["text"], "A serial number is needed.");
  EXPECT_EQ(station.Ask("unit", {{"serial", "A-1"}})["result"]["serial"], "A-1");
  station.Click("OrvaneMain.cmdTargetInitialize");
  EXPECT_EQ(station.Await("verdict")["result"], "PASS");
  EXPECT_EQ(station.Ask("unit")["result"]["serial"], nullptr) << "forgotten behind the run";
}

TEST(Unit, CannotBeChangedWithinARun) {
  Station station({"--bench", "virtual", "--serial", "A-1", "--operator", "Kim"});
  station.InitializeInstruments();
  const int run = station.SendClick("OrvaneMain.cmdTargetInitialize");
  station.AwaitState("CalMode", "ALL");
  EXPECT_EQ(station.ErrorOf("unit", {{"serial", "B-2"}}), -32002);
  EXPECT_EQ(station.ErrorOf("unit"), -32002);
  station.AnswerTo(run);
  EXPECT_EQ(station.Ask("unit")["result"], Json::parse(R"({"serial":null,"operator":"Kim","part":null,"tags":{}})"));
}

TEST(Profile, SetsThePanelsAheadOfTheFirstRun) {
  const TempFolder folder;
  Fill(folder / "bench.toml",
       "bench = \"virtual:seed=7\"\noperator = \"Kim\"\n[tag]\nline = \"A\"\n[panel]\npace = 30000\n"
       "save_mode = \"EEPROMFile\"\nrx_loss_gsm = -0.75\n");
  Station station({"--profile", folder / "bench.toml", "--tag", "shift=2"});
  EXPECT_EQ(station.Get("OrvaneMain.txtSyncDelay")["text"], "30000");
  EXPECT_EQ(station.Get("frmAutoCal.txtRxCableLossGSM")["text"], "-0.75");
  EXPECT_EQ(station.State("SaveMode"), "EEPROMFile");
  EXPECT_EQ(station.Ask("unit")["result"]["tags"], Json::parse(R"({"line":"A","shift":"2"})"));
}

TEST(Profile, ADamagedTableIsToldByTheRunThatStandsOnIt) {
  const TempFolder folder;
  Fill(folder / "bench.toml", "[tables]\n\"Cable.loss\" = \"" + std::string(64, '0') + "\"\n");
  const auto end = RunOrvane({"--initialize", "--bench", "virtual", "--profile", folder / "bench.toml"});
  EXPECT_EQ(end.status, 2);
  EXPECT_THAT(end.errors, HasSubstr("receive: "));
  EXPECT_THAT(end.errors, HasSubstr("not 000000000000... as the profile says."));
}

TEST(Profile, IsPrintedAndReadsBackToTheSame) {
  const TempFolder folder;
  const auto first = RunOrvane({"--print-profile", "--com1", "/dev/ttyUSB0", "--station", "Line 3", "--ask-serial",
                                "--instrument", "1=tcp:bench7:5025", "--tag", "line=A"});
  EXPECT_EQ(first.status, 0);
  EXPECT_EQ(first.errors, "");
  Fill(folder / "bench.toml", first.output);
  const auto second = RunOrvane({"--print-profile", "--profile", folder / "bench.toml"});
  EXPECT_EQ(second.status, 0);
  EXPECT_EQ(second.output, first.output);
  EXPECT_THAT(second.output, HasSubstr("\ncom1 = \"/dev/ttyUSB0\"\n"));
}

TEST(Profile, TheUsersOwnIsTakenForARealBenchAlone) {
  const TempFolder folder;
  std::filesystem::create_directories(folder.Path() / "orvane");
  Fill(folder / "orvane/profile.toml", "\nno_such_key = 1\n");
  const Variable config("XDG_CONFIG_HOME", folder.Path().string());
  const auto real = RunOrvane({"--initialize"});
  EXPECT_EQ(real.status, 64);
  EXPECT_EQ(real.errors, "orvane: " + (folder / "orvane/profile.toml") + ":2: no_such_key: there is no such key\n");
  EXPECT_EQ(RunOrvane({"--initialize", "--bench", "virtual"}).status, 0);
}

}  // namespace
}  // namespace orvane::test
