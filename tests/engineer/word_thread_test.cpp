// The look at a word, on its thread and in real time.

#include "app/engineer/word_thread.h"

#include <gtest/gtest.h>

#include <thread>

#include "adapters/qt_test.h"
#include "app/engineer/word_digest.h"

namespace orvane::test {
namespace {

using namespace std::chrono_literals;
constexpr TimePoint kPatience = 60s;

class ALookOnAThread : public QtTest {
 protected:
  ALookOnAThread() : digest_(DigestOfWord("sesame")) {}
  std::string digest_;
};

TEST_F(ALookOnAThread, IsAnsweredAsAnEventOfTheLoop) {
  EngineerWord word(loop_, LookOnAThread(loop_, digest_));
  const auto here = std::this_thread::get_id();
  for (const bool isRight : {true, false}) {
    std::optional<bool> said;
    ASSERT_TRUE(word.Check(isRight ? "sesame" : "barley", [&](const WordAnswer& answer) {
      EXPECT_EQ(std::this_thread::get_id(), here);
      said = std::holds_alternative<WordRight>(answer);
    }));
    EXPECT_FALSE(said);
    ASSERT_TRUE(YieldUntil([&] { return said.has_value(); }, kPatience));
    EXPECT_EQ(said, isRight);
  }
}

TEST_F(ALookOnAThread, LeavesTheStationsThreadToItself) {
  EngineerWord word(loop_, LookOnAThread(loop_, digest_));
  bool answered = false;
  bool servedBefore = false;
  ASSERT_TRUE(word.Check("sesame", [&](const WordAnswer&) { answered = true; }));
  loop_.Post([&] { servedBefore = !answered; });
  ASSERT_TRUE(YieldUntil([&] { return answered; }, kPatience));
  EXPECT_TRUE(servedBefore) << "an event of the station came in the middle of it";
}

TEST_F(ALookOnAThread, ThatIsUnderWayWhenTheStationEndsIsWaitedForAndNotTold) {
  bool answered = false;
  {
    EngineerWord word(loop_, LookOnAThread(loop_, digest_));
    ASSERT_TRUE(word.Check("sesame", [&](const WordAnswer&) { answered = true; }));
  }
  YieldFor(300ms);
  EXPECT_FALSE(answered);
}

}  // namespace
}  // namespace orvane::test
