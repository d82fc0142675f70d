#include "records_program/verbs_rig.h"

namespace orvane::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

using Words = std::vector<std::string>;

const char* const kSmall = "019aa9a2-5c2e-7b11-8f3a-2b9d8c1e4f60";
const char* const kLater = "019aa9a2-6000-7b11-8f3a-000000000001";

class Verbs : public VerbsRig {
 protected:
  Verbs() {
    here.Finish(SmallRun());
    here.Finish(LaterPass());
  }
};

TEST_F(Verbs, ListsRunsTheNewestFirst) {
  EXPECT_EQ(Run({"list"}), 0);
  EXPECT_EQ(
      shown,
      "RUN            BEGAN (UTC)          SERIAL    STATION    TOOK  VERDICT  REASON\n"
      "019aa9a2-6000  2026-11-23 03:04:05  K7-0002   bench3   2.00 s  PASS\n"
      "019aa9a2-5c2e  2026-11-22 03:04:05  =K7-0001  bench3   2.25 s  FAIL     level 5 is <outside> & \"far\"\n");
}

TEST_F(Verbs, ListTellsRunsOfOneMillisecondApart) {
  RunRecord twin = LaterPass();
  twin.identity.id = "019aa9a2-6000-7b11-8f3a-000000000002";
  here.Finish(twin);
  EXPECT_EQ(Run({"list", "--limit", "2"}), 0);
  EXPECT_THAT(shown, HasSubstr("019aa9a2-6000-7b11-8f3a-000000000001  "));
  EXPECT_THAT(shown, HasSubstr("019aa9a2-6000-7b11-8f3a-000000000002  "));
}

TEST_F(Verbs, ListSaysOfAnOpenRunThatItIsUnderWayAndOfOthersWhatTheyWere) {
  RunRecord open = LaterPass();
  open.identity.id = "019aa9a2-7000-7b11-8f3a-000000000000";
  here.Begin(open.identity, {});
  RunRecord byHand = LaterPass();
  byHand.identity.id = "019aa9a2-8000-7b11-8f3a-000000000000";
  byHand.identity.kind = "GSM";
  byHand.end->verdict = "NONE";
  here.Finish(byHand);
  RunRecord stopped = byHand;
  stopped.identity.id = "019aa9a2-9000-7b11-8f3a-000000000000";
  stopped.end->ending = Ending::Stopped;
  here.Finish(stopped);
  RunRecord partial = LaterPass();
  partial.identity.id = "019aa9a2-a000-7b11-8f3a-000000000000";
  partial.end->complete = false;
  here.Finish(partial);
  EXPECT_EQ(Run({"list"}), 0);
  EXPECT_THAT(shown, HasSubstr("019aa9a2-7000  2026-11-23 03:04:05  K7-0002   bench3   whole          under way\n"));
  EXPECT_THAT(shown, HasSubstr("019aa9a2-8000  2026-11-23 03:04:05  K7-0002   bench3   GSM    2.00 s  done\n"));
  EXPECT_THAT(shown, HasSubstr("019aa9a2-9000  2026-11-23 03:04:05  K7-0002   bench3   GSM    2.00 s  stopped\n"));
  EXPECT_THAT(shown, HasSubstr("whole  2.00 s  PASS, not complete\n"));
}

struct Choice {
  Words words;
  int runs;
};

TEST_F(Verbs, ListTakesEachFilter) {
  const Choice rows[] = {
      {{"--serial", "K7-0002"}, 1},
      {{"--serial", "K7"}, 0},
      {{"--station", "bench3"}, 2},
      {{"--verdict", "FAIL"}, 1},
      {{"--verdict", "NONE"}, 0},
      {{"--since", "2026-11-23"}, 1},
      {{"--until", "2026-11-23"}, 1},
      {{"--since", "2026-11-22T03:04:05.678Z"}, 2},
      {{"--until", "2026-11-22T03:04:05.678Z"}, 0},
      {{"--limit", "1"}, 1},
      {{"--serial", "K7-0002", "--verdict", "FAIL"}, 0},
  };
  for (const Choice& row : rows) {
    Words words{"list", "--json"};
    words.insert(words.end(), row.words.begin(), row.words.end());
    EXPECT_EQ(Run(words), 0);
    EXPECT_EQ(nlohmann::json::parse(shown).size(), row.runs) << testing::PrintToString(row.words);
  }
}

TEST_F(Verbs, AnEmptyListIsNoFault) {
  EXPECT_EQ(Run({"list", "--serial", "none"}), 0);
  EXPECT_EQ(shown, "");
  EXPECT_EQ(errors.str(), "No run fits.\n");
  EXPECT_EQ(Run({"list", "--serial", "none", "--json"}), 0);
  EXPECT_EQ(shown, "[]\n");
}

struct Name {
  std::string run;
  int status;
  const char* says;
};

TEST_F(Verbs, ARunIsNamedByItsIdByAUniqueBeginningAndByLast) {
  const Name rows[] = {
      {kSmall, 0, kSmall},
      {"019aa9a2-5", 0, kSmall},
      {"019AA9A2-5C2E", 0, kSmall},
      {"last", 0, kLater},
      {"019aa9a2-", 1,
       "\"019aa9a2-\" fits several runs:\n  019aa9a2-5c2e-7b11-8f3a-2b9d8c1e4f60\n"
       "  019aa9a2-6000-7b11-8f3a-000000000001\n"},
      {"0", 1, "fits several runs"},
      {"1", 1, "There is no run \"1\"."},
      {"%", 1, "There is no run \"%\"."},
      {"019aa9a2-5c2_", 1, "There is no run"},
      {std::string(kSmall) + "0", 1, "There is no run"},
      {"LAST", 1, "There is no run"},
      {"\x1b[2J", 1, "There is no run \"\\x1b[2J\"."},
  };
  for (const Name& row : rows) {
    EXPECT_EQ(Run({"show", row.run}), row.status) << row.run;
    EXPECT_THAT(row.status == 0 ? shown : errors.str(), HasSubstr(row.says)) << row.run;
  }
}

TEST_F(Verbs, LastOfAnEmptyStoreIsNo) {
  here.Prune({INT64_MAX, false, false});
  EXPECT_EQ(Run({"show", "last"}), 1);
  EXPECT_EQ(errors.str(), "orvane-records: There is no run in this store.\n");
}

TEST_F(Verbs, AStoreThatCannotBeReadIs74WithItsWords) {
  for (const Words& words : {Words{"list"}, Words{"show", "last"}, Words{"export", "last", "--to", "a.csv"},
                             Words{"verify"}, Words{"prune", "--before", "2027-01-01"}}) {
    here.failsNext = "/records.sqlite: it is locked.";
    EXPECT_EQ(Run(words), 74) << words.front();
    EXPECT_EQ(errors.str(), "orvane-records: /records.sqlite: it is locked.\n");
  }
  EXPECT_EQ(Run({"list", "--store", "sqlite:gone"}), 64) << "named twice";
}

TEST_F(Verbs, OnlyImportAndTheEndOfForwardMakeAStore) {
  files.content["a.orvane"] = "019aa9a2-7000-7b11-8f3a-000000000000";
  Run({"list"});
  Run({"show", "last"});
  Run({"verify"});
  Run({"prune", "--before", "2020-01-01"});
  Run({"import", "a.orvane"});
  Run({"forward", "--to", "sqlite:there"});
  using enum StoreAccess;
  EXPECT_THAT(opened,
              ElementsAre(std::pair("sqlite:here", Ask), std::pair("sqlite:here", Ask), std::pair("sqlite:here", Ask),
                          std::pair("sqlite:here", Change), std::pair("sqlite:here", Fill),
                          std::pair("sqlite:here", Ask), std::pair("sqlite:there", Fill)));
}

TEST_F(Verbs, ExportWritesTheFormOfTheFilesEnding) {
  const std::pair<const char*, const char*> rows[] = {{"a.json", "{\n  \"id\": \"019aa9a2-5c2e"},
                                                      {"a.csv", "run,position,step,name,"},
                                                      {"a.html", "<!DOCTYPE html>"},
                                                      {"a.xml", "<?xml version=\"1.0\""},
                                                      {"a.orvane", kSmall}};
  for (const auto& [file, beginning] : rows) {
    EXPECT_EQ(Run({"export", "019aa9a2-5", "--to", file}), 0) << file;
    EXPECT_THAT(files.content[file], testing::StartsWith(beginning));
  }
}

TEST_F(Verbs, ExportTakesEachRunOnceAndAllOfThemOrNone) {
  EXPECT_EQ(Run({"export", "last", kSmall, kLater, "--to", "a.json"}), 0);
  const auto json = nlohmann::json::parse(files.content["a.json"]);
  ASSERT_EQ(json.size(), 2U);
  EXPECT_EQ(json[0]["id"], kLater);
  EXPECT_EQ(json[1]["id"], kSmall);
  EXPECT_EQ(Run({"export", "last", "nothing", "--to", "b.json"}), 1);
  EXPECT_FALSE(files.content.contains("b.json"));
}

TEST_F(Verbs, AFileThatCannotBeWrittenIs74) {
  files.irreplaceable.insert("a.csv");
  EXPECT_EQ(Run({"export", "last", "--to", "a.csv"}), 74);
  EXPECT_THAT(errors.str(), HasSubstr("a.csv"));
}

TEST_F(Verbs, ImportLeavesARecordAloneThatIsThere) {
  files.content["new.orvane"] = "019aa9a2-7000-7b11-8f3a-000000000000";
  files.content["old.orvane"] = kSmall;
  EXPECT_EQ(Run({"import", "new.orvane", "old.orvane"}), 0);
  EXPECT_EQ(out.str(), "1 record taken in, 1 there already.\n");
  EXPECT_EQ(here.Load(kSmall)->identity.serial, "=K7-0001");
}

TEST_F(Verbs, AFileToImportThatIsNotThereIs74AndADamagedOneIs1AndTheOthersAreTaken) {
  files.content["good.orvane"] = "019aa9a2-7000-7b11-8f3a-000000000000";
  files.content["bad.orvane"] = "damaged";
  EXPECT_EQ(Run({"import", "bad.orvane", "good.orvane"}), 1);
  EXPECT_EQ(errors.str(), "orvane-records: bad.orvane: it is cut short.\n");
  EXPECT_TRUE(here.Load("019aa9a2-7000-7b11-8f3a-000000000000"));
  EXPECT_EQ(Run({"import", "none.orvane", "bad.orvane"}), 74);
  EXPECT_THAT(errors.str(), HasSubstr("none.orvane"));
}

TEST_F(Verbs, VerifyNamesWhatIsWrongInWhichRun) {
  EXPECT_EQ(Run({"verify"}), 0);
  EXPECT_EQ(out.str(), "2 runs, none damaged.\n");
  here.faults[kSmall] = {"document trace: its digest does not fit"};
  EXPECT_EQ(Run({"verify"}), 1);
  EXPECT_EQ(out.str(), std::string(kSmall) + ": document trace: its digest does not fit\n2 runs, 1 damaged.\n");
  EXPECT_EQ(Run({"verify", "last"}), 0);
  EXPECT_EQ(out.str(), "1 run, none damaged.\n");
}

TEST_F(Verbs, VerifyLooksAtTheStoreItselfAndAtTracesFromEndToEnd) {
  here.faults[""] = {"a reading has no run"};
  EXPECT_EQ(Run({"verify"}), 1);
  EXPECT_EQ(out.str(), "a reading has no run\n2 runs, none damaged.\n");
  EXPECT_EQ(Run({"verify", "last"}), 0);
  doors.traceFaults = [](const RunRecord& record) {
    return record.identity.id == kSmall ? Words{"trace: it ends at 1.5 s"} : Words{};
  };
  EXPECT_EQ(Run({"verify", kSmall}), 1);
  EXPECT_THAT(out.str(), HasSubstr("trace: it ends at 1.5 s"));
}

TEST_F(Verbs, VerifySeesWhatDoesNotHoldTogetherWithinARecord) {
  RunRecord record = SmallRun();
  record.identity.id = "019aa9a2-7000-7b11-8f3a-000000000000";
  record.readings[0].step = "charger";
  record.passes.erase(record.passes.begin());
  here.Finish(record);
  EXPECT_EQ(Run({"verify", "019aa9a2-7"}), 1);
  EXPECT_THAT(out.str(), HasSubstr("reading rx.975.level: there is no step charger\n"));
  EXPECT_THAT(out.str(), HasSubstr("pass 1 of tx.gsm.level.5: the one before is missing\n"));
}

TEST_F(Verbs, APrunedRecordStillVerifies) {
  EXPECT_EQ(Run({"prune", "--before", "2026-11-24", "--keep-records"}), 0);
  EXPECT_EQ(out.str(), "2 traces taken out.\n");
  EXPECT_EQ(here.Load(kSmall)->Document("trace"), nullptr);
  EXPECT_EQ(Run({"verify"}), 0);
}

TEST_F(Verbs, PruneTakesWholeRecordsAndSparesFailedOnesWhereItIsToldTo) {
  EXPECT_EQ(Run({"prune", "--before", "2026-11-24", "--keep-failed"}), 0);
  EXPECT_EQ(out.str(), "1 record taken out.\n");
  EXPECT_FALSE(here.Load(kLater));
  EXPECT_TRUE(here.Load(kSmall));
  EXPECT_EQ(Run({"prune", "--before", "2026-11-22T03:04:05.678"}), 0);
  EXPECT_EQ(out.str(), "0 records taken out.\n") << "it began at that very time, not before";
}

TEST_F(Verbs, AnswersFromRecordsNeverReachTheTerminalAsTheyAre) {
  EXPECT_EQ(Run({"show", kSmall}), 0);
  EXPECT_THAT(shown, HasSubstr("Kim \\x1b[31m"));
  EXPECT_THAT(shown, Not(HasSubstr("\x1b")));
}

}  // namespace
}  // namespace orvane::test
