// Boxes and verdicts in front of all else, whoever manages the windows, and with nobody who does.

#include <unistd.h>

#include <chrono>
#include <thread>

#include "screen/road_on_screen.h"

namespace orvane::test {
namespace {

using namespace std::chrono_literals;

struct Manager {
  const char* name;
  /// Empty for none.
  const char* program;
};

constexpr Manager kManagers[] = {{"none", ""}, {"openbox", "/usr/bin/openbox"}, {"icewm", "/usr/bin/icewm"}};

std::string NameOf(const testing::TestParamInfo<Manager>& manager) { return manager.param.name; }

class Managed : public RoadOnScreen, public testing::WithParamInterface<Manager> {
 protected:
  void SetUp() override {
    RoadOnScreen::SetUp();
    const std::string program = GetParam().program;
    if (IsSkipped() || program.empty()) return;
    if (::access(program.c_str(), X_OK) != 0)
      GTEST_SKIP() << program << " is not installed (Debian: " << GetParam().name << ").";
    display_->Manage(program);
  }

  /// A manager puts windows elsewhere while they come up: whoever has only seen them clicks beside.
  static void StartTheRoad(ScreenStation& station) {
    for (const char* button :
         {"OrvaneMain.cmdInstrumentInitialize", "OrvaneMain.cmdPSInitialize", "frmBaseBand.cmdLoaderInitialize"}) {
      ASSERT_TRUE(station.Port().Click(button).contains("result")) << button;
    }
    (void)station.Port().SendClick("OrvaneMain.cmdTargetInitialize");
  }

  /// Nothing lies over that window, now and for a while: a manager takes its time.
  void ExpectInFront(const ScreenStation& station, const std::string& window) const {
    constexpr int kGlances = 10;
    const auto deadline = std::chrono::steady_clock::now() + 20s;
    for (int glance = 0; glance < kGlances;) {
      const bool isWhole = display_->WindowsSeen(station.Await(window).area).size() == 1;
      glance = isWhole ? glance + 1 : 0;
      if (std::chrono::steady_clock::now() > deadline) {
        ADD_FAILURE() << window << " is covered";
        return;
      }
      std::this_thread::sleep_for(20ms);
    }
  }
};

TEST_P(Managed, APassIsInFrontWhateverComesUpOrIsClickedBesideIt) {
  ScreenStation station(*display_, {"--automation", "stdio", "--bench", "virtual:seed=7"});
  StartTheRoad(station);
  ExpectPicture(station, "frmFailPass", "pass");
  EXPECT_EQ(station.Port().Await("verdict")["complete"], true);
  station.Port().AwaitState("SerialPortState", false);
  ExpectInFront(station, "frmFailPass");
  (void)station.Port().Ask("show", {{"panel", "frmRampTable"}});
  (void)station.Await("frmRampTable");
  ExpectInFront(station, "frmFailPass");
  // Somebody clicks on a window beside it.
  display_->Click(station.Await("OrvaneMain").area.topLeft() + QPoint(12, 12));
  ExpectInFront(station, "frmFailPass");
  ExpectPicture(station, "frmFailPass", "pass");
}

TEST_P(Managed, EachBoxOfARunAndItsFailAreInFront) {
  ScreenStation station(*display_, {"--automation", "stdio", "--bench", "virtual:seed=7,fault=battery"});
  StartTheRoad(station);
  EXPECT_GT(AnswerBoxesUntil("frmFail", station, [&] { ExpectInFront(station, "box"); }), 0);
  EXPECT_EQ(station.Port().Await("verdict")["result"], "FAIL");
  ExpectInFront(station, "frmFail");
  ExpectPicture(station, "frmFail", "fail");
  (void)station.Port().SendClick("OrvaneMain.cmdExit");
  (void)station.Await("box/Cancel");
  ExpectInFront(station, "box");
}

/// On the smallest screen that a station has.
class ManagedOnASmallScreen : public Managed {
 protected:
  void SetUp() override {
    Managed::SetUp();
    if (IsSkipped()) return;
    display_.emplace(kScreen.size());
    if (*GetParam().program != '\0') display_->Manage(GetParam().program);
  }
  static void ExpectOnScreen(const ScreenStation& station, const std::string& widget) {
    QRect place = station.Await(widget).area;
    // A manager takes its time to put it where it is to be.
    for (const auto deadline = std::chrono::steady_clock::now() + 20s;
         !kScreen.contains(place) && std::chrono::steady_clock::now() < deadline;) {
      std::this_thread::sleep_for(20ms);
      place = station.Await(widget).area;
    }
    EXPECT_TRUE(kScreen.contains(place)) << widget << " ends at " << place.right() << ", " << place.bottom();
  }
  static constexpr QRect kScreen{0, 0, 1280, 720};
};

TEST_P(ManagedOnASmallScreen, EveryWindowThatIsOpenedHasItsCloseThere) {
  ScreenStation station(*display_, {"--automation", "stdio", "--bench", "virtual:seed=7"});
  for (const auto& [panel, close] :
       std::vector<std::pair<std::string, std::string>>{{"frmAutoCal", "cmdAutoCalClose"},
                                                        {"frmBaseBand", "cmdBaseBandClose"},
                                                        {"frmMPAutoCal", "cmdMPAutoCalClose"}}) {
    (void)station.Port().Ask("show", {{"panel", panel}});
    ExpectOnScreen(station, panel + "/" + close);
    station.Click(panel + "/" + close);
    station.AwaitGone(panel);
  }
}

TEST_P(ManagedOnASmallScreen, AnAmberVerdictIsThereWithItsButtonAndLeavesTheNextUnitsFree) {
  ScreenStation station(*display_, {"--automation", "stdio", "--bench", "virtual:seed=7,fault=pa-weak"});
  StartTheRoad(station);
  (void)station.Await("frmFailPass");
  // It grows with what it has to say; by then it has come to its place.
  station.Port().AwaitState("SerialPortState", false);
  ExpectPicture(station, "frmFailPass", "out of tolerance");
  ExpectOnScreen(station, "frmFailPass");
  ExpectOnScreen(station, "frmFailPass/Command1");
  ExpectOnScreen(station, "frmFailPass/lstIncomplete");
  station.Click("frmFailPass/Command1");
  station.AwaitGone("frmFailPass");
  // What the run has brought up and left does not lie over the next unit's button.
  EXPECT_TRUE(station.Port().Get("frmBaseBand.cmdBaseBandClose")["visible"]);
  (void)station.AwaitEnabled("OrvaneMain/cmdTargetInitialize");
}

INSTANTIATE_TEST_SUITE_P(Screen, ManagedOnASmallScreen, testing::ValuesIn(kManagers), &NameOf);
INSTANTIATE_TEST_SUITE_P(Screen, Managed, testing::ValuesIn(kManagers), &NameOf);

}  // namespace
}  // namespace orvane::test
