#include "app/records/archive.h"

#include <gtest/gtest.h>

#include "records/record_bytes.h"
#include "records_program/sample_records.h"

namespace orvane::test {
namespace {

TEST(Archive, GivesBackWhatWentIn) {
  EXPECT_EQ(ArchivedRecords(ArchiveOf({SmallRun()})), std::vector{SmallRun()});
  EXPECT_EQ(ArchivedRecords(ArchiveOf({SmallRun(), LaterPass()})), (std::vector{SmallRun(), LaterPass()}));
}

TEST(Archive, OfSeveralRecordsIsFoundDamagedWhereverItIsCutOrChanged) {
  const std::string archive = ArchiveOf({SmallRun(), LaterPass()});
  for (std::size_t i = 0; i < archive.size(); ++i) {
    EXPECT_THROW((void)ArchivedRecords(archive.substr(0, i)), DamagedRecord) << i;
    std::string changed = archive;
    changed[i] = static_cast<char>(changed[i] ^ 0x11);
    EXPECT_THROW((void)ArchivedRecords(changed), DamagedRecord) << i;
  }
  EXPECT_THROW((void)ArchivedRecords(archive + "x"), DamagedRecord);
}

}  // namespace
}  // namespace orvane::test
