#include "base/text.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "base/byte_hex.h"
#include "base/failure.h"
#include "base/subscript.h"

namespace orvane {
namespace {

using ::testing::ElementsAre;

std::vector<std::string> WordsOf(std::string text) {
  std::vector<std::string> words;
  while (!text.empty()) words.push_back(ExtractWord(text));
  return words;
}

TEST(ExtractWord, TakesOneWordAndLeavesTheRest) {
  std::string text = "  rfpw 1  62 ";
  EXPECT_EQ(ExtractWord(text), "rfpw");
  EXPECT_EQ(text, " 1  62");
  EXPECT_EQ(ExtractWord(text), "1");
  EXPECT_EQ(ExtractWord(text), "62");
  EXPECT_EQ(text, "");
  EXPECT_EQ(ExtractWord(text), "");
}

TEST(ExtractWord, KnowsBlanksOnly) {
  EXPECT_THAT(WordsOf("a\tb c\r\nd"), ElementsAre("a\tb", "c\r\nd"));
  EXPECT_THAT(WordsOf("   "), ElementsAre(""));
}

TEST(TakeWord, TakesTheSameWordsAsExtractWord) {
  for (const std::string line : {"", " ", "a", " a ", "a b", "  a  =  b c  ", "=", "= =", "a\t= b"}) {
    std::string_view rest = line;
    std::vector<std::string> words;
    while (!rest.empty()) words.emplace_back(TakeWord(rest));
    EXPECT_EQ(words, WordsOf(line)) << line;
  }
}

TEST(Trim, TakesBlanksOrLineEndsToo) {
  EXPECT_EQ(Trim("  a b\t "), "a b\t");
  EXPECT_EQ(Trim("   "), "");
  EXPECT_EQ(TrimBlanksAndLineEnds(" \t\r\n+1.5E+01\r\n"), "+1.5E+01");
  EXPECT_EQ(TrimBlanksAndLineEnds("\r\n"), "");
}

TEST(ReplaceAll, ReplacesWithoutLookingAtWhatItPutIn) {
  EXPECT_EQ(ReplaceAll("a,b,,c", ",", " "), "a b  c");
  EXPECT_EQ(ReplaceAll("aa", "a", "aa"), "aaaa");
  EXPECT_EQ(ReplaceAll("", "a", "b"), "");
}

TEST(WithStandardLineEnds, MakesEveryLineFeedAPair) {
  EXPECT_EQ(WithStandardLineEnds("a\nb\r\nc\rd\n\r"), "a\r\nb\r\ncd\r\n");
}

TEST(Characters, AreCountedAndFoundAcrossTheirBytes) {
  const std::string text = "a\xC3\xA9\xE3\x84\xB1z";  // a, e acute, a Hangul letter, z
  EXPECT_EQ(CharacterCount(text), 4U);
  EXPECT_EQ(CharacterOffset(text, 0), 0U);
  EXPECT_EQ(CharacterOffset(text, 2), 3U);
  EXPECT_EQ(CharacterOffset(text, 3), 6U);
  EXPECT_EQ(CharacterOffset(text, 9), text.size());
  EXPECT_EQ(Characters(text, 1, 2), "\xC3\xA9\xE3\x84\xB1");
  EXPECT_EQ(Characters(text, 3, 9), "z");
  EXPECT_EQ(Characters(text, 4, 1), "");
  EXPECT_EQ(DecodeUtf8(text), U"a\u00E9\u3131z");
  EXPECT_EQ(EncodeUtf8(U"a\u00E9\u3131z\U0001F600"), text + "\xF0\x9F\x98\x80");
  EXPECT_EQ(DecodeUtf8("\xFF"
                       "a\xE3\x84"),
            U"\uFFFDa\uFFFD");
}

TEST(Bytes, BecomeOneCharacterEachAndGoBack) {
  std::string all;
  for (int byte = 0; byte < 256; ++byte) all += static_cast<char>(byte);
  EXPECT_EQ(CharacterCount(TextOfBytes(all)), 256U);
  EXPECT_EQ(BytesOfText(TextOfBytes(all)), all);
  EXPECT_EQ(BytesOfText("\xE3\x84\xB1"), "\xE3\x84\xB1") << "a character that no byte can hold";
}

std::vector<std::string> BytesOf(Integer count, Long value) {
  const auto bytes = ByteToLongHexConvert(count, value);
  return {bytes.begin(), bytes.end()};
}

TEST(ByteToLongHexConvert, PutsTheMostSignificantByteFirst) {
  struct Row {
    Integer count;
    Long value;
    std::vector<std::string> bytes;
  };
  const std::vector<Row> rows{
      {1, 5, {"5", "", "", "", ""}},
      {1, 300, {"12C", "", "", "", ""}},
      {2, 0, {"00", "0", "", "", ""}},
      {2, 255, {"00", "FF", "", "", ""}},
      {2, 256, {"1", "00", "", "", ""}},
      {2, 0x1234, {"12", "34", "", "", ""}},
      {2, 0x12345, {"123", "45", "", "", ""}},
      {3, 0x123456, {"", "", "", "", ""}},
      {4, 5, {"00", "00", "00", "5", ""}},
      {4, 0x123, {"00", "00", "1", "23", ""}},
      {4, 0x12345, {"00", "1", "23", "45", ""}},
      {4, 0x12345678, {"12", "34", "56", "78", ""}},
      {4, 0x2345678, {"2", "34", "56", "78", ""}},
      {1, -10, {"F6", "", "", "", ""}},
      {2, -10, {"FF", "F6", "", "", ""}},
      {3, -10, {"FF", "FF", "F6", "", ""}},
      {4, -559038737, {"DE", "AD", "BE", "EF", ""}},
      {0, 5, {"", "", "", "", ""}},
      {5, 5, {"", "", "", "", ""}},
      {0, -5, {"", "", "", "", ""}},
      {-1, -5, {"", "", "", "", ""}},
  };
  for (const Row& row : rows) EXPECT_EQ(BytesOf(row.count, row.value), row.bytes) << row.count << ", " << row.value;
}

TEST(At, FailsOutsideTheContainer) {
  std::vector<int> values{4, 5};
  At(values, 1) = 6;
  EXPECT_EQ(At(values, 1), 6);
  EXPECT_THROW((void)At(values, 2), StationFailure);
  EXPECT_THROW((void)At(values, -1), StationFailure);
}

TEST(PassOver, SkipsAStatementAndSaysSo) {
  std::string told;
  EXPECT_TRUE(PassOver([] {}));
  EXPECT_FALSE(PassOver([] { throw StationFailure("no"); }));
  EXPECT_FALSE(PassOver([] { throw StationFailure("why"); }, [&](const StationFailure& f) { told = f.what(); }));
  EXPECT_EQ(told, "why");
  EXPECT_THROW(PassOver([] { throw std::logic_error("a mistake of ours"); }), std::logic_error);
}

}  // namespace
}  // namespace orvane
