#include <unistd.h>

#include "records_program/verbs_rig.h"

namespace orvane::test {
namespace {

using testing::HasSubstr;

/// Twenty runs "...-000000000000" to "...-000000000019".
class Replaying : public VerbsRig {
 protected:
  Replaying() {
    for (int i = 0; i < 20; ++i) {
      RunRecord record = LaterPass();
      record.identity.id = IdOfNumber(i);
      record.identity.beganMs -= i;
      here.Finish(record);
    }
    doors.replay = [this](const RunRecord& record, const ReplayOptions& options) { return Replay(record, options); };
  }

  static std::string IdOfNumber(int i) {
    const std::string number = std::to_string(100 + i).substr(1);
    return "019aa9a2-60" + number + "-7b11-8f3a-0000000000" + number;
  }

  [[nodiscard]] ReplayAnswer Replay(const RunRecord& record, const ReplayOptions& options) const {
    const std::string& id = record.identity.id;
    if (options.systemFolder) return {false, "with " + *options.systemFolder};
    if (id == differs) return {false, "at command 7, in step receive:\n\"rfpw 1 62\", not \"rfpw 1 61\""};
    if (id == dies) ::_exit(9);
    return {true, ""};
  }

  std::string differs;
  std::string dies;
};

TEST_F(Replaying, TheSameIs0) {
  EXPECT_EQ(Run({"replay", "last"}), 0);
  EXPECT_EQ(out.str(), IdOfNumber(0) + " same\n");
}

TEST_F(Replaying, ADifferenceIs1AndToldInItsWords) {
  differs = IdOfNumber(0);
  EXPECT_EQ(Run({"replay", "last"}), 1);
  EXPECT_EQ(out.str(), differs + " differs\n  at command 7, in step receive:\n  \"rfpw 1 62\", not \"rfpw 1 61\"\n");
}

TEST_F(Replaying, OneWithoutItsTraceIs1WithASentence) {
  Run({"prune", "--before", "2026-11-24", "--keep-records"});
  EXPECT_EQ(Run({"replay", "last"}), 1);
  EXPECT_EQ(out.str(), IdOfNumber(0) + " not run again\n  It has no trace (any more) and cannot be run again.\n");
}

TEST_F(Replaying, OtherTablesGoToTheReplay) {
  EXPECT_EQ(Run({"replay", "last", "--system-dir", "/tables"}), 1);
  EXPECT_THAT(out.str(), HasSubstr("  with /tables\n"));
}

TEST_F(Replaying, AllRunsInSeveralProcessesAreToldInOrderAndOnlyWhereTheyDiffer) {
  differs = IdOfNumber(13);
  const std::string told = differs +
                           " differs\n  at command 7, in step receive:\n  \"rfpw 1 62\", not \"rfpw 1 61\"\n" +
                           "20 runs: 19 same, 1 differ, 0 could not be run again.\n";
  for (const char* jobs : {"1", "2", "3", "64"}) {
    EXPECT_EQ(Run({"replay", "--all", "--jobs", jobs}), 1) << jobs;
    EXPECT_EQ(out.str(), told) << jobs;
  }
}

TEST_F(Replaying, NamedRunsAreToldInTheOrderOfTheirNames) {
  EXPECT_EQ(Run({"replay", IdOfNumber(5), IdOfNumber(2), IdOfNumber(5), "--jobs", "2"}), 0);
  EXPECT_EQ(out.str(), IdOfNumber(5) + " same\n" + IdOfNumber(2) + " same\n" +
                           "2 runs: 2 same, 0 differ, 0 could not be run again.\n");
}

TEST_F(Replaying, AReplayThatTakesItsProcessAlongIsNamedWithThoseBehindIt) {
  dies = IdOfNumber(16);
  EXPECT_EQ(Run({"replay", "--all", "--jobs", "2"}), 1);
  EXPECT_THAT(out.str(), HasSubstr(dies + " not run again\n  Its replay ended with status 9.\n"));
  EXPECT_THAT(out.str(), HasSubstr("20 runs: 18 same, 0 differ, 2 could not be run again.\n"));
}

TEST_F(Replaying, ADamagedDocumentIsOfItsRunAlone) {
  here.damaged = IdOfNumber(4);
  for (const char* jobs : {"1", "2"}) {
    EXPECT_EQ(Run({"replay", "--all", "--jobs", jobs}), 1) << jobs;
    EXPECT_EQ(out.str(), IdOfNumber(4) + " not run again\n  Its document is damaged.\n" +
                             "20 runs: 19 same, 0 differ, 1 could not be run again.\n");
  }
}

}  // namespace
}  // namespace orvane::test
