#pragma once

#include <functional>
#include <memory>
#include <string>
#include <variant>

#include "platform/event_loop.h"

namespace orvane {

struct WordRight {};
struct WordWrong {};
/// Too many were wrong: this one was not looked at.
struct WordWait {
  int seconds;
};
using WordAnswer = std::variant<WordRight, WordWrong, WordWait>;

/// Looks at a word beside the station's thread, and tells of it as an event of its loop.
using WordLook = std::function<void(std::string word, std::function<void(bool isRight)> told)>;

/// The word that lets an engineer in. Whoever has said three wrong ones in a row waits half a minute, and twice as
/// long behind each further one, ten minutes at the most. Nothing tells of a word to anybody.
class EngineerWord {
 public:
  EngineerWord(EventLoop& loop, WordLook look) : loop_(loop), look_(std::move(look)) {}
  EngineerWord(const EngineerWord&) = delete;
  EngineerWord& operator=(const EngineerWord&) = delete;

  /// The answer comes as an event of the loop.
  /// @return false while the word before is being looked at: this one is dropped, and nothing comes
  bool Check(std::string word, std::function<void(const WordAnswer&)> told);

  /// Until a word is looked at again, full seconds; 0 when one may come.
  [[nodiscard]] int SecondsToWait() const;

 private:
  void TakeNote(bool isRight);

  EventLoop& loop_;
  WordLook look_;
  bool looking_ = false;
  /// In a row.
  int wrong_ = 0;
  TimePoint waitsUntil_{0};
  /// An answer that is on its way finds out by it whether this is still there.
  std::shared_ptr<bool> alive_ = std::make_shared<bool>(true);
};

}  // namespace orvane
