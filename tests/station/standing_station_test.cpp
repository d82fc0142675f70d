// A station stands for months. What it keeps after thousands of roads is what it kept after a few.

#include <gtest/gtest.h>
#include <malloc.h>

#include <numeric>

#include "station/virtual_station.h"

namespace orvane::test {
namespace {

/// Bytes of the heap that are in use, what the test itself notes left out.
std::size_t HeapInUse(VirtualStation& station) {
  station.journal.Clear();
  station.boxes.shown = {};
  station.boxes.shown.shrink_to_fit();
  return mallinfo2().uordblks;
}

void TakeUnits(VirtualStation& station, int units) {
  for (int unit = 0; unit < units; ++unit) {
    ASSERT_EQ(station.InitializeTarget(), std::nullopt);
    ASSERT_TRUE(station.State().report.AllComplete()) << station.Steps();
    station.journal.Clear();
  }
}

TEST(StandingStation, KeepsNoMoreAfterManyUnitsThanAfterAFew) {
  // Memory checkers keep a heap of their own.
  if (mallinfo2().uordblks == 0) GTEST_SKIP() << "The heap of this build counts nothing.";
  constexpr int kRoads = 100;
  // A megabyte in five thousand roads.
  constexpr std::size_t kMostGrowth = 1024UL * 1024 / 5000 * kRoads;
  VirtualStation station(1);
  station.InitializeInstruments();
  TakeUnits(station, 50);
  const std::size_t before = HeapInUse(station);
  TakeUnits(station, kRoads);
  const std::size_t after = HeapInUse(station);
  EXPECT_LE(after, before + kMostGrowth) << (after - before) / kRoads << " bytes a road";
}

TEST(StandingStation, ShowsTheLastRowsOfItsTransfersAndNoMoreThanAClientTakes) {
  VirtualStation station(1);
  station.InitializeInstruments();
  const ListBox& rows = station.Panels().downLoad.lstDataReadWindow;
  TakeUnits(station, 1);
  const std::size_t ofOneSave = rows.Items().size();
  EXPECT_EQ(ofOneSave, 1857U + 1U + 1817U) << "the file's rows with their head, then the image's with theirs";
  TakeUnits(station, 1);
  EXPECT_EQ(rows.Items().size(), ofOneSave + 1817U) << "a save clears nothing";
  TakeUnits(station, 10);
  EXPECT_EQ(rows.Items().size(), 20000U);
  EXPECT_EQ(rows.Items()[20000 - 1817], "Address\tData");
  EXPECT_EQ(rows.Items().back().rfind("1815\t", 0), 0U);
  // As a list of quoted texts, with the tab as two characters.
  const std::size_t told =
      std::accumulate(rows.Items().begin(), rows.Items().end(), std::size_t{0},
                      [](std::size_t sum, const std::string& row) { return sum + row.size() + 4; });
  EXPECT_LT(told, 512UL * 1024);
}

TEST(StandingStation, ANewRunHasNoSearchesOfTheUnitBefore) {
  VirtualStation station(1);
  ASSERT_EQ(station.TakeTargetThrough(), std::nullopt);
  SearchTrail& trail = station.State().searchTrail;
  ASSERT_TRUE(trail.Last().has_value());
  int looks = 0;
  station.State().rxTrail.changed.Connect([&] {
    ++looks;
    EXPECT_FALSE(trail.Last().has_value());
    EXPECT_TRUE(trail.Found(0).empty() && trail.Found(1).empty());
  });
  ASSERT_EQ(station.InitializeTarget(), std::nullopt);
  EXPECT_GT(looks, 0);
  EXPECT_FALSE(trail.Found(0).empty());
}

}  // namespace
}  // namespace orvane::test
