// A display that dies under the windows, and one that never was there.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>

#include "screen/screen_station.h"

namespace orvane::test {
namespace {

using testing::EndsWith;
using testing::HasSubstr;

constexpr int kPassed = 0;
constexpr int kFailed = 1;
constexpr int kNoWindows = 69;

/// The toolkit may say of its own what it misses, ahead of the station's word.
class DyingDisplay : public testing::Test {
 protected:
  void SetUp() override {
    if (!XDisplay::Installed()) GTEST_SKIP() << "Xvfb is not installed (Debian: xvfb).";
    display_.emplace();
  }

  std::optional<XDisplay> display_;
};

TEST_F(DyingDisplay, ARunGoesOnToItsPassAndIsTheSameRun) {
  const TempFolder undisturbed;
  ASSERT_EQ(RunOrvane({"--initialize", "--bench", "virtual:seed=3,store=" + undisturbed.Path().string()}).status, 0);
  const TempFolder store;
  ScreenStation station(*display_, {"--bench", "virtual:seed=3,store=" + store.Path().string()});
  station.InitializeAll();
  // Comes up in the receive run, at the head of the road.
  (void)station.Await("frmMPAutoCal");
  display_->Kill();

  const Child::End end = station.Process().WaitForEnd();
  EXPECT_EQ(end.status, kPassed) << end.errors;
  EXPECT_THAT(end.errors, EndsWith("orvane: the display has gone; what is under way goes on to its end.\nPASS\n"));
  for (const char* memory : {"eeprom.bin", "flash100.txt"}) {
    EXPECT_FALSE(ContentOf(store / memory).empty());
    EXPECT_EQ(ContentOf(store / memory), ContentOf(undisturbed / memory)) << memory;
  }
}

TEST_F(DyingDisplay, ARunOfAWornBatteryGoesOnToItsFail) {
  ScreenStation station(*display_, {"--initialize", "--bench", "virtual:seed=3,fault=battery"});
  (void)station.Await("frmAutoCalTxResult");
  display_->Kill();

  const Child::End end = station.Process().WaitForEnd();
  EXPECT_EQ(end.status, kFailed) << end.errors;
  EXPECT_THAT(end.errors, HasSubstr(" -> OK\n")) << "a box that nobody can see is told";
  EXPECT_THAT(end.errors, HasSubstr("\nFAIL\n"));
}

TEST_F(DyingDisplay, TheAutomationPortStays) {
  ScreenStation station(*display_, {"--automation", "stdio", "--bench", "virtual:seed=3"});
  station.InitializeAll();
  (void)station.Await("frmMPAutoCal");
  display_->Kill();

  station.Port().answersBoxes = true;
  EXPECT_EQ(station.Port().Await("verdict")["result"], "PASS");
  // The next Target, as on a station without windows, when the first one's line is closed.
  station.Port().AwaitState("SerialPortState", false);
  EXPECT_TRUE(station.Port().Click("OrvaneMain.cmdTargetInitialize").contains("result"));
  EXPECT_EQ(station.Port().Await("verdict")["result"], "PASS");
  station.Process().CloseInput();
  const Child::End end = station.Process().WaitForEnd();
  EXPECT_EQ(end.status, 0);
  EXPECT_THAT(end.errors, EndsWith("orvane: the display has gone; the automation port stays.\n"));
}

TEST_F(DyingDisplay, AStationAtRestEnds) {
  ScreenStation station(*display_, {"--bench", "virtual"});
  display_->Kill();
  const Child::End end = station.Process().WaitForEnd();
  EXPECT_EQ(end.status, kNoWindows);
  EXPECT_THAT(end.errors, EndsWith("orvane: the display has gone; nothing was under way.\n"));
}

TEST_F(DyingDisplay, AQuestionThatLiesOpenIsAnsweredWithWhatAsksForNothing) {
  ScreenStation station(*display_, {"--bench", "virtual"});
  station.Click("OrvaneMain/cmdExit");
  (void)station.Await("box/Cancel");
  display_->Kill();
  const Child::End end = station.Process().WaitForEnd();
  EXPECT_EQ(end.status, kNoWindows);
  EXPECT_THAT(end.errors, HasSubstr(" -> Cancel\n"));
}

struct Lack {
  const char* name;
  const char* platform;
  const char* display;
  const char* told;
};

class NoDisplay : public testing::TestWithParam<Lack> {};

TEST_P(NoDisplay, IsOneLineAndAStatus) {
  const Variable platform("QT_QPA_PLATFORM", GetParam().platform);
  const Variable display("DISPLAY", GetParam().display);
  for (const char* program : {ORVANE_PROGRAM, ORVANE_WINDOWS_PROGRAM}) {
    const Child::End end = Child({program, "--bench", "virtual"}).WaitForEnd();
    EXPECT_EQ(end.status, kNoWindows) << program;
    EXPECT_EQ(end.output, "");
    EXPECT_EQ(end.errors,
              "orvane: no windows: " + std::string(GetParam().told) + ". With --headless it runs without them.\n");
  }
}

TEST_P(NoDisplay, IsABadOptionWhereTheOperatorsPageIsAskedFor) {
  const Variable platform("QT_QPA_PLATFORM", GetParam().platform);
  const Variable display("DISPLAY", GetParam().display);
  const Child::End end = Child({ORVANE_PROGRAM, "--view", "operator", "--bench", "virtual"}).WaitForEnd();
  EXPECT_EQ(end.status, 64);
  EXPECT_EQ(end.errors,
            "orvane: no windows: " + std::string(GetParam().told) + ". --view operator needs a screen.\n");
}

INSTANTIATE_TEST_SUITE_P(Screen, NoDisplay,
                         testing::Values(Lack{"None", "xcb", "", "could not connect to display"},
                                         Lack{"NotThere", "xcb", ":47110", "could not connect to display :47110"},
                                         Lack{"NoSuchPlatform", "paper", "",
                                              "Could not find the Qt platform plugin \"paper\" in \"\""}),
                         [](const auto& lack) { return lack.param.name; });

TEST(WindowsProgram, NeedsNoDisplayWithoutWindows) {
  const Variable platform("QT_QPA_PLATFORM", "xcb");
  const Variable display("DISPLAY", "");
  const Child::End end =
      Child({ORVANE_WINDOWS_PROGRAM, "--headless", "--initialize", "--bench", "virtual"}).WaitForEnd();
  EXPECT_EQ(end.status, kPassed) << end.errors;
}

}  // namespace
}  // namespace orvane::test
