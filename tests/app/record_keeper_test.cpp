#include "app/keeping/record_keeper.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "records/record_bytes.h"
#include "support/memory_store.h"

namespace orvane {
namespace {

TEST(RecordKeeper, WhateverAStoreThrowsIsToldAndTheRecordLiesBesideIt) {
  std::vector<Kept> told;
  std::vector<std::string> spooled;
  {
    RecordKeeper keeper({[]() -> std::unique_ptr<RecordStore> { throw DamagedRecord("It is damaged."); },
                         [&](const RunRecord& record) { spooled.push_back(record.identity.id); },
                         [](const std::string&, const std::string&) {}, [](const std::string&) {},
                         [](RecordStore&) { return std::vector<std::string>(); }},
                        {}, [&](const Kept& kept) { told.push_back(kept); });
    RunRecord record;
    record.identity.id = "7";
    keeper.Begin(record.identity);
    keeper.Finish(record);
    keeper.Drain();
  }
  EXPECT_THAT(spooled, testing::ElementsAre("7"));
  ASSERT_EQ(told.size(), 3U);
  EXPECT_EQ(told.back().run, "7");
  EXPECT_TRUE(told.back().isKept);
  EXPECT_EQ(told.back().fault, "It is damaged.");
}

/// A store that ended the run in another way while this station went on.
class OtherEnd final : public test::MemoryStore {
 public:
  bool Finish(const RunRecord& /*record*/) override { return false; }
};

TEST(RecordKeeper, ARecordThatTheStoreWillNotHaveLiesBesideItAndWhatStaysThereIsTold) {
  std::vector<Kept> told;
  std::vector<std::string> spooled;
  {
    RecordKeeper keeper({[] { return std::make_unique<OtherEnd>(); },
                         [&](const RunRecord& record) { spooled.push_back(record.identity.id); },
                         [](const std::string&, const std::string&) {}, [](const std::string&) {},
                         [](RecordStore&) { return std::vector<std::string>{"an older one is refused"}; }},
                        {}, [&](const Kept& kept) { told.push_back(kept); });
    RunRecord record;
    record.identity.id = "7";
    keeper.Finish(record);
    keeper.Drain();
  }
  EXPECT_THAT(spooled, testing::ElementsAre("7"));
  ASSERT_EQ(told.size(), 2U);
  EXPECT_EQ(told.front().run, "");
  EXPECT_EQ(told.front().fault, "an older one is refused");
  EXPECT_EQ(told.back().run, "7");
  EXPECT_EQ(told.back().fault, "The store has another end of this run already.");
}

}  // namespace
}  // namespace orvane
