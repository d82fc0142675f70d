// Who may pass as an engineer, and who has to wait, in virtual time.

#include "app/engineer/engineer_word.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <vector>

#include "platform/virtual_event_loop.h"

namespace orvane::test {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;

std::string Text(const WordAnswer& answer) {
  if (std::holds_alternative<WordRight>(answer)) return "right";
  if (const auto* wait = std::get_if<WordWait>(&answer)) return "wait " + std::to_string(wait->seconds);
  return "wrong";
}

class AnEngineersWord : public testing::Test {
 protected:
  /// What comes of it, with all that the loop has to do meanwhile; "" when nothing comes.
  std::string Say(const std::string& text) {
    std::string said;
    (void)word_->Check(text, [&](const WordAnswer& answer) { said = Text(answer); });
    const TimePoint until = loop_.Now() + 200ms;
    while (loop_.Now() < until) loop_.Yield(until);
    return said;
  }
  void Pass(TimePoint span) {
    const TimePoint until = loop_.Now() + span;
    while (loop_.Now() < until) loop_.Yield(until);
  }

  VirtualEventLoop loop_;
  int looks_ = 0;
  /// Takes as long as a real one.
  std::unique_ptr<EngineerWord> word_ =
      std::make_unique<EngineerWord>(loop_, [this](const std::string& text, const std::function<void(bool)>& told) {
        ++looks_;
        loop_.PostAt(loop_.Now() + 100ms, [told, text] { told(text == "sesame"); });
      });
};

TEST_F(AnEngineersWord, IsRightOrWrong) {
  EXPECT_EQ(Say("sesame"), "right");
  EXPECT_EQ(Say("barley"), "wrong");
  EXPECT_EQ(Say(""), "wrong");
  EXPECT_EQ(Say("sesame"), "right") << "two wrong ones cost nothing";
}

TEST_F(AnEngineersWord, WhoSaidThreeWrongOnesWaitsHalfAMinuteWhateverHeSays) {
  for (int i = 0; i < 3; ++i) EXPECT_EQ(Say("barley"), "wrong");
  // Counted from the answer, a tenth of a second ago; each word said takes two.
  EXPECT_EQ(word_->SecondsToWait(), 30);
  Pass(10s);
  EXPECT_EQ(Say("sesame"), "wait 20");
  EXPECT_EQ(looks_, 3) << "it was not looked at";
  Pass(19600ms);
  EXPECT_EQ(word_->SecondsToWait(), 1);
  Pass(100ms);
  EXPECT_EQ(word_->SecondsToWait(), 0);
  EXPECT_EQ(Say("sesame"), "right");
}

TEST_F(AnEngineersWord, EachFurtherWrongOneDoublesTheWaitUpToTenMinutes) {
  for (int i = 0; i < 2; ++i) (void)Say("barley");
  std::vector<int> waits;
  for (int i = 0; i < 8; ++i) {
    EXPECT_EQ(Say("barley"), "wrong");
    waits.push_back(word_->SecondsToWait());
    Pass(std::chrono::seconds(waits.back()));
  }
  EXPECT_THAT(waits, ElementsAre(30, 60, 120, 240, 480, 600, 600, 600));
}

TEST_F(AnEngineersWord, WordsSaidWhileOneHasToWaitMakeItNoLonger) {
  for (int i = 0; i < 3; ++i) (void)Say("barley");
  for (int i = 0; i < 50; ++i) EXPECT_THAT(Say("barley"), testing::StartsWith("wait "));
  Pass(30s);
  EXPECT_EQ(Say("barley"), "wrong");
  EXPECT_EQ(word_->SecondsToWait(), 60);
}

TEST_F(AnEngineersWord, ARightOneForgivesTheWrongOnes) {
  for (int i = 0; i < 3; ++i) (void)Say("barley");
  Pass(30s);
  EXPECT_EQ(Say("sesame"), "right");
  EXPECT_EQ(Say("barley"), "wrong");
  EXPECT_EQ(Say("barley"), "wrong");
  EXPECT_EQ(word_->SecondsToWait(), 0);
}

TEST_F(AnEngineersWord, IsLookedAtOneAtATime) {
  std::vector<std::string> said;
  const auto note = [&](const WordAnswer& answer) { said.push_back(Text(answer)); };
  EXPECT_TRUE(word_->Check("barley", note));
  for (int i = 0; i < 100; ++i) EXPECT_FALSE(word_->Check("sesame", note));
  EXPECT_THAT(said, ElementsAre()) << "the answer comes in a later turn of the loop";
  Pass(1s);
  EXPECT_THAT(said, ElementsAre("wrong"));
  EXPECT_EQ(looks_, 1);
}

TEST_F(AnEngineersWord, ThatIsGoneAnswersNothing) {
  bool answered = false;
  (void)word_->Check("sesame", [&](const WordAnswer&) { answered = true; });
  word_.reset();
  loop_.RunDry();
  EXPECT_FALSE(answered);
}

}  // namespace
}  // namespace orvane::test
