#include "app/records/shown_text.h"

#include <gtest/gtest.h>

#include "app/records/text_table.h"
#include "app/records/utf8_walk.h"
#include "base/text.h"

namespace orvane::test {
namespace {

struct Shown {
  std::string text;
  std::string harmless;
};

TEST(Harmless, SpellsWhatATerminalWouldObey) {
  const Shown rows[] = {
      {"plain 단말 é", "plain 단말 é"},
      {"\x1b]0;title\x07", "\\x1b]0;title\\x07"},
      {std::string("a\0b", 3), "a\\x00b"},
      {"\u009b31m", "\\x9b31m"},
      {"a\x7f", "a\\x7f"},
      {"\u202eevil\u2066", "\\u202eevil\\u2066"},
      {"two\r\nlines\nthree\n", "two / lines / three"},
      {"a\rb", "a\\x0db"},
      {"\xff\xc0\xaf", "\\xff\\xc0\\xaf"},
      {"\xed\xa0\x80", "\\xed\\xa0\\x80"},
      {"\xea\xb0", "\\xea\\xb0"},
      {"\xf4\x90\x80\x80", "\\xf4\\x90\\x80\\x80"},
      {"", ""},
  };
  for (const Shown& row : rows) EXPECT_EQ(Harmless(row.text), row.harmless);
}

TEST(Utf8Walk, TakesEveryCharacterThatThereIsAsOne) {
  for (char32_t code = 0; code <= 0x10FFFF; ++code) {
    if (code >= 0xD800 && code <= 0xDFFF) continue;
    const std::string text = EncodeUtf8(std::u32string(1, code));
    std::string_view rest = text;
    const WalkedCharacter taken = TakeCharacter(rest);
    ASSERT_EQ(taken.code, code);
    ASSERT_EQ(taken.bytes, text);
    ASSERT_TRUE(rest.empty());
  }
}

TEST(ColumnsOf, HangulTakesTwoAndMarksNone) {
  EXPECT_EQ(ColumnsOf("abc"), 3U);
  EXPECT_EQ(ColumnsOf("단말기"), 6U);
  EXPECT_EQ(ColumnsOf("e\u0301"), 1U);
  EXPECT_EQ(ColumnsOf("｡한"), 3U);
}

TEST(CutTo, NeverTakesMoreColumnsThanThereAre) {
  EXPECT_EQ(CutTo("단말기", 6), "단말기");
  EXPECT_EQ(CutTo("단말기", 5), "단말…");
  EXPECT_EQ(CutTo("단말기", 4), "단…");
  EXPECT_EQ(CutTo("abcdef", 3), "ab…");
  EXPECT_EQ(CutTo("abc", 0), "");
  for (std::size_t columns = 0; columns < 9; ++columns) EXPECT_LE(ColumnsOf(CutTo("a단b말기é", columns)), columns);
}

TEST(ShortNumber, HasFourDecimalsAtTheMost) {
  const std::pair<double, const char*> rows[] = {{28.9596, "28.9596"}, {129, "129"},   {0.1 + 0.2, "0.3"},
                                                 {-0.00001, "0"},      {-580, "-580"}, {100, "100"},
                                                 {1.5e20, "1.5e+20"},  {1e-300, "0"}};
  for (const auto& [value, text] : rows) EXPECT_EQ(ShortNumber(value), text);
}

TEST(TextTable, AlignsByColumnsAndLeavesOutWhatIsEmpty) {
  TextTable table({{"NAME"}, {"NONE"}, {"N", true}, {"WHY"}});
  table.Add({"단말", "", "7", "a"});
  table.Add({"abcdef", "", "12", ""});
  EXPECT_EQ(table.Text({}),
            "NAME     N  WHY\n"
            "단말     7  a\n"
            "abcdef  12\n");
}

TEST(TextTable, TheLastColumnEndsAtTheEdgeOfATerminal) {
  TextTable table({{"A"}, {"WHY"}});
  table.Add({"x", std::string(100, 'y')});
  EXPECT_EQ(table.Text({false, 40}), "A  WHY\nx  " + std::string(36, 'y') + "…\n");
  EXPECT_EQ(table.Text({false, 5}), "A  WHY\nx  " + std::string(19, 'y') + "…\n") << "some of it is always there";
}

TEST(TextTable, ColoursOutcomesWhereThereAreColours) {
  TextTable table({{"A"}});
  table.Add({{"PASS", Outcome::Good}});
  table.Add({{"FAIL", Outcome::Bad}});
  EXPECT_EQ(table.Text({true, {}}), "\x1b[2mA\x1b[0m\n\x1b[32mPASS\x1b[0m\n\x1b[31mFAIL\x1b[0m\n");
  EXPECT_EQ(table.Text({}), "A\nPASS\nFAIL\n");
}

}  // namespace
}  // namespace orvane::test
