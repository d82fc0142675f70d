// The operator's page on a real display, by the keys of its keyboard and by its mouse.

#include <X11/keysymdef.h>
#include <gmock/gmock.h>

#include <chrono>

#include "screen/screen_station.h"

namespace orvane::test {
namespace {

using testing::HasSubstr;
using testing::StartsWith;

// Keysyms of the X protocol.
constexpr std::uint32_t kReturnKey = 0xff0d;
constexpr std::uint32_t kEscapeKey = 0xff1b;
constexpr std::uint32_t kF12Key = 0xffc9;

class OperatorsPageOnScreen : public testing::Test {
 protected:
  void SetUp() override {
    if (!XDisplay::Installed()) GTEST_SKIP() << "Xvfb is not installed (Debian: xvfb).";
    display_.emplace();
  }
  /// With its instruments ready.
  ScreenStation& Start(const std::string& bench, const Arguments& more = {}) {
    Arguments arguments{"--view", "operator",     "--language", "en", "--automation",
                        "stdio",  "--initialize", "--bench",    bench};
    arguments.insert(arguments.end(), more.begin(), more.end());
    station_.emplace(*display_, arguments, "xcb", "operatorPage");
    display_->GiveKeyboard(station_->Await("operatorPage").area.center());
    // The instruments are initialized as the station starts.
    while (station_->Port().State("LoaderReady") != true) {
    }
    (void)station_->AwaitEnabled("operatorPage/start");
    return *station_;
  }
  void Enter() { display_->Press(kReturnKey); }
  void Scan(const std::string& serial) {
    display_->Type(serial);
    Enter();
  }
  /// Clicks away every card that comes before the verdict does.
  void AnswerCardsUntilVerdict(ScreenStation& station) {
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(60);
    while (!station.Find("operatorPage/verdictWord") && std::chrono::steady_clock::now() < deadline) {
      if (const auto answer = station.Find("operatorPage/cardAnswer0")) display_->Click(answer->area.center());
    }
  }
  std::string Words(const std::string& label) { return station_->Await("operatorPage/" + label).tip; }

  std::optional<XDisplay> display_;
  std::optional<ScreenStation> station_;
};

TEST_F(OperatorsPageOnScreen, AUnitPassesByKeysAloneAndIsNotRunAgainUnasked) {
  const TempFolder folder;
  ScreenStation& station = Start("virtual:seed=7", {"--records", "sqlite:" + (folder / "records.sqlite")});
  Scan("a-17");
  EXPECT_EQ(Words("verdictWord"), "PASS");
  EXPECT_EQ(Words("verdictSerial"), "a-17");
  EXPECT_EQ(station.Port().Await("verdict")["complete"], true);
  // The whole screen is the verdict's.
  const auto corner = [&station](int x, int y) { return station.Shown({QRect(x, y, 1, 1)}).pixelColor(0, 0); };
  const QColor green(0x07, 0x57, 0x2a);
  // It is painted in time that the station has to wait anyhow.
  for (int glance = 0; glance < 400 && corner(4, 4) != green; ++glance) (void)station.Find("operatorPage");
  EXPECT_EQ(corner(4, 4), green);
  EXPECT_EQ(corner(1595, 1195), green);
  (void)station.Port().Await("record");
  Enter();
  station.AwaitGone("operatorPage/verdictWord");
  EXPECT_EQ(Words("shiftUnits"), "1");

  Scan("a-17");
  EXPECT_THAT(Words("cardText"), StartsWith("This unit passed on "));
  display_->Press(kEscapeKey);
  station.AwaitGone("operatorPage/cardText");
}

TEST_F(OperatorsPageOnScreen, AWornBatteryFailsBehindItsCardByMouse) {
  ScreenStation& station = Start("virtual:seed=7,fault=battery");
  display_->Type("a-17");
  station.Click("operatorPage/start");
  EXPECT_EQ(Words("cardText"), "Battery Calibration ERROR.");
  EXPECT_THAT(Words("cardToDo"), StartsWith("Check the battery contacts"));
  AnswerCardsUntilVerdict(station);
  EXPECT_EQ(Words("verdictWord"), "FAIL");
  EXPECT_THAT(Words("verdictDetails"), HasSubstr("limits"));
  station.Click("operatorPage/verdictNext");
  station.AwaitGone("operatorPage/verdictWord");
}

TEST_F(OperatorsPageOnScreen, F12StopsARunThatIsUnderWay) {
  ScreenStation& station = Start("virtual:seed=7");
  Scan("a-17");
  (void)station.AwaitEnabled("operatorPage/stop");
  display_->Press(kF12Key);
  EXPECT_EQ(Words("verdictWord"), "NO RESULT");
  EXPECT_EQ(Words("verdictWhy"), "The run was stopped: this unit was not tested.");
}

TEST_F(OperatorsPageOnScreen, AWrongNumberIsMarkedAndTheRightOneTakesItsPlace) {
  ScreenStation& station = Start("virtual:seed=7", {"--serial-pattern", "a-[0-9]+"});
  Scan("b-17");
  while (Words("hint").find("no serial number of this product") == std::string::npos) {
  }
  Scan("a-17");
  EXPECT_EQ(Words("verdictSerial"), "a-17");
  (void)station.Port().Await("verdict");
}

TEST_F(OperatorsPageOnScreen, AWeakTransmitterIsOutOfTolerance) {
  ScreenStation& station = Start("virtual:seed=7,fault=pa-weak");
  Scan("a-17");
  AnswerCardsUntilVerdict(station);
  EXPECT_EQ(Words("verdictWord"), "OUT OF TOLERANCE");
  EXPECT_THAT(Words("verdictDetails"), HasSubstr("dBm, limits"));
}

TEST_F(OperatorsPageOnScreen, AValueThatHandsChangedInTheRunIsNotMeasured) {
  ScreenStation& station = Start("virtual:seed=7");
  Scan("a-17");
  (void)station.AwaitEnabled("operatorPage/stop");
  (void)station.Port().Ask("set", {{"control", "frmAutoCal.txtLoss"}, {"text", "0.7"}});
  EXPECT_EQ(Words("verdictWord"), "NOT MEASURED");
  EXPECT_THAT(Words("verdictToDo"), StartsWith("Never ship it"));
}

TEST_F(OperatorsPageOnScreen, ACableThatIsPulledAndASupplyThatGoesLeaveNoGreenPage) {
  for (const char* fault : {"unplugged@150", "supply-absent@6"}) {
    ScreenStation& station = Start(std::string("virtual:seed=7,fault=") + fault);
    Scan("a-17");
    AnswerCardsUntilVerdict(station);
    EXPECT_NE(Words("verdictWord"), "PASS") << fault;
    EXPECT_NE(Words("verdictDetails"), "") << fault;
  }
}

TEST_F(OperatorsPageOnScreen, WhileTheGoldenUnitIsDueAnEngineerSaysWhyAndOpensThePanels) {
  const TempFolder folder;
  const std::string store = "sqlite:" + (folder / "records.sqlite");
  ASSERT_EQ(RunOrvane({"--headless", "--initialize", "--bench", "virtual:seed=7", "--station", "s1", "--serial",
                       "g-1", "--records", store})
                .status,
            0);
  Child maker({ORVANE_PROGRAM, "--make-engineer-secret"});
  maker.Send("sesame");
  maker.CloseInput();
  const std::string line = maker.WaitForEnd().output;
  const auto digest = line.substr(line.find('"') + 1, line.rfind('"') - line.find('"') - 1);
  ScreenStation& station = Start("virtual:seed=7", {"--records", store, "--station", "s2", "--golden", "g-1",
                                                    "--golden-reference", "0", "--engineer-secret", digest});
  Scan("a-17");
  EXPECT_EQ(Words("cardText"), "The golden unit g-1 is due: run it first.");
  station.Click("operatorPage/cardAnswer1");
  (void)station.AwaitEnabled("operatorPage/cardTyped");
  Scan("sesame");
  while (Words("cardText") != "Why may units be run all the same?") {
  }
  Scan("laboratory");
  EXPECT_EQ(Words("verdictWord"), "PASS");
  (void)station.Port().Await("record");
  Enter();
  station.AwaitGone("operatorPage/verdictWord");

  station.Click("operatorPage/engineer");
  (void)station.AwaitEnabled("operatorPage/cardTyped");
  Scan("sesame");
  (void)station.Await("OrvaneMain/cmdExit");
  station.Click("OrvaneMain/statusOperatorsPage");
  (void)station.AwaitEnabled("operatorPage/start");
}

TEST_F(OperatorsPageOnScreen, ExitAsksOnACardAndEndsTheStation) {
  ScreenStation& station = Start("virtual:seed=7");
  station.Click("operatorPage/exit");
  EXPECT_EQ(Words("cardText"), "Do you want to finish ORVANE?");
  Enter();
  EXPECT_EQ(station.Process().WaitForEnd().status, 0);
}

}  // namespace
}  // namespace orvane::test
