#include "bench/wires/record_reader.h"

#include <gtest/gtest.h>

#include <random>

#include "bench/plain_records.h"

namespace orvane::bench::test {
namespace {

using namespace std::string_literals;

constexpr std::size_t kLongest = 12;

Records InPieces(const std::string& bytes, std::size_t piece) {
  RecordReader reader(kLongest);
  Records records;
  for (std::size_t at = 0; at < bytes.size(); at += piece) {
    reader.Feed(std::string_view(bytes).substr(at, piece));
    while (auto message = reader.Next()) records.messages.push_back(std::move(*message));
  }
  records.spoilt = reader.Spoilt();
  return records;
}

TEST(RecordReader, TellsMessagesInWhateverPiecesTheyCome) {
  struct Row {
    const char* why;
    std::string bytes;
    Records records;
  };
  const Row rows[] = {
      {"one fragment", "\x80\0\0\3abc"s, {{"abc"}, false}},
      {"two fragments", "\0\0\0\2ab\x80\0\0\1c"s, {{"abc"}, false}},
      {"two messages", "\x80\0\0\1a\x80\0\0\1b"s, {{"a", "b"}, false}},
      {"fragments of nothing", "\0\0\0\0\0\0\0\0\x80\0\0\0\x80\0\0\1a"s, {{"", "a"}, false}},
      {"as long as it may be",
       "\x80\0\0\x0C"
       "123456789012"s,
       {{"123456789012"}, false}},
      {"a byte too long", "\x80\0\0\1a\x80\0\0\x0D"s, {{"a"}, true}},
      {"a byte too long with its second fragment",
       "\0\0\0\x06"
       "123456\x80\0\0\x07"s,
       {{}, true}},
      {"the longest mark", "\xFF\xFF\xFF\xFF"s, {{}, true}},
      {"no end yet", "\x80\0\0\3ab"s, {{}, false}},
      {"no mark yet", "\x80\0\0"s, {{}, false}},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.why);
    for (const std::size_t piece : {1U, 3U, 100U}) EXPECT_TRUE(InPieces(row.bytes, piece) == row.records) << piece;
    EXPECT_TRUE(PlainRecords(row.bytes, kLongest) == row.records);
  }
}

TEST(RecordReader, AgreesWithAPlainReadingOfWhateverComes) {
  std::mt19937 random(1);
  for (int i = 0; i < 20000; ++i) {
    std::string bytes;
    for (auto count = random() % 40; count > 0; --count) {
      bytes += "\0\0\0\0\x80\1\2\5"[random() % 8];
    }
    ASSERT_TRUE(InPieces(bytes, 1 + random() % 9) == PlainRecords(bytes, kLongest)) << testing::PrintToString(bytes);
  }
}

TEST(RecordReader, IsSpoiltByWhoeverSendsMoreThanIsRead) {
  RecordReader reader(kLongest);
  const std::string record = "\x80\0\0\2ab"s;
  reader.Feed(record + record);
  EXPECT_FALSE(reader.Spoilt());
  reader.Feed(record);
  EXPECT_TRUE(reader.Spoilt());
  while (reader.Next()) {
  }
  EXPECT_FALSE(reader.Spoilt()) << "read by now";
}

}  // namespace
}  // namespace orvane::bench::test
