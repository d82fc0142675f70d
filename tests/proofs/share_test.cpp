// A share of the proofs, the same each time; ./prove goes on where this stops.

#include <gtest/gtest.h>

#include <numeric>

#include "cells.h"
#include "visit.h"

namespace orvane::proofs {
namespace {

std::string Findings(const Outcome& outcome) {
  return std::accumulate(outcome.findings.begin(), outcome.findings.end(), std::string(),
                         [](const std::string& all, const std::string& text) { return all + text + "\n"; });
}

TEST(Matrix, AShareOfItsCellsIsClean) {
  const Cells cells(MeasureRoad());
  constexpr std::uint64_t kCells = 250;
  const std::uint64_t stride = cells.Count() / kCells;
  for (std::uint64_t number = 0; number < cells.Count(); number += stride) {
    const Cell cell = cells.At(number);
    const Outcome outcome = RunCell(cell);
    EXPECT_EQ(outcome.figures.at("roads"), 2);
    EXPECT_EQ(Findings(outcome), "") << "prove_matrix --cell " << TextOf(cell);
  }
}

/// What once left something behind for the next unit.
TEST(Matrix, CellsThatFoundSomethingAreClean) {
  for (const char* cell :
       {"in:11:flipped:2", "in:32:flipped:16", "unplugged@100", "supply-absent@2", "late@2/6000"}) {
    EXPECT_EQ(Findings(RunCell(CellOf(cell))), "") << cell;
  }
}

TEST(Matrix, HoldsEveryFaultOfTheBenchAndEveryByte) {
  RoadMeasure road;
  road.commands = {"ti", "rfe 1", "rfe 2", "txpw 4 1", "mpr 30"};
  road.bytesToStation = 3;
  road.bytesToTarget = 2;
  road.testSetLines = road.testSetQueries = road.testSetReadings = road.supplyLines = 1;
  const Cells cells(road);
  std::set<std::string> all;
  for (std::uint64_t number = 0; number < cells.Count(); ++number) all.insert(TextOf(cells.At(number)));
  EXPECT_EQ(all.size(), cells.Count()) << "each once";
  for (const bench::FaultRow& row : bench::FaultTable()) {
    EXPECT_TRUE(all.contains(std::string(row.name) + "@1")) << row.name;
  }
  for (const char* cell : {"status@5/127", "battery@5", "in:2:lost", "in:0:flipped:255", "out:1:delayed:2600"}) {
    EXPECT_TRUE(all.contains(cell)) << cell;
  }
  EXPECT_FALSE(all.contains("in:3:lost"));
  EXPECT_FALSE(all.contains("receiver@3")) << "the receiver is not looked at any more";
}

TEST(Replay, AShareOfItsVisitsRunsAgainAsItWas) {
  for (std::uint64_t seed = 1; seed <= 30; ++seed) {
    EXPECT_EQ(Findings(Visit(seed, true).Run()), "") << "prove_replay --seed " << seed;
  }
}

/// Acts on a panel that nobody had seen, and a reply that comes as a box is answered.
TEST(Replay, VisitsThatFoundSomethingAreClean) {
  for (const std::uint64_t seed : {477U, 563U}) {
    EXPECT_EQ(Findings(Visit(seed, true).Run()), "") << "prove_replay --seed " << seed;
  }
}

TEST(Soak, AShareOfItsVisitsIsClean) {
  for (std::uint64_t seed = 1; seed <= 40; ++seed) {
    EXPECT_EQ(Findings(Visit(seed).Run()), "") << "prove_soak --seed " << seed;
  }
}

TEST(Soak, ASeedAloneGivesTheSameVisit) {
  const auto told = [](std::uint64_t seed) {
    std::string all;
    Visit visit(seed);
    visit.tell = [&](const std::string& road) { all += road + "\n"; };
    (void)visit.Run();
    return all;
  };
  EXPECT_EQ(told(7), told(7));
  EXPECT_NE(told(7), told(8));
}

}  // namespace
}  // namespace orvane::proofs
