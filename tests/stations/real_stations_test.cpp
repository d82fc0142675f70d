// The desk with real stations on virtual benches, one of which dies in the middle of its run.

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <QTest>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "app/stations/stations_desk.h"
#include "support/scratch_folder.h"

namespace orvane::test {
namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;
using testing::StartsWith;
using Stands = StationSight::Stands;

constexpr int kLongMs = 120000;

std::string ContentOf(const fs::path& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

/// This process' own child whose command line has those words; 0 for none.
pid_t ChildWith(const std::string& words) {
  const std::string task = "/proc/self/task/" + std::to_string(::getpid()) + "/children";
  std::ifstream children(task);
  for (pid_t child = 0; children >> child;) {
    if (ContentOf("/proc/" + std::to_string(child) + "/cmdline").find(words) != std::string::npos) return child;
  }
  return 0;
}

class RealStations : public testing::Test {
 protected:
  std::string Profile(const std::string& name, const std::string& more) const {
    folder_.Put(name + ".toml", "station = \"" + name + "\"\nheadless = true\nrecords = \"none\"\n" + more);
    return folder_.Path(name + ".toml");
  }
  /// Takes its unit through by itself, and ends.
  std::string Line(int number) const {
    return Profile("Line " + std::to_string(number),
                   "bench = \"virtual:seed=" + std::to_string(number) + "\"\ninitialize = true\n");
  }
  void Open(const std::vector<std::string>& profiles) {
    desk_ = std::make_unique<StationsDesk>(ORVANE_PROGRAM, profiles, MachineDefaults{{}, {}, "desk7"});
    desk_->Page().show();
    desk_->Start();
  }
  [[nodiscard]] const StationSight& Sight(std::size_t station) const { return desk_->StationAt(station).Sight(); }
  [[nodiscard]] std::string On(std::size_t station, const char* label) const {
    return desk_->Page().TileOf(station).findChild<QLabel*>(label)->text().toStdString();
  }
  template <class Come>
  static void Await(const Come& come) {
    ASSERT_TRUE(QTest::qWaitFor(come, kLongMs));
  }

  ScratchFolder folder_;
  std::unique_ptr<StationsDesk> desk_;
};

TEST_F(RealStations, OneThatIsKilledTakesNoOtherWithItAndIsStartedAgainByHand) {
  Open({Line(1), Line(2), Line(3)});
  Await([&] { return Sight(1).stands == Stands::InRun && Sight(1).stepsDone >= 1; });
  const pid_t victim = ChildWith("Line 2.toml");
  ASSERT_GT(victim, 0);
  ::kill(victim, SIGKILL);
  Await([&] { return Sight(1).stands == Stands::Ended; });
  EXPECT_TRUE(Sight(1).diedInRun);
  EXPECT_EQ(On(1, "tileState"), "Ended");
  EXPECT_THAT(On(1, "tileWords"),
              StartsWith("The unit that was under way is not calibrated.\nIt was ended by signal 9 ("));

  for (const std::size_t other : {0U, 2U}) {
    Await([&] { return Sight(other).units == 1 && Sight(other).stands == Stands::Ended; });
    EXPECT_EQ(Sight(other).passed, 1) << other;
    EXPECT_EQ(Sight(other).ending, "It ended with status 0.") << other;
    EXPECT_FALSE(Sight(other).diedInRun) << other;
  }
  EXPECT_EQ(ChildWith("Line 2.toml"), 0) << "it starts by nobody's hand but an operator's";

  auto* again = desk_->Page().TileOf(1).findChild<QPushButton*>("tileStartAgain");
  ASSERT_FALSE(again->isHidden());
  QTest::mouseClick(again, Qt::LeftButton);
  Await([&] { return Sight(1).units == 1; });
  EXPECT_EQ(Sight(1).passed, 1);
}

TEST_F(RealStations, AProfileThatCannotBeTakenIsToldInTheStationsOwnSentence) {
  const std::string wrong = Profile("wrong", "com9 = \"/dev/ttyUSB9\"\n");
  Open({wrong});
  Await([&] { return Sight(0).stands == Stands::Ended; });
  EXPECT_EQ(On(0, "tileWords"), "It ended with status 64. orvane: " + wrong + ":4: com9: there is no such key");
}

TEST_F(RealStations, OneWhoseProfileWasMendedIsStartedAsItSays) {
  Open({Profile("A", "com9 = \"/dev/ttyUSB9\"\n")});
  Await([&] { return Sight(0).stands == Stands::Ended; });
  folder_.Put("A.toml", "station = \"Mended\"\nheadless = true\nrecords = \"none\"\nbench = \"virtual\"\n");
  desk_->Page().TileOf(0).onStartAgain();
  Await([&] { return Sight(0).stands == Stands::Idle; });
  EXPECT_EQ(On(0, "tileName"), "1  Mended");
}

TEST_F(RealStations, AllOfThemEndWithTheDesk) {
  const std::string idle = "bench = \"virtual\"\n";
  Open({Profile("A", idle), Profile("B", idle)});
  Await([&] { return Sight(0).stands == Stands::Idle && Sight(1).stands == Stands::Idle; });
  EXPECT_EQ(On(0, "tileState"), "Ready");
  int ended = 0;
  desk_->onEnded = [&] { ++ended; };
  desk_->Page().close();
  Await([&] { return ended > 0; });
  EXPECT_EQ(ChildWith(".toml"), 0);
}

TEST_F(RealStations, TheWindowsOfAStationComeWhenTheDeskCallsThem) {
  DeskServer server;
  ASSERT_TRUE(server.Listen(QString::fromStdString(folder_.Path("desk"))));
  QProcess station;
  station.start(ORVANE_PROGRAM, {"--bench", "virtual", "--records", "none", "--desk",
                                 QString::fromStdString("4@" + folder_.Path("desk"))});
  Await([&] { return server.BringToFront(4); });
  EXPECT_FALSE(server.BringToFront(1));
  station.terminate();
  EXPECT_TRUE(station.waitForFinished());
  Await([&] { return !server.BringToFront(4); });
}

TEST_F(RealStations, APageIsNotClosedOverARunByASlip) {
  Open({Line(1)});
  Await([&] { return Sight(0).stands == Stands::InRun; });
  int asked = 0;
  desk_->Page().mayEnd = [&](int runs) {
    asked += runs;
    return false;
  };
  EXPECT_FALSE(desk_->Page().close());
  EXPECT_EQ(asked, 1);
  EXPECT_TRUE(desk_->StationAt(0).Runs());
}

}  // namespace
}  // namespace orvane::test
