#include "app/engineer/engineer_word.h"

#include <algorithm>
#include <chrono>
#include <utility>

#include "app/engineer/word_digest.h"

namespace orvane {
namespace {

using namespace std::chrono_literals;

constexpr int kFreeTries = 3;
constexpr TimePoint kFirstWait = 30s;
constexpr TimePoint kLongestWait = 10min;

}  // namespace

bool EngineerWord::Check(std::string word, std::function<void(const WordAnswer&)> told) {
  if (looking_) {
    Forget(word);
    return false;
  }
  if (const int seconds = SecondsToWait(); seconds > 0) {
    Forget(word);
    loop_.Post([told = std::move(told), seconds] { told(WordWait{seconds}); });
    return true;
  }
  looking_ = true;
  look_(std::move(word), [this, told = std::move(told), alive = std::weak_ptr(alive_)](bool isRight) {
    if (alive.expired()) return;
    TakeNote(isRight);
    told(isRight ? WordAnswer(WordRight{}) : WordAnswer(WordWrong{}));
  });
  return true;
}

int EngineerWord::SecondsToWait() const {
  const TimePoint left = waitsUntil_ - loop_.Now();
  return left <= 0s ? 0 : static_cast<int>(std::chrono::ceil<std::chrono::seconds>(left).count());
}

void EngineerWord::TakeNote(bool isRight) {
  looking_ = false;
  wrong_ = isRight ? 0 : wrong_ + 1;
  if (wrong_ < kFreeTries) return;
  TimePoint wait = kFirstWait;
  for (int i = kFreeTries; i < wrong_ && wait < kLongestWait; ++i) wait *= 2;
  waitsUntil_ = loop_.Now() + std::min(wait, kLongestWait);
}

}  // namespace orvane
