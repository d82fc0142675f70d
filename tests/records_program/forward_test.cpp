#include "records_program/verbs_rig.h"

namespace orvane::test {
namespace {

using testing::HasSubstr;

class Forwarding : public VerbsRig {
 protected:
  Forwarding() {
    here.Finish(SmallRun());
    here.Finish(LaterPass());
  }

  /// Ends the program behind so many rounds; `between` runs behind each.
  void EndBehindRounds(int rounds, const std::function<void(int)>& between = {}) {
    doors.endAsked = [rounds, between, round = 0](std::chrono::milliseconds patience) mutable {
      if (patience.count() == 0) return false;
      if (between) between(++round);
      return round >= rounds;
    };
  }
};

TEST_F(Forwarding, CopiesFinishedRecordsThatTheOtherStoreHasNot) {
  there.Finish(SmallRun());
  RunRecord open = LaterPass();
  open.identity.id = "019aa9a2-7000-7b11-8f3a-000000000000";
  here.Begin(open.identity, {});
  EXPECT_EQ(Run({"forward", "--to", "sqlite:there"}), 0);
  EXPECT_EQ(out.str(), "1 record forwarded.\n");
  EXPECT_EQ(there.List({}).size(), 2U);
  EXPECT_EQ(there.Load(LaterPass().identity.id)->steps, LaterPass().steps);
  EXPECT_EQ(Run({"forward", "--to", "sqlite:there"}), 0);
  EXPECT_EQ(out.str(), "0 records forwarded.\n");
}

TEST_F(Forwarding, AStoreThatIsNotThereIs74) {
  EXPECT_EQ(Run({"forward", "--to", "sqlite:gone"}), 74);
  EXPECT_EQ(errors.str(), "orvane-records: /gone: there is no store.\n");
}

TEST_F(Forwarding, ARecordThatIsRefusedIsNamedOnceAndKeepsNoOtherOneBack) {
  there.refuses = SmallRun().identity.id;
  const std::string told = "orvane-records: " + there.refuses + ": it has no place for it.\n";
  EXPECT_EQ(Run({"forward", "--to", "sqlite:there"}), 74);
  EXPECT_EQ(errors.str(), told);
  EXPECT_EQ(out.str(), "1 record forwarded.\n");
  EXPECT_TRUE(there.Load(LaterPass().identity.id));
  EndBehindRounds(4, [&](int round) {
    if (round == 3) there.refuses = "";
  });
  EXPECT_EQ(Run({"forward", "--to", "sqlite:there", "--follow"}), 0);
  EXPECT_EQ(errors.str(), told);
  EXPECT_TRUE(there.Load(SmallRun().identity.id)) << "it is tried again";
}

TEST_F(Forwarding, FollowsWhatIsFinishedMeanwhileUntilItIsAskedToEnd) {
  RunRecord open = LaterPass();
  open.identity.id = "019aa9a2-7000-7b11-8f3a-000000000000";
  here.Begin(open.identity, {});
  EndBehindRounds(3, [&](int round) {
    EXPECT_EQ(there.List({}).size(), round < 2 ? 2U : 3U);
    if (round == 1) here.Finish(open);
  });
  EXPECT_EQ(Run({"forward", "--to", "sqlite:there", "--follow"}), 0);
  EXPECT_EQ(out.str(), "2 records forwarded.\n1 record forwarded.\n");
}

TEST_F(Forwarding, AnOutageIsToldOnceAndOverWhenItIsOver) {
  EndBehindRounds(5, [&](int round) {
    if (round <= 3) there.failsNext = "the server is gone.";
  });
  there.failsNext = "the server is gone.";
  EXPECT_EQ(Run({"forward", "--to", "sqlite:there", "--follow"}), 0);
  EXPECT_EQ(errors.str(), "orvane-records: the server is gone.\n");
  EXPECT_EQ(there.List({}).size(), 2U);
}

TEST_F(Forwarding, ARecordOfLongAgoThatComesLateIsFoundWithinAMinute) {
  RunRecord old = SmallRun();
  old.identity.id = "01000000-0000-7000-8000-000000000000";
  old.identity.beganMs = 0;
  EndBehindRounds(61, [&](int round) {
    if (round == 1) here.Finish(old);
  });
  EXPECT_EQ(Run({"forward", "--to", "sqlite:there", "--follow"}), 0);
  EXPECT_TRUE(there.Load(old.identity.id));
}

}  // namespace
}  // namespace orvane::test
