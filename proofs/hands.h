#pragma once

#include <string>
#include <vector>

#include "chance.h"
#include "stand.h"

namespace orvane::proofs {

enum class HandKind {
  kPlausible,  ///< what an operator at the line does without harm to the units that follow
  kStray,      ///< anything that any control can be done to
};

/// An operator's hands in the middle of what the station does: acts at times of their own on its loop.
class Hands {
 public:
  Hands(Stand& stand, Chance& chance) : stand_(stand), chance_(chance) {}

  /// So many acts within the next seconds.
  void Plan(HandKind kind, int acts, TimePoint within);
  /// A stray act is on the stack: a file dialog is its.
  [[nodiscard]] bool Astray() const { return astray_ > 0; }
  /// What was done, in words.
  [[nodiscard]] const std::vector<std::string>& Done() const { return done_; }

 private:
  void Act(HandKind kind);
  void ActPlausibly();
  void ActAstray();
  void Handle(Control& control);
  void Note(const std::string& text) { done_.push_back(text); }

  Stand& stand_;
  Chance& chance_;
  std::vector<std::string> done_;
  int astray_ = 0;
};

}  // namespace orvane::proofs
