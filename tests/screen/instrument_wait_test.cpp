// An instrument that does not answer, as it is seen on a display.

#include <chrono>
#include <thread>

#include "adapters/loopback_instrument.h"
#include "screen/road_on_screen.h"

namespace orvane::test {
namespace {

using namespace std::chrono_literals;

using InstrumentWaitOnScreen = RoadOnScreen;

TEST_F(InstrumentWaitOnScreen, TheWindowsAreDrawnAnewAndWhatIsClickedComesBehindIt) {
  Instrument testSet;
  // The station greets it as it starts.
  std::thread greeted([&] {
    testSet.Accept();
    (void)testSet.Received();
    testSet.Reply("a test set\n");
  });
  ScreenStation station(
      *display_, {"--automation", "stdio", "--instrument", "1=tcp:127.0.0.1:" + std::to_string(testSet.Port())});
  greeted.join();
  // The station could not tell where its widgets are while it waits.
  const ScreenStation::Place console = station.Await("OrvaneMain/txtResults");
  const ScreenStation::Place exit = station.Await("OrvaneMain/cmdExit");
  const ScreenStation::Place stage = station.Await("OrvaneMain/statusStage");
  (void)station.Port().Ask("set", {{"control", "OrvaneMain.cboTimeOut"}, {"select", "100s"}});
  ASSERT_EQ(station.Port().Get("OrvaneMain.cboTimeOut")["text"], "100s");
  const QImage stageBefore = station.Shown(stage);
  (void)station.Port().SendClick("OrvaneMain.cmdInstrumentInitialize");
  testSet.Accept();
  ASSERT_NE(testSet.Received(), "");

  // Somebody else's window lies over it for a while.
  const QImage before = station.Shown(console);
  display_->Cover(console.area);
  ASSERT_NE(station.Shown(console), before);
  display_->Uncover();
  const auto within = [](const std::function<bool()>& isSo) {
    for (const auto deadline = std::chrono::steady_clock::now() + 60s; !isSo();) {
      if (std::chrono::steady_clock::now() > deadline) return false;
      std::this_thread::sleep_for(5ms);
    }
    return true;
  };
  EXPECT_TRUE(within([&] { return station.Shown(console) == before; })) << "it is drawn anew";
  EXPECT_TRUE(within([&] { return station.Shown(stage) != stageBefore; })) << "it says who is waited for";
  display_->Click(exit.area.center());

  testSet.Reply("a test set that takes its time\n");
  (void)station.Await("box/Cancel");
  EXPECT_EQ(station.Port().Get("OrvaneMain.shpInstrumentOnOff")["backColor"], 0xFF00) << "the reply was in time";
  station.Click("box/Cancel");
}

}  // namespace
}  // namespace orvane::test
