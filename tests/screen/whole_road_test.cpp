// The production road by mouse on a real display, and the verdict as it stands on the screen.

#include <algorithm>
#include <chrono>
#include <set>

#include "screen/road_on_screen.h"

namespace orvane::test {
namespace {

using namespace std::chrono_literals;

using WholeRoadOnScreen = RoadOnScreen;

TEST_F(WholeRoadOnScreen, AGoodUnitComesToItsPassByMouse) {
  ScreenStation station(*display_, {"--automation", "stdio", "--bench", "virtual:seed=7"});
  station.InitializeAll();
  ExpectPicture(station, "frmFailPass", "pass");
  const Json verdict = station.Port().Await("verdict");
  EXPECT_EQ(verdict["result"], "PASS");
  EXPECT_EQ(verdict["complete"], true) << verdict.dump();

  station.Click("frmFailPass/Command1");
  station.Click("OrvaneMain/cmdExit");
  station.Click("box/OK");
  const Child::End end = station.Process().WaitForEnd();
  EXPECT_EQ(end.status, 0);
  EXPECT_EQ(end.errors, "");
}

TEST_F(WholeRoadOnScreen, AWornBatteryComesToItsFailByMouse) {
  ScreenStation station(*display_, {"--automation", "stdio", "--bench", "virtual:seed=7,fault=battery"});
  station.InitializeAll();
  EXPECT_GT(AnswerBoxesUntil("frmFail", station), 0);
  ExpectPicture(station, "frmFail", "fail");
  EXPECT_EQ(station.Port().Await("verdict")["result"], "FAIL");
}

/// Somebody types on, or a scanner does, while a run opens its windows.
TEST_F(WholeRoadOnScreen, TheKeyboardStaysWhereItWasWhileARunOpensItsWindows) {
  ScreenStation station(*display_, {"--automation", "stdio", "--bench", "virtual:seed=7"});
  station.InitializeInstruments();
  station.Click("OrvaneMain/SSTab1:1");
  station.ClickToType("OrvaneMain/txtBeacon");
  Client& port = station.Port();
  const std::string typedInto = port.Get("OrvaneMain.txtBeacon")["text"];
  const std::string channel = port.Get("frmMPAutoCal.txtGSMArfcn1")["text"];
  (void)port.SendClick("OrvaneMain.cmdTargetInitialize");

  for (const char* window : {"frmMPAutoCal", "frmAutoCalTxResult"}) {
    (void)station.Await(window);
    station.Type("7");
  }
  std::string text = typedInto;
  for (const auto deadline = std::chrono::steady_clock::now() + 120s;
       text.size() < typedInto.size() + 2 && std::chrono::steady_clock::now() < deadline;) {
    text = port.Get("OrvaneMain.txtBeacon")["text"];
  }
  EXPECT_EQ(std::count(text.begin(), text.end(), '7'), 2) << text;
  EXPECT_EQ(port.Get("frmMPAutoCal.txtGSMArfcn1")["text"], channel);
  const Json verdict = port.Await("verdict");
  EXPECT_EQ(verdict["result"], "PASS");
  EXPECT_EQ(verdict["complete"], true) << verdict.dump();
}

/// How many colours a place on the screen has.
std::size_t ColoursOf(const QImage& seen) {
  std::set<QRgb> colours;
  for (int y = 0; y < seen.height(); y += 2) {
    for (int x = 0; x < seen.width(); x += 2) colours.insert(seen.pixel(x, y));
  }
  return colours.size();
}

TEST_F(WholeRoadOnScreen, ARunIsWatchedAndStoppedByMouseWhileItWaitsForReplies) {
  ScreenStation station(*display_, {"--automation", "stdio", "--bench", "virtual:seed=7"});
  station.InitializeAll();
  (void)station.Await("frmMPAutoCal");
  // A window that comes up in the middle of the run is drawn there. The main one, with its button, is covered.
  (void)station.Port().Ask("show", {{"panel", "frmAutoCal"}});
  const ScreenStation::Place start = station.Await("frmAutoCal/cmdAllCalStart");
  EXPECT_FALSE(start.enabled);
  EXPECT_EQ(start.tip, "A run is under way.");
  EXPECT_GT(ColoursOf(station.Shown(station.Await("frmAutoCal"))), 10U);

  station.Click("frmAutoCal/cmdAutoCalStop");
  (void)AnswerBoxesUntil("OrvaneMain", station);
  station.AwaitEnabled("frmAutoCal/cmdAllCalStart");
  EXPECT_EQ(station.Await("frmAutoCal/cmdAllCalStart").tip, "");
  const Json verdict = station.Port().Await("verdict");
  EXPECT_EQ(verdict["complete"], false) << verdict.dump();
}

}  // namespace
}  // namespace orvane::test
