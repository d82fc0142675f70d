#include "results/results_console.h"

#include "support/fake_desk.h"
#include "support/memory_files.h"

namespace orvane::test {
namespace {

struct Rig {
  Journal journal;
  FakeBoxes boxes{journal};
  MemoryFiles files;
  OrvaneMain main;
  ConsoleState state;
  ResultsConsole console{main, state, files, boxes};

  [[nodiscard]] const std::string& Shown() const { return main.txtResults.Text(); }
  std::string After(const std::string& before, const std::string& shown) {
    main.txtResults.SetText(before);
    console.ShowData(main.txtResults, shown);
    return Shown();
  }
};

TEST(Console, GivesEveryLineEndTheStandardPair) {
  Rig rig;
  rig.console.Append("a\nb\r\nc\rd\r\r\n");
  EXPECT_EQ(rig.Shown(), "a\r\nb\r\ncd\r\n");
}

TEST(Console, DropsTheOldestAboveSixteenThousandCharacters) {
  Rig rig;
  rig.main.txtResults.SetText(std::string(4096, 'a') + std::string(16000 - 4096, 'b'));
  rig.console.Append("c");
  EXPECT_EQ(rig.Shown().size(), 16001U) << "16000 stay";
  rig.console.Append("d");
  EXPECT_EQ(rig.Shown(), std::string(16000 - 4096, 'b') + "cd");
}

TEST(Console, CountsCharactersNotBytes) {
  Rig rig;
  std::string text;
  for (int i = 0; i < 16000; ++i) text += "é";
  rig.main.txtResults.SetText(text);
  rig.console.Append("x");
  EXPECT_EQ(rig.Shown(), text + "x");
  rig.console.Append("y");
  EXPECT_EQ(rig.Shown(), text.substr(2 * 4096) + "xy");
}

TEST(Console, WritesToOtherBoxesToo) {
  Rig rig;
  rig.console.AppendConsole(rig.main.txtAGCPM, "a\n");
  EXPECT_EQ(rig.main.txtAGCPM.Text(), "a\r\n");
  EXPECT_EQ(rig.Shown(), "");
}

TEST(Console, TellsObserversWhatWasAdded) {
  Rig rig;
  std::string added;
  bool changed = false;
  rig.main.txtResults.onChange = [&] { changed = true; };
  rig.main.txtResults.appended.Connect([&](std::string_view text) { added = text; });
  rig.console.Append("a\n");
  EXPECT_EQ(added, "a\r\n");
  EXPECT_FALSE(changed);
}

TEST(ShowData, TakesBackCharactersByBackspaces) {
  Rig rig;
  EXPECT_EQ(rig.After("abc", "d\bef"), "abcef");
  EXPECT_EQ(rig.After("abc", "de\b\bf"), "abcf");
  EXPECT_EQ(rig.After("abc", "\bd"), "abd");
  EXPECT_EQ(rig.After("abc", "\b"), "ab");
  EXPECT_EQ(rig.After("abc", "\b\b\bd"), "abd") << "however many lead, one goes";
  EXPECT_EQ(rig.After("abc", "d\b\be"), "abe");
  EXPECT_EQ(rig.After("a\r\n", "\bd"), "a\rd") << "of a line end the line feed alone";
  EXPECT_EQ(rig.After("", "\bd"), "d");
  EXPECT_EQ(rig.After("abc", "é\bd"), "abcd");
}

TEST(ShowData, KeepsTheLimitToo) {
  Rig rig;
  EXPECT_EQ(rig.After(std::string(16001, 'a'), "\bb"), std::string(16001 - 4096 - 1, 'a') + "b");
}

}  // namespace
}  // namespace orvane::test
