#include "program/wired_bench.h"

#include <gtest/gtest.h>

#include <sstream>
#include <stdexcept>

namespace orvane::test {
namespace {

Arguments CommandOf(Arguments arguments) {
  arguments.insert(arguments.begin(), VIRTUAL_BENCH_PROGRAM);
  return arguments;
}

}  // namespace

WiredBench::WiredBench(const Arguments& arguments) : child_(CommandOf(arguments)) {
  for (std::string what; what != "ready";) {
    const auto line = child_.NextLine();
    if (!line) throw std::runtime_error("the bench is not ready: " + child_.WaitForEnd().errors);
    std::istringstream words(*line);
    words >> what;
    words >> places_[what];
  }
}

WiredBench::~WiredBench() {
  if (!child_.Runs()) return;
  child_.Terminate();
  const auto end = child_.WaitForEnd();
  EXPECT_EQ(end.status, 0) << end.errors;
}

Arguments WiredBench::Options() {
  return {"--com1",       Place("target"),
          "--instrument", "1=tcp:" + Place("testset"),
          "--instrument", "2=tcp:" + Place("supply"),
          "--instrument", "5=tcp:" + Place("load")};
}

}  // namespace orvane::test
