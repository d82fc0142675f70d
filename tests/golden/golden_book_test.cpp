// What a station that starts finds of its golden unit: in its store, and in a file.

#include "app/golden/golden_book.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "adapters/disk_files.h"
#include "adapters/qt_test.h"
#include "adapters/sql/open_store.h"
#include "adapters/sql/record_file.h"
#include "app/route_text.h"
#include "golden/golden_runs.h"
#include "support/memory_store.h"
#include "support/scratch_folder.h"

namespace orvane::test {
namespace {

using testing::HasSubstr;

Options OfGolden() {
  Options options;
  options.station = "bench3";
  options.golden.serial = kGolden;
  options.golden.reference = "019a";
  return options;
}

/// A run of that number and serial number, so many minutes behind the reference.
RunRecord RunAt(int minute, const std::string& serial = kGolden) {
  RunRecord run = GoldenRun();
  run.identity.id = "019aa9a2-6000-7b11-8f3a-00000000" + std::to_string(1000 + minute);
  run.identity.serial = serial;
  run.identity.beganMs += minute * 60000;
  run.end->endedMs += minute * 60000;
  return run;
}

GoldenBook Found(const std::vector<RunRecord>& runs) {
  MemoryStore store;
  for (const RunRecord& run : runs) (void)store.Finish(run);
  GoldenBook book{GoldenRun()};
  FindLastCheck(store, OfGolden(), book);
  return book;
}

TEST(GoldenBook, HasTheLastWholeRunOfTheUnitOnThisStation) {
  EXPECT_EQ(Found({}).lastCheck, std::nullopt);
  EXPECT_EQ(Found({RunAt(1), RunAt(3), RunAt(2), RunAt(4, "A-1")}).lastCheck, RunAt(3));
  RunRecord elsewhere = RunAt(5);
  elsewhere.identity.station = "bench4";
  RunRecord onNoBench = RunAt(6);
  onNoBench.identity.bench = "virtual";
  RunRecord byHand = RunAt(7);
  byHand.identity.kind = "GSM";
  EXPECT_EQ(Found({elsewhere, onNoBench, byHand, RunAt(1)}).lastCheck, RunAt(1));
}

TEST(GoldenBook, HasTheExcuseThatTheLastRunBeganUnder) {
  RunRecord excused = RunAt(2, "A-1");
  excused.identity.tags = {{kExcuseTag, "in repair"}, {kExcuseUntilTag, "2026-11-22T15:04:05.678Z"}};
  EXPECT_EQ(Found({RunAt(1), excused}).excuse, (GoldenExcuse{"in repair", kFirstRunMs + 12 * 3600 * 1000}));
  EXPECT_EQ(Found({RunAt(1), excused, RunAt(3, "A-2")}).excuse, std::nullopt) << "it has ended since";
  excused.identity.tags[kExcuseUntilTag] = "soon";
  EXPECT_EQ(Found({excused}).excuse, std::nullopt);
}

class AStoreWithAReference : public QtTest {
 protected:
  AStoreWithAReference() {
    options_.records = folder_.Path("records.sqlite");
    const auto store = OpenStore("sqlite:" + options_.records->string());
    (void)store->Finish(GoldenRun());
    (void)store->Finish(RunAt(1, "A-1"));
    RunRecord failed = RunAt(2);
    failed.end->verdict = "FAIL";
    failed.end->complete = false;
    (void)store->Finish(failed);
  }
  std::string Fault() const {
    try {
      (void)OpenGoldenBook(options_);
      return "none";
    } catch (const OptionFault& fault) {
      return fault.what();
    }
  }

  ScratchFolder folder_;
  Options options_ = OfGolden();
};

TEST_F(AStoreWithAReference, GivesItByABeginningOfItsId) {
  options_.golden.reference = "019aa9a2-5";
  const auto book = OpenGoldenBook(options_);
  ASSERT_TRUE(book);
  EXPECT_EQ(book->reference.readings, GoldenRun().readings);
  EXPECT_EQ(book->lastCheck->identity.id, RunAt(2).identity.id);
  EXPECT_EQ(book->fault, "");
}

TEST_F(AStoreWithAReference, IsOutlivedByAFile) {
  DiskFiles files("", "");
  const std::string file = folder_.Path("golden.orvane");
  WriteRecordFile(files, file, GoldenRun());
  options_.golden.reference = file;
  EXPECT_EQ(OpenGoldenBook(options_)->reference, GoldenRun());
  options_.records = folder_.Path("none/records.sqlite");
  const auto unknown = OpenGoldenBook(options_);
  EXPECT_EQ(unknown->lastCheck, std::nullopt);
  EXPECT_FALSE(std::filesystem::exists(folder_.Path("none"))) << "looking makes nothing";
}

TEST_F(AStoreWithAReference, WithoutAGoldenUnitIsNotLookedAt) {
  options_.golden = {};
  EXPECT_EQ(OpenGoldenBook(options_), std::nullopt);
}

TEST_F(AStoreWithAReference, WhatCannotBeAReferenceIsAFaultOfTheOption) {
  const std::pair<std::string, std::string> rows[] = {
      {"", "--golden: it needs a --golden-reference"},
      {"last", "--golden-reference: it must be the id of a run"},
      {"019aa9a2-7", "--golden-reference: There is no run \"019aa9a2-7\"."},
      {"019aa9a2", "--golden-reference: \"019aa9a2\" fits several runs: / "},
      {RunAt(1).identity.id,
       "--golden-reference: the run " + RunAt(1).identity.id + " is of the unit \"A-1\", not \"G-001\""},
      {RunAt(2).identity.id, "--golden-reference: the run " + RunAt(2).identity.id + " is no complete PASS"},
      {folder_.Path("none.orvane"), "--golden-reference: No such file or directory: "},
      {folder_.Path("records.sqlite"), "--golden-reference: "},
  };
  for (const auto& [reference, fault] : rows) {
    options_.golden.reference = reference;
    EXPECT_THAT(Fault(), testing::StartsWith(fault)) << reference;
    EXPECT_EQ(Fault().find('\n'), std::string::npos);
  }
  options_.golden.reference = "019aa9a2-5";
  options_.golden.limits = {{"battery.*", 5, "bench.toml:7"}, {"tx.gms.*", 1, "bench.toml:8"}};
  EXPECT_EQ(Fault(), "bench.toml:8: golden_limits.tx.gms.*: no reading of the reference record has such a name");
  options_.golden.limits.clear();
  options_.records.reset();
  EXPECT_EQ(Fault(), "--golden: it needs --records, which this station keeps none of");
}

TEST_F(AStoreWithAReference, WhatBelongsToAGoldenUnitIsAFaultWithoutOne) {
  options_.golden.serial = "";
  options_.given = {{"check-every", "12h"}};
  EXPECT_EQ(Fault(), "--check-every: there is no --golden beside it");
}

}  // namespace
}  // namespace orvane::test
