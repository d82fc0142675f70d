#include "app/keeping/record_keeper.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "records/record_bytes.h"

namespace orvane {
namespace {

TEST(RecordKeeper, WhateverAStoreThrowsIsToldAndTheRecordLiesBesideIt) {
  std::vector<Kept> told;
  std::vector<std::string> spooled;
  {
    RecordKeeper keeper(
        {[]() -> std::unique_ptr<RecordStore> { throw DamagedRecord("It is damaged."); },
         [&](const RunRecord& record) { spooled.push_back(record.identity.id); },
         [](const std::string&, const std::string&) {}, [](const std::string&) {}, [](RecordStore&) {}},
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

}  // namespace
}  // namespace orvane
