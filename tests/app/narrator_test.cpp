#include "app/narrator.h"

#include <gtest/gtest.h>

#include <sstream>

#include "platform/virtual_event_loop.h"

namespace orvane {
namespace {

using namespace std::chrono_literals;
using testing::HasSubstr;

class NarratorTest : public testing::Test {
 protected:
  void Narrate(NarratorStyle style = {}) { narrator_.emplace(out_, style, loop_, state_, panels_, desk_); }
  /// A run with one step that found nothing wrong, and perhaps all the others.
  void RunSteps(std::size_t count) {
    state_.report.Begin();
    for (std::size_t i = 0; i < count; ++i) {
      state_.report.Enter(kRunSteps[i]);
      state_.report.Leave();
    }
  }

  VirtualEventLoop loop_;
  Desk desk_{loop_, "/work"};
  StationState state_;
  StationPanels panels_;
  std::ostringstream out_;
  std::optional<Narrator> narrator_;
};

TEST_F(NarratorTest, TellsStepsAndWhatTheyFindWithTheTimeSinceTheRunsStart) {
  loop_.Block(70s);
  Narrate();
  state_.tally.commands = 5;
  state_.report.Begin();
  state_.report.Enter(RunStep::Receive);
  loop_.Block(1500ms);
  panels_.mpAutoCal.lstMPRxChannelCalResult.AddItem("Band\tCal");
  panels_.mpAutoCal.lstMPRxChannelCalResult.AddItem("DCS Band");
  panels_.mpAutoCal.lstMPRxChannelCalResult.AddItem("512\t-3");
  state_.report.Leave();
  state_.report.Enter(RunStep::TransmitDcs);
  panels_.txResult.listPowerLevel.AddItem("lev(DCS)\tLevel\tAvgPow(DCS)");
  panels_.txResult.listPowerLevel.AddItem("523\t0\t29.98");
  panels_.txResult.listChanCalPowerLevel.AddItem("lev(DCS)\tCH(DCS)\tPow(DCS)");
  panels_.txResult.listChanCalPowerLevel.AddItem("530\t885\t131");
  panels_.txResult.listChanCalPowerLevel.AddItem("RMS(DCS)\t699\t2.5");
  state_.report.Flaw("Level 3 was left out.");
  state_.report.Leave();
  state_.tally.commands = 25;
  state_.tally.bytesOut = 1060;
  state_.tally.bytesIn = 300;
  state_.report.Conclude(Verdict::Pass);
  EXPECT_EQ(out_.str(),
            "    0.0 s  receive ...\n"
            "    1.5 s    DCS Band\n"
            "    1.5 s    channel 512: compensation -3\n"
            "    1.5 s  receive complete\n"
            "    1.5 s  transmitDCS ...\n"
            "    1.5 s    level 0: DAC 523, 29.98 dBm\n"
            "    1.5 s    channel 885: DAC 530, code 131\n"
            "    1.5 s    RMS(DCS) phase error: 2.5 degrees\n"
            "    1.5 s  transmitDCS left early: Level 3 was left out.\n"
            "    1.5 s  PASS, but not every step was completed:\n"
            "    1.5 s    receive: complete\n"
            "    1.5 s    transmitDCS: Level 3 was left out.\n"
            "    1.5 s  NOT MEASURED. The unit is not calibrated. Mend what stands above, then take it through once "
            "more.\n"
            "    1.5 s  20 commands, 1060 bytes out, 300 bytes in\n");
}

TEST_F(NarratorTest, SaysWhereTheParametersWereSaved) {
  Narrate();
  state_.cal.SaveMode = "File";
  state_.cal.CalSaveFileOk = true;
  state_.cal.CalSaveFileName = "/data/unit7.epm";
  RunSteps(5);
  state_.report.Conclude(Verdict::Pass);
  EXPECT_THAT(out_.str(), HasSubstr("  PASS\n"));
  EXPECT_THAT(out_.str(), HasSubstr("RF parameters saved in /data/unit7.epm\n"));
}

TEST_F(NarratorTest, SaysNothingOfASaveThatWasNotCompleted) {
  Narrate();
  state_.cal.SaveMode = "EEPROMFile";
  state_.cal.CalSaveFileName = "/data/unit7.epm";
  state_.report.Begin();
  state_.report.Enter(RunStep::Save);
  state_.report.Flaw("The disk is full.");
  state_.report.Leave();
  state_.report.Conclude(Verdict::Pass);
  EXPECT_THAT(out_.str(), Not(HasSubstr("saved")));
}

TEST_F(NarratorTest, ColoursMarkHowAStepAndTheRunEnded) {
  Narrate({.colour = true, .terminal = false});
  RunSteps(1);
  state_.report.Conclude(Verdict::Fail);
  EXPECT_THAT(out_.str(), HasSubstr("\x1b[32mreceive complete\x1b[0m\n"));
  EXPECT_THAT(out_.str(), HasSubstr("\x1b[31mFAIL\x1b[0m\n"));
}

TEST_F(NarratorTest, OnATerminalTheLastLineMovesUntilTheStepEnds) {
  Narrate({.colour = false, .terminal = true});
  state_.report.Begin();
  state_.report.Enter(RunStep::Save);
  state_.tally.commands = 31;
  loop_.PostAt(250ms, [this] { state_.report.Leave(); });
  loop_.RunDry();
  EXPECT_THAT(out_.str(), HasSubstr("\r\x1b[K    0.1 s  save ... 31 commands"));
  EXPECT_THAT(out_.str(), testing::EndsWith("save complete\n\r\x1b[K"));
  EXPECT_EQ(out_.str().find("\x1b[3"), std::string::npos) << "no colours";
}

TEST_F(NarratorTest, TellsOfBoxesThatAnotherProgramIsToAnswer) {
  Narrate();
  loop_.Post([this] { desk_.Press(1, "OK"); });
  desk_.Warning("Port is already Open.");
  EXPECT_EQ(out_.str(), "    0.0 s  [Warning] Port is already Open.\n");
}

TEST(LineClearing, TakesTheMovingLineAwayAheadOfEachLineOfErrors) {
  std::ostringstream screen;
  std::ostringstream errors;
  {
    const LineClearing clearing(errors, screen);
    errors << "Warning: "
           << "Port is already Open." << std::endl
           << 'x' << "y\n";
    EXPECT_EQ(errors.str(), "Warning: Port is already Open.\nxy\n");
    EXPECT_EQ(screen.str(), "\r\x1b[K\r\x1b[K") << "once a line";
  }
  errors << "behind it\n";
  EXPECT_THAT(errors.str(), testing::EndsWith("behind it\n"));
  EXPECT_EQ(screen.str().size(), 8U);
}

}  // namespace
}  // namespace orvane
