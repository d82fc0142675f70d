#include <cmath>
#include <limits>

#include "records/abandoned_runs.h"
#include "records/store_test.h"

namespace orvane::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

constexpr WriterMark kWriter = {};

class RecordStoreOf : public StoreTest {};
ON_BOTH_ENGINES(RecordStoreOf);

TEST_P(RecordStoreOf, GivesBackAllOfARecord) {
  const RunRecord typical = TypicalRecord(1);
  const RunRecord small = SmallRecord(2);
  {
    const auto store = Open();
    EXPECT_TRUE(store->Finish(typical));
    EXPECT_TRUE(store->Finish(small));
    EXPECT_EQ(store->Load(typical.identity.id), typical);
  }
  const auto store = Open();
  EXPECT_EQ(store->Load(typical.identity.id), typical);
  EXPECT_EQ(store->Load(small.identity.id), small);
  EXPECT_EQ(store->Load(IdOf(3)), std::nullopt);
  EXPECT_THAT(store->Check(typical.identity.id), IsEmpty());
  EXPECT_THAT(store->CheckStore(), IsEmpty());
}

TEST_P(RecordStoreOf, ABegunRunIsThereWithoutAnEndUntilItIsFinished) {
  const auto store = Open();
  const RunRecord record = SmallRecord(1);
  const WriterMark writer{"bench-7", "boot", 4711, 99};
  store->Begin(record.identity, writer);
  const auto begun = Open()->Load(record.identity.id);
  ASSERT_TRUE(begun);
  EXPECT_EQ(*begun, RunRecord{record.identity});
  EXPECT_EQ(Ask("SELECT serial FROM run WHERE ended IS NULL AND ending IS NULL AND verdict IS NULL"), "SN-1");
  ASSERT_EQ(store->OpenRuns().size(), 1U);
  EXPECT_EQ(store->OpenRuns()[0].id, record.identity.id);
  EXPECT_EQ(store->OpenRuns()[0].writer, writer);
  EXPECT_TRUE(store->Finish(record));
  EXPECT_EQ(store->Load(record.identity.id), record);
  EXPECT_THAT(store->OpenRuns(), IsEmpty());
  EXPECT_THAT(store->CheckStore(), IsEmpty());
}

TEST_P(RecordStoreOf, ARunThatHasItsEndIsLeftAlone) {
  const auto store = Open();
  const RunRecord record = SmallRecord(1);
  ASSERT_TRUE(store->Finish(record));
  RunRecord other = SmallRecord(1);
  other.identity.serial = "another";
  other.end->verdict = "FAIL";
  other.readings.clear();
  EXPECT_FALSE(store->Finish(other));
  store->Begin(other.identity, kWriter);
  EXPECT_EQ(store->Load(record.identity.id), record);
  EXPECT_THAT(store->OpenRuns(), IsEmpty());
  other.identity.id = IdOf(2);
  other.end.reset();
  EXPECT_THROW(store->Finish(other), StoreFault) << "a run without an end";
  EXPECT_EQ(store->Load(other.identity.id), std::nullopt);
}

TEST_P(RecordStoreOf, OddTextsComeBackAsTheyWere) {
  const std::string odd[] = {std::string(10'000, 'q'), "it's \"quoted\" \\ and \\'more\\'",
                             "'; drop table run; --",  "한글 시리얼",
                             "<b onclick=x>&amp;</b>", "$1 ? :name %1 {}",
                             "\t\r\n\x01\x7F",         "\xF0\x9F\x93\xB1"};
  const auto store = Open();
  int number = 0;
  for (const std::string& text : odd) {
    RunRecord record = SmallRecord(++number);
    record.identity.serial = text;
    record.identity.station = text;
    record.identity.benchSetup = text;
    record.identity.tags = {{text, text}, {"empty", ""}};
    record.end->reason = text;
    record.steps[0].reason = text;
    record.readings[0].name = text;
    record.readings[0].unit = text;
    record.passes[0].reading = text;
    record.boxes[0] = {text, text, text, 0.5, {}};
    record.documents = {
        {text.substr(0, 20), "text", text}, {"~empty", "bytes", ""}, {"~zero", "bytes", std::string(3, '\0')}};
    std::sort(record.documents.begin(), record.documents.end(),
              [](const auto& a, const auto& b) { return a.role < b.role; });
    std::sort(record.passes.begin(), record.passes.end(), [](const auto& a, const auto& b) { return a.atS < b.atS; });
    ASSERT_TRUE(store->Finish(record)) << text;
    EXPECT_EQ(store->Load(record.identity.id), record) << text;
    EXPECT_THAT(store->Check(record.identity.id), IsEmpty()) << text;
    ASSERT_EQ(store->List({.serial = text}).size(), 1U) << text;
    EXPECT_EQ(store->List({.serial = text})[0].identity, record.identity) << text;
  }
}

// A zero ends a text in many a program, and bytes that are no UTF-8 are no text to most.
TEST_P(RecordStoreOf, ATextWithAZeroOrOddBytesInItHarmsNothing) {
  const auto store = Open();
  RunRecord record = SmallRecord(1);
  record.boxes[0].text = std::string("before\0behind", 13);
  record.steps[1].reason = "\xFF\xFE";
  ASSERT_TRUE(store->Finish(record));
  const auto kept = store->Load(record.identity.id);
  ASSERT_TRUE(kept);
  EXPECT_EQ(kept->boxes[0].text, "before\u2400behind");
  EXPECT_EQ(kept->steps[1].reason, "\uFFFD\uFFFD");
  record.boxes[0].text = kept->boxes[0].text;
  record.steps[1].reason = kept->steps[1].reason;
  EXPECT_EQ(*kept, record) << "all else is as it was";
  EXPECT_THAT(store->Check(record.identity.id), IsEmpty());
}

TEST_P(RecordStoreOf, NumbersComeBackAsTheyWere) {
  using Limits = std::numeric_limits<double>;
  const auto store = Open();
  RunRecord record = SmallRecord(1);
  record.readings.clear();
  for (const double value : {0.1, 1.0 / 3, -601.0, 1e-300, Limits::max(), Limits::denorm_min(), Limits::infinity(),
                             -Limits::infinity(), 9007199254740993.0, 28.9596}) {
    record.readings.push_back({"receive", "r", value, "count", value, {}, value});
  }
  record.end->bytesOut = std::numeric_limits<std::int64_t>::max();
  ASSERT_TRUE(store->Finish(record));
  EXPECT_EQ(store->Load(record.identity.id), record);
  EXPECT_THAT(store->Check(record.identity.id), IsEmpty());
}

TEST_P(RecordStoreOf, WhatIsNoNumberIsNotKnown) {
  const auto store = Open();
  RunRecord record = SmallRecord(1);
  record.readings[0].value = std::nan("");
  record.readings[1].low = std::nan("");
  record.passes[0].atS = -0.0;
  ASSERT_TRUE(store->Finish(record));
  EXPECT_EQ(Ask("SELECT count(*) FROM reading WHERE value IS NULL"), "1");
  const auto kept = store->Load(record.identity.id);
  EXPECT_TRUE(std::isnan(kept->readings[0].value));
  EXPECT_EQ(kept->readings[1].low, std::nullopt);
  EXPECT_THAT(store->Check(record.identity.id), IsEmpty());
}

TEST_P(RecordStoreOf, ARecordThatCannotBeKeptLeavesNothingOfItself) {
  const auto store = Open();
  RunRecord twice = SmallRecord(1);
  twice.identity.tags.clear();
  twice.documents.push_back(twice.documents[0]);
  EXPECT_THAT(FaultOf([&] { store->Finish(twice); }), HasSubstr("does not take such a record"));
  EXPECT_THAT(store->List({}), IsEmpty());
  EXPECT_EQ(Ask("SELECT count(*) FROM reading"), "0");
  EXPECT_EQ(Ask("SELECT count(*) FROM document"), "0");
  EXPECT_TRUE(store->Finish(SmallRecord(1))) << "and its names are learnt anew";
  EXPECT_EQ(store->Load(IdOf(1)), SmallRecord(1));
  EXPECT_THAT(store->CheckStore(), IsEmpty());
}

TEST_P(RecordStoreOf, ListsTheNewestFirstAndWhatIsAskedForOnly) {
  const auto store = Open();
  for (const int number : {3, 1, 4, 2}) {
    RunRecord record = SmallRecord(number);
    record.identity.station = number == 4 ? "line-4" : "line-3";
    if (number == 2) record.identity.tags.clear();
    if (number == 3) record.end->verdict = "FAIL";
    if (number == 1) record.identity.serial = "SN-2";
    if (number == 4) {
      store->Begin(record.identity, kWriter);
    } else {
      ASSERT_TRUE(store->Finish(record));
    }
  }
  const auto ids = [&](const RunQuery& query) {
    std::string listed;
    for (const RunSummary& run : store->List(query)) listed += run.identity.id.back();
    return listed;
  };
  const std::int64_t second = kFirstBeganMs + 2 * 60'000;
  EXPECT_EQ(ids({}), "4321");
  EXPECT_EQ(ids({.limit = 2}), "43");
  EXPECT_EQ(ids({.limit = 0}), "");
  EXPECT_EQ(ids({.serial = "SN-2"}), "21");
  EXPECT_EQ(ids({.station = "line-4"}), "4");
  EXPECT_EQ(ids({.verdict = "FAIL"}), "3");
  EXPECT_EQ(ids({.since = second}), "432");
  EXPECT_EQ(ids({.until = second}), "1");
  EXPECT_EQ(ids({.serial = "SN-2", .verdict = "PASS", .since = second, .until = second + 1, .limit = 9}), "2");
  const auto runs = store->List({.limit = 2});
  EXPECT_EQ(runs[0].end, std::nullopt);
  EXPECT_EQ(runs[1].end->verdict, "FAIL");
  EXPECT_EQ(runs[1].identity.tags, SmallRecord(3).identity.tags);
}

TEST_P(RecordStoreOf, FindsIdsByTheirBeginning) {
  const auto store = Open();
  for (const int number : {0x20, 0x11, 0x10}) ASSERT_TRUE(store->Finish(SmallRecord(number)));
  EXPECT_THAT(store->IdsLike(IdOf(0x10).substr(0, 35), 9), ElementsAre(IdOf(0x10), IdOf(0x11)));
  EXPECT_THAT(store->IdsLike(IdOf(0x20), 9), ElementsAre(IdOf(0x20)));
  EXPECT_THAT(store->IdsLike("", 2), ElementsAre(IdOf(0x10), IdOf(0x11)));
  EXPECT_THAT(store->IdsLike("%", 9), IsEmpty());
  EXPECT_THAT(store->IdsLike("f", 9), IsEmpty());
}

TEST_P(RecordStoreOf, ARunWhoseWriterIsNoMoreIsEndedAsAbandoned) {
  const auto store = Open();
  const WriterMark dead{"here", "boot", 1, 1};
  const WriterMark living{"here", "boot", 2, 1};
  store->Begin(SmallRecord(1).identity, dead);
  store->Begin(SmallRecord(2).identity, living);
  const auto mayLive = [&](const RecordStore::OpenRun& run) { return run.writer == living; };
  const auto whatIsLeft = [](RunRecord& record) { record.documents.push_back({"trace", "trace", "half of it"}); };
  EXPECT_EQ(EndAbandoned(*store, mayLive, kFirstBeganMs + 999, whatIsLeft), 1U);
  EXPECT_EQ(EndAbandoned(*store, mayLive, kFirstBeganMs + 999, whatIsLeft), 0U);
  const auto ended = store->Load(IdOf(1));
  ASSERT_TRUE(ended && ended->end);
  EXPECT_EQ(ended->end->ending, Ending::Abandoned);
  EXPECT_EQ(ended->end->verdict, "NONE");
  EXPECT_EQ(ended->end->endedMs, kFirstBeganMs + 999);
  EXPECT_NE(ended->end->reason, "");
  EXPECT_EQ(ended->identity, SmallRecord(1).identity);
  ASSERT_NE(ended->Document("trace"), nullptr);
  EXPECT_EQ(Ask("SELECT count(*) FROM run WHERE ending = 'abandoned' AND complete = 0 AND seconds IS NULL "
                "AND commands IS NULL AND bytes_out IS NULL AND bytes_in IS NULL"),
            "1");
  EXPECT_EQ(store->Load(IdOf(2))->end, std::nullopt);
  EXPECT_THAT(store->Check(IdOf(1)), IsEmpty());
}

}  // namespace
}  // namespace orvane::test
