// A station that reads back what it saved to the Target's EEPROM.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "station/virtual_station.h"

namespace orvane::test {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

/// A whole road of a station that verifies, or not; `atCommand` runs as each command goes out.
struct Road {
  explicit Road(bool verifies, const std::function<void(Road&, const std::string&)>& atCommand = {},
                const std::vector<std::string>& faults = {})
      : on(OptionsOf(1, faults), {}, {.verifyEeprom = verifies}) {
    if (atCommand) {
      on.Panels().main.txtUserCommand.changed.Connect(
          [this, atCommand] { atCommand(*this, on.Panels().main.txtUserCommand.Text()); });
    }
    on.TakeTargetThrough();
  }
  std::vector<std::string>& Image() { return on.State().rf.EepromImage; }
  /// Commands between the commit and the charger's first one.
  std::vector<std::string> BehindTheCommit() {
    auto commands = on.journal.Commands();
    commands.erase(commands.begin(), std::find(commands.begin(), commands.end(), "se 1") + 1);
    commands.erase(std::find(commands.begin(), commands.end(), "tms 0"), commands.end());
    return commands;
  }
  std::string SaveReason() {
    for (const StepRecord& step : on.State().report.Steps()) {
      if (step.step == RunStep::Save) return step.reason;
    }
    return "no save";
  }

  VirtualStation on;
};

TEST(VerifiedSave, WithoutTheWishNotOneCommandMoreGoesOut) {
  Road road(false);
  EXPECT_THAT(road.BehindTheCommit(), IsEmpty());
  EXPECT_THAT(road.on.State().rf.eepromReadBack, IsEmpty());
}

TEST(VerifiedSave, ReadsTheWholeImageBackAndFindsWhatItWrote) {
  Road road(true);
  EXPECT_EQ(road.on.Concluded(), Verdict::Pass);
  EXPECT_TRUE(road.on.State().report.AllComplete()) << road.on.Steps();
  std::vector<std::string> expected{"spw 5 0", "spw 1 0"};
  expected.resize(2 + 114, "str 3");
  EXPECT_EQ(road.BehindTheCommit(), expected);
  const auto memory = road.on.bench.Models().Target().Kept().Eeprom();
  EXPECT_EQ(road.on.State().rf.eepromReadBack, (std::vector<std::uint8_t>{memory.begin(), memory.end()}));
  EXPECT_THAT(road.on.boxes.shown, IsEmpty());
}

TEST(VerifiedSave, LeavesListsAndRecordAsASaveWithoutItDoes) {
  Road verified(true);
  Road plain(false);
  const auto rows = [](Road& road) { return road.on.Panels().downLoad.lstDataReadWindow.Items(); };
  EXPECT_EQ(rows(verified), rows(plain));
  EXPECT_EQ(verified.Image(), plain.Image());
  EXPECT_EQ(verified.on.State().rf.RFParamText, plain.on.State().rf.RFParamText);
}

TEST(VerifiedSave, TellsHowManyBytesDifferAndTheFirstOfThem) {
  // The image is another one by the time that the Target's is compared with it.
  Road several(true, [](Road& road, const std::string& command) {
    if (command != "se 1") return;
    for (const int at : {0x1A4, 0x1A5, 1815}) {
      std::string& byte = road.Image()[static_cast<std::size_t>(at)];
      byte = byte == "3E" ? "3F" : "3E";
    }
  });
  EXPECT_EQ(several.on.Concluded(), Verdict::Pass);
  EXPECT_FALSE(several.on.State().report.AllComplete());
  EXPECT_THAT(several.SaveReason(),
              testing::MatchesRegex("3 bytes of the EEPROM differ, the first at 0x1A4: [0-9A-F]{2}, not 3[EF]\\."));

  Road single(true, [](Road& road, const std::string& command) {
    if (command == "se 1") road.Image()[0] = road.Image()[0] == "3E" ? "3F" : "3E";
  });
  EXPECT_THAT(single.SaveReason(),
              testing::MatchesRegex("1 byte of the EEPROM differs, at 0x0: [0-9A-F]{2}, not 3[EF]\\."));
}

TEST(VerifiedSave, ARowThatIsNotReadIsNoSoundSave) {
  Road refused(true, {}, {"status-str@8/5"});
  EXPECT_FALSE(refused.on.State().report.AllComplete());
  EXPECT_THAT(refused.SaveReason(), HasSubstr("The EEPROM was not read back from byte 112 on: status 5."));
  EXPECT_EQ(refused.BehindTheCommit().size(), 2U + 8U) << "nothing is read behind it";

  Road silent(true, {}, {"silent-str"});
  EXPECT_THAT(silent.SaveReason(), HasSubstr("The EEPROM was not read back from byte 0 on: no reply."));
  EXPECT_EQ(silent.BehindTheCommit().size(), 2U + 1U);
}

TEST(VerifiedSave, AStopIsHeardBetweenTwoRows) {
  int rows = 0;
  Road road(true, [&rows](Road& stopped, const std::string& command) {
    if (command == "str 3" && ++rows == 5) stopped.on.op.Click(stopped.on.Panels().autoCal.cmdAutoCalStop);
  });
  EXPECT_EQ(road.BehindTheCommit().size(), 2U + 5U);
  EXPECT_THAT(road.SaveReason(), HasSubstr("Stopped while the EEPROM was read back."));
  EXPECT_EQ(road.on.Concluded(), Verdict::None);
}

TEST(VerifiedSave, AFileAloneIsNotReadBack) {
  VirtualStation station({}, {}, {.verifyEeprom = true});
  station.dialogs.answers = {"/results/unit.epm"};
  station.op.Select(station.Panels().autoCal.optSaveModeFile);
  station.TakeTargetThrough();
  const auto commands = station.journal.Commands();
  EXPECT_EQ(std::count(commands.begin(), commands.end(), "str 3"), 0);
  EXPECT_TRUE(station.State().report.AllComplete()) << station.Steps();
}

}  // namespace
}  // namespace orvane::test
