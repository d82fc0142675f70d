// The production road by mouse on a real display, and the verdict as it stands on the screen.

#include <gtest/gtest.h>

#include <QPainter>
#include <QSvgRenderer>
#include <algorithm>
#include <chrono>
#include <set>

#include "adapters/qt/pictures.h"
#include "screen/screen_station.h"

namespace orvane::test {
namespace {

using namespace std::chrono_literals;

/// A picture as its file has it, as large as a place on the screen; what is around it is transparent.
QImage Drawn(std::string_view name, QSize size) {
  QImage image(size, QImage::Format_ARGB32);
  image.fill(Qt::transparent);
  QSvgRenderer renderer(PictureNamed(name));
  renderer.setAspectRatioMode(Qt::KeepAspectRatio);
  QPainter painter(&image);
  renderer.render(&painter);
  return image;
}

/// Mean difference of a colour's parts, 0 to 255, where the expected picture covers the screen.
double Difference(const QImage& seen, const QImage& expected) {
  double sum = 0;
  long parts = 0;
  for (int y = 0; y < seen.height(); ++y) {
    for (int x = 0; x < seen.width(); ++x) {
      const QRgb wanted = expected.pixel(x, y);
      if (qAlpha(wanted) < 255) continue;
      const QRgb is = seen.pixel(x, y);
      sum += std::abs(qRed(is) - qRed(wanted)) + std::abs(qGreen(is) - qGreen(wanted)) +
             std::abs(qBlue(is) - qBlue(wanted));
      parts += 3;
    }
  }
  return sum / static_cast<double>(parts);
}

class WholeRoadOnScreen : public testing::Test {
 protected:
  void SetUp() override {
    if (!XDisplay::Installed()) GTEST_SKIP() << "Xvfb is not installed (Debian: xvfb).";
    display_.emplace();
  }

  /// Presses the OK of every box that comes before that window does. @return how many there were.
  int AnswerBoxesUntil(const std::string& window, ScreenStation& station) {
    int boxes = 0;
    for (const auto deadline = std::chrono::steady_clock::now() + 60s; !station.Find(window);) {
      if (station.Find("box/OK")) {
        station.Click("box/OK");
        station.AwaitGone("box/OK");
        ++boxes;
      }
      if (std::chrono::steady_clock::now() > deadline) throw std::runtime_error(window + " does not come");
    }
    return boxes;
  }

  /// The picture in the verdict's window is that one and none of the others.
  void ExpectPicture(const ScreenStation& station, const std::string& window, const std::string& name) {
    const ScreenStation::Place place = station.Await(window + "/Image1");
    // What is behind its exposure may still be on its way to the screen.
    QImage seen = station.Shown(place);
    constexpr double kAlike = 4;
    constexpr double kUnlike = 40;
    for (int glance = 0; glance < 200 && Difference(seen, Drawn(name, seen.size())) > kAlike; ++glance) {
      (void)station.Find(window);
      seen = station.Shown(place);
    }
    for (const std::string other : {"pass", "fail", "out of tolerance", "not measured"}) {
      const double difference = Difference(seen, Drawn(other, seen.size()));
      if (other == name) {
        EXPECT_LT(difference, kAlike) << name;
      } else {
        EXPECT_GT(difference, kUnlike) << other << " for " << name;
      }
    }
  }

  std::optional<XDisplay> display_;
};

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
