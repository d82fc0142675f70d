#include "records/store_test.h"

namespace orvane::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class StoreCheckOf : public StoreTest {
 protected:
  void SetUp() override {
    StoreTest::SetUp();
    if (IsSkipped()) return;
    store_ = Open();
    for (const int number : {1, 2}) ASSERT_TRUE(store_->Finish(SmallRecord(number)));
  }
  /// With what somebody else does to the store.
  [[nodiscard]] std::vector<std::string> FindingsAfter(const std::string& words) {
    const std::string said = Ask(words);
    EXPECT_THAT(said, testing::Not(HasSubstr("rror"))) << words;
    return store_->Check(IdOf(1));
  }

  std::unique_ptr<RecordStore> store_;
};
ON_BOTH_ENGINES(StoreCheckOf);

TEST_P(StoreCheckOf, NamesTheTableOfAChangedRow) {
  struct {
    std::string words;
    std::string table;
  } const changes[] = {
      {"UPDATE run SET serial = 'SN-9' WHERE id = 'ID'", "run"},
      {"UPDATE step SET complete = 0 WHERE run = 'ID' AND position = 0", "step"},
      {"UPDATE reading SET value = -601.9999999 WHERE run = 'ID' AND position = 0", "reading"},
      {"DELETE FROM reading WHERE run = 'ID' AND position = 2", "reading"},
      {"UPDATE pass SET dbm = 32.0016 WHERE run = 'ID' AND position = 1", "pass"},
      {"UPDATE box SET answer = 'No' WHERE run = 'ID' AND position = 0", "box"},
      {"UPDATE tag SET value = 'B' WHERE run = 'ID' AND key = 'line'", "tag"},
      {"DELETE FROM run_document WHERE run = 'ID' AND role = 'cable_loss'", "run_document"},
  };
  for (const auto& [words, table] : changes) {
    std::string all = words;
    all.replace(all.find("ID"), 2, IdOf(1));
    const RunRecord before = *store_->Load(IdOf(1));
    EXPECT_THAT(FindingsAfter(all),
                ElementsAre("The rows of \"" + table + "\" are not those that were written at the run's end."))
        << words;
    EXPECT_THAT(store_->Check(IdOf(2)), IsEmpty()) << words;
    ASSERT_NE(*store_->Load(IdOf(1)), before) << words;
    static_cast<void>(store_->Prune({.beforeMs = SmallRecord(2).identity.beganMs}));
    ASSERT_TRUE(store_->Finish(SmallRecord(1)));
    ASSERT_THAT(store_->Check(IdOf(1)), IsEmpty());
  }
}

TEST_P(StoreCheckOf, NamesADocumentOfWhichAByteWasChanged) {
  EXPECT_THAT(FindingsAfter(OnSqlite() ? "UPDATE document SET bytes = CAST('901 0.5' AS BLOB) WHERE kind = 'text'"
                                       : "UPDATE document SET bytes = '901 0.5' WHERE kind = 'text'"),
              ElementsAre(HasSubstr("The document \"cable_loss\" has another digest than its content: ")));
  EXPECT_THAT(FindingsAfter(OnSqlite() ? "UPDATE document SET bytes = CAST('x' AS BLOB) WHERE kind = 'trace+zstd'"
                                       : "UPDATE document SET bytes = 'x' WHERE kind = 'trace+zstd'"),
              ElementsAre(HasSubstr("\"cable_loss\""), HasSubstr("The document \"trace\" is damaged: ")));
  EXPECT_THAT(FaultOf([&] { static_cast<void>(store_->Load(IdOf(1))); }),
              HasSubstr("The document \"trace\" is damaged: "));
}

TEST_P(StoreCheckOf, NamesADocumentAndARowThatLeanOnNothing) {
  const std::string off = OnSqlite() ? "PRAGMA foreign_keys = OFF; " : "SET session_replication_role = replica; ";
  EXPECT_THAT(FindingsAfter(off + "DELETE FROM document WHERE kind = 'trace+zstd'"),
              ElementsAre("The document \"trace\" is not there."));
  static_cast<void>(Ask(off + "DELETE FROM run WHERE id = '" + IdOf(2) + "'"));
  const auto findings = store_->CheckStore();
  for (const char* const table : {"step", OnSqlite() ? "run_number" : "reading", "box", "tag", "run_document"}) {
    EXPECT_THAT(findings, testing::Contains(
                              HasSubstr("Rows of \"" + std::string(table) + "\" whose \"run\" is not in \"run\": ")));
  }
  EXPECT_THAT(findings,
              testing::Contains(HasSubstr("Rows of \"run_document\" whose \"sha256\" is not in \"document\": 2")));
  EXPECT_THAT(store_->Check(IdOf(2)), ElementsAre("There is no run " + IdOf(2) + "."));
}

class StorePruneOf : public StoreTest {
 protected:
  // Runs 1 to 4, the second not complete, the third failed, the fourth still under way.
  void SetUp() override {
    StoreTest::SetUp();
    if (IsSkipped()) return;
    store_ = Open();
    for (const int number : {1, 2, 3}) {
      RunRecord record = SmallRecord(number);
      if (number == 2) record.end->complete = false;
      if (number == 3) record.end->verdict = "FAIL";
      ASSERT_TRUE(store_->Finish(record));
    }
    store_->Begin(SmallRecord(4).identity, {});
  }
  [[nodiscard]] std::string Left() {
    std::string ids;
    for (const RunSummary& run : store_->List({})) {
      ids += run.identity.id.back();
      EXPECT_THAT(store_->Check(run.identity.id), IsEmpty());
      if (store_->Load(run.identity.id)->Document("trace") != nullptr) ids += 't';
    }
    EXPECT_THAT(store_->CheckStore(), IsEmpty());
    return ids;
  }
  [[nodiscard]] std::string Count(const std::string& table) const { return Ask("SELECT count(*) FROM " + table); }

  static constexpr std::int64_t kBehindAll = kFirstBeganMs + 3'600'000;
  std::unique_ptr<RecordStore> store_;
};
ON_BOTH_ENGINES(StorePruneOf);

TEST_P(StorePruneOf, TakesWholeRecordsOfBeforeATime) {
  const auto result = store_->Prune({.beforeMs = SmallRecord(3).identity.beganMs});
  EXPECT_EQ(result.records, 2U);
  EXPECT_EQ(result.traces, 2U);
  EXPECT_EQ(Left(), "43t");
  EXPECT_EQ(Count("document"), "2") << "what is still referred to stays";
  EXPECT_EQ(Count("reading"), "3");
  EXPECT_EQ(Count("pass"), "2");
  EXPECT_EQ(store_->Prune({.beforeMs = SmallRecord(3).identity.beganMs}).records, 0U);
}

TEST_P(StorePruneOf, TakesAllThatHasAnEndAndNothingOfItStays) {
  EXPECT_EQ(store_->Prune({.beforeMs = kBehindAll}).records, 3U);
  EXPECT_EQ(Left(), "4");
  for (const char* const table : {"step", "reading", "pass", "box", "document", "run_document", "run_seal"}) {
    EXPECT_EQ(Count(table), "0") << table;
  }
  EXPECT_TRUE(store_->Finish(SmallRecord(4)));
  EXPECT_EQ(Left(), "4t");
}

TEST_P(StorePruneOf, SparesWhatWasNoCompletePass) {
  EXPECT_EQ(store_->Prune({.beforeMs = kBehindAll, .keepFailed = true}).records, 1U);
  EXPECT_EQ(Left(), "43t2t");
}

TEST_P(StorePruneOf, TakesTracesAlone) {
  const auto some = store_->Prune({.beforeMs = kBehindAll, .keepFailed = true, .keepRecords = true});
  EXPECT_EQ(some.records, 0U);
  EXPECT_EQ(some.traces, 1U);
  EXPECT_EQ(Left(), "43t2t1");
  EXPECT_EQ(store_->Prune({.beforeMs = kBehindAll, .keepRecords = true}).traces, 2U);
  EXPECT_EQ(Left(), "4321");
  EXPECT_EQ(Count("document"), "1");
  RunRecord left = SmallRecord(1);
  left.documents.pop_back();
  EXPECT_EQ(store_->Load(IdOf(1)), left);
}

TEST_P(StorePruneOf, TakesMoreThanItTakesAtOnce) {
  for (int number = 10; number < 180; ++number) ASSERT_TRUE(store_->Finish(SmallRecord(number)));
  EXPECT_EQ(store_->Prune({.beforeMs = SmallRecord(170).identity.beganMs}).records, 163U);
  EXPECT_EQ(store_->List({}).size(), 11U);
  EXPECT_THAT(store_->CheckStore(), IsEmpty());
}

}  // namespace
}  // namespace orvane::test
