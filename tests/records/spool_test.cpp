#include "adapters/sql/spool.h"

#include <filesystem>

#include "adapters/disk_files.h"
#include "adapters/sql/record_file.h"
#include "adapters/sql/sqlite_place.h"
#include "records/store_test.h"

namespace orvane::test {
namespace {

namespace fs = std::filesystem;

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class Spool : public StoreTest {
 protected:
  [[nodiscard]] std::vector<std::string> Names() const {
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(Folder())) names.push_back(entry.path().filename().string());
    std::sort(names.begin(), names.end());
    return names;
  }
  [[nodiscard]] std::string Folder() const { return SpoolFolderOf(Text(), folder_.Path()); }

  DiskFiles files_{folder_.Path(), folder_.Path()};
};
ON_BOTH_ENGINES(Spool);

TEST_P(Spool, IsTakenInByTheStoreAndEmptyThen) {
  EXPECT_EQ(Folder(), folder_.Path("spool"));
  const auto store = Open();
  EXPECT_EQ(DrainSpool(*store, files_, Folder()).taken, 0U) << "there is none";
  store->Begin(SmallRecord(1).identity, {});
  for (const int number : {2, 1}) KeepInSpool(files_, Folder(), SmallRecord(number));
  EXPECT_THAT(Names(), ElementsAre(IdOf(1) + ".orvane", IdOf(2) + ".orvane"));
  const DrainedSpool drained = DrainSpool(*store, files_, Folder());
  EXPECT_EQ(drained.taken, 2U);
  EXPECT_THAT(drained.faults, IsEmpty());
  EXPECT_THAT(Names(), IsEmpty());
  for (const int number : {1, 2}) EXPECT_EQ(store->Load(IdOf(number)), SmallRecord(number));
}

TEST_P(Spool, WhatIsThereAlreadyIsLeftAloneAndGoes) {
  const auto store = Open();
  ASSERT_TRUE(store->Finish(SmallRecord(1)));
  KeepInSpool(files_, Folder(), SmallRecord(1));
  EXPECT_EQ(DrainSpool(*store, files_, Folder()).taken, 1U);
  EXPECT_THAT(Names(), IsEmpty());
  EXPECT_EQ(store->List({}).size(), 1U);
}

TEST_P(Spool, WhatTheStoreHasEndedAsAbandonedStaysAndIsNamed) {
  const auto store = Open();
  RunRecord abandoned = SmallRecord(1);
  abandoned.end->ending = Ending::Abandoned;
  ASSERT_TRUE(store->Finish(abandoned));
  KeepInSpool(files_, Folder(), SmallRecord(1));
  EXPECT_TRUE(LiesInSpool(Folder(), IdOf(1)));
  EXPECT_FALSE(LiesInSpool(Folder(), IdOf(2)));
  const DrainedSpool drained = DrainSpool(*store, files_, Folder());
  EXPECT_EQ(drained.taken, 0U);
  EXPECT_THAT(drained.faults, ElementsAre(HasSubstr(IdOf(1) + ".orvane: the store has this run as abandoned")));
  EXPECT_THAT(Names(), ElementsAre(IdOf(1) + ".orvane"));
}

TEST_P(Spool, WhatIsDamagedOrRefusedStaysAndIsNamed) {
  const auto store = Open();
  for (const int number : {1, 2, 3}) KeepInSpool(files_, Folder(), SmallRecord(number));
  fs::resize_file(Folder() + "/" + IdOf(1) + ".orvane", 100);
  RunRecord twice = SmallRecord(2);
  twice.documents.push_back(twice.documents[0]);
  KeepInSpool(files_, Folder(), twice);
  fs::create_directory(Folder() + "/folder.orvane");
  folder_.Put("spool/.orvane-77-1", "a draft of somebody who was killed");
  const DrainedSpool drained = DrainSpool(*store, files_, Folder());
  EXPECT_EQ(drained.taken, 1U);
  EXPECT_THAT(drained.faults, ElementsAre(Folder() + "/" + IdOf(1) +
                                              ".orvane: The record is cut short or changed: its digest does not fit.",
                                          HasSubstr(IdOf(2) + ".orvane: The store "), HasSubstr("folder.orvane: ")));
  EXPECT_THAT(Names(), ElementsAre(".orvane-77-1", IdOf(1) + ".orvane", IdOf(2) + ".orvane", "folder.orvane"));
  EXPECT_EQ(store->Load(IdOf(3)), SmallRecord(3));
}

TEST_P(Spool, StaysWholeWhileTheStoreFails) {
  if (!OnSqlite()) GTEST_SKIP() << "the store is held by a transaction of SQLite's";
  const auto store = Open({.patienceMs = 20});
  SqlConnection other(SqliteEngine(), SqlitePlace(folder_.Path("records.sqlite"), false, 0), 0,
                      [](SqlConnection&) {});
  for (const int number : {1, 2}) KeepInSpool(files_, Folder(), SmallRecord(number));
  {
    const SqlTransaction held(other);
    EXPECT_THAT(FaultOf([&] { DrainSpool(*store, files_, Folder()); }), HasSubstr("is held by another program"));
  }
  EXPECT_EQ(Names().size(), 2U);
  EXPECT_EQ(DrainSpool(*store, files_, Folder()).taken, 2U);
}

}  // namespace
}  // namespace orvane::test
