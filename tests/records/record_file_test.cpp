#include "adapters/sql/record_file.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

#include "adapters/disk_files.h"
#include "adapters/sql/content_codec.h"
#include "base/failure.h"
#include "records/sample_record.h"
#include "support/scratch_folder.h"

namespace orvane::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

std::string DamageOf(const std::string& content) {
  try {
    static_cast<void>(UnpackedRecord(content));
  } catch (const DamagedRecord& damage) {
    return damage.what();
  }
  return "";
}

TEST(RecordFile, HasAllOfARecord) {
  for (const RunRecord& record : {TypicalRecord(1), SmallRecord(2), RunRecord{}}) {
    EXPECT_EQ(UnpackedRecord(PackedRecord(record)), record);
  }
  RunRecord open = SmallRecord(3);
  open.end.reset();
  open.boxes[0].text = std::string("\0\xFF", 2);
  EXPECT_EQ(UnpackedRecord(PackedRecord(open)), open);
}

TEST(RecordFile, IsThereWholeUnderItsName) {
  const ScratchFolder folder;
  DiskFiles files{folder.Path(), folder.Path()};
  WriteRecordFile(files, folder.Path("a.orvane"), TypicalRecord(1));
  EXPECT_EQ(ReadRecordFile(files, folder.Path("a.orvane")), TypicalRecord(1));
  EXPECT_THAT(folder.Names(), ElementsAre("a.orvane"));
  EXPECT_THROW(static_cast<void>(ReadRecordFile(files, folder.Path("none.orvane"))), StationFailure);
}

TEST(RecordFile, CutShortAnywhereIsNoRecord) {
  const std::string content = PackedRecord(SmallRecord(1));
  for (std::size_t size = 0; size < content.size(); ++size) EXPECT_NE(DamageOf(content.substr(0, size)), "") << size;
  EXPECT_NE(DamageOf(content + '\0'), "");
}

TEST(RecordFile, OneForeignByteAnywhereIsNoRecord) {
  const std::string content = PackedRecord(SmallRecord(1));
  for (std::size_t at = 0; at < content.size(); ++at) {
    for (const int bit : {0x01, 0x80}) {
      std::string foreign = content;
      foreign[at] = static_cast<char>(foreign[at] ^ bit);
      EXPECT_NE(DamageOf(foreign), "") << at;
    }
  }
}

/// With a digest that fits.
std::string Sealed(const std::string& content) { return content + DigestOf(content); }

TEST(RecordFile, OfAnotherVersionIsRefusedWithBothNumbers) {
  const std::string frame = Compressed(BytesOf(SmallRecord(1)));
  EXPECT_EQ(DamageOf(Sealed(std::string("ORVANE\1\0", 8) + frame)), "");
  EXPECT_EQ(DamageOf(Sealed(std::string("ORVANE\2\1", 8) + frame)),
            "The record is of version 258, and this program knows version 1 only.");
}

TEST(RecordFile, SaysHowLargeItIsAndIsNotBelieved) {
  // A Zstandard frame's head (RFC 8878, 3.1.1.1) with a content of 64 GiB in eight bytes.
  const std::string head("\x28\xB5\x2F\xFD\xE0\0\0\0\0\x10\0\0\0", 13);
  EXPECT_THAT(DamageOf(Sealed(std::string("ORVANE\1\0", 8) + head)), HasSubstr("more than 256 MiB"));
  // Counts and lengths within the record, of 4 Gi each.
  const std::string bytes = BytesOf(SmallRecord(1));
  for (std::size_t at = 0; at + 4 <= bytes.size(); ++at) {
    std::string large = bytes;
    large.replace(at, 4, 4, '\xFF');
    try {
      EXPECT_EQ(BytesOf(RunRecordOf(large)), large) << at << ": a number, not a length";
    } catch (const DamagedRecord&) {
    }
  }
}

TEST(RecordFile, ItsBytesAreThoseOfTheLayout) {
  RunRecord record;
  record.identity.id = "a";
  record.identity.beganMs = 0x0102;
  record.readings = {{"s", "n", 1.0, "", {}, -2.0, 0.5}};
  using namespace std::string_literals;
  const auto text = [](const std::string& word) {
    return std::string(1, static_cast<char>(word.size())) + "\0\0\0"s + word;
  };
  const std::string run = text("a") + std::string(8 * 4, '\0') + "\x02\x01\0\0\0\0\0\0"s + "\0"s;
  const std::string reading = "\1\0\0\0"s + text("s") + text("n") + "\0\0\0\0\0\0\xF0\x3F"s + text("") + "\0"s +
                              "\1\0\0\0\0\0\0\0\xC0"s + "\0\0\0\0\0\0\xE0\x3F"s;
  const std::string none = text("\0\0\0\0"s);
  EXPECT_EQ(BytesOf(record), text("run") + text(run) + text("step") + none + text("reading") + text(reading) +
                                 text("pass") + none + text("box") + none + text("tag") + none + text("document") +
                                 none);
}

}  // namespace
}  // namespace orvane::test
