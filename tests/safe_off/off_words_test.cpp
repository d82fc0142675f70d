#include "safe_off/off_words.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace orvane::test {
namespace {

template <class Word>
Word Heard(const std::string& line) {
  const auto word = OffWordOf(line);
  if (!word || !std::holds_alternative<Word>(*word)) throw std::runtime_error("no such word: " + line);
  return std::get<Word>(*word);
}

TEST(OffWords, AreLinesThatAreReadAsTheyWereMeant) {
  EXPECT_EQ(LineOf(OffWord(OffMove{kUsualOffPlaces})), "places 0 2 0 0 5 0\n");
  EXPECT_EQ(LineOf(OffWord(OffMove{{GpibAddress{1, 9, 97}, std::nullopt}})), "places 1 9 97 none\n");
  EXPECT_EQ(LineOf(OffWord(OffOrder{7})), "off 7\n");
  EXPECT_EQ(LineOf(OffWord(OffFarewell{})), "farewell\n");
  EXPECT_EQ(LineOf(OffWord(OffNote{"/a b/c"})), "note /a b/c\n");

  EXPECT_EQ(Heard<OffMove>("places 0 2 0 0 5 0").places, kUsualOffPlaces);
  EXPECT_EQ(Heard<OffMove>("places 1 9 97 none").places, (OffPlaces{GpibAddress{1, 9, 97}, std::nullopt}));
  EXPECT_EQ(Heard<OffMove>("places none none").places, OffPlaces{});
  EXPECT_EQ(Heard<OffOrder>("off 7").number, 7);
  (void)Heard<OffFarewell>("farewell");
  EXPECT_EQ(Heard<OffNote>("note /a b/c").file, "/a b/c");
  EXPECT_EQ(Heard<OffNote>("note ").file, "");
}

TEST(OffWords, ThatAreNoneAreNotTakenForAnything) {
  for (const char* line : {"", "of 7", "off", "off x", "places", "places 0 2 0", "places 0 2 0 0 5",
                           "places 0x 2 0 none", "places none", "places a b c none", "good-bye"}) {
    EXPECT_FALSE(OffWordOf(line)) << line;
  }
  for (const char* line : {"", "7", "7\tx", "x\ty\tz"}) EXPECT_FALSE(OffAnswerOf(line)) << line;
}

TEST(OffWords, AnAnswerIsOneLineWhateverAnInstrumentSaid) {
  const OffAnswer answer{3, {"it answers \"1\n2\t\".", ""}};
  EXPECT_EQ(LineOf(answer), "3\tit answers \"1 2 \".\t\n");
  const auto read = OffAnswerOf("3\tit answers \"1 2 \".\t");
  ASSERT_TRUE(read);
  EXPECT_EQ(read->number, 3);
  EXPECT_EQ(read->outcome, (OffOutcome{"it answers \"1 2 \".", ""}));
}

TEST(OffWords, WhatIsNotSureIsASentenceForTheOperator) {
  EXPECT_TRUE(TextsOf({}).empty());
  const auto texts = TextsOf({"no connection: Connection refused.", "no reply within 1 s."});
  ASSERT_EQ(texts.size(), 2U);
  EXPECT_EQ(
      texts[0].text,
      "The supply's output could not be made sure to be off: no connection: Connection refused. Switch it off by "
      "hand.");
  EXPECT_EQ(texts[1].text,
            "The load's input could not be made sure to be off: no reply within 1 s. Switch it off by hand.");
}

TEST(OffWords, LinesAreTakenOffAsTheyBecomeWhole) {
  std::string received = "off 1\nfare";
  EXPECT_EQ(TakeLine(received), "off 1");
  EXPECT_EQ(TakeLine(received), std::nullopt);
  received += "well\n";
  EXPECT_EQ(TakeLine(received), "farewell");
  EXPECT_EQ(received, "");
}

}  // namespace
}  // namespace orvane::test
