#include "workers.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <stdexcept>

namespace orvane::proofs {
namespace {

/// A proof of ten cases of which some are bad, in a state folder of its own.
class AProof : public testing::Test {
 protected:
  void SetUp() override {
    std::string folder = testing::TempDir() + "proofXXXXXX";
    ASSERT_NE(mkdtemp(folder.data()), nullptr);
    effort.state = folder;
    effort.minutes = 1;
  }
  void TearDown() override { std::filesystem::remove_all(effort.state); }

  int Run(std::uint64_t end = 10) {
    const Proof proof{"trial", 0, end, [this](std::uint64_t number) { return Case(number); },
                      [](std::uint64_t number) { return "case " + std::to_string(number); }};
    testing::internal::CaptureStdout();
    const int status = Work(proof, effort);
    shown = testing::internal::GetCapturedStdout();
    return status;
  }
  Outcome Case(std::uint64_t number) const {
    if (number == dies) std::abort();
    if (number == throws) throw std::runtime_error("beyond help");
    Outcome outcome{{{"roads", 2}}, {}};
    if (number == found) outcome.findings.emplace_back("two\nlines");
    return outcome;
  }

  static constexpr std::uint64_t kNone = 99;
  std::uint64_t dies = kNone;
  std::uint64_t throws = kNone;
  std::uint64_t found = kNone;
  Effort effort;
  std::string shown;
};

TEST_F(AProof, AddsUpItsFiguresAndGoesOnWhereItStopped) {
  EXPECT_EQ(Run(4), 0);
  EXPECT_NE(shown.find("trial: 8 roads, cases 0 to 3 of 4, 0 with findings"), std::string::npos) << shown;
  EXPECT_EQ(Run(10), 0);
  EXPECT_NE(shown.find("trial: 20 roads, cases 0 to 9 of 10, 0 with findings (this call: 6 cases"), std::string::npos)
      << shown;
}

TEST_F(AProof, AFindingStaysUntilItIsSeenNoMore) {
  found = 3;
  EXPECT_EQ(Run(), 1);
  EXPECT_NE(shown.find("  case 3\n    two lines\n"), std::string::npos) << shown;
  EXPECT_EQ(Run(), 1) << "nothing is left to do, but it is still there";
  found = kNone;
  EXPECT_EQ(Run(), 0);
  EXPECT_NE(shown.find("trial: 20 roads"), std::string::npos) << "a case counts once: " << shown;
}

TEST_F(AProof, ACaseThatEndsItsProcessIsAFindingAndTheOthersAreRun) {
  dies = 5;
  throws = 7;
  EXPECT_EQ(Run(), 1);
  EXPECT_NE(shown.find("  case 5\n    It ends the process by signal 6"), std::string::npos) << shown;
  EXPECT_NE(shown.find("  case 7\n    It ends with an exception: beyond help"), std::string::npos) << shown;
  EXPECT_NE(shown.find("trial: 16 roads, cases 0 to 9 of 10, 2 with findings"), std::string::npos) << shown;
}

}  // namespace
}  // namespace orvane::proofs
