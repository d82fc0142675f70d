// Every fault of the bench at every place of the road, and every byte on the line harmed in every way.

#include <iostream>

#include "arguments.h"
#include "cells.h"

int main(int count, char** words) {
  using namespace orvane::proofs;
  try {
    const Arguments arguments = ArgumentsOf({words + 1, words + count}, "--cell");
    if (arguments.only) return ShowOne(RunCell(CellOf(*arguments.only)));
    const Cells cells(MeasureRoad());
    return Work({"matrix", 0, cells.Count(), [&](std::uint64_t number) { return RunCell(cells.At(number)); },
                 [&](std::uint64_t number) { return std::string(words[0]) + " --cell " + TextOf(cells.At(number)); }},
                arguments.effort);
  } catch (const std::exception& failure) {
    std::cerr << failure.what() << "\n";
    return 64;
  }
}
