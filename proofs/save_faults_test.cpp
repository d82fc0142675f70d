// A share of what prove_files tries: each way of saving, at each of its calls.

#include <gtest/gtest.h>

#include "save_proof.h"

namespace orvane::test {
namespace {

using Kind = FaultyDisk::Fault::Kind;

class EverySave : public testing::TestWithParam<std::size_t> {};

INSTANTIATE_TEST_SUITE_P(Way, EverySave, testing::Range<std::size_t>(0, SavePathNames().size()), [](const auto& way) {
  std::string name(SavePathNames()[way.param]);
  for (char& c : name) {
    if (c == '-') c = '_';
  }
  return name;
});

TEST_P(EverySave, LeavesTheOldFileOrTheNewOneWholeAndSaysSo) {
  constexpr Kind kKinds[] = {Kind::Fails,        Kind::ShortAndFull, Kind::Killed,
                             Kind::FailsOnwards, Kind::KilledHalf,   Kind::Short};
  constexpr int kErrors[] = {ENOSPC, EIO, EACCES};
  SaveProof proof;
  for (const OldState old : kOldStates) {
    bool struck = true;
    for (int at = 1; struck; ++at) {
      const auto turn = static_cast<std::size_t>(at) + static_cast<std::size_t>(old) + GetParam();
      SaveCase save{GetParam(), old, {kKinds[turn % std::size(kKinds)], at, kErrors[turn % std::size(kErrors)]}, 0};
      const SaveProof::Outcome outcome = proof.Try(save);
      EXPECT_EQ(outcome.finding, "") << TextOf(save);
      struck = outcome.struck;
      // A log that is not to replace a file asks for another name.
      const bool asksAgain = SavePathNames()[GetParam()] == "log" && old == OldState::No;
      EXPECT_EQ(at > 1 || struck, !asksAgain) << "the disk was asked for nothing by " << TextOf(save);
    }
  }
}

TEST(RandomSaves, LeaveTheOldFileOrTheNewOneWholeToo) {
  SaveProof proof;
  for (std::uint64_t seed = 1; seed <= 40; ++seed) {
    const SaveCase save = RandomSaveCase(seed);
    EXPECT_EQ(proof.Try(save).finding, "") << TextOf(save);
    EXPECT_EQ(TextOf(SaveCaseOf(TextOf(save)).value()), TextOf(save));
  }
}

}  // namespace
}  // namespace orvane::test
